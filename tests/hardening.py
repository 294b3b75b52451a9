#!/usr/bin/env python3
"""Holds what is released to the protections that it is built with.

Usage: tests/hardening.py PROGRAM... A file whose name begins with "lib" is a module that a program
loads. What is looked for stands in the table below, as readelf writes it.
"""
import pathlib
import re
import subprocess
import sys

PROGRAMS = {"quillmere", "quillmere-world"}
ALL = PROGRAMS | {"module"}

# Who must (or must not) have what, and what it is when it is otherwise.
TABLE = [
    (ALL, True, r"^ +Type: +DYN\b", "lies at a fixed address"),
    (PROGRAMS, True, r"\(FLAGS_1\).*\bPIE\b", "is no position independent executable"),
    (ALL, True, r"^ +GNU_STACK( +0x\w+){5} RW +", "has an executable stack"),
    (ALL, True, r"^ +GNU_RELRO\b", "leaves its relocations writable"),
    (ALL, True, r"\(FLAGS_1\).*\bNOW\b", "leaves its table of functions writable"),
    (ALL, False, r"\((RPATH|RUNPATH)\)", "brings a search path for libraries"),
    (ALL, False, r"\(TEXTREL\)", "has code that is written to"),
    (ALL, True, r"\bUND __stack_chk_fail@", "has no guards on the stack"),
    ({"quillmere"}, True, r"\bUND __snprintf_chk@", "has no checked calls of the C library"),
]

# What the compiler puts into the code itself, on processors that know it.
X86 = "Advanced Micro Devices X86-64"
CODE = [
    (ALL, b"\xf3\x0f\x1e\xfa", 20, "has no marked targets of jumps"),  # endbr64
    (PROGRAMS, b"\x48\x83\x0c\x24\x00", 1, "steps over the stack's guard page"),  # orq $0,(%rsp)
]


def readelf(path, *options):
    return subprocess.run(["readelf", "-W", *options, path], check=True, capture_output=True,
                          text=True).stdout


def code_of(path):
    """The bytes of its .text."""
    row = re.search(r" \.text +PROGBITS +\w+ (\w+) (\w+)", readelf(path, "-S"))
    offset, size = (int(number, 16) for number in row.groups())
    return path.read_bytes()[offset:offset + size]


def faults(path):
    name = "module" if path.name.startswith("lib") else path.name
    text = readelf(path, "-h", "-l", "-d", "--dyn-syms")
    for names, must, pattern, fault in TABLE:
        if name in names and bool(re.search(pattern, text, re.MULTILINE)) != must:
            yield f"{path.name} {fault}"
    if X86 in text:
        for names, code, least, fault in CODE:
            if name in names and code_of(path).count(code) < least:
                yield f"{path.name} {fault}"


found = [fault for name in sys.argv[1:] for fault in faults(pathlib.Path(name))]
print("\n".join(found) or f"{len(sys.argv) - 1} files are hardened")
sys.exit(1 if found or len(sys.argv) == 1 else 0)
