"""What the program costs on the desktop, beside an empty Qt Widgets window in the same run.

Usage: DesktopBenchmark.py DIRECTORY-OF-THE-PROGRAMS, with an X server and a session bus.
"""

import os
import pathlib
import statistics
import subprocess
import sys
import tempfile
import time

from figures import Figure

BIN = pathlib.Path(sys.argv[1])
STARTS = 15
SECONDS_TO_SETTLE = 6
SECONDS_AT_REST = 20

scratch = tempfile.TemporaryDirectory()
environment = os.environ | {"HOME": scratch.name, "XDG_DATA_HOME": scratch.name + "/data",
                            "XDG_CONFIG_HOME": scratch.name + "/config"}
# An everyday start: the greeting and the set-up of the first one are over.
desktop_settings = pathlib.Path(scratch.name, "config/Pobblewig/desktop.conf")
desktop_settings.parent.mkdir(parents=True)
desktop_settings.write_text("[firstLaunch]\ngreeted=true\n")
settings = pathlib.Path(scratch.name, "data/Pobblewig/settings.json")
settings.parent.mkdir(parents=True)
settings.write_text('{"hasCompletedOnboarding": true}')
SECONDS_IN_A_STATE = 15
# What the buddy does, and the share of a core in per cent that it may take.
STATES = {"idle": 0.5, "asleep": 0.1, "occluded": 0.1, "responding": 2.5, "working": 2.5,
          "notify": 2.5, "carried": 2.5}

peers = {"pobblewig": BIN / "pobblewig", "empty window": BIN / "EmptyWindow"}


def first_frame(program):
    """Until anything is to be seen: milliseconds, and those of a processor."""
    output = subprocess.run([BIN / "FirstFrame", program], env=environment, check=True,
                            capture_output=True, text=True).stdout
    return [float(number) for number in output.split()]


def cpu_seconds(process):
    fields = pathlib.Path(f"/proc/{process}/stat").read_text().rpartition(")")[2].split()
    return (int(fields[11]) + int(fields[12])) / os.sysconf("SC_CLK_TCK")


def megabytes(process, kind):
    lines = pathlib.Path(f"/proc/{process}/smaps_rollup").read_text().splitlines()
    return next(int(line.split()[1]) for line in lines if line.startswith(kind + ":")) / 1024


def at_rest(program):
    """PSS and RSS in MB and the share of a core, once the program has settled."""
    process = subprocess.Popen([program], env=environment, stderr=subprocess.DEVNULL)
    time.sleep(SECONDS_TO_SETTLE)
    before = cpu_seconds(process.pid)
    time.sleep(SECONDS_AT_REST)
    used = (cpu_seconds(process.pid) - before) / SECONDS_AT_REST
    pss, rss = megabytes(process.pid, "Pss"), megabytes(process.pid, "Rss")
    process.kill()
    process.wait()
    return pss, rss, used


def in_state(state):
    """The share of a core in per cent, wake-ups and frames a second, of the buddy alone."""
    output = subprocess.run([BIN / "BuddyInState", state, str(SECONDS_IN_A_STATE), "blended"],
                            env=environment, check=True, capture_output=True, text=True).stdout
    return [float(number) for number in output.split()]


# Alternating, so that whatever else the machine does falls on both.
starts = {name: [] for name in peers}
for _ in range(STARTS):
    for name, program in peers.items():
        starts[name].append(first_frame(program))
for kind, measured in enumerate(["start to the first frame", "processor time until then"]):
    ours, peer = (statistics.median(start[kind] for start in starts[name]) for name in peers)
    Figure(measured, ours, "ms", "empty Qt window", peer,
           most_ratio=1.25 if kind == 0 else None).report()

rest = {name: at_rest(program) for name, program in [*peers.items(), ("oneko", "/usr/games/oneko")]}
# Whatever else of the machine uses the same libraries makes the PSS smaller, but not the RSS.
for kind, measured in enumerate(["PSS", "RSS"]):
    Figure(measured + " with the chat closed", rest["pobblewig"][kind], "MB", "empty Qt window",
           rest["empty window"][kind], most_ratio=1.3 if kind == 0 else None).report()
    print(f"oneko: {rest['oneko'][kind]:.1f} MB")
Figure("share of a core at rest", 100 * rest["pobblewig"][2], "%", "oneko",
       100 * rest["oneko"][2], most=0.6).report()

for state, limit in STATES.items():
    share, wake_ups, frames = in_state(state)
    print(f"{state}: {wake_ups:.0f} wake-ups and {frames:.1f} frames a second")
    Figure(f"share of a core, {state}", share, "%", most=limit).report()
