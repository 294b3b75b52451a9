#include "config/MRegistry.h"

#include "base/Error.h"
#include "base/Notice.h"
#include "fakes/Fakes.h"
#include "support/ErrorOf.h"

namespace mw {
namespace {

using Registry = RuleTest;

std::string Read(const std::string& key) { return ReadSetting("MwClient", "Windows", key, "none"); }

TEST_F(Registry, KeepsAValueWhole) {
    for (const std::string value : {"10", "", " blanks ", "\xe9\xff", "a=b"}) {
        WriteSetting("MwClient", "Windows", "gTop", value);
        EXPECT_EQ(Read("gTop"), value);
    }
}

TEST_F(Registry, KeepsTheValueBelowSoftwareByApplicationAndSection) {
    WriteSetting("MwClient", "Windows", "gTop", "10");
    EXPECT_EQ(fakes::Registry["SOFTWARE\\MwClient\\Windows"]["gTop"].Data, std::string("10\0", 3));
}

TEST_F(Registry, HandsTheValueOverWithoutItsTerminatingZeroOnPurpose) {
    // The platform adds the zero; reading drops the last character again.
    WriteSetting("MwClient", "Windows", "gTop", "");
    EXPECT_EQ(fakes::Registry["SOFTWARE\\MwClient\\Windows"]["gTop"].Data, std::string(1, '\0'));
    fakes::Registry["SOFTWARE\\MwClient\\Windows"]["gTop"].Data = "abc";
    EXPECT_EQ(Read("gTop"), "ab");
}

TEST_F(Registry, AValueOfNoBytesIsAnEmptyText) {
    fakes::Registry["SOFTWARE\\MwClient\\Windows"]["gTop"] = {1, ""};
    EXPECT_EQ(Read("gTop"), "");
}

TEST_F(Registry, TrimsNamesOfBlanksAndOfNothingElse) {
    WriteSetting("  MwClient ", " Windows  ", " gTop ", " 1 ");
    EXPECT_EQ(Read("gTop"), " 1 ");
    WriteSetting("MwClient", "Windows", "\tgTop", "2");
    EXPECT_EQ(Read("gTop"), " 1 ");
    EXPECT_EQ(Read("\tgTop"), "2");
}

TEST_F(Registry, AMissingSectionOrValueGivesTheFallback) {
    EXPECT_EQ(Read("gTop"), "none");
    WriteSetting("MwClient", "Windows", "gTop", "10");
    EXPECT_EQ(Read("gLeft"), "none");
}

TEST_F(Registry, AValueThatCannotBeQueriedGivesTheFallback) {
    WriteSetting("MwClient", "Windows", "gTop", "10");
    fakes::QueryCode = 5;
    EXPECT_EQ(Read("gTop"), "none");
}

struct EmptyName {
    const char* Name;
    const char* Application;
    const char* Section;
    const char* Key;
    std::int32_t Number;
    const char* Description;
};

void PrintTo(const EmptyName& row, std::ostream* out) { *out << row.Name; }

class EmptyNames : public RuleTest, public testing::WithParamInterface<EmptyName> {};

TEST_P(EmptyNames, AreRefusedByWritingAndReadingAlike) {
    const EmptyName& row = GetParam();
    const Error expected{row.Number, "MRegistry", row.Description};
    EXPECT_EQ(RaisedBy([&] { WriteSetting(row.Application, row.Section, row.Key, "x"); }),
              expected);
    EXPECT_EQ(RaisedBy([&] { ReadSetting(row.Application, row.Section, row.Key, "x"); }), expected);
    EXPECT_TRUE(fakes::Registry.empty());
}

const EmptyName kEmptyNames[] = {
    {"Application", "", "s", "k", -2147220504, "AppName may not be empty"},
    {"ApplicationOfBlanks", "  ", "s", "k", -2147220504, "AppName may not be empty"},
    {"Section", "a", "", "k", -2147220503, "Section may not be empty"},
    {"SectionOfBlanks", "a", " ", "k", -2147220503, "Section may not be empty"},
    {"Key", "a", "s", "", -2147220502, "Key may not be empty"},
    {"KeyOfBlanks", "a", "s", "   ", -2147220502, "Key may not be empty"},
    {"ApplicationFirst", "", "", "", -2147220504, "AppName may not be empty"},
    {"SectionBeforeKey", "a", "", "", -2147220503, "Section may not be empty"},
};

INSTANTIATE_TEST_SUITE_P(Rows, EmptyNames, testing::ValuesIn(kEmptyNames),
                         [](const auto& row) { return row.param.Name; });

TEST_F(Registry, ASectionThatCannotBeMadeIsAnErrorWithTheSystemsCode) {
    fakes::CreateCode = 5;
    EXPECT_EQ(RaisedBy([] { WriteSetting("a", "s", "k", "v"); }),
              (Error{kErrorBase + 2005, "MRegistry", "Could not open/create registry section"}));
}

TEST_F(Registry, AValueThatCannotBeSetIsAnErrorAndTheKeyIsClosed) {
    fakes::SetCode = 5;
    EXPECT_EQ(RaisedBy([] { WriteSetting("a", "s", "k", "v"); }),
              (Error{kErrorBase + 2005, "MRegistry", "Could not set key value"}));
    EXPECT_EQ(fakes::OpenKeys, 0);
}

TEST_F(Registry, ASectionThatCannotBeOpenedIsAnErrorUnlessItIsNotThere) {
    fakes::OpenCode = 5;
    EXPECT_EQ(RaisedBy([] { ReadSetting("a", "s", "k", "v"); }),
              (Error{kErrorBase + 2005, "MRegistry", "Could not open registry section"}));
    fakes::OpenCode = 2;
    EXPECT_EQ(ReadSetting("a", "s", "k", "v"), "v");
}

TEST_F(Registry, ANumberIsNoStringAndTheErrorCarriesItsTypeOnPurpose) {
    fakes::Registry["SOFTWARE\\MwClient\\Windows"]["gTop"] = {4, std::string(4, '\1')};
    EXPECT_EQ(RaisedBy([] { Read("gTop"); }),
              (Error{kErrorBase + 2004, "MRegistry", "Registry data not a string"}));
    EXPECT_EQ(fakes::OpenKeys, 0);
}

struct RefusedType {
    const char* Name;
    std::uint32_t Type;
    std::int32_t Number;
};

void PrintTo(const RefusedType& row, std::ostream* out) { *out << row.Name; }

class RefusedTypes : public RuleTest, public testing::WithParamInterface<RefusedType> {};

TEST_P(RefusedTypes, AreErrorsWithTheTypeAddedIn32Bits) {
    const RefusedType& row = GetParam();
    fakes::Registry["SOFTWARE\\MwClient\\Windows"]["gTop"] = {row.Type, "x"};
    EXPECT_EQ(RaisedBy([] { Read("gTop"); }),
              (Error{row.Number, "MRegistry", "Registry data not a string"}));
}

const RefusedType kRefusedTypes[] = {
    {"None", 0, -2147219504},
    {"Binary", 3, -2147219501},
    {"TheGreatestBelowTheSign", 0x7fffffff, 264143},
    {"TheFirstThatOverflows", 0x80000000, 264144},
    {"TheGreatest", 0xffffffff, -2147219505},
};

INSTANTIATE_TEST_SUITE_P(Rows, RefusedTypes, testing::ValuesIn(kRefusedTypes),
                         [](const auto& row) { return row.param.Name; });

TEST_F(Registry, EveryKeyThatWasOpenedIsClosed) {
    WriteSetting("a", "s", "k", "v");
    ReadSetting("a", "s", "k", "");
    ReadSetting("a", "s", "other", "");
    EXPECT_EQ(fakes::OpenKeys, 0);
}

TEST_F(Registry, AtStartAFailureGivesTheFallbackAndANotice) {
    WriteSetting("MwClient", "Settings", "Font", "12");
    EXPECT_EQ(SettingAtStart("Settings", "Font", "10"), "12");
    EXPECT_EQ(Notice, "");
    fakes::OpenCode = 5;
    EXPECT_EQ(SettingAtStart("Settings", "Font", "10"), "10");
    EXPECT_EQ(Notice, "Settings could not be read: Could not open registry section");
    EXPECT_EQ(fakes::Panels[2], Notice);
}

TEST_F(Registry, KeepsASettingOfThisProgram) {
    KeepSetting("Windows", "gTop", "10");
    EXPECT_EQ(Read("gTop"), "10");
    KeepSetting("Windows", "gTop", "");
    EXPECT_EQ(Read("gTop"), "");
    EXPECT_EQ(Notice, "");
}

struct RefusedSetting {
    const char* Name;
    std::int32_t CreateCode;
    std::int32_t SetCode;
    const char* Key;
    const char* Text;
};

void PrintTo(const RefusedSetting& row, std::ostream* out) { *out << row.Name; }

class RefusedSettings : public RuleTest, public testing::WithParamInterface<RefusedSetting> {};

TEST_P(RefusedSettings, GiveANoticeAndRaiseNothing) {
    const RefusedSetting& row = GetParam();
    fakes::CreateCode = row.CreateCode;
    fakes::SetCode = row.SetCode;
    EXPECT_EQ(ErrorOf([&row] { KeepSetting("Windows", row.Key, "10"); }), 0);
    EXPECT_EQ(Notice, std::string("Settings could not be kept: ") + row.Text);
    EXPECT_EQ(fakes::Panels[2], Notice);
    EXPECT_TRUE(fakes::Messages.empty());
    EXPECT_EQ(fakes::OpenKeys, 0);
}

const RefusedSetting kRefusedSettings[] = {
    {"ASectionThatCannotBeMade", 5, 0, "gTop", "Could not open/create registry section"},
    {"AValueThatCannotBeSet", 0, 5, "gTop", "Could not set key value"},
    {"AKeyWithoutAName", 0, 0, " ", "Key may not be empty"},
};

INSTANTIATE_TEST_SUITE_P(Rows, RefusedSettings, testing::ValuesIn(kRefusedSettings),
                         [](const auto& row) { return row.param.Name; });

} // namespace
} // namespace mw
