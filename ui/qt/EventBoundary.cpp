#include "ui/qt/EventBoundary.h"

#include "base/Error.h"
#include "ui/MessageBox.h"

#include <set>
#include <string>

#include <QCoreApplication>

namespace mw {
namespace {

std::set<std::string> OpenBoxes; // handlers whose error is being shown

void ShowError(const std::string& handler, const Error& error) {
    if (!OpenBoxes.insert(handler).second)
        return;
    ShowMessage("Run-time error " + std::to_string(error.Number) + ": " + error.Description);
    OpenBoxes.erase(handler);
}

} // namespace

void RunHandler(const char* name, const std::function<void()>& handler) {
    try {
        handler();
    } catch (const Error& error) {
        ShowError(name, error);
    } catch (const EndProgram&) {
        QCoreApplication::exit(1);
    }
}

} // namespace mw
