#!/usr/bin/env python3
"""Runs tessaly-cli into faults: full disks, vanished files and folders, broken reads, signals, two runs at once.
After each the source is as it was, no file is half written under its name, and what failed is told by name."""

import argparse
import csv
import hashlib
import os
import random
import re
import shutil
import signal
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

SOURCE_TREE = Path(__file__).resolve().parents[2]
sys.path.insert(0, str(SOURCE_TREE / "bench"))
import generate_board  # noqa: E402

programs = argparse.Namespace()
scratch = None
board = None


def setUpModule():
    global scratch, board
    scratch = Path(tempfile.mkdtemp(prefix="tessaly-faults-"))
    scratch.chmod(0o755)
    board = scratch / "board"
    generate_board.generate(
        folder=board, pages=120, posts=2400, members=200, attachments=60, message_length=900,
        attachment_bytes=3000, charset="iso-8859-1", seed=7)  # fmt: skip
    shutil.copytree(SOURCE_TREE / "Docs", scratch / "program" / "Docs", ignore=shutil.ignore_patterns("*.pdf"))


def tearDownModule():
    shutil.rmtree(scratch)


def state_of(folder):
    """Name, time and content of every file and folder."""
    state = {}
    for path in sorted(folder.rglob("*")):
        content = hashlib.md5(path.read_bytes()).hexdigest() if path.is_file() else "folder"
        state[str(path.relative_to(folder))] = (path.stat().st_mtime_ns, content)
    return state


def command(output, ini="run.ini", source=None):
    return [
        programs.cli, "convert", "--root", str(source or board), "--output", str(output), "--website", generate_board.WEBSITE,
        "--forum", "http://forum.example/", "--admin", "Admin", "--split-mb", "0.2",
        "--program-folder", str(scratch / "program"), "--ini", str(scratch / ini)]  # fmt: skip


def run(output, environment=None, source=None):
    return subprocess.run(
        command(output, source=source), capture_output=True, text=True, timeout=300, env={**os.environ, **(environment or {})})  # fmt: skip


def told(path):
    """The path as messages show it."""
    return str(path).replace("/", "\\")


def start(output, ini="run.ini"):
    return subprocess.Popen(command(output, ini), stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)


class Faults(unittest.TestCase):
    def setUp(self):
        self.before = state_of(board)
        self.output = scratch / "output"
        shutil.rmtree(self.output, ignore_errors=True)

    def tearDown(self):
        self.assertEqual(state_of(board), self.before)

    def assertWhole(self, folder):
        """Each import file ends with a whole row, and all its rows have as many fields. A redirection page ends as
        its pattern does. A copied attachment is named after its content."""
        for path in folder.glob("mybb_*.txt"):
            text = path.read_bytes().decode("cp1252", "replace")
            self.assertTrue(text == "" or text.endswith("\r\n"), path)
            counts = {len(row) for row in csv.reader(text.split("\r\n")[:-1])}
            self.assertLessEqual(len(counts), 1, path)
        for path in folder.glob("redirect/**/*.html"):
            self.assertTrue(path.read_bytes().endswith(b"</html>\n"), path)
        for path in folder.glob("attachments/*_*"):
            if path.suffix != ".part":
                self.assertEqual(path.name.split("_")[1], hashlib.md5(path.read_bytes()).hexdigest().upper())

    def assertLoadable(self, folder):
        """The script names files that are there, each once."""
        script = folder / "Discus Conversion Import SQL.sql"
        text = script.read_bytes().decode() if script.is_file() else ""
        names = re.findall(r"^LOAD DATA LOCAL INFILE '(.*)' INTO TABLE mybb_[a-z]+\r$", text, re.MULTILINE)
        self.assertEqual(len(names), len(set(names)))
        for name in names:
            self.assertTrue(Path(name).is_file(), name)

    def assertCancelled(self, done):
        """A run that told of trouble and took its closing steps."""
        self.assertEqual(done.returncode, 1, done.stderr)
        self.assertIn("Conversion Cancelled", done.stdout)
        self.assertIn("Conversion Stop: ", done.stdout)
        self.assertWhole(self.output)
        self.assertLoadable(self.output)
        self.assertEqual(list(self.output.rglob("*.part")), [])

    def runWithFault(self, kind, count, path, source=None):
        fault = f"{kind} {count} {path}"
        # The file stands in front of the sanitizers' own library, which is all right.
        return run(self.output, {
            "LD_PRELOAD": programs.failing_disk, "TESSALY_FAULT": fault,
            "ASAN_OPTIONS": "verify_asan_link_order=0"}, source)  # fmt: skip

    def failBothWays(self, path, label, opening=1):
        """Has the file vanish between the test for it and its reading, and its reading break off in the middle. Gives
        what the two runs told."""
        results = []
        for kind, error in (
            ("vanish", "3002 - " + label + "\n\nFile could not be opened.\n"),
            ("break", "57 - " + label + "\n\nDevice I/O error\n"),
        ):
            with self.subTest(kind=kind, path=path):
                done = self.runWithFault(kind, opening, path)
                self.assertCancelled(done)
                self.assertIn(error, done.stderr)
                results.append(done)
        return results

    def waitForPages(self, child, count):
        """Until so many redirection pages stand, or the run has ended."""
        folder = self.output / "redirect"
        while child.poll() is None and sum(1 for _ in folder.rglob("*.html")) < count:
            pass

    def test_a_run_that_goes_well_leaves_the_source_alone(self):
        done = run(self.output)
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        self.assertWhole(self.output)
        self.assertLoadable(self.output)

    def test_a_source_without_write_permission_converts_like_any_other(self):
        if os.geteuid() != 0:
            self.skipTest("only root can become another user")
        run(self.output)
        expected = {p.name: p.read_bytes() for p in self.output.glob("mybb_*.txt")}
        shutil.rmtree(self.output)
        self.output.mkdir()
        for folder in (self.output, scratch / "nobody"):
            folder.mkdir(exist_ok=True)
            os.chown(folder, 65534, 65534)
        nobody = ["setpriv", "--reuid=65534", "--regid=65534", "--clear-groups"]
        words = command(self.output / "result", "nobody/run.ini")
        done = subprocess.run([*nobody, *words], capture_output=True, text=True, timeout=300)
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        found = {p.name: p.read_bytes() for p in (self.output / "result").glob("mybb_*.txt")}
        self.assertEqual(
            {n: d for n, d in found.items() if "attach" not in n},
            {n: d for n, d in expected.items() if "attach" not in n})  # fmt: skip

    def test_a_page_that_cannot_be_read_is_named_and_ends_the_run(self):
        if os.geteuid() != 0:
            self.skipTest("only root can become another user")
        copy = scratch / "locked"
        shutil.copytree(board, copy)
        page = sorted((copy / "discus" / "messages").rglob("*.html"))[-1]
        page.chmod(0)
        work = scratch / "locked-work"
        work.mkdir()
        os.chown(work, 65534, 65534)
        nobody = ["setpriv", "--reuid=65534", "--regid=65534", "--clear-groups"]
        words = command(work / "result", "locked-work/run.ini")
        words[words.index("--root") + 1] = str(copy)
        done = subprocess.run([*nobody, *words], capture_output=True, text=True, timeout=300)
        self.assertEqual(done.returncode, 1)
        self.assertIn("3002 - GetFileDataCharset() - " + told(page) + "\n\nFile could not be opened.", done.stderr)
        self.assertIn("Conversion Cancelled", done.stdout)
        self.assertWhole(work / "result")

    def test_a_page_that_fails_while_it_is_read_is_named_and_ends_the_run(self):
        page = sorted((board / "discus" / "messages").rglob("*.html"))[-1]
        self.failBothWays(page, "GetFileDataCharset() - " + told(page))

    def test_a_board_file_that_fails_while_it_is_read_is_named_and_leaves_the_members(self):
        path = board / "discus" / "messages" / "board-topics.html"
        self.failBothWays(path, "GetFileDataCharset() - " + told(path))
        self.assertTrue((self.output / "mybb_users1.txt").is_file())
        self.assertFalse((self.output / "mybb_forums1.txt").exists())

    def test_a_member_file_that_fails_while_it_is_read_is_named_and_leaves_no_rows(self):
        path = board / generate_board.ADMIN_FOLDER / "users.txt"
        self.failBothWays(path, "GetFileDataCharset() - " + told(path.with_name("Users.txt")))
        self.assertEqual(list(self.output.glob("mybb_*.txt")), [])

    def test_a_page_that_fails_while_its_charset_is_looked_for_is_named_and_ends_the_run(self):
        page = board / "discus" / "messages" / "1" / "1.html"
        self.failBothWays(page, "GetFileDataANSI() - " + told(page))
        self.assertEqual(list(self.output.glob("mybb_*.txt")), [])

    def test_a_pattern_that_fails_while_it_is_read_is_named_and_counts_as_missing(self):
        path = scratch / "program" / "Docs" / "Redirect.html"
        for done in self.failBothWays(path, "GetFileDataANSI() - " + told(path)):
            self.assertIn("Source Redirect file not found - " + told(path), done.stderr)
            self.assertIn("Conversion Start: \n", done.stdout)

    def test_a_character_file_that_fails_while_it_is_read_is_named_and_ends_the_run(self):
        path = scratch / "program" / "Docs" / "iso-8859-1.txt"
        self.failBothWays(path, "GetFileDataCharset() - " + told(path))
        self.assertEqual(list(self.output.glob("mybb_*.txt")), [])

    def test_a_links_file_that_fails_while_it_is_read_back_is_named(self):
        path = self.output / "InternalLinks1.txt"
        self.failBothWays(path, "GetFileDataCharset() - " + told(path))
        self.assertTrue(path.is_file())
        self.assertFalse((self.output / "InternalLinksUpdate1.txt").exists())

    def test_an_upload_that_fails_while_it_is_read_is_named_and_leaves_no_copy(self):
        upload = sorted((board / "discus" / "messages").rglob("manual-*.pdf"))[0]
        # It is opened for its length, for its hash and for its copy.
        for kind, opening, error in (
            ("vanish", 1, "53 - ProcessAttachments()\n\nFile not found\n"),
            ("vanish", 2, "53 - ProcessAttachments()\n\nFile not found\n"),
            ("vanish", 3, "53 - ProcessAttachments()\n\nFile not found\n"),
            ("break", 2, "57 - ProcessAttachments()\n\nDevice I/O error\n"),
            ("break", 3, "57 - ProcessAttachments()\n\nDevice I/O error\n"),
        ):
            with self.subTest(kind=kind, opening=opening):
                done = self.runWithFault(kind, opening, upload)
                self.assertCancelled(done)
                self.assertIn(error, done.stderr)
                self.assertIn("These files could not be read or written.", done.stderr)
                self.assertIn(told(upload) + "\n", done.stderr)
                digest = hashlib.md5(upload.read_bytes()).hexdigest().upper()
                self.assertEqual(list((self.output / "attachments").glob("*_" + digest)), [])

    def test_a_full_disk_is_told_with_the_file_and_leaves_whole_files(self):
        mounted = scratch / "small"
        mounted.mkdir()
        for size in ("64k", "600k", "2m"):
            mount = ["mount", "-t", "tmpfs", "-o", "size=" + size, "tmpfs", str(mounted)]
            if subprocess.run(mount, capture_output=True).returncode != 0:
                self.skipTest("nothing can be mounted here")
            try:
                done = run(mounted / "output")
                self.assertEqual(done.returncode, 1, size)
                self.assertIn("These files could not be read or written.", done.stderr)
                self.assertIn(str(mounted).replace("/", "\\") + "\\output\\", done.stderr)
                self.assertIn("Conversion Cancelled", done.stdout)
                self.assertEqual(list((mounted / "output").rglob("*.part")), [])
                self.assertWhole(mounted / "output")
            finally:
                subprocess.run(["umount", str(mounted)], check=True)

    def test_a_disk_that_is_full_from_any_write_on_is_told_with_the_file_and_leaves_whole_files(self):
        sample = SOURCE_TREE / "samples" / "board"
        before = state_of(sample)
        output = str(self.output) + "/"
        writes = 0
        done = None
        while done is None or done.returncode != 0:
            writes += 1
            with self.subTest(writes=writes):
                done = self.runWithFault("full", writes, output, sample)
                self.assertWhole(self.output)
                self.assertEqual(list(self.output.rglob("*.part")), [])
                self.assertIn("Conversion Stop: ", done.stdout)
                if done.returncode == 0:
                    self.assertEqual(done.stderr, "")
                    break
                self.assertEqual(done.returncode, 1, done.stderr)
                self.assertIn("These files could not be read or written.", done.stderr)
                self.assertIn(told(output), done.stderr)
        self.assertGreater(writes, 30)
        self.assertEqual(state_of(sample), before)

    def test_an_output_folder_that_vanishes_is_told(self):
        child = start(self.output)
        self.waitForPages(child, 5)
        shutil.rmtree(self.output, ignore_errors=True)
        out, err = child.communicate(timeout=300)
        self.assertIn(child.returncode, (0, 1))
        if child.returncode == 1:
            self.assertIn("output\\", err)
        self.assertIn("Conversion Stop: ", out)

    def test_an_interrupt_at_any_moment_ends_with_whole_files(self):
        moments = random.Random(11)
        for _ in range(6):
            shutil.rmtree(self.output, ignore_errors=True)
            child = start(self.output)
            self.waitForPages(child, moments.randrange(100))
            child.send_signal(signal.SIGINT)
            out, err = child.communicate(timeout=300)
            # Before the program looks for it, or behind its end, the signal ends the process.
            self.assertIn(child.returncode, (0, 1, -signal.SIGINT), err)
            if child.returncode == 1:
                self.assertIn("Conversion Cancelled", out)
            self.assertWhole(self.output)
            self.assertLoadable(self.output)

    def test_a_killed_run_leaves_whole_files(self):
        moments = random.Random(12)
        for _ in range(6):
            shutil.rmtree(self.output, ignore_errors=True)
            child = start(self.output)
            self.waitForPages(child, moments.randrange(100))
            child.kill()
            child.communicate(timeout=300)
            self.assertWhole(self.output)
            self.assertLoadable(self.output)

    def test_two_runs_into_one_folder_both_end(self):
        children = [start(self.output), start(self.output, "other.ini")]
        for child in children:
            out, err = child.communicate(timeout=300)
            self.assertIn(child.returncode, (0, 1), err)
            self.assertIn("Conversion Stop: ", out)
        self.assertWhole(self.output)


if __name__ == "__main__":
    parser = argparse.ArgumentParser()
    parser.add_argument("--cli", required=True)
    parser.add_argument("--failing-disk", required=True)
    programs, rest = parser.parse_known_args()
    unittest.main(argv=[sys.argv[0], *rest])
