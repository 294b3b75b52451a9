#!/usr/bin/env python3
"""Holds the manual's page of messages to the messages in the sources.

Every text that the client shows in a box, a notice, a status or on the console has a row in
docs/manual/messages.html, and every row there is such a text. A part that differs from time to time
is written "..." in the row. Run with the source folder.
"""
import collections
import html
import pathlib
import re
import sys

FOLDERS = ["app", "automation", "base", "browser", "config", "net", "sound", "terminal", "ui",
           "demo"]

# What shows a text, and which of its arguments the text is.
FUNCTIONS = {
    "ShowMessage": 0, "RefuseLine": 0, "getText": 2,                         # boxes
    "Fail": 0, "DownloadErrors": 0, "PlainBox": 0,                           # boxes of downloads
    "ShowNotice": 0, "RaiseNumber": 1, "Check": 1,                           # notices
    "Panel": 0, "SetPanel": 1, "AppendStatus": 0, "ShowWork": 0,             # statuses
    "SetCaption": 1,                                                         # the splash's too
    "runtime_error": 0,                                                      # of the world's start
}

# Arguments that hold no text of their own: the file, the argument, and what is shown for it. Nothing
# stands where the texts are found elsewhere: a function that hands on what its callers say.
SHOWN = {
    ("app/MainFrame.cpp", "Notice"): [],
    ("app/StartUp.cpp", "Splash.dots"): [],
    ("app/StartUp.cpp", "stage->Status"): [],
    ("automation/MacroFiles.cpp", "ShownLine(line)"): ["(a line of a file)"],
    ("automation/MacroFiles.cpp", "ShownLine(value)"): ["(a part of a line)"],
    ("automation/MacroFiles.cpp", "set"): [],
    ("base/Notice.cpp", "text"): [],
    ("browser/Browser.cpp", 'WorkText + ".."'): [],
    ("browser/Browser.cpp", "wbrScreen::LocationName()"): ["(the name of a web page)"],
    ("config/ClientConfig.cpp", "ShownLine(line)"): ["(a line of a file)"],
    ("config/ClientConfig.cpp", "message"): [],
    ("config/MRegistry.cpp", "description"): [],
    ("config/MudList.cpp", "line"): [],
    ("config/MudList.cpp", "ShownLine(line)"): ["(a line of a file)"],
    ("demo/Book.cpp", "file.errorString().toStdString()"): ["(a reason of the system's)"],
    ("net/Connection.cpp", "text"): ["00:00:00"],
    ("net/http/FileDownloader.cpp", "std::string(refusal->Text)"): [],
    ("net/http/FileDownloader.cpp", "text"): [],
    ("net/http/FileDownloader.cpp", "PathText(Destination)"): ["(the path of a file)"],
    ("net/http/VersionCheck.cpp", "DottedVersion(kOwnVersion)"): [],
    ("net/http/VersionCheck.cpp", "PublishedVersion"): [],
    ("ui/qt/GameSocket.cpp", "kBadAddress"): [],
    ("ui/qt/GameSocket.cpp", "kNoBuffers"): [],
    ("ui/qt/GameSocket.cpp", "kReset"): [],
    ("ui/qt/GameSocket.cpp", "row.Number"): [],
    # Of a town that is written wrong: it is built in and tested.
    ("demo/Town.cpp", '"line " + std::to_string(line) + ": " + why'): [],
    ("demo/Town.cpp", '"there is no room"'): [],
    ("demo/Town.cpp", '"the town is not built in"'): [],
    ("ui/qt/EventBoundary.cpp",
     '"Run-time error " + std::to_string(error.Number) + ": " + error.Description'): [],
    ("net/Connection.cpp",
     '"Error: " + std::to_string(number) + " " + std::string(description)'): [],
    ("demo/Server.cpp", "refused or connected"): ["connected ...", "refused ..."],
}

# Tables of texts: the file, a row's form, and what is shown of the row.
TABLES = [
    ("net/http/FileDownloader.cpp", r'\{"\d+", "(?P<text>.*)"\},', "{text}"),
    ("app/StartUp.cpp", r'\{\w+, "(?P<text>.*?)", (true|false), \w+, \w+\},', "{text}"),
    ("ui/qt/GameSocket.cpp", r'\{\S+, (?P<number>\w+), "(?P<text>.*)"\}', "Error: {number} {text}"),
    ("ui/qt/GameSocket.cpp", r'Fail\((?P<number>\w+), tr\("(?P<text>.*)"\)\)',
     "Error: {number} {text}"),
    ("base/Error.cpp", r'case (?P<number>\w+):\s+return "(?P<text>.*)";',
     "Run-time error {number}: {text}"),
    ("terminal/Incoming.cpp", r'PendingBreaks = "(?P<text>.*)";', "{text}"),
]
# What the tables call by name.
NUMBERS = [("ui/qt/GameSocket.cpp", r"constexpr int (\w+) = (\d+);"),
           ("base/Error.h", r"^    (\w+) = (\d+),$")]

# Where texts may reach the player beside the functions above.
DOORS = r"\b(QMessageBox|QInputDialog|QErrorMessage|QWhatsThis|QProgressDialog|QSystemTrayIcon" \
        r"|showText|showMessage|cerr|cout|clog|q(?:Debug|Info|Warning|Critical|Fatal)" \
        r"|f?printf|f?puts|perror|throw Error)\b"
KNOWN_DOORS = {
    "base/Error.cpp": {"throw Error": 1},
    "config/MRegistry.cpp": {"throw Error": 1},
    "ui/qt/MessageBox.cpp": {"QMessageBox": 5},
    "net/http/frmDownload.cpp": {"QMessageBox": 6},
    "automation/frmMacros.cpp": {"QInputDialog": 2},
    "demo/Server.cpp": {"cerr": 2},
    "demo/main.cpp": {"cerr": 4, "cout": 1},
}

# Rows of the page that the libraries say and not the sources.
OF_LIBRARIES = {
    "Unknown option '...'.",
    "Missing value after '...'.",
    "Unexpected value after '...'.",
    "qt.qpa.xcb: could not connect to display ...",
}

LITERAL = r'"(?:[^"\\]|\\.)*"'
DECLARED = r"(?:const )?[\w:]+[&*]* \w+"  # an argument where a function is declared


def without_comments(source):
    keep = re.compile(LITERAL + r"|'(?:[^'\\]|\\.)*'|R\"\((?:.|\n)*?\)\"|//[^\n]*")
    return keep.sub(lambda m: "" if m.group().startswith("//") else m.group(), source)


def arguments(source, start):
    """The arguments of a call whose "(" ends at start, at its top level, and where it ends."""
    parts, depth, at = [""], 0, start
    piece = re.compile(LITERAL + r"|'(?:[^'\\]|\\.)*'|.", re.S)
    while True:
        token = piece.match(source, at).group()
        at += len(token)
        if token in "([{":
            depth += 1
        elif token in ")]}":
            depth -= 1
        if depth < 0:
            return [" ".join(part.split()) for part in parts], at
        if token == "," and depth == 0:
            parts.append("")
        else:
            parts[-1] += token


def spoken(expression):
    """The texts of an expression: its literals, with "..." for what lies between."""
    either = re.fullmatch(rf'[^"]* \? ({LITERAL}) : ({LITERAL})', expression)
    if either:
        return [literal[1:-1] for literal in either.groups()]
    text = ""
    for token in re.findall(LITERAL + r"|'(?:[^'\\]|\\.)*'|[^\"']+", expression):
        if token[0] in "\"'":
            text += token[1:-1].encode().decode("unicode_escape")
        elif re.search(r"\w", re.sub(r"std::(string|flush)\b|\b(?:frm\w+::)?tr\b", "", token)):
            text += "..."
    return [" ".join(text.split())]


def values(source, name):
    """What a text of that name is set to, or what a function of that name returns."""
    called = re.match(r"(\w+)\(", name)
    if called:
        body = re.search(rf"\b{called.group(1)}\([^;{{}}]*\) {{\n(.*?)\n}}\n", source, re.S)
        return re.findall(r"\breturn (.*?);", body.group(1), re.S) if body else []
    return re.findall(rf"\b{name} \+?= (.*?);", source, re.S) if name.isidentifier() else []


MET = set()  # of SHOWN


def texts_of(file, source, argument):
    """None when nothing is known of the argument."""
    if (file, argument) in SHOWN:
        MET.add((file, argument))
        return SHOWN[file, argument]
    if '"' in argument:
        return spoken(argument)
    texts = []
    for value in values(source, argument):
        if '"' in value:
            texts += spoken(value)
        elif value not in ("nullptr", argument) and not value.isidentifier():
            texts += texts_of(file, source, " ".join(value.split())) or []
    return texts or None


def calls(source):
    for name, place in FUNCTIONS.items():
        for call in re.finditer(rf"(?:\b(\w+)[ &*]+)?(?<!\w){name}\(", source):
            if call.group(1) in (None, "return", "else", "throw"):
                found, _ = arguments(source, call.end())
                if len(found) > place and not re.fullmatch(DECLARED, found[place]):
                    yield found[place]
    for line in re.finditer(r"std::(?:cerr|cout) << (.*?);", source, re.S):
        yield "refused or connected" if " ? " in line.group(1) else \
            " ".join(re.sub(r" << (std::flush|'\\n')", "", line.group(1)).split())


def rows_of_tables(root):
    numbers = {}
    for file, form in NUMBERS:
        numbers.update(re.findall(form, (root / file).read_text(), re.M))
    for file, form, shown in TABLES:
        rows = list(re.finditer(form, (root / file).read_text()))
        if not rows:
            yield file, None
        for row in rows:
            parts = row.groupdict()
            parts["number"] = numbers.get(parts.get("number"), parts.get("number"))
            yield file, shown.format(**parts)


def messages(root, faults):
    found = {}
    for folder in FOLDERS:
        for path in sorted((root / folder).rglob("*.[ch]*")):
            file, source = path.relative_to(root).as_posix(), without_comments(path.read_text())
            doors = collections.Counter(re.findall(DOORS, re.sub(LITERAL, '""', source)))
            for door in doors - collections.Counter(KNOWN_DOORS.get(file, {})):
                faults.append(f"{file}: {door} is a way to the player of which this test does not know")
            for argument in calls(source):
                texts = texts_of(file, source, argument)
                if texts is None:
                    faults.append(f"{file}: what is shown for {argument} can't be told")
                for text in filter(None, texts or []):
                    found.setdefault(text, file)
    for file, argument in SHOWN.keys() - MET:
        faults.append(f"{file}: {argument} stands in the table of this test alone")
    for file, text in rows_of_tables(root):
        if text is None:
            faults.append(f"{file}: its table of texts is not found")
        else:
            found.setdefault(text, file)
    return found


def entries(page):
    return [" ".join(html.unescape(re.sub(r"<[^>]*>", "", cell)).split())
            for cell in re.findall(r"<tr>\s*<td>(.*?)</td>", page, re.S)]


def main(root):
    faults = []
    found = messages(root, faults)
    rows = entries((root / "docs/manual/messages.html").read_text())
    for text, file in found.items():
        if text not in rows:
            faults.append(f"{file}: no row in messages.html for: {text}")
    for row in rows:
        if row not in found and row not in OF_LIBRARIES:
            faults.append(f"messages.html: the sources show no: {row}")
    for row in sorted({row for row in rows if rows.count(row) > 1}):
        faults.append(f"messages.html: more than one row for: {row}")
    print("\n".join(faults) or f"{len(found)} messages, each with its row")
    return 1 if faults else 0


sys.exit(main(pathlib.Path(sys.argv[1])))
