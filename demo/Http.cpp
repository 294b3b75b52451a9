#include "Http.h"

#include <algorithm>

namespace world {
namespace {

struct Refusal {
    std::string_view status;
    std::string_view fields; // of the answer's head, beside those that all have
    std::string_view says;
};

constexpr Refusal kMalformed = {"400 Bad Request", "", "The gatekeeper cannot read this request."};
constexpr Refusal kNotFound = {"404 Not Found", "", "There is nothing at this address."};
constexpr Refusal kBadMethod = {"405 Method Not Allowed", "Allow: GET, HEAD\r\n",
                                "Pages can be read here and nothing else."};
constexpr Refusal kTooLong = {"431 Request Header Fields Too Large", "",
                              "This request is longer than the gatekeeper reads."};

struct Request {
    std::string_view method;
    std::string_view target;
};

// RFC 9110, 5.6.2: what a method may be spelt with.
bool IsTokenCharacter(char c) {
    const bool isLetter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
    const bool isDigit = c >= '0' && c <= '9';
    constexpr std::string_view marks = "!#$%&'*+-.^_`|~";
    return isLetter || isDigit || marks.find(c) != std::string_view::npos;
}

bool IsTargetCharacter(char c) { return c > ' ' && c < '\x7f'; }

// Three words with one blank between each, or nothing.
std::optional<Request> ParseRequestLine(std::string_view line) {
    const std::size_t first = line.find(' ');
    const std::size_t last = line.rfind(' ');
    if (first == last)
        return std::nullopt;
    const Request request{line.substr(0, first), line.substr(first + 1, last - first - 1)};
    const std::string_view version = line.substr(last + 1);
    if (request.method.empty() || request.target.empty() ||
        !std::ranges::all_of(request.method, IsTokenCharacter) ||
        !std::ranges::all_of(request.target, IsTargetCharacter) ||
        (version != "HTTP/1.0" && version != "HTTP/1.1"))
        return std::nullopt;
    return request;
}

// A line may end in LF alone (RFC 9112, 2.2), so an empty one shows in either of two ways.
bool HasEnd(std::string_view head) {
    return head.find("\n\r\n") != std::string_view::npos ||
           head.find("\n\n") != std::string_view::npos;
}

std::string_view FirstLine(std::string_view head) {
    std::string_view line = head.substr(0, head.find('\n'));
    if (line.ends_with('\r'))
        line.remove_suffix(1);
    return line;
}

// The length is that of the body even where the body is left out.
std::string AnswerHead(std::string_view status, std::string_view fields, const Page& page) {
    std::string head = "HTTP/1.1 ";
    head += status;
    head += "\r\nContent-Type: ";
    head += page.type;
    head += "\r\nContent-Length: ";
    head += std::to_string(page.body.size());
    head += "\r\nConnection: close\r\n";
    head += fields;
    head += "\r\n";
    return head;
}

Page RefusalPage(const Refusal& refusal) {
    std::string body = "<!DOCTYPE html>\n"
                       "<html lang=\"en\">\n"
                       "<head><meta charset=\"utf-8\"><title>";
    body += refusal.status;
    body += "</title></head>\n<body><h1>";
    body += refusal.status;
    body += "</h1><p>";
    body += refusal.says;
    body += "</p><p><a href=\"/\">To the gate of Quillmere</a></p></body>\n</html>\n";
    return {"text/html; charset=utf-8", body};
}

std::string Refuse(const Refusal& refusal, bool withBody = true) {
    const Page page = RefusalPage(refusal);
    return AnswerHead(refusal.status, refusal.fields, page) + (withBody ? page.body : "");
}

std::string AnswerRequest(const Request& request, const Pages& pages) {
    const bool withBody = request.method != "HEAD";
    if (withBody && request.method != "GET")
        return Refuse(kBadMethod);
    const auto found = pages.find(request.target.substr(0, request.target.find('?')));
    if (found == pages.end())
        return Refuse(kNotFound, withBody);
    const Page& page = found->second;
    return AnswerHead("200 OK", "", page) + (withBody ? page.body : "");
}

} // namespace

std::optional<std::string> Answer(std::string_view received, const Pages& pages) {
    const std::string_view head = received.substr(0, MaxHead);
    if (!HasEnd(head))
        return head.size() < MaxHead ? std::nullopt : std::optional(Refuse(kTooLong));
    const std::optional<Request> request = ParseRequestLine(FirstLine(head));
    return request ? AnswerRequest(*request, pages) : Refuse(kMalformed);
}

} // namespace world
