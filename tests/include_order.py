#!/usr/bin/env python3
"""Holds the includes of the client to the order of its floors.

A file may include what stands on its own floor or on one before it. Run with the source folder.
"""
import pathlib
import re
import sys

FLOORS = [
    ["ui/"],
    ["base/", "config/Palette", "config/MakerAddresses"],
    ["config/FileHandler", "config/MRegistry"],
    ["app/Placement", "browser/Browser", "config/Setup", "config/MudList", "automation/Macros", "automation/MacroFiles"],
    ["config/ClientConfig", "config/MudChooser"],
    ["net/http/FileDownloader", "net/http/WebBoxes", "sound/SoundOptions", "sound/WaveFile"],
    ["net/http/DownLoad"],
    ["sound/PlaySound"],
    ["automation/CommandBox", "net/Telnet", "net/Send"],
    ["automation/Aliases", "automation/TriggerFilter", "automation/TriggerMatcher", "automation/Triggers", "automation/MacroKeys"],
    ["terminal/AutoLog"],
    ["terminal/Output"],
    ["terminal/OutPutScroll", "terminal/IncomingBuffer"],
    ["terminal/Ansi", "sound/SoundTrigger"],
    ["terminal/Incoming"],
    ["net/Connection"],
    ["automation/CommandLine", "net/http/VersionCheck"],
    ["app/StartUp"],
    ["app/MainFrame"],
    ["automation/frmEntries", "config/frmAddMud"],
    ["app/frmAbout", "app/frmHelp", "app/frmStartUp", "automation/frmInput", "automation/frmAlias",
     "automation/frmTrigger", "automation/frmMacros", "browser/frmBrowser",
     "config/frmConnect", "config/frmSetup", "net/http/frmDownload",
     "net/http/frmUpdate", "sound/frmSndSetup", "sound/frmSound",
     "terminal/frmOutput"],
    ["app/frmMain"],
    ["app/main"],
]
FOLDERS = ["app", "automation", "base", "config", "net", "sound", "terminal", "ui", "browser"]
# The general Qt implementations stand outside the floors: forms use them, modules never.
QT = "ui/qt/"


def floor_of(name):
    stem = re.sub(r"\.(h|cpp)$", "", name)
    for number, floor in enumerate(FLOORS):
        if any(stem == entry or (entry.endswith("/") and stem.startswith(entry)) for entry in floor):
            return number
    return None


def is_module(name):
    return not re.search(r"/frm|^app/main\.cpp|^ui/(qt|webengine)/", name)


def faults(root):
    for folder in FOLDERS:
        for path in sorted((root / folder).rglob("*")):
            name = path.relative_to(root).as_posix()
            if path.suffix not in (".h", ".cpp"):
                continue
            own = floor_of(name)
            if own is None:
                yield f"{name}: stands on no floor"
                continue
            for included in re.findall(r'#include "([^"]+)"', path.read_text()):
                if included.startswith(QT):
                    if is_module(name):
                        yield f"{name}: a module includes {included}"
                    continue
                below = floor_of(included)
                if below is None:
                    yield f"{name}: {included} stands on no floor"
                elif below > own and not name.startswith(QT):
                    yield f"{name}: includes {included}, which stands above it"
                elif name.startswith(QT) and below > floor_of("base/Error.h"):
                    yield f"{name}: looks up to {included}"


found = list(faults(pathlib.Path(sys.argv[1])))
print("\n".join(found) or "every include goes down")
sys.exit(1 if found else 0)
