#!/usr/bin/env python3
"""Draws the convergence of published problems from test output: docs/img/convergence-*.svg. Needs Python 3 only.

    build/release/tests/verification/test_verification --gtest_output=json:verification.json
    scripts/plot_convergence.py verification.json

A test records a point as the property "convergence/PROBLEM/SERIES/N" with the ratio to the published reference.
"""
import collections
import json
import pathlib
import re
import sys

OUT = pathlib.Path(__file__).resolve().parent.parent / "docs" / "img"
COLORS = ("#0b61a4", "#b5341c", "#3a7d34", "#7a4aa0", "#9a6b00")
WIDTH, HEIGHT, LEFT, TOP, RIGHT, BOTTOM = 640, 330, 60, 40, 210, 45


def read(path):
    problems = collections.defaultdict(lambda: collections.defaultdict(list))
    for suite in json.loads(pathlib.Path(path).read_text())["testsuites"]:
        for test in suite["testsuite"]:
            for key, value in test.items():
                match = re.fullmatch(r"convergence/([^/]+)/([^/]+)/(\d+)", key)
                if match:
                    problems[match[1]][match[2]].append((int(match[3]), float(value)))
    return problems


def draw(problem, series):
    sizes = sorted({n for points in series.values() for n, _ in points})
    ratios = [r for points in series.values() for _, r in points]
    low, high = min(0.95, *ratios), max(1.05, *ratios)
    margin = 0.05 * (high - low)
    low, high = low - margin, high + margin
    x = lambda n: LEFT + (WIDTH - LEFT - RIGHT) * (sizes.index(n) / max(1, len(sizes) - 1))
    y = lambda r: TOP + (HEIGHT - TOP - BOTTOM) * (high - r) / (high - low)
    out = [f'<svg xmlns="http://www.w3.org/2000/svg" width="{WIDTH}" height="{HEIGHT}" '
           f'viewBox="0 0 {WIDTH} {HEIGHT}" font-family="sans-serif" font-size="12">',
           f'<rect width="{WIDTH}" height="{HEIGHT}" fill="white"/>',
           f'<text x="{LEFT}" y="22" font-size="14">{problem}</text>']
    for n in sizes:
        out.append(f'<line x1="{x(n):.1f}" y1="{TOP}" x2="{x(n):.1f}" y2="{HEIGHT - BOTTOM}" stroke="#e4e4e4"/>'
                   f'<text x="{x(n):.1f}" y="{HEIGHT - BOTTOM + 18}" text-anchor="middle">{n}</text>')
    steps = 6
    for k in range(steps + 1):
        r = low + (high - low) * k / steps
        out.append(f'<text x="{LEFT - 8}" y="{y(r) + 4:.1f}" text-anchor="end">{r:.3f}</text>')
    out.append(f'<line x1="{LEFT}" y1="{y(1):.1f}" x2="{WIDTH - RIGHT}" y2="{y(1):.1f}" stroke="#222" '
               f'stroke-dasharray="4 3"/><text x="{WIDTH - RIGHT + 8}" y="{y(1) + 4:.1f}">reference</text>')
    out.append(f'<text x="{(LEFT + WIDTH - RIGHT) / 2}" y="{HEIGHT - 8}" text-anchor="middle">elements along a side</text>')
    for color, (name, points) in zip(COLORS, sorted(series.items())):
        points = sorted(points)
        path = " ".join(f"{x(n):.1f},{y(r):.1f}" for n, r in points)
        out.append(f'<polyline points="{path}" fill="none" stroke="{color}" stroke-width="1.8"/>')
        out += [f'<circle cx="{x(n):.1f}" cy="{y(r):.1f}" r="3" fill="{color}"/>' for n, r in points]
    for k, (color, name) in enumerate(zip(COLORS, sorted(series))):
        out.append(f'<text x="{WIDTH - RIGHT + 8}" y="{TOP + 14 + 17 * k}" fill="{color}">{name}</text>')
    out.append("</svg>")
    OUT.mkdir(parents=True, exist_ok=True)
    slug = re.sub(r"[^a-z0-9]+", "-", problem.lower()).strip("-")
    (OUT / f"convergence-{slug}.svg").write_text("\n".join(out) + "\n")
    print(f"docs/img/convergence-{slug}.svg")


if __name__ == "__main__":
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    found = read(sys.argv[1])
    if not found:
        sys.exit("no convergence points in this file")
    for title, curves in sorted(found.items()):
        draw(title, curves)
