#include "sound/SoundTrigger.h"

#include "base/Error.h"
#include "base/Numbers.h"
#include "fakes/Fakes.h"
#include "terminal/IncomingBuffer.h"

#include <ostream>
#include <random>

namespace mw {

void PrintTo(const SoundTrigger& t, std::ostream* out) {
    *out << "name " << t.FileName << ", address " << t.Address << ", type " << t.Type << ", volume "
         << t.Volume << ", priority " << t.Priority << ", length " << t.Length;
}

namespace {

std::string Rest() { return std::string(View(IncomingBuffer)); }

void Hold(std::string_view text) {
    TakeFront(IncomingBuffer, View(IncomingBuffer).size());
    Append(IncomingBuffer, text);
}

bool Parse(std::string_view text) {
    Hold(text);
    return ParseSoundTrigger();
}

struct TriggerCase {
    const char* Name;
    std::string_view Text;
    std::string_view Played; // kind, name | address | volume | priority
    std::string_view Rest = "";
};

void PrintTo(const TriggerCase& c, std::ostream* out) { *out << c.Name << " " << c.Text; }

const TriggerCase kTriggers[] = {
    // As servers send them.
    {"BlanksBehindBothValues", "!!SOUND(thunder.wav V=80 P=60 )", "wave thunder.wav|.wav|80|60"},
    {"VolumeBeforeTheCloseIsNotGivenOnPurpose", "!!SOUND(thunder V=80)",
     "wave thunder.wav|.wav|0|0"},
    {"OffIsAnOrdinaryName", "!!SOUND(Off)", "wave Off.wav|.wav|0|0"},
    {"LoopIsSkippedAndAddressCompleted", "!!MUSIC(theme.mid L=-1 U=address)",
     "music theme.mid|address.mid|0|0"},
    {"MidUnderSoundIsMusic", "!!SOUND(intro.mid)", "music intro.mid|.mid|0|0"},
    {"CapitalVStartsTheVolumeInANameOnPurpose", "!!SOUND(Victory.wav)", "wave .wav|.wav|0|0"},

    // Names and extensions.
    {"SoundGetsItsExtension", "!!SOUND(rain)", "wave rain.wav|.wav|0|0"},
    {"MusicGetsItsExtension", "!!MUSIC(rain)", "music rain.mid|.mid|0|0"},
    {"MusicKeepsAForeignExtension", "!!MUSIC(rain.wav)", "music rain.wav.mid|.mid|0|0"},
    {"ExtensionAnywhereInTheNameIsEnough", "!!SOUND(a.wave)", "wave a.wave|.wav|0|0"},
    {"ExtensionIsToldByCase", "!!MUSIC(rain.Mid)", "music rain.Mid.mid|.mid|0|0"},
    {"ExtensionAnywhereInTheNameOfMusicIsEnough", "!!MUSIC(a.midi)", "music a.midi|.mid|0|0"},
    {"ExtensionInFrontIsEnough", "!!SOUND(.wavrain)", "wave .wavrain|.wav|0|0"},
    {"NoNameOfMusicIsTheBareExtension", "!!MUSIC()", "music .mid|.mid|0|0"},
    {"OffOfMusicIsAnOrdinaryName", "!!MUSIC(Off)", "music Off.mid|.mid|0|0"},
    {"NoNameIsTheBareExtension", "!!SOUND()", "wave .wav|.wav|0|0"},
    {"EqualsSignIsPartOfTheName", "!!SOUND(a=b)", "wave a=b.wav|.wav|0|0"},
    {"OpeningBracketIsPartOfTheName", "!!SOUND(a(b)", "wave a(b.wav|.wav|0|0"},
    {"ABlankEndsTheName", "!!SOUND(rain storm)", "wave rain.wav|.wav|0|0"},
    {"ABlankInFrontLeavesNoName", "!!SOUND( rain)", "wave .wav|.wav|0|0"},
    {"PathsArePartOfTheName", "!!SOUND(../a\\b/c.wav)", "wave ../a\\b/c.wav|.wav|0|0"},
    {"EighthCharacterIsNotLookedAt", "!!SOUND-rain)", "wave rain.wav|.wav|0|0"},
    {"CloseAsEighthCharacterIsNone", "!!SOUND)rain)", "wave rain.wav|.wav|0|0"},
    {"HighBytesArePartOfTheName", "!!SOUND(\xe9t\xe9)", "wave \xe9t\xe9.wav|.wav|0|0"},
    {"EscIsPartOfTheName", "!!SOUND(\x1b[0m)", "wave \x1b[0m.wav|.wav|0|0"},

    // Capital letters start their parameter wherever they stand.
    {"CapitalVInTheName", "!!SOUND(aVb)", "wave a.wav|.wav|0|0"},
    {"CapitalLInTheName", "!!SOUND(aLb)", "wave a.wav|.wav|0|0"},
    {"CapitalPInTheName", "!!SOUND(aPb)", "wave a.wav|.wav|0|0"},
    {"CapitalTInTheName", "!!SOUND(aTb)", "wave a.wav|.wav|0|0"},
    {"CapitalUInTheName", "!!SOUND(aUb)", "wave a.wav|b.wav|0|0"},
    {"CapitalVInTheAddress", "!!SOUND(a U=http://h/Vb)", "wave a.wav|http://h/.wav|0|0"},
    {"CapitalLInTheAddress", "!!SOUND(a U=http://h/Lb)", "wave a.wav|http://h/.wav|0|0"},
    {"CapitalPInTheAddress", "!!SOUND(a U=http://h/Pb)", "wave a.wav|http://h/.wav|0|0"},
    {"CapitalTInTheAddress", "!!SOUND(a U=http://h/Tb)", "wave a.wav|http://h/.wav|0|0"},
    {"CapitalUInTheAddressIsLeftOut", "!!SOUND(a U=http://h/Ub)", "wave a.wav|http://h/b.wav|0|0"},
    {"SmallLettersStartNothing", "!!SOUND(vlptu)", "wave vlptu.wav|.wav|0|0"},
    {"OtherCapitalsStartNothing", "!!SOUND(ABCDEFGHIJKMNOQRSWXYZ)",
     "wave ABCDEFGHIJKMNOQRSWXYZ.wav|.wav|0|0"},
    {"CapitalPInsideANameCanSetThePriority", "!!SOUND(aP50 )", "wave a.wav|.wav|0|50"},

    // Volume.
    {"VolumeWithABlankBehind", "!!SOUND(a V=80 )", "wave a.wav|.wav|80|0"},
    {"VolumeWithoutEqualsSign", "!!SOUND(a V80 )", "wave a.wav|.wav|80|0"},
    {"VolumeBehindTwoLetters", "!!SOUND(a VV==80 )", "wave a.wav|.wav|80|0"},
    {"VolumeEndsAtItsBlank", "!!SOUND(a V=80 90 )", "wave a.wav|.wav|80|0"},
    {"VolumeIsNotEmptiedByItsConversionOnPurpose", "!!SOUND(a V=8 V=0 )", "wave a.wav|.wav|80|0"},
    {"VolumeInTwoPieces", "!!SOUND(a V=1P=V=2 )", "wave a.wav|.wav|12|0"},
    {"VolumeThatIsNoNumber", "!!SOUND(a V=loud )", "wave a.wav|.wav|0|0"},
    {"VolumeOfNothing", "!!SOUND(a V= )", "wave a.wav|.wav|0|0"},
    {"VolumeBeyondItsRangeIsNotGiven", "!!SOUND(a V=2147483648 )", "wave a.wav|.wav|0|0"},
    {"LargestVolumeIsTaken", "!!SOUND(a V=2147483647 )", "wave a.wav|.wav|2147483647|0"},
    {"VolumeOfZeroIsAsIfNotGiven", "!!SOUND(a V=0 )", "wave a.wav|.wav|0|0"},
    {"VolumeOfMusicBeforeTheCloseIsNotGivenOnPurpose", "!!MUSIC(a V=50)", "music a.mid|.mid|0|0"},
    {"VolumeOfMusicWithABlankBehind", "!!MUSIC(a V=50 )", "music a.mid|.mid|50|0"},
    {"TextBehindTheBlankOfAVolumeIsDropped", "!!SOUND(a V=80 b)", "wave a.wav|.wav|80|0"},
    {"NegativeVolumeIsTaken", "!!SOUND(a V=-5 )", "wave a.wav|.wav|-5|0"},
    {"VolumeInHexadecimal", "!!SOUND(a V=&H50 )", "wave a.wav|.wav|80|0"},
    {"VolumeWithAnExponent", "!!SOUND(a V=1e2 )", "wave a.wav|.wav|100|0"},
    {"HalfAVolumeIsRoundedToEven", "!!SOUND(a V=50.5 )", "wave a.wav|.wav|50|0"},
    {"AWorseSecondVolumeLeavesTheFirst", "!!SOUND(a V=80 V=x )", "wave a.wav|.wav|80|0"},
    {"ASecondVolumeOutOfRangeLeavesTheFirst", "!!SOUND(a V=80 V=99999999999 )",
     "wave a.wav|.wav|80|0"},
    {"ALineBreakBelongsToTheVolume", "!!SOUND(a V=8\n0 )", "wave a.wav|.wav|0|0"},
    {"ALineBreakIsNoBlank", "!!SOUND(a V=80\n)", "wave a.wav|.wav|0|0"},
    {"ATabIsNoBlank", "!!SOUND(a V=80\t)", "wave a.wav|.wav|0|0"},

    // Priority.
    {"PriorityWithABlankBehind", "!!SOUND(a P=60 )", "wave a.wav|.wav|0|60"},
    {"PriorityBeforeTheCloseIsNotGivenOnPurpose", "!!SOUND(a P=60)", "wave a.wav|.wav|0|0"},
    {"PriorityGoesOnBehindItsBlankOnPurpose", "!!SOUND(a P= 60 )", "wave a.wav|.wav|0|60"},
    {"SecondPriorityIsAppendedToTheFirst", "!!SOUND(a P=60 70 )", "wave a.wav|.wav|0|60"},
    {"ManyBlanksBehindAPriority", "!!SOUND(a P=60   )", "wave a.wav|.wav|0|60"},
    {"TextBehindTheBlankOfAPriorityIsCollectedOnPurpose", "!!SOUND(a P=6 0 V=80 )",
     "wave a.wav|.wav|80|6"},
    {"PriorityOfZeroIsAsIfNotGiven", "!!SOUND(a P=0 )", "wave a.wav|.wav|0|0"},
    {"PriorityDirectlyBeforeAVolumeIsNotGiven", "!!SOUND(a P=60V=80 )", "wave a.wav|.wav|80|0"},
    {"PriorityBeyondItsRangeIsNotGiven", "!!SOUND(a P=32768 )", "wave a.wav|.wav|0|0"},
    {"LargestPriorityIsTaken", "!!SOUND(a P=32767 )", "wave a.wav|.wav|0|32767"},
    {"NegativePriorityIsTaken", "!!SOUND(a P=-32768 )", "wave a.wav|.wav|0|-32768"},
    {"PriorityBelowItsRangeIsNotGiven", "!!SOUND(a P=-32769 )", "wave a.wav|.wav|0|0"},
    {"PriorityThatIsNoNumber", "!!SOUND(a P=high )", "wave a.wav|.wav|0|0"},
    {"PriorityThenVolume", "!!SOUND(a P=60 V=80 )", "wave a.wav|.wav|80|60"},
    {"PriorityOfMusic", "!!MUSIC(a P=60 V=80 )", "music a.mid|.mid|80|60"},

    // Loop, type, address.
    {"LoopIsSkipped", "!!SOUND(a L=5 V=80 )", "wave a.wav|.wav|80|0"},
    {"TypeIsNotUsed", "!!SOUND(a T=weather V=80 )", "wave a.wav|.wav|80|0"},
    {"TypeEndsAtItsBlank", "!!SOUND(a T=weather rain)", "wave a.wav|.wav|0|0"},
    {"LoopEndsAtItsBlank", "!!SOUND(a L=-1 rain)", "wave a.wav|.wav|0|0"},
    {"ExtensionAnywhereInTheAddressIsEnough", "!!SOUND(a U=http://h/a.wav?v2)",
     "wave a.wav|http://h/a.wav?v2|0|0"},
    {"AddressOfMusicKeepsAForeignExtension", "!!MUSIC(a U=http://h/a.wav)",
     "music a.mid|http://h/a.wav.mid|0|0"},
    {"AddressOfASoundWithAMidIsMusic", "!!SOUND(a.wav U=http://h/a.mid)",
     "music a.wav.mid|http://h/a.mid|0|0"},
    {"AddressOfAWave", "!!SOUND(a U=http://h/a.wav)", "wave a.wav|http://h/a.wav|0|0"},
    {"AddressOfAWaveIsCompleted", "!!SOUND(a U=http://h/a)", "wave a.wav|http://h/a.wav|0|0"},
    {"AddressOfMusicWithItsExtension", "!!MUSIC(a U=http://h/a.mid)",
     "music a.mid|http://h/a.mid|0|0"},
    {"AddressLosesItsEqualsSigns", "!!SOUND(a U=http://h/?f=a)", "wave a.wav|http://h/?fa.wav|0|0"},
    {"AddressEndsAtABlank", "!!SOUND(a U=http://h/a b)", "wave a.wav|http://h/a.wav|0|0"},
    {"AddressKeepsALineBreak", "!!SOUND(a U=x\ny)", "wave a.wav|x\ny.wav|0|0"},
    {"SecondAddressIsAppended", "!!SOUND(a U=x U=y)", "wave a.wav|xy.wav|0|0"},
    {"NoAddressIsTheBareExtension", "!!SOUND(a)", "wave a.wav|.wav|0|0"},

    // The end.
    {"TextBehindStays", "!!SOUND(rain)ok", "wave rain.wav|.wav|0|0", "ok"},
    {"ABlankBehindStays", "!!SOUND(rain) ok", "wave rain.wav|.wav|0|0", " ok"},
    {"LineBreaksBehindAreTaken", "!!SOUND(rain)\r\n\n\rok", "wave rain.wav|.wav|0|0", "ok"},
    {"FurtherClosesAreTaken", "!!SOUND(rain)))ok", "wave rain.wav|.wav|0|0", "ok"},
    {"ClosesAndBreaksInAnyOrderAreTaken", "!!SOUND(rain)\n)\r)\nok)", "wave rain.wav|.wav|0|0",
     "ok)"},
    {"LettersOfParametersBehindStayOnPurpose", "!!SOUND(rain)Vader", "wave rain.wav|.wav|0|0",
     "Vader"},
    {"EachParameterLetterBehindStays", "!!SOUND(rain)\nLPTUV", "wave rain.wav|.wav|0|0", "LPTUV"},
    {"NoParameterIsReadBehindTheClose", "!!SOUND(rain)V=80 )", "wave rain.wav|.wav|0|0", "V=80 )"},
    {"ABlankBehindTheCloseConvertsNothing", "!!SOUND(rain V=80) x)", "wave rain.wav|.wav|0|0",
     " x)"},
    {"AnEqualsSignBehindStays", "!!SOUND(rain)=", "wave rain.wav|.wav|0|0", "="},
    {"EscBehindStays", "!!SOUND(rain)\r\n\x1b[0m", "wave rain.wav|.wav|0|0", "\x1b[0m"},
    {"ALineBreakBeforeTheCloseBelongsToTheName", "!!SOUND(ra\r\nin)", "wave ra\r\nin.wav|.wav|0|0"},
    {"ALineBreakBeforeTheCloseIsDroppedBehindABlank", "!!SOUND(rain \n)", "wave rain.wav|.wav|0|0"},
    {"TheFirstCloseEndsTheTrigger", "!!SOUND(a)b V=80 )", "wave a.wav|.wav|0|0", "b V=80 )"},
    {"ASecondTriggerStays", "!!SOUND(a)\n!!SOUND(b)", "wave a.wav|.wav|0|0", "!!SOUND(b)"},

    // The kind is read from the whole buffer.
    {"MidInLaterTextMakesASoundMusicOnPurpose", "!!SOUND(rain)\nsee a.mid",
     "music rain.mid|.mid|0|0", "see a.mid"},
    {"MidInTheAddressMakesASoundMusic", "!!SOUND(rain U=x.mid)", "music rain.mid|x.mid|0|0"},
    {"CapitalMidIsNone", "!!SOUND(rain)a.MID", "wave rain.wav|.wav|0|0", "a.MID"},
    {"MidInALaterTriggerMakesASoundMusic", "!!SOUND(rain)\n!!MUSIC(b.mid)",
     "music rain.mid|.mid|0|0", "!!MUSIC(b.mid)"},
    {"MidRightBehindTheCloseMakesASoundMusic", "!!SOUND(rain).mid", "music rain.mid|.mid|0|0",
     ".mid"},
    {"ASoundInLaterTextMakesMusicAWaveOnPurpose", "!!MUSIC(theme)\n!!SOUND(a)",
     "wave theme.wav|.wav|0|0", "!!SOUND(a)"},
    {"ASoundAndAMidInLaterTextLeaveMusicMusic", "!!MUSIC(theme)\n!!SOUND(a.mid)",
     "music theme.mid|.mid|0|0", "!!SOUND(a.mid)"},
    {"WavInLaterTextLeavesMusicMusic", "!!MUSIC(theme)\na.wav", "music theme.mid|.mid|0|0",
     "a.wav"},
    {"ASoundInsideTheNameOfMusic", "!!MUSIC(!!SO!!SOUND(x)", "wave !!SO!!SO.wav|ND(x.wav|0|0"},
};

class SoundTriggerTable : public RuleTest, public testing::WithParamInterface<TriggerCase> {};

TEST_P(SoundTriggerTable, IsPlayedAndTakenOffTheFront) {
    EXPECT_TRUE(Parse(GetParam().Text));
    EXPECT_EQ(Rest(), GetParam().Rest);
    EXPECT_EQ(fakes::Played, std::vector<std::string>{std::string(GetParam().Played)});
    EXPECT_TRUE(fakes::Messages.empty());
    EXPECT_EQ(fakes::Calls.size(), 1u); // the play and nothing else
}

TEST_P(SoundTriggerTable, WaitsWhileItsCloseIsMissing) {
    const std::string text(GetParam().Text);
    const std::size_t close = text.find(')', 8);
    for (std::size_t cut = 7; cut <= close; ++cut) {
        EXPECT_FALSE(Parse(text.substr(0, cut))) << cut;
        EXPECT_EQ(Rest(), text.substr(0, cut));
    }
    EXPECT_TRUE(fakes::Calls.empty());
    EXPECT_TRUE(Parse(text.substr(0, close + 1)));
    EXPECT_EQ(Rest(), "");
}

const auto kTriggerName = [](const testing::TestParamInfo<TriggerCase>& info) {
    return info.param.Name;
};

INSTANTIATE_TEST_SUITE_P(Triggers, SoundTriggerTable, testing::ValuesIn(kTriggers), kTriggerName);

class SoundTriggers : public RuleTest {};

TEST_F(SoundTriggers, WithoutACloseAreLeftAlone) {
    for (const std::string_view text :
         {"!!SOUND", "!!SOUND(", "!!SOUND(rain", "!!SOUND(rain V=80 P=60 \r\nmore text", "!!SOUND)",
          "!!MUSIC", "!!MUSIC(theme.mid L=-1", "!!MUSIC)"}) {
        EXPECT_FALSE(Parse(text));
        EXPECT_EQ(Rest(), text);
    }
    EXPECT_TRUE(fakes::Calls.empty());
}

TEST_F(SoundTriggers, ACloseMayStandAsTheLastCharacterAllowed) {
    const std::string name(kLongestTrigger - 9, 'a');
    EXPECT_TRUE(Parse("!!SOUND(" + name + ")ok"));
    EXPECT_EQ(Rest(), "ok");
    EXPECT_EQ(fakes::Played, std::vector<std::string>{"wave " + name + ".wav|.wav|0|0"});
}

TEST_F(SoundTriggers, ACloseBehindTheLastCharacterAllowedIsNone) {
    const std::string text = "!!SOUND(" + std::string(kLongestTrigger - 8, 'a') + ")ok";
    EXPECT_EQ(kLongestTrigger, 32767u);
    EXPECT_EQ(text[32767], ')');
    EXPECT_FALSE(Parse(text));
    EXPECT_EQ(Rest(), text);
    EXPECT_TRUE(fakes::Calls.empty());
}

TEST_F(SoundTriggers, BreaksBehindTheCloseMayGoOnBeyondTheLimit) {
    EXPECT_TRUE(Parse("!!SOUND(rain)" + std::string(100000, '\n') + ")ok"));
    EXPECT_EQ(Rest(), "ok");
}

TEST_F(SoundTriggers, ALongValueIsNoNumberInRange) {
    EXPECT_TRUE(
        Parse("!!SOUND(a V=" + std::string(30000, '9') + " P=" + std::string(2000, '9') + " )"));
    EXPECT_EQ(fakes::Played, std::vector<std::string>{"wave a.wav|.wav|0|0"});
}

TEST_F(SoundTriggers, WithoutATriggerWordShowAMessageAndPlayNothing) {
    EXPECT_TRUE(Parse("rain or shine) and so on"));
    EXPECT_EQ(Rest(), " and so on");
    EXPECT_EQ(fakes::Messages, std::vector<std::string>{"File not recognised"});
    EXPECT_TRUE(fakes::Played.empty());
}

TEST_F(SoundTriggers, WithoutATriggerWordAndWithoutACloseShowTheMessageToo) {
    EXPECT_FALSE(Parse("rain or shine"));
    EXPECT_EQ(Rest(), "rain or shine");
    EXPECT_EQ(fakes::Messages, std::vector<std::string>{"File not recognised"});
}

TEST_F(SoundTriggers, TriggerWordsAreToldByCase) {
    for (const std::string_view text :
         {"!!Sound(rain)", "!!sound(rain)", "!!music(rain)", "!SOUND(rain)"}) {
        fakes::Messages.clear();
        EXPECT_TRUE(Parse(text));
        EXPECT_EQ(fakes::Messages, std::vector<std::string>{"File not recognised"}) << text;
    }
    EXPECT_TRUE(fakes::Played.empty());
}

TEST_F(SoundTriggers, NothingIsKeptFromOneToTheNext) {
    Hold("!!SOUND(a V=80 P=60 U=x )!!SOUND(b)");
    EXPECT_TRUE(ParseSoundTrigger());
    EXPECT_TRUE(ParseSoundTrigger());
    EXPECT_EQ(fakes::Played,
              (std::vector<std::string>{"wave a.wav|x.wav|80|60", "wave b.wav|.wav|0|0"}));
}

TEST_F(SoundTriggers, TheKindFollowsTheBufferAsItShrinks) {
    Hold("!!SOUND(a)!!SOUND(b.mid)!!SOUND(c)!!MUSIC(d)!!MUSIC(e)");
    for (int i = 0; i < 5; ++i)
        EXPECT_TRUE(ParseSoundTrigger());
    EXPECT_EQ(Rest(), "");
    EXPECT_EQ(fakes::Played,
              (std::vector<std::string>{"music a.mid|.mid|0|0", "music b.mid|.mid|0|0",
                                        "wave c.wav|.wav|0|0", "music d.mid|.mid|0|0",
                                        "music e.mid|.mid|0|0"}));
}

TEST_F(SoundTriggers, TheKindFollowsTheBufferAsItGrows) {
    EXPECT_FALSE(Parse("!!SOUND(a.m"));
    Append(IncomingBuffer, "id)");
    EXPECT_TRUE(ParseSoundTrigger());
    EXPECT_EQ(fakes::Played, std::vector<std::string>{"music a.mid|.mid|0|0"});
}

TEST(ReadSoundTrigger, CollectsEveryValueAsItStands) {
    SoundTrigger expected;
    expected.FileName = "rain";
    expected.Address = "http://h/a";
    expected.Type = "weather";
    expected.Volume = 80;
    expected.Priority = 60;
    expected.Length = 54;
    EXPECT_EQ(ReadSoundTrigger("!!SOUND(rain V=80 P=60 T=weather U=http://h/a L=2 )\r\n)rest"),
              expected);
}

TEST(ReadSoundTrigger, OfAnIncompleteTriggerIsNothing) {
    EXPECT_EQ(ReadSoundTrigger("!!SOUND(rain V=80 P=60 "), SoundTrigger());
    EXPECT_EQ(ReadSoundTrigger("!!SOUND"), SoundTrigger());
    EXPECT_EQ(ReadSoundTrigger(""), SoundTrigger());
}

// The scan one character at a time, with a state and two flags.
SoundTrigger ScanOneByOne(const std::string& text) {
    SoundTrigger trigger;
    std::string volume;
    std::string priority;
    const auto number = [](const std::string& digits, auto convert, auto& value) {
        if (!IsNumeric(digits))
            return;
        try {
            value = convert(digits);
        } catch (const Error&) {
            // Out of range: not given.
        }
    };
    const auto add = [](std::string& value, char ch, char letter) {
        if (ch != letter && ch != '=')
            value += ch;
    };
    char state = 'n'; // name; or the letter, '-' for none, ')' for close
    bool closed = false;
    std::size_t position = 8;
    for (; position < text.size(); ++position) {
        const char ch = text[position];
        if (closed) {
            if (ch != '\r' && ch != '\n' && ch != ')')
                break;
            continue;
        }
        if (position >= 32767)
            return {};
        if (ch == 'V' || ch == 'L' || ch == 'P' || ch == 'T' || ch == 'U') {
            state = ch;
        } else if (ch == ' ') {
            if (state == 'P')
                number(priority, ToInt16, trigger.Priority);
            else if (state == 'V')
                number(volume, ToInt32, trigger.Volume);
            if (state != 'P')
                state = '-';
        } else if (ch == ')') {
            state = ')';
        }
        switch (state) {
        case 'n':
            trigger.FileName += ch;
            break;
        case 'V':
            add(volume, ch, 'V');
            break;
        case 'P':
            add(priority, ch, 'P');
            break;
        case 'T':
            add(trigger.Type, ch, 'T');
            break;
        case 'U':
            add(trigger.Address, ch, 'U');
            break;
        case ')':
            closed = true;
            break;
        default:
            break;
        }
    }
    if (!closed)
        return {};
    trigger.Length = position;
    return trigger;
}

TEST(ReadSoundTrigger, ReadsWhatAScanOneByOneReads) {
    constexpr std::string_view kAlphabet = "VLPTU=  )\r\nab.w01289-&He";
    std::mt19937 random(5101);
    std::uniform_int_distribution<std::size_t> choice(0, kAlphabet.size() - 1);
    std::uniform_int_distribution<std::size_t> length(0, 30);
    int complete = 0;
    for (int round = 0; round < 40000; ++round) {
        std::string text = "!!SOUND(";
        for (std::size_t i = length(random); i > 0; --i)
            text += kAlphabet[choice(random)];
        const SoundTrigger expected = ScanOneByOne(text);
        ASSERT_EQ(ReadSoundTrigger(text), expected) << text;
        complete += expected.Length > 0 ? 1 : 0;
    }
    EXPECT_GT(complete, 10000);
}

TEST(ReadSoundTrigger, OfRandomBytesIsWhatAScanOneByOneReads) {
    std::mt19937 random(5102);
    std::uniform_int_distribution<int> byte(0, 255);
    std::uniform_int_distribution<std::size_t> length(0, 600);
    for (int round = 0; round < 3000; ++round) {
        std::string text;
        for (std::size_t i = length(random); i > 0; --i)
            text += static_cast<char>(byte(random));
        const SoundTrigger read = ReadSoundTrigger(text);
        ASSERT_EQ(read, ScanOneByOne(text)) << text;
        ASSERT_LE(read.Length, text.size());
        ASSERT_EQ(read.Length > 0, text.find(')', 8) != std::string::npos);
    }
}

} // namespace
} // namespace mw
