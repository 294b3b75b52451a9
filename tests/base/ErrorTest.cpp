#include "base/Error.h"

#include "support/ErrorOf.h"

#include <gtest/gtest.h>
#include <ostream>

namespace mw {

static void PrintTo(const Error& error, std::ostream* out) {
    *out << error.Number << " " << error.Source << ": " << error.Description;
}

namespace {

struct Row {
    const char* Name;
    RunTimeError Kind;
    int Number;
    const char* Description;
};

void PrintTo(const Row& row, std::ostream* out) { *out << row.Name; }

const Row kRows[] = {
    {"Overflow", Overflow, 6, "Overflow"},
    {"SubscriptOutOfRange", SubscriptOutOfRange, 9, "Subscript out of range"},
    {"TypeMismatch", TypeMismatch, 13, "Type mismatch"},
    {"FileNotFound", FileNotFound, 53, "File not found"},
    {"InputPastEnd", InputPastEnd, 62, "Input past end of file"},
    {"PathFileAccess", PathFileAccess, 75, "Path/File access error"},
    {"InvalidSocketState", InvalidSocketState, 40020, "Invalid operation at current state"},
};

Error Raised(RunTimeError kind, std::string_view source) {
    return RaisedBy([&] { Raise(kind, source); });
}

class RaisedError : public testing::TestWithParam<Row> {};

TEST_P(RaisedError, HasItsNumberItsSourceAndItsCustomaryDescription) {
    const Error expected{GetParam().Number, "Somewhere", GetParam().Description};
    EXPECT_EQ(Raised(GetParam().Kind, "Somewhere"), expected);
}

INSTANTIATE_TEST_SUITE_P(Kinds, RaisedError, testing::ValuesIn(kRows),
                         [](const auto& row) { return row.param.Name; });

TEST(Errors, OfAnUnknownNumberHaveNoDescription) {
    EXPECT_EQ(Raised(static_cast<RunTimeError>(5), "x"), (Error{5, "x", ""}));
}

TEST(Errors, MayComeFromNowhere) { EXPECT_EQ(Raised(Overflow, ""), (Error{6, "", "Overflow"})); }

TEST(Errors, DifferByEachField) {
    const Error error{6, "a", "b"};
    EXPECT_FALSE(error == (Error{7, "a", "b"}));
    EXPECT_FALSE(error == (Error{6, "x", "b"}));
    EXPECT_FALSE(error == (Error{6, "a", "x"}));
    EXPECT_TRUE(error == (Error{6, "a", "b"}));
}

TEST(Errors, AreNotTheSignalThatEndsTheProgram) {
    bool ended = false;
    try {
        throw EndProgram{};
    } catch (const Error&) {
        FAIL() << "caught as an error";
    } catch (const EndProgram&) {
        ended = true;
    }
    EXPECT_TRUE(ended);
}

} // namespace
} // namespace mw
