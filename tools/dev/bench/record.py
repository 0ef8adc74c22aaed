#!/usr/bin/env python3
"""Writes the table of results of one run of all benchmarks.

    record.py ROWS MACHINE COMPILER OUTPUT... > bench/results.md

ROWS says which comparison is held to which aim (its first lines tell the form); each OUTPUT is what a program wrote
with --benchmark_out. Fails, with the table written, where a row is missing or was missed without a reason.
"""

import json
import statistics
import sys
from dataclasses import dataclass

SUBJECT = "zelutil"
LIMIT = "limit: "
NOISE = 1.15
RATE = "a second"


@dataclass
class Row:
    work: str
    comparison: str
    reference: str
    aim: str
    reason: str


@dataclass
class Result:
    """The medians of a comparison's sides by their names, as multiples of the reference's."""

    reference: str
    ratios: dict

    @property
    def ours(self):
        return self.ratios[SUBJECT]

    def limits(self):
        return {side[len(LIMIT):]: ratio for side, ratio in self.ratios.items() if side.startswith(LIMIT)}

    def peers(self):
        return {
            side: ratio
            for side, ratio in self.ratios.items()
            if side not in (SUBJECT, self.reference) and not side.startswith(LIMIT)
        }

    def is_ahead_of_every_peer(self):
        return all(self.ours <= ratio for ratio in [1.0, *self.peers().values()])


def rows_of(text):
    lines = [line for line in text.splitlines() if line.strip() and not line.startswith("#")]
    rows = []
    for line in lines:
        work, comparison, reference, aim, reason = (part.strip() for part in line.split("|"))
        rows.append(Row(work, comparison, reference, aim, reason))
    return rows


def samples_of(output):
    """The nanoseconds a call of each repetition by comparison and side, in the order of the programs' sides."""
    samples = {}
    for run in sorted(output["benchmarks"], key=lambda run: run["family_index"]):
        if run["run_type"] == "iteration":
            comparison, side = run["name"].split("/repeats:")[0].rsplit("/", 1)
            samples.setdefault(comparison, {}).setdefault(side, []).append(run["cpu_time"] / run.get("calls", 1))
    return samples


def result_of(sides, reference=None):
    """Takes the first peer as the reference where none is named; nothing for a comparison without peers."""
    reference = reference or next((side for side in sides if side != SUBJECT), None)
    if reference not in sides or SUBJECT not in sides:
        return None
    base = statistics.median(sides[reference])
    return Result(reference, {side: statistics.median(times) / base for side, times in sides.items()})


def listed(ratios):
    return ", ".join(f"{name} {ratio:.2f}" for name, ratio in ratios.items()) or "–"


def line_of(*cells):
    return "| " + " | ".join(cells) + " |"


def aim_of(row, result):
    """Returns the ratio that is aimed at: a number, or as many times a limit's ("1.12 x stat")."""
    factor, _, limit = row.aim.partition(" x ")
    return float(factor) * (result.limits()[limit] if limit else 1)


def verdict_of(row, result):
    if result.ours <= aim_of(row, result) * NOISE:
        return "met"
    return f"missed: {row.reason}" if row.reason else "missed"


def missing(row):
    return f"{row.work}: no program has compared \"{row.comparison}\" with \"{row.reference}\""


def table_of_rows(rows, samples, problems):
    lines = [
        line_of("work", "reference = 1.00", "zelutil", "peers", "limit", "aim", ""),
        "|---|---|---|---|---|---|---|",
    ]
    ahead = ahead_of_all = 0
    for row in rows:
        result = result_of(samples.get(row.comparison, {}), row.reference)
        if result is None:
            problems.append(missing(row))
            continue
        ahead += result.ours < 1
        ahead_of_all += result.is_ahead_of_every_peer()
        verdict = verdict_of(row, result)
        if verdict == "missed":
            problems.append(f"{row.work}: {result.ours:.2f} instead of {aim_of(row, result):.2f}, and no reason is given")
        cells = [listed(result.peers()), listed(result.limits()), f"{aim_of(row, result):.2f}", verdict]
        lines.append(line_of(row.work, result.reference, f"**{result.ours:.2f}**", *cells))
    lines += ["", f"Ahead of the reference in {ahead} of {len(rows)} rows, ahead of every peer in {ahead_of_all}."]
    return lines


def table_of_rates(rows, samples, problems):
    lines = [line_of("work", "a second and core", "reference = 1.00", "zelutil"), "|---|---|---|---|"]
    for row in rows:
        sides = samples.get(row.comparison, {})
        result = result_of(sides, row.reference)
        if result is None:
            problems.append(missing(row))
            continue
        rate = 1e9 / statistics.median(sides[SUBJECT])
        lines.append(line_of(row.work, f"**{rate:.0f}**", result.reference, f"{result.ours:.2f}"))
    return lines


def table_of_others(rows, samples):
    lines = [line_of("work", "reference = 1.00", "zelutil", "peers", "limit"), "|---|---|---|---|---|"]
    taken = {row.comparison for row in rows}
    for comparison, sides in samples.items():
        result = None if comparison in taken else result_of(sides)
        if result is not None:
            cells = [f"**{result.ours:.2f}**", listed(result.peers()), listed(result.limits())]
            lines.append(line_of(comparison, result.reference, *cells))
    return lines


def report_of(rows, samples, machine, compiler):
    """Returns the text, and what is wrong with it."""
    problems = []
    aimed = [row for row in rows if row.aim != RATE]
    rates = [row for row in rows if row.aim == RATE]
    lines = [
        "# Results of the benchmarks",
        "",
        "Written by `./dev bench --record` from one run of all programs: medians of interleaved repetitions of",
        f"processor time, as multiples of the reference's. An aim counts as met up to {NOISE - 1:.0%} above it.",
        "",
        f"- Machine: {machine}",
        f"- Compiler: {compiler}",
        "",
        *table_of_rows(aimed, samples, problems),
        "",
        *(["## Rates", "", *table_of_rates(rates, samples, problems), ""] if rates else []),
        "## Other comparisons",
        "",
        *table_of_others(rows, samples),
    ]
    return "\n".join(lines) + "\n", problems


def read(path):
    with open(path, encoding="utf-8") as file:
        return file.read()


def main(rows_path, machine, compiler, *outputs):
    samples = {}
    for output in outputs:
        samples.update(samples_of(json.loads(read(output))))
    text, problems = report_of(rows_of(read(rows_path)), samples, machine, compiler)
    sys.stdout.write(text)
    for problem in problems:
        print(problem, file=sys.stderr)
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
