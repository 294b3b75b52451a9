// The whole road of received text, from the walk to the box and to what triggers answer, does what
// the straightforward one does.
#include "terminal/PlainRoad.h"

#include "automation/Triggers.h"
#include "support/RandomInputs.h"

#include <numeric>

namespace mw {
namespace {

// A session goes on over many arrivals, and now and then begins anew.
class Road : public RuleTest {
protected:
    Road() { std::iota(Palette.begin(), Palette.end(), 0x0a0b00); }

    void BeginAnew() {
        FinishIncoming();
        ResetIncoming();
        ResetOutput();
        fakes::Shown.clear();
        Plain = {};
        Plain.Triggers = RandomTable();
        CurrentSet().Triggers = TriggerTable(Plain.Triggers);
    }

    std::vector<TriggerEntry> RandomTable() {
        std::vector<TriggerEntry> table(1 + Random() % 12);
        for (std::size_t i = 0; i < table.size(); ++i)
            table[i] = {RandomText(Random, 2), "react;" + std::to_string(i)};
        return table;
    }

    // Most are short; some fill the box, or more than may wait for the triggers.
    std::string RandomArrival() {
        std::string text = RandomText(Random, 14);
        if (Random() % 50 == 0)
            text += std::string(Random() % 9000, 'x') + '\n';
        if (Random() % 1000 == 0)
            text += std::string(Random() % 70000, 'y');
        return text + RandomText(Random, 2);
    }

    void Receive(const std::string& text) {
        fakes::Calls.clear();
        fakes::Runs.clear();
        fakes::Played.clear();
        fakes::Sends.clear();
        Plain.Effects.clear();
        Plain.Receive(text);
        Append(IncomingBuffer, text);
        ProcessIncoming();
    }

    void ExpectTheSame(const std::string& text) {
        ASSERT_EQ(Effects(), Plain.Effects) << text;
        ASSERT_EQ(View(IncomingBuffer), Plain.Buffer) << text;
        ASSERT_EQ(View(PendingLine), Plain.Pending) << text;
        ASSERT_EQ(fakes::Shown, Plain.Box) << text;
        ASSERT_EQ(CurrentColour, Plain.Colour) << text;
        ASSERT_EQ(AtLineStart, Plain.LineStart) << text;
    }

    static constexpr unsigned kSeed = 2206;
    std::mt19937 Random{kSeed};
    PlainRoad Plain;
};

TEST_F(Road, DoesWhatThePlainOneDoesInASessionOfRandomText) {
    std::size_t answers = 0;
    std::size_t trims = 0;
    BeginAnew();
    for (int round = RandomInputs(4000, kSeed); round > 0; --round) {
        if (Random() % 100 == 0)
            BeginAnew();
        const std::string text = RandomArrival();
        Receive(text);
        ASSERT_NO_FATAL_FAILURE(ExpectTheSame(text));
        const auto holds = [this](const char* word) {
            return std::any_of(
                Plain.Effects.begin(), Plain.Effects.end(),
                [word](const std::string& effect) { return effect.starts_with(word); });
        };
        answers += holds("Send react") ? 1u : 0u;
        trims += holds("RemoveFirst") ? 1u : 0u;
    }
    EXPECT_GT(answers, 200u);
    EXPECT_GT(trims, 5u);
}

} // namespace
} // namespace mw
