"""Runs every benchmark, whatever one of them says, and ends in one table of what they report.

Usage: RunAll.py DIRECTORY-OF-THE-PROGRAMS, from the root of the sources. Fails if a benchmark has
failed or an aim was missed.
"""

import os
import pathlib
import subprocess
import sys
import tempfile

import figures

BIN = pathlib.Path(sys.argv[1])
LONGEST = "900"  # seconds, for one that hangs


def benchmarks():
    """Each one's name, command and environment."""
    for program in sorted(BIN.glob("*Benchmark")):
        yield program.name, [program], {"QT_QPA_PLATFORM": "offscreen", "SCREEN_SIZE": "1920x1080"}
    yield "DesktopBenchmark", [sys.executable, "-B", "benchmarks/DesktopBenchmark.py", BIN], {}


def run(name, command, environment, scratch):
    """What it reports, and a sentence if it has failed."""
    reported, google = scratch / name, scratch / (name + ".json")
    outputs = {"BENCHMARK_FIGURES": str(reported), "BENCHMARK_OUT": str(google),
               "BENCHMARK_OUT_FORMAT": "json"}
    print(f"\n{name}", flush=True)
    status = subprocess.run(["timeout", LONGEST, "scripts/virtual-desktop", *command],
                            env=os.environ | environment | outputs, check=False).returncode
    found = [*figures.read(reported), *figures.read_google(google)]
    faults = [f"{name} has failed with status {status}"] if status else []
    return found, faults or ([] if found else [f"{name} has reported nothing"])


def main():
    found, faults = [], []
    with tempfile.TemporaryDirectory() as scratch:
        for benchmark in benchmarks():
            more, failures = run(*benchmark, pathlib.Path(scratch))
            found += more
            faults += failures
    faults += [f"missed: {figure.measured}" for figure in found if figure.held is False]
    print("", figures.table(found), "", *(faults or ["Every aim was held."]), sep="\n")
    sys.exit(1 if faults else 0)


if __name__ == "__main__":
    main()
