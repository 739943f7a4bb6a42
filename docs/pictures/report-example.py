#!/usr/bin/env python3
"""Fills a results file with six weeks of an imagined station, for the picture of a report.

    docs/pictures/report-example.py FILE.sqlite [RUNS]      FILE has the tables already, made by the station
"""

import json
import random
import sqlite3
import sys
import uuid
from datetime import datetime, timedelta

GROUPS = {"Left": ["L1", "L2", "L3", "L4"], "Right": ["R1", "R2", "R3", "R4"]}
# The part of units that fail in a slot: one of them wants a look at its contacts.
FAILING = {"L1": 0.03, "L2": 0.04, "L3": 0.02, "L4": 0.05, "R1": 0.03, "R2": 0.19, "R3": 0.04, "R4": 0.02}
REFUSALS = ["length"] * 9 + ["pattern"] * 6 + ["duplicate"] * 5 + ["number"] * 2 + ["validate"] * 3


def text(time):
    return time.strftime("%Y-%m-%dT%H:%M:%S.") + f"{time.microsecond // 1000:03d}Z"


def outcome(chance, failing):
    if chance < failing:
        return "failed"
    if chance > 0.995:
        return "erred"
    return "stopped" if chance > 0.99 else "passed"


class Month:
    def __init__(self, database):
        self.database = database
        self.random = random.Random(7)
        self.serial = 260000
        self.refusal = 0

    def insert(self, table, **values):
        names = ", ".join(values)
        places = ", ".join("?" * len(values))
        self.database.execute(f"INSERT INTO {table} ({names}) VALUES ({places})", list(values.values()))

    def call(self, key, number, start, badge, function, answer, label, slot, seconds):
        end = start + timedelta(seconds=seconds)
        self.insert("calls", **key, call=number, function=function, started=text(start), ended=text(end),
                    milliseconds=int(seconds * 1000), operator=badge, result=json.dumps(answer),
                    clicked_button=None)
        if isinstance(answer, dict):
            for position, value in enumerate(answer.values(), 1):
                self.insert("answers", **key, call=number, position=position, slot=slot, label=label, value=value)
        return end

    def refuse(self, run, time, badge, system, group, slot):
        self.refusal += 1
        self.insert("refusals", run=run, refusal=self.refusal, refused=text(time), kind=self.random.choice(REFUSALS),
                    text="SN26", system=system, group_name=group, slot=slot, operator=badge)

    def unit(self, run, system, group, slot, start, badge):
        key = {"run": run, "sequence": system}
        self.serial += 1
        time = self.call(key, 1, start, badge, "showView", {"SN": f"SN{self.serial}"}, "SN", slot,
                         self.random.lognormvariate(1.6, 0.5) + system)
        if self.random.random() < 0.06:
            self.refuse(run, time, badge, system, group, slot)
        time = self.call(key, 2, time + timedelta(seconds=40), badge, "showView", True, None, slot,
                         self.random.lognormvariate(2.2, 0.8))
        end = outcome(self.random.random(), FAILING[slot])
        self.insert("sequences", **key, script="final-test.lua", system=system, group_name=group, slot=slot,
                    started=text(start), ended=text(time), outcome=end, value="true", message="")
        return time

    def run(self, start):
        run = str(uuid.UUID(int=self.random.getrandbits(128), version=4))
        badge = self.random.choice(["B. Ortiz", "K. Lund", "M. Okafor"])
        self.insert("runs", run=run, station="Line 3", configuration="/srv/line3/station.toml", operator=badge,
                    started=text(start))
        places = [(group, slot) for group, slots in GROUPS.items() for slot in slots]
        for system, (group, slot) in enumerate(places):
            end = self.unit(run, system, group, slot, start, badge)
        for number, group in enumerate(GROUPS, len(places)):
            key = {"run": run, "sequence": number}
            self.call(key, 1, start, badge, "showGroupView", True, None, None, self.random.lognormvariate(1.9, 0.4))
            self.insert("sequences", **key, script="fixture.lua", group_name=group, started=text(start),
                        ended=text(end), outcome="passed", value="true", message="")


def main():
    database = sqlite3.connect(sys.argv[1])
    for table in ("runs", "sequences", "calls", "answers", "refusals"):
        database.execute(f"DELETE FROM {table}")
    month = Month(database)
    runs = int(sys.argv[2]) if len(sys.argv) > 2 else 180
    day = datetime(2026, 9, 14, 6, 0)
    for number in range(runs):
        if number % 6 == 0:
            day += timedelta(days=3 if day.weekday() == 4 else 1)
        if month.random.random() < 0.85:
            month.run(day + timedelta(minutes=80 * (number % 6) + month.random.random() * 20))
    database.commit()


main()
