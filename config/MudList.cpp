#include "config/MudList.h"

#include "base/Error.h"
#include "base/Lines.h"
#include "base/Numbers.h"
#include "config/FileHandler.h"
#include "config/MakerAddresses.h"
#include "ui/MessageBox.h"

#include <algorithm>
#include <limits>

namespace mw {
namespace {

constexpr const char* kFile = "Data\\muds.lst";
constexpr const char* kMakersName = "Quillmere";

// Reads the seven lines of a record, by position: only what stands after the "=" counts.
void ReadRecord(LineReader& reader, std::size_t& counter, std::vector<MudEntry>& muds) {
    const std::string nameLine = ReadLine(reader);
    if (counter == 0 && !ContainsText(nameLine, kMakersName))
        counter = 1; // entry 0 stays the maker's own
    muds.resize(std::max(muds.size(), counter + 1));
    MudEntry& mud = muds[counter];
    mud.Name = ValueAfterEquals(nameLine);
    mud.Address = ValueAfterEquals(ReadLine(reader));
    mud.Port = ToInt16(ValueAfterEquals(ReadLine(reader)));
    mud.SndD = ToBoolean(ValueAfterEquals(ReadLine(reader)));
    mud.SndM = ToBoolean(ValueAfterEquals(ReadLine(reader)));
    mud.Msp = ToBoolean(ValueAfterEquals(ReadLine(reader)));
    // Meant: the seventh line lands in entry 0, whichever record it belongs to.
    muds[0].SndW = ToBoolean(ValueAfterEquals(ReadLine(reader)));
}

[[noreturn]] void RefuseLine(const std::string& line) {
    ShowMessage("An error has occured loading the mud list");
    ShowMessage(ShownLine(line));
    throw EndProgram{};
}

} // namespace

std::vector<MudEntry> DefaultMudList() {
    MudEntry entry;
    entry.Name = "Quillmere";
    entry.Address = GameHost();
    entry.Port = 1234;
    return {entry};
}

const MudEntry& MudAt(std::int16_t index) {
    if (index < 0 || static_cast<std::size_t>(index) >= MudList.size())
        Raise(SubscriptOutOfRange, "MudList");
    return MudList[static_cast<std::size_t>(index)];
}

std::string FormatMudList(const std::vector<MudEntry>& muds) {
    std::string text;
    const auto appendSwitch = [&text](const char* key, bool value) {
        AppendLine(text, key + std::string(BooleanText(value)));
    };
    for (const MudEntry& mud : muds) {
        AppendLine(text, "[Mud]");
        AppendLine(text, "Mud=" + mud.Name);
        AppendLine(text, "Addy=" + mud.Address);
        AppendLine(text, "Port=" + std::to_string(mud.Port));
        appendSwitch("SndD=", mud.SndD);
        appendSwitch("SndM=", mud.SndM);
        appendSwitch("Msp=", mud.Msp);
        appendSwitch("SndW=", mud.SndW);
    }
    AppendLine(text, "[End]");
    return text;
}

std::vector<MudEntry> ParseMudList(std::string_view text, std::vector<MudEntry> muds) {
    LineReader reader{text};
    std::string line = ReadLine(reader);
    for (std::size_t counter = 0; !AtEnd(reader); ++counter) {
        if (line.starts_with("[End]"))
            break;
        if (!line.starts_with("[Mud]"))
            RefuseLine(line);
        if (counter > std::numeric_limits<std::int16_t>::max())
            Raise(Overflow, "ParseMudList");
        ReadRecord(reader, counter, muds);
        if (!AtEnd(reader))
            line = ReadLine(reader);
    }
    return muds;
}

void LoadMudList() {
    if (IsAbsent(kFile))
        SaveMudList();
    else
        MudList = ParseMudList(ReadFile(kFile), MudList);
}

void SaveMudList() { WriteFile(kFile, FormatMudList(MudList)); }

void MakeGameFolders(const std::string& name) {
    if (!IsFolderName(name) || Exists("", name))
        return;
    MakeFolder(name);
    MakeFolder(name + "\\sounds");
}

void ResetMudList() {
    MudList = DefaultMudList();
    CurrentMud = 0;
}

} // namespace mw
