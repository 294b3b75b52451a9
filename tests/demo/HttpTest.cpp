#include "Http.h"

#include "Reply.h"

#include <gtest/gtest.h>
#include <random>
#include <set>
#include <string>

namespace world {
namespace {

using namespace std::string_literals;

constexpr std::string_view kHtml = "text/html; charset=utf-8";

const Pages kPages = {
    {"/", {std::string(kHtml), "<p>home</p>"}},
    {"/client/clientver.txt", {"text/plain", "1"}},
    {"/empty", {"text/plain", ""}},
    {"/bytes", {"audio/wav", "RIFF\0\r\n\r\n\xff"s}},
};

struct Case {
    const char* name;
    std::string request;
    std::string status;
    std::string body; // looked at where the status is 200
};

void PrintTo(const Case& row, std::ostream* out) { *out << row.name; }

const std::string kOk = "200 OK";
const std::string kMalformed = "400 Bad Request";
const std::string kNotFound = "404 Not Found";
const std::string kBadMethod = "405 Method Not Allowed";

const Case kCases[] = {
    {"TheHomePage", "GET / HTTP/1.1\r\nHost: 127.0.0.1:8080\r\n\r\n", kOk, "<p>home</p>"},
    {"TheVersion", "GET /client/clientver.txt HTTP/1.1\r\nHost: x\r\n\r\n", kOk, "1"},
    {"AnEmptyPage", "GET /empty HTTP/1.1\r\n\r\n", kOk, ""},
    {"APageOfBytes", "GET /bytes HTTP/1.1\r\n\r\n", kOk, "RIFF\0\r\n\r\n\xff"s},
    {"TheOlderVersionOfTheProtocol", "GET / HTTP/1.0\r\n\r\n", kOk, "<p>home</p>"},
    {"LinesThatEndInLfAlone", "GET / HTTP/1.1\nHost: x\n\n", kOk, "<p>home</p>"},
    {"LineEndsOfBothKinds", "GET / HTTP/1.1\nHost: x\r\n\r\n", kOk, "<p>home</p>"},
    {"AQuery", "GET /client/clientver.txt?when=now HTTP/1.1\r\n\r\n", kOk, "1"},
    {"AQueryWithAPathInIt", "GET /?next=/empty HTTP/1.1\r\n\r\n", kOk, "<p>home</p>"},
    {"AnEmptyQuery", "GET /? HTTP/1.1\r\n\r\n", kOk, "<p>home</p>"},
    {"TwoQuestionMarks", "GET /?a?/ HTTP/1.1\r\n\r\n", kOk, "<p>home</p>"},
    {"ARangeFromTheBeginning", "GET /bytes HTTP/1.1\r\nRange: bytes=0-\r\n\r\n", kOk,
     "RIFF\0\r\n\r\n\xff"s},
    {"ARangeThatIsNotServedOnPurpose", "GET / HTTP/1.1\r\nRange: bytes=3-5\r\n\r\n", kOk,
     "<p>home</p>"},
    {"FieldsThatAreNone", "GET / HTTP/1.1\r\n: : :\r\n\xff\0\r\n\r\n"s, kOk, "<p>home</p>"},
    {"FieldsThatAskToStay", "GET / HTTP/1.1\r\nConnection: keep-alive\r\n\r\n", kOk, "<p>home</p>"},

    {"APathThatIsNotThere", "GET /nothing HTTP/1.1\r\n\r\n", kNotFound, ""},
    {"AFolder", "GET /client/ HTTP/1.1\r\n\r\n", kNotFound, ""},
    {"APathInCapitals", "GET /CLIENT/CLIENTVER.TXT HTTP/1.1\r\n\r\n", kNotFound, ""},
    {"APathWithASlashTooMany", "GET //client/clientver.txt HTTP/1.1\r\n\r\n", kNotFound, ""},
    {"APathThatGoesOn", "GET /client/clientver.txt/ HTTP/1.1\r\n\r\n", kNotFound, ""},
    {"APathThatClimbs", "GET /client/../../etc/passwd HTTP/1.1\r\n\r\n", kNotFound, ""},
    {"APathWithoutItsSlash", "GET client/clientver.txt HTTP/1.1\r\n\r\n", kNotFound, ""},
    {"AQueryAlone", "GET ? HTTP/1.1\r\n\r\n", kNotFound, ""},
    {"APathBehindAnotherQuery", "GET /nothing?/ HTTP/1.1\r\n\r\n", kNotFound, ""},

    {"Posting", "POST / HTTP/1.1\r\nContent-Length: 0\r\n\r\n", kBadMethod, ""},
    {"PostingToNoPage", "POST /nothing HTTP/1.1\r\n\r\n", kBadMethod, ""},
    {"AskingForTheOptionsOfAll", "OPTIONS * HTTP/1.1\r\n\r\n", kBadMethod, ""},
    {"ATunnel", "CONNECT 127.0.0.1:25 HTTP/1.1\r\n\r\n", kBadMethod, ""},
    {"AMethodInSmallLetters", "get / HTTP/1.1\r\n\r\n", kBadMethod, ""},
    {"AMethodThatOnlyBeginsLikeOne", "GETS / HTTP/1.1\r\n\r\n", kBadMethod, ""},

    {"NothingButLineEnds", "\r\n\r\n", kMalformed, ""},
    {"NothingButLf", "\n\n", kMalformed, ""},
    {"AnEmptyLineFirst", "\nGET / HTTP/1.1\r\n\r\n", kMalformed, ""},
    {"AWordOfAGame", "look\n\n", kMalformed, ""},
    {"NoVersion", "GET /\r\n\r\n", kMalformed, ""},
    {"NoVersionButItsBlank", "GET / \r\n\r\n", kMalformed, ""},
    {"NoTarget", "GET  HTTP/1.1\r\n\r\n", kMalformed, ""},
    {"NoMethod", " / HTTP/1.1\r\n\r\n", kMalformed, ""},
    {"TwoBlanks", "GET  / HTTP/1.1\r\n\r\n", kMalformed, ""},
    {"ABlankBehind", "GET / HTTP/1.1 \r\n\r\n", kMalformed, ""},
    {"ABlankInThePath", "GET /a b HTTP/1.1\r\n\r\n", kMalformed, ""},
    {"TabsForBlanks", "GET\t/\tHTTP/1.1\r\n\r\n", kMalformed, ""},
    {"ANulInThePath", "GET /\0 HTTP/1.1\r\n\r\n"s, kMalformed, ""},
    {"ADeleteInThePath", "GET /\x7f HTTP/1.1\r\n\r\n", kMalformed, ""},
    {"AHighByteInThePath", "GET /\xe4 HTTP/1.1\r\n\r\n", kMalformed, ""},
    {"AReturnInThePath", "GET /\r HTTP/1.1\r\n\r\n", kMalformed, ""},
    {"ABracketInTheMethod", "GE(T / HTTP/1.1\r\n\r\n", kMalformed, ""},
    {"ANulInTheMethod", "GET\0 / HTTP/1.1\r\n\r\n"s, kMalformed, ""},
    {"AVersionToCome", "GET / HTTP/2.0\r\n\r\n", kMalformed, ""},
    {"AVersionThatNeverWas", "GET / HTTP/1.10\r\n\r\n", kMalformed, ""},
    {"AVersionInSmallLetters", "GET / http/1.1\r\n\r\n", kMalformed, ""},
    {"AVersionOfAnotherProtocol", "GET / RTSP/1.0\r\n\r\n", kMalformed, ""},
    {"BytesOfAnEncryptedGreeting", "\x16\x03\x01\x02\n\n", kMalformed, ""},
};

class HttpRequests : public ::testing::TestWithParam<Case> {};

INSTANTIATE_TEST_SUITE_P(All, HttpRequests, ::testing::ValuesIn(kCases),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_P(HttpRequests, AreAnsweredWithAWholeReply) {
    const std::optional<std::string> answer = Answer(GetParam().request, kPages);
    ASSERT_TRUE(answer);
    const std::optional<Reply> reply = ParseReply(*answer);
    ASSERT_TRUE(reply) << *answer;
    EXPECT_EQ(reply->status, GetParam().status);
    EXPECT_TRUE(IsWhole(*reply)) << *answer;
    EXPECT_EQ(reply->fields.contains("Allow"), reply->status == kBadMethod);
    if (reply->status == kOk)
        EXPECT_EQ(reply->body, GetParam().body);
    else
        EXPECT_TRUE(reply->body.starts_with("<!DOCTYPE html>\n")) << reply->body;
}

TEST_P(HttpRequests, AreAnsweredOnlyWhenTheLastByteOfTheHeadIsThere) {
    const std::string& request = GetParam().request;
    for (std::size_t length = 0; length < request.size(); ++length)
        EXPECT_FALSE(Answer(std::string_view(request).substr(0, length), kPages)) << length;
}

TEST_P(HttpRequests, AreAnsweredTheSameWhateverFollowsTheHead) {
    const std::string& request = GetParam().request;
    for (const std::string& rest :
         {"x"s, "\r\n\r\n"s, "GET /empty HTTP/1.1\r\n\r\n"s, std::string(2 * MaxHead, 'x')})
        EXPECT_EQ(Answer(request + rest, kPages), Answer(request, kPages));
}

Reply ReplyTo(std::string_view request) {
    return ParseReply(Answer(request, kPages).value_or("")).value_or(Reply{});
}

TEST(Http, NamesTheTypeOfThePage) {
    EXPECT_EQ(ReplyTo("GET /bytes HTTP/1.1\r\n\r\n").fields["Content-Type"], "audio/wav");
    EXPECT_EQ(ReplyTo("GET /none HTTP/1.1\r\n\r\n").fields["Content-Type"], kHtml);
}

TEST(Http, NamesTheMethodsThatItKnows) {
    EXPECT_EQ(ReplyTo("PUT / HTTP/1.1\r\n\r\n").fields["Allow"], "GET, HEAD");
}

TEST(Http, AnswersHeadLikeGetWithoutTheBody) {
    for (const char* path :
         {"/", "/client/clientver.txt", "/empty", "/bytes", "/none", "/?query"}) {
        const std::string rest = " "s + path + " HTTP/1.1\r\n\r\n";
        Reply whole = ReplyTo("GET" + rest);
        Reply head = ReplyTo("HEAD" + rest);
        EXPECT_FALSE(head.status.empty()) << path;
        EXPECT_EQ(head.fields["Content-Length"], std::to_string(whole.body.size())) << path;
        whole.body.clear();
        EXPECT_EQ(head, whole) << path;
    }
}

TEST(Http, ServesNothingFromAnEmptyTable) {
    const std::optional<std::string> answer = Answer("GET / HTTP/1.1\r\n\r\n", {});
    ASSERT_TRUE(answer);
    EXPECT_TRUE(answer->starts_with("HTTP/1.1 404 Not Found\r\n"));
}

// A head of this many bytes: a field is filled up to it.
std::string HeadOf(std::size_t size) {
    const std::string begin = "GET / HTTP/1.1\r\nFill: ";
    const std::string end = "\r\n\r\n";
    return begin + std::string(size - begin.size() - end.size(), 'x') + end;
}

const std::string kTooLong = "431 Request Header Fields Too Large";

TEST(Http, ReadsAHeadUpToTheLimit) {
    ASSERT_EQ(HeadOf(MaxHead).size(), MaxHead);
    EXPECT_EQ(ReplyTo(HeadOf(MaxHead)).status, kOk);
    EXPECT_EQ(ReplyTo(HeadOf(MaxHead) + "and more").status, kOk);
}

TEST(Http, RefusesALongerHeadAsSoonAsItIsOne) {
    const std::string tooLong = HeadOf(MaxHead + 1);
    EXPECT_FALSE(Answer(tooLong.substr(0, MaxHead - 1), kPages));
    for (const std::size_t length : {MaxHead, MaxHead + 1}) {
        const Reply reply = ReplyTo(tooLong.substr(0, length));
        EXPECT_EQ(reply.status, kTooLong) << length;
        EXPECT_TRUE(IsWhole(reply)) << length;
    }
}

TEST(Http, RefusesAPathWithoutEnd) {
    EXPECT_EQ(ReplyTo("GET /" + std::string(MaxHead, 'x')).status, kTooLong);
    EXPECT_EQ(ReplyTo(std::string(100 * MaxHead, '\0')).status, kTooLong);
}

const std::set<std::string> kStatuses = {kOk, kMalformed, kNotFound, kBadMethod};

TEST(Http, AnswersARequestWithAnyOneByteChangedInAWholeReplyOrWaits) {
    const std::string good = "GET /empty?q HTTP/1.1\r\nA: b\r\n\r\n";
    for (std::size_t at = 0; at < good.size(); ++at) {
        for (int byte = 0; byte < 256; ++byte) {
            std::string request = good;
            request[at] = static_cast<char>(byte);
            const std::optional<std::string> answer = Answer(request, kPages);
            // Only the last bytes take the end away.
            ASSERT_TRUE(answer || at >= good.size() - 3) << at << ' ' << byte;
            const std::optional<Reply> reply = ParseReply(answer.value_or(""));
            ASSERT_TRUE(!answer || (reply && IsWhole(*reply))) << at << ' ' << byte;
            ASSERT_TRUE(!reply || kStatuses.contains(reply->status)) << at << ' ' << byte;
        }
    }
}

TEST(Http, AnswersNoiseInAWholeReply) {
    std::mt19937 engine(20);
    const std::string_view letters = "GETHAD /?.HTP1012\r\n\r\n \0\xff";
    std::uniform_int_distribution<std::size_t> pick(0, letters.size() - 1);
    for (int round = 0; round < 20000; ++round) {
        std::string noise;
        for (int length = 0; length < 40; ++length)
            noise += letters[pick(engine)];
        const std::optional<Reply> reply = ParseReply(Answer(noise + "\n\n", kPages).value_or(""));
        ASSERT_TRUE(reply && IsComplete(*reply)) << ::testing::PrintToString(noise);
        ASSERT_TRUE(kStatuses.contains(reply->status)) << ::testing::PrintToString(noise);
    }
}

} // namespace
} // namespace world
