#!/usr/bin/env python3
"""Fuzzes for hours, in as many goes as one likes: a release has been fuzzed for a day and a thousand million inputs.

    fuzz/campaign.py [--minutes M] [--turn SECONDS] [--jobs N] [--folder build/campaign] [--programs build/fuzz-long/bin]

Each turn takes the program that has run least and goes on from the corpora and from what former turns have kept in the
folder; two turns of three with short inputs. A program that stops rests for this go. What all goes have counted, inputs
and hours of one processor, stands in totals.json there and is printed at the end. Ends with status 1 if an input that a
program stopped at waits in the folder "found": mend the fault, put the input into the corpus, and take both files away.
"""

import argparse
import json
import os
import re
import subprocess
import sys
import threading
import time

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
GOAL_HOURS, GOAL_INPUTS = 24, 10**9
SHORT, LONG = 500, 3000  # bytes


class Campaign:
    def __init__(self, options):
        self.options = options
        self.targets = sorted(name[:-len("_fuzz")] for name in os.listdir(options.programs) if name.endswith("_fuzz"))
        if not self.targets:
            sys.exit(f"no fuzz programs in {options.programs}: build the preset fuzz-long first")
        self.path = os.path.join(options.folder, "totals.json")
        self.found = os.path.join(options.folder, "found")
        os.makedirs(self.found, exist_ok=True)
        self.totals = {}
        if os.path.exists(self.path):
            with open(self.path, encoding="utf-8") as file:
                self.totals = json.load(file)
        for target in self.targets:
            self.totals.setdefault(target, {"turns": 0, "seconds": 0, "inputs": 0})
            os.makedirs(os.path.join(options.folder, target), exist_ok=True)
        self.ends = time.monotonic() + options.minutes * 60
        self.lock = threading.Lock()
        self.running = set()
        self.stopped = set()

    def choose(self):
        """The next turn: its program, how many it has had, and its seconds; none when the time is over."""
        with self.lock:
            seconds = int(min(self.options.turn, self.ends - time.monotonic()))
            free = [target for target in self.targets if target not in self.running | self.stopped]
            if seconds < 1 or not free:
                return None
            target = min(free, key=lambda name: (self.totals[name]["seconds"], self.totals[name]["turns"]))
            self.running.add(target)
            return target, self.totals[target]["turns"], seconds

    def turn(self, target, turns, seconds):
        folder = os.path.join(self.options.folder, target)
        command = [os.path.join(self.options.programs, target + "_fuzz"), f"-max_total_time={seconds}",
                   f"-max_len={LONG if turns % 3 == 2 else SHORT}", "-entropic=0", "-rss_limit_mb=2048", "-timeout=20",
                   "-print_final_stats=1", f"-artifact_prefix={self.found}/{target}-", folder,
                   os.path.join(ROOT, "fuzz/corpus", target)]
        run = subprocess.Popen(command, stdout=subprocess.DEVNULL, stderr=subprocess.PIPE)
        report = run.stderr.read().decode("utf-8", "replace")
        _, status, used = os.wait4(run.pid, 0)
        run.returncode = os.waitstatus_to_exitcode(status)
        inputs = re.search(r"stat::number_of_executed_units:\s*(\d+)", report)
        if run.returncode != 0:
            print(f"{target}: stopped with status {run.returncode}\n" + "\n".join(report.splitlines()[-40:]), flush=True)
            with open(os.path.join(self.found, f"{target}-report-{turns}"), "w", encoding="utf-8") as file:
                file.write(report)
        with self.lock:
            self.running.discard(target)
            if run.returncode != 0:
                self.stopped.add(target)
            mine = self.totals[target]
            mine["turns"] += 1
            mine["seconds"] += round(used.ru_utime + used.ru_stime, 1)
            mine["inputs"] += int(inputs[1]) if inputs else 0
            with open(self.path + ".new", "w", encoding="utf-8") as file:
                json.dump(self.totals, file, indent=1)
            os.replace(self.path + ".new", self.path)

    def work(self):
        while chosen := self.choose():
            self.turn(*chosen)

    def run(self):
        workers = [threading.Thread(target=self.work) for _ in range(self.options.jobs)]
        for worker in workers:
            worker.start()
        for worker in workers:
            worker.join()

    def report(self):
        for target in self.targets:
            mine = self.totals[target]
            rate = round(mine["inputs"] / max(mine["seconds"], 1))
            print(f"{target:10} {mine['inputs']:14,} inputs in {mine['seconds'] / 3600:6.2f} h, {rate:7,} a second")
        hours = sum(mine["seconds"] for mine in self.totals.values()) / 3600
        inputs = sum(mine["inputs"] for mine in self.totals.values())
        waiting = [name for name in sorted(os.listdir(self.found)) if "-report-" not in name]
        print(f"{inputs:,} of {GOAL_INPUTS:,} inputs in {hours:.2f} of {GOAL_HOURS} h, {len(waiting)} waiting in found")
        return 1 if os.listdir(self.found) else 0


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--minutes", type=float, default=60)
    parser.add_argument("--turn", type=float, default=300, help="seconds")
    parser.add_argument("--jobs", type=int, default=1)
    parser.add_argument("--folder", default=os.path.join(ROOT, "build/campaign"))
    parser.add_argument("--programs", default=os.path.join(ROOT, "build/fuzz-long/bin"))
    campaign = Campaign(parser.parse_args())
    campaign.run()
    return campaign.report()


if __name__ == "__main__":
    sys.exit(main())
