#!/usr/bin/env python3
"""Draws the elements, their node order, axes and signs: docs/img/*.svg. Needs Python 3 only."""
import math
import pathlib

OUT = pathlib.Path(__file__).resolve().parent.parent / "docs" / "img"
INK, LOCAL, FORCE, FAINT = "#222222", "#0b61a4", "#b5341c", "#9a9a9a"


class Drawing:
    """Lines, arrows and labels in an oblique projection of three dimensions (x right, y up, z towards the reader)."""

    def __init__(self, width, height, origin, scale):
        self.size, self.origin, self.scale, self.items = (width, height), origin, scale, []

    def flat(self, p):
        x, y, z = (*p, 0)[:3]
        u, v = x - 0.45 * z, y - 0.32 * z
        return self.origin[0] + self.scale * u, self.origin[1] - self.scale * v

    def line(self, a, b, color=INK, width=1.5, dash=None):
        (x1, y1), (x2, y2) = self.flat(a), self.flat(b)
        extra = f' stroke-dasharray="{dash}"' if dash else ""
        self.items.append(f'<line x1="{x1:.1f}" y1="{y1:.1f}" x2="{x2:.1f}" y2="{y2:.1f}" stroke="{color}" '
                          f'stroke-width="{width}"{extra}/>')

    def polyline(self, points, color=INK, width=1.5, fill="none"):
        text = " ".join(f"{x:.1f},{y:.1f}" for x, y in map(self.flat, points))
        self.items.append(f'<polyline points="{text}" stroke="{color}" stroke-width="{width}" fill="{fill}"/>')

    def arrow(self, a, b, color=INK, width=1.8, heads=1):
        """heads 2 is a moment: it turns right-handed about its arrow."""
        self.line(a, b, color, width)
        (x1, y1), (x2, y2) = self.flat(a), self.flat(b)
        length = math.hypot(x2 - x1, y2 - y1) or 1
        ux, uy = (x2 - x1) / length, (y2 - y1) / length
        for k in range(heads):
            px, py = x2 - 8 * k * ux, y2 - 8 * k * uy
            wing = [(px - 9 * ux + s * 3.5 * uy, py - 9 * uy - s * 3.5 * ux) for s in (1, -1)]
            self.items.append(f'<polygon points="{px:.1f},{py:.1f} {wing[0][0]:.1f},{wing[0][1]:.1f} '
                              f'{wing[1][0]:.1f},{wing[1][1]:.1f}" fill="{color}"/>')

    def label(self, p, text, color=INK, dx=6, dy=-5, size=14, italic=False):
        x, y = self.flat(p)
        style = ' font-style="italic"' if italic else ""
        self.items.append(f'<text x="{x + dx:.1f}" y="{y + dy:.1f}" fill="{color}" font-size="{size}"{style}>{text}</text>')

    def node(self, p, text, dx=7, dy=16):
        x, y = self.flat(p)
        self.items.append(f'<circle cx="{x:.1f}" cy="{y:.1f}" r="4" fill="white" stroke="{INK}" stroke-width="1.5"/>')
        self.label(p, text, dx=dx, dy=dy)

    def axes(self, at, names, vectors, color):
        for name, v in zip(names, vectors):
            tip = tuple(a + c for a, c in zip(at, v))
            self.arrow(at, tip, color)
            towards_reader = v[2] > 0
            self.label(tip, name, color, dx=-14 if towards_reader else 6, dy=4 if towards_reader else -5, italic=True)

    def save(self, name):
        width, height = self.size
        body = "\n".join(self.items)
        OUT.mkdir(parents=True, exist_ok=True)
        (OUT / name).write_text(f'<svg xmlns="http://www.w3.org/2000/svg" width="{width}" height="{height}" '
                                f'viewBox="0 0 {width} {height}" font-family="sans-serif">\n'
                                f'<rect width="{width}" height="{height}" fill="white"/>\n{body}\n</svg>\n')


def member():
    d = Drawing(660, 280, (90, 150), 100)
    start, end = (0, 0, 0), (4, 0, 0)
    d.line(start, end, INK, 4)
    d.axes((1.4, 0, 0), "xyz", [(0.9, 0, 0), (0, 0.9, 0), (0, 0, 0.9)], LOCAL)
    d.axes((-0.55, -0.75, 0), ("X", "Y", "Z"), [(0.45, 0, 0), (0, 0.45, 0), (0, 0, 0.45)], FAINT)
    for at, side in ((start, 0), (end, 6)):
        d.arrow(at, (at[0] + 0.55, 0.0, 0), FORCE)
        d.arrow(at, (at[0], 0.62, 0), FORCE)
        d.arrow(at, (at[0], 0, 0.75), FORCE)
        d.label((at[0] + 0.5, 0, 0), f"Fx ({side})", FORCE, dx=4, dy=18, size=12)
        d.label((at[0], 0.62, 0), f"Fy ({side + 1})", FORCE, size=12)
        d.label((at[0], 0, 0.75), f"Fz ({side + 2})", FORCE, dx=-10, dy=16, size=12)
    d.node(start, "node 1", dx=-52, dy=-6)
    d.node(end, "node 2", dx=-56, dy=-8)
    d.label((0.2, -0.95, 0), "End forces are what the nodes exert on the member;", size=12, dx=0)
    d.label((0.2, -1.12, 0), "moments (3-5 and 9-11) turn right-handed about x, y, z.", size=12, dx=0)
    d.save("member.svg")


def member_curve():
    d = Drawing(660, 470, (50, 70), 100)
    n = 60
    xs = [i / n for i in range(n + 1)]
    d.line((0, 0), (5, 0), INK, 4)
    for i in range(11):
        d.arrow((0.5 * i, 0.42), (0.5 * i, 0.06), FORCE, 1.2)
    d.label((2.2, 0.48), "load along -y", FORCE, size=12)
    rows = ((-1.0, "Fy = F[1] at the start", lambda x: 0.5 - x, 0.9), (-2.0, "Mz = -F[5] at the start, tension at -y positive", lambda x: 4 * x * (1 - x), 0.5),
            (-3.1, "Dy from the chord", lambda x: -(x - 2 * x**3 + x**4) * 3.2, 0.5))
    for base, text, curve, height in rows:
        d.line((0, base), (5, base), FAINT, 1)
        d.polyline([(0, base)] + [(5 * x, base + height * curve(x)) for x in xs] + [(5, base)], LOCAL, 1.8, "#0b61a41a")
        d.label((5, base), text, size=12, dx=-490, dy=16 if base > -3 else -6)
    d.save("member_curve.svg")


def shell():
    d = Drawing(640, 340, (150, 270), 80)
    p = [(0, 0, 0), (3.2, 0.2, 0), (3.6, 2.2, 0), (0.4, 2.0, 0)]
    d.polyline(p + [p[0]], INK, 2, "#0b61a414")
    mid = [tuple((a + c) / 2 for a, c in zip(p[i], p[(i + 1) % 4])) for i in range(4)]
    d.line(mid[3], mid[1], FAINT, 1, "4 3")
    d.line(mid[0], mid[2], FAINT, 1, "4 3")
    for i, q in enumerate(p):
        d.node(q, str(i + 1), dx=-16 if i in (0, 3) else 10, dy=16 if i < 2 else -8)
    centre = tuple(sum(q[k] for q in p) / 4 for k in range(3))
    d.axes(centre, "xyz", [(0.8, 0, 0), (0, 0.8, 0), (0, 0, 1.0)], LOCAL)
    d.arrow((3.55, 1.2, 0), (4.2, 1.2, 0), FORCE)
    d.label((4.2, 1.2, 0), "Fxx", FORCE, size=12)
    d.arrow((3.55, 1.35, 0), (3.62, 1.95, 0), FORCE)
    d.label((3.62, 1.75, 0), "Fxy", FORCE, size=12)
    d.arrow((2.0, 2.2, 0), (2.0, 2.8, 0), FORCE)
    d.label((2.0, 2.8, 0), "Fyy", FORCE, size=12)
    d.label((-1.6, -0.75, 0), "Dashed: lines between the midpoints of opposite sides; z is their cross product.", size=12)
    d.save("shell4.svg")


def brick():
    d = Drawing(560, 330, (200, 250), 100)
    p = [(0, 0, 0), (2, 0, 0), (2, 1.6, 0), (0, 1.6, 0), (0, 0, 1.6), (2, 0, 1.6), (2, 1.6, 1.6), (0, 1.6, 1.6)]
    for a, b in ((0, 1), (1, 2), (2, 3), (3, 0), (4, 5), (5, 6), (6, 7), (7, 4), (0, 4), (1, 5), (2, 6), (3, 7)):
        d.line(p[a], p[b], INK, 1.8, "5 4" if 0 in (a, b) else None)
    for i, q in enumerate(p):
        d.node(q, str(i + 1), dx=9, dy=-7)
    d.axes((1, 0.8, 0.8), "rst", [(0.7, 0, 0), (0, 0.7, 0), (0, 0, 0.9)], LOCAL)
    d.save("brick.svg")


if __name__ == "__main__":
    member()
    member_curve()
    shell()
    brick()
