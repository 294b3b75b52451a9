#include "net/http/VersionCheck.h"

#include "browser/Browser.h"
#include "config/Environment.h"
#include "config/MakerAddresses.h"
#include "fakes/Fakes.h"

#include <limits>
#include <ostream>

using namespace std::string_literals;

namespace mw {
namespace {

using Steps = std::vector<std::string>;

struct Folded {
    const char* Name;
    Version Parts;
    float Number;
};

void PrintTo(const Folded& row, std::ostream* out) { *out << row.Name; }

class FoldedVersions : public testing::TestWithParam<Folded> {};

TEST_P(FoldedVersions, AreOneNumber) {
    EXPECT_EQ(FoldVersion(GetParam().Parts), GetParam().Number);
}

const Folded kFolded[] = {
    {"ThreeParts", {1, 2, 5}, 1.25F},
    {"ATwelfthMinorIsTheNextMajorsSecondOnPurpose", {1, 12, 0}, 2.2F},
    {"ANextMajorsSecond", {2, 2, 0}, 2.2F},
    {"ATwelfthRevisionIsTheNextMinorsSecondOnPurpose", {1, 0, 12}, 1.12F},
    {"NoMajorIsRoundedOnce", {0, 7, 2}, 0.72F},
    {"Nothing", {0, 0, 0}, 0.0F},
    {"AMajorAlone", {3, 0, 0}, 3.0F},
    {"ARevisionAlone", {0, 0, 1}, 0.01F},
    {"LargeParts", {100, 250, 999}, 134.99F},
};

INSTANTIATE_TEST_SUITE_P(Rows, FoldedVersions, testing::ValuesIn(kFolded),
                         [](const auto& row) { return row.param.Name; });

TEST(FoldedVersion, EqualsItsPublishedTextWhateverItsDigits) {
    for (int number = 0; number < 2000; ++number) {
        const Version version{number / 100, number / 10 % 10, number % 10};
        const std::string text = std::to_string(version.Major) + "." +
                                 std::to_string(version.Minor) + std::to_string(version.Revision);
        EXPECT_EQ(ParsePublishedVersion(text), FoldVersion(version)) << text;
    }
}

struct Published {
    const char* Name;
    std::string Body;
    std::optional<float> Number;
};

void PrintTo(const Published& row, std::ostream* out) { *out << row.Name; }

class PublishedTexts : public testing::TestWithParam<Published> {};

TEST_P(PublishedTexts, AreDecimalNumbersOrNone) {
    EXPECT_EQ(ParsePublishedVersion(GetParam().Body), GetParam().Number);
}

const Published kPublished[] = {
    {"Empty", "", 0.0F},
    {"WhiteSpaceAlone", " \t\r\n\v\f", 0.0F},
    {"APoint", "1.3", 1.3F},
    {"AWhole", "2", 2.0F},
    {"ZerosInFront", "001.30", 1.3F},
    {"NoDigitBeforeThePoint", ".5", 0.5F},
    {"NoDigitBehindThePoint", "5.", 5.0F},
    {"ALineEnd", "1.3\r\n", 1.3F},
    {"SeveralLineEnds", "1.3\n\n \t\n", 1.3F},
    {"TheLargest", "340282346638528859811704183484516925440", std::numeric_limits<float>::max()},
    {"SixtyFourKilobytesOfZeros", std::string(65536, '0'), 0.0F},
    {"Letters", "abc", std::nullopt},
    {"ALetterBehind", "1.3b", std::nullopt},
    {"ThreeParts", "1.3.4", std::nullopt},
    {"TwoPoints", "1..3", std::nullopt},
    {"AComma", "1,3", std::nullopt},
    {"TwoNumbers", "1.3 1.4", std::nullopt},
    {"TwoLines", "1.3\n1.4\n", std::nullopt},
    {"ABlankInFront", " 1.3", std::nullopt},
    {"ALineEndInFront", "\n1.3", std::nullopt},
    {"AMinus", "-1", std::nullopt},
    {"APlus", "+1", std::nullopt},
    {"AnExponent", "1e5", std::nullopt},
    {"AnExponentInCapitals", "1E5", std::nullopt},
    {"Hexadecimal", "&H5", std::nullopt},
    {"HexadecimalWithAnX", "x5", std::nullopt},
    {"Infinity", "inf", std::nullopt},
    {"NoNumber", "nan", std::nullopt},
    {"ANul", "\0"s, std::nullopt},
    {"ANulBehind", "1.3\0"s, std::nullopt},
    {"ANulInside", "1\0.3"s, std::nullopt},
    {"HighCharacters", "1.3\xa0", std::nullopt},
    {"AWebPage", "<html><body>404</body></html>", std::nullopt},
    {"TooLarge", "340282366920938463463374607431768211456", std::nullopt},
    {"FourHundredDigits", std::string(400, '9'), std::nullopt},
    {"SixtyFourKilobytesOfDigits", std::string(65536, '7'), std::nullopt},
    {"SixtyFourKilobytesOfPoints", std::string(65536, '.'), std::nullopt},
};

INSTANTIATE_TEST_SUITE_P(Rows, PublishedTexts, testing::ValuesIn(kPublished),
                         [](const auto& row) { return row.param.Name; });

struct Form {
    const char* Name;
    float Number;
    const char* Text;
};

void PrintTo(const Form& row, std::ostream* out) { *out << row.Name; }

class DecimalForms : public testing::TestWithParam<Form> {};

TEST_P(DecimalForms, AreTheShortestThatReadBack) {
    EXPECT_EQ(DecimalForm(GetParam().Number), GetParam().Text);
    EXPECT_EQ(ParsePublishedVersion(GetParam().Text), GetParam().Number);
}

const Form kForms[] = {
    {"TwoDigitsBehindThePoint", 1.25F, "1.25"},
    {"NoZerosBehind", 1.3F, "1.3"},
    {"NoPointBehindAWhole", 2.0F, "2"},
    {"Zero", 0.0F, "0"},
    {"BelowOne", 0.72F, "0.72"},
    {"NoExponentHoweverLarge", std::numeric_limits<float>::max(),
     "340282346638528859811704183484516925440"},
    {"NoExponentHoweverSmall", std::numeric_limits<float>::min(),
     "0.000000000000000000000000000000000000011754944"},
};

INSTANTIATE_TEST_SUITE_P(Rows, DecimalForms, testing::ValuesIn(kForms),
                         [](const auto& row) { return row.param.Name; });

TEST(DecimalForms, HasRoomForTheSmallestOfAll) {
    const float smallest = std::numeric_limits<float>::denorm_min();
    EXPECT_EQ(DecimalForm(smallest), "0." + std::string(44, '0') + "1");
}

constexpr Version kOwn{1, 2, 5};

class VersionCheck : public RuleTest {
protected:
    static std::string Url() { return WebRoot() + "/client/clientver.txt"; }

    static void Publish(const std::string& body) { fakes::Pages[Url()] = body; }

    static void ExpectNoNews() {
        EXPECT_FALSE(updateAvailable);
        EXPECT_EQ(fakes::Calls, Steps{"OpenURL " + Url()});
        EXPECT_TRUE(fakes::SplashCaptions.empty() && fakes::PromptCaptions.empty());
    }
};

TEST_F(VersionCheck, ANewerVersionIsAnnouncedStepByStep) {
    Publish("1.26");
    CheckForUpdate(kOwn);
    EXPECT_TRUE(updateAvailable);
    EXPECT_EQ(PublishedVersion, "1.26");
    EXPECT_EQ(fakes::Calls, (Steps{
                                "OpenURL " + Url(),
                                "lblUpdateText There is a new version of the client available",
                                "lblCurVersion Current Version 1.26",
                                "lblYourVersion Your Version 1.25",
                                "LoadUpdatePrompt",
                                "prompt lblCurVer There is a new version of the client available",
                                "prompt lblCurVersion Current Version 1.26",
                                "prompt lblYourVersion Your Version 1.25",
                                "ShowUpdatePrompt",
                            }));
}

TEST_F(VersionCheck, IsDecidedBeforeThePromptIsThere) {
    bool decided = false;
    fakes::OnCall = [&decided](const std::string& call) {
        if (call == "LoadUpdatePrompt")
            decided = updateAvailable && PublishedVersion == "1.26";
    };
    Publish("1.26");
    CheckForUpdate(kOwn);
    EXPECT_TRUE(decided);
}

TEST_F(VersionCheck, AnEqualVersionIsNotNewer) {
    Publish("1.25\r\n");
    CheckForUpdate(kOwn);
    ExpectNoNews();
    EXPECT_EQ(PublishedVersion, "1.25");
}

TEST_F(VersionCheck, AnOlderVersionIsNotNewer) {
    Publish("1.24");
    CheckForUpdate(kOwn);
    ExpectNoNews();
    EXPECT_EQ(PublishedVersion, "1.24");
}

TEST_F(VersionCheck, EveryVersionEqualsItself) {
    for (int number = 0; number < 1000; ++number) {
        const Version own{number / 100, number / 10 % 10, number % 10};
        Publish(std::to_string(own.Major) + "." + std::to_string(own.Minor) +
                std::to_string(own.Revision));
        fakes::Calls.clear();
        CheckForUpdate(own);
        EXPECT_EQ(fakes::Calls.size(), 1u) << number;
        EXPECT_FALSE(updateAvailable) << number;
    }
}

TEST_F(VersionCheck, ATwelfthMinorIsAheadOfTheNextMajorsFirstOnPurpose) {
    Publish("2.1");
    CheckForUpdate({1, 12, 0});
    ExpectNoNews();
    fakes::Calls.clear();
    Publish("2.2");
    CheckForUpdate({1, 12, 0});
    ExpectNoNews();
    Publish("2.21");
    CheckForUpdate({1, 12, 0});
    EXPECT_EQ(fakes::SplashCaptions[SplashLabel::lblYourVersion], "Your Version 2.2");
}

TEST_F(VersionCheck, AnEmptyFilePublishesZero) {
    Publish("");
    CheckForUpdate(kOwn);
    ExpectNoNews();
    EXPECT_EQ(PublishedVersion, "0");
    fakes::Calls.clear();
    CheckForUpdate({0, 0, 0});
    ExpectNoNews();
}

TEST_F(VersionCheck, ThatGetsNothingEndsQuietly) {
    CheckForUpdate(kOwn);
    ExpectNoNews();
    EXPECT_EQ(PublishedVersion, "");
    EXPECT_TRUE(fakes::Messages.empty());
}

TEST_F(VersionCheck, ThatGetsNoNumberEndsQuietly) {
    for (const Published& row : kPublished) {
        if (row.Number)
            continue;
        Publish(row.Body);
        fakes::Calls.clear();
        CheckForUpdate(kOwn);
        ExpectNoNews();
        EXPECT_EQ(PublishedVersion, "") << row.Name;
    }
    EXPECT_TRUE(fakes::Messages.empty());
}

TEST_F(VersionCheck, NormalisesThePublishedText) {
    Publish("001.300\r\n");
    CheckForUpdate(kOwn);
    EXPECT_EQ(PublishedVersion, "1.3");
    EXPECT_EQ(fakes::PromptCaptions[UpdateLabel::lblCurVersion], "Current Version 1.3");
}

TEST_F(VersionCheck, FetchesFromTheMakersSite) {
    const Environment site("QUILLMERE_WEB_ROOT", "http://site.example:81");
    CheckForUpdate(kOwn);
    EXPECT_EQ(fakes::Calls, Steps{"OpenURL http://site.example:81/client/clientver.txt"});
}

TEST_F(VersionCheck, TakesTheClientsOwnVersionUnlessToldOtherwise) {
    Publish(DecimalForm(FoldVersion(kOwnVersion)));
    CheckForUpdate();
    ExpectNoNews();
    Publish(DecimalForm(FoldVersion(kOwnVersion) + 1));
    CheckForUpdate();
    EXPECT_EQ(fakes::SplashCaptions[SplashLabel::lblYourVersion],
              "Your Version " + DecimalForm(FoldVersion(kOwnVersion)));
}

class UpdatePrompt : public VersionCheck {
protected:
    static std::string Kept(const std::string& key) {
        return fakes::UserSettings["MwClient/Update/" + key];
    }
};

TEST_F(UpdatePrompt, LoadsWithBothVersions) {
    PublishedVersion = "7.5";
    frmUpdate_Load();
    EXPECT_EQ(fakes::PromptCaptions[UpdateLabel::lblYourVersion],
              std::to_string(QUILLMERE_VERSION_MAJOR) + "." +
                  std::to_string(QUILLMERE_VERSION_MINOR) + "." +
                  std::to_string(QUILLMERE_VERSION_PATCH));
    EXPECT_EQ(fakes::PromptCaptions[UpdateLabel::lblCurVersion], "7.5");
}

TEST_F(UpdatePrompt, KeepsTheAnswerNo) {
    PublishedVersion = "1.26";
    cmdNo_Click(false);
    EXPECT_EQ(fakes::UserSettings,
              (std::map<std::string, std::string>{{"MwClient/Update/Version", "1.26"},
                                                  {"MwClient/Update/Check", "1"}}));
    EXPECT_TRUE(fakes::Calls.empty());
    EXPECT_TRUE(fakes::Registry.empty());
}

TEST_F(UpdatePrompt, KeepsThatItShallNotBeShownAgain) {
    PublishedVersion = "1.26";
    cmdNo_Click(true);
    EXPECT_EQ(Kept("Check"), "0");
    cmdYes_Click(false);
    EXPECT_EQ(Kept("Check"), "1");
    cmdYes_Click(true);
    EXPECT_EQ(Kept("Check"), "0");
    EXPECT_EQ(Kept("Version"), "1.26");
}

TEST_F(UpdatePrompt, KeepsTheAnswerYesAndThenOpensTheMakersSite) {
    PublishedVersion = "1.26";
    std::string checkThen;
    fakes::OnCall = [&checkThen](const std::string&) { checkThen = Kept("Check"); };
    cmdYes_Click(false);
    EXPECT_EQ(fakes::Calls, Steps{"ShowBrowser"});
    EXPECT_EQ(StartAddress, WebRoot());
    EXPECT_EQ(checkThen, "1");
    EXPECT_EQ(Kept("Version"), "1.26");
}

TEST_F(UpdatePrompt, AppearsAgainWhateverWasAnsweredOnPurpose) {
    Publish("1.26");
    CheckForUpdate(kOwn);
    cmdNo_Click(true);
    ResetVersionCheck();
    fakes::Calls.clear();
    CheckForUpdate(kOwn);
    EXPECT_EQ(fakes::Calls.back(), "ShowUpdatePrompt");
}

} // namespace
} // namespace mw
