// An answer of the web server, taken apart the strict way a careful client would.
#pragma once

#include <map>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>

namespace world {

struct Reply {
    std::string status; // of the first line: the number and its words
    std::map<std::string, std::string> fields;
    std::string body;

    bool operator==(const Reply&) const = default;
};

inline void PrintTo(const Reply& reply, std::ostream* out) {
    *out << reply.status;
    for (const auto& [name, value] : reply.fields)
        *out << " | " << name << ": " << value;
    *out << " | " << reply.body.size() << " bytes: " << reply.body.substr(0, 200);
}

// Nothing when a line of the head is not what it has to be or is there twice.
inline std::optional<Reply> ParseReply(std::string_view answer) {
    constexpr std::string_view version = "HTTP/1.1 ";
    Reply reply;
    for (std::size_t end = 0; (end = answer.find("\r\n")) != std::string_view::npos;) {
        const std::string line(answer.substr(0, end));
        answer.remove_prefix(end + 2);
        if (line.empty()) {
            reply.body = answer;
            return reply.status.empty() ? std::nullopt : std::optional(reply);
        }
        const std::size_t colon = line.find(": ");
        if (reply.status.empty() && line.starts_with(version))
            reply.status = line.substr(version.size());
        else if (reply.status.empty() || colon == std::string::npos ||
                 !reply.fields.emplace(line.substr(0, colon), line.substr(colon + 2)).second)
            return std::nullopt;
    }
    return std::nullopt;
}

// What every answer has: a type, a length that is a number, and the word that it is the last one.
inline bool IsComplete(const Reply& reply) {
    return reply.fields.contains("Content-Type") && reply.fields.contains("Content-Length") &&
           reply.fields.contains("Connection") && reply.fields.at("Connection") == "close";
}

// Complete, and the body is as long as announced.
inline bool IsWhole(const Reply& reply) {
    return IsComplete(reply) &&
           reply.fields.at("Content-Length") == std::to_string(reply.body.size());
}

} // namespace world
