#include "Siege.h"

#include "Files.h"
#include "Health.h"
#include "Wait.h"

#include <algorithm>
#include <cstdio>
#include <utility>

namespace journey {
namespace {

using namespace std::chrono_literals;

constexpr double kMedianMs = 100;
constexpr double kWorstMs = 250;
constexpr double kPatience = 10;       // times as long, while other journeys keep the machine busy
constexpr double kGrowth = 1.1;        // of the memory
constexpr double kBusyGrowth = 1.5;    // while others keep the machine busy and more piles up
constexpr std::size_t kTaste = 100000; // bytes of each attack, to fill what is kept

double Median(std::vector<double> values) {
    if (values.empty())
        return 0;
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

double Worst(const std::vector<double>& values) {
    return values.empty() ? 0 : *std::max_element(values.begin(), values.end());
}

std::string Listed(const std::set<std::string>& names) {
    std::string list;
    for (const std::string& name : names)
        list += ' ' + Escaped(name);
    return list;
}

} // namespace

const bool Siege::IsLong = qEnvironmentVariableIsSet("QUILLMERE_LONG_STORMS");

void Siege::Begin() {
    ConnectByWire();
    OpenAndCloseAWindow();
    for (Attack attack : TextAttacks()) {
        attack.Least = std::min(attack.Least, kTaste) * static_cast<std::size_t>(Times(1));
        Way->Begin(attack);
        Way->Stop();
        LetRead();
    }
    TypeALine();
    KeepState();
}

void Siege::KeepState() {
    double before = 0;
    WaitFor("the client's memory to rest", [&] {
        MbBefore = ResidentMb(Player.Process);
        return std::exchange(before, MbBefore) == MbBefore;
    });
    Known = FilesLeft();
    // Held for a moment while the settings are written.
    std::erase_if(Known, [](const std::string& name) { return name.ends_with(".lock"); });
}

// A failure in a row tells which one it was, also one that is thrown.
void Siege::Bear(const std::string& name, const std::function<void()>& row) {
    SCOPED_TRACE(name);
    Rows.push_back({name, 0, 0, 0, {}});
    try {
        row();
        ExpectToBeWell();
    } catch (const std::exception& error) {
        ADD_FAILURE() << error.what();
        throw;
    }
}

void Siege::Bear(const Attack& attack) {
    Bear(attack, [this] { PressKeys(3); });
}

void Siege::Bear(const Attack& attack, const std::function<void()>& meanwhile) {
    Bear(attack.Name, [&] {
        Attack longer = attack;
        longer.Least *= static_cast<std::size_t>(Times(1));
        Way->Begin(longer);
        meanwhile();
        Rows.back().MbDuring = ResidentMb(Player.Process);
        Rows.back().Sent = Way->Stop();
    });
}

void Siege::PressKeys(int times) {
    for (int i = 0; i < Times(times); ++i)
        Rows.back().Ms.push_back(TypeALine());
}

void Siege::Time(const std::function<void()>& answered) {
    const auto start = Wire::Clock::now();
    answered();
    const std::chrono::duration<double, std::milli> taken = Wire::Clock::now() - start;
    Rows.back().Ms.push_back(taken.count());
}

std::set<std::string> Siege::FilesLeft() const {
    std::set<std::string> names;
    for (const auto& [name, text] : FilesBelow(Player.Folder.path()))
        names.insert(name);
    names.erase("sound.raw");
    return names;
}

void Siege::ExpectToBeWell() {
    LetRead();
    PressKeys(1);
    Row& row = Rows.back();
    EXPECT_TRUE(Becomes([&] {
        row.MbAfter = ResidentMb(Player.Process);
        return row.MbAfter <= (IsLong ? kGrowth : kBusyGrowth) * MbBefore;
    })) << "It held "
        << MbBefore << " MB, and now holds " << row.MbAfter;
    EXPECT_TRUE(BoxesLeft().isEmpty()) << "a message box is left";
    EXPECT_TRUE(Becomes([this] { return FilesLeft() == Known; }, 5s))
        << "There may be" << Listed(Known) << "\nand there are" << Listed(FilesLeft());
    if (IsLong) {
        ExpectToBeQuick(row.Ms, kMedianMs);
        EXPECT_LE(Worst(row.Ms), kWorstMs);
    }
}

void Siege::ExpectToBeQuick(const std::vector<double>& ms, double medianMs) const {
    EXPECT_LE(Median(ms), medianMs) << "from a key to its arrival at the server";
}

void Siege::TearDown() {
    std::vector<double> all;
    for (const Row& row : Rows)
        all.insert(all.end(), row.Ms.begin(), row.Ms.end());
    EXPECT_FALSE(all.empty());
    ExpectToBeQuick(all, IsLong ? kMedianMs : kPatience * kMedianMs);
    if (IsLong)
        PrintTable();
    ServerJourney::TearDown();
}

void Siege::PrintTable() const {
    std::printf("\n%.1f MB before\n%-46s %9s %7s %7s %8s %8s\n", MbBefore, "", "MB sent", "median",
                "worst", "MB then", "MB after");
    for (const Row& row : Rows)
        std::printf("%-46s %9.2f %5.0fms %5.0fms %8.1f %8.1f\n", row.Name.c_str(),
                    static_cast<double>(row.Sent) / 1e6, Median(row.Ms), Worst(row.Ms),
                    row.MbDuring, row.MbAfter);
}

} // namespace journey
