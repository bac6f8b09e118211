#!/usr/bin/env python3
"""Converts boards at random by tessaly-cli and by the plain steps of a run, and compares all that comes out."""

import argparse
import json
import random
import shutil
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

from plain_run import FAMILIES, PlainRun
from plain_text import rounded
from random_board import RandomBoard

SOURCE_TREE = Path(__file__).resolve().parents[2]
SCRIPT = "Discus Conversion Import SQL.sql"
ADMINISTRATOR = " Boss, A "

programs = argparse.Namespace()
scratch = None


def setUpModule():
    global scratch
    scratch = Path(tempfile.mkdtemp(prefix="tessaly-model-"))


def tearDownModule():
    shutil.rmtree(scratch)


def convert(folder, users, groups, megabytes, with_hidden):
    """What the program reports."""
    report = folder / "report.json"
    words = [
        programs.cli, "convert", "--root", folder / "source", "--output", folder / "output", "--quiet",
        "--program-folder", SOURCE_TREE, "--ini", folder / "settings.ini", "--report", report,
        "--admin", ADMINISTRATOR, "--website", "http://old.example", "--forum", "http://new.example",
        "--users", str(users), "--groups", str(groups), "--split-mb", megabytes, "--charset", "utf-8",
        "--no-redirects", "--no-special-characters", "--no-attachments",
    ]  # fmt: skip
    if not with_hidden:
        words.append("--no-hidden")
    subprocess.run(words, capture_output=True, timeout=300)
    return json.loads(report.read_text())


def text_of(path):
    return path.read_bytes().decode() if path.is_file() else None


def statement(path, table):
    return (
        f"LOAD DATA LOCAL INFILE '{path}' INTO TABLE {table}\r\nFIELDS TERMINATED BY ','\r\n"
        "ENCLOSED BY '\"'LINES TERMINATED BY '\\r\\n';\r\n\r\n\r\n"
    )


class Boards(unittest.TestCase):
    maxDiff = None

    def assertFamily(self, output, name, run):
        files = ["".join(row + "\r\n" for row in rows) for rows in run.families[name].files]
        is_begun = any(family == name for family, _ in run.statements)
        for number, text in enumerate(files if is_begun else [], 1):
            self.assertEqual(text_of(output / f"mybb_{name}{number}.txt"), text)
        behind_last = len(files) + 1 if is_begun else 1
        self.assertFalse((output / f"mybb_{name}{behind_last}.txt").exists())

    def compare(self, seed):
        """Gives how many rows there were, and whether the run was left early."""
        chance = random.Random(seed)
        folder = scratch / str(seed)
        RandomBoard(chance, folder / "source")
        users, groups = chance.choice([0, 1, 2, 5]), chance.choice([7, 1, 3])
        megabytes = chance.choice(["50", "0", "0.0002", "0.001", "0.000001"])
        with_hidden = chance.random() < 0.7
        report = convert(folder, users, groups, megabytes, with_hidden)
        limit = rounded(str(float(megabytes) * 1048576))
        run = PlainRun(folder / "source", ADMINISTRATOR, users, groups, with_hidden, limit)
        run.run()
        self.assertEqual(report["messages"][:-1], run.messages)
        self.assertEqual(report["cancelled"], run.is_cancelled)
        self.assertEqual(report["processedFolders"], run.processed)
        self.assertEqual(report["messageCount"], run.message_count)
        output = folder / "output"
        for name in FAMILIES:
            self.assertFamily(output, name, run)
        statements = [statement(output / f"mybb_{name}{n}.txt", f"mybb_{name}") for name, n in run.statements]
        self.assertEqual(text_of(output / SCRIPT) or "", "".join(statements))
        shutil.rmtree(folder)
        return sum(len(rows) for family in run.families.values() for rows in family.files), run.is_cancelled

    def test_the_program_writes_what_the_plain_steps_write(self):
        rows = cancelled = 0
        for seed in range(programs.first, programs.first + programs.boards):
            with self.subTest(seed=seed):
                written, was_cancelled = self.compare(seed)
                rows += written
                cancelled += was_cancelled
        self.assertGreater(rows, 10 * programs.boards)
        self.assertGreater(cancelled, programs.boards // 10)
        self.assertLess(cancelled, programs.boards // 2)


if __name__ == "__main__":
    parser = argparse.ArgumentParser()
    parser.add_argument("--cli", required=True)
    parser.add_argument("--boards", type=int, default=60)
    parser.add_argument("--first", type=int, default=1, help="seed of the first board")
    programs, rest = parser.parse_known_args()
    unittest.main(argv=[sys.argv[0], *rest])
