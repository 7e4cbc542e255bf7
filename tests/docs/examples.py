#!/usr/bin/env python3
"""Runs the examples of README.md and docs/manuale.md as they stand there.

    examples.py DOCUMENT PROGRAMS      PROGRAMS: directory of velmor and nzutil

In a directory of its own, which has the demo as ./demo.sh makes it and has calculated:
  ```yaml       a scenario; nzutil scenario finds no difference
  ```sh         every command ends well, and shows what a comment "# = 5" states; ./demo.sh and
                ./test.sh must be there, and are not run again
  ```ini        a registry: the run finds its archives by it
  ```           what a run, a slip or a command shows: each line stands in what was shown ("..." is
                some lines left out); a line "$ COMMAND" is run, and the lines after it are its output
  `nzutil ...`  in the text, with its arguments: it ends well, unless one of them is a word that the
                reader replaces (PLACEHOLDERS)
"""

import os
import re
import subprocess
import sys
import tempfile
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
BLOCK = re.compile(r"^```(\w*)\n(.*?)^```$", re.M | re.S)
SPAN = re.compile(r"`((?:build/)?nzutil (?:--\w+|\w+ [^`\n]+))`")
PLACEHOLDERS = {"ANNO", "ARCHIVIO", "AREA", "CHIAVE", "CODE", "CODICE", "CSV", "DIR", "FILE", "N",
                "OCCORRENZA", "PAROLE", "RECORD", "TIPO", "VALORE", "WORDS"}
SCENARIO_FILES = {"buono.yaml": "1733.31", "sbagliato.yaml": "1733,31"}


def inline_commands(text):
    """The commands in the text that stand there as they can be typed."""
    return [command for command in SPAN.findall(BLOCK.sub("", text))
            if PLACEHOLDERS.isdisjoint(re.findall(r"\w+", command))]


class Examples:
    def __init__(self, text, programs, place):
        self.text = text
        self.place = place
        self.shown = ""
        self.faults = []
        self.scenarios = 0
        self.environment = dict(os.environ, PATH=f"{programs}:{os.environ['PATH']}",
                                VELMOR_INTERFACCIA="console", VELMOR_RISPOSTE="no")
        (place / "build").symlink_to(programs)
        (place / "tests").symlink_to(ROOT / "tests")
        (place / "demo").symlink_to(ROOT / "demo")
        self.start_demo()

    def run(self, command, status=0):
        """The output of a command; another exit status is a fault."""
        done = subprocess.run(["bash", "-euo", "pipefail", "-c", command], cwd=self.place,
                              env=self.environment, stdin=subprocess.DEVNULL, text=True,
                              stdout=subprocess.PIPE, stderr=subprocess.STDOUT, check=False)
        if done.returncode != status:
            self.faults.append(f"exit status {done.returncode}: {command}\n{done.stdout}")
        self.shown += done.stdout
        return done.stdout

    def start_demo(self):
        """What ./demo.sh does once the programs are built."""
        self.run("nzutil demo demo-out")
        self.run("SOLMAREL_REGISTRO=demo-out/registro.ini velmor")
        self.run("nzutil cedolino demo-out 001-000-0001")

    def yaml(self, body):
        self.scenarios += 1
        name = f"esempio{self.scenarios}.yaml"
        (self.place / name).write_text(body, encoding="utf-8")
        self.run(f"nzutil scenario {name}")

    def sh(self, body):
        commands = []
        for line in body.splitlines():
            script = re.match(r"\./(demo|test)\.sh\b", line)
            stated = re.match(r"(.*\S)\s+# = (\S+)$", line)
            if stated is not None:
                commands.append(f'test "$({stated[1]} | sed s/^0*//)" = "{stated[2]}"')
            elif script is None:
                commands.append(line)
            elif not os.access(ROOT / f"{script[1]}.sh", os.X_OK):
                self.faults.append(f"not there: {line}")
        self.run("\n".join(commands))

    def ini(self, body):
        archives = self.place / "demo-out/archivi"
        body = re.sub(r"(PERCORSOARCHIVI)=.*", rf"\1={archives}", body)
        body = re.sub(r"(PERCORSOPROGRAMMI)=.*", rf"\1={archives.parent / 'programmi'}", body)
        (self.place / "registro.ini").write_text(body, encoding="utf-8")
        if "elaborato" not in self.run("SOLMAREL_REGISTRO=registro.ini velmor"):
            self.faults.append("the registry of the text leads to no archive")

    def plain(self, body):
        shown = self.shown
        for line in body.splitlines():
            if line.startswith("$ "):
                shown = self.session(line[2:])
            elif line.strip() not in ("", "...") and line.rstrip() not in shown.splitlines():
                self.faults.append(f"nothing shows the line: {line}")

    def session(self, command):
        """A command on scenario files: the good one is a scenario of README, the bad one has a decimal
        comma in it."""
        readme = (ROOT / "README.md").read_text(encoding="utf-8")
        good = next(body for kind, body in BLOCK.findall(readme) if kind == "yaml")
        for name, number in SCENARIO_FILES.items():
            (self.place / name).write_text(good.replace("1733.31", number), encoding="utf-8")
        return self.run(command, status=2 if "sbagliato" in command else 0)

    def all(self):
        kinds = {"yaml": self.yaml, "sh": self.sh, "ini": self.ini, "": self.plain}
        for kind, body in BLOCK.findall(self.text):
            kinds[kind](body)
        for command in inline_commands(self.text):
            self.run(command)
        return self.faults


def main(document, programs):
    with tempfile.TemporaryDirectory() as place:
        text = Path(document).read_text(encoding="utf-8")
        faults = Examples(text, Path(programs).resolve(), Path(place)).all()
    for fault in faults:
        print(fault)
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
