#include "forms/FrameTest.h"
#include "forms/HttpServer.h"
#include "forms/Pictures.h"
#include "forms/WebBoxes.h"
#include "net/http/DownLoad.h"
#include "net/http/FileDownloader.h"
#include "net/http/frmDownload.h"
#include "sound/PlaySound.h"

#include <algorithm>
#include <fstream>
#include <utility>

using namespace std::string_literals;

namespace mw {
namespace {

using forms::BodyOf;
using forms::Boxes;
using forms::ChunkedHead;
using forms::ChunkOf;
using forms::CloseBox;
using forms::Drips;
using forms::ErrorBox;
using forms::Files;
using forms::HeadFor;
using forms::HttpServer;
using forms::kEarlyHints;
using forms::OpenBox;
using forms::OpenBoxes;
using forms::PlainBox;
using forms::PoursBehind;
using forms::Redirection;
using forms::Redirects;
using forms::Repeated;
using forms::Says;
using forms::SaysAndResets;
using forms::SaysAndStalls;
using forms::ShownBox;
using forms::WaitAMoment;
using forms::WaitFor;
using forms::Whole;

namespace fs = std::filesystem;

const std::string kReset = "The connection with the server was reset.";
const std::string kOther = "The server returned the following response:\r\r";

class DownloadWindow : public forms::FrameTest {
protected:
    DownloadWindow() {
        MakeGameFolders("Testmere");
        ResetDownloads();
    }

    ~DownloadWindow() override {
        AbandonDownloads();
        LetEventsRun();
        ResetPlaySound();
        EXPECT_EQ(Closer.Texts, Boxes{});
    }

    // Asks for a sound and answers its window.
    QPointer<frmDownload> Fetch(const std::string& name) const {
        FetchSound(Web.Address("/" + name));
        return Windows().value(0);
    }

    QPointer<frmDownload> FetchFrom(const HttpServer::Answer& answer) {
        Web.Otherwise = answer;
        return Fetch("rain.wav");
    }

    // The windows of the downloads, the newest first.
    static QList<frmDownload*> Windows() {
        QList<frmDownload*> windows;
        for (QWidget* const window : forms::VisibleWindows()) {
            if (auto* const download = qobject_cast<frmDownload*>(window))
                windows.append(download);
        }
        std::sort(windows.begin(), windows.end(), [](const auto* a, const auto* b) {
            return a->lblSlot->text().toInt() > b->lblSlot->text().toInt();
        });
        return windows;
    }

    static bool AllClose() {
        return WaitFor([] { return Windows().isEmpty(); });
    }

    static void ExpectNoBox() { EXPECT_TRUE(OpenBoxes().isEmpty()); }

    fs::path Sounds() const { return Folder.Path / "Testmere" / "sounds"; }

    std::string PathOf(const std::string& name) const { return (Sounds() / name).string(); }

    // What lies in the game's sounds, partial files included.
    Files Kept() const { return forms::FilesIn(Sounds()); }

    static std::string SlotOf(const frmDownload* window) {
        return window->lblSlot->text().toStdString();
    }

    static std::string BusySlots() {
        std::string flags;
        for (const DownloadSlot& slot : DownloadTable)
            flags += std::to_string(slot.Busy);
        return flags;
    }

    HttpServer Web;
};

TEST_F(DownloadWindow, OpensAndShowsWhatIsFetched) {
    const auto window = Fetch("rain.wav");
    ASSERT_NE(window, nullptr);
    EXPECT_EQ(window->windowTitle(), "Download");
    ASSERT_EQ(window->findChildren<QLabel*>().size(), 2);
    EXPECT_EQ(window->findChildren<QLabel*>()[1]->text(), "rain.wav");
    EXPECT_EQ(SlotOf(window), "0");
    EXPECT_FALSE(window->lblSlot->isVisible());
    EXPECT_EQ(window->ProgressBar->minimum(), 0);
    EXPECT_EQ(window->ProgressBar->maximum(), 100);
    EXPECT_EQ(window->ProgressBar->value(), 0);
    EXPECT_EQ(window->ProgressBar->accessibleName(), "rain.wav");
    EXPECT_EQ(window->cmdCancel->text(), "&Cancel");
    EXPECT_FALSE(window->isModal());
    EXPECT_TRUE(DownloadRunning);
}

TEST_F(DownloadWindow, AsksOnceForTheWholeFile) {
    Fetch("rain.wav");
    ASSERT_TRUE(Web.HasVisits(1));
    EXPECT_TRUE(Web.Requests[0].starts_with("GET /rain.wav HTTP/1.1\r\n"));
    EXPECT_NE(Web.Requests[0].find("\r\nRange: bytes=0-\r\n"), std::string::npos);
    EXPECT_EQ(Web.Requests.size(), 1u);
}

struct Arrival {
    const char* Name;
    HttpServer::Answer Answer;
    std::string Body;
};

void PrintTo(const Arrival& row, std::ostream* out) { *out << row.Name; }

class Arrivals : public DownloadWindow, public testing::WithParamInterface<Arrival> {};

TEST_P(Arrivals, AreOnTheDiskWhenTheWindowHasClosed) {
    FetchFrom(GetParam().Answer);
    ASSERT_TRUE(AllClose());
    EXPECT_TRUE(Kept() == (Files{{"rain.wav", GetParam().Body}}));
    ExpectNoBox();
    EXPECT_EQ(BusySlots(), "0");
    EXPECT_EQ(Notice, "");
}

std::string Partial(const std::string& body) {
    return "HTTP/1.1 206 Partial Content\r\nContent-Range: bytes 0-\r\nContent-Length: " +
           std::to_string(body.size()) + "\r\n\r\n" + body;
}

// A whole answer with those fields before its length.
std::string With(const std::string& fields, const std::string& body = "abc") {
    return "HTTP/1.1 200 OK\r\n" + fields + "\r\nContent-Length: " + std::to_string(body.size()) +
           "\r\n\r\n" + body;
}

const Arrival kArrivals[] = {
    {"OneByte", Says(Whole("a")), "a"},
    {"OneChunk", Says(Whole(BodyOf(1024))), BodyOf(1024)},
    {"ALastChunkOfOneByte", Says(Whole(BodyOf(1025))), BodyOf(1025)},
    {"ALastChunkOfTwoBytes", Says(Whole(BodyOf(1026))), BodyOf(1026)},
    {"ManyChunks", Says(Whole(BodyOf(300000))), BodyOf(300000)},
    {"UnderPartialContent", Says(Partial(BodyOf(3000))), BodyOf(3000)},
    {"ByTheOlderVersion", Says("HTTP/1.0 200 OK\r\nContent-Length: 3\r\n\r\nabc"), "abc"},
    {"BehindContinue", Says("HTTP/1.1 100 Continue\r\n\r\n" + Whole("abc")), "abc"},
    {"BehindEarlyHints", Says("HTTP/1.1 103 Early Hints\r\nLink: </x>\r\n\r\n" + Whole("abc")),
     "abc"},
    {"Dripping", Drips(Whole(BodyOf(200))), BodyOf(200)},
    {"InChunksOfTheAnnouncedLength",
     Says(ChunkedHead("Content-Length: 6\r\n") + ChunkOf("abcd") + ChunkOf("ef") + ChunkOf("")),
     "abcdef"},
    {"ThenMoreThanAnnounced", Says(HeadFor(3) + "abcdef"), "abc"},
    {"ByAServerThatStaysThere", SaysAndStalls(Whole("abc")), "abc"},
    {"BehindAThousandInterimAnswers", Says(Repeated(kEarlyHints, 1000) + Whole("abc")), "abc"},
    {"ThenAReset", SaysAndResets(Whole("abc")), "abc"},
    {"ThenAnotherAnswer", SaysAndStalls(Whole("abc") + Whole("evil")), "abc"},
    {"CompressedWithoutBeingAsked", Says(With("Content-Encoding: gzip", "\x1F\x8B\x08 packed")),
     "\x1F\x8B\x08 packed"},
    {"UnderAnotherName", Says(With("Content-Disposition: attachment; filename=\"../../evil.wav\"")),
     "abc"},
    {"OfAnotherKind", Says(With("Content-Type: text/html; charset=utf-7\r\nContent-Location: /x")),
     "abc"},
    {"WithAChallengeThatIsNone", Says(With("WWW-Authenticate: Basic\r\nProxy-Authenticate: NTLM")),
     "abc"},
    {"WithAWishToMove", Says(With("Location: http://127.0.0.1:1/\r\nRefresh: 0; url=file:///")),
     "abc"},
    {"WithAWishToChangeTheProtocol",
     Says(With("Upgrade: h2c, websocket\r\nAlt-Svc: h3=\":1\"\r\nConnection: Upgrade")), "abc"},
    {"WithHighBytesInTheHeader", Says(With("X-\xC4rger: \xFF\xFE\x80")), "abc"},
    {"WithAFoldedField", Says(With("X: a\r\n b\r\n\tc")), "abc"},
    {"WithALongField", Says(With("X: " + std::string(60'000, 'x'))), "abc"},
    {"WithTwoLengthsThatAreTheSame", Says(With("Content-Length: 3")), "abc"},
    {"OfAnotherRange",
     Says("HTTP/1.1 206 Partial Content\r\nContent-Range: bytes 100-102/200\r\n"
          "Content-Length: 3\r\n\r\nabc"),
     "abc"},
    {"InChunksOfOneByte",
     Says(ChunkedHead("Content-Length: 500\r\n") + Repeated(ChunkOf("x"), 500) + ChunkOf("")),
     std::string(500, 'x')},
    {"InChunksWithRemarks",
     Says(ChunkedHead("Content-Length: 3\r\n") + "3;name=\"" + std::string(5000, 'x') +
          "\"\r\nabc\r\n" + ChunkOf("")),
     "abc"},
};

INSTANTIATE_TEST_SUITE_P(Download, Arrivals, testing::ValuesIn(kArrivals),
                         [](const auto& row) { return row.param.Name; });

class NothingAnnounced : public DownloadWindow, public testing::WithParamInterface<Arrival> {};

TEST_P(NothingAnnounced, IsCompleteAtOnceWithNothingWrittenOnPurpose) {
    FetchFrom(GetParam().Answer);
    ASSERT_TRUE(AllClose());
    ExpectNoBox();
    EXPECT_EQ(Kept(), Files{});
    EXPECT_EQ(BusySlots(), "0");
    EXPECT_TRUE(DownloadRunning) << "nothing has failed";
}

const Arrival kNothingAnnounced[] = {
    {"NoLength", Says("HTTP/1.1 200 OK\r\n\r\nabc"), ""},
    {"NoLengthAndAnEndlessBody", PoursBehind("HTTP/1.1 200 OK\r\n\r\n", BodyOf(4096)), ""},
    {"ALengthOfNothing", Says(HeadFor(0)), ""},
    {"Chunked", Says(ChunkedHead() + ChunkOf("abc") + ChunkOf("")), ""},
    {"UnderPartialContent", Says("HTTP/1.1 206 Partial Content\r\n\r\nabc"), ""},
    {"ANegativeLength", Says("HTTP/1.1 200 OK\r\nContent-Length: -1\r\n\r\nabc"), ""},
    {"ALengthOfLetters", Says("HTTP/1.1 200 OK\r\nContent-Length: lots\r\n\r\nabc"), ""},
    {"ChunksWithoutEnd", PoursBehind(ChunkedHead(), ChunkOf(BodyOf(4096))), ""},
    {"AChunkOf40Digits", Says(ChunkedHead() + std::string(40, 'f') + "\r\nabc"), ""},
    {"AHeaderWithoutEnd",
     PoursBehind("HTTP/1.1 200 OK\r\n", "X: " + std::string(1000, 'x') + "\r\n"), ""},
    {"AFieldOfTenMegabytes",
     Says("HTTP/1.1 200 OK\r\nX: " + std::string(10'000'000, 'x') + "\r\n\r\n"), ""},
    {"ANulInTheHeader", Says("HTTP/1.1 200 OK\r\nX: \0\r\nContent-Length: 3\r\n\r\nabc"s), ""},
};

INSTANTIATE_TEST_SUITE_P(Download, NothingAnnounced, testing::ValuesIn(kNothingAnnounced),
                         [](const auto& row) { return row.param.Name; });

struct Refusal {
    const char* Name;
    HttpServer::Answer Answer;
    std::string Text; // "ADDRESS" stands for what was asked for
};

void PrintTo(const Refusal& row, std::ostream* out) { *out << row.Name; }

class Refusals : public DownloadWindow, public testing::WithParamInterface<Refusal> {
protected:
    ShownBox Expected() const {
        std::string text = GetParam().Text;
        if (const std::size_t at = text.find("ADDRESS"); at != std::string::npos)
            text.replace(at, 7, Web.Address("/rain.wav"));
        return ErrorBox(text);
    }
};

TEST_P(Refusals, AreToldInOneBoxAndCloseTheWindowBehindIt) {
    const auto window = FetchFrom(GetParam().Answer);
    ASSERT_NE(OpenBox(), nullptr);
    EXPECT_TRUE(window);
    EXPECT_EQ(window->ProgressBar->value(), 0);
    EXPECT_FALSE(DownloadRunning);
    EXPECT_EQ(BusySlots(), "1");
    EXPECT_EQ(CloseBox(), Expected());
    EXPECT_TRUE(AllClose());
    ExpectNoBox();
    EXPECT_EQ(Kept(), Files{});
    EXPECT_EQ(BusySlots(), "0");
}

// The first line goes to the first CR.
TEST_F(DownloadWindow, ARefusalOfAThousandLinesLeavesItsBoxOnTheScreen) {
    FetchFrom(Says("HTTP/1.1 500 X\n" + Repeated("a:\n", 1300) + "b: \r\n\r\n"));
    ASSERT_NE(OpenBox(), nullptr);
    EXPECT_LT(OpenBox()->height(), QGuiApplication::primaryScreen()->availableGeometry().height());
    const std::string text = CloseBox().Text;
    EXPECT_TRUE(text.starts_with(kOther + "HTTP/1.1 500 X\na:\na:\n")) << text;
    EXPECT_TRUE(text.ends_with("...")) << text;
}

const Refusal kRefusals[] = {
    {"NoContent", Says("HTTP/1.1 204 No Content\r\n\r\n"), "Nothing to download!"},
    {"Unauthorized", Says("HTTP/1.1 401 Unauthorized\r\nWWW-Authenticate: Basic\r\n\r\n"),
     "Authorization failed!"},
    {"NotFound", Says("HTTP/1.1 404 Not Found\r\nContent-Length: 4\r\n\r\ngone"),
     "The file, \"ADDRESS\" was not found!"},
    {"NotFoundByTheOlderVersion", Says("HTTP/1.0 404 Not Found\r\n\r\n"),
     "The file, \"ADDRESS\" was not found!"},
    {"NotFoundAndStalled", SaysAndStalls("HTTP/1.1 404 Not Found\r\nContent-Length: 4\r\n\r\n"),
     "The file, \"ADDRESS\" was not found!"},
    {"NotFoundWithAnEndlessPage", PoursBehind("HTTP/1.1 404 Nope\r\n\r\n", BodyOf(4096)),
     "The file, \"ADDRESS\" was not found!"},
    {"ServerError", Says("HTTP/1.1 500 Internal Server Error\r\nX: 1\r\n\r\n"),
     kOther + "HTTP/1.1 500 Internal Server Error\r"},
    {"Forbidden", Says("HTTP/1.1 403 Forbidden\r\n\r\n"), kOther + "HTTP/1.1 403 Forbidden\r"},
    {"RangeNotSatisfiable", Says("HTTP/1.1 416 Range Not Satisfiable\r\n\r\n"),
     kOther + "HTTP/1.1 416 Range Not Satisfiable\r"},
    {"NotModified", Says("HTTP/1.1 304 Not Modified\r\n\r\n"),
     kOther + "HTTP/1.1 304 Not Modified\r"},
    {"SwitchingProtocols", Says("HTTP/1.1 101 Switching Protocols\r\n\r\n"),
     kOther + "HTTP/1.1 101 Switching Protocols\r"},
    {"AnInterimAnswerAlone", Says("HTTP/1.1 103 Early Hints\r\n\r\n"),
     kOther + "HTTP/1.1 103 Early Hints\r"},
    {"AStatusWithoutAReason", Says("HTTP/1.1 500\r\n\r\n"), kOther + "HTTP/1.1 500\r"},
    {"AStatusInMarkup", Says("HTTP/1.1 500 <b>Oops</b> & more\r\n\r\n"),
     kOther + "HTTP/1.1 500 <b>Oops</b> & more\r"},
    {"AStatusInHighBytes", Says("HTTP/1.1 500 \xC4rger\r\n\r\n"),
     kOther + "HTTP/1.1 500 \xC3\x84rger\r"},
    {"AStatusEndedByALineFeedHasNoFirstLine", Says("HTTP/1.1 500 Oops\n\n"), kOther + "<nothing>"},
    {"ASixthRedirection",
     [](forms::Visit& visit) {
         visit.Send(Redirection("/again"));
         visit.HangUp();
     },
     kOther + "HTTP/1.1 302 Found\r"},
    {"ARedirectionToAFile", Says(Redirection("file:///etc/hostname")),
     kOther + "HTTP/1.1 302 Found\r"},
    {"ARedirectionToFtp", Says(Redirection("ftp://127.0.0.1/rain.wav")),
     kOther + "HTTP/1.1 302 Found\r"},
    {"ARedirectionToNobody", Says(Redirection("https://127.0.0.1:1/rain.wav")),
     "Cannot establish connection."},
    {"NoStatusLine", Says("RIFF....WAVE"), "Cannot establish connection."},
    {"AGamesGreeting", Says("Welcome!\r\nBy what name are you known?\r\n\r\n"),
     "Cannot establish connection."},
    {"NotAByte", Says(""), "Cannot establish connection."},
    {"AResetBeforeTheAnswer", SaysAndResets(""), "Cannot establish connection."},
    {"NoContentThatHasSome", Says("HTTP/1.1 204 No Content\r\nContent-Length: 3\r\n\r\nabc"),
     "Nothing to download!"},
    {"ResetContentThatHasSome", Says("HTTP/1.1 205 Reset Content\r\nContent-Length: 3\r\n\r\nabc"),
     kOther + "HTTP/1.1 205 Reset Content\r"},
    {"NotModifiedThatHasSome", Says("HTTP/1.1 304 Not Modified\r\nContent-Length: 3\r\n\r\nabc"),
     kOther + "HTTP/1.1 304 Not Modified\r"},
    {"RangeNotSatisfiableThatHasSome",
     Says("HTTP/1.1 416 No Range\r\nContent-Range: bytes */3\r\nContent-Length: 3\r\n\r\nabc"),
     kOther + "HTTP/1.1 416 No Range\r"},
    {"ManyChoices", Says("HTTP/1.1 300 Choose\r\nContent-Length: 3\r\n\r\nabc"),
     kOther + "HTTP/1.1 300 Choose\r"},
    {"UnauthorizedWithoutEnd",
     PoursBehind("HTTP/1.1 401 No\r\nWWW-Authenticate: Negotiate\r\n\r\n", BodyOf(4096)),
     "Authorization failed!"},
    {"AProxysChallenge",
     Says("HTTP/1.1 407 Who\r\nProxy-Authenticate: Digest realm=\"x\", nonce=\"y\"\r\n\r\n"),
     kOther + "HTTP/1.1 407 Who\r"},
    {"AStatusOfFiveDigits", Says("HTTP/1.1 99999 Huge\r\n\r\n"), "Cannot establish connection."},
    {"AStatusOfZero", Says("HTTP/1.1 000 Nothing\r\n\r\n"), "Cannot establish connection."},
    {"ANegativeStatus", Says("HTTP/1.1 -20 Less\r\n\r\n"), "Cannot establish connection."},
    {"AnUnknownVersion", Says("HTTP/9.9 200 OK\r\nContent-Length: 3\r\n\r\nabc"),
     "Cannot establish connection."},
    {"AnOldestVersion", Says("HTTP/0.9 200 OK\r\nContent-Length: 3\r\n\r\nabc"),
     "Cannot establish connection."},
    {"LineEndsBeforeTheAnswer", Says("\r\n\r\n" + Whole("abc")), "Cannot establish connection."},
    {"AByteOrderMarkBeforeTheAnswer", Says("\xEF\xBB\xBF" + Whole("abc")),
     "Cannot establish connection."},
    {"TheHelloOfTls", Says("\x16\x03\x03\x00\x7A\x02\x00\x00\x76\x03\x03"s + BodyOf(111)),
     "Cannot establish connection."},
    {"AFirstLineWithoutEnd", PoursBehind("HTTP/1.1 200 ", std::string(4096, 'x')),
     "Cannot establish connection."},
    {"InterimAnswersWithoutEnd", PoursBehind("", kEarlyHints),
     kOther + "HTTP/1.1 103 Early Hints\r"},
    {"ARedirectionToNowhere", Says("HTTP/1.1 302 Found\r\nContent-Length: 0\r\n\r\n"),
     kOther + "HTTP/1.1 302 Found\r"},
    {"ARedirectionToAnAddressThatIsNone", Says(Redirection("http://[/")),
     "Cannot establish connection."},
};

INSTANTIATE_TEST_SUITE_P(Download, Refusals, testing::ValuesIn(kRefusals),
                         [](const auto& row) { return row.param.Name; });

TEST_F(DownloadWindow, WithoutAServerTellsThatNoneIsThere) {
    Web.StopListening();
    Fetch("rain.wav");
    EXPECT_EQ(CloseBox(), ErrorBox("Cannot establish connection."));
    EXPECT_TRUE(AllClose());
}

// So many zeros, packed a thousandfold. The transfer unpacks them although nobody has asked for it.
std::string Deflated(qsizetype zeros) {
    constexpr qsizetype kLength = 4; // before what is packed
    return qCompress(QByteArray(zeros, '\0')).sliced(kLength).toStdString();
}

struct Shortage {
    const char* Name;
    HttpServer::Answer Answer;
};

void PrintTo(const Shortage& row, std::ostream* out) { *out << row.Name; }

class Shortages : public DownloadWindow, public testing::WithParamInterface<Shortage> {};

TEST_P(Shortages, AreToldByThePathAndThenTheErrorAndLeaveNothing) {
    const auto window = FetchFrom(GetParam().Answer);
    EXPECT_EQ(CloseBox(), PlainBox(PathOf("rain.wav")));
    EXPECT_TRUE(window) << "one more box belongs to it";
    EXPECT_EQ(CloseBox(), ErrorBox(kReset));
    EXPECT_TRUE(AllClose());
    ExpectNoBox();
    EXPECT_EQ(Kept(), Files{});
    EXPECT_FALSE(DownloadRunning);
    EXPECT_EQ(BusySlots(), "0");
}

const Shortage kShortages[] = {
    {"OneByteShort", Says(HeadFor(4) + "abc")},
    {"NoByteAtAll", Says(HeadFor(4))},
    {"AChunkShort", Says(HeadFor(4096) + BodyOf(3072))},
    {"AReset", SaysAndResets(HeadFor(4096) + BodyOf(2000))},
    {"AResetBehindTheHeader", SaysAndResets(HeadFor(4096))},
    {"ChunksWithoutTheirEnd", Says(ChunkedHead("Content-Length: 6\r\n") + ChunkOf("abc"))},
    {"FewerChunksThanAnnounced",
     Says(ChunkedHead("Content-Length: 6\r\n") + ChunkOf("abc") + ChunkOf(""))},
    {"MoreInChunksThanAnnounced",
     Says(ChunkedHead("Content-Length: 6\r\n") + ChunkOf("abcdefgh") + ChunkOf(""))},
    {"FarMoreInChunksThanAnnounced",
     Says(ChunkedHead("Content-Length: 1\r\n") + ChunkOf(BodyOf(5000)) + ChunkOf(""))},
    {"AChunkOf40Digits", Says(ChunkedHead("Content-Length: 6\r\n") + ChunkOf("abc") +
                              std::string(40, 'f') + "\r\nabc")},
    {"ANegativeChunk", Says(ChunkedHead("Content-Length: 6\r\n") + "-3\r\nabc\r\n")},
    {"TheHeaderAgainForAChunk", Says(ChunkedHead("Content-Length: 6\r\n") + Whole("abcdef"))},
    {"ATrailerWithoutEnd",
     PoursBehind(ChunkedHead("Content-Length: 6\r\n") + ChunkOf("abc") + "0\r\n",
                 "X: " + std::string(1000, 'x') + "\r\n")},
    {"ATrailersLineWithoutEnd",
     PoursBehind(ChunkedHead("Content-Length: 6\r\n") + ChunkOf("abc") + "0\r\nX: ",
                 std::string(4096, 'x'))},
    {"FarMoreUnpackedThanAnnounced",
     Says("HTTP/1.1 200 OK\r\nTransfer-Encoding: deflate\r\nContent-Length: 6\r\n\r\n" +
          Deflated(5'000'000))},
    {"AHeaderWithoutEndBehindItsLength", PoursBehind("HTTP/1.1 200 OK\r\nContent-Length: 6\r\n",
                                                     "X: " + std::string(1000, 'x') + "\r\n")},
};

INSTANTIATE_TEST_SUITE_P(Download, Shortages, testing::ValuesIn(kShortages),
                         [](const auto& row) { return row.param.Name; });

class CutAnswers : public DownloadWindow,
                   public testing::WithParamInterface<HttpServer::Answer (*)(const std::string&)> {
};

// Wherever an answer is cut off, the file is whole or not there, and the window goes.
TEST_P(CutAnswers, LeaveNoPart) {
    const std::string answer = Whole("abcd");
    for (std::size_t length = 0; length <= answer.size(); ++length) {
        std::filesystem::remove(Sounds() / "rain.wav");
        FetchFrom(GetParam()(answer.substr(0, length)));
        const bool hasStatus = length >= answer.find("\r\n") + 2;
        bool toldOfNobody = false;
        EXPECT_TRUE(WaitFor([&] {
            if (!OpenBoxes().isEmpty())
                toldOfNobody |= CloseBox() == ErrorBox("Cannot establish connection.");
            return Windows().isEmpty();
        })) << length;
        EXPECT_EQ(toldOfNobody, !hasStatus) << length;
        EXPECT_EQ(Kept(), length < answer.size() ? Files{} : (Files{{"rain.wav", "abcd"}}))
            << length;
    }
}

INSTANTIATE_TEST_SUITE_P(Download, CutAnswers, testing::Values(Says, SaysAndResets),
                         [](const auto& row) { return row.index == 0 ? "ByAClose" : "ByAReset"; });

TEST_F(DownloadWindow, LeavesAnOldFileAloneUntilTheNewOneIsWhole) {
    std::ofstream(Sounds() / "rain.wav") << "old";
    FetchFrom(SaysAndStalls(HeadFor(6) + "ne"));
    ASSERT_TRUE(Web.HasVisits(1));
    QTest::qWait(20);
    EXPECT_EQ(Kept()["rain.wav"], "old");
    Web.Last().Send("wer!");
    EXPECT_TRUE(AllClose());
    EXPECT_EQ(Kept(), (Files{{"rain.wav", "newer!"}}));
}

TEST_F(DownloadWindow, LeavesAnOldFileAloneWhenTheNewOneIsShort) {
    std::ofstream(Sounds() / "rain.wav") << "old";
    FetchFrom(Says(HeadFor(6) + "new"));
    CloseBox();
    CloseBox();
    EXPECT_TRUE(AllClose());
    EXPECT_EQ(Kept(), (Files{{"rain.wav", "old"}}));
}

TEST_F(DownloadWindow, FollowsFiveRedirections) {
    Web.Otherwise = Redirects(5, Whole("abc"));
    Fetch("0");
    EXPECT_TRUE(AllClose());
    EXPECT_EQ(Kept(), (Files{{"0", "abc"}}));
}

TEST_F(DownloadWindow, KeepsItsNameWhereverItIsRedirectedTo) {
    HttpServer other;
    other.Otherwise = Says(Whole("abc"));
    Web.Answers["/rain.wav"] = Says(Redirection("/../../%2e%2e/etc/evil.wav"));
    Web.Otherwise = Says(Redirection(other.Address("/..%5c..%5cevil.wav?/../evil.mid")));
    Fetch("rain.wav");
    EXPECT_TRUE(AllClose());
    EXPECT_EQ(other.Requests.size(), 1u);
    EXPECT_EQ(
        forms::FilesIn(Folder.Path),
        (Files{{"Testmere", ""}, {"Testmere/sounds", ""}, {"Testmere/sounds/rain.wav", "abc"}}));
}

TEST_F(DownloadWindow, KeepsNoCookies) {
    Web.Otherwise = Says(With("Set-Cookie: id=1; Path=/; Max-Age=99999\r\nSet-Cookie2: a=b"));
    for (const char* name : {"rain.wav", "thunder.wav"}) {
        Fetch(name);
        EXPECT_TRUE(AllClose());
    }
    ASSERT_EQ(Web.Requests.size(), 2u);
    EXPECT_EQ(Web.Requests[1].find("ookie"), std::string::npos);
}

// A server that answers before it is asked.
TEST_F(DownloadWindow, TakesNothingThatWasSentForAnotherFile) {
    Web.Answers["/rain.wav"] = SaysAndStalls(Whole("abc") + Whole("evil"));
    Web.Answers["/thunder.wav"] = SaysAndStalls(Whole("thunder"));
    Fetch("rain.wav");
    EXPECT_TRUE(AllClose());
    Fetch("thunder.wav");
    EXPECT_TRUE(AllClose());
    EXPECT_EQ(Kept(), (Files{{"rain.wav", "abc"}, {"thunder.wav", "thunder"}}));
}

// A server that moves a file says so with a page.
TEST_F(DownloadWindow, FollowsARedirectionThatHasAPage) {
    Web.Answers["/rain.wav"] = Says("HTTP/1.1 301 Moved Permanently\r\nLocation: /new.wav\r\n"
                                    "Content-Length: 12\r\n\r\n<h1>301</h1>");
    Web.Answers["/new.wav"] = Says(Whole("abc"));
    Fetch("rain.wav");
    EXPECT_TRUE(WaitFor([] { return Windows().isEmpty() || !OpenBoxes().isEmpty(); }));
    ExpectNoBox();
    EXPECT_EQ(Kept(), (Files{{"rain.wav", "abc"}}));
}

class TooLarge : public DownloadWindow, public testing::WithParamInterface<const char*> {};

TEST_P(TooLarge, IsGivenUpWithANotice) {
    FetchFrom(SaysAndStalls("HTTP/1.1 200 OK\r\nContent-Length: " + std::string(GetParam()) +
                            "\r\n\r\n"));
    EXPECT_EQ(CloseBox(), PlainBox(PathOf("rain.wav")));
    EXPECT_TRUE(AllClose());
    ExpectNoBox();
    EXPECT_TRUE(
        PanelShows(2, "Not downloaded, because it is too large: " + Web.Address("/rain.wav")));
    EXPECT_TRUE(Web.Last().Leaves());
    EXPECT_EQ(Kept(), Files{});
}

INSTANTIATE_TEST_SUITE_P(Download, TooLarge,
                         testing::Values("67108865", "9223372036854775807", "9223372036854775808",
                                         "18446744073709551617", "99999999999999999999999"),
                         [](const auto& row) { return "Announced" + std::string(row.param); });

TEST_F(DownloadWindow, OfAnEndlessBodyIsGivenUpAtItsLimit) {
    const std::string piece = BodyOf(64 * 1024);
    FetchFrom(
        PoursBehind(ChunkedHead("Content-Length: " + std::to_string(60 * 1024 * 1024) + "\r\n"),
                    ChunkOf(piece)));
    EXPECT_EQ(CloseBox(), PlainBox(PathOf("rain.wav")));
    EXPECT_TRUE(AllClose());
    ExpectNoBox();
    EXPECT_EQ(Notice, "Not downloaded, because it is too large: " + Web.Address("/rain.wav"));
    EXPECT_GE(Web.Last().Poured, kLargestDownload);
    EXPECT_EQ(Kept(), Files{});
}

TEST_F(DownloadWindow, ThatCantBeWrittenEndsWithThePathAlone) {
    fs::remove(Sounds());
    std::ofstream(Sounds()) << "in the way";
    FetchFrom(Says(Whole("abc")));
    EXPECT_EQ(CloseBox(), PlainBox(PathOf("rain.wav")));
    EXPECT_TRUE(AllClose());
    ExpectNoBox();
}

TEST_F(DownloadWindow, MakesTheFolderOfTheSounds) {
    fs::remove(Sounds());
    FetchFrom(Says(Whole("abc")));
    EXPECT_TRUE(AllClose());
    EXPECT_EQ(Kept(), (Files{{"rain.wav", "abc"}}));
}

TEST_F(DownloadWindow, ShowsHowFarItIs) {
    const auto window = FetchFrom(SaysAndStalls(HeadFor(4096)));
    std::vector<int> values;
    QObject::connect(window->ProgressBar, &QProgressBar::valueChanged, window,
                     [&](int value) { values.push_back(value); });
    ASSERT_TRUE(Web.HasVisits(1));
    for (const int percent : {25, 50, 75}) {
        Web.Last().Send(std::string(1024, 'x'));
        EXPECT_TRUE(WaitFor([&] { return window->ProgressBar->value() == percent; }));
        EXPECT_TRUE(window->isVisible());
    }
    Web.Last().Send(std::string(1024, 'x'));
    EXPECT_TRUE(AllClose());
    EXPECT_EQ(values, (std::vector{25, 50, 75, 100}));
}

TEST_F(DownloadWindow, RoundsToWholePercent) {
    const auto window = FetchFrom(SaysAndStalls(HeadFor(3 * 1024) + BodyOf(2 * 1024)));
    EXPECT_TRUE(WaitFor([&] { return window->ProgressBar->value() == 67; }));
}

TEST_F(DownloadWindow, ResetsItsBarWhenItFails) {
    const auto window = FetchFrom(SaysAndStalls(HeadFor(4096) + BodyOf(2048)));
    ASSERT_TRUE(WaitFor([&] { return window->ProgressBar->value() == 50; }));
    Web.Last().Reset();
    ASSERT_NE(OpenBox(), nullptr);
    EXPECT_EQ(window->ProgressBar->value(), 0);
}

// Ways of the player to stop a download.
struct Stopping {
    const char* Name;
    void (*Stop)(frmDownload* window);
};

void PrintTo(const Stopping& row, std::ostream* out) { *out << row.Name; }

class Stoppings : public DownloadWindow, public testing::WithParamInterface<Stopping> {};

TEST_P(Stoppings, BeforeTheAnswerSayNothing) {
    const auto window = FetchFrom([](forms::Visit&) {});
    ASSERT_TRUE(Web.HasVisits(1));
    GetParam().Stop(window);
    EXPECT_TRUE(AllClose());
    EXPECT_TRUE(Web.Last().Leaves());
    WaitAMoment([] { return !OpenBoxes().isEmpty(); });
    EXPECT_EQ(Kept(), Files{});
    EXPECT_EQ(BusySlots(), "0");
}

TEST_P(Stoppings, InTheMiddleTellThePathAndLeaveNothing) {
    const auto window = FetchFrom(SaysAndStalls(HeadFor(4096) + BodyOf(2048)));
    ASSERT_TRUE(WaitFor([&] { return window->ProgressBar->value() == 50; }));
    EXPECT_EQ(Kept().size(), 1u);
    GetParam().Stop(window);
    EXPECT_TRUE(AllClose());
    EXPECT_TRUE(Web.Last().Leaves());
    EXPECT_EQ(CloseBox(), PlainBox(PathOf("rain.wav")));
    WaitAMoment([] { return !OpenBoxes().isEmpty(); });
    EXPECT_EQ(Kept(), Files{});
    EXPECT_EQ(BusySlots(), "0");
}

TEST_P(Stoppings, BehindItsBoxLeaveTheBox) {
    const auto window = FetchFrom(Says("HTTP/1.1 404 Not Found\r\n\r\n"));
    ASSERT_NE(OpenBox(), nullptr);
    GetParam().Stop(window);
    EXPECT_TRUE(AllClose());
    EXPECT_EQ(BusySlots(), "0");
    EXPECT_EQ(CloseBox(),
              ErrorBox("The file, \"" + Web.Address("/rain.wav") + "\" was not found!"));
    WaitAMoment([] { return !OpenBoxes().isEmpty(); });
}

TEST_P(Stoppings, LeaveTheOtherDownloads) {
    FetchFrom(SaysAndStalls(HeadFor(3)));
    const auto window = Fetch("thunder.wav");
    ASSERT_TRUE(Web.HasVisits(2));
    GetParam().Stop(window);
    EXPECT_TRUE(Web.Visits[1]->Leaves());
    Web.Visits[0]->Send("abc");
    EXPECT_TRUE(AllClose());
    EXPECT_EQ(Kept(), (Files{{"rain.wav", "abc"}}));
}

const Stopping kStoppings[] = {
    {"Cancel", [](frmDownload* window) { QTest::mouseClick(window->cmdCancel, Qt::LeftButton); }},
    {"ItsLetter",
     [](frmDownload* window) {
         window->activateWindow();
         EXPECT_TRUE(QTest::qWaitForWindowActive(window));
         QTest::keyClick(window, Qt::Key_C, Qt::AltModifier);
     }},
    {"Escape", [](frmDownload* window) { QTest::keyClick(window, Qt::Key_Escape); }},
    {"EscapeOnTheButton",
     [](frmDownload* window) { QTest::keyClick(window->cmdCancel, Qt::Key_Escape); }},
    {"TheWindowSystem",
     [](frmDownload* window) {
         QCloseEvent close;
         QCoreApplication::sendEvent(window->windowHandle(), &close);
     }},
};

INSTANTIATE_TEST_SUITE_P(Download, Stoppings, testing::ValuesIn(kStoppings),
                         [](const auto& row) { return row.param.Name; });

// The player's click arrives while the transfer is telling something.
TEST_F(DownloadWindow, ClosedFromInsideItsOwnProgressEndsOnce) {
    const auto window = FetchFrom(Says(Whole(BodyOf(4096))));
    const auto other = Fetch("thunder.wav");
    int told = 0;
    QObject::connect(window->ProgressBar, &QProgressBar::valueChanged, window, [&] {
        ++told;
        window->close();
    });
    EXPECT_EQ(CloseBox(), PlainBox(PathOf("rain.wav")));
    EXPECT_TRUE(AllClose());
    EXPECT_EQ(told, 1);
    ExpectNoBox();
    EXPECT_TRUE(Kept() == (Files{{"thunder.wav", BodyOf(4096)}}));
}

TEST_F(DownloadWindow, ClosedFromInsideTheProgressOfAnotherEndsOnce) {
    Web.Otherwise = SaysAndStalls(HeadFor(4096) + BodyOf(1024));
    const auto first = Fetch("rain.wav");
    const auto second = Fetch("thunder.wav");
    const auto closeBoth = [&] {
        for (const auto& window : {first, second}) {
            if (window)
                window->close();
        }
    };
    QObject::connect(first->ProgressBar, &QProgressBar::valueChanged, first, closeBoth);
    QObject::connect(second->ProgressBar, &QProgressBar::valueChanged, second, closeBoth);
    EXPECT_TRUE(AllClose());
    EXPECT_EQ(BusySlots().find('1'), std::string::npos);
    EXPECT_TRUE(WaitFor([&] { return Web.Visits.size() == 2; }));
    for (const auto& visit : Web.Visits)
        EXPECT_TRUE(visit->Leaves());
    EXPECT_EQ(Kept(), Files{});
}

TEST_F(DownloadWindow, FromInsideTheProgressOfAnotherBegins) {
    Web.Otherwise = Says(Whole(BodyOf(2048)));
    const auto window = Fetch("rain.wav");
    QObject::connect(window->ProgressBar, &QProgressBar::valueChanged, window,
                     [this, once = false](int) mutable {
                         if (!std::exchange(once, true))
                             FetchSound(Web.Address("/thunder.wav"));
                     });
    EXPECT_TRUE(AllClose());
    EXPECT_EQ(Kept().size(), 2u);
}

TEST_F(DownloadWindow, ThreeUnderWayStandSideBySide) {
    const int percents[] = {10, 45, 80};
    const char* const names[] = {"rain.wav", "thunder.wav",
                                 "a-long-and-winding-tune-of-the-band-at-the-gate.mid"};
    for (int i = 0; i < 3; ++i) {
        Web.Otherwise = SaysAndStalls(HeadFor(100 * 1024) +
                                      BodyOf(static_cast<std::size_t>(percents[i]) * 1024));
        const auto window = Fetch(names[i]);
        EXPECT_TRUE(WaitFor([&] { return window->ProgressBar->value() == percents[i]; }));
    }
    QList<QWidget*> all{Frame.get()};
    const auto windows = Windows();
    ASSERT_EQ(windows.size(), 3);
    all.append({windows[2], windows[1], windows[0]});
    for (frmDownload* const a : windows) {
        EXPECT_TRUE(a->screen()->availableGeometry().contains(a->geometry())) << SlotOf(a);
        for (const frmDownload* const b : windows)
            EXPECT_TRUE(a == b || !a->frameGeometry().intersects(b->frameGeometry()));
        forms::KeepPicture(a->grab(), QString("download-%1").arg(a->lblSlot->text()));
    }
    forms::KeepPicture(forms::PictureOf(all), "three-downloads");
}

TEST_F(DownloadWindow, ThatFailsShowsItsTextInThreeLines) {
    FetchFrom(Says("HTTP/1.1 500 Internal Server Error\r\n\r\n"));
    QMessageBox* const box = OpenBox();
    ASSERT_NE(box, nullptr);
    forms::KeepPicture(box->grab(), "error-box");
    // The text stands in three lines, as its two line ends ask for.
    auto* const label = box->findChild<QLabel*>("qt_msgbox_label");
    ASSERT_NE(label, nullptr);
    EXPECT_GE(label->sizeHint().height(), 3 * label->fontMetrics().height());
}

TEST_F(DownloadWindow, TenAtOnceTakeTheSlots0To9AndTheNextTakes0Again) {
    for (int i = 0; i < 10; ++i)
        EXPECT_EQ(SlotOf(Fetch(std::to_string(i) + ".wav")), std::to_string(i));
    EXPECT_EQ(Windows().size(), 10);
    EXPECT_EQ(BusySlots(), "1111111111");
    ASSERT_TRUE(Web.HasVisits(10));
    for (const auto& visit : Web.Visits)
        visit->Send(Whole(visit->Path));
    EXPECT_TRUE(AllClose());
    Files expected;
    for (int i = 0; i < 10; ++i)
        expected[std::to_string(i) + ".wav"] = "/" + std::to_string(i) + ".wav";
    EXPECT_EQ(Kept(), expected);
    EXPECT_EQ(SlotOf(Fetch("rain.wav")), "0");
    EXPECT_EQ(BusySlots(), "1");
}

TEST_F(DownloadWindow, TakesTheFirstSlotThatIsFree) {
    const auto first = Fetch("0.wav");
    const auto second = Fetch("1.wav");
    Fetch("2.wav");
    second->close();
    EXPECT_EQ(BusySlots(), "101");
    FetchSound(Web.Address("/3.wav"));
    EXPECT_EQ(BusySlots(), "111");
    EXPECT_EQ(SlotOf(Windows()[1]), "1");
    first->close();
    EXPECT_EQ(BusySlots(), "011");
}

TEST_F(DownloadWindow, AreThirtyTwoAtMost) {
    for (int i = 0; i < 33; ++i)
        FetchSound(Web.Address("/" + std::to_string(i)));
    EXPECT_EQ(Windows().size(), 32);
    EXPECT_TRUE(
        PanelShows(2, "Not downloaded, because too many are under way: " + Web.Address("/32")));
    for (const frmDownload* const window : Windows())
        EXPECT_TRUE(window->screen()->availableGeometry().intersects(window->frameGeometry()));
}

TEST_F(DownloadWindow, OfTheSameFileTwiceSpoilsNeither) {
    Web.Otherwise = SaysAndStalls(HeadFor(3) + "a");
    Fetch("rain.wav");
    Fetch("rain.wav");
    ASSERT_TRUE(Web.HasVisits(2));
    Web.Visits[0]->Send("bc");
    EXPECT_TRUE(WaitFor([] { return Windows().size() == 1; }));
    EXPECT_EQ(Kept()["rain.wav"], "abc");
    Web.Visits[1]->Send("BC");
    EXPECT_TRUE(AllClose());
    EXPECT_EQ(Kept(), (Files{{"rain.wav", "aBC"}}));
}

// Boxes come one at a time, in their order.
class DownloadBoxes : public DownloadWindow {
protected:
    void FailAll(int count) {
        Web.Otherwise = Says("HTTP/1.1 404 Not Found\r\n\r\n");
        for (int i = 0; i < count; ++i)
            FetchSound(Web.Address("/" + std::to_string(i)));
        ASSERT_TRUE(Web.HasVisits(static_cast<std::size_t>(count)));
        QTest::qWait(100);
    }

    // Closes the boxes until none comes any more, and counts them.
    static int CloseAllBoxes() {
        int count = 0;
        while (!OpenBoxes().isEmpty()) {
            CloseBox();
            ++count;
            LetEventsRun();
        }
        return count;
    }
};

TEST_F(DownloadBoxes, ComeOneAtATimeAndTakeTheirWindowsWithThem) {
    FailAll(3);
    for (qsizetype left = 3; left > 0; --left) {
        EXPECT_EQ(OpenBoxes().size(), 1);
        EXPECT_EQ(Windows().size(), left);
        CloseBox();
        EXPECT_TRUE(WaitFor([&] { return Windows().size() == left - 1; }));
    }
    ExpectNoBox();
}

TEST_F(DownloadBoxes, AreNineAtMostAndTheOtherWindowsCloseAtOnce) {
    FailAll(14);
    EXPECT_EQ(Windows().size(), 9);
    EXPECT_EQ(CloseAllBoxes(), 9);
    EXPECT_TRUE(AllClose());
}

TEST_F(DownloadBoxes, CloseByEscapeAndByTheWindowSystemToo) {
    FailAll(2);
    QTest::keyClick(OpenBox(), Qt::Key_Escape);
    LetEventsRun();
    EXPECT_EQ(Windows().size(), 1);
    QCloseEvent close;
    QCoreApplication::sendEvent(OpenBox()->windowHandle(), &close);
    EXPECT_TRUE(AllClose());
    ExpectNoBox();
}

TEST_F(DownloadBoxes, GoWithTheDownloadsWhenThoseAreAbandoned) {
    FailAll(2);
    AbandonDownloads();
    LetEventsRun();
    ExpectNoBox();
    EXPECT_TRUE(Windows().isEmpty());
}

TEST_F(DownloadBoxes, WishNoKeysWhenTheyOpen) {
    FailAll(1);
    EXPECT_TRUE(OpenBox()->testAttribute(Qt::WA_ShowWithoutActivating));
}

TEST_F(DownloadBoxes, LeaveTheFrameUsable) {
    FailAll(1);
    Frame->activateWindow();
    Type("look");
    EXPECT_EQ(Typed(), "look");
    EXPECT_TRUE(Frame->isEnabled());
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    EXPECT_EQ(OpenBoxes().size(), 1);
}

TEST_F(DownloadWindow, LeavesTheFrameUsable) {
    Web.Otherwise = [](forms::Visit& visit) {
        visit.Send(HeadFor(100'000'000));
        visit.Drip(std::string(1'000'000, 'x'));
    };
    Fetch("rain.wav");
    Connect();
    Receive("You hear thunder.");
    Enter("look");
    EXPECT_TRUE(Server.Gets("look\r"));
    Item("mnuSound")->trigger();
    EXPECT_NE(Frame->findChild<QDialog*>("frmSndSetup"), nullptr);
    EXPECT_EQ(Windows().size(), 1);
}

// The platform of the tests gives the keys to every new window, so that only the wish can be seen.
TEST_F(DownloadWindow, WishesNoKeysWhenItOpens) {
    EXPECT_TRUE(Fetch("rain.wav")->testAttribute(Qt::WA_ShowWithoutActivating));
}

struct OddName {
    const char* Name;
    std::string File;  // as it is fetched
    std::string Shown; // in the window, in UTF-8; all of it when it is short
};

void PrintTo(const OddName& row, std::ostream* out) { *out << row.Name; }

class OddNames : public DownloadWindow, public testing::WithParamInterface<OddName> {};

TEST_P(OddNames, AreShownAndKeptAsTheyAre) {
    const auto window = FetchFrom(SaysAndStalls(HeadFor(3)));
    window->close();
    const auto odd = Fetch(GetParam().File);
    ASSERT_NE(odd, nullptr);
    const auto* const label = odd->findChildren<QLabel*>()[1];
    EXPECT_EQ(label->textFormat(), Qt::PlainText);
    EXPECT_EQ(label->text().toStdString(), GetParam().Shown);
    EXPECT_EQ(odd->ProgressBar->accessibleName().toStdString(), GetParam().Shown);
    forms::KeepPicture(odd->grab(), QString("name-%1").arg(GetParam().Name));
    ASSERT_TRUE(Web.HasVisits(1));
    Web.Last().Send("abc");
    EXPECT_TRUE(AllClose());
    EXPECT_EQ(Kept(), (Files{{GetParam().Shown, "abc"}}));
}

const OddName kOddNames[] = {
    {"Ampersand", "wind&rain.wav", "wind&rain.wav"},
    {"Markup", "<b>rain<b>.wav", "<b>rain<b>.wav"},
    {"Percent", "a%20b%1.wav", "a%20b%1.wav"},
    {"HighBytes", "donner-gr\xFC\xDF.wav", "donner-gr\xC3\xBC\xC3\x9F.wav"},
    {"Leading", ".wav", ".wav"},
};

INSTANTIATE_TEST_SUITE_P(Download, OddNames, testing::ValuesIn(kOddNames),
                         [](const auto& row) { return row.param.Name; });

TEST_F(DownloadWindow, CutsALongNameInTheMiddleAndShowsItWholeAsATip) {
    const std::string name = "rain-" + std::string(190, 'i') + "<b>.wav";
    const auto window = FetchFrom(SaysAndStalls(HeadFor(3)));
    const int width = window->width();
    window->close();
    const auto longer = Fetch(name);
    const auto* const label = longer->findChildren<QLabel*>()[1];
    EXPECT_EQ(longer->width(), width);
    EXPECT_LE(label->sizeHint().width(), width);
    EXPECT_TRUE(label->text().startsWith("rain-i"));
    EXPECT_TRUE(label->text().endsWith("i<b>.wav"));
    EXPECT_NE(label->text().toStdString(), name);
    EXPECT_TRUE(label->toolTip().endsWith("i&lt;b&gt;.wav"));
    ASSERT_TRUE(
        WaitFor([this] { return !Web.Visits.empty() && Web.Last().Path.starts_with("/rain-i"); }));
}

// The end of the program.
class DownloadUnload : public DownloadWindow {
protected:
    DownloadUnload() {
        PrepareFolders();
        MacroSets[0].Name = "Default";
    }

    int EndProgram() {
        return RunUntil([this] {
            Frame->close();
            LeftAtOnce = Kept();
            BoxesAtOnce = OpenBoxes().size();
        });
    }

    Files LeftAtOnce;
    qsizetype BoxesAtOnce = -1;
};

TEST_F(DownloadUnload, LeavesNoPartAndNoBox) {
    Fetch("requesting.wav");
    Web.Answers["/receiving.wav"] = SaysAndStalls(HeadFor(4096) + BodyOf(2048));
    const auto receiving = Fetch("receiving.wav");
    Web.Answers["/refused.wav"] = Says("HTTP/1.1 404 Not Found\r\n\r\n");
    Fetch("refused.wav");
    Web.Answers["/short.wav"] = Says(HeadFor(4) + "abc");
    Fetch("short.wav");
    ASSERT_TRUE(WaitFor([&] { return receiving->ProgressBar->value() == 50; }));
    ASSERT_NE(OpenBox(), nullptr);
    EXPECT_EQ(EndProgram(), 0);
    EXPECT_EQ(LeftAtOnce, Files{});
    EXPECT_EQ(BoxesAtOnce, 0);
    EXPECT_TRUE(Windows().isEmpty());
    ExpectNoBox();
    EXPECT_EQ(Kept(), Files{});
    for (const auto& visit : Web.Visits)
        EXPECT_TRUE(visit->Leaves());
    EXPECT_EQ(Folder.ContentOf("Data/muds.lst"), FormatMudList(MudList));
}

} // namespace
} // namespace mw
