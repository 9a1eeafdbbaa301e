#!/usr/bin/env python3
"""Runs the skyline benchmarks once and prints their medians and ratios as tables in Markdown.

usage: bench/compare_skyline.py PROGRAM [--repetitions N]

PROGRAM is build/bench/bench/skyline_bench. Both sides of each ratio come from this run, one thread each, processor
time. The distribution's OpenBLAS takes new processors for old ones; its core type is set where AVX-512 is there.
"""

import argparse
import json
import os
import statistics
import subprocess


def blas_environment():
    environment = dict(os.environ, OPENBLAS_NUM_THREADS="1")
    with open("/proc/cpuinfo", encoding="ascii", errors="replace") as cpuinfo:
        if "avx512dq" in cpuinfo.read():
            environment["OPENBLAS_CORETYPE"] = "SKYLAKEX"
    return environment


def medians(program, repetitions):
    """Median nanoseconds per product by (kernel, band); the repetitions of all benchmarks are interleaved."""
    command = [program, f"--benchmark_repetitions={repetitions}", "--benchmark_enable_random_interleaving=true",
               "--benchmark_format=json"]
    report = json.loads(subprocess.run(command, env=blas_environment(), check=True, stdout=subprocess.PIPE).stdout)
    values = {}
    for run in report["benchmarks"]:
        if run.get("run_type") != "iteration":
            continue
        if run.get("error_occurred"):
            raise SystemExit(f"{run['name']}: {run['error_message']}")
        parts = run["name"].split("/")
        band = next((int(part[5:]) for part in parts if part.startswith("band:")), 0)
        values.setdefault(("/".join(parts[:2]), band), []).append(run["ns/product"])
    return {key: statistics.median(runs) for key, runs in values.items()}


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("program")
    parser.add_argument("--repetitions", type=int, default=5)
    arguments = parser.parse_args()
    ns = medians(arguments.program, arguments.repetitions)

    kernels = list(dict.fromkeys(kernel for kernel, _ in ns))
    bands = sorted({band for _, band in ns if band})
    dgemm = ns[("Dgemm/double", 0)]
    print(f"dgemm: {dgemm:.4f} ns a product\n")
    print("| ns a product | " + " | ".join(f"band {band}" for band in bands) + " |")
    print("|---|" + "---|" * len(bands))
    for kernel in kernels:
        if kernel != "Dgemm/double":
            cells = (f"{ns[kernel, band]:.3f}" if (kernel, band) in ns else "" for band in bands)
            print(f"| {kernel} | " + " | ".join(cells) + " |")

    fast, quad, column = (f"SkylineFactorize/{form}" for form in ("double", "double128", "ddot"))
    ratios = [(f"double / ddot form, band {band}", ns[fast, band] / ns[column, band], "<=", limit)
              for band, limit in ((500, 0.25), (1500, 0.08))]
    ratios += [(f"dgemm / double, band {band}", dgemm / ns[fast, band], ">=", 0.55) for band in (500, 1500)]
    ratios += [(f"double128 / ddot form, band {band}", ns[quad, band] / ns[column, band], "<=", limit)
               for band, limit in ((400, 2.5), (500, 2.5), (1500, 0.7))]
    print("\n| ratio | measured | target | |\n|---|---|---|---|")
    for name, value, relation, limit in ratios:
        met = value <= limit if relation == "<=" else value >= limit
        print(f"| {name} | {value:.3f} | {relation} {limit} | {'met' if met else 'missed'} |")


if __name__ == "__main__":
    main()
