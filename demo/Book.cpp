#include "Book.h"

#include "Text.h"

#include <algorithm>
#include <array>
#include <stdexcept>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QPasswordDigestor>
#include <QRandomGenerator>
#include <QSaveFile>

namespace world {
namespace {

constexpr int kSaltWords = 4; // of 32 bits
constexpr int kHashBytes = 32;
constexpr int kMostKept = 1000000; // of any number that is kept
constexpr qint64 kLargestBook = qint64{4} * 1024 * 1024;
constexpr std::size_t kLongestName = 16;

QByteArray BytesOf(std::string_view text) {
    return {text.data(), static_cast<qsizetype>(text.size())};
}

std::string Hashed(std::string_view password, const std::string& salt, int rounds) {
    return QPasswordDigestor::deriveKeyPbkdf2(QCryptographicHash::Sha256, BytesOf(password),
                                              BytesOf(salt), rounds, kHashBytes)
        .toStdString();
}

QString HexOf(const std::string& bytes) { return QString::fromLatin1(BytesOf(bytes).toHex()); }

std::string BytesFromHex(const QJsonValue& value) {
    return QByteArray::fromHex(value.toString().toLatin1()).toStdString();
}

QJsonArray ArrayOf(const std::vector<std::string>& names) {
    QJsonArray array;
    for (const std::string& name : names)
        array.append(QString::fromStdString(name));
    return array;
}

std::vector<std::string> NamesIn(const QJsonValue& value) {
    std::vector<std::string> names;
    for (const QJsonValue& each : value.toArray())
        names.push_back(each.toString().toStdString());
    return names;
}

int NumberIn(const QJsonObject& object, const char* key, int least, int most) {
    const int number = object.value(QLatin1StringView(key)).toInt(least - 1);
    if (number < least || number > most)
        throw std::runtime_error(std::string(key) + " is no number that is written there");
    return number;
}

QJsonObject ObjectOf(const std::string& name, const Account& account) {
    return {{"name", QString::fromStdString(name)},
            {"salt", HexOf(account.salt)},
            {"hash", HexOf(account.hash)},
            {"rounds", account.rounds},
            {"life", account.life},
            {"kills", std::min(account.kills, kMostKept)},
            {"beatsSinceMeal", std::min(account.beatsSinceMeal, kMostKept)},
            {"carried", ArrayOf(account.carried)},
            {"worn", ArrayOf(account.worn)}};
}

Account AccountOf(const QJsonObject& object) {
    Account account;
    account.salt = BytesFromHex(object.value("salt"));
    account.hash = BytesFromHex(object.value("hash"));
    if (account.hash.size() != kHashBytes)
        throw std::runtime_error("a hash has the wrong length");
    account.rounds = NumberIn(object, "rounds", 1, MaxHashRounds);
    account.life = NumberIn(object, "life", 0, kMostKept);
    account.kills = NumberIn(object, "kills", 0, kMostKept);
    account.beatsSinceMeal = NumberIn(object, "beatsSinceMeal", 0, kMostKept);
    account.carried = NamesIn(object.value("carried"));
    account.worn = NamesIn(object.value("worn"));
    return account;
}

} // namespace

Account NewAccount(std::string_view password, int rounds) {
    std::array<quint32, kSaltWords> words{};
    QRandomGenerator::system()->fillRange(words.data(), kSaltWords);
    Account account;
    account.salt.assign(reinterpret_cast<const char*>(words.data()), sizeof words);
    account.rounds = rounds;
    account.hash = Hashed(password, account.salt, rounds);
    return account;
}

bool IsPassword(const Account& account, std::string_view password) {
    return Hashed(password, account.salt, account.rounds) == account.hash;
}

Book ParseBook(const std::string& text) {
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(BytesOf(text), &error);
    const QJsonValue players = document.object().value("players");
    if (error.error != QJsonParseError::NoError || !players.isArray())
        throw std::runtime_error("it is no list of players");
    Book book;
    for (const QJsonValue& each : players.toArray()) {
        const std::string name = each.toObject().value("name").toString().toStdString();
        if (name.empty() || ProperName(name) != name)
            throw std::runtime_error("a player has no proper name");
        book[name] = AccountOf(each.toObject());
    }
    if (book.size() > MaxNames)
        throw std::runtime_error("it has too many players");
    return book;
}

std::string FormatBook(const Book& book) {
    QJsonArray players;
    for (const auto& [name, account] : book)
        players.append(ObjectOf(name, account));
    return QJsonDocument(QJsonObject{{"players", players}}).toJson().toStdString();
}

Book LoadBook(const std::string& path) {
    QFile file(QString::fromStdString(path));
    if (!file.exists())
        return {};
    if (!file.open(QFile::ReadOnly))
        throw std::runtime_error(file.errorString().toStdString());
    const QByteArray text = file.read(kLargestBook + 1);
    if (text.size() > kLargestBook)
        throw std::runtime_error("it is too large");
    return ParseBook(text.toStdString());
}

bool SaveBook(const std::string& path, const Book& book) {
    const QString name = QString::fromStdString(path);
    if (!QDir().mkpath(QFileInfo(name).path()))
        return false;
    QSaveFile file(name);
    if (!file.open(QSaveFile::WriteOnly))
        return false;
    file.setPermissions(QFile::ReadOwner | QFile::WriteOwner);
    // Less than all is written, without an error, when the disk fills up meanwhile.
    const QByteArray bytes = BytesOf(FormatBook(book));
    return file.write(bytes) == bytes.size() && file.flush() && file.commit();
}

std::string ProperName(std::string_view typed) {
    std::string name = Lower(Clean(typed));
    const bool letters = std::ranges::all_of(name, [](char c) { return c >= 'a' && c <= 'z'; });
    if (!letters || name.size() < 2 || name.size() > kLongestName)
        return {};
    name[0] = static_cast<char>(name[0] - 'a' + 'A');
    return name;
}

} // namespace world
