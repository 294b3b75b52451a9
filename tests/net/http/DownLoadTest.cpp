#include "net/http/DownLoad.h"

#include "base/Notice.h"
#include "config/FreshFolder.h"
#include "fakes/Fakes.h"
#include "net/http/WebBoxes.h"

#include <algorithm>
#include <ostream>

namespace mw {

void PrintTo(const DownloadSlot& slot, std::ostream* out) {
    *out << (slot.Busy != 0 ? "busy" : "free") << " with " << slot.Download;
}

namespace {

namespace fs = std::filesystem;
using fakes::CallsOf;
using Texts = std::vector<std::string>;

const std::string kOfThree = "HTTP/1.1 200 OK\r\nContent-Length: 3\r\n\r\n";
const std::string kNotFound = "HTTP/1.1 404 Not Found\r\n\r\n";

// A table by its busy flags, '1' and '0'.
std::vector<DownloadSlot> Table(const std::string& flags) {
    std::vector<DownloadSlot> table;
    for (const char flag : flags)
        table.push_back({0, static_cast<std::int16_t>(flag - '0')});
    return table;
}

std::string Flags(const std::vector<DownloadSlot>& table) {
    std::string flags;
    for (const DownloadSlot& slot : table)
        flags += std::to_string(slot.Busy);
    return flags;
}

struct SlotCase {
    const char* Name;
    std::string Before;
    std::int16_t Slot;
    std::string After;
};

void PrintTo(const SlotCase& c, std::ostream* out) { *out << c.Before; }

const SlotCase kSlots[] = {
    {"TheOneFreeSlot", "0", 0, "1"},
    {"ABusySlotMakesOneMore", "1", 1, "11"},
    {"AllBusyMakeOneMore", "11111", 5, "111111"},
    {"TheFirstIsTakenAgain", "01", 0, "11"},
    {"TheFirstFreeOneIsTaken", "1101011", 2, "1111011"},
    {"FreeOnesAtTheEndAreCutOff", "1010000", 1, "111"},
    {"FreeOnesAtTheEndAreCutOffBeforeOneIsMade", "11000", 2, "111"},
    {"AllFreeAreCutOffButTheFirst", "00000", 0, "1"},
    {"OneBusyAtTheEndKeepsTheOthers", "00001", 0, "10001"},
    {"NoSlotMakesOne", "", 0, "1"},
};

class DownloadSlots : public testing::TestWithParam<SlotCase> {};

TEST_P(DownloadSlots, AreTrimmedAndTheFirstFreeOneIsTaken) {
    std::vector<DownloadSlot> table = Table(GetParam().Before);
    EXPECT_EQ(TakeSlot(table), GetParam().Slot);
    EXPECT_EQ(Flags(table), GetParam().After);
}

INSTANTIATE_TEST_SUITE_P(Slots, DownloadSlots, testing::ValuesIn(kSlots),
                         [](const auto& row) { return row.param.Name; });

class Downloads : public RuleTest {
protected:
    // A window that is closed unloads, as the real one does.
    Downloads() {
        fakes::OnCall = [](const std::string& call) {
            if (call.starts_with("CloseDownloadWindow "))
                frmDownload_Unload(std::stoi(call.substr(20)));
        };
    }

    ~Downloads() override {
        ResetDownloads();
        DropWebBoxes();
    }

    // Starts a download and answers its number.
    std::int32_t Fetch(const std::string& name) {
        FetchFile("http://h/" + name, Folder.Path / name);
        return fakes::Transfers.empty() ? 0 : fakes::Transfers.rbegin()->first;
    }

    std::vector<std::int32_t> FetchMany(int count) {
        std::vector<std::int32_t> numbers;
        for (int i = 0; i < count; ++i)
            numbers.push_back(Fetch(std::to_string(i) + ".wav"));
        return numbers;
    }

    static void Receive(std::int32_t number, const std::string& header, const std::string& body) {
        fakes::Transfer& transfer = fakes::Transfers.at(number);
        transfer.Header = header;
        transfer.Body = body;
        transfer.Ended = true;
        inet_StateChanged(number);
    }

    static void Finish(std::int32_t number) { Receive(number, kOfThree, "abc"); }

    static bool IsClosed(std::int32_t number) {
        return CallsOf("CloseDownloadWindow " + std::to_string(number)) == 1;
    }

    Texts Names() const {
        Texts names;
        for (const auto& entry : fs::directory_iterator(Folder.Path))
            names.push_back(entry.path().filename().string());
        std::sort(names.begin(), names.end());
        return names;
    }

    static std::string Of(const std::string& call, std::int32_t number) {
        return call + " " + std::to_string(number);
    }

    std::string PathBox(const std::string& name) const {
        return "Box " + (Folder.Path / name).string();
    }

    FreshFolder Folder;
};

TEST_F(Downloads, OpenTheirWindowBeforeTheyAsk) {
    const std::int32_t number = Fetch("rain.wav");
    EXPECT_EQ(fakes::Calls, (Texts{Of("OpenDownloadWindow", number) + " 0 rain.wav",
                                   Of("Execute", number) + " http://h/rain.wav"}));
    EXPECT_EQ(DownloadTable, (std::vector<DownloadSlot>{{number, 1}}));
}

TEST_F(Downloads, AreNamedInTheClientsCodePage) {
    FetchFile("http://h/x", Folder.Path / "caf\xc3\xa9.wav"); // in UTF-8, as the disk has it
    EXPECT_TRUE(fakes::Calls.at(0).ends_with(" 0 caf\xe9.wav")) << fakes::Calls.at(0);
}

TEST_F(Downloads, CloseTheirWindowWhenTheFileIsWhole) {
    const std::int32_t number = Fetch("rain.wav");
    Finish(number);
    EXPECT_EQ(Folder.ContentOf("rain.wav"), "abc");
    EXPECT_TRUE(IsClosed(number));
    EXPECT_EQ(Names(), Texts{"rain.wav"});
    EXPECT_EQ(Flags(DownloadTable), "0");
    EXPECT_EQ(CallsOf("Box"), 0);
    EXPECT_TRUE(fakes::Transfers.empty());
}

TEST_F(Downloads, CloseTheirWindowWithNothingWrittenWithoutALength) {
    const std::int32_t number = Fetch("rain.wav");
    Receive(number, "HTTP/1.1 200 OK\r\n\r\n", "abc");
    EXPECT_TRUE(IsClosed(number));
    EXPECT_EQ(Names(), Texts{});
}

TEST_F(Downloads, ShowTheirProgress) {
    const std::int32_t number = Fetch("rain.wav");
    fakes::Calls.clear();
    fakes::Transfers.at(number).Header = "HTTP/1.1 200 OK\r\nContent-Length: 4096\r\n\r\n";
    fakes::Transfers.at(number).Body = std::string(2048, 'x');
    inet_StateChanged(number);
    EXPECT_EQ(fakes::Calls,
              (Texts{Of("Progress", number) + " 25", Of("Progress", number) + " 50"}));
}

TEST_F(Downloads, ThatFailShowTheErrorAndResetTheirProgress) {
    const std::int32_t number = Fetch("rain.wav");
    fakes::Calls.clear();
    Receive(number, kNotFound, "");
    EXPECT_EQ(fakes::Calls, (Texts{"Error box The file, \"http://h/rain.wav\" was not found!",
                                   Of("Progress", number) + " 0", Of("Cancel", number)}));
}

TEST_F(Downloads, ThatFailCloseTheirWindowBehindTheBox) {
    const std::int32_t number = Fetch("rain.wav");
    Receive(number, kNotFound, "");
    EXPECT_FALSE(IsClosed(number));
    EXPECT_EQ(Flags(DownloadTable), "1");
    WebBox_Closed();
    EXPECT_TRUE(IsClosed(number));
    EXPECT_EQ(Flags(DownloadTable), "0");
}

TEST_F(Downloads, ThatEndShortShowThePathThenTheErrorAndCloseBehindBoth) {
    const std::int32_t number = Fetch("rain.wav");
    Receive(number, kOfThree, "ab");
    EXPECT_EQ(CallsOf(PathBox("rain.wav")), 1);
    EXPECT_EQ(CallsOf("Error box The connection with the server was reset."), 0);
    WebBox_Closed();
    EXPECT_EQ(CallsOf("Error box The connection with the server was reset."), 1);
    EXPECT_FALSE(IsClosed(number));
    WebBox_Closed();
    EXPECT_TRUE(IsClosed(number));
    EXPECT_EQ(Names(), Texts{});
}

TEST_F(Downloads, WithoutSpaceShowTheErrorThenThePathAndCloseBehindBoth) {
    fakes::FreeSpace = 2;
    const std::int32_t number = Fetch("rain.wav");
    Receive(number, kOfThree, "abc");
    EXPECT_EQ(CallsOf("Error box There is not enough free space on disk for this file."), 1);
    EXPECT_EQ(CallsOf(PathBox("rain.wav")), 0);
    WebBox_Closed();
    EXPECT_EQ(CallsOf(PathBox("rain.wav")), 1);
    EXPECT_FALSE(IsClosed(number));
    WebBox_Closed();
    EXPECT_TRUE(IsClosed(number));
    EXPECT_EQ(Names(), Texts{});
}

TEST_F(Downloads, ThatCantBeWrittenCloseBehindThePath) {
    FetchFile("http://h/rain.wav", Folder.Path / "a" / "b" / "rain.wav");
    const std::int32_t number = fakes::Transfers.begin()->first;
    Receive(number, kOfThree, "abc");
    EXPECT_FALSE(IsClosed(number));
    EXPECT_EQ(CallsOf(PathBox("a/b/rain.wav")), 1);
    WebBox_Closed();
    EXPECT_TRUE(IsClosed(number));
}

TEST_F(Downloads, ThatAreTooLargeGiveANoticeAndCloseBehindThePath) {
    const std::int32_t number = Fetch("rain.wav");
    Receive(number, "HTTP/1.1 200 OK\r\nContent-Length: 67108865\r\n\r\n", "");
    EXPECT_EQ(Notice, "Not downloaded, because it is too large: http://h/rain.wav");
    EXPECT_EQ(CallsOf(PathBox("rain.wav")), 1);
    WebBox_Closed();
    EXPECT_TRUE(IsClosed(number));
    EXPECT_EQ(std::count_if(fakes::Calls.begin(), fakes::Calls.end(),
                            [](const std::string& call) { return call.starts_with("Error"); }),
              0);
}

// A server may announce one length and send another, in chunks of its own.
TEST_F(Downloads, OfFarMoreThanAnnouncedEndAsShortOnes) {
    const std::int32_t number = Fetch("rain.wav");
    EXPECT_NO_THROW(
        Receive(number, "HTTP/1.1 200 OK\r\nContent-Length: 1\r\n\r\n", std::string(5000, 'x')));
    EXPECT_EQ(CallsOf(PathBox("rain.wav")), 1);
    WebBox_Closed();
    WebBox_Closed();
    EXPECT_TRUE(IsClosed(number));
    EXPECT_EQ(Names(), Texts{});
}

TEST_F(Downloads, AreRunningUntilOneFails) {
    EXPECT_FALSE(DownloadRunning);
    const std::int32_t first = Fetch("rain.wav");
    EXPECT_TRUE(DownloadRunning);
    Finish(first);
    EXPECT_TRUE(DownloadRunning); // meant: only a failure clears it
    Receive(Fetch("thunder.wav"), kNotFound, "");
    EXPECT_FALSE(DownloadRunning);
    Fetch("bell.wav");
    EXPECT_TRUE(DownloadRunning);
}

// The table.

TEST_F(Downloads, TenAtOnceTakeSlots0To9AndTheNextTakes0Again) {
    const std::vector<std::int32_t> numbers = FetchMany(10);
    for (std::size_t i = 0; i < 10; ++i) {
        const std::string slot = std::to_string(i);
        EXPECT_EQ(CallsOf(Of("OpenDownloadWindow", numbers[i]) + " " + slot + " " + slot + ".wav"),
                  1);
    }
    EXPECT_EQ(Flags(DownloadTable), "1111111111");
    for (const std::int32_t number : numbers)
        Finish(number);
    EXPECT_EQ(Flags(DownloadTable), "0000000000"); // trimmed when the next one comes
    const std::int32_t next = Fetch("next.wav");
    EXPECT_EQ(CallsOf(Of("OpenDownloadWindow", next) + " 0 next.wav"), 1);
    EXPECT_EQ(DownloadTable, (std::vector<DownloadSlot>{{next, 1}}));
}

TEST_F(Downloads, TakeTheFirstSlotThatIsFree) {
    const std::vector<std::int32_t> numbers = FetchMany(5);
    Finish(numbers[3]);
    Finish(numbers[1]);
    EXPECT_EQ(Flags(DownloadTable), "10101");
    const std::int32_t next = Fetch("next.wav");
    EXPECT_EQ(Flags(DownloadTable), "11101");
    EXPECT_EQ(DownloadTable[1].Download, next);
}

TEST_F(Downloads, FreeTheirSlotsInAnyOrder) {
    const std::vector<std::int32_t> numbers = FetchMany(4);
    Receive(numbers[2], kNotFound, "");
    Finish(numbers[3]);
    frmDownload_Unload(numbers[0]);
    EXPECT_EQ(Flags(DownloadTable), "0110");
    WebBox_Closed();
    EXPECT_EQ(Flags(DownloadTable), "0100");
    Fetch("next.wav");
    EXPECT_EQ(Flags(DownloadTable), "11");
}

TEST_F(Downloads, AreThirtyTwoAtMost) {
    EXPECT_EQ(kMostDownloads, 32u);
    FetchMany(32);
    EXPECT_EQ(fakes::Transfers.size(), 32u);
    EXPECT_EQ(Notice, "");
    fakes::Calls.clear();
    FetchFile("http://h/late.wav", Folder.Path / "late.wav");
    EXPECT_EQ(fakes::Transfers.size(), 32u);
    EXPECT_EQ(DownloadTable.size(), 32u);
    EXPECT_EQ(Notice, "Not downloaded, because too many are under way: http://h/late.wav");
    ASSERT_EQ(fakes::Calls.size(), 1u); // the notice, and no window
    EXPECT_TRUE(fakes::Calls[0].starts_with("Panel ")) << fakes::Calls[0];
}

TEST_F(Downloads, GoOnWhenOneOfTheThirtyTwoHasEnded) {
    const std::vector<std::int32_t> numbers = FetchMany(32);
    Finish(numbers[7]);
    const std::int32_t next = Fetch("next.wav");
    EXPECT_EQ(DownloadTable[7], (DownloadSlot{next, 1}));
    EXPECT_EQ(Notice, "");
}

TEST_F(Downloads, WhoseBoxIsOpenCountAmongTheThirtyTwo) {
    const std::vector<std::int32_t> numbers = FetchMany(32);
    Receive(numbers[0], kNotFound, "");
    FetchFile("http://h/late.wav", Folder.Path / "late.wav");
    EXPECT_NE(Notice, "");
    WebBox_Closed();
    Notice.clear();
    FetchFile("http://h/late.wav", Folder.Path / "late.wav");
    EXPECT_EQ(Notice, "");
    EXPECT_EQ(fakes::Transfers.size(), 32u);
}

// Windows closed by hand.

TEST_F(Downloads, ClosedByHandBeforeTheirHeaderEndWithoutABox) {
    const std::int32_t number = Fetch("rain.wav");
    fakes::Calls.clear();
    frmDownload_Unload(number);
    EXPECT_EQ(fakes::Calls, Texts{Of("Cancel", number)});
    EXPECT_EQ(Flags(DownloadTable), "0");
}

TEST_F(Downloads, ClosedByHandInTheMiddleDeleteTheirPartAndShowThePath) {
    const std::int32_t number = Fetch("rain.wav");
    fakes::Transfers.at(number).Header = kOfThree;
    inet_StateChanged(number);
    EXPECT_EQ(Names().size(), 1u);
    fakes::Calls.clear();
    frmDownload_Unload(number);
    EXPECT_EQ(fakes::Calls, (Texts{Of("Cancel", number), PathBox("rain.wav")}));
    EXPECT_EQ(Names(), Texts{});
    EXPECT_EQ(Flags(DownloadTable), "0");
    WebBox_Closed(); // of a window that is gone
    EXPECT_EQ(fakes::Calls.size(), 2u);
}

TEST_F(Downloads, ClosedByHandWhileTheirBoxIsOpenAreClosedOnce) {
    const std::int32_t number = Fetch("rain.wav");
    Receive(number, kNotFound, "");
    frmDownload_Unload(number);
    EXPECT_EQ(Flags(DownloadTable), "0");
    const std::int32_t next = Fetch("thunder.wav");
    WebBox_Closed();
    EXPECT_EQ(CallsOf(Of("CloseDownloadWindow", number)), 0);
    EXPECT_EQ(DownloadTable, (std::vector<DownloadSlot>{{next, 1}})); // the slot's new owner stays
}

TEST_F(Downloads, ClosedByHandLeaveTheOthers) {
    const std::vector<std::int32_t> numbers = FetchMany(3);
    frmDownload_Unload(numbers[1]);
    EXPECT_EQ(fakes::Transfers.size(), 2u);
    Finish(numbers[0]);
    Finish(numbers[2]);
    EXPECT_EQ(Names(), (Texts{"0.wav", "2.wav"}));
}

TEST_F(Downloads, ClosedTwiceAreClosedOnce) {
    const std::int32_t number = Fetch("rain.wav");
    frmDownload_Unload(number);
    const std::int32_t next = Fetch("thunder.wav");
    frmDownload_Unload(number);
    EXPECT_EQ(DownloadTable, (std::vector<DownloadSlot>{{next, 1}}));
    EXPECT_EQ(fakes::Transfers.size(), 1u);
}

TEST_F(Downloads, ThatNobodyKnowsAreLeftAlone) {
    const std::int32_t number = Fetch("rain.wav");
    fakes::Calls.clear();
    inet_StateChanged(number + 1);
    frmDownload_Unload(number + 1);
    EXPECT_EQ(fakes::Calls, Texts{});
    EXPECT_EQ(DownloadTable, (std::vector<DownloadSlot>{{number, 1}}));
}

TEST_F(Downloads, NeverShareANumber) {
    const std::int32_t first = Fetch("rain.wav");
    Finish(first);
    ResetDownloads();
    EXPECT_NE(Fetch("rain.wav"), first);
}

TEST_F(Downloads, IntoOneFileSpoilNeither) {
    const std::int32_t first = Fetch("rain.wav");
    const std::int32_t second = Fetch("rain.wav");
    fakes::Transfers.at(first).Header = kOfThree;
    inet_StateChanged(first);
    Receive(second, kOfThree, "xyz");
    EXPECT_EQ(Folder.ContentOf("rain.wav"), "xyz");
    Finish(first);
    EXPECT_EQ(Folder.ContentOf("rain.wav"), "abc");
    EXPECT_EQ(Names(), Texts{"rain.wav"});
}

// Boxes of many.

TEST_F(Downloads, ThatFailTogetherShowTheirBoxesOneAtATime) {
    const std::vector<std::int32_t> numbers = FetchMany(3);
    for (const std::int32_t number : numbers)
        Receive(number, kNotFound, "");
    for (std::size_t i = 0; i < 3; ++i) {
        const std::string name = std::to_string(i) + ".wav";
        EXPECT_EQ(CallsOf("Error box The file, \"http://h/" + name + "\" was not found!"), 1);
        EXPECT_FALSE(IsClosed(numbers[i]));
        WebBox_Closed();
        EXPECT_TRUE(IsClosed(numbers[i]));
    }
}

TEST_F(Downloads, WhoseBoxesAreLeftOutCloseAtOnce) {
    const std::vector<std::int32_t> numbers = FetchMany(12);
    for (const std::int32_t number : numbers)
        Receive(number, kNotFound, "");
    EXPECT_FALSE(IsClosed(numbers[8]));
    EXPECT_TRUE(IsClosed(numbers[9]));
    EXPECT_TRUE(IsClosed(numbers[11]));
    EXPECT_EQ(Flags(DownloadTable), "111111111000");
    for (int i = 0; i < 9; ++i)
        WebBox_Closed();
    EXPECT_EQ(Flags(DownloadTable), "000000000000");
    for (const std::int32_t number : numbers)
        EXPECT_TRUE(IsClosed(number)) << number;
}

TEST_F(Downloads, ThatEndShortAndWhoseBoxesAreLeftOutLeaveNoPart) {
    const std::vector<std::int32_t> numbers = FetchMany(12);
    for (const std::int32_t number : numbers)
        Receive(number, kOfThree, "ab");
    EXPECT_EQ(Names(), Texts{});
    EXPECT_TRUE(fakes::Transfers.empty());
    for (int i = 0; i < 9; ++i)
        WebBox_Closed();
    for (const std::int32_t number : numbers)
        EXPECT_TRUE(IsClosed(number)) << number;
}

// The end of the program.

TEST_F(Downloads, AreAbandonedWithoutAWord) {
    const std::vector<std::int32_t> numbers = FetchMany(3);
    fakes::Transfers.at(numbers[1]).Header = kOfThree;
    inet_StateChanged(numbers[1]);
    fakes::Calls.clear();
    AbandonDownloads();
    EXPECT_EQ(Names(), Texts{});
    EXPECT_TRUE(fakes::Transfers.empty());
    for (const std::int32_t number : numbers) {
        EXPECT_TRUE(IsClosed(number));
        EXPECT_EQ(CallsOf(Of("Cancel", number)), 1);
    }
    EXPECT_EQ(fakes::Calls.size(), 6u); // three windows and three transfers
    EXPECT_EQ(DownloadTable, std::vector<DownloadSlot>(1));
    EXPECT_FALSE(DownloadRunning);
}

TEST_F(Downloads, AreAbandonedWithTheirBoxes) {
    const std::vector<std::int32_t> numbers = FetchMany(2);
    for (const std::int32_t number : numbers)
        Receive(number, kOfThree, "ab");
    AbandonDownloads();
    EXPECT_EQ(CallsOf("HideWebBox"), 1);
    fakes::Calls.clear();
    WebBox_Closed();
    EXPECT_EQ(fakes::Calls, Texts{});
}

TEST_F(Downloads, AreAbandonedWhenThereAreNone) {
    AbandonDownloads();
    EXPECT_EQ(fakes::Calls, Texts{});
    EXPECT_EQ(DownloadTable, std::vector<DownloadSlot>(1));
}

TEST_F(Downloads, StartAgainAfterTheyWereAbandoned) {
    FetchMany(3);
    AbandonDownloads();
    const std::int32_t number = Fetch("rain.wav");
    Finish(number);
    EXPECT_EQ(Folder.ContentOf("rain.wav"), "abc");
    EXPECT_TRUE(IsClosed(number));
}

} // namespace
} // namespace mw
