#!/usr/bin/env python3
"""Runs whole sparse runs and their parts on generated models and prints ratios and verdicts as tables in Markdown.

usage: bench/compare_runs.py FOLDER [--only PART ...] [--repetitions N] [--core MEGABYTES]

FOLDER holds the programs whole_run, sparse_phases and text_output (build/bench/bench). Parts: whole, combinations,
blocks, rate, assembly, memory, outofcore, text. Both sides of each ratio take turns within one run; medians are
compared. All parts take half an hour, 3 GB of memory and 3 GB of disk in a temporary folder on two quiet cores.
"""

import argparse
import os
import statistics
import subprocess
import tempfile
import time

SMALL, MEDIUM, LARGE, SHELLS, BRICKS = "frame:12", "frame:21", "frame:32", "shells:33:29", "bricks:40"


def resident_megabytes(process):
    """Memory of a process and its children; pages that they share count once."""
    try:
        with open(f"/proc/{process}/task/{process}/children", encoding="ascii") as children:
            family = [str(process), *children.read().split()]
        total = 0
        for member in family:
            with open(f"/proc/{member}/smaps_rollup", encoding="ascii") as rollup:
                total += sum(int(line.split()[1]) for line in rollup if line.startswith("Pss:"))
        return total / 1024
    except OSError:  # a process has just ended
        return 0


class Bench:
    """Runs the programs in a temporary folder, which receives whatever they write."""

    def __init__(self, programs, scratch):
        self.programs = os.path.abspath(programs)
        self.scratch = scratch

    def run(self, program, *arguments, watch=lambda process: None):
        """Figures that one run of a program prints, by their names."""
        command = [os.path.join(self.programs, program), *map(str, arguments)]
        with subprocess.Popen(command, cwd=self.scratch, stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                              text=True) as process:
            watch(process)
            output, errors = process.communicate()
        if process.returncode != 0:
            raise SystemExit(f"{' '.join(command)}: {errors.strip()}")
        return {name: float(value) for name, value in (line.split() for line in output.splitlines())}

    def peak_megabytes(self, *arguments):
        """Largest memory of a whole run, its solver in a process of its own included. Looking takes time, so that the
        run is not timed."""
        seen = []

        def watch(process):
            while process.poll() is None:
                seen.append(resident_megabytes(process.pid))
                time.sleep(0.02)

        own = self.run("whole_run", *arguments, watch=watch)["peakMegabytes"]
        return max(own, *seen)


def head(title, *columns):
    print(f"\n**{title}**\n\n| " + " | ".join(columns) + " |\n|" + "---|" * len(columns))


def row(*cells):
    print("| " + " | ".join(cell if isinstance(cell, str) else f"{cell:.4g}" for cell in cells) + " |", flush=True)


def verdict(value, relation, limit):
    met = value <= limit if relation == "<=" else value >= limit
    return f"{relation} {limit}, {'met' if met else 'missed'}"


def whole(bench, options):
    head("Whole run / phases", "model", "equations", "assembly / phases", "", "phases", "whole", "whole / phases", "")
    for model, limit in ((SMALL, 1.8), (MEDIUM, 1.30), (SHELLS, 1.25), (LARGE, 1.10), (BRICKS, 1.12)):
        # A run of a small model takes a few hundredths of a second: more of them steady the median.
        runs = options.repetitions * (4 if model == SMALL else 1)
        figures = bench.run("whole_run", model, "pardiso", 2, runs)
        share, ratio = figures["assembly/phases"], figures["whole/phases"]
        row(model, f"{figures['equations']:.0f}", f"{100 * share:.2f} %", verdict(share, "<=", 0.04), figures["phases"],
            figures["whole"], ratio, verdict(ratio, "<=", limit))


def combinations(bench, options):
    head("k combinations / one", "model", "one", "ten", "ratio / k", "")
    sides = {count: [] for count in (1, 10)}
    for _ in range(options.repetitions):
        for count, runs in sides.items():
            runs.append(bench.run("whole_run", f"{MEDIUM}:{count}", "pardiso", 2, "once")["whole"])
    one, ten = statistics.median(sides[1]), statistics.median(sides[10])
    row(MEDIUM, one, ten, ten / one / 10, verdict(ten / one / 10, "<=", 0.35))


def blocks(bench, options):
    head("Zeros of node blocks kept / dropped", "model", "terms kept", "not zero", "kept", "dropped", "ratio", "")
    for model in (MEDIUM, LARGE):
        f = bench.run("sparse_phases", "blocks", model, 2, options.repetitions)
        row(model, f["termsKept"], f["termsNotZero"], f["phasesKept"], f["phasesDropped"], f["kept/dropped"],
            verdict(f["kept/dropped"], "<=", 0.35))


def rate(bench, options):
    runs = {model: bench.run("sparse_phases", "rate", model, options.repetitions)
            for model in (LARGE, BRICKS, SHELLS)}
    head("Factorisation / dgemm (10^9 operations a second)", "model", "threads", "dgemm", "factorisation", "ratio", "")
    for model, figures in runs.items():
        for threads in ("1", "2"):
            limit = 0.45 if model == SHELLS else 0.55 if threads == "1" else 0.50
            ratio = figures["factorisation/dgemm" + threads]
            row(model, threads, figures["dgemm" + threads], figures["factorisation" + threads], ratio,
                verdict(ratio, ">=", limit))
    head("One thread / two", "model", "dgemm", "factorisation", "phases", "")
    for model, f in runs.items():
        row(model, f["speedupDgemm"], f["speedupFactorisation"], f["speedupPhases"],
            "" if model == SHELLS else verdict(f["speedupPhases"], ">=", 1.5))


def assembly(bench, options):
    head("Ordered maps / node-block pattern", "model", "equations", "maps", "pattern", "time", "", "memory", "")
    for model in (MEDIUM, LARGE, SHELLS, BRICKS):
        f = bench.run("sparse_phases", "assembly", model, options.repetitions)
        time, memory = f["mapTime/pattern"], f["mapMemory/pattern"]
        row(model, f"{f['equations']:.0f}", f["mapSeconds"], f["patternSeconds"], time, verdict(time, ">=", 15), memory,
            verdict(memory, ">=", 5))


def memory(bench, options):
    head("Peak memory of a run / (solver + matrix) in MB", "model", "solver", "matrix", "run", "ratio", "")
    for model in (SMALL, MEDIUM, SHELLS, LARGE, BRICKS):
        solver = bench.run("sparse_phases", "peak", model)
        peak = bench.peak_megabytes(model, "pardiso", 2, "once")
        ratio = peak / (solver["solverMegabytes"] + solver["matrixMegabytes"])
        row(model, solver["solverMegabytes"], solver["matrixMegabytes"], peak, ratio, verdict(ratio, "<=", 1.15))


def out_of_core(bench, options):
    head(f"Out of core within {options.core} MB / in core", "model", "", "in core", "out of core", "ratio", "")
    sides = [(BRICKS, "pardiso", 2, "once"), (BRICKS, "pardiso", 2, "once", options.core)]
    runs = [[bench.run("whole_run", *side)["whole"] for side in sides] for _ in range(options.repetitions)]
    seconds = [statistics.median(times) for times in zip(*runs)]
    megabytes = [bench.peak_megabytes(*side) for side in sides]
    for unit, (core, disk), limit in (("s", seconds, 1.5), ("MB", megabytes, 0.35)):
        row(BRICKS, unit, core, disk, disk / core, verdict(disk / core, "<=", limit))


def text(bench, options):
    head("Results file", "model", "million numbers", "MB", "seconds", "million numbers a second", "", "growth of peak")
    for model in (MEDIUM, "bricks:20"):
        f = bench.run("text_output", model, options.repetitions)
        row(model, f["numbers"] * 1e-6, f["megabytes"], f["seconds"], f["millionNumbersPerSecond"],
            verdict(f["millionNumbersPerSecond"], ">=", 12), f"{f['peakGrowthMegabytes']:.1f} MB")


PARTS = {"whole": whole, "combinations": combinations, "blocks": blocks, "rate": rate, "assembly": assembly,
         "memory": memory, "outofcore": out_of_core, "text": text}


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("folder")
    parser.add_argument("--only", nargs="+", choices=PARTS, default=list(PARTS))
    parser.add_argument("--repetitions", type=int, default=5)
    parser.add_argument("--core", type=int, default=500, help="memory limit out of core [MB]")
    options = parser.parse_args()
    with tempfile.TemporaryDirectory(prefix="qvxfem-bench-") as scratch:
        for part in options.only:
            PARTS[part](Bench(options.folder, scratch), options)
    print(f"\nload of the machine at the end: {os.getloadavg()[0]:.1f}")


if __name__ == "__main__":
    main()
