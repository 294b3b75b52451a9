#include "sound/SoundTrigger.h"

#include "base/Error.h"
#include "base/Numbers.h"
#include "sound/PlaySound.h"
#include "terminal/IncomingBuffer.h"
#include "ui/MessageBox.h"

namespace mw {
namespace {

constexpr std::size_t kOpeningLength = 8; // of "!!SOUND(" and "!!MUSIC("

enum class State { None, Name, Volume, Loop, Priority, Type, Address };

struct Scan {
    SoundTrigger Trigger;
    State Now = State::Name;
    std::string VolumeText;
    std::string PriorityText;
};

// The number in text, or unchanged when it is none or does not fit: a server's bytes raise nothing.
template <typename Integer>
void Convert(const std::string& text, Integer (*convert)(std::string_view), Integer& value) {
    if (!IsNumeric(text))
        return;
    try {
        value = convert(text);
    } catch (const Error&) {
        return;
    }
}

void TakeBlank(Scan& scan) {
    if (scan.Now == State::Priority) {
        Convert(scan.PriorityText, ToInt16, scan.Trigger.Priority); // meant: the state stays
        return;
    }
    if (scan.Now == State::Volume)
        Convert(scan.VolumeText, ToInt32, scan.Trigger.Volume);
    scan.Now = State::None;
}

// Meant: these letters start their parameter wherever they stand, inside a file name too.
void ChangeState(Scan& scan, char ch) {
    switch (ch) {
    case 'V':
        scan.Now = State::Volume;
        break;
    case 'L':
        scan.Now = State::Loop;
        break;
    case 'P':
        scan.Now = State::Priority;
        break;
    case 'T':
        scan.Now = State::Type;
        break;
    case 'U':
        scan.Now = State::Address;
        break;
    case ' ':
        TakeBlank(scan);
        break;
    default:
        break;
    }
}

void AppendParameter(std::string& value, char ch, char ownLetter) {
    if (ch != ownLetter && ch != '=')
        value += ch;
}

void Collect(Scan& scan, char ch) {
    switch (scan.Now) {
    case State::Name:
        scan.Trigger.FileName += ch;
        break;
    case State::Volume:
        AppendParameter(scan.VolumeText, ch, 'V');
        break;
    case State::Priority:
        AppendParameter(scan.PriorityText, ch, 'P');
        break;
    case State::Type:
        AppendParameter(scan.Trigger.Type, ch, 'T');
        break;
    case State::Address:
        AppendParameter(scan.Trigger.Address, ch, 'U');
        break;
    case State::Loop:
    case State::None:
        break;
    }
}

enum class Kind { None, Wave, Music };

// Meant: the whole buffer is looked at, so that a ".mid" in later text makes a sound music.
Kind KindOfTrigger() {
    static Search soundWord{"!!SOUND"};
    static Search musicWord{"!!MUSIC"};
    static Search musicExtension{".mid"};
    const auto contains = [](Search& s) {
        return Find(IncomingBuffer, s) != std::string_view::npos;
    };
    if (contains(soundWord))
        return contains(musicExtension) ? Kind::Music : Kind::Wave;
    return contains(musicWord) ? Kind::Music : Kind::None;
}

std::string WithExtension(std::string name, std::string_view extension) {
    if (name.find(extension) == std::string::npos)
        name += extension;
    return name;
}

} // namespace

SoundTrigger ReadSoundTrigger(std::string_view text) {
    const std::size_t close = text.substr(0, kLongestTrigger).find(')', kOpeningLength);
    if (close == std::string_view::npos)
        return {};
    Scan scan;
    for (const char ch : text.substr(kOpeningLength, close - kOpeningLength)) {
        ChangeState(scan, ch);
        Collect(scan, ch);
    }
    // Behind the ")" line breaks and further ")" still belong to the trigger.
    const std::size_t end = text.find_first_not_of(")\r\n", close);
    scan.Trigger.Length = end == std::string_view::npos ? text.size() : end;
    return scan.Trigger;
}

bool ParseSoundTrigger() {
    const Kind kind = KindOfTrigger();
    if (kind == Kind::None)
        ShowMessage("File not recognised");
    const SoundTrigger trigger = ReadSoundTrigger(View(IncomingBuffer));
    if (trigger.Length == 0)
        return false;
    TakeFront(IncomingBuffer, trigger.Length);
    if (kind == Kind::None)
        return true;
    const std::string_view extension = kind == Kind::Music ? ".mid" : ".wav";
    const auto play = kind == Kind::Music ? PlayMusic : PlayWave;
    play(WithExtension(trigger.FileName, extension), WithExtension(trigger.Address, extension),
         trigger.Volume, trigger.Priority);
    return true;
}

} // namespace mw
