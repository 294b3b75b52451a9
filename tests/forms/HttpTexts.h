// What web servers write: whole answers, and parts of them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace forms {

// An answer before the one that counts.
inline const std::string kEarlyHints = "HTTP/1.1 103 Early Hints\r\n\r\n";

inline std::string HeadFor(std::size_t length) {
    return "HTTP/1.1 200 OK\r\nContent-Length: " + std::to_string(length) + "\r\n\r\n";
}

inline std::string Whole(const std::string& body) { return HeadFor(body.size()) + body; }

inline std::string Redirection(const std::string& target, const std::string& status = "302 Found") {
    return "HTTP/1.1 " + status + "\r\nLocation: " + target + "\r\nContent-Length: 0\r\n\r\n";
}

inline std::string ChunkedHead(const std::string& fields = "") {
    return "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n" + fields + "\r\n";
}

// A piece of a chunked body; an empty one ends it.
inline std::string ChunkOf(const std::string& bytes) {
    constexpr char kDigits[] = "0123456789abcdef";
    std::string length;
    for (std::size_t rest = bytes.size(); rest > 0 || length.empty(); rest /= 16)
        length.insert(length.begin(), kDigits[rest % 16]);
    return length + "\r\n" + bytes + "\r\n";
}

// A body of that length in which every stretch is another one.
inline std::string BodyOf(std::size_t length) {
    std::string body(length, '\0');
    std::uint32_t state = 1;
    for (char& byte : body) {
        state = state * 1664525u + 1013904223u;
        byte = static_cast<char>(state >> 24);
    }
    return body;
}

inline std::string Repeated(const std::string& text, int times) {
    std::string all;
    for (int i = 0; i < times; ++i)
        all += text;
    return all;
}

} // namespace forms
