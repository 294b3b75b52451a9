#include "Telnet.h"

#include <initializer_list>
#include <utility>

namespace world {
namespace {

enum : std::uint8_t {
    kIs = 0,
    kSend = 1,
    kEcho = 1,
    kTerminalType = 24,
    kWindowSize = 31,
    kSounds = 90,
    kSubEnd = 240,
    kSubBegin = 250,
    kWill = 251,
    kWont = 252,
    kDo = 253,
    kDont = 254,
    kIac = 255,
};

constexpr std::size_t kMaxTerminalName = 40;

std::string Bytes(std::initializer_list<std::uint8_t> bytes) {
    std::string text;
    for (const std::uint8_t byte : bytes)
        text += static_cast<char>(byte);
    return text;
}

bool IsWanted(std::uint8_t option) { return option == kTerminalType || option == kWindowSize; }

// WILL: the other end offers an option, or agrees to one that was asked for.
std::string OnWill(OptionState& state, std::uint8_t option) {
    const OptionState before = state;
    state = IsWanted(option) ? OptionState::On : OptionState::Refused;
    if (before == state)
        return {};
    if (state == OptionState::Refused)
        return Bytes({kIac, kDont, option});
    std::string reply;
    if (before != OptionState::Asked)
        reply = Bytes({kIac, kDo, option});
    if (option == kTerminalType)
        reply += Bytes({kIac, kSubBegin, kTerminalType, kSend, kIac, kSubEnd});
    return reply;
}

// DO: the other end asks for an option, or agrees to one that was offered.
std::string OnDo(OptionState& state, std::uint8_t option) {
    if (state == OptionState::Asked)
        state = OptionState::On;
    if (state != OptionState::Off)
        return {};
    state = OptionState::Refused;
    return Bytes({kIac, kWont, option});
}

// DONT and WONT: the option ends, or is refused. Only one that was in force needs a word of
// agreement.
std::string OnEnd(OptionState& state, std::uint8_t agreement, std::uint8_t option) {
    const OptionState before = state;
    state = before == OptionState::Asked ? OptionState::Refused : OptionState::Off;
    return before == OptionState::On ? Bytes({kIac, agreement, option}) : std::string{};
}

std::string OnOption(Telnet& telnet, std::uint8_t option) {
    switch (telnet.verb) {
    case kWill:
        return OnWill(telnet.theirs[option], option);
    case kWont:
        return OnEnd(telnet.theirs[option], kDont, option);
    case kDo:
        return OnDo(telnet.ours[option], option);
    default:
        return OnEnd(telnet.ours[option], kWont, option);
    }
}

void TakeTerminalName(Telnet& telnet, std::string_view name) {
    telnet.terminal.clear();
    for (const char c : name) {
        if (c > ' ' && c <= '~' && telnet.terminal.size() < kMaxTerminalName)
            telnet.terminal += c;
    }
}

// A terminal type comes with or without its option byte: the client sends IS and the name alone.
void OnSubnegotiation(Telnet& telnet) {
    std::string_view sub = telnet.sub;
    if (sub.size() >= 3 && sub[0] == static_cast<char>(kWindowSize)) {
        telnet.columns =
            static_cast<std::uint8_t>(sub[1]) * 256 + static_cast<std::uint8_t>(sub[2]);
        return;
    }
    if (sub.starts_with(static_cast<char>(kTerminalType)))
        sub.remove_prefix(1);
    if (sub.starts_with(static_cast<char>(kIs)))
        TakeTerminalName(telnet, sub.substr(1));
}

void EndLine(Telnet& telnet, TelnetInput& input) {
    input.lines.push_back(std::move(telnet.line));
    telnet.line.clear();
}

void OnData(Telnet& telnet, TelnetInput& input, std::uint8_t byte) {
    const bool afterCr = telnet.afterCr;
    telnet.afterCr = byte == '\r';
    if (byte == '\r' || (byte == '\n' && !afterCr))
        EndLine(telnet, input);
    else if (byte != '\n' && byte != 0 && telnet.line.size() < MaxLine)
        telnet.line += static_cast<char>(byte);
}

void OnSubByte(Telnet& telnet, std::uint8_t byte) {
    if (telnet.sub.size() < MaxSubnegotiation)
        telnet.sub += static_cast<char>(byte);
}

void OnCommand(Telnet& telnet, TelnetInput& input, std::uint8_t byte) {
    telnet.stage = Telnet::Stage::Data;
    if (byte == kIac) {
        OnData(telnet, input, byte);
    } else if (byte >= kWill) {
        telnet.verb = byte;
        telnet.stage = Telnet::Stage::Option;
    } else if (byte == kSubBegin) {
        telnet.sub.clear();
        telnet.stage = Telnet::Stage::Sub;
    }
}

// IAC and anything but SE or IAC ends a sub-negotiation that was cut short; the command counts.
void OnSubCommand(Telnet& telnet, TelnetInput& input, std::uint8_t byte) {
    if (byte == kIac) {
        OnSubByte(telnet, byte);
        telnet.stage = Telnet::Stage::Sub;
    } else if (byte == kSubEnd) {
        OnSubnegotiation(telnet);
        telnet.stage = Telnet::Stage::Data;
    } else {
        OnCommand(telnet, input, byte);
    }
}

void OnByte(Telnet& telnet, TelnetInput& input, std::uint8_t byte) {
    switch (telnet.stage) {
    case Telnet::Stage::Data:
        if (byte == kIac)
            telnet.stage = Telnet::Stage::Command;
        else
            OnData(telnet, input, byte);
        break;
    case Telnet::Stage::Command:
        OnCommand(telnet, input, byte);
        break;
    case Telnet::Stage::Option:
        telnet.stage = Telnet::Stage::Data;
        input.replies += OnOption(telnet, byte);
        break;
    case Telnet::Stage::Sub:
        if (byte == kIac)
            telnet.stage = Telnet::Stage::SubCommand;
        else
            OnSubByte(telnet, byte);
        break;
    case Telnet::Stage::SubCommand:
        OnSubCommand(telnet, input, byte);
        break;
    }
}

} // namespace

bool TakesSounds(const Telnet& telnet) { return telnet.ours[kSounds] == OptionState::On; }

std::string Opening(Telnet& telnet) {
    telnet.theirs[kTerminalType] = OptionState::Asked;
    telnet.theirs[kWindowSize] = OptionState::Asked;
    telnet.ours[kSounds] = OptionState::Asked;
    return Bytes({kIac, kDo, kTerminalType, kIac, kDo, kWindowSize, kIac, kWill, kSounds});
}

std::string HideTyping(Telnet& telnet, bool hide) {
    if (hide == telnet.hidesTyping)
        return {};
    telnet.hidesTyping = hide;
    OptionState& echo = telnet.ours[kEcho];
    const bool wasOffered = echo == OptionState::Asked || echo == OptionState::On;
    if (hide == wasOffered)
        return {};
    echo = hide ? OptionState::Asked : OptionState::Off;
    return Bytes({kIac, hide ? kWill : kWont, kEcho});
}

TelnetInput Decode(Telnet& telnet, std::string_view bytes) {
    TelnetInput input;
    for (const char byte : bytes)
        OnByte(telnet, input, static_cast<std::uint8_t>(byte));
    return input;
}

} // namespace world
