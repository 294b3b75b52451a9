#include "net/Telnet.h"

#include "base/Error.h"

#include <algorithm>

namespace mw {
namespace {

using Send = std::function<void(std::string_view)>;

enum : unsigned char { SB = 250, WILL = 251, WONT = 252, DO = 253, DONT = 254, IAC = 255 };
enum : unsigned char { Binary = 0, Echo = 1, TerminalType = 24, SoundProtocol = 90 };

// The reply carries no option byte after IAC SB, on purpose: servers of this game family know it
// so.
constexpr std::string_view kTerminalTypeReply("\xff\xfa\0DEC-VT100\xff\xf0", 14);

bool IsAgreed(unsigned char option) {
    return option == Binary || option == Echo || option == TerminalType || option == SoundProtocol;
}

void Answer(unsigned char command, unsigned char option, const Send& send) {
    unsigned char answer = 0;
    if (command == DO)
        answer = IsAgreed(option) ? WILL : WONT;
    else if (command == WILL)
        answer = IsAgreed(option) ? DO : DONT;
    else
        return;
    const char bytes[] = {static_cast<char>(IAC), static_cast<char>(answer),
                          static_cast<char>(option)};
    send({bytes, sizeof bytes});
}

// Reads one command from the bytes behind its IAC. Returns how many of them it took.
std::size_t ReadCommand(std::string_view bytes, std::string& out, const Send& send) {
    const auto at = [bytes](std::size_t i) { return static_cast<unsigned char>(bytes[i]); };
    const unsigned char command = at(0);
    if (command == IAC) {
        out += bytes[0];
        return 1;
    }
    if (command < SB)
        return 1;
    // A sub-negotiation's option is followed by a sub-command, which is read and ignored. What
    // follows up to IAC SE is text to this client.
    const std::size_t length = command == SB ? 3 : 2;
    if (bytes.size() < length)
        return bytes.size();
    if (command != SB)
        Answer(command, at(1), send);
    else if (at(1) == TerminalType)
        send(kTerminalTypeReply);
    return length;
}

} // namespace

std::string ScanTelnet(std::string_view chunk, const Send& send) {
    if (chunk.size() > kLongestChunk)
        Raise(Overflow, "ScanTelnet");
    std::string out;
    out.reserve(chunk.size());
    // Meant: the loop ends one short, so the last byte is only ever read by an earlier command.
    for (std::size_t i = 0; i + 1 < chunk.size();) {
        const std::size_t iac = std::min(chunk.find('\xff', i), chunk.size() - 1);
        out.append(chunk.substr(i, iac - i));
        i = iac;
        if (i + 1 < chunk.size())
            i += 1 + ReadCommand(chunk.substr(i + 1), out, send);
    }
    return out;
}

} // namespace mw
