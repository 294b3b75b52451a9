#include "terminal/Incoming.h"

#include "automation/Macros.h"
#include "fakes/Fakes.h"
#include "sound/SoundTrigger.h"
#include "support/RandomInputs.h"
#include "terminal/Ansi.h"
#include "terminal/Output.h"
#include "terminal/PlainRoad.h"

#include <numeric>
#include <random>

namespace mw {
namespace {

using fakes::CallsOf;
using fakes::PlaceOf;
using Strings = std::vector<std::string>;

void Receive(std::string_view text) {
    Append(IncomingBuffer, text);
    ProcessIncoming();
}

std::string Waiting() { return std::string(View(IncomingBuffer)); }

std::string Pending() { return std::string(View(PendingLine)); }

const std::string& Shown() { return fakes::Shown; }

// The texts of the appends, empty ones too.
Strings Runs() {
    Strings texts;
    for (const fakes::Run& run : fakes::Runs)
        texts.push_back(run.Text);
    return texts;
}

class Walk : public RuleTest {
protected:
    // No two slots have one colour, and none is that at the start.
    Walk() { std::iota(Palette.begin(), Palette.end(), 0x0a0b00); }
};

// Plain text and line breaks.

TEST_F(Walk, OfAnEmptyBufferAppendsNothing) {
    Receive("");
    EXPECT_TRUE(fakes::Calls.empty());
}

TEST_F(Walk, AppendsTextInOneRun) {
    Receive("abc");
    EXPECT_EQ(Runs(), Strings{"abc"});
    EXPECT_EQ(Waiting(), "");
}

TEST_F(Walk, WritesBreaksTogetherWithTheTextThatFollows) {
    Receive("a\r\nb");
    EXPECT_EQ(Runs(), Strings{"a\nb"});
}

TEST_F(Walk, ManyLinesAreOneRun) {
    Receive("\r\n\r\nb\n\nc\rd");
    EXPECT_EQ(Runs(), Strings{"\n\nb\n\ncd"});
}

TEST_F(Walk, DropsTheBreaksThatEndIt) {
    Receive("abc\r");
    EXPECT_EQ(Runs(), Strings{"abc"});
    Receive("def\r\n\r\n");
    EXPECT_EQ(Runs(), (Strings{"abc", "def"}));
    EXPECT_EQ(Pending(), "abcdef");
    Receive("ghi");
    EXPECT_EQ(Shown(), "abcdefghi");
}

TEST_F(Walk, OfBreaksAloneAppendsNothing) {
    Receive("\r\n\n\r");
    EXPECT_TRUE(fakes::Runs.empty());
    EXPECT_EQ(Waiting(), "");
}

TEST_F(Walk, JoinsALineThatComesInPieces) {
    CurrentSet().Triggers = {{"You are hungry.\n", "eat"}};
    Receive("You are");
    Receive(" hungry.");
    Receive("\r\n> ");
    EXPECT_EQ(fakes::Sent(), "eat\r");
}

TEST_F(Walk, TakesEveryOtherByteAsText) {
    std::string bytes;
    for (int byte = 0; byte < 256; ++byte) {
        if (byte != '\r' && byte != '\n' && byte != 27)
            bytes += static_cast<char>(byte);
    }
    Receive(bytes);
    EXPECT_EQ(Runs(), Strings{bytes});
}

TEST_F(Walk, TakesExclamationMarksAsText) {
    Receive("!\n!!\n!!!a!!b!!S!!SOUN!!MUSI!");
    EXPECT_EQ(Runs(), Strings{"!\n!!\n!!!a!!b!!S!!SOUN!!MUSI!"});
}

// AtLineStart.

TEST_F(Walk, RemembersTheLineStart) {
    EXPECT_FALSE(AtLineStart);
    Receive("\n");
    EXPECT_TRUE(AtLineStart);
    Receive("");
    EXPECT_TRUE(AtLineStart);
    Receive("a");
    EXPECT_FALSE(AtLineStart);
    Receive("a\r");
    EXPECT_TRUE(AtLineStart);
    Receive("\x1b[0m");
    EXPECT_FALSE(AtLineStart);
}

TEST_F(Walk, EveryStepButABreakEndsTheLineStart) {
    for (const std::string_view step :
         {"a", "!", " ", "\x1b[0m", "\x1b[0", "!!SOUND(Off)", "!!MUSIC(Off)", "!!SOUND(rain)",
          "!!SOUND(rain)\r\n", "!!MUSIC(rain)", "!!SOUND(rain", "!!MUSIC"}) {
        Receive("\n");
        ASSERT_TRUE(AtLineStart);
        Receive(step);
        EXPECT_FALSE(AtLineStart) << step;
        FinishIncoming();
    }
}

// Escape sequences.

TEST_F(Walk, WritesTheTextBeforeAColourInTheOldOne) {
    Receive("x\x1b[1;31my");
    ASSERT_EQ(Runs(), (Strings{"x", "y"}));
    EXPECT_EQ(fakes::Runs[0].Colour, kPlainWhite);
    EXPECT_EQ(fakes::Runs[1].Colour, Palette[MwGrey]);
}

TEST_F(Walk, AppendsAtAnEscEvenNothing) {
    Receive("\x1b[0;31m\x1b[0;32mx");
    EXPECT_EQ(Runs(), (Strings{"", "", "x"}));
    EXPECT_EQ(fakes::Runs[0].Colour, kPlainWhite);
    EXPECT_EQ(fakes::Runs[1].Colour, Palette[MwLRed]);
    EXPECT_EQ(fakes::Runs[2].Colour, Palette[MwLGreen]);
}

TEST_F(Walk, AColourAtTheEndIsKeptForTheNext) {
    Receive("x\x1b[0;31m");
    EXPECT_EQ(Runs(), Strings{"x"});
    Receive("y");
    EXPECT_EQ(fakes::Runs.back().Colour, Palette[MwLRed]);
}

TEST_F(Walk, AnEscReleasesTheBreaksInTheOldColour) {
    Receive("a\r\n\x1b[0;31mb");
    EXPECT_EQ(Runs(), (Strings{"a\n", "b"}));
    EXPECT_EQ(fakes::Runs[0].Colour, kPlainWhite);
}

TEST_F(Walk, BreaksBeforeAnEscAreNotDropped) {
    Receive("a\r\n\x1b[0;31m");
    EXPECT_EQ(Runs(), Strings{"a\n"});
}

TEST_F(Walk, HandsOneCompletedLineOnPerColour) {
    CurrentSet().Triggers = {{"one", "1"}, {"two", "2"}, {"three", "3"}};
    Receive("one\ntwo\nthree\n\x1b[0;31m");
    EXPECT_EQ(fakes::Sent(), "1\r");
    Receive("\x1b[0;32m");
    EXPECT_EQ(fakes::Sent(), "1\r2\r");
    Receive("x");
    EXPECT_EQ(fakes::Sent(), "1\r2\r3\r");
}

TEST_F(Walk, EscMAloneIsTaken) {
    Receive("a\x1bmb");
    EXPECT_EQ(Shown(), "ab");
    EXPECT_EQ(CurrentColour, Palette[MwWhite]);
}

TEST_F(Walk, AnMFarAwaySwallowsTheTextBetweenOnPurpose) {
    Receive("a\x1b[2Jb\r\n\x1b[Hc dagger\r\nmn");
    EXPECT_EQ(Shown(), "an");
    EXPECT_EQ(fakes::Runs.back().Colour, Palette[MwWhite]);
}

TEST_F(Walk, AnMFarAwaySwallowsATriggerOnPurpose) {
    Receive("\x1b[H\r\n!!SOUND(rain)\r\nmorning");
    EXPECT_EQ(Shown(), "orning");
    EXPECT_TRUE(fakes::Played.empty());
}

TEST_F(Walk, TheProbeIsAnsweredBehindTheTextBeforeIt) {
    Receive("hello\x1b[2K");
    EXPECT_EQ(fakes::Sends, Strings{"SMWCLIENT\r"});
    EXPECT_LT(PlaceOf("Append ffffff hello"), PlaceOf("Send SMWCLIENT\r"));
}

TEST_F(Walk, ParametersReadOneByOneColourTheText) {
    WholeSequenceMode = false;
    Receive("a\x1b[1;31mb\x1b[0;1;32mc");
    ASSERT_EQ(Runs(), (Strings{"a", "b", "c"}));
    EXPECT_EQ(fakes::Runs[1].Colour, Palette[MwLRed]);
    EXPECT_EQ(fakes::Runs[2].Colour, Palette[MwBGreen]);
}

TEST_F(Walk, ParametersReadOneByOneNeverWait) {
    WholeSequenceMode = false;
    Receive("a\x1b[0;3");
    EXPECT_EQ(Waiting(), "");
    Receive("1mb");
    EXPECT_EQ(Shown(), "a1mb");
}

// A sequence without its end.

TEST_F(Walk, WaitsAtAnEscWithoutEnd) {
    Receive("x\x1b[0;3");
    EXPECT_EQ(Runs(), Strings{"x"});
    EXPECT_EQ(Waiting(), "\x1b[0;3");
    EXPECT_EQ(CurrentColour, Palette[MwWhite]);
    Receive("1my");
    EXPECT_EQ(Shown(), "xy");
    EXPECT_EQ(fakes::Runs.back().Colour, Palette[MwLRed]);
    EXPECT_EQ(Waiting(), "");
}

TEST_F(Walk, WhatStandsBehindAnEscWithoutEndWaitsToo) {
    Receive("\x1b[H\r\n!!SOUND(Off)\r\ntext");
    EXPECT_EQ(Shown(), "");
    EXPECT_EQ(Waiting(), "\x1b[H\r\n!!SOUND(Off)\r\ntext");
    EXPECT_EQ(CallsOf("Stop wave"), 0);
    Receive(" without an end");
    EXPECT_EQ(Shown(), "");
}

TEST_F(Walk, AnEscWithoutEndHandsOnAllCompletedLinesThatWait) {
    CurrentSet().Triggers = {{"one", "1"}, {"two", "2"}, {"three", "3"}, {"four", "4"}};
    Receive("one\ntwo\nthree\nfour\x1b[");
    EXPECT_EQ(fakes::Sent(), "1\r2\r3\r");
    EXPECT_EQ(Pending(), "four");
    EXPECT_EQ(Shown(), "one\ntwo\nthree\nfour");
}

TEST_F(Walk, AnEscWithoutEndReleasesTheBreaksBeforeIt) {
    CurrentSet().Triggers = {{"hungry", "eat"}};
    Receive("You are hungry.\r\n\x1b");
    EXPECT_EQ(fakes::Sent(), "eat\r");
    EXPECT_EQ(Shown(), "You are hungry.\n");
}

TEST_F(Walk, AsManyAsAllowedWaitBehindAnEsc) {
    Receive("\x1b" + std::string(65536, 'x'));
    EXPECT_EQ(kLongestSequence, 65536u);
    EXPECT_EQ(Waiting().size(), 65537u);
    EXPECT_EQ(Shown(), "");
    Receive("m");
    EXPECT_EQ(Waiting(), "");
    EXPECT_EQ(Shown(), "");
}

TEST_F(Walk, OneMoreBehindAnEscRemovesThatEscAlone) {
    Receive("\x1b" + std::string(65536, 'x'));
    Receive("y");
    EXPECT_EQ(Waiting(), "");
    EXPECT_EQ(Shown(), std::string(65536, 'x') + "y");
    EXPECT_EQ(fakes::Runs.back().Colour, Palette[MwWhite]);
}

TEST_F(Walk, ANextEscInTheOverlongTextWaitsInItsTurn) {
    Receive("\x1b[H\r\n" + std::string(65536, 'x') + "\x1b[0;3");
    EXPECT_EQ(Waiting(), "\x1b[0;3");
    EXPECT_EQ(Shown(), "[H\n" + std::string(65536, 'x'));
    Receive("1my");
    EXPECT_EQ(fakes::Runs.back().Colour, Palette[MwLRed]);
}

TEST_F(Walk, AnEndFarAwayStillEndsASequence) {
    Receive("\x1b" + std::string(100000, 'x') + "my");
    EXPECT_EQ(Shown(), "y");
}

TEST_F(Walk, AStormOfEscsWithoutEndKeepsOnlyWhatMayWait) {
    Receive(std::string(200000, '\x1b'));
    EXPECT_EQ(Waiting().size(), 65537u);
    EXPECT_EQ(Shown(), "");
    Receive("m");
    EXPECT_LE(Waiting().size(), 65537u);
}

TEST_F(Walk, AStormOfSequencesIsTakenWhole) {
    std::string text;
    for (int i = 0; i < 50000; ++i)
        text += "\x1b[0;31m";
    Receive(text + "x");
    EXPECT_EQ(Shown(), "x");
    EXPECT_EQ(fakes::Runs.size(), 50001u);
    EXPECT_EQ(CurrentColour, Palette[MwLRed]);
}

TEST_F(Walk, AStormOfProbesIsAnsweredOneByOne) {
    std::string text;
    for (int i = 0; i < 10000; ++i)
        text += "\x1b[2K";
    Receive(text);
    EXPECT_EQ(fakes::Sends.size(), 10000u);
}

TEST_F(Walk, AStormOfBreaksIsDroppedOrShownOnce) {
    Receive(std::string(200000, '\n'));
    EXPECT_EQ(Shown(), "");
    Receive(std::string(200000, '\n') + "x");
    EXPECT_EQ(Shown(), std::string(200000, '\n') + "x");
    EXPECT_LE(View(PendingLine).size(), kLongestPendingLine);
}

// Stops.

TEST_F(Walk, TakesAStopOutOfTheTextWhereverItStands) {
    Receive("hi!!MUSIC(Off)there");
    EXPECT_EQ(Runs(), Strings{"hithere"});
    EXPECT_EQ(CallsOf("Stop music"), 1);
    EXPECT_EQ(CallsOf("Stop wave"), 0);
    Receive("lo!!SOUND(Off)ok");
    EXPECT_EQ(Shown(), "hitherelook");
    EXPECT_EQ(CallsOf("Stop wave"), 1);
    EXPECT_EQ(CallsOf("Stop music"), 1);
    EXPECT_TRUE(fakes::Played.empty());
}

TEST_F(Walk, AStopTakesEffectBeforeTheTextOfItsRun) {
    Receive("hi!!MUSIC(Off)there");
    EXPECT_LT(PlaceOf("Stop music"), PlaceOf("Append ffffff hithere"));
}

TEST_F(Walk, AStopTakesEffectBehindTheTextBeforeAColour) {
    Receive("hi\x1b[0m!!SOUND(Off)there");
    EXPECT_LT(PlaceOf("Append ffffff hi"), PlaceOf("Stop wave"));
}

TEST_F(Walk, AStopAtALineStartIsNoTrigger) {
    Receive("\n!!SOUND(Off)\n!!MUSIC(Off)");
    EXPECT_EQ(fakes::Calls, (Strings{"Stop wave", "Stop music"}));
}

TEST_F(Walk, AStopLeavesTheBreaksForTheNextText) {
    Receive("a\r\n!!SOUND(Off)b");
    EXPECT_EQ(Runs(), Strings{"a\nb"});
    Receive("\n!!MUSIC(Off)\nc");
    EXPECT_EQ(Shown(), "a\nb\n\nc");
}

TEST_F(Walk, AStopDoesNotKeepTheBreaksThatEndIt) {
    Receive("a\n!!SOUND(Off)");
    EXPECT_EQ(Shown(), "a");
}

TEST_F(Walk, ATriggerBehindAStopIsNotAtALineStart) {
    Receive("\n!!SOUND(Off)!!SOUND(rain)");
    EXPECT_TRUE(fakes::Played.empty());
    EXPECT_EQ(Shown(), "\n!!SOUND(rain)");
    Receive("\n!!MUSIC(Off)!!MUSIC(rain)");
    EXPECT_TRUE(fakes::Played.empty());
}

TEST_F(Walk, StopsInARowAllStop) {
    Receive("!!SOUND(Off)!!SOUND(Off)!!MUSIC(Off)!!SOUND(Off)");
    EXPECT_EQ(fakes::Calls, (Strings{"Stop wave", "Stop wave", "Stop music", "Stop wave"}));
}

TEST_F(Walk, AStopBehindAnExclamationMarkIsFound) {
    Receive("hey!!!SOUND(Off)");
    EXPECT_EQ(Shown(), "hey!");
    EXPECT_EQ(CallsOf("Stop wave"), 1);
}

TEST_F(Walk, AStopInAnotherCaseIsText) {
    Receive("a!!SOUND(off)!!Sound(Off)!!MUSIC(OFF)!!music(Off)!!SOUND (Off)");
    EXPECT_EQ(Shown(), "a!!SOUND(off)!!Sound(Off)!!MUSIC(OFF)!!music(Off)!!SOUND (Off)");
    EXPECT_EQ(CallsOf("Stop wave") + CallsOf("Stop music"), 0);
}

TEST_F(Walk, AStopInLowerCaseAtALineStartIsATrigger) {
    Receive("\n!!SOUND(off)");
    EXPECT_EQ(fakes::Played, Strings{"wave off.wav|.wav|0|0"});
    EXPECT_EQ(CallsOf("Stop wave"), 0);
}

TEST_F(Walk, AStopCutInHalfIsText) {
    const std::string stop = "!!SOUND(Off)";
    for (std::size_t cut = 1; cut < stop.size(); ++cut) {
        Receive("a" + stop.substr(0, cut));
        Receive(stop.substr(cut));
    }
    EXPECT_EQ(CallsOf("Stop wave"), 0);
    EXPECT_TRUE(fakes::Played.empty());
    EXPECT_EQ(Shown().size(), 13 * 11u);
}

// Triggers.

TEST_F(Walk, ATriggerAtALineStartNeverReachesTheOutput) {
    Receive("\n!!SOUND(rain.wav V=80 P=60 )\nok");
    EXPECT_EQ(fakes::Played, Strings{"wave rain.wav|.wav|80|60"});
    EXPECT_EQ(Runs(), Strings{"\nok"}); // the second break belongs to the trigger
}

TEST_F(Walk, MusicAtALineStartIsPlayed) {
    Receive("\r!!MUSIC(theme)ok");
    EXPECT_EQ(fakes::Played, Strings{"music theme.mid|.mid|0|0"});
    EXPECT_EQ(Shown(), "ok");
}

TEST_F(Walk, ATriggerTakesEffectBeforeTheTextOfItsRun) {
    Receive("before\n!!SOUND(rain)after");
    EXPECT_LT(PlaceOf("Play wave rain.wav|.wav|0|0"), PlaceOf("Append ffffff before\nafter"));
}

TEST_F(Walk, ATriggerNeedsALineStart) {
    Receive("see !!SOUND(x.wav) and !!MUSIC(y.mid)");
    EXPECT_EQ(Shown(), "see !!SOUND(x.wav) and !!MUSIC(y.mid)");
    EXPECT_TRUE(fakes::Played.empty());
}

TEST_F(Walk, TheProgramDoesNotStartAtALineStart) {
    Receive("!!SOUND(rain)");
    EXPECT_EQ(Shown(), "!!SOUND(rain)");
    EXPECT_TRUE(fakes::Played.empty());
}

TEST_F(Walk, ATriggerBehindAColourIsNotAtALineStart) {
    Receive("\n\x1b[0m!!SOUND(rain)");
    EXPECT_EQ(Shown(), "\n!!SOUND(rain)");
    EXPECT_TRUE(fakes::Played.empty());
}

TEST_F(Walk, TheLineStartOutlivesTheWalk) {
    Receive("text\r\n");
    Receive("!!SOUND(rain)");
    EXPECT_EQ(fakes::Played, Strings{"wave rain.wav|.wav|0|0"});
    EXPECT_EQ(Shown(), "text");
}

TEST_F(Walk, TheSecondOfTwoSoundLinesShowsAsTextOnPurpose) {
    Receive("\r\n!!SOUND(a)\r\n!!SOUND(b)\r\nok");
    EXPECT_EQ(fakes::Played, Strings{"wave a.wav|.wav|0|0"});
    EXPECT_EQ(Shown(), "\n!!SOUND(b)\nok");
}

TEST_F(Walk, TwoSoundLinesThatComeApartBothPlay) {
    Receive("\r\n!!SOUND(a)");
    Receive("\r\n!!SOUND(b)\r\nok");
    EXPECT_EQ(fakes::Played, (Strings{"wave a.wav|.wav|0|0", "wave b.wav|.wav|0|0"}));
    EXPECT_EQ(Shown(), "\nok"); // the break before the second trigger
}

TEST_F(Walk, TextOnTheLineOfATriggerStays) {
    Receive("\n!!SOUND(rain)It rains.");
    EXPECT_EQ(Shown(), "\nIt rains.");
}

TEST_F(Walk, TriggerWordsAreToldByCase) {
    Receive("\n!!Sound(rain)\n!!music(rain)\n!!SOUNd(rain)");
    EXPECT_EQ(Shown(), "\n!!Sound(rain)\n!!music(rain)\n!!SOUNd(rain)");
    EXPECT_TRUE(fakes::Messages.empty());
}

TEST_F(Walk, ATriggerWordIsEnoughWithoutItsBracket) {
    Receive("\n!!SOUNDrain it )ok");
    EXPECT_EQ(fakes::Played, Strings{"wave ain.wav|.wav|0|0"});
    EXPECT_EQ(Shown(), "\nok");
}

TEST_F(Walk, MidInLaterTextMakesASoundMusicOnPurpose) {
    Receive("\n!!SOUND(rain)\nsee theme.mid");
    EXPECT_EQ(fakes::Played, Strings{"music rain.mid|.mid|0|0"});
}

TEST_F(Walk, WritesFalseBeforeTheNextCharacterWhenATriggerIsNoneOnPurpose) {
    Receive("a\n!!SOUND(rain");
    EXPECT_EQ(Runs(), Strings{"a\n!False!SOUND(rain"});
    EXPECT_TRUE(fakes::Played.empty());
    EXPECT_EQ(CallsOf("Stop wave"), 0);
}

TEST_F(Walk, WritesFalseForMusicToo) {
    Receive("\n!!MUSIC");
    EXPECT_EQ(Shown(), "\n!False!MUSIC");
}

TEST_F(Walk, WritesFalseOnceForEachTriggerThatIsNone) {
    Receive("\n!!SOUND\n!!MUSIC\n\nx");
    EXPECT_EQ(Shown(), "\n!False!SOUND\n!False!MUSIC\n\nx");
}

TEST_F(Walk, ATriggerCutBeforeItsCloseShowsAsText) {
    Receive("\n!!SOUND(ra");
    Receive("in)ok");
    EXPECT_EQ(Shown(), "\n!False!SOUND(rain)ok");
    EXPECT_TRUE(fakes::Played.empty());
}

TEST_F(Walk, ATriggerWordCutInHalfShowsAsText) {
    Receive("\n!!SOU");
    Receive("ND(rain)ok");
    EXPECT_EQ(Shown(), "\n!!SOUND(rain)ok");
    EXPECT_TRUE(fakes::Played.empty());
}

TEST_F(Walk, ATriggerWithoutCloseIsLookedForInTheFollowingText) {
    Receive("\n!!SOUND(rain\r\nYou see a rat (small).");
    EXPECT_EQ(fakes::Played, Strings{"wave rain\r\nYou.wav|.wav|0|0"});
    EXPECT_EQ(Shown(), "\n.");
}

TEST_F(Walk, ATriggerBeyondTheLimitShowsAsText) {
    const std::string name(kLongestTrigger - 8, 'a');
    Receive("\n!!SOUND(" + name + ")ok");
    EXPECT_EQ(Shown(), "\n!False!SOUND(" + name + ")ok");
    EXPECT_TRUE(fakes::Played.empty());
    EXPECT_TRUE(fakes::Messages.empty());
}

TEST_F(Walk, ATriggerUpToTheLimitIsPlayed) {
    const std::string name(kLongestTrigger - 9, 'a');
    Receive("\n!!SOUND(" + name + ")ok");
    EXPECT_EQ(fakes::Played, Strings{"wave " + name + ".wav|.wav|0|0"});
    EXPECT_EQ(Shown(), "\nok");
}

TEST_F(Walk, AStormOfTriggersWithoutCloseShowsEach) {
    std::string text;
    std::string expected;
    for (int i = 0; i < 3000; ++i) {
        text += "\n!!SOUND(";
        expected += "\n!False!SOUND(";
    }
    Receive(text);
    EXPECT_EQ(Shown(), expected);
}

TEST_F(Walk, AStormOfStopsStopsEach) {
    std::string text;
    for (int i = 0; i < 20000; ++i)
        text += "!!SOUND(Off)";
    Receive(text);
    EXPECT_EQ(CallsOf("Stop wave"), 20000);
    EXPECT_EQ(Shown(), "");
}

// The end of the connection.

class LastWalk : public Walk {};

TEST_F(LastWalk, OfAnEmptyBufferAppendsNothing) {
    FinishIncoming();
    EXPECT_TRUE(fakes::Calls.empty());
}

TEST_F(LastWalk, ShowsAnUnfinishedSequenceWithoutItsEsc) {
    Receive("x\x1b[0;3");
    FinishIncoming();
    EXPECT_EQ(Shown(), "x[0;3");
    EXPECT_EQ(fakes::Runs.back().Colour, Palette[MwWhite]);
    EXPECT_EQ(Waiting(), "");
}

TEST_F(LastWalk, GoesOnBehindEveryUnfinishedSequence) {
    Receive("\x1b[H\r\none\x1b[J\r\n!!SOUND(Off)two\x1b\x1b\x1b");
    FinishIncoming();
    EXPECT_EQ(Shown(), "[H\none[J\ntwo");
    EXPECT_EQ(CallsOf("Stop wave"), 1);
    EXPECT_EQ(Waiting(), "");
}

TEST_F(LastWalk, DropsTheBreaksThatEndIt) {
    Receive("\x1b[H\r\n");
    FinishIncoming();
    EXPECT_EQ(Shown(), "[H");
    EXPECT_EQ(Waiting(), "");
}

TEST_F(LastWalk, DecodesWhatIsComplete) {
    Append(IncomingBuffer, "a\x1b[0;31mb");
    FinishIncoming();
    EXPECT_EQ(Shown(), "ab");
    EXPECT_EQ(CurrentColour, Palette[MwLRed]);
}

TEST_F(LastWalk, PlaysATriggerBehindAnUnfinishedSequence) {
    Receive("\x1b[H\n!!SOUND(rain)");
    FinishIncoming();
    EXPECT_EQ(fakes::Played, Strings{"wave rain.wav|.wav|0|0"});
    EXPECT_EQ(Shown(), "[H");
}

TEST_F(LastWalk, EndsAStormOfEscs) {
    Receive(std::string(60000, '\x1b'));
    FinishIncoming();
    EXPECT_EQ(Waiting(), "");
    EXPECT_EQ(Shown(), "");
}

TEST_F(LastWalk, RandomBytesLeaveNothing) {
    std::mt19937 random(2201);
    std::uniform_int_distribution<int> byte(0, 255);
    std::uniform_int_distribution<std::size_t> length(0, 80);
    for (int round = 0; round < 2000; ++round) {
        std::string text = "\x1b";
        for (std::size_t i = length(random); i > 0; --i)
            text += static_cast<char>(byte(random));
        Receive(text);
        FinishIncoming();
        ASSERT_EQ(Waiting(), "") << text;
    }
}

// Cut anywhere.

constexpr std::string_view kSample =
    "\r\n\x1b[0;32mThe Old Bridge\x1b[0m\r\nA river roars below.\r\n"
    "\x1b[1;31mA rat is here.\r\n\r\n\x1b[0;5;36mHP:\x1b[0;1;37m20\x1b[0m> ";

// Each character but line breaks, with its colour.
std::vector<std::pair<char, std::int32_t>> Painted(bool withBreaks) {
    std::vector<std::pair<char, std::int32_t>> all;
    for (const fakes::Run& run : fakes::Runs) {
        for (const char ch : run.Text) {
            if (withBreaks || ch != '\n')
                all.emplace_back(ch, run.Colour);
        }
    }
    return all;
}

void StartAgain() {
    FinishIncoming();
    ResetIncoming();
    ResetOutput();
    fakes::Runs.clear();
    fakes::Calls.clear();
    fakes::Played.clear();
    fakes::Sends.clear();
    fakes::Shown.clear();
}

TEST_F(Walk, PaintsTheSameCutInTwoAnywhereButForBreaksBeforeTheCut) {
    Receive(kSample);
    const auto whole = Painted(true);
    const auto wholeText = Painted(false);
    const std::int32_t colour = CurrentColour;
    for (std::size_t cut = 0; cut <= kSample.size(); ++cut) {
        StartAgain();
        Receive(kSample.substr(0, cut));
        Receive(kSample.substr(cut));
        ASSERT_EQ(Painted(false), wholeText) << cut;
        ASSERT_EQ(CurrentColour, colour) << cut;
        ASSERT_EQ(Waiting(), "") << cut;
        const char before = cut == 0 ? 'x' : kSample[cut - 1];
        if (before != '\r' && before != '\n') {
            ASSERT_EQ(Painted(true), whole) << cut;
        }
    }
}

TEST_F(Walk, PaintsTheSameByteByByteButForBreaks) {
    Receive(kSample);
    const auto wholeText = Painted(false);
    const std::int32_t colour = CurrentColour;
    StartAgain();
    for (const char ch : kSample)
        Receive({&ch, 1});
    EXPECT_EQ(Painted(false), wholeText);
    EXPECT_EQ(CurrentColour, colour);
}

TEST_F(Walk, DoesWhatAWalkOneByOneDoesCutAnywhere) {
    constexpr unsigned kSeed = 2202;
    std::mt19937 random(kSeed);
    std::size_t played = 0;
    std::size_t waited = 0;
    for (int round = RandomInputs(20000, kSeed); round > 0; --round) {
        StartAgain();
        PlainRoad plain;
        const std::string text = RandomText(random, 14);
        std::string cuts;
        for (std::size_t at = 0; at < text.size();) {
            const std::size_t count = 1 + random() % text.size();
            const std::string piece = text.substr(at, count);
            cuts += piece + " | ";
            plain.Receive(piece);
            Receive(piece);
            at += piece.size();
            ASSERT_EQ(Effects(), plain.Effects) << cuts;
            ASSERT_EQ(Waiting(), plain.Buffer) << cuts;
            ASSERT_EQ(CurrentColour, plain.Colour) << cuts;
            ASSERT_EQ(AtLineStart, plain.LineStart) << cuts;
        }
        played += fakes::Played.size();
        waited += plain.Buffer.empty() ? 0u : 1u;
    }
    EXPECT_GT(played, 1000u);
    EXPECT_GT(waited, 1000u);
}

TEST_F(Walk, DoesWhatAWalkOneByOneDoesCutInTwoEverywhere) {
    std::mt19937 random(2203);
    for (int round = 0; round < 1000; ++round) {
        const std::string text = RandomText(random, 12);
        for (std::size_t cut = 0; cut <= text.size(); ++cut) {
            StartAgain();
            PlainRoad plain;
            for (const std::string& piece : {text.substr(0, cut), text.substr(cut)}) {
                plain.Receive(piece);
                Receive(piece);
            }
            ASSERT_EQ(Effects(), plain.Effects) << text << " cut at " << cut;
            ASSERT_EQ(Waiting(), plain.Buffer) << text << " cut at " << cut;
        }
    }
}

// Bad input.

void ExpectBounded() {
    ASSERT_TRUE(View(IncomingBuffer).empty() || View(IncomingBuffer).front() == '\x1b');
    ASSERT_LE(View(PendingLine).size(), kLongestPendingLine);
    ASSERT_LE(View(IncomingBuffer).size(), kLongestSequence + 1);
    ASSERT_LE(IncomingBuffer.Bytes.size(), 2 * kLongestSequence + 70000);
    ASSERT_LE(PendingLine.Bytes.size(), 2 * kLongestPendingLine + 70000);
}

// Forgets what the recorders wrote, as a long session would fill the memory with it.
void ForgetCalls() {
    fakes::Calls.clear();
    fakes::Runs.clear();
    fakes::Played.clear();
    fakes::Sends.clear();
}

TEST_F(Walk, RandomBytesCutAnywhereLeaveItBounded) {
    std::mt19937 random(2204);
    for (int round = 0; round < 400; ++round) {
        std::string bytes;
        for (std::size_t i = random() % 5000; i > 0; --i)
            bytes += static_cast<char>(random() % 256);
        Receive(bytes);
        ASSERT_NO_FATAL_FAILURE(ExpectBounded());
        ASSERT_LE(Shown().size(), kLongestOutput + kLongestSequence + 5000);
        ForgetCalls();
    }
}

TEST_F(Walk, RandomBytesWithoutAnEndOfASequenceLeaveItBounded) {
    std::mt19937 random(2205);
    for (int round = 0; round < 300; ++round) {
        std::string bytes;
        for (std::size_t i = random() % 5000; i > 0; --i) {
            const char byte = static_cast<char>(random() % 256);
            bytes += byte == 'm' || byte == 'K' ? 'x' : byte;
        }
        Receive(bytes);
        ASSERT_NO_FATAL_FAILURE(ExpectBounded());
        ForgetCalls();
    }
}

TEST_F(Walk, ALineWithoutEndLeavesItBounded) {
    for (int round = 0; round < 60; ++round) {
        Receive(std::string(32767, 'x'));
        ASSERT_NO_FATAL_FAILURE(ExpectBounded());
        ASSERT_LE(Shown().size(), kLongestOutput + 32767);
        ForgetCalls();
    }
}

TEST_F(Walk, LinesFasterThanTheyAreHandedOnLeaveItBounded) {
    for (int round = 0; round < 60; ++round) {
        Receive(std::string(32766, '\n') + "x");
        ASSERT_NO_FATAL_FAILURE(ExpectBounded());
        ForgetCalls();
    }
}

} // namespace
} // namespace mw
