#include "Book.h"

#include "Folder.h"
#include "support/FullDisk.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <stdexcept>
#include <string>
#include <vector>

#include <QByteArray>
#include <QFile>

namespace world {

void PrintTo(const Account& account, std::ostream* out) {
    *out << "life " << account.life << " kills " << account.kills << " beats "
         << account.beatsSinceMeal << " rounds " << account.rounds << " carried "
         << ::testing::PrintToString(account.carried) << " worn "
         << ::testing::PrintToString(account.worn);
}

namespace {

std::string FromHex(const char* hex) { return QByteArray::fromHex(hex).toStdString(); }

TEST(WorldPasswords, AreKnownAgainAndNoOthers) {
    const Account account = NewAccount("secret", 1);
    EXPECT_TRUE(IsPassword(account, "secret"));
    for (const char* wrong : {"", "Secret", "secre", "secret ", "secrets", " secret"})
        EXPECT_FALSE(IsPassword(account, wrong)) << wrong;
}

TEST(WorldPasswords, OfOddBytesAreKnownAgain) {
    for (const std::string& password : {std::string("\0x", 2), std::string("\xff\xe4 \t"),
                                        std::string(512, 'x'), std::string(64, 'y')}) {
        const Account account = NewAccount(password, 1);
        EXPECT_TRUE(IsPassword(account, password));
        EXPECT_FALSE(IsPassword(account, password.substr(1)));
    }
}

TEST(WorldPasswords, ThatAreTheSameHaveAnotherSaltAndHashEach) {
    const Account one = NewAccount("secret", 1);
    const Account other = NewAccount("secret", 1);
    EXPECT_EQ(one.salt.size(), 16U);
    EXPECT_EQ(one.hash.size(), 32U);
    EXPECT_NE(one.salt, other.salt);
    EXPECT_NE(one.hash, other.hash);
}

TEST(WorldPasswords, AreHashedInTheRoundsOfTheAccount) {
    Account account = NewAccount("secret", 2);
    EXPECT_EQ(account.rounds, 2);
    EXPECT_TRUE(IsPassword(account, "secret"));
    account.rounds = 3;
    EXPECT_FALSE(IsPassword(account, "secret"));
    EXPECT_EQ(NewAccount("secret").rounds, HashRounds);
}

// The values are those of RFC 7914, section 11.
TEST(WorldPasswords, AreHashedAsOtherProgramsDoIt) {
    Account account;
    account.salt = "salt";
    account.rounds = 1;
    account.hash = FromHex("55ac046e56e3089fec1691c22544b605f94185216dde0465e68b9d57c20dacbc");
    EXPECT_TRUE(IsPassword(account, "passwd"));
    account.salt = "NaCl";
    account.rounds = 80000;
    account.hash = FromHex("4ddcd8f60b98be21830cee5ef22701f9641a4418d04c0414aeff08876b34ab56");
    EXPECT_TRUE(IsPassword(account, "Password"));
}

Account Rich() {
    Account account = NewAccount("secret", 7);
    account.life = 13;
    account.kills = 4;
    account.beatsSinceMeal = 2;
    account.carried = {"loaf", "loaf", "a \"quoted\" thing"};
    account.worn = {"hat"};
    return account;
}

TEST(WorldBook, ReadsWhatItWrote) {
    const Book books[] = {
        {},
        {{"Ada", Rich()}},
        {{"Ada", NewAccount("x", 1)}, {"Bob", Rich()}, {"Zz", Account(Rich())}},
    };
    for (const Book& book : books)
        EXPECT_EQ(ParseBook(FormatBook(book)), book);
}

TEST(WorldBook, ReadsWhatItWroteOfTheLargestNumbersToo) {
    Account account = Rich();
    account.kills = account.beatsSinceMeal = 1000000;
    const Book most = {{"Ada", account}};
    EXPECT_EQ(ParseBook(FormatBook(most)), most);
    account.kills = account.beatsSinceMeal = 1000001;
    EXPECT_EQ(ParseBook(FormatBook({{"Ada", account}})), most) << "it never writes what it refuses";
}

TEST(WorldBook, NeverHoldsAPassword) {
    const std::string text = FormatBook({{"Ada", NewAccount("opensesame", 1)}});
    EXPECT_EQ(text.find("opensesame"), std::string::npos);
    EXPECT_EQ(text.find(QByteArray("opensesame").toHex().toStdString()), std::string::npos);
}

// A player of the file as it is written, with one part changed.
std::string BookWith(const std::string& part, const std::string& other) {
    const std::string hash(64, 'a');
    std::string text = R"({"players": [{"name": "Ada", "salt": "00ff", "hash": ")" + hash +
                       R"(", "rounds": 1, "life": 20, "kills": 0, "beatsSinceMeal": 0,
                       "carried": [], "worn": []}]})";
    return text.replace(text.find(part), part.size(), other);
}

struct BookCase {
    const char* name;
    std::string text;
    const char* why;
};

void PrintTo(const BookCase& row, std::ostream* out) { *out << row.name; }

std::string WhyRefused(const std::string& text) {
    try {
        ParseBook(text);
    } catch (const std::runtime_error& error) {
        return error.what();
    }
    return "taken";
}

class WorldBookRefusals : public ::testing::TestWithParam<BookCase> {};

TEST_P(WorldBookRefusals, SayWhy) { EXPECT_EQ(WhyRefused(GetParam().text), GetParam().why); }

constexpr const char* kNoList = "it is no list of players";
constexpr const char* kNoName = "a player has no proper name";
constexpr const char* kNoHash = "a hash has the wrong length";
constexpr const char* kNoRounds = "rounds is no number that is written there";
constexpr const char* kNoLife = "life is no number that is written there";

const BookCase kRefusals[] = {
    {"OfNothing", "", kNoList},
    {"OfOtherText", "Ada secret\n", kNoList},
    {"OfHalfABook", BookWith("]}]}", "]}"), kNoList},
    {"OfMoreBehind", BookWith("]}]}", "]}]} x"), kNoList},
    {"OfAnotherList", "[]", kNoList},
    {"OfAnotherObject", "{}", kNoList},
    {"OfPlayersThatAreNoList", R"({"players": {"Ada": 1}})", kNoList},
    {"OfAPlayerThatIsNone", R"({"players": ["Ada"]})", kNoName},
    {"OfAnEmptyPlayer", R"({"players": [{}]})", kNoName},
    {"OfAnEmptyName", BookWith("\"Ada\"", "\"\""), kNoName},
    {"OfANameInSmallLetters", BookWith("\"Ada\"", "\"ada\""), kNoName},
    {"OfANameWithABlank", BookWith("\"Ada\"", "\" Ada\""), kNoName},
    {"OfANameWithADigit", BookWith("\"Ada\"", "\"Ada2\""), kNoName},
    {"OfANameThatIsTooLong", BookWith("\"Ada\"", "\"Abcdefghijklmnopq\""), kNoName},
    {"OfANameThatIsANumber", BookWith("\"Ada\"", "5"), kNoName},
    {"OfAHashThatIsMissing", BookWith("\"hash\"", "\"cash\""), kNoHash},
    {"OfAHashThatIsTooShort", BookWith("\"aa", "\""), kNoHash},
    {"OfAHashThatIsTooLong", BookWith("\"aa", "\"aaaa"), kNoHash},
    {"OfAHashThatIsNoHex", BookWith("\"aa", "\"zz"), kNoHash},
    {"OfNoRounds", BookWith("\"rounds\": 1", "\"rounds\": 0"), kNoRounds},
    {"OfTooManyRounds", BookWith("\"rounds\": 1", "\"rounds\": 1000001"), kNoRounds},
    {"OfRoundsInWords", BookWith("\"rounds\": 1", "\"rounds\": \"1\""), kNoRounds},
    {"OfRoundsThatAreMissing", BookWith("\"rounds\": 1,", ""), kNoRounds},
    {"OfHalfALife", BookWith("\"life\": 20", "\"life\": 1.5"), kNoLife},
    {"OfLessThanNoLife", BookWith("\"life\": 20", "\"life\": -1"), kNoLife},
    {"OfALifeThatIsTooLong", BookWith("\"life\": 20", "\"life\": 1000001"), kNoLife},
    {"OfKillsBelowNone", BookWith("\"kills\": 0", "\"kills\": -1"),
     "kills is no number that is written there"},
    {"OfTooManyKills", BookWith("\"kills\": 0", "\"kills\": 1000001"),
     "kills is no number that is written there"},
    {"OfTooMuchHunger", BookWith("\"beatsSinceMeal\": 0", "\"beatsSinceMeal\": 1000001"),
     "beatsSinceMeal is no number that is written there"},
    {"OfHungerWithoutANumber", BookWith("\"beatsSinceMeal\": 0", "\"beatsSinceMeal\": null"),
     "beatsSinceMeal is no number that is written there"},
};

INSTANTIATE_TEST_SUITE_P(All, WorldBookRefusals, ::testing::ValuesIn(kRefusals),
                         [](const auto& row) { return std::string(row.param.name); });

class WorldBookReadings : public ::testing::TestWithParam<BookCase> {};

// Here the last column is what Ada carries.
TEST_P(WorldBookReadings, AreTaken) {
    const Book book = ParseBook(GetParam().text);
    ASSERT_EQ(book.size(), 1U);
    std::string carried;
    for (const std::string& thing : book.at("Ada").carried)
        carried += '[' + thing + ']';
    EXPECT_EQ(carried, GetParam().why);
}

const BookCase kReadings[] = {
    {"OfAPlayer", BookWith("", ""), ""},
    {"WithTheMostRounds", BookWith("\"rounds\": 1", "\"rounds\": 1000000"), ""},
    {"WithTheLongestLife", BookWith("\"life\": 20", "\"life\": 1000000"), ""},
    {"WithOneWhoHasNotBeenIn", BookWith("\"life\": 20", "\"life\": 0"), ""},
    {"WithKeysThatAreUnknown", BookWith("\"rounds\"", "\"hat\": true, \"rounds\""), ""},
    {"WithThings", BookWith("[]", R"(["loaf", "hat"])"), "[loaf][hat]"},
    {"WithoutAListOfThings", BookWith("\"carried\": [],", ""), ""},
    {"WithThingsThatAreNoList", BookWith("[]", "\"loaf\""), ""},
    {"WithBlanksAround", "\n\n" + BookWith("", "") + "\n\n", ""},
};

INSTANTIATE_TEST_SUITE_P(All, WorldBookReadings, ::testing::ValuesIn(kReadings),
                         [](const auto& row) { return std::string(row.param.name); });

Book Crowd(int size) {
    Book book;
    const Account account = NewAccount("x", 1);
    for (int each = 0; each < size; ++each) {
        std::string name = "Aaa";
        for (std::size_t place = 0, left = static_cast<std::size_t>(each); place < 3; ++place) {
            name[place] = static_cast<char>((place == 0 ? 'A' : 'a') + left % 26);
            left /= 26;
        }
        book[name] = account;
    }
    return book;
}

TEST(WorldBook, HasRoomForAThousandNames) {
    const Book full = Crowd(1000);
    ASSERT_EQ(full.size(), MaxNames);
    EXPECT_EQ(ParseBook(FormatBook(full)), full);
    EXPECT_EQ(WhyRefused(FormatBook(Crowd(1001))), "it has too many players");
}

TEST(WorldBook, ThatIsNotThereIsEmpty) {
    const Folder folder;
    EXPECT_EQ(LoadBook(folder.Path("players.json")), Book{});
    EXPECT_EQ(LoadBook(folder.Path("none/such/players.json")), Book{});
}

TEST(WorldBook, ThatCannotBeReadIsNotTakenForAnEmptyOne) {
    const Folder folder;
    EXPECT_THROW(LoadBook(folder.Path("")), std::runtime_error) << "a folder";
    for (const char* damage : {"", "{", "{\"players\": 3}"}) {
        folder.Write("players.json", damage);
        EXPECT_THROW(LoadBook(folder.Path("players.json")), std::runtime_error) << damage;
        EXPECT_EQ(folder.Read("players.json"), damage) << "it is left as it was";
    }
}

TEST(WorldBook, IsReadUpToFourMebibytesAndNoFurther) {
    const Folder folder;
    constexpr std::size_t kMost = 4 * 1024 * 1024;
    const std::string text = FormatBook({{"Ada", Rich()}});
    folder.Write("players.json", text + std::string(kMost - text.size(), ' '));
    EXPECT_EQ(LoadBook(folder.Path("players.json")).size(), 1U);
    folder.Write("players.json", text + std::string(kMost + 1 - text.size(), ' '));
    EXPECT_THROW(LoadBook(folder.Path("players.json")), std::runtime_error);
    EXPECT_THROW(LoadBook("/dev/zero"), std::runtime_error) << "a file without end";
}

TEST(WorldBook, IsSavedAndLoaded) {
    const Folder folder;
    const Book book = {{"Ada", Rich()}, {"Bob", Rich()}};
    ASSERT_TRUE(SaveBook(folder.Path("players.json"), book));
    EXPECT_EQ(LoadBook(folder.Path("players.json")), book);
    EXPECT_EQ(folder.Names(), std::vector<std::string>{"players.json"});
}

TEST(WorldBook, MakesItsFolder) {
    const Folder folder;
    const std::string path = folder.Path("a/b c/players.json");
    ASSERT_TRUE(SaveBook(path, {{"Ada", Rich()}}));
    EXPECT_EQ(LoadBook(path).size(), 1U);
}

TEST(WorldBook, CanBeReadByItsOwnerAlone) {
    const Folder folder;
    const std::string path = folder.Path("players.json");
    for (int times = 0; times < 2; ++times) {
        ASSERT_TRUE(SaveBook(path, {{"Ada", Rich()}}));
        EXPECT_EQ(folder.Mode("players.json"), 0600) << times;
        std::filesystem::permissions(path, std::filesystem::perms(0644));
    }
}

TEST(WorldBook, IsReplacedWholeUnderTheEyesOfAReader) {
    const Folder folder;
    const std::string path = folder.Path("players.json");
    ASSERT_TRUE(SaveBook(path, Crowd(50)));
    const std::string before = folder.Read("players.json");
    QFile reader(QString::fromStdString(path));
    ASSERT_TRUE(reader.open(QFile::ReadOnly));
    ASSERT_TRUE(SaveBook(path, {}));
    EXPECT_EQ(reader.readAll().toStdString(), before);
    EXPECT_EQ(LoadBook(path), Book{});
}

TEST(WorldBook, IsNotSavedWhereThereIsNoPlaceForIt) {
    const Folder folder;
    folder.Write("file", "x");
    EXPECT_FALSE(SaveBook(folder.Path("file/players.json"), {}));
    EXPECT_FALSE(SaveBook(folder.Path(""), {})) << "a folder";
    EXPECT_EQ(folder.Read("file"), "x");
    EXPECT_EQ(folder.Names(), std::vector<std::string>{"file"});
}

TEST(WorldBook, IsLeftAsItWasWhenTheDiskIsFull) {
    const Folder folder;
    const std::string path = folder.Path("players.json");
    const Book book = {{"Ada", Rich()}};
    ASSERT_TRUE(SaveBook(path, book));
    bool isSaved = true;
    {
        const FullDisk disk(1000);
        isSaved = SaveBook(path, Crowd(1000));
    }
    EXPECT_FALSE(isSaved);
    EXPECT_EQ(LoadBook(path), book);
    EXPECT_EQ(folder.Names(), std::vector<std::string>{"players.json"});
    EXPECT_TRUE(SaveBook(path, Crowd(1000))) << "and afterwards it works again";
}

struct NameCase {
    const char* name;
    std::string typed;
    const char* proper;
};

void PrintTo(const NameCase& row, std::ostream* out) { *out << row.name; }

class WorldProperNames : public ::testing::TestWithParam<NameCase> {};

TEST_P(WorldProperNames, HaveOneSpelling) {
    EXPECT_EQ(ProperName(GetParam().typed), GetParam().proper);
}

const NameCase kNames[] = {
    {"OfSmallLetters", "ada", "Ada"},
    {"OfCapitals", "ADA", "Ada"},
    {"ThatAreProperAlready", "Ada", "Ada"},
    {"WithBlanksAround", "  ada ", "Ada"},
    {"OfTwoLetters", "jo", "Jo"},
    {"OfSixteenLetters", "abcdefghijklmnop", "Abcdefghijklmnop"},
    {"OfOneLetterAreNone", "a", ""},
    {"OfSeventeenLettersAreNone", "abcdefghijklmnopq", ""},
    {"OfNothingAreNone", "", ""},
    {"OfTwoWordsAreNone", "ada bob", ""},
    {"WithADigitAreNone", "ada2", ""},
    {"WithAnAccentAreNone", "ad\xe1", ""},
    {"WithASignBesideTheLettersAreNone", "ada`", ""},
};

INSTANTIATE_TEST_SUITE_P(All, WorldProperNames, ::testing::ValuesIn(kNames),
                         [](const auto& row) { return std::string(row.param.name); });

} // namespace
} // namespace world
