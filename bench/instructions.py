#!/usr/bin/env python3
"""Counts the instructions of the modules' work and holds them to the counts that are kept.

Usage: bench/instructions.py PROGRAM [--renew]

A count more than a tenth above or below the one in bench/instructions.txt is a fault: above, the
work has become dearer; below, the kept count would no longer notice. --renew writes the file anew.
The counts are those of the release build with Debian 12's g++ and libraries.
"""
import os
import pathlib
import re
import subprocess
import sys
import tempfile

KEPT = pathlib.Path(__file__).with_name("instructions.txt")
TOLERANCE = 0.10

# The libraries choose their routines by the processor, so they are shown one that all have. ERMS
# counts most: valgrind counts an instruction for each byte of a "rep movsb".
COMMON_PROCESSOR = {
    "GLIBC_TUNABLES": "glibc.cpu.hwcaps=-AVX2,-AVX,-ERMS,-FSRM,-BMI2",
    "QT_NO_CPU_FEATURE": "avx avx2 sse4.1 sse4.2 ssse3 bmi bmi2 lzcnt popcnt",
}


def count(program):
    """Instructions by name of the work, in the program's order."""
    with tempfile.TemporaryDirectory(dir="/tmp") as folder:
        out = pathlib.Path(folder, "counts")
        subprocess.run(
            ["valgrind", "--quiet", "--tool=callgrind", f"--callgrind-out-file={out}",
             "--combine-dumps=yes", program],
            env={"PATH": os.environ["PATH"], "TMPDIR": folder, **COMMON_PROCESSOR},
            check=True)
        parts = re.findall(r"^desc: Trigger: Client Request: (.*)\n(?:.*\n)*?summary: (\d+)",
                           out.read_text(errors="replace"), re.MULTILINE)
    return {name: int(number) for name, number in parts}


def kept_counts():
    rows = (line.rsplit(None, 1) for line in KEPT.read_text().splitlines())
    return {name: int(number) for name, number in rows}


def faults(now, kept):
    for name in [*now, *(set(kept) - set(now))]:
        if name not in kept or name not in now:
            yield f"{name}: only {'counted' if name in now else 'kept'}"
        elif abs(now[name] / kept[name] - 1) > TOLERANCE:
            yield f"{name}: {now[name]:,} instructions, {now[name] / kept[name] - 1:+.0%} of {kept[name]:,}"


counts = count(sys.argv[1])
if not counts:
    sys.exit("Nothing was counted")
if "--renew" in sys.argv:
    KEPT.write_text("".join(f"{name:<28}{number:>12}\n" for name, number in counts.items()))
    print(f"{len(counts)} counts written to {KEPT}")
    sys.exit()
found = list(faults(counts, kept_counts()))
if found:
    sys.exit("\n".join(found + ["If that is meant: make instructions"]))
print(f"{len(counts)} counts are within {TOLERANCE:.0%} of those kept")
