// The transfer controls: HTTP and HTTPS by GET.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

namespace mw {

namespace inetVersion {

// The whole body that url (http or https) has. Nothing when the server can't be reached, answers
// with an error, takes longer than three seconds or sends more than 64 KiB. Waits; does not nest.
std::optional<std::string> OpenURL(const std::string& url);

} // namespace inetVersion

// Transfers that go on by themselves, any number at once, each under a number that its caller
// chooses. inet_StateChanged is called with that number, from the event loop, whenever a header,
// some of the body or the end has arrived. None of the calls waits or nests.

void inet_StateChanged(std::int32_t transfer); // in net/http/DownLoad.cpp

namespace inet {

struct Request {
    std::string Address; // http or https
    std::string UserName;
    std::string Password;
    std::string Header; // one line of the request, without its end
};

// Starts transfer. The system's proxy settings count, certificates are verified. At most five
// redirections are followed, to http and https only, and from https to https only. 30 seconds
// without a byte end the transfer.
void Execute(std::int32_t transfer, const Request& request);

// The raw header of the response; that of the last one, when the server has redirected. Nothing
// while it is not complete; empty when the transfer ended without one.
std::optional<std::string> GetHeader(std::int32_t transfer);

// Takes the next size bytes (at most 32 KiB) of the body, fewer only at its end, none behind it.
// Nothing while they have not arrived. Unless they are taken, the server is kept waiting.
std::optional<std::string> GetChunk(std::int32_t transfer, std::size_t size);

// Ends transfer; nothing of it is told any more. Nothing happens when there is none of that number.
void Cancel(std::int32_t transfer);

} // namespace inet
} // namespace mw
