#!/usr/bin/env python3
"""Which commands of a text examples.py runs, and what it finds wrong with an example.

    examples_test.py PROGRAMS      PROGRAMS: directory of velmor and nzutil
"""

import sys
import tempfile
import unittest
from pathlib import Path

import examples

PROGRAMS = Path(sys.argv.pop()).resolve()


def faults(text):
    with tempfile.TemporaryDirectory() as place:
        return examples.Examples(text, PROGRAMS, Path(place)).all()


class InlineCommands(unittest.TestCase):
    def test_a_word_in_capitals_is_no_placeholder(self):
        text = "`nzutil campi IRPEF`, `nzutil campi DIPX` and `build/nzutil campi P240`"
        self.assertEqual(examples.inline_commands(text), ["nzutil campi IRPEF", "nzutil campi DIPX",
                                                          "build/nzutil campi P240"])

    def test_placeholders_and_blocks_are_left_out(self):
        text = "`nzutil campi CODICE`, `nzutil anno DIR ANNO`\n```sh\nnzutil campi P240\n```\n"
        self.assertEqual(examples.inline_commands(text), [])

    def test_an_option_is_a_command(self):
        self.assertEqual(examples.inline_commands("`nzutil --version`"), ["nzutil --version"])


class Faults(unittest.TestCase):
    def test_an_inline_command_that_fails(self):
        self.assertEqual(len(faults("`nzutil campi ZZZZ`")), 1)
        self.assertEqual(faults("`nzutil campi DIPX`"), [])

    def test_a_value_that_is_not_shown(self):
        command = "nzutil leggi demo-out 2 001-000-0001 Q171"
        self.assertEqual(faults(f"```sh\n{command}    # = 5\n```\n"), [])
        self.assertEqual(len(faults(f"```sh\n{command}    # = 6\n```\n")), 1)

    def test_a_line_that_nothing_shows(self):
        self.assertEqual(len(faults("```\n001-000-0099 NESSUNO\n```\n")), 1)


if __name__ == "__main__":
    unittest.main()
