#include "base/Error.h"
#include "config/MRegistry.h"
#include "support/ErrorOf.h"
#include "ui/UserSettings.h"

#include <csignal>
#include <gtest/gtest.h>
#include <sys/resource.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace mw {
namespace {

// The store in a configuration folder of its own.
class RegistryStore : public testing::Test {
protected:
    RegistryStore() : Before(qgetenv("XDG_CONFIG_HOME")) {
        qputenv("XDG_CONFIG_HOME", Folder.path().toLocal8Bit());
    }

    ~RegistryStore() override { qputenv("XDG_CONFIG_HOME", Before); }

    QString Path() const { return Folder.filePath("quillmere/registry.json"); }

    QByteArray Kept() const {
        QFile file(Path());
        return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray();
    }

    void Keep(const QByteArray& text) const {
        QDir().mkpath(Folder.filePath("quillmere"));
        QFile file(Path());
        ASSERT_TRUE(file.open(QFile::WriteOnly));
        file.write(text);
    }

    static std::string Read(const std::string& key) {
        return ReadSetting("MwClient", "Windows", key, "none");
    }

    static void Write(const std::string& key, const std::string& value) {
        WriteSetting("MwClient", "Windows", key, value);
    }

    QTemporaryDir Folder;
    QByteArray Before;
};

TEST_F(RegistryStore, GivesEveryValueBackByteForByte) {
    std::string all;
    for (int code = 1; code < 256; ++code)
        all += static_cast<char>(code);
    for (const std::string& value : {std::string("10"), std::string(), std::string(" x "), all}) {
        Write("gTop", value);
        EXPECT_EQ(Read("gTop"), value);
    }
}

TEST_F(RegistryStore, GivesTheFallbackForWhatIsNotThere) {
    EXPECT_EQ(Read("gTop"), "none");
    EXPECT_FALSE(QFile::exists(Path())) << "reading makes no file";
    Write("gTop", "1");
    EXPECT_EQ(Read("gLeft"), "none");
    EXPECT_EQ(ReadSetting("MwClient", "Menu", "Echo", "False"), "False");
}

TEST_F(RegistryStore, KeepsOtherValuesWhenOneIsWritten) {
    Write("gTop", "1");
    Write("gLeft", "2");
    WriteSetting("MwClient", "Menu", "Echo", "True");
    Write("gTop", "3");
    EXPECT_EQ(Read("gTop") + Read("gLeft"), "32");
    EXPECT_EQ(ReadSetting("MwClient", "Menu", "Echo", ""), "True");
}

TEST_F(RegistryStore, RefusesANumberWithItsType) {
    Keep(R"({"SOFTWARE\\MwClient\\Windows": {"gTop": {"type": 4, "value": 10}}})");
    EXPECT_EQ(ErrorOf([] { Read("gTop"); }), kErrorBase + 2004);
}

TEST_F(RegistryStore, LeavesADamagedFileAlone) {
    for (const char* text : {"", "{", "[]", "\xff\xfe", "{\"a\": }"}) {
        Keep(text);
        EXPECT_EQ(RaisedBy([] { Read("gTop"); }),
                  (Error{kErrorBase + 3009, "MRegistry", "Could not open registry section"}))
            << text;
        EXPECT_EQ(RaisedBy([] { Write("gTop", "1"); }),
                  (Error{kErrorBase + 3009, "MRegistry", "Could not open/create registry section"}))
            << text;
        EXPECT_EQ(Kept(), text);
    }
}

TEST_F(RegistryStore, TakesEntriesOfAnotherShapeForAbsent) {
    Keep(R"({"SOFTWARE\\MwClient\\Windows": {"gTop": "plain", "gLeft": [1]}, "x": 1})");
    EXPECT_EQ(Read("gTop"), "none");
    EXPECT_EQ(Read("gLeft"), "none");
}

TEST_F(RegistryStore, SaysSoWhenItCannotBeWritten) {
    QFile(Folder.filePath("quillmere")).open(QFile::WriteOnly); // a file in the folder's place
    EXPECT_EQ(RaisedBy([] { Write("gTop", "1"); }),
              (Error{kErrorBase + 2005, "MRegistry", "Could not open/create registry section"}));
}

TEST_F(RegistryStore, StaysWholeOnADiskThatIsFull) {
    Write("gTop", "1");
    const QByteArray before = Kept();
    rlimit usual{};
    ::getrlimit(RLIMIT_FSIZE, &usual);
    void (*const handler)(int) = std::signal(SIGXFSZ, SIG_IGN);
    const rlimit full = {static_cast<rlim_t>(before.size()) + 10, usual.rlim_max};
    ::setrlimit(RLIMIT_FSIZE, &full);
    const Error error = RaisedBy([] { Write("gLeft", std::string(1000, 'x')); });
    ::setrlimit(RLIMIT_FSIZE, &usual);
    std::signal(SIGXFSZ, handler);
    EXPECT_NE(error.Number, 0);
    EXPECT_EQ(Kept(), before);
}

TEST_F(RegistryStore, IsNotTheStoreOfTheUsersSettings) {
    SaveUserSetting("StoreTest", "Windows", "gTop", "mine");
    EXPECT_EQ(GetUserSetting("StoreTest", "Windows", "gTop", ""), "mine");
    EXPECT_EQ(GetUserSetting("StoreTest", "Windows", "other", "fallback"), "fallback");
    EXPECT_EQ(ReadSetting("StoreTest", "Windows", "gTop", "none"), "none");
    DeleteUserSettings("StoreTest");
    EXPECT_EQ(GetUserSetting("StoreTest", "Windows", "gTop", "gone"), "gone");
}

} // namespace
} // namespace mw
