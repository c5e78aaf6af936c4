"""What the benchmarks have measured, and the table in which they end. Figure.h is the same in C++."""

import dataclasses
import json
import os
import pathlib
import re


def number(text):
    return float(text) if text else None


@dataclasses.dataclass
class Figure:
    """Less is better. There may be a peer, and an aim for the value or for its ratio to the peer's."""
    measured: str
    value: float
    unit: str
    peer: str = ""
    peer_value: float | None = None
    most: float | None = None
    most_ratio: float | None = None

    @property
    def ratio(self):
        return self.value / self.peer_value if self.peer_value else None

    @property
    def held(self):
        """Nothing where there is no aim."""
        if self.most is None and self.most_ratio is None:
            return None
        return ((self.most is None or self.value <= self.most)
                and (self.most_ratio is None
                     or self.value <= self.most_ratio * self.peer_value))

    def cells(self):
        aims = [f"{self.most:g} {self.unit}"] if self.most is not None else []
        aims += [f"ratio {self.most_ratio:g}"] if self.most_ratio is not None else []
        return [self.measured, f"{self.value:.2f} {self.unit}",
                f"{self.peer} {self.peer_value:.2f}" if self.peer else "",
                f"{self.ratio:.2f}" if self.ratio else "", ", ".join(aims),
                {None: "", True: "yes", False: "NO"}[self.held]]

    def report(self):
        """Prints it, and hands it to the table."""
        print(" | ".join(cell for cell in self.cells() if cell), flush=True)
        fields = ["" if field is None else str(field) for field in dataclasses.astuple(self)]
        if path := os.environ.get("BENCHMARK_FIGURES"):
            with open(path, "a", encoding="utf-8") as table:
                table.write("\t".join(fields) + "\n")


def read(path):
    """What was reported to a file, which need not be there."""
    lines = pathlib.Path(path).read_text("utf-8").splitlines() if os.path.exists(path) else []
    for line in lines:
        measured, value, unit, peer, *numbers = line.split("\t")
        yield Figure(measured, float(value), unit, peer, *map(number, numbers))


def read_google(path):
    """What Google Benchmark wrote to a file, which is missing or cut off after a crash."""
    try:
        runs = json.loads(pathlib.Path(path).read_text("utf-8"))["benchmarks"]
    except (OSError, ValueError):
        return
    for run in runs:
        name = re.sub("/(min_time|iterations|real_time).*", "", run["name"])
        time = "real_time" if "real_time" in run["name"] else "cpu_time"
        yield Figure(name, run[time], run["time_unit"])


def table(figures):
    rows = [["measured", "value", "peer", "ratio", "aim", "held?"]] + [figure.cells() for figure in figures]
    widths = [max(len(row[column]) for row in rows) for column in range(len(rows[0]))]
    return "\n".join(
        "  ".join(cell.ljust(width) for cell, width in zip(row, widths)).rstrip() for row in rows)
