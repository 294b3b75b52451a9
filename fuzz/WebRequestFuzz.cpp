// Any bytes that a web client sends to the demo world, cut anywhere.
#include "Http.h"
#include "demo/Reply.h"
#include "fuzz/Input.h"

namespace world {
namespace {

const Pages& Some() {
    static const Pages pages = {{"/", {"text/html", "home"}},
                                {"/sounds/rain.wav", {"audio/wav", std::string(100, '\0')}}};
    return pages;
}

// Every answer is whole. That to HEAD has no body, when it could be read.
void MustBeWhole(std::string_view request, const std::string& answer) {
    const std::optional<Reply> reply = ParseReply(answer);
    Must(reply.has_value() && IsComplete(*reply));
    const bool isRead = reply->status.starts_with("200") || reply->status.starts_with("404");
    Must(isRead && request.starts_with("HEAD ") ? reply->body.empty() : IsWhole(*reply));
    Must(reply->status != "200 OK" || request.starts_with("GET /") ||
         request.starts_with("HEAD /"));
}

void Ask(const std::string& request) {
    const std::optional<std::string> answer = Answer(request, Some());
    if (answer)
        MustBeWhole(request, *answer);
    else
        Must(request.size() < MaxHead);
    // As soon as there is an answer, it is that one.
    for (std::size_t at = 0; at < request.size(); ++at) {
        if (request[at] != '\n')
            continue;
        const std::optional<std::string> early = Answer(request.substr(0, at + 1), Some());
        Must(!early || early == answer);
        if (early)
            break;
    }
}

} // namespace
} // namespace world

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
    world::Ask(Text(bytes, count));
    return 0;
}
