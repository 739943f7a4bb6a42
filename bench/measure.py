"""Measures and prints one table; called by scripts/bench, which has built what is run here."""

import argparse
import contextlib
import json
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import time

import counts
import goals
import plots
import runs

QUICK_SIZES = {1, 12, 192}
OF_SLOTS = ("drawn.", "return.", "answer.", "trips.slot")
IN_A_WINDOW = re.compile(r"(drawn|return|answer)\..*/(12|192)|trips\.slot/12|key/1")
PAGE = runs.ROOT / "docs" / "performance.md"
PICTURES = runs.ROOT / "docs" / "pictures"


def arguments():
    parser = argparse.ArgumentParser(add_help=False)
    parser.add_argument("--quick", action="store_true")
    parser.add_argument("--filter", type=re.compile)
    parser.add_argument("--out", type=pathlib.Path)
    parser.add_argument("--write", action="store_true")
    parser.add_argument("--instructions", action="store_true")
    parser.add_argument("--once", action="store_true", help="each figure's least size, one round, without a window: whether all of it still runs")
    parser.add_argument("--build", type=pathlib.Path, default=runs.BUILD)
    return parser.parse_args()


def is_chosen(name, wanted):
    if wanted.filter:
        return bool(wanted.filter.search(name))
    return not (wanted.quick and name.startswith(OF_SLOTS) and goals.size_of(name) not in QUICK_SIZES)


@contextlib.contextmanager
def display():
    """An X server of our own; None where there is none to be had."""
    if not shutil.which("Xvfb"):
        yield None
        return
    with tempfile.TemporaryFile() as number:
        server = subprocess.Popen(["Xvfb", "-displayfd", str(number.fileno()), "-screen", "0", "1920x1200x24", "-nolisten", "tcp"], stderr=subprocess.DEVNULL, pass_fds=[number.fileno()])
        try:
            said = b""
            while not said.endswith(b"\n"):
                if server.poll() is not None:
                    raise RuntimeError("Xvfb does not start")
                time.sleep(0.05)
                said = os.pread(number.fileno(), 16, 0)
            yield f":{said.decode().strip()}"
        finally:
            server.terminate()
            server.wait()


def least_sizes(figures):
    least = {}
    for figure in figures:
        family = figure.name.split("/")[0]
        if family not in least or (goals.size_of(figure.name) or 0) < (goals.size_of(least[family].name) or 0):
            least[family] = figure
    return list(least.values())


def measured_once():
    chosen = least_sizes(runs.figures())
    runs.run_rounds(chosen, 1, 0.0, 0.0)
    return [*chosen, runs.start_figure(1)], []


def measured(wanted):
    """The figures without a display, and those in a window."""
    if wanted.once:
        return measured_once()
    # Few rounds, or as many as there is time for: where the machine is busy, the first one may be the last.
    rounds, budget, limit = (5, 8.0, 70.0) if wanted.quick else (9, 90.0, float("inf"))
    end = time.monotonic() + limit
    chosen = [figure for figure in runs.figures() if is_chosen(figure.name, wanted)]
    runs.run_rounds(chosen, rounds, budget, end)
    if is_chosen("start", wanted):
        print("Starting stations", flush=True)
        chosen.append(runs.start_figure(3 * rounds))
    in_window = []
    with display() as name:
        if name is not None:
            os.environ["DISPLAY"] = name
            in_window = [runs.Figure(figure.program, figure.name, figure.baseline) for figure in chosen if IN_A_WINDOW.fullmatch(figure.name)]
            runs.run_rounds(in_window, 1 if wanted.quick else rounds, budget / 3, end, "xcb")
    return chosen, in_window


def main_key(figure):
    first = figure.rounds[0][0]
    return "per_second" if "per_second" in first else "time"


def show(value, key):
    if value is None:
        return ""
    if key == "per_second":
        return f"{value:,.0f} /s"
    if key.endswith("_kib"):
        return f"{value:,.2f} KiB"
    if key == "main_share":
        return f"{value:.0%}"
    if key == "slowest":
        return f"{value:.2f} ×"
    nanoseconds = value * 1e6 if key == "processor_ms" else value
    for limit, unit in ((1e9, "s"), (1e6, "ms"), (1e3, "µs")):
        if nanoseconds >= limit:
            return f"{nanoseconds / limit:.3g} {unit}" if nanoseconds / limit < 1000 else f"{nanoseconds / limit:,.0f} {unit}"
    return f"{nanoseconds:.0f} ns"


def row(label, numbers, key, goal, met):
    ratio = "" if numbers.ratio is None else f"{numbers.ratio:.2f}"
    says = {None: "", True: "yes", False: "**no**"}[met]
    return f"| {label} | {show(numbers.median, key)} | {show(numbers.least, key)} | {show(numbers.most, key)} | {show(numbers.bare, key)} | {ratio} | {goal} | {says} |"


# What a benchmark says besides its time: the key, what it is called, and its goal.
BESIDE = [
    ("processor_ms", "… processor time of one", "", lambda numbers: None),
    ("main_share", "… the main thread's share of the time", "", lambda numbers: None),
    ("slowest", "… the longest call against its round's median", "≤ 2 ×", lambda numbers: numbers.median <= 2.0),
    ("open_kib", "resident memory of an open slot panel", "", lambda numbers: None),
    ("closed_kib", "… of one that was closed", "0", lambda numbers: abs(numbers.median) < 0.05),
    ("rest_kib", "… resident memory then", "", lambda numbers: None),
]


def rows_of(figure, all_numbers, where):
    if figure.name != "memory":
        key = main_key(figure)
        numbers = runs.Numbers(figure.pairs(key))
        yield row(goals.title(figure.name) + where, numbers, key, *goals.goal_of(figure.name, numbers, all_numbers))
    for key, label, goal, is_met in BESIDE:
        if any(pair[0] for pair in figure.pairs(key)):
            numbers = runs.Numbers(figure.pairs(key))
            yield row(label, numbers, key, goal, is_met(numbers))
        elif key == "closed_kib" and figure.name == "memory":
            numbers = runs.Numbers(figure.pairs(key))
            yield row(label, numbers, key, goal, is_met(numbers))


def table(chosen, in_window):
    lines = ["| figure | median | min | max | baseline | ratio | goal | met |", "| --- | ---: | ---: | ---: | ---: | ---: | --- | --- |"]
    for figures, where in ((chosen, ""), (in_window, ", in a window")):
        all_numbers = {figure.name: runs.Numbers(figure.pairs(main_key(figure))) for figure in figures}
        for figure in figures:
            lines.extend(rows_of(figure, all_numbers, where))
    return "\n".join(lines)


def points(figures, family, unit):
    own, bare = [], []
    for figure in figures:
        if re.fullmatch(family + r"/\d+", figure.name):
            numbers = runs.Numbers(figure.pairs(main_key(figure)))
            size = goals.size_of(figure.name) if family != "trips.slot" else 1
            own.append((size, numbers.median / unit))
            if numbers.bare:
                bare.append((size, numbers.bare / unit))
    return own, bare


def draw(figures):
    families = [("slot panels drawn", r"drawn\.slot"), ("group panel drawn", r"drawn\.group"), ("switches drawn", r"drawn\.switch"), ("Return, group", r"return\.group"), ("OK, slot panel", r"answer\.slot"), ("OK, group", r"answer\.group")]
    plots.plot(PICTURES / "cost-by-slots.svg", [(name, *points(figures, family, 1e6)) for name, family in families], "slots", "milliseconds")
    one = [figure for figure in figures if figure.name == "trips.slot/1"]
    alone, bare_alone = points(one, "trips.slot", 1)
    many, bare_many = points(figures, r"trips\.at\.once", 1)
    plots.plot(PICTURES / "trips-by-threads.svg", [("round trips", alone + many, bare_alone + bare_many)], "sequences at once", "round trips a second")


def put(page, mark, text):
    """Replaces what stands between the marks in the page."""
    begin, end = f"<!-- {mark} -->", f"<!-- end of {mark} -->"
    whole = page.read_text(encoding="utf-8")
    head, rest = whole.split(begin + "\n", 1)
    page.write_text(head + begin + "\n" + text + "\n" + end + rest.split(end, 1)[1], encoding="utf-8")


def keep(wanted, mark, text):
    print(text)
    if wanted.out:
        wanted.out.write_text(text + "\n", encoding="utf-8")
    if wanted.write:
        put(PAGE, mark, text)


def main():
    wanted = arguments()
    runs.BUILD = wanted.build
    if wanted.instructions:
        keep(wanted, "counts", counts.table())
        return
    begin = time.monotonic()
    chosen, in_window = measured(wanted)
    if not chosen:
        raise RuntimeError("no figure has such a name")
    raw = [{"name": figure.name, "rounds": figure.rounds} for figure in chosen + in_window]
    (runs.BUILD / "bench.json").write_text(json.dumps(raw), encoding="utf-8")
    keep(wanted, "figures", table(chosen, in_window))
    if wanted.write:
        draw(chosen)
    print(f"{time.monotonic() - begin:.0f} s")


try:
    main()
except (RuntimeError, OSError, subprocess.SubprocessError) as problem:
    print(f"bench: {problem}", file=sys.stderr)
    sys.exit(1)
