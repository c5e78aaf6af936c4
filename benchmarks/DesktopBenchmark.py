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

BIN = pathlib.Path(sys.argv[1])
STARTS = 15
SECONDS_TO_SETTLE = 6
SECONDS_AT_REST = 20

scratch = tempfile.TemporaryDirectory()
environment = os.environ | {"HOME": scratch.name, "XDG_DATA_HOME": scratch.name + "/data",
                            "XDG_CONFIG_HOME": scratch.name + "/config"}
peers = {"pobblewig": BIN / "pobblewig", "empty window": BIN / "EmptyWindow"}


def first_frame(program):
    return float(subprocess.run([BIN / "FirstFrame", program], env=environment, check=True,
                                capture_output=True, text=True).stdout)


def cpu_seconds(process):
    fields = pathlib.Path(f"/proc/{process}/stat").read_text().rpartition(")")[2].split()
    return (int(fields[11]) + int(fields[12])) / os.sysconf("SC_CLK_TCK")


def pss_megabytes(process):
    lines = pathlib.Path(f"/proc/{process}/smaps_rollup").read_text().splitlines()
    return next(int(line.split()[1]) for line in lines if line.startswith("Pss:")) / 1024


def at_rest(program):
    """PSS in MB and the share of a core, once the program has settled."""
    process = subprocess.Popen([program], env=environment, stderr=subprocess.DEVNULL)
    time.sleep(SECONDS_TO_SETTLE)
    before = cpu_seconds(process.pid)
    time.sleep(SECONDS_AT_REST)
    used = (cpu_seconds(process.pid) - before) / SECONDS_AT_REST
    pss = pss_megabytes(process.pid)
    process.kill()
    process.wait()
    return pss, used


def compare(what, ours, peer, unit, limit):
    print(f"{what}: {ours:.1f} {unit}, empty Qt window {peer:.1f} {unit}, "
          f"ratio {ours / peer:.2f} (aim: {limit})")


# Alternating, so that whatever else the machine does falls on both.
starts = {name: [] for name in peers}
for _ in range(STARTS):
    for name, program in peers.items():
        starts[name].append(first_frame(program))
compare("start to the first frame (median)", statistics.median(starts["pobblewig"]),
        statistics.median(starts["empty window"]), "ms", "1.3")

rest = {name: at_rest(program) for name, program in peers.items()}
compare("PSS with the chat closed", rest["pobblewig"][0], rest["empty window"][0], "MB", "1.3")
print(f"CPU at rest: {100 * rest['pobblewig'][1]:.2f} % of a core, "
      f"empty Qt window {100 * rest['empty window'][1]:.2f} % (aim: 0.6 %)")
