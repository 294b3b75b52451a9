#include "automation/Triggers.h"

#include "automation/Macros.h"
#include "base/Error.h"
#include "base/Globals.h"
#include "fakes/Fakes.h"
#include "support/ErrorOf.h"
#include "support/RandomInputs.h"

#include <ostream>
#include <random>

namespace mw {
namespace {

struct Case {
    const char* Name;
    std::vector<TriggerEntry> Triggers;
    const char* Line;
    const char* Sent;
};

void PrintTo(const Case& c, std::ostream* out) { *out << c.Name; }

const Case kCases[] = {
    {"TheEmptyTableSendsNothing", {{}}, "hungry\n", ""},
    {"AMatchSendsItsReaction", {{"hungry", "eat bread"}}, "You are hungry.\n", "eat bread\r"},
    {"AWholeLineMatches", {{"hungry\n", "eat"}}, "hungry\n", "eat\r"},
    {"TheStartMatches", {{"You", "eat"}}, "You are hungry.", "eat\r"},
    {"TheMiddleOfAWordMatches", {{"ngr", "eat"}}, "You are hungry.", "eat\r"},
    {"NoMatchSendsNothing", {{"thirsty", "drink"}}, "You are hungry.\n", ""},
    {"CaseMatters", {{"Hungry", "eat"}}, "You are hungry.\n", ""},
    {"NoWildcards", {{"h*y", "eat"}, {"h.ngry", "eat"}}, "You are hungry.\n", ""},
    {"EveryMatchFiresInTableOrder",
     {{"You are hungry", "a"}, {"thirsty", "b"}, {"hungry", "c"}},
     "You are hungry.\n",
     "a\rc\r"},
    {"AMatchFiresOnceALine", {{"a", "x"}}, "aaa\n", "x\r"},
    {"AnEmptyFirstTriggerSwitchesAllOffOnPurpose", {{"", "a"}, {"hungry", "b"}}, "hungry\n", ""},
    {"AnEmptyLaterTriggerMatchesEveryLineOnPurpose", {{"x", "a"}, {"", "b"}}, "hungry\n", "b\r"},
    {"AnEmptyLaterTriggerMatchesALineFeed", {{"x", "a"}, {"", "b"}}, "\n", "b\r"},
    {"AnEmptyLineMatchesNothing", {{"x", "a"}, {"", "b"}}, "", ""},
    {"AnEmptyReactionSendsABareCr", {{"hungry", ""}}, "hungry\n", "\r"},
    {"TheEscapeCharacterSendsSeveralCommands", {{"x", "a;b"}}, "x\n", "a\rb\r"},
    {"LineBreaksInAReactionAreSentAsTheyAre", {{"x", "a\r\nb"}}, "x\n", "a\r\nb\r"},
    {"ATriggerLongerThanTheLineDoesNotMatch", {{"hungry as a wolf", "x"}}, "hungry", ""},
    {"HighCharactersAreCompared", {{"\xe4\xff", "x"}}, "a\xe4\xff.\n", "x\r"},
};

class TriggerCheck : public RuleTest, public testing::WithParamInterface<Case> {};

TEST_P(TriggerCheck, SendsTheReactionsOfALine) {
    CurrentSet().Triggers = GetParam().Triggers;
    CheckTriggers(GetParam().Line);
    EXPECT_EQ(fakes::Sent(), GetParam().Sent);
}

INSTANTIATE_TEST_SUITE_P(Lines, TriggerCheck, testing::ValuesIn(kCases),
                         [](const auto& row) { return row.param.Name; });

// The check as it is described: each text is looked for by itself.
std::string PlainAnswer(const std::vector<TriggerEntry>& table, const std::string& line) {
    std::string sent;
    if (table[0].Trigger.empty())
        return sent;
    for (const TriggerEntry& entry : table) {
        if (!line.empty() && line.find(entry.Trigger) != std::string::npos)
            sent += entry.React + "\r";
    }
    return sent;
}

class RandomTriggers : public RuleTest {
protected:
    RandomTriggers() {
        fakes::OnCall = [](const std::string&) { fakes::Calls.clear(); };
    }

    std::string Text(std::size_t longest) {
        std::string text;
        for (std::size_t i = Random() % (longest + 1); i > 0; --i)
            text += "ab \n"[Random() % 4];
        return text;
    }

    std::vector<TriggerEntry> Table() {
        std::vector<TriggerEntry> table(1 + Random() % 20);
        for (std::size_t i = 0; i < table.size(); ++i)
            table[i] = {Text(5), std::to_string(i)};
        return table;
    }

    static constexpr unsigned kSeed = 3301;
    std::mt19937 Random{kSeed};
};

TEST_F(RandomTriggers, AnswerAsThePlainLoopDoes) {
    constexpr int kLines = 10; // a table
    std::size_t answers = 0;
    for (int round = RandomInputs(20000, kSeed) / kLines; round > 0; --round) {
        const std::vector<TriggerEntry> table = Table();
        CurrentSet().Triggers = TriggerTable(table);
        for (int i = 0; i < kLines; ++i) {
            const std::string line = Text(30);
            fakes::Sends.clear();
            CheckTriggers(line);
            ASSERT_EQ(fakes::Sent(), PlainAnswer(table, line)) << line;
            answers += fakes::Sends.empty() ? 0u : 1u;
        }
    }
    EXPECT_GT(answers, 1000u);
}

class Reactions : public RuleTest {};

TEST_F(Reactions, ComeFromTheCurrentSetOnly) {
    MacroSets.resize(2);
    MacroSets[0].Triggers = {{"hungry", "eat"}};
    MacroSets[1].Triggers = {{"hungry", "fast"}};
    CheckTriggers("hungry\n");
    CurrentMacroSet = 1;
    CheckTriggers("hungry\n");
    EXPECT_EQ(fakes::Sent(), "eat\rfast\r");
}

TEST_F(Reactions, AreNotSwitchedOffByAnotherSetsEmptyFirstTrigger) {
    MacroSets.resize(2);
    MacroSets[1].Triggers = {{"hungry", "fast"}};
    CurrentMacroSet = 1;
    CheckTriggers("hungry\n");
    EXPECT_EQ(fakes::Sent(), "fast\r");
}

TEST_F(Reactions, AreNotExpandedAndNotEchoed) {
    EchoOn = true;
    CurrentSet().Aliases = {{"e", "exit", true}};
    CurrentSet().Triggers = {{"hungry", "e"}};
    CheckTriggers("hungry\n");
    EXPECT_EQ(fakes::Calls, (std::vector<std::string>{"Send e", "Send \r"}));
}

TEST_F(Reactions, FireAgainEachTimeTheLineComes) {
    CurrentSet().Triggers = {{"hungry", "I am hungry"}};
    CheckTriggers("I am hungry\n");
    CheckTriggers("I am hungry\n");
    EXPECT_EQ(fakes::Sent(), "I am hungry\rI am hungry\r");
}

TEST_F(Reactions, GoThroughTheSendRulesWithoutAConnection) {
    fakes::SocketState = SocketClosed;
    CurrentSet().Triggers = {{"x", "a;b"}};
    CheckTriggers("x\n");
    EXPECT_EQ(fakes::Sent(), "\r\r");
}

TEST_F(Reactions, OfAThousandTriggersAreAllSent) {
    Edit(CurrentSet().Triggers).assign(1000, {"x", "y"});
    CheckTriggers("x\n");
    EXPECT_EQ(fakes::Sends.size(), 2000u);
}

TEST_F(Reactions, NeedACurrentSet) {
    for (const int index : {1, -1}) {
        CurrentMacroSet = static_cast<std::int16_t>(index);
        EXPECT_EQ(ErrorOf([] { CheckTriggers("x\n"); }), SubscriptOutOfRange) << "set " << index;
    }
}

} // namespace
} // namespace mw
