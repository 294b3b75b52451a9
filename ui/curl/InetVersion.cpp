#include "ui/Inet.h"

#include <curl/curl.h>
#include <memory>

namespace mw {
namespace {

constexpr long kLimitMs = 3000;
constexpr std::size_t kLargest = 64 * 1024;
constexpr long kMostRedirections = 5;

// Answers another number than it was given to end the transfer.
std::size_t KeepBytes(char* bytes, std::size_t, std::size_t count, void* body) {
    auto& kept = *static_cast<std::string*>(body);
    if (kept.size() + count > kLargest)
        return 0;
    kept.append(bytes, count);
    return count;
}

} // namespace

std::optional<std::string> inetVersion::OpenURL(const std::string& url) {
    const std::unique_ptr<CURL, void (*)(CURL*)> transfer(curl_easy_init(), curl_easy_cleanup);
    if (!transfer)
        return std::nullopt;
    std::string body;
    const auto set = [&transfer](CURLoption option, auto value) {
        curl_easy_setopt(transfer.get(), option, value);
    };
    set(CURLOPT_URL, url.c_str());
    set(CURLOPT_PROTOCOLS_STR, "http,https");
    set(CURLOPT_REDIR_PROTOCOLS_STR, "http,https");
    set(CURLOPT_FOLLOWLOCATION, 1L);
    set(CURLOPT_MAXREDIRS, kMostRedirections);
    set(CURLOPT_FAILONERROR, 1L);
    set(CURLOPT_NOSIGNAL, 1L);
    set(CURLOPT_TIMEOUT_MS, kLimitMs);
    set(CURLOPT_QUICK_EXIT, 1L); // leaves the thread of a look-up that lasts longer to itself
    set(CURLOPT_WRITEFUNCTION, KeepBytes);
    set(CURLOPT_WRITEDATA, &body);
    if (curl_easy_perform(transfer.get()) != CURLE_OK)
        return std::nullopt;
    return body;
}

} // namespace mw
