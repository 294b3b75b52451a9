#include "Editors.h"

namespace journey {

void OpenEditor(const Client& player, const QString& itemKey, const char* title) {
    player.Press({"alt+c", itemKey});
    player.TakeKeys(title);
}

void LeaveEditor(const Client& player, const QString& keys, const char* title) {
    player.Press(keys);
    player.WaitToClose(title);
    player.TakeKeys(Client::kFrame);
    player.ClickCommandLine();
}

void ReleaseAlt(const Client& player) { player.Press("Alt_L"); }

void AddEntry(const Client& player, const QString& text, const QString& action) {
    player.Press("space");
    player.Type(text);
    player.Press("Tab");
    player.Type(action);
    player.Press({"shift+Tab", "Return"});
}

} // namespace journey
