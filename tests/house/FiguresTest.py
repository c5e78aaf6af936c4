#!/usr/bin/python3
"""The table of the benchmarks tells what was held, and no fault is lost on the way to it."""

import json
import os
import pathlib
import sys
import tempfile
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).parents[2] / "benchmarks"))
import figures  # noqa: E402
from figures import Figure  # noqa: E402

JUDGED = [
    (Figure("alone", 9, "ms"), None),
    (Figure("at the aim", 5, "ms", most=5), True),
    (Figure("above it", 5.1, "ms", most=5), False),
    (Figure("no fault", 0, "", most=0), True),
    (Figure("near the peer", 13, "ms", "curl", 10, most_ratio=1.3), True),
    (Figure("far from the peer", 14, "ms", "curl", 10, most=20, most_ratio=1.3), False),
    (Figure("a peer of nothing", 14, "%", "curl", 0, most=20, most_ratio=1.3), False),
]


class FiguresTest(unittest.TestCase):
    def test_what_is_reported_is_read_and_judged(self):
        with tempfile.TemporaryDirectory() as scratch:
            os.environ["BENCHMARK_FIGURES"] = path = scratch + "/figures"
            for figure, _ in JUDGED:
                figure.report()
            read = list(figures.read(path))
        self.assertEqual(read, [figure for figure, _ in JUDGED])
        self.assertEqual([figure.held for figure in read], [held for _, held in JUDGED])
        self.assertEqual(figures.table(read).count("NO"), 3)

    def test_a_library_that_measures_reports_too(self):
        runs = [{"name": "save/5/min_time:2.000/real_time", "real_time": 7.5, "cpu_time": 1,
                 "time_unit": "ms"},
                {"name": "poll", "real_time": 9, "cpu_time": 2, "time_unit": "us"}]
        with tempfile.TemporaryDirectory() as scratch:
            path = pathlib.Path(scratch, "google.json")
            self.assertEqual(list(figures.read_google(path)), [])
            path.write_text('{"benchmarks": [', encoding="utf-8")
            self.assertEqual(list(figures.read_google(path)), [])
            path.write_text(json.dumps({"benchmarks": runs}), encoding="utf-8")
            self.assertEqual(list(figures.read_google(path)),
                             [Figure("save/5", 7.5, "ms"), Figure("poll", 2, "us")])


if __name__ == "__main__":
    unittest.main()
