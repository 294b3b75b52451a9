// The editors and the setup dialog of the menu Configuration, by the keyboard.
#pragma once

#include "Client.h"

namespace journey {

inline constexpr const char* kMacros = "^Macros$";
inline constexpr const char* kAliases = "^Aliases$";
inline constexpr const char* kTriggers = "^Triggers$";
inline constexpr const char* kSetup = "^Fonts Setup$";

// By Configuration and the access key of its item.
void OpenEditor(const Client& player, const QString& itemKey, const char* title);

// By one of its keys. The command line has the keys again afterwards.
void LeaveEditor(const Client& player, const QString& keys, const char* title);

// The menu has seen the Alt key come up, not the command line: for that one it is still held, on
// purpose, until it goes down and up again.
void ReleaseAlt(const Client& player);

// Of aliases or triggers. The button "New" has the keys when such an editor opens and after each
// entry.
void AddEntry(const Client& player, const QString& text, const QString& action);

} // namespace journey
