// Telnet commands in received bytes (RFC 854, RFC 855).
//
// A pure scan: Connection hands it each arrival and appends what comes back to IncomingBuffer. No
// negotiation state is kept, so the same request gets the same answer each time. Binary, echo,
// terminal type and the sound protocol (options 0, 1, 24, 90) are agreed to, all others refused.
#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace mw {

// The longest arrival that can be scanned: positions are 16-bit numbers.
inline constexpr std::size_t kLongestChunk = 32767;

// The bytes of chunk without telnet commands; each answer goes to send as soon as it is decided.
// The last byte of a chunk is never taken for text or for the start of a command, and so is lost;
// a command that starts earlier may still read it. A command that the end of the chunk cuts off is
// dropped without an answer. Raises Overflow for a chunk of more than 32,767 bytes, before
// anything is sent.
std::string ScanTelnet(std::string_view chunk, const std::function<void(std::string_view)>& send);

} // namespace mw
