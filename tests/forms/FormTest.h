// Base of all tests of windows: every module in its start state, an application folder and a
// settings store with nothing in them, and no window of another test on the screen.
#pragma once

#include "app/MainFrame.h"
#include "app/StartUp.h"
#include "automation/CommandBox.h"
#include "automation/Macros.h"
#include "base/Globals.h"
#include "base/Notice.h"
#include "config/FreshFolder.h"
#include "config/MudList.h"
#include "config/Palette.h"
#include "forms/MessageBoxes.h"
#include "net/Connection.h"
#include "net/http/VersionCheck.h"
#include "terminal/Incoming.h"
#include "terminal/Output.h"
#include "ui/UserSettings.h"

#include <fstream>
#include <gtest/gtest.h>
#include <map>

#include <QApplication>
#include <QEvent>
#include <QFile>
#include <QPointer>
#include <QStandardPaths>
#include <QWidget>

namespace forms {

// The file that keeps the registry's settings.
inline QString RegistryFile() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           "/quillmere/registry.json";
}

// The windows that the player sees.
inline QList<QWidget*> VisibleWindows() {
    QList<QWidget*> windows;
    for (QWidget* const window : QApplication::topLevelWidgets()) {
        if (window->isVisible())
            windows.append(window);
    }
    return windows;
}

// The one visible window of a kind, or null.
template <typename Form> Form* Window() {
    for (QWidget* const window : VisibleWindows()) {
        if (auto* const form = qobject_cast<Form*>(window))
            return form;
    }
    return nullptr;
}

// What all files below a folder hold; a folder counts as a file with nothing in it.
using Files = std::map<std::string, std::string>;

inline Files FilesIn(const std::filesystem::path& folder) {
    Files files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
        std::string& contents = files[entry.path().lexically_relative(folder).string()];
        if (!entry.is_regular_file())
            continue;
        std::ifstream file(entry.path(), std::ios::binary);
        contents.assign(std::istreambuf_iterator<char>(file), {});
    }
    return files;
}

// Counts how often a window is placed at the top of the window order.
class Raises : public QObject {
public:
    explicit Raises(const char* window) : Name(window) { qApp->installEventFilter(this); }

    int Count = 0;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::ZOrderChange && watched->objectName() == Name)
            ++Count;
        return false;
    }

private:
    QString Name;
};

class FormTest : public testing::Test {
protected:
    FormTest() {
        QFile::remove(RegistryFile());
        mw::DeleteUserSettings("MwClient");
        StartModulesAnew();
    }

    ~FormTest() override {
        RemoveWindows();
        StartModulesAnew();
    }

    // As after a start of the program, before any file is read.
    static void StartModulesAnew() {
        mw::SavingMode = false;
        mw::Splash = {};
        mw::Notice.clear();
        mw::ConnectAtStart.clear();
        mw::FolderIsTaken = false;
        mw::Palette = mw::kDefaultPalette;
        mw::ResetGlobals();
        mw::ResetMacros();
        mw::ResetMudList();
        mw::ResetConnection();
        mw::ResetIncoming();
        mw::ResetOutput();
        mw::ResetCommandBox();
        mw::ResetVersionCheck();
    }

    // Splash, prompt, help and whatever else was left open. A window's own windows go with it.
    static void RemoveWindows() {
        QList<QPointer<QWidget>> windows;
        for (QWidget* const window : QApplication::topLevelWidgets())
            windows.append(window);
        for (const QPointer<QWidget>& window : windows) {
            if (window && window->parentWidget() == nullptr)
                delete window;
        }
    }

    // Runs the program until it ends. Answers its status, or -1 when it would go on for ever.
    static int RunProgram() {
        constexpr int kLimit = 15000; // milliseconds
        QTimer limit;
        QObject::connect(&limit, &QTimer::timeout, &limit, [] { QCoreApplication::exit(-1); });
        limit.start(kLimit);
        return QApplication::exec();
    }

    // Lets everything that is under way happen.
    static void LetEventsRun() {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCoreApplication::processEvents();
    }

    FreshFolder Folder;
    MessageBoxes Closer;
};

} // namespace forms
