#include "config/MudChooser.h"

#include "base/Error.h"
#include "base/Numbers.h"
#include "config/MudList.h"
#include "ui/FrameControls.h"
#include "ui/MessageBox.h"

#include <algorithm>
#include <limits>

namespace mw {
namespace {

bool IsMissing(const std::string& text) { return text.empty() || text == " "; }

// A line break would make the list's file unreadable.
bool HasControl(const std::string& text) {
    return std::any_of(text.begin(), text.end(),
                       [](char c) { return static_cast<unsigned char>(c) < 32; });
}

// Why the texts of a new game are refused, or nullptr.
const char* Refusal(const std::string& name, const std::string& address, const std::string& port) {
    if (IsMissing(name))
        return "Mud name invalid";
    if (IsMissing(address))
        return "Mud Address Invalid";
    if (IsMissing(port))
        return "Mud Port Invalid";
    if (!IsNumeric(port))
        return "Port Not Valid";
    return nullptr;
}

template <typename Wanted> std::int16_t IndexOf(const Wanted& wanted) {
    const auto found = std::find_if(MudList.begin(), MudList.end(), wanted);
    return static_cast<std::int16_t>(found == MudList.end() ? -1 : found - MudList.begin());
}

} // namespace

void cboMud_Click(std::int16_t index) {
    const MudEntry& mud = MudAt(index);
    cboMud::SetListIndex(index);
    lblAddress::SetCaption(mud.Address);
    lblPort::SetCaption(std::to_string(mud.Port));
    CurrentMud = index;
}

bool AddMud(const std::string& name, const std::string& address, const std::string& port) {
    if (MudList.size() > std::numeric_limits<std::int16_t>::max())
        Raise(Overflow, "AddMud");
    if (const char* const refusal = Refusal(name, address, port)) {
        ShowMessage(refusal);
        return false;
    }
    MudEntry mud;
    mud.Name = name;
    mud.Address = address;
    mud.Port = ToInt16(port);
    MudList.push_back(mud);
    cboMud::AddItem(name);
    SaveMudList();
    return true;
}

void DeleteMud() {
    const std::int16_t index = cboMud::ListIndex();
    if (index == 0) {
        ShowMessage("You cannot delete this mud");
        return;
    }
    MudAt(index); // raises when there is none
    MudList.erase(MudList.begin() + index);
    cboMud::RemoveItem(index);
    SaveMudList();
    cboMud_Click(0);
}

std::int16_t FindOrAddMud(std::string_view text) {
    const std::int16_t named = IndexOf([text](const MudEntry& mud) { return mud.Name == text; });
    const std::size_t colon = text.rfind(':');
    if (named >= 0 || colon == std::string_view::npos)
        return named;
    const std::string host(text.substr(0, colon));
    const std::string port(text.substr(colon + 1));
    if (IsMissing(host) || HasControl(host) || !IsNumeric(port))
        return -1;
    const std::int16_t same = IndexOf([&host, number = ToInt16(port)](const MudEntry& mud) {
        return mud.Address == host && mud.Port == number;
    });
    if (same >= 0)
        return same;
    AddMud(host, host, port);
    MakeGameFolders(host);
    return static_cast<std::int16_t>(MudList.size() - 1);
}

} // namespace mw
