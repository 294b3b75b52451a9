#!/usr/bin/env python3
"""Holds the manual and the man pages together, and to what they tell of.

Links, anchors and pictures lead somewhere, and every file of docs/manual is reached from its first
page; pictures are small, and those that are made anew; colours that are hard to read on black stand
in the table of fonts.html; options stand in the man pages. Run with the source folder.
"""
import html
import pathlib
import re
import struct
import sys

WIDEST = 800         # pixels of a picture: what the help window shows without a bar
LARGEST = 40 * 1024  # bytes of a picture
STYLE = '<link rel="stylesheet" type="text/css" href="manual.css">'  # the help window wants the type
LEAST_CONTRAST = 3   # WCAG 2.1, for large text


def links(page):
    return re.findall(r'<(?:a|img|link)\b[^>]*?\b(?:href|src)="([^"]*)"', page)


def anchors(page):
    return re.findall(r'\b(?:id|name)="([^"]*)"', page)


def faults_of_links(folder):
    files = {path.relative_to(folder).as_posix() for path in folder.rglob("*") if path.is_file()}
    reached, left = {"index.html"}, ["index.html"]
    while left:
        name = left.pop()
        page = (folder / name).read_text()
        if name.endswith(".html") and STYLE not in page:
            yield f"{name}: has not {STYLE}"
        for link in links(page):
            target, _, anchor = link.partition("#")
            target = target or name
            if target not in files:
                yield f"{name}: {link} is not there"
                continue
            if anchor and anchor not in anchors((folder / target).read_text()):
                yield f"{name}: {link} has no such place"
            if target not in reached and target.endswith(".html"):
                left.append(target)
            reached.add(target)
        for image in re.findall(r"<img\b[^>]*>", page):
            if not re.search(r'\balt="[^"]+"', image):
                yield f"{name}: {image} tells nothing to those who don't see it"
    for name in sorted(files - reached):
        yield f"{name}: no link leads there"


def faults_of_pictures(root):
    source = (root / "tests/journeys/ManualJourney.cpp").read_text()
    made = {f"{name}.png" for name in re.findall(r'\bPicture\w*\("([\w-]+)"', source)}
    there = {path.name for path in (root / "docs/manual").glob("*.png")}
    for name in sorted(made ^ there):
        yield f"{name}: made and not there" if name in made else f"{name}: there and never made"
    for name in sorted(there):
        picture = (root / "docs/manual" / name).read_bytes()
        width, _, _, kind = struct.unpack(">IIBB", picture[16:26])
        if width > WIDEST or len(picture) > LARGEST or kind != 3:
            yield f"{name}: {width} pixels wide, {len(picture)} bytes, " \
                  f"{'a' if kind == 3 else 'no'} palette"


def luminance(channels):
    linear = [c / 255 / 12.92 if c / 255 <= 0.04045 else ((c / 255 + 0.055) / 1.055) ** 2.4
              for c in channels]
    return sum(part * weight for part, weight in zip(linear, (0.2126, 0.7152, 0.0722)))


def contrast_on_black(channels):
    return (luminance(channels) + 0.05) / 0.05


def faults_of_colours(root):
    slots = re.findall(r"Rgb\((\d+), (\d+), (\d+)\), +// (\w+)",
                       (root / "config/Palette.h").read_text())
    named = {slot: name for name, slot in
             re.findall(r'\{"\w+", "([^"]+)", (\w+)\}', (root / "config/Setup.h").read_text())}
    page = (root / "docs/manual/fonts.html").read_text()
    table = re.search(r'name="contrast".*?</table>', page, re.S).group()
    told = {row[0]: (row[1], html.unescape(re.sub("<[^>]*>", "", row[2]))) for row in
            re.findall(r"<tr><td>(.*?)</td>\s*<td>(.*?)</td>\s*<td>(.*?)</td></tr>", table, re.S)}
    if len(slots) != 17 or len(named) != 15:
        yield f"{len(slots)} colours of the palette and {len(named)} of Fonts Setup are found"
    dim = {}
    for *channels, slot in slots:
        contrast = contrast_on_black(list(map(int, channels)))
        if contrast < LEAST_CONTRAST:
            dim[named.get(slot, slot.removeprefix("Mw"))] = (f"{contrast:.1f}", slot)
    for name in sorted(dim.keys() ^ told.keys()):
        yield f"fonts.html: {name} is {'missing' if name in dim else 'no dim colour'}"
    for name in dim.keys() & told.keys():
        contrast, slot = dim[name]
        change = "Fonts Setup" if slot in named else f"{slot}="
        if told[name][0] != contrast or change not in told[name][1]:
            yield f"fonts.html: {name} has {contrast}, and is changed by {change}"


def options(source):
    found = set(re.findall(r'QCommandLineOption \w+\(\s*"([\w-]+)"', source))
    found |= set(re.findall(r'^ +\{"([\w-]+)", "', source, re.M))
    found |= {"help"} if "addHelpOption" in source else set()
    return found | ({"version"} if "addVersionOption" in source else set())


def faults_of_man_pages(root):
    for page, source in [("quillmere", "app/main.cpp"), ("quillmere-world", "demo/main.cpp")]:
        text = (root / f"docs/man/{page}.6").read_text()
        told = set(re.findall(r"^\.It (?:Fl \w , )?Fl -([\w-]+)", text, re.M))
        for name in sorted(told ^ options((root / source).read_text())):
            yield f"{page}.6: --{name} is {'no option' if name in told else 'missing'}"


def main(root):
    faults = [*faults_of_links(root / "docs/manual"), *faults_of_pictures(root),
              *faults_of_colours(root), *faults_of_man_pages(root)]
    print("\n".join(faults) or "the manual holds together")
    return 1 if faults else 0


sys.exit(main(pathlib.Path(sys.argv[1])))
