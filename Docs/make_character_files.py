#!/usr/bin/env python3
"""Makes the character files beside this script from entities.tsv, or checks them with --check."""

import argparse
import sys
from pathlib import Path

DOCS = Path(__file__).resolve().parent
TABLE = DOCS / "entities.tsv"

# Charset names on offer, each with the codec that reads it the way browsers do.
CODECS = {
    "big5": "cp950",
    "euc-jp": "euc_jp",
    "euc-kr": "cp949",
    "gb2312": "gbk",
    "iso-2022-jp": "iso2022_jp",
    "iso-2022-kr": "iso2022_kr",
    "iso-8859-1": "cp1252",
    "iso-8859-2": "iso8859_2",
    "iso-8859-3": "iso8859_3",
    "iso-8859-4": "iso8859_4",
    "iso-8859-5": "iso8859_5",
    "iso-8859-6": "iso8859_6",
    "iso-8859-7": "iso8859_7",
    "iso-8859-8": "iso8859_8",
    "iso-8859-9": "cp1254",
    "koi8-r": "koi8_r",
    "shift-jis": "cp932",
    "us-ascii": "cp1252",
    "utf-7": "utf_7",
    "utf-8": "utf_8",
}

# The program writes with its own converters, and a character they do not have would reach the
# forum as a question mark. Where Python's codec differs from them, in reading a few double-byte
# signs (the Japanese cent sign as the narrow or the wide one, the Korean dash as one of two),
# the program's converters count.
LACKING = {
    "euc-jp": "\u00a2\u00a3\u00a6\u00ac\u2212",
    "iso-2022-jp": "\u00a2\u00a3\u00ac\u2212",
    "iso-2022-kr": "\u00ad\u00ae\u00b7\u20ac\u223c",
}
ADDED = {
    "euc-jp": "\u2211",
    "gb2312": "\u20ac",
    "iso-2022-jp": "\u2211",
    "iso-2022-kr": "\u02dc\u2014",
}

# The program looks up no sequence outside these lengths.
SHORTEST, LONGEST = 4, 10


class Entity:
    def __init__(self, name, code, keep):
        self.named = f"&{name};" if name else ""
        self.decimal = f"&#{code};"
        self.character = chr(code)
        self.keep = keep


def read_table():
    entities = []
    for number, line in enumerate(TABLE.read_text(encoding="ascii").splitlines(), 1):
        if not line or line.startswith("#"):
            continue
        columns = line.split("\t")
        if len(columns) not in (2, 3) or not columns[1].isdigit() or columns[2:] not in ([], ["keep"]):
            sys.exit(f'{TABLE}:{number}: expected a name, a code and perhaps "keep", with TABs between')
        name = "" if columns[0] == "-" else columns[0]
        entities.append(Entity(name, int(columns[1]), len(columns) == 3))
    return entities


def holds(charset, character):
    if character in LACKING.get(charset, ""):
        return False
    if character in ADDED.get(charset, ""):
        return True
    try:
        return character.encode(CODECS[charset]).decode(CODECS[charset]) == character
    except UnicodeError:
        return False


def can_match(sequence):
    return SHORTEST <= len(sequence) <= LONGEST


def make_lines(charset, entities):
    lines = []
    known = set()
    for entity in entities:
        if not holds(charset, entity.character):
            continue
        named = entity.named
        if not can_match(named) or named.lower() in known:
            named = ""
        known.add(named.lower())
        if not entity.keep:
            lines.append((named, f"`{entity.character}`", entity.decimal))
            continue
        if named:
            lines.append((named, named, ""))
        lines.append(("", entity.decimal, entity.decimal))
    return lines


def make_file(charset, entities):
    lines = make_lines(charset, entities)
    return "".join("\t".join(columns) + "\r\n" for columns in lines).encode("utf-8")


def replacement(column):
    """What the program makes of column 1."""
    return column[1] if len(column) == 3 else column.replace("`", "")


def sequence_faults(sequence):
    if not (sequence.startswith("&") and sequence.endswith(";")):
        yield f'"{sequence}" is no sequence: it begins with "&" and ends with ";"'
    if not can_match(sequence) or " " in sequence:
        yield f'"{sequence}" is never found: a sequence has {SHORTEST} to {LONGEST} characters and no blank'


def line_faults(columns, meanings, known):
    """Faults of one line; adds its sequences to known, which holds those of the lines before."""
    if len(columns) != 3:
        yield f"{len(columns)} columns where 3 are expected"
        return
    sequences = [column for column in (columns[0], columns[2]) if column]
    if not sequences:
        yield "no sequence in column 0 or 2"
    character = replacement(columns[1])
    for sequence in sequences:
        yield from sequence_faults(sequence)
        if sequence.lower() in known:
            yield f'"{sequence}" stands in an earlier line, which wins'
        if meanings.get(sequence) != character:
            yield f'"{sequence}" is replaced by "{character}", not by what the table says'
        known.add(sequence.lower())


def format_faults(data, meanings):
    if data.startswith(b"\xef\xbb\xbf"):
        yield "begins with a byte-order mark"
    try:
        text = data.decode("utf-8")
    except UnicodeDecodeError as error:
        yield f"is not UTF-8: {error}"
        return
    lines = text.split("\r\n")
    if lines.pop() != "":
        yield "the last line has no CRLF behind it and would be lost"
    known = set()
    for number, line in enumerate(lines, 1):
        if "\r" in line or "\n" in line:
            yield f"line {number}: a line end that is not CRLF"
        for fault in line_faults(line.split("\t"), meanings, known):
            yield f"line {number}: {fault}"


def file_faults(charset, entities, meanings):
    path = DOCS / f"{charset}.txt"
    if not path.is_file():
        yield "is missing"
        return
    data = path.read_bytes()
    yield from format_faults(data, meanings)
    if data != make_file(charset, entities):
        yield f"is not what {TABLE.name} gives; run {Path(__file__).name}"


def check(entities):
    meanings = {}
    for entity in entities:
        meanings[entity.named] = entity.named if entity.keep else entity.character
        meanings[entity.decimal] = entity.decimal if entity.keep else entity.character
    faults = [f"{charset}.txt: {fault}" for charset in CODECS for fault in file_faults(charset, entities, meanings)]
    left_over = {path.stem for path in DOCS.glob("*.txt")} - set(CODECS)
    faults += [f"{charset}.txt: is the character file of no charset on offer" for charset in sorted(left_over)]
    for fault in faults:
        print(fault, file=sys.stderr)
    return 1 if faults else 0


def main():
    parser = argparse.ArgumentParser(description="Make the character files from entities.tsv.")
    parser.add_argument("--check", action="store_true", help="write nothing; status 1 when a file is wrong or out of date")
    arguments = parser.parse_args()
    entities = read_table()
    if arguments.check:
        return check(entities)
    for charset in CODECS:
        (DOCS / f"{charset}.txt").write_bytes(make_file(charset, entities))
    return 0


if __name__ == "__main__":
    sys.exit(main())
