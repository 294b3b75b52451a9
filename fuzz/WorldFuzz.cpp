// Any bytes of any players of the demo world, from the gate to the end, while it goes on.
//
// The first byte is the luck of the dice. kCut cuts the rest into steps: "0" to "3" is what that
// player sends, telnet and lines; "x0" is one whose connection is lost; "r" is a round of the
// fights, "b" a beat.
#include "Login.h"
#include "Shows.h"
#include "Sounds.h"
#include "Things.h"
#include "demo/Scene.h"
#include "fuzz/Input.h"

#include <array>
#include <sstream>

namespace world {
namespace {

constexpr std::size_t kMostSteps = 200; // of one input

struct Session {
    Scene scene;
    std::array<int, 4> ids{}; // of the players
    int lastId = 0;
};

// Without cunning, but not always the same.
std::function<int(int)> Dice(unsigned seed) {
    return [seed](int sides) mutable {
        Must(sides > 0);
        seed = seed * 1103515245U + 12345U;
        return static_cast<int>(seed / 65536U % static_cast<unsigned>(sides));
    };
}

Player& PlayerAt(Session& session, std::size_t seat) {
    std::map<int, Player>& players = session.scene.world.players;
    int& id = session.ids[seat];
    if (!players.contains(id)) {
        id = ++session.lastId;
        players[id].id = id;
        Opening(players[id].telnet);
        Greet(session.scene.world, players[id]);
    }
    return players[id];
}

// What is decoded at once is what comes byte by byte.
TelnetInput Decoded(Telnet& telnet, std::string_view bytes) {
    Telnet slow = telnet;
    TelnetInput all;
    for (const char byte : bytes) {
        TelnetInput input = Decode(slow, {&byte, 1});
        std::ranges::move(input.lines, std::back_inserter(all.lines));
        all.replies += input.replies;
    }
    TelnetInput input = Decode(telnet, bytes);
    Must(input.lines == all.lines && input.replies == all.replies && telnet.line == slow.line);
    return input;
}

void Receive(World& world, Player& player, std::string_view bytes) {
    const TelnetInput input = Decoded(player.telnet, bytes);
    Must(input.replies.size() <= 3 * (bytes.size() + 2));
    Must(player.telnet.line.size() <= MaxLine && player.telnet.sub.size() <= MaxSubnegotiation);
    for (const std::string& line : input.lines) {
        Must(line.size() <= MaxLine);
        HandleLine(world, player, line);
    }
}

// One whose line is cut leaves the world first.
void Lose(World& world, Player& player) {
    if (player.stage == Stage::Playing)
        Leave(world, player, "fades from sight.");
    world.players.erase(player.id);
}

// What players say and do, in the colours of that; two marks would be a sound's.
bool HasMarksOfASound(const std::string& lines) {
    std::istringstream each(lines);
    for (std::string line; std::getline(each, line);) {
        const bool isOfPlayers = line.starts_with(SpeechColour) || line.starts_with(PeopleColour);
        if (isOfPlayers && Contains(line, "!!"))
            return true;
    }
    return false;
}

// What goes out is lines in their colours, and nothing a player typed is more than text in them.
void MustBeReadable(const std::string& lines) {
    Must(EveryLineHasItsColour(lines));
    Must(!HasMarksOfASound(lines));
    Must(std::ranges::none_of(lines, [](char c) {
        const auto byte = static_cast<unsigned char>(c);
        return byte == 0xff || byte == 127 || (byte < 32 && !Contains("\r\n\x1b", {&c, 1}));
    }));
}

// As the server does once a turn.
void Send(const World& world, Player& player) {
    Outgoing outgoing;
    outgoing.negotiation = HideTyping(player.telnet, player.stage == Stage::Password);
    if (player.flood > 0)
        player.lines += TakeFlood(*world.town, player);
    outgoing.lines = WithoutMistakableWaves(std::exchange(player.lines, {}));
    outgoing.prompt = PromptOf(player);
    MustBeReadable(outgoing.lines);
    if (player.probe == ProbeState::Wanted)
        player.probe = ProbeState::Sent;
    Must(Message(outgoing).ends_with('\r'));
}

void MustBeSound(const World& world, const Player& player) {
    Must(player.life >= 0 && player.life <= MaxLife && player.kills >= 0);
    Must(player.carried.size() + player.worn.size() <= MaxCarried);
    Must(player.room >= 0 && static_cast<std::size_t>(player.room) < world.town->rooms.size());
    Must(player.flood <= static_cast<std::size_t>(MaxFlood) * 1024);
    Must(!player.foe || (player.stage == Stage::Playing && player.foe->life > 0 &&
                         player.foe->kind->room == player.room));
    const auto isTheSame = [&player](const auto& entry) {
        return entry.second.stage == Stage::Playing && entry.second.name == player.name;
    };
    Must(player.stage != Stage::Playing || std::ranges::count_if(world.players, isTheSame) == 1);
}

void Take(Session& session, std::string_view step) {
    World& world = session.scene.world;
    const std::size_t seat = step.empty() ? 0 : static_cast<unsigned char>(step.back()) % 4;
    if (step == "r")
        Round(world);
    else if (step == "b")
        Beat(world);
    else if (step.starts_with('x'))
        Lose(world, PlayerAt(session, seat));
    else if (!step.empty() && step[0] >= '0' && step[0] <= '3')
        Receive(world, PlayerAt(session, static_cast<std::size_t>(step[0] - '0')), step.substr(1));
    for (auto& [id, player] : world.players) {
        Send(world, player);
        MustBeSound(world, player);
    }
    Must(world.dropped.size() <= MaxDropped && world.book.size() <= MaxNames);
}

void Play(unsigned seed, const std::string& text) {
    Session session;
    session.scene.world.roll = Dice(seed);
    session.scene.world.soundRoot = "http://127.0.0.1:1/sounds/";
    std::vector<std::string> steps = Pieces(text);
    steps.resize(std::min(steps.size(), kMostSteps));
    for (const std::string& step : steps)
        Take(session, step);
    Must(ParseBook(FormatBook(session.scene.world.book)) == session.scene.world.book);
}

} // namespace
} // namespace world

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
    if (count > 0)
        world::Play(bytes[0], Text(bytes + 1, count - 1));
    return 0;
}
