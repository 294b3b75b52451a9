#include "base/Error.h"
#include "config/MRegistry.h"
#include "support/ChildProcess.h"
#include "support/ErrorOf.h"
#include "support/FullDisk.h"
#include "ui/UserSettings.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <random>
#include <sys/stat.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
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

constexpr std::int32_t kBad = kErrorBase + 3009;
constexpr std::int32_t kDenied = kErrorBase + 2005;
constexpr std::size_t kLargest = 4 * 1024 * 1024;

const char* const kGood =
    R"({"SOFTWARE\\MwClient\\Windows": {"gTop": {"type": 1, "value": "10"}}})";

std::string Entry(const std::string& entry) {
    return R"({"SOFTWARE\\MwClient\\Windows": {"gTop": )" + entry + "}}";
}

// What the store holds, and what comes of it: a value or an error.
struct BrokenStore {
    const char* Name;
    std::string Text;
    std::string Value; // of gTop
    std::int32_t Error = 0;
};

void PrintTo(const BrokenStore& row, std::ostream* out) { *out << row.Name; }

class BrokenStores : public RegistryStore, public testing::WithParamInterface<BrokenStore> {};

TEST_P(BrokenStores, GiveTheirValueOrAnErrorAndAreNotOverwritten) {
    const QByteArray text = QByteArray::fromStdString(GetParam().Text);
    Keep(text);
    EXPECT_EQ(ErrorOf([] { EXPECT_EQ(Read("gTop"), GetParam().Value); }), GetParam().Error);
    EXPECT_EQ(Kept(), text) << "reading has written";
    const bool isDamaged = GetParam().Error == kBad;
    EXPECT_EQ(ErrorOf([] { Write("gLeft", "1"); }), isDamaged ? kBad : 0);
    EXPECT_EQ(Kept() == text, isDamaged);
}

std::string Utf16(const std::string& text) {
    std::string wide = "\xFF\xFE";
    for (const char c : text)
        wide += {c, '\0'};
    return wide;
}

const BrokenStore kBrokenStores[] = {
    {"Nothing", "", "", kBad},
    {"ALineEnd", "\r\n", "", kBad},
    {"LineEnds", std::string(1000, '\n'), "", kBad},
    {"Nuls", std::string(1000, '\0'), "", kBad},
    {"AByteOrderMark", "\xEF\xBB\xBF" + std::string(kGood), "10"},
    {"WideCharacters", Utf16(kGood), "", kBad},
    {"MixedLineEnds", "\r\n\n\r" + std::string(kGood) + "\r\r\n", "10"},
    {"TextBehindIt", std::string(kGood) + "x", "", kBad},
    {"ItselfTwice", std::string(kGood) + kGood, "", kBad},
    {"ANulBehindIt", std::string(kGood) + '\0', "", kBad},
    {"AList", "[1]", "", kBad},
    {"ANumber", "1", "", kBad},
    {"AText", "\"x\"", "", kBad},
    {"NoStore", "null", "", kBad},
    {"AnEmptyStore", "{}", "none"},
    {"SingleQuotes", "{'a': 1}", "", kBad},
    {"ACommaTooMany", R"({"a": 1,})", "", kBad},
    {"AComment", "{} // mine", "", kBad},
    {"ANameWithoutQuotes", "{a: 1}", "", kBad},
    {"ATextOfTenMegabytes",
     Entry(R"({"type": 1, "value": ")" + std::string(10'000'000, 'x') + "\"}"), "", kBad},
    {"ATextOfAMegabyte", Entry(R"({"type": 1, "value": ")" + std::string(1'000'000, 'x') + "\"}"),
     std::string(1'000'000, 'x')},
    {"ATextThatIsNoUtf8", Entry("{\"type\": 1, \"value\": \"\xFF\xC0\"}"), "", kBad},
    {"AnEscapeThatIsNone", Entry(R"({"type": 1, "value": "\q"})"), "q"},
    {"ATextWithANul", Entry(R"({"type": 1, "value": "a\u0000b"})"), std::string("a\0b", 3)},
    {"ATextWithoutAnEnd", Entry(R"({"type": 1, "value": "a)"), "", kBad},
    {"ATypeOf400Digits", Entry("{\"type\": " + std::string(400, '9') + "}"), "", kBad},
    {"ANegativeType", Entry(R"({"type": -1})"), "", kSystemError - 1},
    {"TheLeastType", Entry(R"({"type": -2147483648})"), "", 264144},
    {"ATypeThatIsNoNumber", Entry(R"({"type": "1", "value": "10"})"), "", kSystemError},
    {"AFractionOfAType", Entry(R"({"type": 1.5, "value": "10"})"), "", kSystemError},
    {"NoType", Entry(R"({"value": "10"})"), "", kSystemError},
    {"AHugeNumber", Entry(R"({"type": 4, "value": 1e300})"), "", kSystemError + 4},
    {"NoValue", Entry(R"({"type": 1})"), ""},
    {"AValueThatIsNoText", Entry(R"({"type": 1, "value": [10]})"), ""},
    {"AnEntryThatIsNone", Entry("10"), "none"},
    {"ASectionThatIsNone", R"({"SOFTWARE\\MwClient\\Windows": 10})", "none"},
    {"DoubledSections", R"({"SOFTWARE\\MwClient\\Windows": {}, )" + std::string(kGood).substr(1),
     "10"},
    {"UnknownSections", R"({"x": {"y": [1, 2, {}]}, )" + std::string(kGood).substr(1), "10"},
    {"ManyFolds", std::string(100'000, '['), "", kBad},
    {"ManyFoldsBelowASection", R"({"a": )" + std::string(2000, '[') + std::string(2000, ']') + "}",
     "", kBad},
    {"TheLargest", kGood + std::string(kLargest - std::string(kGood).size(), ' '), "10"},
    {"AByteMore", kGood + std::string(kLargest + 1 - std::string(kGood).size(), ' '), "", kBad},
    {"AnotherFileOfOurs", "[Mud]\r\nMud=A\r\n", "", kBad},
};

INSTANTIATE_TEST_SUITE_P(Store, BrokenStores, testing::ValuesIn(kBrokenStores),
                         [](const auto& row) { return row.param.Name; });

TEST_F(RegistryStore, IsDamagedWhereverItIsCut) {
    const QByteArray whole = kGood;
    for (qsizetype length = 0; length < whole.size(); ++length) {
        Keep(whole.left(length));
        EXPECT_EQ(ErrorOf([] { Read("gTop"); }), kBad) << length;
        EXPECT_EQ(ErrorOf([] { Write("gTop", "1"); }), kBad) << length;
        EXPECT_EQ(Kept(), whole.left(length));
    }
}

TEST_F(RegistryStore, OfRandomBytesIsDamaged) {
    for (unsigned seed = 1; seed <= 100; ++seed) {
        std::minstd_rand random(seed);
        QByteArray bytes(static_cast<qsizetype>(random() % 2000), '\0');
        for (char& byte : bytes)
            byte = static_cast<char>(random());
        Keep(bytes);
        EXPECT_EQ(ErrorOf([] { Read("gTop"); }), kBad) << seed;
        EXPECT_EQ(ErrorOf([] { Write("gTop", "1"); }), kBad) << seed;
        EXPECT_EQ(Kept(), bytes) << seed;
    }
}

TEST_F(RegistryStore, DoesNotGrowBeyondWhatIsRead) {
    const std::string half(kLargest / 2, 'x');
    Write("gTop", half);
    const QByteArray before = Kept();
    EXPECT_EQ(ErrorOf([&half] { Write("gLeft", half); }), kDenied);
    EXPECT_EQ(Kept(), before);
    EXPECT_EQ(Read("gTop"), half);
}

// What can lie in its place.
struct StorePlace {
    const char* Name;
    void (*Make)(const std::filesystem::path& path);
};

void PrintTo(const StorePlace& row, std::ostream* out) { *out << row.Name; }

class StorePlaces : public RegistryStore, public testing::WithParamInterface<StorePlace> {
protected:
    StorePlaces() { ::alarm(60); } // for a store that waits for ever
    ~StorePlaces() override { ::alarm(0); }
};

TEST_P(StorePlaces, AreDeniedAtOnceAndStay) {
    QDir().mkpath(Folder.filePath("quillmere"));
    const std::string path = Path().toStdString();
    GetParam().Make(path);
    struct stat before {};
    ASSERT_EQ(::lstat(path.c_str(), &before), 0);
    const auto denied = [](auto call) {
        return WithoutRights([call] { return ErrorOf(call) == kDenied ? 1 : 0; }) == 1;
    };
    EXPECT_TRUE(denied([] { Read("gTop"); }));
    EXPECT_TRUE(denied([] { Write("gTop", "1"); }));
    struct stat behind {};
    ASSERT_EQ(::lstat(path.c_str(), &behind), 0);
    EXPECT_EQ(behind.st_ino, before.st_ino);
    EXPECT_EQ(behind.st_size, before.st_size);
}

using StorePath = std::filesystem::path;

const StorePlace kStorePlaces[] = {
    {"AFolder", [](const StorePath& path) { std::filesystem::create_directory(path); }},
    {"APipe", [](const StorePath& path) { EXPECT_EQ(::mkfifo(path.c_str(), 0600), 0); }},
    {"ALinkToItself",
     [](const StorePath& path) { std::filesystem::create_symlink(path.filename(), path); }},
    {"ALinkToNowhere",
     [](const StorePath& path) { std::filesystem::create_symlink("nowhere", path); }},
    {"ALinkToAnEndlessDevice",
     [](const StorePath& path) { std::filesystem::create_symlink("/dev/zero", path); }},
    {"AClosedFile",
     [](const StorePath& path) {
         std::ofstream(path) << kGood;
         std::filesystem::permissions(path, std::filesystem::perms::none);
     }},
    {"AFileThatMayOnlyBeWritten",
     [](const StorePath& path) {
         std::ofstream(path) << kGood;
         std::filesystem::permissions(path, std::filesystem::perms::owner_write);
     }},
};

INSTANTIATE_TEST_SUITE_P(Store, StorePlaces, testing::ValuesIn(kStorePlaces),
                         [](const auto& row) { return row.param.Name; });

TEST_F(RegistryStore, OfAHundredMegabytesIsDamagedAndNotReadWhole) {
    Keep(kGood);
    std::filesystem::resize_file(Path().toStdString(), 100'000'000);
    EXPECT_EQ(ErrorOf([] { Read("gTop"); }), kBad);
    EXPECT_EQ(ErrorOf([] { Write("gTop", "1"); }), kBad);
    EXPECT_EQ(QFileInfo(Path()).size(), 100'000'000);
}

// The power goes at every call by which it is changed.
class StoreWithoutPower : public RegistryStore, public testing::WithParamInterface<Moment> {};

TEST_P(StoreWithoutPower, IsTheOldOrTheNewOneAndTakesTheNextValue) {
    int call = 1;
    Write("gTop", "old");
    while (KilledAt(call, GetParam(), [] { Write("gTop", "new"); })) {
        SCOPED_TRACE(call);
        const std::string kept = Read("gTop");
        EXPECT_TRUE(kept == "old" || kept == "new") << kept;
        Write("gTop", "old");
        EXPECT_EQ(Read("gTop"), "old");
        ++call;
    }
    EXPECT_GE(call, 6);
    EXPECT_EQ(Read("gTop"), "new");
}

INSTANTIATE_TEST_SUITE_P(Store, StoreWithoutPower, testing::Values(Moment::Before, Moment::Behind),
                         [](const auto& row) {
                             return row.param == Moment::Before ? "Before" : "Behind";
                         });

TEST_F(RegistryStore, IsOnTheDiskBeforeItTakesItsName) {
    Write("gTop", "old");
    const std::vector<std::string> changes = ChangesBy([] { Write("gTop", "new"); });
    const auto written = std::find(changes.begin(), changes.end(), "write");
    const auto synced = std::find(written, changes.end(), "sync");
    EXPECT_NE(std::find(synced, changes.end(), "rename"), changes.end());
    EXPECT_EQ(std::count(synced, changes.end(), "write"), 0);
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
    Error error;
    {
        const FullDisk disk(static_cast<rlim_t>(before.size()) + 10);
        error = RaisedBy([] { Write("gLeft", std::string(1000, 'x')); });
    }
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
