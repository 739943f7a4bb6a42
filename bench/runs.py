"""Runs the benchmark programs in rounds and keeps what they say."""

import json
import os
import pathlib
import re
import statistics
import subprocess
import tempfile
import time

ROOT = pathlib.Path(__file__).resolve().parent.parent
BUILD = ROOT / "build" / "release"
PROGRAMS = ["station_bench", "station_trips"]
# What the allocator keeps for each thread fills up slowly, and would pass for something that was not given back.
FRUGAL = {"GLIBC_TUNABLES": "glibc.malloc.tcache_count=0:glibc.malloc.arena_max=1"}
NANOSECONDS = {"ns": 1.0, "us": 1e3, "ms": 1e6, "s": 1e9}


class Figure:
    """What one benchmark and its baseline have said, round by round."""

    def __init__(self, program, name, baseline):
        self.program, self.name, self.baseline = program, name, baseline
        self.rounds = []  # of pairs: counters of the figure, counters of the baseline
        self.seconds = 0.0

    def pairs(self, key):
        return [(own[key], bare.get(key, bare["time"] if key == "time" else None)) for own, bare in self.rounds if key in own]


class Numbers:
    """The median, the least and the greatest of a figure's rounds, and the same of its baseline and their ratio."""

    def __init__(self, pairs):
        own = [pair[0] for pair in pairs]
        bare = [pair[1] for pair in pairs if pair[1] is not None]
        self.median, self.least, self.most = statistics.median(own), min(own), max(own)
        self.bare = statistics.median(bare) if bare else None
        ratios = [pair[0] / pair[1] for pair in pairs if pair[1]]
        self.ratio = statistics.median(ratios) if ratios else None


def environment(**more):
    return {**os.environ, "LC_ALL": "C.UTF-8", "QT_STYLE_OVERRIDE": "fusion", **more}


def names(program):
    listed = subprocess.run([BUILD / "bin" / program, "--benchmark_list_tests=true"], env=environment(QT_QPA_PLATFORM="offscreen"), check=True, capture_output=True, text=True)
    return [re.sub(r"/iterations:.*", "", line) for line in listed.stdout.split()]


def figures():
    """All benchmarks with their baselines: a benchmark of its own name, or the hand-over between two threads."""
    found = []
    for program in PROGRAMS:
        known = names(program)
        for name in known:
            if not name.startswith("bare/"):
                baseline = f"bare/{name}" if f"bare/{name}" in known else "bare/hand-over"
                found.append(Figure(program, name, baseline))
    return found


def counters(entry):
    own = {key: value for key, value in entry.items() if isinstance(value, float)}
    own["time"] = own.get("median_ns", entry["real_time"] * NANOSECONDS[entry["time_unit"]])
    return own


def run_round(figure, platform):
    """One round of a figure and its baseline, one after the other in one process."""
    begin = time.monotonic()
    wanted = "|".join(re.escape(name).replace("\\-", "-") for name in (figure.name, figure.baseline))
    with tempfile.NamedTemporaryFile(suffix=".json") as out:
        command = [BUILD / "bin" / figure.program, f"--benchmark_filter=^({wanted})(/iterations.*|/real_time)?$", f"--benchmark_out={out.name}", "--benchmark_out_format=json", "--benchmark_min_time=0.05"]
        env = environment(QT_QPA_PLATFORM=platform, **(FRUGAL if figure.name == "memory" else {}))
        done = subprocess.run(command, env=env, capture_output=True, text=True, timeout=900)
        said = json.loads(pathlib.Path(out.name).read_text(encoding="utf-8") or "{}") if done.returncode == 0 else {}
    entries = {re.sub(r"/(iterations:|real_time).*", "", entry["name"]): entry for entry in said.get("benchmarks", [])}
    bad = [entry["error_message"] for entry in entries.values() if entry.get("error_occurred")]
    if done.returncode or bad or figure.name not in entries or figure.baseline not in entries:
        raise RuntimeError(f"{figure.name} ({platform}): {bad or (done.stdout + done.stderr)[-600:]}")
    figure.rounds.append((counters(entries[figure.name]), counters(entries[figure.baseline])))
    figure.seconds += time.monotonic() - begin


def run_rounds(chosen, rounds, budget, end, platform="offscreen"):
    """Rounds over all figures, so that what else the machine does falls on all of them; one that has used up its
    seconds rests for the remaining rounds, and none begins after the end."""
    for number in range(1, rounds + 1):
        if number > 1 and time.monotonic() > end:
            break
        print(f"Round {number} of {rounds} ({platform})", flush=True)
        for figure in chosen:
            if not figure.rounds or figure.seconds * (1 + 1 / len(figure.rounds)) <= budget:
                run_round(figure, platform)


def start_once(command, platform):
    """Milliseconds from the start of a process to its window ready for input, and its resident KiB then."""
    with tempfile.TemporaryDirectory() as home:
        ready = pathlib.Path(home) / "ready"
        env = environment(QT_QPA_PLATFORM=platform, QT_PLUGIN_PATH=str(BUILD / "bench"), QT_QPA_GENERIC_PLUGINS="readyprobe", BENCH_READY=str(ready), HOME=home, XDG_CONFIG_HOME=home, XDG_STATE_HOME=home, XDG_RUNTIME_DIR=home)
        begin = time.clock_gettime_ns(time.CLOCK_MONOTONIC)
        subprocess.run(command, env=env, check=True, capture_output=True, timeout=120)
        end, memory = ready.read_text(encoding="utf-8").split()
    return {"time": float(int(end) - begin), "rest_kib": float(memory)}


def start_figure(times, platform="offscreen"):
    plugin = BUILD / "lib" / "libInteractiveView.so"
    figure = Figure("station", "start", "bare/start")
    with tempfile.TemporaryDirectory() as folder:
        config = pathlib.Path(folder) / "station.toml"
        config.write_text('[station]\nname = "Start"\ngroups = ["G1", "G2"]\nslots = ["S1", "S2", "S3", "S4"]\n[[sequence]]\nscript = "start.lua"\nper = "system"\n', encoding="utf-8")
        (pathlib.Path(folder) / "start.lua").write_text("return true\n", encoding="utf-8")
        for _ in range(times):
            own = start_once([BUILD / "bin" / "station", "--config", config, "--plugin", plugin], platform)
            bare = start_once([BUILD / "bin" / "empty_window", plugin], platform)
            figure.rounds.append((own, bare))
    return figure
