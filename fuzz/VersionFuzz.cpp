// Any text as the version file: a number that is compared, or nothing happens.
#include "fuzz/Fresh.h"
#include "net/http/VersionCheck.h"

#include <algorithm>
#include <limits>

namespace mw {
namespace {

void Check(const std::string& body) {
    const Fresh fresh;
    fakes::OnCall = [&body](const std::string& call) {
        constexpr std::string_view kOpen = "OpenURL ";
        if (call.starts_with(kOpen))
            fakes::Pages[call.substr(kOpen.size())] = body;
    };
    CheckForUpdate();
    const std::optional<float> published = ParsePublishedVersion(body);
    Must(updateAvailable == (published && *published > FoldVersion(kOwnVersion)));
    Must(updateAvailable == (std::ranges::count(fakes::Calls, "ShowUpdatePrompt") == 1));
    Must(fakes::Messages.empty());
    if (!published)
        return Must(PublishedVersion.empty());
    Must(*published >= 0 && *published <= std::numeric_limits<float>::max());
    Must(PublishedVersion == DecimalForm(*published));
    Must(ParsePublishedVersion(PublishedVersion) == published);
}

} // namespace
} // namespace mw

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
    mw::Check(Text(bytes, count));
    return 0;
}
