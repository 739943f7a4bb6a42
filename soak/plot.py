"""Draws the figures that a trial has written (a line a look, the names first) as curves, one below the other.

    python3 soak/plot.py FIGURES.csv [FIGURES.csv ...] PICTURE.svg
"""

import csv
import pathlib
import sys

WIDTH, HEIGHT, LEFT, GAP = 720, 90, 170, 22
COLOURS = ["#1f6fb2", "#c2571a", "#3a8f3a"]


def read(path):
    with open(path, encoding="utf-8") as file:
        rows = list(csv.reader(file, delimiter=";"))
    columns = list(zip(*[[int(cell) for cell in row] for row in rows[1:]]))
    return dict(zip(rows[0], columns))


def curve(xs, ys, top, low, high, colour):
    last = xs[-1] or 1
    # Seen from nought, so that a change looks as large as it is.
    points = " ".join(f"{LEFT + x / last * (WIDTH - LEFT - 90):.1f},{top + HEIGHT - (y - low) / ((high - low) or 1) * (HEIGHT - 8):.1f}" for x, y in zip(xs, ys))
    return f'<polyline fill="none" stroke="{colour}" stroke-width="1.5" points="{points}"/>'


def main(arguments):
    *sources, picture = arguments
    tables = {pathlib.Path(source).stem: read(source) for source in sources}
    names = [name for name in next(iter(tables.values())) if name != "repetitions"]
    height = (HEIGHT + GAP) * len(names) + 60
    parts = [f'<svg xmlns="http://www.w3.org/2000/svg" width="{WIDTH}" height="{height}" font-family="sans-serif" font-size="12">',
             f'<rect width="{WIDTH}" height="{height}" fill="white"/>']
    for number, (source, table) in enumerate(tables.items()):
        parts.append(f'<text x="{LEFT + number * 180}" y="20" fill="{COLOURS[number % 3]}">{source}, {table["repetitions"][-1]} times</text>')
    for row, name in enumerate(names):
        top = 30 + row * (HEIGHT + GAP)
        high = max(max(table[name]) for table in tables.values())
        parts.append(f'<text x="10" y="{top + HEIGHT / 2}">{name}</text>')
        parts.append(f'<line x1="{LEFT}" x2="{WIDTH - 90}" y1="{top + HEIGHT}" y2="{top + HEIGHT}" stroke="#999"/>')
        for number, table in enumerate(tables.values()):
            parts.append(curve(table["repetitions"], table[name], top, 0, high, COLOURS[number % 3]))
            parts.append(f'<text x="{WIDTH - 84}" y="{top + 16 + 16 * number}" fill="{COLOURS[number % 3]}">{table[name][-1]}</text>')
    parts.append("</svg>")
    pathlib.Path(picture).write_text("\n".join(parts) + "\n", encoding="utf-8")


main(sys.argv[1:])
