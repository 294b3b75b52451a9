// The road of received text as it is described, without a thought for speed: one character a step,
// every text looked for by itself, and every effect written down in order.
//
// The walk, the decoder, the append and the trigger check are compared with it. The sound trigger
// itself is read by ReadSoundTrigger, which has its own tests.
#pragma once

#include "automation/Macros.h"
#include "fakes/Fakes.h"
#include "sound/SoundTrigger.h"
#include "terminal/Incoming.h"
#include "terminal/Output.h"

#include <algorithm>
#include <map>
#include <random>
#include <sstream>
#include <string>
#include <vector>

namespace mw {

// An effect is a verb and its text, as the recorders write it. How many bytes are sent at once is
// of no account.
inline void AddEffect(std::vector<std::string>& effects, const std::string& effect) {
    constexpr std::string_view kSend = "Send ";
    if (!effects.empty() && effects.back().starts_with(kSend) && effect.starts_with(kSend))
        effects.back() += effect.substr(kSend.size());
    else
        effects.push_back(effect);
}

// What the client did, in the words of PlainRoad.
inline std::vector<std::string> Effects() {
    std::vector<std::string> effects;
    for (const std::string& call : fakes::Calls) {
        for (const char* kind :
             {"Append ", "RemoveFirst ", "Stop ", "Play ", "Send ", "Message "}) {
            if (call.starts_with(kind))
                AddEffect(effects, call);
        }
    }
    return effects;
}

// What game text is made of, and what it is cut into at the worst places.
inline std::string RandomText(std::mt19937& random, std::size_t most) {
    static const std::vector<std::string> kPieces = {
        "\x1b",
        "\x1b[",
        "m",
        "K",
        "\x1b[0;31m",
        "\x1b[1;31m",
        "\x1b[2K",
        "0",
        "1",
        ";",
        "30m",
        "31m",
        "\r",
        "\n",
        "\r\n",
        "!!SOUND(Off)",
        "!!MUSIC(Off)",
        "!!SOUND(",
        "!!MUSIC(",
        "!!SOUND",
        "!",
        "!!",
        "(Off)",
        ")",
        ".mid",
        ".wav",
        "V=8 ",
        "P=6 ",
        "U=x",
        "a",
        "b",
        " ",
        "\n!!SOUND(",
        "\n!!MUSIC(",
        "\x1b[0;1;31m",
    };
    std::string text;
    for (std::size_t i = random() % (most + 1); i > 0; --i)
        text += kPieces[random() % kPieces.size()];
    return text;
}

class PlainRoad {
public:
    std::vector<std::string> Effects;
    std::vector<TriggerEntry> Triggers = std::vector<TriggerEntry>(1);
    std::string Buffer;  // not walked yet
    std::string Pending; // no completed line yet
    std::string Box;
    bool LineStart = false;
    std::int32_t Colour = kPlainWhite;

    void Receive(const std::string& text) {
        Buffer += text;
        std::string breaks;
        std::string run;
        while (!Buffer.empty()) {
            if (Buffer[0] != '\x1b') {
                Step(breaks, run);
                continue;
            }
            LineStart = false;
            run += breaks;
            breaks.clear();
            AppendRun(run);
            run.clear();
            if (Decode())
                continue;
            if (Buffer.size() - 1 <= kLongestSequence) {
                while (Pending.find('\n') != std::string::npos)
                    AppendRun("");
                return;
            }
            Buffer.erase(0, 1);
        }
        if (!run.empty())
            AppendRun(run);
    }

private:
    void Step(std::string& breaks, std::string& run) {
        const char ch = Buffer[0];
        if (ch == '\r' || ch == '\n') {
            LineStart = true;
            breaks += ch;
            Buffer.erase(0, 1);
        } else if (Buffer.starts_with("!!SOUND(Off)") || Buffer.starts_with("!!MUSIC(Off)")) {
            Do(Buffer[2] == 'S' ? "Stop wave" : "Stop music");
            Buffer.erase(0, 12);
            LineStart = false;
        } else if (LineStart && (Buffer.starts_with("!!SOUND") || Buffer.starts_with("!!MUSIC"))) {
            LineStart = false;
            if (!Play()) {
                run += breaks + ch;
                breaks = "False";
                Buffer.erase(0, 1);
            }
        } else {
            run += breaks + ch;
            breaks.clear();
            Buffer.erase(0, 1);
            LineStart = false;
        }
    }

    void Do(const std::string& effect) { AddEffect(Effects, effect); }

    void AppendRun(std::string text) {
        std::erase(text, '\r');
        Pending += text;
        if (Pending.find('\n') != std::string::npos)
            HandOn(Pending.find('\n') + 1);
        while (Pending.size() > kLongestPendingLine)
            HandOn(std::min(Pending.find('\n'), Pending.size() - 1) + 1);
        if (Box.size() > kLongestOutput) {
            Do("RemoveFirst " + std::to_string(Box.size() - kKeptOutput));
            Box.erase(0, Box.size() - kKeptOutput);
        }
        std::ostringstream effect;
        effect << "Append " << std::hex << Colour << ' ' << text;
        Do(effect.str());
        Box += text;
    }

    void HandOn(std::size_t length) {
        const std::string line = Pending.substr(0, length);
        Pending.erase(0, length);
        if (Triggers[0].Trigger.empty())
            return;
        for (const TriggerEntry& entry : Triggers) {
            if (line.find(entry.Trigger) == std::string::npos)
                continue;
            std::string sent = entry.React;
            std::replace(sent.begin(), sent.end(), ';', '\r');
            Do("Send " + sent + "\r");
        }
    }

    bool Decode() {
        Colour = Palette[MwWhite];
        std::size_t end = Buffer.find('m');
        if (end == std::string::npos)
            end = Buffer.find('K');
        if (end == std::string::npos)
            return false;
        std::string code;
        for (std::size_t i = 2; i <= end; ++i)
            code += Buffer[i];
        Buffer.erase(0, end + 1);
        // The rows that the pieces can spell.
        const std::map<std::string, Slot> colours = {
            {"30m", MwBlack},  {"0;30m", MwBlack},  {"0;0;30m", MwBlack}, {"0;1;30m", MwGrey},
            {"0;31m", MwLRed}, {"0;0;31m", MwLRed}, {"0;1;31m", MwBRed},  {"1;31m", MwGrey},
        };
        if (colours.contains(code))
            Colour = Palette[colours.at(code)];
        if (code == "2K")
            Do("Send SMWCLIENT\r");
        return true;
    }

    bool Play() {
        const SoundTrigger trigger = ReadSoundTrigger(Buffer);
        if (trigger.Length == 0)
            return false;
        const auto holds = [this](const char* text) {
            return Buffer.find(text) != std::string::npos;
        };
        const bool music = !holds("!!SOUND") || holds(".mid");
        const auto complete = [music](std::string name) {
            const char* const extension = music ? ".mid" : ".wav";
            return name.find(extension) == std::string::npos ? name + extension : name;
        };
        std::ostringstream effect;
        effect << "Play " << (music ? "music " : "wave ") << complete(trigger.FileName) << '|'
               << complete(trigger.Address) << '|' << trigger.Volume << '|' << trigger.Priority;
        Do(effect.str());
        Buffer.erase(0, trigger.Length);
        return true;
    }
};

} // namespace mw
