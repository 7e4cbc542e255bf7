"""Mutants of a source file: places where a rule could be wrong, and the text that makes it so.

All chosen mutants of a file stand in it at once, each behind a switch that the program reads from
the environment when it starts (switch.h); one build serves them all.
"""

import re
from dataclasses import dataclass, field
from pathlib import Path

COMPARISONS = {"<": "<=", "<=": "<", ">": ">=", ">=": ">", "==": "!=", "!=": "=="}
OPERATOR_NAMES = {"<": "lt", "<=": "le", ">": "gt", ">=": "ge", "==": "eq", "!=": "ne"}

# Lines without a rule: what they say is read at compile time, or by nobody.
PLAIN_LINE = re.compile(r"^\s*(#|static_assert|case\b|using\b|namespace\b|template\b|TRACCIA\()")


@dataclass
class Mutant:
    """One change of a file. `edits` are (position, length, text with {n} for its number)."""

    file: str
    line: int
    kind: str
    what: str
    edits: list = field(default_factory=list)
    number: int = 0

    @property
    def place(self):
        return f"{self.file}:{self.line}"


def masked(text):
    """The text with comments, strings and characters blanked, every position kept."""
    pattern = re.compile(r'//[^\n]*|/\*.*?\*/|"(?:\\.|[^"\\\n])*"|\'(?:\\.|[^\'\\\n])\'', re.S)
    return pattern.sub(lambda found: re.sub(r"[^\n]", " ", found.group()), text)


def closing(text, start):
    """Position of the bracket that closes the one at `start`."""
    pairs = {"(": ")", "{": "}", "[": "]"}
    depth = 0
    for position in range(start, len(text)):
        if text[position] in pairs:
            depth += 1
        elif text[position] in pairs.values():
            depth -= 1
            if depth == 0:
                return position
    return len(text)


def constant_declarations(text):
    """(start, end, is_function) of what is declared constexpr."""
    found = []
    for match in re.finditer(r"\bconstexpr\b", text):
        position = match.end()
        function = False
        while position < len(text) and text[position] != ";":
            if text[position] == "(" and "=" not in text[match.end():position]:
                function = True
            if text[position] in "({[":
                closed = closing(text, position)
                if text[position] == "{" and function:
                    position = closed
                    break
                position = closed
            position += 1
        found.append((match.start(), position, function))
    return found


def field_codes(root):
    """Codes of the dictionary."""
    codes = set()
    for path in (root / "src/records/dictionary").glob("*.campi"):
        codes |= set(re.findall(r"^([A-Z]{1,2}\d{2,3}) ", path.read_text("utf-8"), re.M))
    return codes


def next_number(text, random):
    """Another constant beside this one: 12 becomes 11 or 13, 9.19 becomes 9.20 or 9.18."""
    decimals = len(text.partition(".")[2])
    step = random.choice([1, -1]) if float(text) != 0 else 1
    if decimals == 0:
        return str(int(text) + step)
    return f"{float(text) + step * 10 ** -decimals:.{decimals}f}"


def comparisons(text, random):
    for match in re.finditer(r" (<=|>=|==|!=|<|>) ", text):
        operator, other = match.group(1), COMPARISONS[match.group(1)]
        names = f"mutation::{OPERATOR_NAMES[operator]}, mutation::{OPERATOR_NAMES[other]}"
        # The marker between two operators of the same rank keeps the precedence.
        joint = "==" if operator in ("==", "!=") else "<"
        yield match.start(1), "comparison", f"{operator} becomes {other}", [
            (match.start(1), len(operator),
             f"{joint} mutation::Comparison<{{n}}, {names}>{{{{}}}} {joint}")]


def constants(text, random):
    for match in re.finditer(r"(?<![\w.'])\d+(?:\.\d+)?(?![\w.'])", text):
        before, after = text[:match.start()].rstrip(), text[match.end():].lstrip()
        if (before.endswith(",") and after.startswith(">")) or before.endswith("<") and \
                after.startswith(">"):
            continue  # the size of an array
        number = match.group()
        if len(number) > 1 and number.startswith("0") and "." not in number:
            continue
        other = next_number(number, random)
        yield match.start(), "constant", f"{number} becomes {other}", [
            (match.start(), len(number), f"(mutation::on({{n}}) ? {other} : {number})")]


def fields(text, codes, random):
    found = [match for match in re.finditer(r"\b[A-Z]{1,2}\d{2,3}\b", text)
             if match.group() in codes]
    for match in found:
        code = match.group()
        others = sorted({other.group() for other in found
                         if other.group()[0] == code[0] and other.group() != code})
        if not others:
            continue
        other = random.choice(others)
        yield match.start(), "field", f"{code} becomes {other}", [
            (match.start(), len(code), f"(mutation::on({{n}}) ? {other} : {code})")]


def branches(text, random):
    for match in re.finditer(r"\bif \(", text):
        end = closing(text, match.end() - 1)
        yield match.start(), "branch", "branches of the if swapped", [
            (end, 0, " || mutation::Swapped<{n}>{{}}")]
    for match in re.finditer(r"\s\?\s", text):
        yield match.start() + 1, "branch", "sides of ? : swapped", [
            (match.start(), 0, " || mutation::Swapped<{n}>{{}}")]


def mutants_of(root, file, random):
    """All mutants of a file, in the order of their places."""
    text = masked((root / file).read_text("utf-8"))
    codes = field_codes(root)
    lines = text.split("\n")
    found = []
    for source in (comparisons(text, random), constants(text, random),
                   fields(text, codes, random), branches(text, random)):
        for position, kind, what, edits in source:
            number = text.count("\n", 0, position) + 1
            if not PLAIN_LINE.match(lines[number - 1]):
                found.append((position, Mutant(file, number, kind, what, edits)))
    return [mutant for _, mutant in sorted(found, key=lambda pair: pair[0])]


def constants_opened(text, positions):
    """Edits that make a constexpr declaration one of the run where a mutant stands in it."""
    edits = []
    for start, end, function in constant_declarations(text):
        if any(start <= position < end for position in positions):
            word = text[start:].startswith("constexpr const char")
            edits.append((start, len("constexpr"), "" if function or word else "const"))
    return edits


def with_mutants(original, mutants):
    """The text of a file with these mutants behind their switches. The first line is added."""
    text = masked(original)
    edits = [(position, length, replacement.format(n=mutant.number))
             for mutant in mutants for position, length, replacement in mutant.edits]
    edits += constants_opened(text, [position for position, _, _ in edits])
    for position, length, replacement in sorted(edits, reverse=True):
        original = original[:position] + replacement + original[position + length:]
    return '#include "mutation/switch.h"\n' + original


def source_files(root, places):
    """The sources of each folder, or the file itself."""
    return [str(path.relative_to(root)) for place in places
            for path in sorted(Path(root, "src").glob(place if place.endswith(".cpp")
                                                      else f"{place}/*.cpp"))]
