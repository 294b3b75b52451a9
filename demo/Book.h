// The book at the gate: everyone who ever came in, the hash of the password, and what they had.
//
// Login writes a new name into it, World what a player leaves with; the server sees to the file. It
// is JSON in UTF-8 with one object a player. A password is kept as PBKDF2 with SHA-256 (RFC 8018)
// over a salt of its own.
#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace world {

inline constexpr std::size_t MaxNames = 1000; // in one book
// A hundredth of a second of work a try: dear to one who guesses, cheap to a town of one thread.
inline constexpr int HashRounds = 20000;
inline constexpr int MaxHashRounds = 1000000; // that a file may ask for

struct Account {
    std::string salt; // bytes, like the hash
    std::string hash;
    int rounds = HashRounds;
    int life = 0; // 0 for one who has not been in yet
    int kills = 0;
    int beatsSinceMeal = 0;
    std::vector<std::string> carried; // things by their names in the data file
    std::vector<std::string> worn;

    bool operator==(const Account&) const = default;
};

using Book = std::map<std::string, Account, std::less<>>; // by name

// An account with a fresh salt. Takes the time of its rounds.
Account NewAccount(std::string_view password, int rounds = HashRounds);

// Takes the time of the account's rounds.
bool IsPassword(const Account& account, std::string_view password);

// Throws std::runtime_error for what is no book of ours: other JSON, names that no gate would take,
// numbers out of range, more than MaxNames.
Book ParseBook(const std::string& text);
std::string FormatBook(const Book& book);

// An empty book when there is no file. Throws std::runtime_error when there is one that can't be
// read or is larger than any book of ours.
Book LoadBook(const std::string& path);

// Writes the whole book beside the file and then over it, with its folder when that is missing.
// False, with the file as it was, when that does not work.
bool SaveBook(const std::string& path, const Book& book);

// "ada" and "ADA" are Ada: two to sixteen letters. Empty when it is no name.
std::string ProperName(std::string_view typed);

} // namespace world
