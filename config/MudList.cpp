#include "config/MudList.h"

#include "base/Error.h"
#include "config/MakerAddresses.h"

namespace mw {

std::vector<MudEntry> DefaultMudList() {
    MudEntry entry;
    entry.Name = "Quillmere";
    entry.Address = GameHost();
    entry.Port = 1234;
    return {entry};
}

const MudEntry& MudAt(std::int16_t index) {
    if (index < 0 || static_cast<std::size_t>(index) >= MudList.size())
        Raise(SubscriptOutOfRange, "MudList");
    return MudList[static_cast<std::size_t>(index)];
}

void ResetMudList() {
    MudList = DefaultMudList();
    CurrentMud = 0;
}

} // namespace mw
