#include "net/http/FileDownloader.h"

#include "base/Notice.h"
#include "config/FreshFolder.h"
#include "fakes/Fakes.h"
#include "support/FullDisk.h"

#include <algorithm>
#include <limits>
#include <ostream>
#include <random>

namespace mw {
namespace {

namespace fs = std::filesystem;
using Texts = std::vector<std::string>;

const std::string kAddress = "http://h/sounds/rain.wav";
const std::string kReset = "error The connection with the server was reset.";
const std::string kNews = "events Getting file information";

std::string Ok(const std::string& length, const std::string& status = "200 OK") {
    return "HTTP/1.1 " + status + "\r\nContent-Length: " + length + "\r\n\r\n";
}

std::string Ok(std::size_t length) { return Ok(std::to_string(length)); }

std::string Bytes(std::size_t count) {
    std::string bytes;
    for (std::size_t i = 0; i < count; ++i)
        bytes += static_cast<char>(i * 7 + i / 256);
    return bytes;
}

// A control with its transfer, and what it tells in order.
class Fetching {
public:
    Fetching(std::int32_t transfer, fs::path destination)
        : Control(transfer), Destination(std::move(destination)), Transfer(transfer) {
        Control.DowloadComplete = [this] { Tell("complete"); };
        Control.DownloadProgress = [this](const std::string& text) { Tell("progress " + text); };
        Control.DownloadErrors = [this](const std::string& text) { Tell("error " + text); };
        Control.DownloadEvents = [this](const std::string& text) { Tell("events " + text); };
        Control.PlainBox = [this](const std::string& text) { Tell("box " + text); };
        Control.Ended = [this] { Tell("ended"); };
    }

    void Start() { Control.DownloadFile(kAddress, Destination); }

    void ReceiveHeader(const std::string& header) {
        fakes::Transfers.at(Transfer).Header = header;
        Control.StateChanged();
    }

    void Receive(const std::string& bytes) {
        fakes::Transfers.at(Transfer).Body += bytes;
        Control.StateChanged();
    }

    void ReceiveEnd() {
        fakes::Transfers.at(Transfer).Ended = true;
        Control.StateChanged();
    }

    void Fetch(const std::string& header, const std::string& body) {
        Start();
        ReceiveHeader(header);
        if (Control.IsRunning())
            Receive(body);
        if (Control.IsRunning())
            ReceiveEnd();
    }

    bool IsTransferring() const { return fakes::Transfers.contains(Transfer); }

    std::string PathBox() const { return "box " + Destination.string(); }

    FileDownloader Control;
    Texts Told;
    std::function<void(const std::string& what)> WhenTold;
    fs::path Destination;

private:
    void Tell(const std::string& what) {
        Told.push_back(what);
        if (WhenTold)
            WhenTold(what);
    }

    std::int32_t Transfer;
};

class Downloader : public RuleTest {
protected:
    fs::path Place(const std::string& name) const { return Folder.Path / name; }

    // All files and folders, by their names below the test's folder.
    Texts Names() const {
        Texts names;
        for (const auto& entry : fs::recursive_directory_iterator(Folder.Path))
            names.push_back(fs::relative(entry.path(), Folder.Path).string());
        std::sort(names.begin(), names.end());
        return names;
    }

    // The neighbour that holds what has arrived for Own, under the name the control gives it.
    fs::path Neighbour() const {
        Fetching probe(7, Own.Destination);
        probe.Start();
        probe.ReceiveHeader(Ok(1));
        return Folder.Path / Names().at(0);
    }

    void Write(const std::string& name, const std::string& contents) const {
        std::ofstream(Place(name), std::ios::binary) << contents;
    }

    FreshFolder Folder;
    Fetching Own{7, Folder.Path / "rain.wav"};
};

// The request.

TEST_F(Downloader, AsksForTheWholeFileWithItsOneHeaderLine) {
    Own.Start();
    const inet::Request& request = fakes::Transfers.at(7).Request;
    EXPECT_EQ(request.Address, kAddress);
    EXPECT_EQ(request.UserName, "");
    EXPECT_EQ(request.Password, "");
    EXPECT_EQ(request.Header, "Range: bytes=0-");
    EXPECT_EQ(Own.Told, Texts{kNews});
    EXPECT_TRUE(Own.Control.IsRunning());
    EXPECT_FALSE(Own.Control.succeeded);
    EXPECT_EQ(Names(), Texts{});
}

TEST_F(Downloader, HandsOverUserNameAndPassword) {
    Own.Control.DownloadFile(kAddress, Own.Destination, "quill", "secret");
    EXPECT_EQ(fakes::Transfers.at(7).Request.UserName, "quill");
    EXPECT_EQ(fakes::Transfers.at(7).Request.Password, "secret");
}

TEST_F(Downloader, TellsItsNewsBeforeItAsks) {
    Own.WhenTold = [this](const std::string&) { EXPECT_FALSE(Own.IsTransferring()); };
    Own.Start();
    EXPECT_EQ(Own.Told, Texts{kNews});
    EXPECT_TRUE(Own.IsTransferring());
}

TEST_F(Downloader, IsIdleBeforeItsFirstRun) {
    EXPECT_FALSE(Own.Control.IsRunning());
    Own.Control.StateChanged();
    EXPECT_EQ(Own.Told, Texts{});
    EXPECT_EQ(fakes::Calls, Texts{});
}

TEST_F(Downloader, WaitsForItsHeader) {
    Own.Start();
    Own.Receive(Bytes(5000));
    Own.Control.StateChanged();
    EXPECT_EQ(Own.Told, Texts{kNews});
    EXPECT_EQ(Names(), Texts{});
    EXPECT_TRUE(Own.Control.IsRunning());
}

// Bodies.

struct Body {
    const char* Name;
    std::size_t Size;
    Texts Progress;
};

void PrintTo(const Body& body, std::ostream* out) { *out << body.Size << " bytes"; }

// One progress a chunk. A chunk of 1024 may be followed by more, so that the end, empty, counts as
// one too.
const Body kBodies[] = {
    {"OneByte", 1, {"progress 100"}},
    {"TwoBytes", 2, {"progress 100", "progress 100"}},
    {"OneLessThanAChunk", 1023, {"progress 100", "progress 100"}},
    {"AChunk", 1024, {"progress 100", "progress 100"}},
    {"ALastChunkOfOneByte", 1025, {"progress 100", "progress 100"}},
    {"ALastChunkOfTwoBytes", 1026, {"progress 100", "progress 100", "progress 100"}},
    {"TwoChunks", 2048, {"progress 50", "progress 100", "progress 100"}},
    {"TwoChunksAndOneByte", 2049, {"progress 50", "progress 100", "progress 100"}},
};

class DownloadedBody : public Downloader, public testing::WithParamInterface<Body> {
protected:
    std::string Content() const { return Bytes(GetParam().Size); }

    Texts Expected() const {
        Texts told{kNews};
        told.insert(told.end(), GetParam().Progress.begin(), GetParam().Progress.end());
        told.insert(told.end(), {"complete", "ended"});
        return told;
    }

    void Begin() {
        Own.Told.clear();
        fs::remove(Own.Destination);
        Own.Start();
        Own.ReceiveHeader(Ok(GetParam().Size));
    }

    void ExpectWhole() {
        ASSERT_EQ(Own.Told, Expected());
        ASSERT_EQ(Folder.ContentOf("rain.wav"), Content());
        ASSERT_EQ(Names(), Texts{"rain.wav"});
        ASSERT_TRUE(Own.Control.succeeded);
        ASSERT_FALSE(Own.Control.cancelled);
        ASSERT_FALSE(Own.Control.IsRunning());
        ASSERT_FALSE(Own.IsTransferring());
    }
};

TEST_P(DownloadedBody, ArrivesAtOnce) {
    Own.Start();
    fakes::Transfers.at(7) = {{}, Ok(GetParam().Size), Content(), true};
    Own.Control.StateChanged();
    ExpectWhole();
    EXPECT_EQ(Own.Control.received, static_cast<std::int64_t>(GetParam().Size));
    EXPECT_EQ(Own.Control.total, static_cast<std::int64_t>(GetParam().Size));
}

TEST_P(DownloadedBody, ArrivesCutAtAnyByte) {
    const std::string content = Content();
    for (std::size_t cut = 0; cut <= content.size(); ++cut) {
        Begin();
        Own.Receive(content.substr(0, cut));
        Own.Receive(content.substr(cut));
        Own.ReceiveEnd();
        ASSERT_NO_FATAL_FAILURE(ExpectWhole()) << "cut at " << cut;
    }
}

TEST_P(DownloadedBody, ArrivesByteByByte) {
    Begin();
    for (const char byte : Content())
        Own.Receive(std::string(1, byte));
    Own.ReceiveEnd();
    ExpectWhole();
}

TEST_P(DownloadedBody, ArrivesInRandomPieces) {
    std::mt19937 random(6100);
    for (int round = 0; round < 100; ++round) {
        const std::string content = Content();
        std::uniform_int_distribution<std::size_t> size(0, content.size());
        Begin();
        for (std::size_t at = 0; at < content.size();) {
            const std::string piece = content.substr(at, size(random));
            Own.Receive(piece);
            at += piece.size();
        }
        Own.ReceiveEnd();
        ASSERT_NO_FATAL_FAILURE(ExpectWhole()) << "round " << round;
    }
}

TEST_P(DownloadedBody, IsShortByItsLastByte) {
    Begin();
    Own.Receive(Content().substr(1));
    Own.ReceiveEnd();
    EXPECT_EQ(Names(), Texts{});
    EXPECT_EQ(Texts(Own.Told.end() - 3, Own.Told.end()), (Texts{Own.PathBox(), kReset, "ended"}));
    EXPECT_EQ(std::count(Own.Told.begin(), Own.Told.end(), "complete"), 0);
    EXPECT_FALSE(Own.Control.succeeded);
    EXPECT_FALSE(Own.IsTransferring());
}

TEST_P(DownloadedBody, IsWholeUnder206Too) {
    Own.Fetch(Ok(std::to_string(GetParam().Size), "206 Partial Content"), Content());
    ExpectWhole();
}

TEST_P(DownloadedBody, IsLeftNowhereUntilItIsWhole) {
    Begin();
    Own.Receive(Content());
    EXPECT_FALSE(fs::exists(Own.Destination));
    Own.ReceiveEnd();
    ExpectWhole();
}

INSTANTIATE_TEST_SUITE_P(Bodies, DownloadedBody, testing::ValuesIn(kBodies),
                         [](const auto& row) { return row.param.Name; });

TEST_F(Downloader, GoesOnWhenASlowServerSendsOneByteAtATime) {
    Own.Start();
    Own.ReceiveHeader(Ok(3));
    Own.Receive("a");
    EXPECT_TRUE(Own.Control.IsRunning());
    EXPECT_EQ(Own.Told, Texts{kNews}); // no chunk yet
    Own.Receive("b");
    Own.Receive("c");
    Own.ReceiveEnd();
    EXPECT_EQ(Folder.ContentOf("rain.wav"), "abc");
}

TEST_F(Downloader, TellsProgressAsSoonAsAChunkIsThere) {
    Own.Start();
    Own.ReceiveHeader(Ok(4096));
    Own.Receive(Bytes(1023));
    EXPECT_EQ(Own.Told, Texts{kNews});
    Own.Receive("x");
    EXPECT_EQ(Own.Told, (Texts{kNews, "progress 25"}));
    EXPECT_EQ(Own.Control.received, 1024);
    Own.Receive(Bytes(2048));
    EXPECT_EQ(Own.Told, (Texts{kNews, "progress 25", "progress 50", "progress 75"}));
}

TEST_F(Downloader, OfAnAnnouncedBodyThatIsEmptyIsShort) {
    Own.Fetch(Ok(5), "");
    EXPECT_EQ(Own.Told, (Texts{kNews, "progress 0", Own.PathBox(), kReset, "ended"}));
    EXPECT_EQ(Names(), Texts{});
    EXPECT_FALSE(Own.Control.succeeded);
}

TEST_F(Downloader, OfMoreThanAnnouncedKeepsNothing) {
    Own.Fetch(Ok(1000), Bytes(1500));
    EXPECT_EQ(Own.Told, (Texts{kNews, "progress 102", "progress 150", "progress 150", Own.PathBox(),
                               kReset, "ended"}));
    EXPECT_EQ(Names(), Texts{});
    EXPECT_FALSE(Own.Control.succeeded);
}

// Statuses.

struct Status {
    const char* Name;
    std::string Header;
    std::string Error;
};

void PrintTo(const Status& status, std::ostream* out) { *out << status.Header; }

const std::string kNoConnection = "Cannot establish connection.";
const std::string kResponse = "The server returned the following response:\r\r";

const Status kFailures[] = {
    {"NoContent", "HTTP/1.1 204 No Content\r\n\r\n", "Nothing to download!"},
    {"NoContentThatAnnouncesSome", Ok("5", "204 No Content"), "Nothing to download!"},
    {"Unauthorized", "HTTP/1.1 401 Unauthorized\r\n\r\n", "Authorization failed!"},
    {"NotFound", "HTTP/1.1 404 Not Found\r\n\r\n",
     "The file, \"http://h/sounds/rain.wav\" was not found!"},
    {"NotFoundInTheOldProtocol", "HTTP/1.0 404 Not Found\r\n\r\n",
     "The file, \"http://h/sounds/rain.wav\" was not found!"},
    {"NotFoundInOtherWords", "HTTP/1.1 404 Weg\r\n\r\n",
     "The file, \"http://h/sounds/rain.wav\" was not found!"},
    {"NotFoundWithoutWords", "HTTP/1.1 404\r\n\r\n",
     "The file, \"http://h/sounds/rain.wav\" was not found!"},
    {"ServerError", "HTTP/1.1 500 Internal Server Error\r\nContent-Length: 9\r\n\r\n",
     kResponse + "HTTP/1.1 500 Internal Server Error\r"},
    {"NotModified", "HTTP/1.1 304 Not Modified\r\n\r\n", kResponse + "HTTP/1.1 304 Not Modified\r"},
    {"MovedAndNotFollowed", "HTTP/1.1 302 Found\r\nLocation: ftp://h/\r\n\r\n",
     kResponse + "HTTP/1.1 302 Found\r"},
    {"ContinueAlone", "HTTP/1.1 100 Continue\r\n\r\n", kResponse + "HTTP/1.1 100 Continue\r"},
    {"Created", Ok("5", "201 Created"), kResponse + "HTTP/1.1 201 Created\r"},
    {"RangeNotSatisfiable", "HTTP/1.1 416 Range\r\n\r\n", kResponse + "HTTP/1.1 416 Range\r"},
    {"FourDigitsAreReadAsThree", "HTTP/1.1 4041 x\r\n\r\n",
     "The file, \"http://h/sounds/rain.wav\" was not found!"},
    {"CodeIsNoNumber", "HTTP/1.1 abc\r\n\r\n", kResponse + "HTTP/1.1 abc\r"},
    {"CodeStandsOneCharacterTooFar", "HTTP/1.1  200 OK\r\n\r\n", kResponse + "HTTP/1.1  200 OK\r"},
    {"CodeIsMissing", "HTTP/1.1\r\nA: b\r\n\r\n", kResponse + "HTTP/1.1\r"},
    {"LineWithoutCarriageReturn", "HTTP/1.1 500 x\n\n", kResponse + "<nothing>"},
    {"LineWithoutAnyEnd", "HTTP/1.1 500 x", kResponse + "<nothing>"},
    {"EmptyHeader", "", kNoConnection},
    {"LineEndAlone", "\r\n", kNoConnection},
    {"CarriageReturnAlone", "\r", kNoConnection},
    {"FieldsWithoutAStatusLine", "Content-Length: 5\r\n\r\n", kNoConnection},
    {"Garbage", "\x01\xff\x80 200 200 200 200\r\n\r\n", kNoConnection},
    {"StatusLineOfAnotherProtocol", "ICY 200 OK 200 OK\r\n\r\n", kNoConnection},
    {"CodeInTheRightPlaceOfGarbage", "abcdefghi200 OK\r\n\r\n", kNoConnection},
    {"StatusLineCutInsideItsCode", "HTTP/1.1 20", kNoConnection},
    {"ProtocolAlone", "HTTP/", kNoConnection},
};

class FailedStatus : public Downloader, public testing::WithParamInterface<Status> {};

TEST_P(FailedStatus, IsReportedOnceAndLeavesNothing) {
    Own.Start();
    Own.ReceiveHeader(GetParam().Header);
    EXPECT_EQ(Own.Told, (Texts{kNews, "error " + GetParam().Error, "ended"}));
    EXPECT_TRUE(Own.Control.cancelled);
    EXPECT_FALSE(Own.Control.IsRunning());
    EXPECT_FALSE(Own.IsTransferring());
    EXPECT_EQ(Names(), Texts{});
    EXPECT_EQ(Notice, "");
}

TEST_P(FailedStatus, HasTheResultTrueAllTheSameOnPurpose) {
    Own.Start();
    Own.ReceiveHeader(GetParam().Header);
    EXPECT_TRUE(Own.Control.succeeded);
    EXPECT_EQ(Own.Control.received, Own.Control.total);
}

TEST_P(FailedStatus, LeavesAnOldFileAlone) {
    Write("rain.wav", "old");
    Own.Start();
    Own.ReceiveHeader(GetParam().Header);
    EXPECT_EQ(Folder.ContentOf("rain.wav"), "old");
    EXPECT_EQ(Names(), Texts{"rain.wav"});
}

INSTANTIATE_TEST_SUITE_P(Statuses, FailedStatus, testing::ValuesIn(kFailures),
                         [](const auto& row) { return row.param.Name; });

TEST_F(Downloader, TakesAFileUnderEveryStatusLineOfSuccess) {
    for (const std::string line : {"HTTP/1.1 200 OK", "HTTP/1.0 200 OK", "HTTP/1.1 200",
                                   "HTTP/1.1 206 Partial Content", "HTTP/1.1 200 404"}) {
        Own.Told.clear();
        Own.Fetch(line + "\r\nContent-Length: 1\r\n\r\n", "x");
        EXPECT_EQ(Own.Told, (Texts{kNews, "progress 100", "complete", "ended"})) << line;
    }
}

TEST_F(Downloader, IsToldOfAFailedStatusByAnAddressAsItWasGiven) {
    Own.Control.DownloadFile("HTTP://H/\"a\" b", Own.Destination);
    Own.ReceiveHeader("HTTP/1.1 404 Not Found\r\n\r\n");
    EXPECT_EQ(Own.Told.at(1), "error The file, \"HTTP://H/\"a\" b\" was not found!");
}

TEST_F(Downloader, IsToldOfAFirstLineOf4096CharactersWholeAndOfTheBeginningOfALongerOne) {
    const std::string line = "HTTP/1.1 500 " + std::string(4096 - 14, 'x');
    Own.Fetch(line + "\r\n\r\n", "");
    EXPECT_EQ(Own.Told.at(1), "error " + kResponse + line + "\r");
    Own.Told.clear();
    Own.Fetch(line + "y\r\n\r\n", "");
    EXPECT_EQ(Own.Told.at(1), "error " + kResponse + line + "y...");
}

TEST_F(Downloader, IsToldOfAnAddressOf4096CharactersWholeAndOfTheBeginningOfALongerOne) {
    const std::string address = "http://h/" + std::string(4096 - 9, 'x');
    for (const std::string rest : {"", "y"}) {
        Own.Told.clear();
        Own.Control.DownloadFile(address + rest, Own.Destination);
        Own.ReceiveHeader("HTTP/1.1 404 Not Found\r\n\r\n");
        EXPECT_EQ(Own.Told.at(1), "error The file, \"" + address + (rest.empty() ? "" : "...") +
                                      "\" was not found!");
    }
}

// The announced length.

struct Length {
    const char* Name;
    std::string Fields;
    std::int64_t Bytes;
};

void PrintTo(const Length& length, std::ostream* out) { *out << length.Fields; }

constexpr std::int64_t kHuge = std::numeric_limits<std::int64_t>::max();

const Length kLengths[] = {
    {"Plain", "Content-Length: 5", 5},
    {"SmallLetters", "content-length: 5", 5},
    {"Capitals", "CONTENT-LENGTH: 5", 5},
    {"NoBlank", "Content-Length:5", 5},
    {"ManyBlanks", "Content-Length:   \t 5", 5},
    {"BlanksBehind", "Content-Length: 5  \t", 5},
    {"LeadingZeros", "Content-Length: 0005", 5},
    {"BehindOtherFields", "Server: x\r\nContent-Length: 5\r\nA: b", 5},
    {"TheFirstOfTwo", "Content-Length: 5\r\nContent-Length: 6", 5},
    {"LineFeedsAlone", "Server: x\nContent-Length: 5\n", 5},
    {"WithMoreBehindTheNumber", "Content-Length: 5 bytes", 5},
    {"LargestThatFits", "Content-Length: 9223372036854775807", kHuge},
    {"LargerThanFits", "Content-Length: 9223372036854775808", kHuge},
    {"Huge", "Content-Length: " + std::string(400, '9'), kHuge},
    {"Beyond32Bits", "Content-Length: 4294967301", 4294967301},
    {"Missing", "Server: x", 0},
    {"Zero", "Content-Length: 0", 0},
    {"NotANumber", "Content-Length: many", 0},
    {"Empty", "Content-Length:", 0},
    {"OnlyBlanks", "Content-Length:   ", 0},
    {"Negative", "Content-Length: -5", 0},
    {"OnTheNextLine", "Content-Length:\r\n 5", 0},
    {"OfAnotherField", "X-Content-Length: 5", 0},
    {"InsideAnotherField", "Note: Content-Length: 5", 0},
    {"WithAnotherName", "Content-Lengths: 5", 0},
    {"BlankBeforeTheColon", "Content-Length : 5", 0},
};

class AnnouncedLength : public Downloader, public testing::WithParamInterface<Length> {
protected:
    std::string Header() const { return "HTTP/1.1 200 OK\r\n" + GetParam().Fields + "\r\n\r\n"; }
};

TEST_P(AnnouncedLength, IsReadFromTheHeader) {
    EXPECT_EQ(ContentLength(Header()), GetParam().Bytes);
}

TEST_P(AnnouncedLength, IsTheTotalOfTheRun) {
    Own.Start();
    Own.ReceiveHeader(Header());
    EXPECT_EQ(Own.Control.total, GetParam().Bytes);
}

TEST_P(AnnouncedLength, OfNothingIsCompleteAtOnceWithNothingWrittenOnPurpose) {
    Own.Start();
    Own.ReceiveHeader(Header());
    const bool isComplete = Own.Told == Texts{kNews, "complete", "ended"};
    EXPECT_EQ(isComplete, GetParam().Bytes == 0);
    EXPECT_EQ(Own.IsTransferring(), GetParam().Bytes == 5);
    EXPECT_EQ(Names().size(), GetParam().Bytes == 5 ? 1u : 0u);
}

INSTANTIATE_TEST_SUITE_P(Lengths, AnnouncedLength, testing::ValuesIn(kLengths),
                         [](const auto& row) { return row.param.Name; });

TEST_F(Downloader, WithoutALengthSucceedsAndLeavesAnOldFileAlone) {
    Write("rain.wav", "old");
    Own.Start();
    fakes::Transfers.at(7) = {{}, "HTTP/1.1 200 OK\r\n\r\n", Bytes(3000), true};
    Own.Control.StateChanged();
    EXPECT_EQ(Own.Told, (Texts{kNews, "complete", "ended"}));
    EXPECT_TRUE(Own.Control.succeeded);
    EXPECT_EQ(Folder.ContentOf("rain.wav"), "old");
    EXPECT_EQ(Names(), Texts{"rain.wav"});
}

TEST_F(Downloader, FindsNoLengthInAnEmptyHeaderOrItsFirstLine) {
    EXPECT_EQ(ContentLength(""), 0);
    EXPECT_EQ(ContentLength("Content-Length: 5\r\n\r\n"), 0);
    EXPECT_EQ(ContentLength("HTTP/1.1 200 OK\r\nContent-Length:"), 0);
    EXPECT_EQ(ContentLength("HTTP/1.1 200 OK\r\nContent-Length: 12"), 12);
}

// Progress.

struct Part {
    const char* Name;
    std::int64_t Received;
    std::int64_t Total;
    std::string Percent;
};

void PrintTo(const Part& part, std::ostream* out) { *out << part.Received << " of " << part.Total; }

const Part kParts[] = {
    {"Nothing", 0, 7, "0"},
    {"AThird", 1, 3, "33"},
    {"TwoThirds", 2, 3, "67"},
    {"All", 3, 3, "100"},
    {"HalfAPercentIsRoundedToEven", 1, 200, "0"},
    {"OneAndAHalfPercentAreRoundedToEven", 3, 200, "2"},
    {"TwoAndAHalfPercentAreRoundedToEven", 5, 200, "2"},
    {"AlmostAll", 995, 1000, "100"},
    {"AByteOfTheLargest", 1, kLargestDownload, "0"},
    {"TheLargest", kLargestDownload, kLargestDownload, "100"},
    {"MoreThanAnnounced", 3, 2, "150"},
    {"AChunkOfOneByte", 1024, 1, "102400"},
    {"TheLargestOfOneByte", kLargestDownload, 1, "6710886400"},
};

class Percent : public testing::TestWithParam<Part> {};

TEST_P(Percent, IsAWholeNumber) {
    EXPECT_EQ(PercentText(GetParam().Received, GetParam().Total), GetParam().Percent);
}

INSTANTIATE_TEST_SUITE_P(Parts, Percent, testing::ValuesIn(kParts),
                         [](const auto& row) { return row.param.Name; });

// Limits.

TEST_F(Downloader, TakesTheLargestFile) {
    Own.Start();
    Own.ReceiveHeader(Ok("67108864"));
    EXPECT_TRUE(Own.Control.IsRunning());
    EXPECT_EQ(Own.Control.total, kLargestDownload);
    EXPECT_EQ(Notice, "");
}

TEST_F(Downloader, OfALargerFileThanThatEndsAsCancelledWithANotice) {
    Own.Start();
    Own.ReceiveHeader(Ok("67108865"));
    EXPECT_EQ(Notice, "Not downloaded, because it is too large: " + kAddress);
    EXPECT_EQ(Own.Told, (Texts{kNews, Own.PathBox(), "ended"}));
    EXPECT_TRUE(Own.Control.cancelled);
    EXPECT_FALSE(Own.Control.succeeded);
    EXPECT_FALSE(Own.IsTransferring());
    EXPECT_EQ(Names(), Texts{});
}

TEST_F(Downloader, OfAHugeFileIsNotAskedForRoom) {
    fakes::FreeSpace = 0;
    Own.Start();
    Own.ReceiveHeader(Ok(std::string(400, '9')));
    EXPECT_EQ(Notice, "Not downloaded, because it is too large: " + kAddress);
    EXPECT_EQ(Own.Told, (Texts{kNews, Own.PathBox(), "ended"}));
}

TEST_F(Downloader, OfMoreThanTheLargestFileEndsAsCancelledWithANotice) {
    Own.Start();
    Own.ReceiveHeader(Ok("67108864"));
    const std::string piece(16 * kChunk, 'x');
    for (std::int64_t sent = 0; sent < kLargestDownload; sent += 16 * 1024)
        Own.Receive(piece);
    EXPECT_TRUE(Own.Control.IsRunning());
    EXPECT_EQ(Notice, "");
    Own.Receive("x");
    Own.ReceiveEnd();
    EXPECT_EQ(Notice, "Not downloaded, because it is too large: " + kAddress);
    EXPECT_EQ(Texts(Own.Told.end() - 3, Own.Told.end()),
              (Texts{"progress 100", Own.PathBox(), "ended"}));
    EXPECT_TRUE(Own.Control.cancelled);
    EXPECT_FALSE(Own.IsTransferring());
    EXPECT_EQ(Names(), Texts{});
}

// The disk.

TEST_F(Downloader, WithTooLittleSpaceTellsSoAndThenThePath) {
    fakes::FreeSpace = 4;
    Own.Start();
    Own.ReceiveHeader(Ok(5));
    EXPECT_EQ(Own.Told, (Texts{kNews, "error There is not enough free space on disk for this file.",
                               Own.PathBox(), "ended"}));
    EXPECT_EQ(Names(), Texts{});
    EXPECT_FALSE(Own.Control.succeeded);
    EXPECT_TRUE(Own.Control.cancelled);
    EXPECT_FALSE(Own.IsTransferring());
}

TEST_F(Downloader, WithTooLittleSpaceMakesNoFolder) {
    Fetching run(1, Place("sounds") / "rain.wav");
    fakes::FreeSpace = 0;
    run.Start();
    run.ReceiveHeader(Ok(1));
    EXPECT_EQ(Names(), Texts{});
}

TEST_F(Downloader, WithTooLittleSpaceLeavesAnOldFileAlone) {
    Write("rain.wav", "old");
    fakes::FreeSpace = 4;
    Own.Start();
    Own.ReceiveHeader(Ok(5));
    EXPECT_EQ(Folder.ContentOf("rain.wav"), "old");
    EXPECT_EQ(Own.Told.size(), 4u); // news, error, path, end
}

TEST_F(Downloader, WithJustEnoughSpaceGoesOn) {
    fakes::FreeSpace = 5;
    Own.Fetch(Ok(5), "abcde");
    EXPECT_EQ(Folder.ContentOf("rain.wav"), "abcde");
    EXPECT_EQ(fakes::FreeSpaceAsked, Folder.Path);
}

TEST_F(Downloader, MakesTheFolderOfItsDestination) {
    Fetching run(1, Place("sounds") / "rain.wav");
    run.Fetch(Ok(3), "abc");
    EXPECT_EQ(Folder.ContentOf("sounds/rain.wav"), "abc");
    EXPECT_EQ(Names(), (Texts{"sounds", "sounds/rain.wav"}));
    EXPECT_EQ(run.Told.back(), "ended");
    EXPECT_TRUE(run.Control.succeeded);
}

TEST_F(Downloader, MakesOneLevelOfFoldersAndEndsQuietlyBelowTwo) {
    Fetching run(1, Place("a/b") / "rain.wav");
    run.Start();
    run.ReceiveHeader(Ok(3));
    EXPECT_EQ(run.Told, (Texts{kNews, run.PathBox(), "ended"}));
    EXPECT_TRUE(run.Control.cancelled);
    EXPECT_FALSE(run.Control.succeeded);
    EXPECT_FALSE(run.IsTransferring());
    EXPECT_EQ(Names(), Texts{});
}

TEST_F(Downloader, EndsQuietlyWhereAFileStandsInPlaceOfTheFolder) {
    Write("sounds", "x");
    Fetching run(1, Place("sounds") / "rain.wav");
    run.Start();
    run.ReceiveHeader(Ok(3));
    EXPECT_EQ(run.Told, (Texts{kNews, run.PathBox(), "ended"}));
    EXPECT_TRUE(run.Control.cancelled);
    EXPECT_EQ(Names(), Texts{"sounds"});
    EXPECT_EQ(Folder.ContentOf("sounds"), "x");
}

TEST_F(Downloader, EndsQuietlyUnderANameTheDiskDoesNotTake) {
    Fetching run(1, Place(std::string(300, 'x')));
    run.Start();
    run.ReceiveHeader(Ok(3));
    EXPECT_EQ(run.Told, (Texts{kNews, run.PathBox(), "ended"}));
    EXPECT_FALSE(run.Control.succeeded);
    EXPECT_EQ(Names(), Texts{});
}

TEST_F(Downloader, CantReplaceAFolderByAFile) {
    fs::create_directory(Own.Destination);
    Own.Fetch(Ok(3), "abc");
    EXPECT_EQ(Own.Told,
              (Texts{kNews, "progress 100", "progress 100", Own.PathBox(), kReset, "ended"}));
    EXPECT_FALSE(Own.Control.succeeded);
    EXPECT_EQ(Names(), Texts{"rain.wav"});
    EXPECT_TRUE(fs::is_directory(Own.Destination));
}

TEST_F(Downloader, LeavesNothingWhenTheDiskIsFullAtAChunk) {
    Own.Start();
    Own.ReceiveHeader(Ok(3072));
    {
        const FullDisk disk(1024);
        Own.Receive(Bytes(2048));
    }
    EXPECT_EQ(Own.Told, (Texts{kNews, "progress 33", Own.PathBox(), kReset, "ended"}));
    EXPECT_FALSE(Own.Control.succeeded);
    EXPECT_FALSE(Own.IsTransferring());
    EXPECT_EQ(Names(), Texts{});
}

TEST_F(Downloader, LeavesNothingWhenTheDiskIsFullAtTheLastBytes) {
    Own.Start();
    Own.ReceiveHeader(Ok(1500));
    {
        const FullDisk disk(1024);
        Own.Receive(Bytes(1500));
        Own.ReceiveEnd();
    }
    EXPECT_EQ(std::count(Own.Told.begin(), Own.Told.end(), "complete"), 0);
    EXPECT_FALSE(Own.Control.succeeded);
    EXPECT_EQ(Names(), Texts{}); // least of all a short file under the destination's name
}

TEST_F(Downloader, KeepsAnOldFileWhenTheDiskIsFullAtTheLastBytes) {
    Write("rain.wav", "old");
    Own.Start();
    Own.ReceiveHeader(Ok(1500));
    {
        const FullDisk disk(1024);
        Own.Receive(Bytes(1500));
        Own.ReceiveEnd();
    }
    EXPECT_EQ(Folder.ContentOf("rain.wav").substr(0, 4), "old");
    EXPECT_EQ(Names(), Texts{"rain.wav"});
}

TEST_F(Downloader, ReplacesAnOldFileWhenTheNewOneIsWhole) {
    Write("rain.wav", "an old and longer one");
    Own.Start();
    Own.ReceiveHeader(Ok(3));
    Own.Receive("abc");
    EXPECT_EQ(Folder.ContentOf("rain.wav"), "an old and longer one");
    Own.ReceiveEnd();
    EXPECT_EQ(Folder.ContentOf("rain.wav"), "abc");
    EXPECT_EQ(Names(), Texts{"rain.wav"});
}

TEST_F(Downloader, KeepsAnOldFileWhenTheNewOneIsShort) {
    Write("rain.wav", "old");
    Own.Fetch(Ok(3), "ab");
    EXPECT_EQ(Own.Told.back(), "ended");
    EXPECT_EQ(Folder.ContentOf("rain.wav"), "old");
    EXPECT_EQ(Names(), Texts{"rain.wav"});
}

TEST_F(Downloader, DeletesWhatACrashHasLeftOfItsFile) {
    const fs::path neighbour = Neighbour();
    std::ofstream(neighbour) << "left";
    Own.Start();
    EXPECT_EQ(Names(), Texts{});
    Own.ReceiveHeader("HTTP/1.1 200 OK\r\n\r\n");
    EXPECT_EQ(Names(), Texts{}); // nothing took the destination's name
}

TEST_F(Downloader, ShowsAPathInTheClientsCodePage) {
    Fetching run(1, Place("caf\xc3\xa9.wav")); // in UTF-8, as the disk has it
    run.Fetch(Ok(3), "ab");
    EXPECT_EQ(run.Told.at(3), "box " + Folder.Path.string() + "/caf\xe9.wav");
}

TEST_F(Downloader, EndsInAFolderWhoseNameIsNoTextOfOurs) {
    Fetching run(1, Place("caf\xe9") / "rain.wav"); // no UTF-8
    run.Start();
    EXPECT_NO_THROW(run.ReceiveHeader(Ok(3)));
    EXPECT_NO_THROW(run.Receive("ab"));
    EXPECT_NO_THROW(run.ReceiveEnd());
    EXPECT_EQ(run.Told.back(), "ended");
    EXPECT_EQ(Names(), Texts{"caf\xe9"});
}

// Cancelling.

TEST_F(Downloader, CancelledWhileIdleTellsNothing) {
    Own.Control.Cancel();
    EXPECT_TRUE(Own.Control.cancelled);
    EXPECT_EQ(Own.Told, Texts{});
    EXPECT_EQ(fakes::Calls, Texts{});
}

TEST_F(Downloader, CancelledWhileIdleStillStarts) {
    Own.Control.Cancel();
    Own.Fetch(Ok(1), "x");
    EXPECT_EQ(Own.Told, (Texts{kNews, "progress 100", "complete", "ended"}));
    EXPECT_FALSE(Own.Control.cancelled);
}

TEST_F(Downloader, CancelledBeforeItsHeaderEndsWithoutABox) {
    Own.Start();
    Own.Control.Cancel();
    EXPECT_EQ(Own.Told, (Texts{kNews, "ended"}));
    EXPECT_FALSE(Own.Control.IsRunning());
    EXPECT_FALSE(Own.IsTransferring());
    EXPECT_EQ(Names(), Texts{});
    EXPECT_TRUE(Own.Control.succeeded); // meant: nothing was announced
}

TEST_F(Downloader, CancelledBeforeItsFirstChunkTellsThePath) {
    Own.Start();
    Own.ReceiveHeader(Ok(5));
    Own.Control.Cancel();
    EXPECT_EQ(Own.Told, (Texts{kNews, Own.PathBox(), "ended"}));
    EXPECT_FALSE(Own.Control.succeeded);
    EXPECT_FALSE(Own.IsTransferring());
    EXPECT_EQ(Names(), Texts{});
}

TEST_F(Downloader, CancelledWhileItReceivesDeletesItsPartAndTellsThePath) {
    Own.Start();
    Own.ReceiveHeader(Ok(4096));
    Own.Receive(Bytes(2500));
    Own.Control.Cancel();
    EXPECT_EQ(Own.Told, (Texts{kNews, "progress 25", "progress 50", Own.PathBox(), "ended"}));
    EXPECT_TRUE(Own.Control.cancelled);
    EXPECT_FALSE(Own.Control.succeeded);
    EXPECT_FALSE(Own.IsTransferring());
    EXPECT_EQ(Names(), Texts{});
}

TEST_F(Downloader, CancelledWithAllBytesButTheirEndIsNotComplete) {
    Own.Start();
    Own.ReceiveHeader(Ok(1024));
    Own.Receive(Bytes(1024));
    Own.Control.Cancel();
    EXPECT_EQ(Own.Told, (Texts{kNews, "progress 100", "ended"}));
    EXPECT_TRUE(Own.Control.succeeded); // as much arrived as was announced
}

TEST_F(Downloader, CancelledAfterItsEndTellsNothingMore) {
    Own.Fetch(Ok(1), "x");
    const Texts before = Own.Told;
    Own.Control.Cancel();
    EXPECT_EQ(Own.Told, before);
    EXPECT_EQ(Folder.ContentOf("rain.wav"), "x");
}

TEST_F(Downloader, CancelledTwiceEndsOnce) {
    Own.Start();
    Own.ReceiveHeader(Ok(5));
    Own.Control.Cancel();
    Own.Control.Cancel();
    EXPECT_EQ(Own.Told, (Texts{kNews, Own.PathBox(), "ended"}));
}

TEST_F(Downloader, HearsNothingMoreOfACancelledTransfer) {
    Own.Start();
    Own.ReceiveHeader(Ok(5));
    Own.Control.Cancel();
    const Texts before = Own.Told;
    fakes::Transfers[7] = {{}, Ok(5), "abcde", true};
    Own.Control.StateChanged();
    EXPECT_EQ(Own.Told, before);
    EXPECT_EQ(Names(), Texts{});
}

struct Moment {
    const char* Name;
    std::string What; // after which the run is cancelled
    std::string Body; // of five bytes announced
    Texts Told;       // from there on, the path box as "box"
};

void PrintTo(const Moment& moment, std::ostream* out) { *out << moment.What; }

const Moment kMoments[] = {
    {"TheFirstProgress", "progress", "abcde", {"ended"}},
    {"TheProgressOfAShortFile", "progress", "abc", {"box", "ended"}},
    {"ThePathBox", "box", "abc", {"ended"}},
    {"TheError", "error", "abc", {"ended"}},
    {"TheCompletion", "complete", "abcde", {"ended"}},
    {"TheEnd", "ended", "abcde", {}},
};

class CancelledInside : public Downloader, public testing::WithParamInterface<Moment> {};

TEST_P(CancelledInside, EndsOnceAndLeavesNoPart) {
    Texts after;
    Own.WhenTold = [this, &after, done = false](const std::string& what) mutable {
        if (done)
            after.push_back(what.starts_with("box") ? "box" : what);
        if (what.starts_with(GetParam().What) && !std::exchange(done, true))
            Own.Control.Cancel();
    };
    Own.Fetch(Ok(5), GetParam().Body);
    EXPECT_EQ(after, GetParam().Told);
    EXPECT_EQ(std::count(Own.Told.begin(), Own.Told.end(), "ended"), 1);
    EXPECT_TRUE(Own.Control.cancelled);
    EXPECT_FALSE(Own.Control.IsRunning());
    EXPECT_FALSE(Own.IsTransferring());
    EXPECT_EQ(Names(), GetParam().Body.size() == 5 ? Texts{"rain.wav"} : Texts{});
}

INSTANTIATE_TEST_SUITE_P(Moments, CancelledInside, testing::ValuesIn(kMoments),
                         [](const auto& row) { return row.param.Name; });

TEST_F(Downloader, CancelledInsideItsFirstNewsFetchesNothing) {
    Own.WhenTold = [this](const std::string& what) {
        if (what == kNews)
            Own.Control.Cancel();
    };
    Own.Start();
    if (Own.IsTransferring())
        Own.ReceiveHeader(Ok(1));
    if (Own.IsTransferring())
        Own.Receive("x");
    if (Own.IsTransferring())
        Own.ReceiveEnd();
    EXPECT_EQ(Own.Told, (Texts{kNews, "ended"}));
    EXPECT_EQ(Names(), Texts{});
}

TEST_F(Downloader, CancelledInsideAProgressReadsNoFurtherChunk) {
    Own.WhenTold = [this](const std::string& what) {
        if (what == "progress 25")
            Own.Control.Cancel();
    };
    Own.Start();
    Own.ReceiveHeader(Ok(4096));
    Own.Receive(Bytes(4096));
    EXPECT_EQ(Own.Told, (Texts{kNews, "progress 25", Own.PathBox(), "ended"}));
    EXPECT_EQ(Names(), Texts{});
}

TEST_F(Downloader, CancelledInsideTheProgressOfItsLastByteEndsOnce) {
    Own.WhenTold = [this](const std::string& what) {
        if (what == "progress 100")
            Own.Control.Cancel();
    };
    Own.Fetch(Ok(1), "x");
    EXPECT_EQ(Own.Told, (Texts{kNews, "progress 100", "ended"}));
}

TEST_F(Downloader, CancelledInsideTheErrorOfItsStatusEndsOnce) {
    Own.WhenTold = [this](const std::string& what) {
        if (what.starts_with("error"))
            Own.Control.Cancel();
    };
    Own.Start();
    Own.ReceiveHeader("HTTP/1.1 401 No\r\n\r\n");
    EXPECT_EQ(Own.Told, (Texts{kNews, "error Authorization failed!", "ended"}));
}

TEST_F(Downloader, LeavesQuietlyAndDeletesItsPart) {
    Texts told;
    {
        Fetching run(1, Place("thunder.wav"));
        run.Start();
        run.ReceiveHeader(Ok(4096));
        run.Receive(Bytes(2000));
        run.WhenTold = [&told](const std::string& what) { told.push_back(what); };
        EXPECT_EQ(Names().size(), 1u);
    }
    EXPECT_EQ(told, Texts{});
    EXPECT_FALSE(fakes::Transfers.contains(1));
    EXPECT_EQ(Names(), Texts{});
}

// Several runs.

TEST_F(Downloader, CountsEachRunAnew) {
    Own.Fetch(Ok(3000), Bytes(3000));
    Own.Told.clear();
    Own.Start();
    EXPECT_EQ(Own.Control.received, 0);
    EXPECT_EQ(Own.Control.total, 0);
    EXPECT_EQ(fakes::Transfers.at(7).Request.Header, "Range: bytes=0-");
    Own.ReceiveHeader(Ok(2));
    Own.Receive("ab");
    Own.ReceiveEnd();
    EXPECT_EQ(Own.Told, (Texts{kNews, "progress 100", "progress 100", "complete", "ended"}));
    EXPECT_EQ(Folder.ContentOf("rain.wav"), "ab");
}

TEST_F(Downloader, StartsAgainAfterAFailure) {
    Own.Start();
    Own.ReceiveHeader("HTTP/1.1 500 x\r\n\r\n");
    Own.Told.clear();
    Own.Fetch(Ok(1), "x");
    EXPECT_EQ(Own.Told, (Texts{kNews, "progress 100", "complete", "ended"}));
    EXPECT_TRUE(Own.Control.succeeded);
    EXPECT_FALSE(Own.Control.cancelled);
}

TEST_F(Downloader, StartsAgainAfterAFullDisk) {
    Own.Start();
    Own.ReceiveHeader(Ok(2048));
    {
        const FullDisk disk(0);
        Own.Receive(Bytes(1024));
    }
    EXPECT_FALSE(Own.Control.IsRunning());
    Own.Fetch(Ok(2048), Bytes(2048));
    EXPECT_EQ(Folder.ContentOf("rain.wav"), Bytes(2048));
    EXPECT_TRUE(Own.Control.succeeded);
}

TEST_F(Downloader, StartedInTheMiddleOfARunCancelsItFirst) {
    Own.Start();
    Own.ReceiveHeader(Ok(5));
    Own.Start();
    EXPECT_EQ(Own.Told, (Texts{kNews, Own.PathBox(), "ended", kNews}));
    EXPECT_FALSE(Own.Control.cancelled);
    Own.ReceiveHeader(Ok(2));
    Own.Receive("ab");
    Own.ReceiveEnd();
    EXPECT_EQ(Folder.ContentOf("rain.wav"), "ab");
    EXPECT_EQ(Names(), Texts{"rain.wav"});
}

TEST_F(Downloader, StartsAgainFromInsideItsEnd) {
    Own.WhenTold = [this, done = false](const std::string& what) mutable {
        if (what == "ended" && !std::exchange(done, true))
            Own.Start();
    };
    Own.Fetch(Ok(1), "x");
    EXPECT_TRUE(Own.Control.IsRunning());
    Own.ReceiveHeader(Ok(2));
    Own.Receive("ab");
    Own.ReceiveEnd();
    EXPECT_EQ(Folder.ContentOf("rain.wav"), "ab");
}

TEST_F(Downloader, SharesNothingWithAnotherOne) {
    Fetching other(8, Place("thunder.wav"));
    Own.Start();
    other.Start();
    other.ReceiveHeader(Ok(3000));
    Own.ReceiveHeader(Ok(2048));
    for (std::size_t at = 0; at < 3000; at += 100) {
        other.Receive(Bytes(3000).substr(at, 100));
        if (at < 2048)
            Own.Receive(Bytes(2048).substr(at, 100));
    }
    Own.ReceiveEnd();
    EXPECT_TRUE(other.Control.IsRunning());
    other.ReceiveEnd();
    EXPECT_EQ(Own.Told,
              (Texts{kNews, "progress 50", "progress 100", "progress 100", "complete", "ended"}));
    EXPECT_EQ(other.Told, (Texts{kNews, "progress 34", "progress 68", "progress 100",
                                 "progress 100", "complete", "ended"}));
    EXPECT_EQ(Folder.ContentOf("rain.wav"), Bytes(2048));
    EXPECT_EQ(Folder.ContentOf("thunder.wav"), Bytes(3000));
    EXPECT_EQ(Names(), (Texts{"rain.wav", "thunder.wav"}));
}

TEST_F(Downloader, IntoTheSameFileAsAnotherSpoilsNeither) {
    Fetching other(8, Own.Destination);
    Own.Start();
    other.Start();
    Own.ReceiveHeader(Ok(3));
    other.ReceiveHeader(Ok(4));
    Own.Receive("abc");
    other.Receive("wxyz");
    Own.ReceiveEnd();
    EXPECT_EQ(Folder.ContentOf("rain.wav"), "abc");
    other.ReceiveEnd();
    EXPECT_EQ(Folder.ContentOf("rain.wav"), "wxyz");
    EXPECT_EQ(Names(), Texts{"rain.wav"});
}

TEST_F(Downloader, CancelledLeavesAnotherOneRunning) {
    Fetching other(8, Own.Destination);
    Own.Start();
    other.Start();
    Own.ReceiveHeader(Ok(3));
    other.ReceiveHeader(Ok(3));
    Own.Receive("ab");
    other.Receive("ab");
    Own.Control.Cancel();
    other.Receive("c");
    other.ReceiveEnd();
    EXPECT_EQ(Folder.ContentOf("rain.wav"), "abc");
    EXPECT_EQ(Names(), Texts{"rain.wav"});
}

// Parts that a client has left.

struct FileName {
    const char* Name;
    const char* File;
    bool IsPart;
};

void PrintTo(const FileName& row, std::ostream* out) { *out << row.File; }

const FileName kFileNames[] = {
    {"OfASound", "rain.wav.1.part", true},
    {"OfALargeNumber", "rain.wav.2147483647.part", true},
    {"OfABareExtension", ".wav.12.part", true},
    {"OfANameWithoutOne", "rain.7.part", true},
    {"ASound", "rain.wav", false},
    {"NoNumber", "rain.wav.part", false},
    {"NoWholeNumber", "rain.wav.1x.part", false},
    {"AnEmptyNumber", "rain.wav..part", false},
    {"AnotherEnd", "rain.wav.1.parts", false},
    {"AnEndInOtherLetters", "rain.wav.1.PART", false},
    {"ANumberAtItsEnd", "rain.part.1", false},
    {"NothingBeforeItsNumber", ".1.part", false},
};

class LeftBehind : public Downloader, public testing::WithParamInterface<FileName> {};

TEST_P(LeftBehind, GoesOnlyWhenItIsAPart) {
    Write(GetParam().File, "abc");
    DeleteLeftParts(Folder.Path);
    EXPECT_EQ(Names(), GetParam().IsPart ? Texts{} : Texts{GetParam().File});
}

INSTANTIATE_TEST_SUITE_P(Names, LeftBehind, testing::ValuesIn(kFileNames),
                         [](const auto& row) { return row.param.Name; });

TEST_F(Downloader, TakesNoFolderForAPart) {
    fs::create_directory(Place("rain.wav.1.part"));
    DeleteLeftParts(Folder.Path);
    EXPECT_EQ(Names(), Texts{"rain.wav.1.part"});
}

TEST_F(Downloader, FindsNoPartsInAFolderThatIsNotThere) {
    EXPECT_NO_THROW(DeleteLeftParts(Place("nowhere")));
    EXPECT_EQ(Names(), Texts{});
}

// Resuming, which nothing in the client asks for.

class ResumedDownload : public Downloader {
protected:
    // A partial file with the first bytes of content, and a control that shall go on with it.
    void Interrupt(std::size_t there, std::size_t total) {
        Part = Neighbour();
        std::ofstream(Part, std::ios::binary) << Bytes(there);
        Own.Control.resuming = true;
        Own.Control.received = static_cast<std::int64_t>(there);
        Own.Control.total = static_cast<std::int64_t>(total);
    }

    fs::path Part;
};

TEST_F(ResumedDownload, FetchesTheLast4096BytesAgain) {
    Interrupt(5000, 6000);
    Own.Start();
    EXPECT_EQ(Own.Told, Texts{"events Resuming download"});
    EXPECT_EQ(fakes::Transfers.at(7).Request.Header, "Range: bytes=904-");
    EXPECT_EQ(Own.Control.received, 904);
    EXPECT_TRUE(fs::exists(Part));
}

TEST_F(ResumedDownload, IsMovedBackToTheBeginningAtMost) {
    for (const std::size_t there : {0u, 1u, 4095u, 4096u}) {
        Interrupt(there, 6000);
        Own.Start();
        EXPECT_EQ(fakes::Transfers.at(7).Request.Header, "Range: bytes=0-") << there;
        EXPECT_EQ(Own.Control.received, 0);
        Own.Control.Cancel();
    }
    Interrupt(4097, 6000);
    Own.Start();
    EXPECT_EQ(fakes::Transfers.at(7).Request.Header, "Range: bytes=1-");
}

TEST_F(ResumedDownload, GoesOnBehindItsOffset) {
    Interrupt(5000, 6000);
    Own.Start();
    Own.ReceiveHeader("HTTP/1.1 206 Partial Content\r\nContent-Length: 5096\r\n\r\n");
    Own.Receive(Bytes(6000).substr(904));
    Own.ReceiveEnd();
    EXPECT_EQ(Folder.ContentOf("rain.wav"), Bytes(6000));
    EXPECT_EQ(Names(), Texts{"rain.wav"});
    EXPECT_EQ(Own.Told,
              (Texts{"events Resuming download", "progress 32", "progress 49", "progress 66",
                     "progress 83", "progress 100", "progress 100", "complete", "ended"}));
    EXPECT_TRUE(Own.Control.succeeded);
}

TEST_F(ResumedDownload, KeepsTheTotalItHad) {
    Interrupt(5000, 6000);
    Own.Start();
    Own.ReceiveHeader("HTTP/1.1 206 Partial Content\r\n\r\n");
    EXPECT_EQ(Own.Control.total, 6000);
    EXPECT_TRUE(Own.Control.IsRunning());
}

TEST_F(ResumedDownload, IsRefusedUnder200WithItsPartDeleted) {
    Interrupt(5000, 6000);
    Own.Start();
    Own.ReceiveHeader(Ok(6000));
    EXPECT_EQ(Own.Told, (Texts{"events Resuming download",
                               "error The server is unable to resume this download.", Own.PathBox(),
                               "ended"}));
    EXPECT_EQ(Names(), Texts{});
    EXPECT_TRUE(Own.Control.cancelled);
    EXPECT_FALSE(Own.Control.succeeded);
    EXPECT_FALSE(Own.IsTransferring());
}

TEST_F(ResumedDownload, DeletesItsPartBeforeItTellsOfTheRefusal) {
    Interrupt(5000, 6000);
    Own.WhenTold = [this](const std::string& what) {
        if (what.starts_with("error")) {
            EXPECT_EQ(Names(), Texts{});
        }
    };
    Own.Start();
    Own.ReceiveHeader(Ok(6000));
    EXPECT_EQ(Own.Told.size(), 4u);
}

TEST_F(ResumedDownload, IsRefusedUnder200AtOffsetZeroToo) {
    Interrupt(100, 6000);
    Own.Start();
    Own.ReceiveHeader(Ok(6000));
    EXPECT_EQ(Own.Told.at(1), "error The server is unable to resume this download.");
    EXPECT_EQ(Names(), Texts{});
}

TEST_F(ResumedDownload, ThatEndsShortDeletesItsPart) {
    Interrupt(5000, 6000);
    Own.Start();
    Own.ReceiveHeader("HTTP/1.1 206 Partial Content\r\n\r\n");
    Own.Receive(Bytes(100));
    Own.ReceiveEnd();
    EXPECT_EQ(Texts(Own.Told.end() - 3, Own.Told.end()), (Texts{Own.PathBox(), kReset, "ended"}));
    EXPECT_EQ(Names(), Texts{});
}

TEST_F(ResumedDownload, WithoutItsPartEndsQuietly) {
    Interrupt(5000, 6000);
    fs::remove(Part);
    Own.Start();
    Own.ReceiveHeader("HTTP/1.1 206 Partial Content\r\n\r\n");
    EXPECT_EQ(Own.Told, (Texts{"events Resuming download", Own.PathBox(), "ended"}));
    EXPECT_FALSE(Own.Control.succeeded);
    EXPECT_EQ(Names(), Texts{});
}

TEST_F(ResumedDownload, ThatIsCancelledDeletesItsPart) {
    Interrupt(5000, 6000);
    Own.Start();
    Own.Control.Cancel();
    EXPECT_EQ(Own.Told, (Texts{"events Resuming download", Own.PathBox(), "ended"}));
    EXPECT_EQ(Names(), Texts{});
}

TEST_F(ResumedDownload, IsNothingAControlBeginsWith) { EXPECT_FALSE(Own.Control.resuming); }

} // namespace
} // namespace mw
