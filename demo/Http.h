// The web protocol of one connection (RFC 9112, HTTP/1.0 and 1.1), without any input or output of
// its own.
//
// WebServer hands in what it has received so far and sends what comes back. One connection carries
// one request: every answer says that the connection closes after it. Only the request line counts;
// header fields and a body are passed over.
#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace world {

inline constexpr std::size_t MaxHead = 8192; // far above what a browser sends

struct Page {
    std::string type; // of its content, as the answer names it
    std::string body;
};

// By path, which begins with a slash and has no query.
using Pages = std::map<std::string, Page, std::less<>>;

// The whole answer to the request that begins what was received. Nothing while the head of the
// request has no end yet and may still get one within MaxHead. Bytes after the head change nothing.
std::optional<std::string> Answer(std::string_view received, const Pages& pages);

} // namespace world
