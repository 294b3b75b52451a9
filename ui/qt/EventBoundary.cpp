#include "ui/qt/EventBoundary.h"

#include "base/Error.h"
#include "ui/MessageBox.h"

#include <set>
#include <string>

#include <QCoreApplication>

namespace mw {
namespace {

std::set<std::string> OpenBoxes; // handlers whose error is being shown

void Show(const Error& error) {
    ShowMessage("Run-time error " + std::to_string(error.Number) + ": " + error.Description);
}

void ShowOnce(const std::string& handler, const Error& error) {
    if (!OpenBoxes.insert(handler).second)
        return;
    Show(error);
    OpenBoxes.erase(handler);
}

} // namespace

void RunHandler(const char* name, const std::function<void()>& handler) {
    try {
        handler();
    } catch (const Error& error) {
        ShowOnce(name, error);
    } catch (const EndProgram&) {
        QCoreApplication::exit(1);
    }
}

bool RunAtStart(const std::function<void()>& work) {
    try {
        work();
        return true;
    } catch (const Error& error) {
        Show(error);
    } catch (const EndProgram&) {
    }
    return false;
}

} // namespace mw
