#!/usr/bin/env python3
"""Mutants of the rule code: how many of them do the tests notice?

Chooses mutants from a seed, builds one copy of the sources that holds them all behind a switch,
asks which tests come by each of them, and runs those with the mutant on until one fails. Prints the
survivors and the score. A mutant that no test comes by is a survivor.

    python3 tests/mutation/run.py --seed 1 --mutants 200
    python3 tests/mutation/run.py --seed 1 --mutants 200 --only 17,31
"""

import argparse
import hashlib
import json
import random
import re
import resource
import subprocess
import sys
import tempfile
import time
from collections import Counter
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

import mutants as maker

ROOT = Path(__file__).resolve().parents[2]
# Where the rules stand; of a folder that holds other code, too, the file with the rules.
RULES = ["slip", "contributions", "tax", "closing", "calc", "severance", "formulas",
         "run/first_walk.cpp", "run_end"]
COPIED = ["CMakeLists.txt", "CMakePresets.json", "cmake", "demo", "src", "tests"]
# Mutants make comparisons that can never hold and code that is never run: no warnings.
FLAGS = "-w;-fpermissive;-Wno-narrowing"
SECONDS = 60       # of the processor: a test that takes more has been caught in a mutant
WAIT = 600         # and so has one that waits for longer, on a busy machine, too
MEMORY = 4 << 30   # so has one that wants more
BATCHES = (1, 3, 8, 20)  # scenarios a process, growing; the rest goes with the last size


def limited():
    resource.setrlimit(resource.RLIMIT_AS, (MEMORY, MEMORY))
    resource.setrlimit(resource.RLIMIT_CPU, (SECONDS, SECONDS))


class Round:
    """One copy of the sources with its mutants, and the tests that are run on it."""

    def __init__(self, options):
        self.options = options
        self.work = Path(options.work)
        # The places of a debug build beside its sources: a compiler cache knows what is unchanged.
        self.copy = self.work
        self.build = self.work / "build-debug"
        self.random = random.Random(options.seed)
        self.mutants = []
        self.refused = []
        self.reached = {}

    # ---- Choice and build ----

    def choose(self):
        """Takes mutants out of all, each folder by the number of its own."""
        self.spare = []
        for file in maker.source_files(ROOT, self.options.folders):
            self.spare += maker.mutants_of(ROOT, file, self.random)
        self.random.shuffle(self.spare)
        self.take(self.options.mutants)

    def take(self, count):
        taken, self.spare = self.spare[:count], self.spare[count:]
        first = max((mutant.number for mutant in self.mutants + self.refused), default=0) + 1
        for number, mutant in enumerate(taken, first):
            mutant.number = number
        self.mutants += taken

    def write(self):
        """Copies the sources; only files that differ are written, so that builds stay short."""
        wanted = {}
        for name in COPIED:
            top = ROOT / name
            for path in [top] if top.is_file() else top.rglob("*"):
                if path.is_file() and path.suffix not in (".yaml", ".pyc"):
                    wanted[path.relative_to(ROOT)] = path.read_bytes()
        for path in (ROOT / "demo").rglob("*"):
            if path.is_file():
                wanted[path.relative_to(ROOT)] = path.read_bytes()
        for file in {mutant.file for mutant in self.mutants}:
            own = [mutant for mutant in self.mutants if mutant.file == file]
            text = (ROOT / file).read_text("utf-8")
            wanted[Path(file)] = maker.with_mutants(text, own).encode("utf-8")
        wanted[Path("src/mutation/switch.h")] = (ROOT / "tests/mutation/switch.h").read_bytes()
        wanted[Path("CMakeLists.txt")] += self.flags().encode("utf-8")
        for path in [path for name in COPIED for path in (self.copy / name).rglob("*")]:
            if path.is_file() and path.relative_to(self.copy) not in wanted:
                path.unlink()
        self.content = b"".join(content for _, content in sorted(wanted.items()))
        for name, content in wanted.items():
            target = self.copy / name
            if not target.exists() or target.read_bytes() != content:
                target.parent.mkdir(parents=True, exist_ok=True)
                target.write_bytes(content)

    def flags(self):
        """Lines of the build that give the files with mutants their flags."""
        return "\n" + "".join(
            f"set_source_files_properties({self.copy / file} TARGET_DIRECTORY "
            f"velmor_{Path(file).parts[1]} PROPERTIES COMPILE_OPTIONS \"{FLAGS}\")\n"
            for file in sorted({mutant.file for mutant in self.mutants}))

    def programs(self):
        folders = dict.fromkeys(Path(rules).parts[0] for rules in self.options.folders)
        return [f"test_{folder}" for folder in [*folders, "time_coverage"]
                if list((ROOT / "tests/unit" / folder).glob("*.cpp"))]

    def compile(self):
        subprocess.run(["cmake", "--preset", "debug", "-DVELMOR_BENCH=OFF"], cwd=self.copy,
                       check=True, stdout=subprocess.DEVNULL)
        done = subprocess.run(["cmake", "--build", self.build, "--", "-k", "0",
                               f"-j{self.options.jobs}", "velmor", "nzutil", *self.programs()],
                              capture_output=True, text=True)
        if done.returncode != 0:
            self.work.joinpath("errors.txt").write_text(done.stdout + done.stderr)
        return done.returncode == 0, done.stdout + done.stderr

    def refuse(self, output):
        """Drops the mutants that do not compile and takes others in their place."""
        places = {(file, int(line) - 1) for file, line in
                  re.findall(r"(src/[\w/]+\.cpp):(\d+):", output)}
        wrong = [mutant for mutant in self.mutants if (mutant.file, mutant.line) in places]
        if not wrong:  # a constant elsewhere that could no longer be one
            files = {file for file, _ in places}
            wrong = [mutant for mutant in self.mutants if mutant.file in files]
        if not wrong:
            sys.exit("The copy does not compile: " + output[-3000:])
        self.refused += wrong
        self.mutants = [mutant for mutant in self.mutants if mutant not in wrong]
        self.take(len(wrong))

    def prepare(self):
        self.choose()
        while True:
            self.write()
            compiled, output = self.compile()
            if compiled:
                return
            self.refuse(output)
            print(f"{len(self.refused)} mutants do not compile and were replaced", flush=True)

    # ---- Tests ----

    def run(self, command, mutant=0, reached=None):
        """True if the test passes."""
        environment = {"PATH": "/usr/bin:/bin", "LANG": "C.UTF-8", "VELMOR_MUTANTE": str(mutant)}
        with tempfile.TemporaryDirectory(dir=self.work) as directory:
            environment["TMPDIR"] = directory
            if reached is not None:
                environment["VELMOR_MUTANTI_RAGGIUNTI"] = str(Path(directory, "reached"))
            try:
                done = subprocess.run(command, env=environment, stdout=subprocess.DEVNULL,
                                      stderr=subprocess.DEVNULL, timeout=WAIT,
                                      preexec_fn=limited, cwd=ROOT)
                passed = done.returncode == 0
            except subprocess.TimeoutExpired:
                passed = False
            found = Path(directory, "reached")
            if reached is not None and found.exists():
                reached |= {int(number) for number in found.read_text().split()}
        return passed

    def unit(self, program):
        return [self.build / program, "--gtest_fail_fast", "--gtest_brief=1"]

    def scenario(self, *files):
        return [self.build / "nzutil", "scenario", *files]

    def ask(self, test):
        """(test, seconds, numbers reached); leaves out a test that fails without any mutant."""
        reached = set()
        start = time.monotonic()
        passed = self.run(self.unit(test) if isinstance(test, str) else self.scenario(test),
                          reached=reached)
        return test, passed, time.monotonic() - start, reached

    def kept_cover(self):
        """What each test comes by, kept beside the copy while mutants and tests stay the same."""
        key = hashlib.sha256(self.content)
        for path in self.scenarios():
            key.update(path.read_bytes())
        kept = self.work / "reached.json"
        if kept.exists():
            found = json.loads(kept.read_text())
            if found["key"] == key.hexdigest():
                self.reached = {int(number): [(seconds, Path(test) if "/" in test else test)
                                              for seconds, test in tests]
                                for number, tests in found["reached"].items()}
                return
        self.cover()
        kept.write_text(json.dumps({
            "key": key.hexdigest(),
            "reached": {number: [(seconds, str(test)) for seconds, test in tests]
                        for number, tests in self.reached.items()}}))

    def scenarios(self):
        return sorted((ROOT / "tests/scenarios").rglob("*.yaml"))

    def cover(self):
        scenarios = self.scenarios()
        with ThreadPoolExecutor(self.options.jobs) as pool:
            for test, passed, seconds, reached in pool.map(self.ask, self.programs() + scenarios):
                if not passed:
                    print(f"fails without a mutant, left out: {test}", flush=True)
                    continue
                for number in reached:
                    self.reached.setdefault(number, []).append((seconds, test))

    def killer(self, mutant):
        """The test that notices the mutant; None if it survives."""
        tests = self.reached.get(mutant.number, [])
        programs = [test for _, test in tests if isinstance(test, str)]
        # The folder's own program is the likeliest to notice.
        folder = "test_" + Path(mutant.file).parts[1]
        for program in sorted(programs, key=lambda name: name != folder):
            if not self.run(self.unit(program), mutant.number):
                return program
        scenarios = [test for _, test in sorted(tests, key=lambda pair: pair[0])
                     if not isinstance(test, str)]
        random.Random(mutant.number).shuffle(scenarios)
        sizes = iter(BATCHES)
        size = next(sizes)
        while scenarios:
            batch, scenarios = scenarios[:size], scenarios[size:]
            if not self.run(self.scenario(*batch), mutant.number):
                return f"scenario ({len(batch)} from {batch[0].relative_to(ROOT)})"
            size = next(sizes, size)
        return None

    def judge(self):
        wanted = [mutant for mutant in self.mutants
                  if not self.options.only or mutant.number in self.options.only]
        survivors, done = [], []
        with ThreadPoolExecutor(self.options.jobs) as pool:
            for mutant, killer in zip(wanted, pool.map(self.killer, wanted)):
                done.append(mutant)
                if killer is None:
                    survivors.append(mutant)
                if self.options.verbose or killer is None:
                    self.show(mutant, killer)
        return done, survivors

    def show(self, mutant, killer):
        tests = len(self.reached.get(mutant.number, []))
        state = f"killed by {killer}" if killer else f"SURVIVED {tests} tests"
        line = (ROOT / mutant.file).read_text("utf-8").split("\n")[mutant.line - 1].strip()
        print(f"{mutant.number:4} {mutant.place}: {mutant.what}: {state}\n        {line}",
              flush=True)


def table(done, survivors):
    """Mutants, killed and score by folder and by kind."""
    for title, key in (("Folder", lambda mutant: Path(mutant.file).parts[1]),
                       ("Kind", lambda mutant: mutant.kind)):
        all_of, left = Counter(map(key, done)), Counter(map(key, survivors))
        print(f"\n| {title} | Mutants | Killed | Score |\n|---|---|---|---|")
        for name in sorted(all_of):
            killed = all_of[name] - left[name]
            print(f"| {name} | {all_of[name]} | {killed} | {100 * killed / all_of[name]:.0f} % |")
    killed = len(done) - len(survivors)
    print(f"\n{len(done)} mutants, {killed} killed, score {100 * killed / len(done):.1f} %")


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n")[0])
    parser.add_argument("--seed", type=int, default=1, help="chooses the mutants (default 1)")
    parser.add_argument("--mutants", type=int, default=200, help="how many (default 200)")
    parser.add_argument("--folders", nargs="+", default=RULES,
                        help="folders, or files, of src/")
    parser.add_argument("--only", type=lambda text: {int(n) for n in text.split(",")}, default=set(),
                        help="numbers of a round to be run again: 17,31")
    parser.add_argument("--work", default=str(ROOT / "build-mutants"), help="directory of the copy")
    parser.add_argument("--jobs", type=int, default=2, help="processes at once (default 2)")
    parser.add_argument("--least", type=float, default=0, help="status 1 below this score")
    parser.add_argument("--verbose", action="store_true", help="shows the killed ones, too")
    options = parser.parse_args()
    options.work = str(Path(options.work).resolve())

    round_ = Round(options)
    Path(options.work).mkdir(parents=True, exist_ok=True)
    round_.prepare()
    print(f"{len(round_.mutants)} mutants built", flush=True)
    round_.kept_cover()
    print(f"{len(round_.reached)} of them are reached by a test", flush=True)
    done, survivors = round_.judge()
    table(done, survivors)
    score = 100 * (len(done) - len(survivors)) / max(1, len(done))
    sys.exit(1 if score < options.least else 0)


if __name__ == "__main__":
    main()
