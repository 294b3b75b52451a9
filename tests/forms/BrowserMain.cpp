// The browser window's tests have a home folder of their own, so that what pages leave behind on
// the disk can be told from everything else. It is set before the web engine can see another one.
#include <gtest/gtest.h>

#include <QApplication>
#include <QDir>
#include <QSettings>
#include <QTemporaryDir>

int main(int argc, char** argv) {
    ::testing::InitGoogleTest(&argc, argv);
    ::testing::FLAGS_gtest_death_test_style = "threadsafe"; // such a test is a program of its own
    const QTemporaryDir home;
    const QDir folder(home.path());
    qputenv("HOME", home.path().toLocal8Bit());
    for (const char* name : {"XDG_CONFIG_HOME", "XDG_CACHE_HOME", "XDG_DATA_HOME", "XDG_STATE_HOME",
                             "XDG_DOWNLOAD_DIR", "XDG_RUNTIME_DIR"}) {
        folder.mkpath(name);
        qputenv(name, folder.filePath(name).toLocal8Bit());
    }
    QFile::setPermissions(folder.filePath("XDG_RUNTIME_DIR"),
                          QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    qputenv("QUILLMERE_WEB_ROOT", "http://127.0.0.1:1"); // nobody listens there
    qputenv("no_proxy", "127.0.0.1");
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope,
                       folder.filePath("XDG_CONFIG_HOME"));
    QApplication app(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    return RUN_ALL_TESTS();
}
