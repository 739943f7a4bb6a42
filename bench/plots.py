"""Draws figures as curves over sizes, both axes logarithmic: the station's full, its baselines dashed."""

import math

WIDTH, HEIGHT, LEFT, TOP, RIGHT, BOTTOM = 760, 420, 70, 20, 230, 50
COLOURS = ["#1f6fb2", "#c2571a", "#3a8f3a", "#8a4fae", "#a33", "#777"]


class Axes:
    def __init__(self, sizes, values):
        self.sizes = sizes
        self.low, self.high = math.floor(math.log10(min(values))), math.ceil(math.log10(max(values)))

    def x(self, size):
        first, last = math.log(self.sizes[0]), math.log(self.sizes[-1])
        return LEFT + (math.log(size) - first) / ((last - first) or 1) * (WIDTH - LEFT - RIGHT)

    def y(self, value):
        return TOP + (self.high - math.log10(value)) / ((self.high - self.low) or 1) * (HEIGHT - TOP - BOTTOM)


def power(exponent):
    return f"{10 ** exponent:,}" if exponent >= 0 else f"{10.0 ** exponent:g}"


def grid(axes, across, up):
    parts = []
    for exponent in range(axes.low, axes.high + 1):
        y = axes.y(10.0 ** exponent)
        parts.append(f'<line x1="{LEFT}" x2="{WIDTH - RIGHT}" y1="{y:.1f}" y2="{y:.1f}" stroke="#ddd"/><text x="{LEFT - 8}" y="{y + 4:.1f}" text-anchor="end">{power(exponent)}</text>')
    for size in axes.sizes:
        parts.append(f'<text x="{axes.x(size):.1f}" y="{HEIGHT - BOTTOM + 18}" text-anchor="middle">{size}</text>')
    parts.append(f'<text x="{(LEFT + WIDTH - RIGHT) / 2}" y="{HEIGHT - 10}" text-anchor="middle">{across}</text>')
    parts.append(f'<text transform="translate(14 {HEIGHT / 2}) rotate(-90)" text-anchor="middle">{up}</text>')
    return parts


def plot(path, curves, across, up):
    """Curves: a list of (name, points of the station, points of its baseline), a point being (size, value)."""
    curves = [curve for curve in curves if len(curve[1]) > 1]
    if not curves:
        return
    points = [point for _, own, bare in curves for point in own + bare]
    axes = Axes(sorted({size for size, _ in points}), [value for _, value in points])
    parts = [f'<svg xmlns="http://www.w3.org/2000/svg" width="{WIDTH}" height="{HEIGHT}" font-family="sans-serif" font-size="12">', f'<rect width="{WIDTH}" height="{HEIGHT}" fill="white"/>', *grid(axes, across, up)]
    for number, (name, own, bare) in enumerate(curves):
        colour = COLOURS[number % len(COLOURS)]
        for line, dash in ((own, ""), (bare, ' stroke-dasharray="5 4"')):
            if line:
                coordinates = " ".join(f"{axes.x(size):.1f},{axes.y(value):.1f}" for size, value in line)
                parts.append(f'<polyline fill="none" stroke="{colour}" stroke-width="1.8"{dash} points="{coordinates}"/>')
        parts.append(f'<text x="{WIDTH - RIGHT + 12}" y="{TOP + 14 + 18 * number}" fill="{colour}">{name}</text>')
    parts.append(f'<text x="{WIDTH - RIGHT + 12}" y="{TOP + 24 + 18 * len(curves)}" fill="#555">dashed: without the station</text>')
    path.write_text("\n".join([*parts, "</svg>"]) + "\n", encoding="utf-8")
