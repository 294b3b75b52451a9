#!/usr/bin/env python3
"""Installs a build below a folder and looks at what is there.

Usage: install_test.py CMAKE BUILD FOLDER PAGE_VIEW_FOLDER
Leaves the installation in FOLDER/usr and the archive's folder in FOLDER/portable.
"""
import os
import pathlib
import shutil
import struct
import subprocess
import sys
import tempfile
import time
import unittest

HERE = pathlib.Path(__file__).resolve().parent
SOURCE = HERE.parent.parent
CMAKE, BUILD = sys.argv[1:3]
STAGE = pathlib.Path(sys.argv[3])
PAGE_VIEW_FOLDER = sys.argv[4]
INSTALLED = STAGE / "usr"
PORTABLE = STAGE / "portable"
LIMIT = 30  # seconds; far longer than a start takes on a busy machine


def setUpModule():
    shutil.rmtree(STAGE, ignore_errors=True)
    install(["--prefix", "/usr"], DESTDIR=str(STAGE))
    install(["--prefix", str(PORTABLE), "--component", "portable"])


def install(options, **variables):
    subprocess.run([CMAKE, "--install", BUILD, *options], check=True, stdout=subprocess.DEVNULL,
                   env=os.environ | variables)


def files_below(folder):
    """Files, and with a slash at the end the folders that are empty."""
    found = []
    for path in folder.rglob("*"):
        name = path.relative_to(folder).as_posix()
        if not path.is_dir():
            found.append(name)
        elif not any(path.iterdir()):
            found.append(name + "/")
    return sorted(found)


def listed(name):
    return (HERE / name).read_text().splitlines()


def binaries():
    files = [path for path in STAGE.rglob("*") if path.is_file()]
    return [path for path in files if path.read_bytes().startswith(b"\x7fELF")]


def brings_search_path(binary):
    dynamic = subprocess.run(["readelf", "-d", binary], check=True, capture_output=True).stdout
    assert b"(NEEDED)" in dynamic
    return b"(RPATH)" in dynamic or b"(RUNPATH)" in dynamic


class Installation(unittest.TestCase):
    maxDiff = None

    def test_has_the_listed_files_and_no_others(self):
        expected = [name.replace("lib/quillmere/", PAGE_VIEW_FOLDER + "/")
                    for name in listed("installed.txt")]
        expected += [f"share/man/man6/{page.name}.gz" for page in SOURCE.glob("docs/man/*.6")]
        self.assertEqual(files_below(INSTALLED), sorted(expected))

    def test_has_nothing_outside_its_prefix(self):
        self.assertEqual(sorted(os.listdir(STAGE)), ["portable", "usr"])

    def test_has_icons_of_their_folders_sizes(self):
        icons = list(INSTALLED.glob("share/icons/hicolor/*/apps/*.png"))
        self.assertEqual(len(icons), 6)
        for icon in icons:
            width, height = struct.unpack(">II", icon.read_bytes()[16:24])
            self.assertEqual(f"{width}x{height}", icon.parts[-3])


class Binaries(unittest.TestCase):
    def setUp(self):
        self.assertEqual(len(binaries()), 6)

    def test_bring_no_search_path_for_libraries(self):
        self.assertEqual([path for path in binaries() if brings_search_path(path)], [])

    def test_do_not_tell_where_they_were_built(self):
        place = os.fsencode(SOURCE) + b"/"
        self.assertEqual([path for path in binaries() if place in path.read_bytes()], [])

    def test_hold_no_times_with_their_resources(self):
        sources = [path.read_text() for path in pathlib.Path(BUILD).rglob(".rcc/qrc_*.cpp")]
        self.assertTrue(sources)
        for source in sources:
            self.assertIn("int version = 1;", source)


class PortableFolder(unittest.TestCase):
    def test_has_the_listed_files_and_no_others(self):
        self.assertEqual(files_below(PORTABLE), listed("portable.txt"))

    def test_keeps_what_the_client_writes(self):
        with tempfile.TemporaryDirectory() as home:
            folder = pathlib.Path(home, "anywhere")
            shutil.copytree(PORTABLE, folder)
            self.start_once(folder / "quillmere", home)
            self.assertIn("client.cfg", files_below(folder / "Data"))
            self.assertFalse(pathlib.Path(home, ".local/share/quillmere").exists())

    def start_once(self, program, home):
        variables = {"HOME": home, "QT_QPA_PLATFORM": "offscreen", "LANG": "C.UTF-8",
                     "XDG_RUNTIME_DIR": home, "QUILLMERE_WEB_ROOT": "http://127.0.0.1:9"}
        client = subprocess.Popen([program], env=variables)
        try:
            self.wait_for(program.parent / "Macros/Default.mco")
            client.terminate()
            self.assertEqual(client.wait(LIMIT), 0)
        finally:
            client.kill()

    def wait_for(self, file):
        end = time.monotonic() + LIMIT
        while not file.exists() and time.monotonic() < end:
            time.sleep(0.05)
        self.assertTrue(file.exists(), file)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1], verbosity=2)
