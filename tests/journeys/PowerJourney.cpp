// The power goes while the client saves. Whatever the moment, each file is the old one or the new
// one, whole, and the next start takes it.
#include "Files.h"
#include "Journey.h"
#include "Wait.h"

#include <iterator>
#include <memory>
#include <vector>

#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>

namespace journey {
namespace {

constexpr int kAtOnce = 6;
constexpr int kBatches = 4;
constexpr int kStepMs = 60; // from one moment to the next: the stages take 1000 ms
constexpr int kLongestMs = 5000;
constexpr int kGames = 300;
constexpr int kKeys = 100;

const char* const kGameFile = "Data/muds.lst";
const char* const kFiles[] = {kGameFile, "Data/client.cfg", "Macros/Default.mco"};

// Files so large that writing them takes a while. Each is saved in another form: with other keys,
// with all colours, in another order.
FileTexts LargeFiles() {
    std::string games;
    for (int i = 0; i < kGames; ++i)
        games += "[Mud]\r\nthe name=Game " + std::to_string(i) +
                 "\r\nAddy=" + std::string(4000, 'a') +
                 "\r\nPort=4000\r\nSndD=False\r\nSndM=False\r\n"
                 "Msp=False\r\nSndW=False\r\n";
    std::string macros;
    for (int code = kKeys; code > 0; --code)
        macros += "ShiftKey0" + std::to_string(code) + '=' + std::string(20000, 'm') + "\r\n";
    return {{kFiles[0], games},
            {kFiles[1], "[Macros]\r\nDefault\r\n[END]\r\n"},
            {kFiles[2], macros + "[End]\r\n"}};
}

class Power : public Journey {
protected:
    // What the client makes of the files when nothing goes wrong.
    FileTexts SavedInOrder() {
        PutFiles(Player.Home, Old);
        Player.Start();
        Player.ExitByMenu();
        EXPECT_EQ(Player.WaitForEnd(), 0);
        return FilesBelow(Player.Home);
    }

    void ExpectWhole(const QString& home, const FileTexts& saved) {
        for (const char* name : kFiles) {
            const std::string text = FileText(home + '/' + name);
            EXPECT_TRUE(text == Old.at(name) || text == saved.at(name))
                << name << " has " << text.size() << " bytes";
        }
    }

    // On the old files, with their frames there.
    std::vector<std::unique_ptr<Client>> StartSome(int count) {
        std::vector<std::unique_ptr<Client>> clients;
        for (int i = 0; i < count; ++i) {
            clients.push_back(std::make_unique<Client>(Screen));
            PutFiles(clients.back()->Home, Old);
            clients.back()->Launch();
        }
        for (const auto& client : clients)
            client->WaitForFrame();
        return clients;
    }

    void Kill(Client& client) {
        client.Process.kill();
        client.WaitForEnd();
    }

    // As soon as there is a new file beside the old one, or something else than the old one. Looks
    // all the time: writing takes some milliseconds.
    void KillWhenItWrites(const char* name, Client& client) {
        const QString file = client.Home + '/' + name;
        const auto size = static_cast<qint64>(Old.at(name).size());
        QElapsedTimer clock;
        clock.start();
        while (!QFile::exists(file + ".new") && QFileInfo(file).size() == size &&
               !clock.hasExpired(kLongestMs))
            ;
        Kill(client);
    }

    const FileTexts Old = LargeFiles();
};

TEST_F(Power, LostAtAnyMomentOfTheSavingLeavesEachFileWhole) {
    const FileTexts saved = SavedInOrder();
    for (const char* name : kFiles)
        ASSERT_TRUE(Old.at(name) != saved.at(name)) << name;
    int newGames = 0;
    for (int batch = 0; batch < kBatches; ++batch) {
        const auto clients = StartSome(kAtOnce);
        for (const auto& client : clients)
            client->Process.terminate();
        QElapsedTimer clock;
        clock.start();
        for (int i = 0; i < kAtOnce; ++i) {
            const int moment = kStepMs * (i * kBatches + batch);
            SCOPED_TRACE(moment);
            Becomes([&] { return clock.hasExpired(moment); });
            Client& client = *clients[static_cast<std::size_t>(i)];
            Kill(client);
            ExpectWhole(client.Home, saved);
            newGames += FileText(client.Home + '/' + kGameFile) == saved.at(kGameFile) ? 1 : 0;
        }
    }
    // The moments reach from before the first file to behind it.
    EXPECT_GE(newGames, 1);
    EXPECT_LT(newGames, kBatches * kAtOnce);
}

TEST_F(Power, LostWhileAFileIsWrittenDoesNotMatterToTheNextStart) {
    const FileTexts saved = SavedInOrder();
    const auto clients = StartSome(static_cast<int>(std::size(kFiles)));
    for (std::size_t i = 0; i < clients.size(); ++i) {
        SCOPED_TRACE(kFiles[i]);
        clients[i]->Process.terminate();
        KillWhenItWrites(kFiles[i], *clients[i]);
        ExpectWhole(clients[i]->Home, saved);
        // In any case something half is left.
        PutFile(clients[i]->Home + '/' + kFiles[i] + ".new", "[Mud]\r\nhalf a rec");
        clients[i]->Launch();
    }
    for (const auto& client : clients) {
        client->WaitForFrame();
        client->Process.terminate();
    }
    for (const auto& client : clients) {
        EXPECT_EQ(client->WaitForEnd(), 0);
        EXPECT_TRUE(FilesBelow(client->Home) == saved);
    }
}

} // namespace
} // namespace journey
