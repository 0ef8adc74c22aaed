"""The table of results, on runs that are made up."""

import os
import sys
import unittest

sys.path.insert(0, os.path.join(os.path.dirname(__file__), "..", "..", "tools", "dev", "bench"))
import record  # noqa: E402


def run(family, name, time, kind="iteration"):
    return {"family_index": family, "name": name, "cpu_time": time, "run_type": kind}


def samples(ours):
    return record.samples_of({"benchmarks": [
        run(1, "find, 10 keys/map/repeats:3", 10.0),
        run(0, "find, 10 keys/zelutil/repeats:3", ours),
        run(1, "find, 10 keys/map/repeats:3", 20.0),
        run(1, "find, 10 keys/map/repeats:3", 90.0),
        run(1, "find, 10 keys/map/repeats:3_mean", 40.0, "aggregate"),
        run(2, "find, 10 keys/flat map/repeats:3", 12.0),
        run(3, "find, 10 keys/limit: hash/repeats:3", 5.0),
        run(4, "fill/zelutil/repeats:3", 6.0),
        run(5, "fill/map/repeats:3", 4.0),
    ]})


def report(row, ours):
    return record.report_of(record.rows_of("# work | ...\n" + row), samples(ours), "M", "C")


class RecordTest(unittest.TestCase):
    def test_a_row_has_the_medians_as_multiples_of_the_reference(self):
        text, problems = report("finding | find, 10 keys | map | 0.40 |", 8.0)
        self.assertIn("| finding | map | **0.40** | flat map 0.60 | hash 0.25 | 0.40 | met |\n", text)
        self.assertIn("\n| fill | map | **1.50** | – | – |\n", text)
        self.assertIn("Ahead of the reference in 1 of 1 rows, ahead of every peer in 1.", text)
        self.assertEqual(problems, [])

    def test_an_aim_is_met_up_to_fifteen_per_cent_above(self):
        row = "finding | find, 10 keys | map | 0.40 | the keys lie apart"
        self.assertIn("| met |", report(row, 9.19)[0])
        self.assertIn("| missed: the keys lie apart |", report(row, 9.21)[0])

    def test_an_aim_may_be_a_multiple_of_a_limit(self):
        row = "finding | find, 10 keys | map | 1.2 x hash | the keys lie apart"
        self.assertIn("| 0.30 | met |", report(row, 6.89)[0])
        self.assertIn("| 0.30 | missed: the keys lie apart |", report(row, 6.91)[0])

    def test_a_miss_without_a_reason_and_a_missing_row_are_problems(self):
        self.assertEqual(report("finding | find, 10 keys | map | 0.40 |", 14.0)[1],
                         ["finding: 0.70 instead of 0.40, and no reason is given"])
        self.assertEqual(report("finding | find | map | 0.40 |", 8.0)[1],
                         ['finding: no program has compared "find" with "map"'])

    def test_a_rate_is_the_calls_a_second_of_the_median(self):
        rows = record.rows_of("files | read | map | a second |")
        measured = record.samples_of({"benchmarks": [
            {**run(0, "read/zelutil/repeats:1", 4e6), "calls": 1000},
            {**run(1, "read/map/repeats:1", 2e6), "calls": 1000},
        ]})
        text, problems = record.report_of(rows, measured, "M", "C")
        self.assertIn("| files | **250000** | map | 2.00 |\n", text)
        self.assertEqual(problems, [])
        self.assertEqual(record.report_of(rows, {}, "M", "C")[1],
                         ['files: no program has compared "read" with "map"'])

    def test_a_slower_side_is_not_ahead(self):
        text, _ = report("finding | find, 10 keys | map | 9.00 |", 14.0)
        self.assertIn("Ahead of the reference in 1 of 1 rows, ahead of every peer in 0.", text)


if __name__ == "__main__":
    unittest.main()
