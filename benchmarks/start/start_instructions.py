"""The instructions that a start of the plug-in takes, by thread and by what executes them."""

import collections
import os
import pathlib
import subprocess
import sys
import tempfile

sys.path.append(str(pathlib.Path(__file__).resolve().parent.parent / "instructions"))
from own_instructions import COST, name_of, own_instructions  # noqa: E402

DEADLINE_S = 120

# What the paths of the objects hold that the instructions are in; the first that fits.
CAUSES = {
    "viewconnector.so": "plug-in", "libregisterhost": "host", "ld-linux": "dynamic linker",
    "libcrypto": "OpenSSL", "libssl": "OpenSSL", "libcurl": "libcurl",
    "libmicrohttpd": "libmicrohttpd", "libQt6Core": "Qt Core", "libQt6Network": "Qt Network",
    "libpcre2": "PCRE2", "libc.so": "C library",
}
OTHERS = "other libraries"

# Whose thread it is, by a function that runs only there; the benchmark's own are left out.
THREADS = {
    "bench::Sink::serve": None,
    "view::Client::onStart": "delivery thread",
    "HttpDaemon::run": "server's thread",
    "libQt6Network": "Qt's network thread",
}


def cause_of(object_file):
    name = os.path.basename(object_file)
    return next((cause for part, cause in CAUSES.items() if part in name), OTHERS)


def costs_by_cause(lines):
    """The instructions in a profile, written without compressed names, by what executes them."""
    costs = collections.Counter()
    cause = OTHERS
    is_of_a_call = False
    for line in lines:
        if line.startswith("ob="):
            cause = cause_of(line[3:])
        elif line.startswith("calls="):
            is_of_a_call = True  # the next line is the cost of what was called
        elif cost := COST.fullmatch(line):
            if not is_of_a_call:
                costs[cause] += int(cost.group(1))
            is_of_a_call = False
    return costs


def step_of(profile, text):
    """What a profile is of: a step of the main thread, or all of another; None is the rest."""
    if int(profile.name.rpartition("-")[2]) == 1:
        return name_of(text.splitlines())
    return next((thread for mark, thread in THREADS.items() if mark in text), None)


def profile(program, options, tree):
    """Instructions by step and cause; "written here" is what of all that is of this tree."""
    steps = {}
    with tempfile.TemporaryDirectory() as folder:
        subprocess.run(
            ["valgrind", "--quiet", "--tool=callgrind", "--instr-atstart=no",
             "--compress-strings=no", "--separate-threads=yes",
             f"--callgrind-out-file={folder}/profile", program, *options],
            check=True, timeout=DEADLINE_S, stdout=subprocess.DEVNULL,
            env={**os.environ, "QT_HASH_SEED": "0"})
        for file in sorted(pathlib.Path(folder).glob("profile*-*")):
            text = file.read_text()
            if step := step_of(file, text):
                lines = text.splitlines()
                costs = costs_by_cause(lines)
                steps[step] = {"all": costs.total(),
                               "written here": sum(own_instructions(lines, tree).values()),
                               **dict(costs.most_common())}
    return steps
