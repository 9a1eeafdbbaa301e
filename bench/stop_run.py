#!/usr/bin/env python3
"""Measures how soon a run ends after Ctrl-C.

    stop_run.py PROGRAM frame:N[:pdelta] [--stops COUNT] [OPTION...]

Runs the program once on a space frame of N x N x N nodes, then COUNT times more, each stopped at another moment spread
over the run, and prints what it was doing and how long it took to end. Every run must end with exit code 130 and
leave no file. OPTIONs go to `qvxfem run`.
"""
import argparse
import collections
import json
import os
import signal
import subprocess
import sys
import tempfile
import threading
import time


def frame(n, is_pdelta):
    """Model of a space frame on fixed feet under a load at its farthest corner."""
    node = lambda i, j, k: 1 + i + n * (j + n * k)
    places = [(i, j, k) for k in range(n) for j in range(n) for i in range(n)]
    beams = []
    for i, j, k in places:
        for a, b, c in ((i + 1, j, k), (i, j + 1, k), (i, j, k + 1)):
            if max(a, b, c) < n:
                beams.append({"id": len(beams) + 1, "node1": node(i, j, k), "node2": node(a, b, c)})
    return {
        "format": "qvxfem-model",
        "version": 1,
        # A tolerance that is never met: a P-Delta run goes on for as many iterations as it may.
        "settings": {"solverType": 2, "pDeltaTolerance": 1e-13, "maxNonlinearIterations": 6},
        "materials": [{"id": 1, "E": 29e6, "nu": 0.3, "Tc": 6.5e-6}],
        "sections": [{"id": 1, "A": 10, "Iz": 100, "Iy": 50, "J": 20}],
        "nodes": [{"id": node(i, j, k), "x": 100 * i, "y": 100 * j, "z": 100 * k} for i, j, k in places],
        "supports": [{"id": node(i, j, 0), "flag": "111111"} for j in range(n) for i in range(n)],
        "beams": beams,
        "loadCases": [{"id": 1, "label": "P"}],
        "caseLoads": [{"ndLoads": [{"id": n**3, "dof": 0, "value": 1000}]}],
        "loadCombs": [{"label": "C", "bPDelta": int(is_pdelta), "cases": [{"label": "P", "factor": 1}]}],
    }


def run(command, folder, delay=None):
    """Seconds of the run, or seconds from Ctrl-C to its end, the exit code and the line that stood last."""
    start = time.monotonic()
    process = subprocess.Popen(command, cwd=folder, stderr=subprocess.PIPE, stdout=subprocess.DEVNULL, text=True)
    lines = collections.deque(maxlen=1)
    reader = threading.Thread(target=lambda: lines.extend(process.stderr))
    reader.start()
    doing = ""
    if delay is not None:
        time.sleep(delay)
        doing = lines[0].strip() if lines else "reading the model"
        start = time.monotonic()
        process.send_signal(signal.SIGINT)
    process.wait()
    seconds = time.monotonic() - start
    reader.join()
    return seconds, process.returncode, doing


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("program")
    parser.add_argument("model")
    parser.add_argument("--stops", type=int, default=12)
    arguments, options = parser.parse_known_args()
    size = arguments.model.split(":")
    with tempfile.TemporaryDirectory() as folder:
        with open(os.path.join(folder, "m.json"), "w") as file:
            json.dump(frame(int(size[1]), "pdelta" in size), file)
        program = os.path.abspath(arguments.program)
        whole, code, _ = run([program, "run", "m.json", *options], folder)
        print(f"{arguments.model} {' '.join(options)}: whole run {whole:.2f} s, exit {code}", flush=True)
        worst = 0.0
        for k in range(arguments.stops):
            delay = whole * (k + 0.5) / arguments.stops
            seconds, code, doing = run([program, "run", "m.json", "--results", "r.json", *options], folder, delay)
            print(f"  at {delay:6.2f} s: ended after {seconds:.3f} s, exit {code}  [{doing[:48]}]", flush=True)
            left = sorted(set(os.listdir(folder)) - {"m.json"})
            if doing != "reading the model" and (code not in (0, 130) or (code == 130 and left)):
                sys.exit(f"exit {code}, left behind: {left}")
            if code == 130:
                worst = max(worst, seconds)
            for name in left:
                os.remove(os.path.join(folder, name))  # of a run that was done before it was stopped
        print(f"  worst {worst:.3f} s")


if __name__ == "__main__":
    main()
