// Waiting for what a journey needs, and the programs it starts.
//
// A journey pauses for a fixed time only where a moment is what it is about. Else it waits until a
// condition holds, and ends with one line that says what it waited for when that does not hold in
// time.
#pragma once

#include <chrono>
#include <functional>
#include <string>
#include <string_view>

#include <QProcess>
#include <QString>
#include <QStringList>

namespace journey {

// Far longer than anything takes on a busy machine, and short enough for a failure to be told soon.
inline constexpr std::chrono::seconds kLimit{15};

// Lets events run until the condition holds. False when it does not within the limit.
bool Becomes(const std::function<bool()>& condition, std::chrono::milliseconds limit = kLimit);

// The same, but throws std::runtime_error "Waited 15 s for <what>" when it does not.
void WaitFor(const std::string& what, const std::function<bool()>& condition);

// Starts a program that ends with this one at the latest. Throws when it can't be started.
void StartChild(QProcess& process, const QString& program, const QStringList& arguments);

// Asks the program to stop, and ends it when it does not. Does nothing when it does not run.
void StopChild(QProcess& process);

// Bytes as they can be printed: printable ASCII as it is, all others as %FF.
std::string Escaped(std::string_view bytes);

} // namespace journey
