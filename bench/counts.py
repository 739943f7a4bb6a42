"""Counted instructions of a round trip and of a log event: the difference between so many and twice as many, so that
what is done once falls out. Other programs on the machine do not change them."""

import re
import subprocess
import tempfile

import runs

TRIPS, EVENTS = 10, 2000
KINDS = [(f"round trip, slot panel, {slots} slots", ["--kind", "slot", "--slots", str(slots)], "--trips", TRIPS) for slots in (1, 12, 192)]
KINDS += [(f"round trip, group panel, {slots} slots", ["--kind", "group", "--slots", str(slots)], "--trips", TRIPS) for slots in (1, 12, 192)]
KINDS += [("log event into a file", [], "--events", EVENTS)]


def count(arguments):
    with tempfile.NamedTemporaryFile() as out:
        command = ["valgrind", "--tool=callgrind", f"--callgrind-out-file={out.name}", runs.BUILD / "bin" / "station_trips", *arguments]
        done = subprocess.run(command, env=runs.environment(QT_QPA_PLATFORM="offscreen"), capture_output=True, text=True, timeout=3600)
    found = re.search(r"Collected : (\d+)", done.stderr)
    if done.returncode or not found:
        raise RuntimeError(f"valgrind: {(done.stdout + done.stderr)[-600:]}")
    return int(found.group(1))


def table():
    lines = ["| counted instructions of a | thousands |", "| --- | ---: |"]
    for name, arguments, option, number in KINDS:
        print(f"Counting: {name}", flush=True)
        once, twice = (count([*arguments, option, str(times)]) for times in (number, 2 * number))
        lines.append(f"| {name} | {(twice - once) / number / 1e3:,.1f} |")
        print(lines[-1], flush=True)
    return "\n".join(lines)
