#!/usr/bin/env python3
"""The dictionary speaks: every field that src/ names is in it and has a meaning, and docs/campi.md
says what the dictionary says. With --write docs/campi.md is made anew."""

import re
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
DICTIONARY = ROOT / "src/records/dictionary"
PAGE = ROOT / "docs/campi.md"
# Codes that a comment names as an example of a name, and that no area has.
EXAMPLES = {"TB03"}
CODE = re.compile(r"\b[A-Z](?:\d|[A-C])\d\d\b")

# The areas in the order in which a reader of slips meets them.
AREAS = {
    "DIPX": "Dipendente",
    "DITX": "Ditta",
    "FOTX": "Voci",
    "CONX": "Livelli dei contratti collettivi",
    "SETX": "Settori",
    "FISX": "Tabelle annuali",
    "FOPX": "Fondi pensione",
    "DICX": "Tabella dei dodici mesi",
    "CUDX": "Totali annui della certificazione",
}
HEAD = """\
# Campi

Che cosa significa ogni campo che il calcolo usa: codice, posizioni nel record, tipo, significato.
L'unità è l'euro dove non è detto altro. Tipo: `A` testo, `D` data o cifre, `N` numero intero, da `2` a
`6` numero con quei decimali, `0` cifre. `nzutil campi CODICE` dice anche chi legge e chi scrive il
campo, `nzutil campi PAROLE` cerca per significato.

Questa pagina è fatta dal dizionario (`src/records/dictionary/`): si corregge lì.
"""


def rows_of(area):
    """(code, first position, width, type, meaning) of each field of an area."""
    for line in (DICTIONARY / f"{area}.campi").read_text(encoding="utf-8").splitlines():
        if line and not line.startswith("#"):
            offset, length, kind, _ = line[5:17].split(",")
            yield line[:4], int(offset), int(length), kind, line[19:]


def page():
    lines = [HEAD]
    for area, title in AREAS.items():
        lines += [f"## {title} ({area}$)\n"]
        lines += ["| Campo | Posizioni | Tipo | Significato |", "|---|---|---|---|"]
        silent = 0
        for code, first, width, kind, meaning in rows_of(area):
            if meaning:
                text = meaning.replace("|", "\\|")
                lines.append(f"| {code} | {first}-{first + width - 1} | {kind} | {text} |")
            else:
                silent += 1
        lines.append(f"\nAltri campi, che nessuna regola usa: {silent}.\n")
    return "\n".join(lines)


def complaints():
    meanings = {code: meaning for area in AREAS for code, *_, meaning in rows_of(area)}
    missing = {}
    for file in sorted([*ROOT.glob("src/**/*.cpp"), *ROOT.glob("src/**/*.h")]):
        for code in CODE.findall(file.read_text(encoding="utf-8")):
            if not meanings.get(code) and code not in EXAMPLES:
                missing.setdefault(code, file.relative_to(ROOT))
    for code, file in sorted(missing.items()):
        wrong = "has no meaning in" if code in meanings else "is no field of"
        yield f"{file}: {code} {wrong} src/records/dictionary"
    if not PAGE.exists() or PAGE.read_text(encoding="utf-8") != page():
        yield "docs/campi.md is not what the dictionary says: python3 tests/style/fields.py --write"


def main():
    if sys.argv[1:] == ["--write"]:
        PAGE.write_text(page(), encoding="utf-8")
        return 0
    wrong = list(complaints())
    print("\n".join(wrong), end="\n" if wrong else "")
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main())
