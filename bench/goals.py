"""What each figure is called, what it is to be, and whether it is."""

import re

QUARTER_FRAME = 1e9 / 60 / 4
MILLISECOND = 1e6

TITLES = [
    (r"drawn\.slot/(\d+)", "call to painted and focused: a panel of each of {} slots"),
    (r"drawn\.group/(\d+)", "call to painted and focused: a group's panel, of {} slots (12 asked at most)"),
    (r"drawn\.switch/(\d+)", "call to painted: a group's panel with {} switches"),
    (r"return\.slot/(\d+)", "Return to stored, coloured, painted: {} slot panels open"),
    (r"return\.group/(\d+)", "Return to stored, coloured, painted: a group's panel, of {} slots"),
    (r"key/(\d+)", "a key in a field of {} characters (processor time)"),
    (r"answer\.slot/(\d+)", '"OK" to returned: one of {} slot panels'),
    (r"answer\.group/(\d+)", '"OK" to returned: a group\'s panel, of {} slots'),
    (r"answer\.switch/(\d+)", '"OK" to returned: a group\'s panel with {} switches'),
    (r"trips\.slot/(\d+)", "round trips a second, one sequence, {} slots"),
    (r"trips\.dialog", "round trips a second, one sequence, 12 slots, beside a modal dialog"),
    (r"trips\.at\.once/(\d+)", "round trips a second, {} sequences at once"),
    (r"thousand\.calls", "1,000 calls from Lua into the plug-in"),
    (r"stop/(\d+)", "Stop with {} waiting calls to all returned and gone"),
    (r"logEvent/listening:0", "a log event on the thread that logs, nobody listening"),
    (r"logEvent/listening:1", "a log event, into a file"),
    (r"logEvent/listening:2", "a log event, into a file and the pane"),
    (r"logEventWithManyValues/listening:0", "a log event with 10,000 values, nobody listening"),
    (r"logEventWithManyValues/listening:1", "a log event with 10,000 values, into a file"),
    (r"logEventWithManyValues/listening:2", "a log event with 10,000 values, into a file and the pane"),
    (r"loopAskedFor/values:(\d+)", "isLoopFinished with {} values saved"),
    (r"equalEntrySoughtAmong/values:(\d+)", "ten entries checked for an equal one, with {} values saved"),
    (r"start", "start to a window ready for input"),
]


def title(name):
    for pattern, text in TITLES:
        found = re.fullmatch(pattern, name)
        if found:
            return text.format(*[f"{int(size):,}" for size in found.groups()])
    return name


def size_of(name):
    found = re.search(r"/(\d+)$", name)
    return int(found.group(1)) if found else None


def at_most(goal, value):
    return None if value is None else value <= goal


def goal_of(name, numbers, all_numbers):
    """The goal of a figure in words, and whether it is met (None: there is nothing to hold it against)."""
    family, size = name.split("/")[0], size_of(name)
    ratio = numbers.ratio

    def median(other):
        return all_numbers[other].median if other in all_numbers else None

    if family.startswith("drawn.") and size == 12:
        return "≤ 1.5 ×, ≤ 4.17 ms", at_most(1.5, ratio) and at_most(QUARTER_FRAME, numbers.median)
    if family.startswith("drawn."):
        return "≤ 1.5 ×", at_most(1.5, ratio)
    if family.startswith("return.") and size == 12:
        return "< 1 ms", numbers.median < MILLISECOND
    if family.startswith("return.") and size > 12:
        of_twelve = median(f"{family}/12")
        return "≤ linear", None if of_twelve is None else numbers.median <= of_twelve * size / 12
    if family == "key" and size > 1:
        of_one = median("key/1")
        return "as with 1 (≤ 1.2 ×)", None if of_one is None else numbers.median <= 1.2 * of_one
    if family.startswith("answer."):
        return "≤ 5 ×", at_most(5.0, ratio)
    if family == "trips.slot":
        return "≥ 0.8 ×", None if ratio is None else ratio >= 0.8
    if family == "trips.at.once":
        before = median(f"trips.at.once/{size // 4}") if size > 4 else median("trips.slot/1")
        return "no less than of fewer (≥ 0.95 ×)", None if before is None else numbers.median >= 0.95 * before
    if family == "stop" and size == 1024:
        return "≤ 100 ms", numbers.median <= 100 * MILLISECOND
    if family == "start":
        return "≤ 1.5 ×", at_most(1.5, ratio)
    if family.lower().startswith("log"):
        return "< 0.5 µs", numbers.median < 500
    return "", None
