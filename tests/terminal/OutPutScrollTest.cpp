#include "terminal/OutPutScroll.h"

#include "fakes/Fakes.h"
#include "terminal/Output.h"

namespace mw {
namespace {

using Calls = std::vector<std::string>;
using Settings = std::map<std::string, std::string>;

class OutputHook : public RuleTest {};

TEST_F(OutputHook, InstallsOnTheBoxAndKeepsItsTokenAsDecimalText) {
    InstallOutputHook();
    EXPECT_EQ(fakes::Calls, Calls{"Hook"});
    EXPECT_EQ(PreviousProcedure, 4711);
    EXPECT_EQ(fakes::UserSettings, (Settings{{"RtbScrol/WndProc/WndProc", "4711"}}));
}

TEST_F(OutputHook, RemovalPutsThePreviousHandlingBackAndForgetsIt) {
    InstallOutputHook();
    fakes::Calls.clear();
    RemoveOutputHook();
    EXPECT_EQ(fakes::Calls, Calls{"Unhook 4711"});
    EXPECT_EQ(PreviousProcedure, 0);
    EXPECT_TRUE(fakes::UserSettings.empty());
}

TEST_F(OutputHook, RemovalWithoutAHookDoesNothing) {
    fakes::UserSettings["RtbScrol/WndProc/WndProc"] = "99";
    RemoveOutputHook();
    EXPECT_TRUE(fakes::Calls.empty());
    EXPECT_EQ(fakes::UserSettings.size(), 1u);
}

TEST_F(OutputHook, ASecondRemovalDoesNothing) {
    InstallOutputHook();
    RemoveOutputHook();
    fakes::Calls.clear();
    RemoveOutputHook();
    EXPECT_TRUE(fakes::Calls.empty());
}

TEST_F(OutputHook, RemovalLeavesOtherSettings) {
    fakes::UserSettings["MwClient/Windows/gWin"] = "1";
    InstallOutputHook();
    RemoveOutputHook();
    EXPECT_EQ(fakes::UserSettings, (Settings{{"MwClient/Windows/gWin", "1"}}));
}

TEST_F(OutputHook, CanBeInstalledAgain) {
    InstallOutputHook();
    RemoveOutputHook();
    InstallOutputHook();
    EXPECT_EQ(PreviousProcedure, 4711);
    EXPECT_EQ(fakes::UserSettings.size(), 1u);
}

TEST_F(OutputHook, HandsEveryMessageOnOnce) {
    InstallOutputHook();
    for (std::int32_t message = 0; message <= 1100; ++message) {
        if (message == WindowDestroyed)
            continue;
        fakes::Calls.clear();
        OutputWindowMessage(message);
        ASSERT_EQ(fakes::CallsOf("CallPrevious 4711 " + std::to_string(message)), 1);
        ASSERT_EQ(PreviousProcedure, 4711);
    }
    EXPECT_EQ(fakes::UserSettings.size(), 1u);
}

TEST_F(OutputHook, MessagesBearThePlatformsNumbers) {
    EXPECT_EQ(WindowDestroyed, 2);
    EXPECT_EQ(ReplaceSelection, 194);
    EXPECT_EQ(VerticalScroll, 277);
    EXPECT_EQ(ParentNotify, 528);
    EXPECT_EQ(SetCharacterFormat, 1092);
}

TEST_F(OutputHook, NewTextAndNewFormatAreRepainted) {
    InstallOutputHook();
    for (const std::int32_t message : {ReplaceSelection, SetCharacterFormat}) {
        fakes::Calls.clear();
        OutputWindowMessage(message);
        EXPECT_EQ(fakes::Calls, (Calls{"CallPrevious 4711 " + std::to_string(message), "Refresh"}));
    }
}

TEST_F(OutputHook, NothingIsRepaintedWhileATrimIsUnderWay) {
    InstallOutputHook();
    OutputRedrawOn = false;
    for (const std::int32_t message : {ReplaceSelection, SetCharacterFormat}) {
        fakes::Calls.clear();
        OutputWindowMessage(message);
        EXPECT_EQ(fakes::Calls, Calls{"CallPrevious 4711 " + std::to_string(message)});
    }
}

TEST_F(OutputHook, ScrollAndParentMessagesAreOnlyHandedOn) {
    InstallOutputHook();
    fakes::Calls.clear();
    OutputWindowMessage(VerticalScroll);
    OutputWindowMessage(ParentNotify);
    EXPECT_EQ(fakes::Calls, (Calls{"CallPrevious 4711 277", "CallPrevious 4711 528"}));
}

TEST_F(OutputHook, TheEndOfTheWindowPutsThePreviousHandlingBackBeforeItIsHandedOn) {
    InstallOutputHook();
    fakes::Calls.clear();
    OutputWindowMessage(WindowDestroyed);
    EXPECT_EQ(fakes::Calls, (Calls{"Unhook 4711", "CallPrevious 4711 2"}));
}

TEST_F(OutputHook, TheEndOfTheWindowIsHandedOnAndRemovesTheHook) {
    InstallOutputHook();
    fakes::Calls.clear();
    OutputWindowMessage(WindowDestroyed);
    EXPECT_EQ(fakes::CallsOf("CallPrevious 4711 2"), 1);
    EXPECT_EQ(fakes::CallsOf("Unhook 4711"), 1);
    EXPECT_EQ(PreviousProcedure, 0);
    EXPECT_TRUE(fakes::UserSettings.empty());
}

TEST_F(OutputHook, TextReadBackIsNeverTrusted) {
    InstallOutputHook();
    for (const char* text : {"1234", "", "not a number", "99999999999999999999", "-1"}) {
        fakes::UserSettings["RtbScrol/WndProc/WndProc"] = text;
        fakes::Calls.clear();
        OutputWindowMessage(VerticalScroll);
        EXPECT_EQ(fakes::Calls, Calls{"CallPrevious 4711 277"}) << text;
    }
    fakes::Calls.clear();
    OutputWindowMessage(WindowDestroyed);
    EXPECT_EQ(fakes::CallsOf("Unhook 4711"), 1);
    EXPECT_EQ(fakes::CallsOf("CallPrevious 4711 2"), 1);
    EXPECT_TRUE(fakes::UserSettings.empty());
}

} // namespace
} // namespace mw
