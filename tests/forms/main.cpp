// Widgets need an application object; the tests show them on no screen, keep the settings in a
// folder of their own and ask no web site but their own.
#include <gtest/gtest.h>

#include <QApplication>
#include <QSettings>
#include <QTemporaryDir>

int main(int argc, char** argv) {
    ::testing::InitGoogleTest(&argc, argv);
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const QTemporaryDir folder;
    qputenv("XDG_CONFIG_HOME", folder.path().toLocal8Bit());
    qputenv("XDG_RUNTIME_DIR", folder.path().toLocal8Bit());
    qputenv("QUILLMERE_WEB_ROOT", "http://127.0.0.1:1"); // nobody listens there
    qputenv("no_proxy", "127.0.0.1");
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, folder.path());
    QApplication app(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    return RUN_ALL_TESTS();
}
