#!/usr/bin/env python3
"""Converts boards, loads the results into a throw-away MariaDB and compares every row and every column.

The server is an ordinary process on a unix socket in a temporary folder, without network, and goes with the
test. TESSALY_SKIP_DATABASE=1 in the environment leaves all of it out.
"""

import argparse
import json
import os
import re
import shutil
import signal
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

SKIPPED = 77
SOURCE_TREE = Path(__file__).resolve().parents[2]
SCRIPT = "Discus Conversion Import SQL.sql"
MANUAL = SOURCE_TREE / "Docs" / "loading.md"

sys.path.insert(0, str(SOURCE_TREE / "bench"))
import generate_board  # noqa: E402
from server import Server  # noqa: E402

# Charset of a run -> the database's name of it.
CHARSETS = {"utf-8": "utf8mb4", "iso-8859-1": "latin1", "shift-jis": "cp932"}

programs = argparse.Namespace()
server = None
# Holds all that the tests make.
scratch = None
# Table -> [(column, "INT" or "TEXT")], as the row classes have them.
tables = {}


class BoardServer(Server):
    """Has a database with tables of just the import files' columns."""

    def make_tables(self, charset, keys=None):
        kinds = {"INT": "INT", "TEXT": "LONGTEXT"}
        statements = [
            "DROP DATABASE IF EXISTS board", f"CREATE DATABASE board CHARACTER SET {charset}", "USE board"
        ]  # fmt: skip
        for table, columns in tables.items():
            listed = [f"`{name}` {kinds[kind]}" for name, kind in columns]
            if keys and table in keys:
                listed.append(f"PRIMARY KEY (`{keys[table]}`)")
            statements.append(f"CREATE TABLE {table} ({', '.join(listed)})")
        self.ask(";".join(statements), database=None)

    def rows(self, table):
        """All rows: numbers as numbers, texts as text."""
        columns = tables[table]
        # In hexadecimal no character needs an escape.
        forms = {"INT": "`{}`", "TEXT": "HEX(CONVERT(`{}` USING utf8mb4))"}
        wanted = [forms[kind].format(name) for name, kind in columns]
        answer = self.ask(f"SELECT {', '.join(wanted)} FROM {table}")
        return [[value_of(value, kind) for value, (_, kind) in zip(row, columns)] for row in answer]


def value_of(value, kind):
    if value is None:
        return None
    return int(value) if kind == "INT" else bytes.fromhex(value).decode("utf-8")


def read_import_file(text, columns, has_escapes=True):
    """The rows that the database documents to make of an import file.

    Fields end at a comma, rows at CR LF. A field that begins with a double quote ends at the next double
    quote that a comma or the row's end follows; a doubled double quote within is one. A backslash takes the
    next character for itself: 0, b, n, r, t and Z are control characters, N alone in a field is NULL, any
    other character is that character.
    """
    controls = {"0": "\0", "b": "\b", "n": "\n", "r": "\r", "t": "\t", "Z": "\x1a"}
    rows, row, at = [], [], 0
    while at < len(text):
        is_quoted = text[at] == '"'
        begin = at = at + is_quoted
        value = []
        while True:
            if has_escapes and text[at] == "\\":
                value.append(controls.get(text[at + 1], text[at + 1]))
                at += 2
            elif is_quoted and text.startswith('""', at):
                value.append('"')
                at += 2
            elif ends_field(text, at + is_quoted) and (not is_quoted or text[at] == '"'):
                break
            else:
                value.append(text[at])
                at += 1
        is_null = has_escapes and text[begin:at] == "\\N"
        row.append(None if is_null else "".join(value))
        at += is_quoted
        if text[at] == ",":
            at += 1
            continue
        at += len("\r\n")
        rows.append([value_in_file(value, kind) for value, (_, kind) in zip(row, columns, strict=True)])
        row = []
    return rows


def ends_field(text, at):
    return text.startswith(",", at) or text.startswith("\r\n", at)


def value_in_file(value, kind):
    return int(value) if kind == "INT" else value


class Result:
    """What a run of tessaly-cli leaves."""

    def __init__(self, folder, root, output="output", charset=None, website=generate_board.WEBSITE, more=()):
        self.output = folder / output
        report = folder / "report.json"
        command = [programs.cli, "convert", "--root", root, "--output", self.output, "--website", website,
                   "--forum", "http://forum.example/", "--admin", "admin", "--program-folder", SOURCE_TREE,
                   "--ini", folder / "settings.ini", "--report", report, "--quiet"]  # fmt: skip
        if charset:
            command += ["--charset", charset]
        run = subprocess.run([*command, *more], capture_output=True, text=True)
        self.status = run.returncode
        self.errors = run.stderr
        self.report = json.loads(report.read_text(encoding="utf-8"))
        self.script = (self.output / SCRIPT).read_bytes().decode("utf-8")
        self.database_charset = CHARSETS[charset or "iso-8859-1"]
        self.codec = generate_board.CODECS[charset or "iso-8859-1"]

    def files(self, table):
        return sorted(self.output.glob(f"{table}[0-9]*.txt"))

    def rows(self, table, has_escapes=True):
        texts = [file.read_bytes().decode(self.codec) for file in self.files(table)]
        return [row for text in texts for row in read_import_file(text, tables[table], has_escapes)]

    def load(self, *options):
        """Runs the script as it stands; gives what the client says, warnings included."""
        with open(self.output / SCRIPT, "rb") as script:
            loaded = server.client(
                "--local-infile=1", "--show-warnings", f"--default-character-set={self.database_charset}",
                *options, "board", stdin=script,
            )  # fmt: skip
        return loaded.returncode, loaded.stdout.decode(errors="replace")


class LoadTest(unittest.TestCase):
    maxDiff = 2000

    def setUp(self):
        self.folder = Path(tempfile.mkdtemp(dir=scratch))
        self.addCleanup(shutil.rmtree, self.folder)

    def generated(self, charset="iso-8859-1", **sizes):
        wanted = dict(pages=20, posts=60, members=30, attachments=5, message_length=300, attachment_bytes=200)
        generate_board.generate(self.folder / "board", charset=charset, seed=1, **(wanted | sizes))
        return self.folder / "board"

    def board_of_posts(self, *posts, members=()):
        """A board of one page in the folder 3, and members as lines of the member file."""
        board = generate_board.Board(self.folder / "board", "iso-8859-1", 1)
        page = generate_board.Page(3, 3, "Radios", None)
        board.write_page(page, "".join(posts))
        board.write_board_file([("Things", [page])])
        (board.main / "users.txt").write_bytes("".join(line + "\n" for line in members).encode())
        return board.root

    def assert_healthy(self, result):
        self.assertEqual((result.status, result.errors), (0, ""))

    def load_without_a_word(self, result):
        server.make_tables(result.database_charset)
        self.assertEqual(result.load(), (0, ""))

    def assert_tables_hold_the_files(self, result, has_escapes=True):
        for table in tables:
            with self.subTest(table=table):
                self.assertCountEqual(server.rows(table), result.rows(table, has_escapes))

    def assert_script_names_every_file_once(self, result):
        named = re.findall(r"INFILE '(.*)' INTO TABLE", result.script)
        there = [str(file) for table in tables for file in result.files(table)]
        self.assertCountEqual(named, there)

    def assert_loads(self, result):
        self.assert_script_names_every_file_once(result)
        self.load_without_a_word(result)
        self.assert_tables_hold_the_files(result)

    def counts(self):
        return {table: int(server.ask(f"SELECT COUNT(*) FROM {table}")[0][0]) for table in tables}

    def column(self, table, name):
        at = [column for column, _ in tables[table]].index(name)
        return [row[at] for row in server.rows(table)]


class Boards(LoadTest):
    def test_the_sample_board(self):
        result = Result(
            self.folder, SOURCE_TREE / "samples" / "board", website="http://www.radio-club.example/discus/"
        )
        self.assertEqual(result.status, 0)
        self.assert_loads(result)
        self.assertEqual(
            self.counts(),
            {"mybb_forums": 20, "mybb_threads": 12, "mybb_posts": 49, "mybb_announcements": 4,
             "mybb_attachments": 6, "mybb_users": 15, "mybb_usergroups": 5},
        )  # fmt: skip

    def test_a_board_of_many_files(self):
        board = self.generated(pages=130, posts=400, members=200, attachments=150)
        result = Result(self.folder, board, more=["--split-mb", "0.01"])
        self.assert_healthy(result)
        for table in ("mybb_forums", "mybb_threads", "mybb_posts", "mybb_users", "mybb_attachments"):
            self.assertGreater(len(result.files(table)), 1, table)
        self.assert_loads(result)
        counts = self.counts()
        # A page is a forum; so are the two categories.
        self.assertEqual((counts["mybb_forums"], counts["mybb_posts"]), (132, 400))
        self.assertEqual(counts["mybb_attachments"], 150)

    def test_a_board_in_utf_8(self):
        result = Result(self.folder, self.generated("utf-8"), charset="utf-8")
        self.assert_healthy(result)
        self.assert_loads(result)
        messages = "".join(self.column("mybb_posts", "message"))
        for text in ("Grüße aus Köln".lower(), "καλημέρα κόσμε", "привет([) мир", "日本語の表示", "🎉", "𝕏"):
            self.assertIn(text, messages.lower())

    def test_a_board_in_iso_8859_1(self):
        result = Result(self.folder, self.generated("iso-8859-1"))
        self.assert_healthy(result)
        self.assert_loads(result)
        messages = "".join(self.column("mybb_posts", "message")).lower()
        for text in ("grüße aus köln", "¿dónde está?", "15 € – 20 €", "café"):
            self.assertIn(text, messages)

    def test_a_board_in_shift_jis(self):
        result = Result(self.folder, self.generated("shift-jis"), charset="shift-jis")
        self.assert_healthy(result)
        self.assert_loads(result)
        messages = "".join(self.column("mybb_posts", "message"))
        # The last byte of 表, ソ, 能, 申 and 予 is that of a backslash.
        for text in ("日本語の表示です", "ソフトウェア、能力", "申込書と予定表", "ﾊﾝｶｸｶﾅ"):
            self.assertIn(text, messages)

    def test_an_output_folder_with_blanks_and_letters_beyond_ascii(self):
        for charset in CHARSETS:
            with self.subTest(charset=charset):
                output = "Übertragung in das neue 表 Forum"
                result = Result(self.folder, self.generated(charset), output, charset)
                self.assert_healthy(result)
                self.assert_loads(result)
                shutil.rmtree(self.folder / "board")

    def test_a_run_that_was_cancelled_half_way(self):
        board = self.generated(pages=60, posts=300)
        page = board / "discus" / "messages" / "1" / "30.html"
        # Two font tags opened and one closed end the run.
        broken = "<!--Text--><font size=1><font size=2>x</font>"
        page.write_text(page.read_text("cp1252").replace("<!--Text-->", broken, 1), "cp1252")
        result = Result(self.folder, board)
        self.assertEqual(result.status, 1)
        self.assertTrue(result.report["cancelled"])
        self.assert_loads(result)
        counts = self.counts()
        # The first category and the pages 1 to 31: page 31 lies below page 30 and is read before its posts.
        self.assertEqual(counts["mybb_forums"], 32)
        self.assertGreater(counts["mybb_posts"], 0)
        self.assertLess(counts["mybb_posts"], 300)


class WhatTheRowsLetThrough(LoadTest):
    """Passwords, mail addresses and paths go into the rows as they are."""

    def load_members(self, *members):
        post = generate_board.post(1, 3, "anna", "Anna", 1043846797, "hello")
        result = Result(self.folder, self.board_of_posts(post, members=members))
        server.make_tables(result.database_charset)
        status, said = result.load()
        self.assertEqual(status, 0)
        return result, said

    def member_with_password(self, password):
        result, said = self.load_members(f"anna:{password}:anna@mail.example:Anna:::1:192.168.1.5:2::")
        self.assertEqual(said, "")
        self.assert_tables_hold_the_files(result)
        users = dict(zip(self.column("mybb_users", "username"), self.column("mybb_users", "password")))
        self.assertEqual(list(users), ["anna"])
        return users["anna"]

    def test_a_quote_and_a_comma_in_a_password_arrive(self):
        self.assertEqual(self.member_with_password('ab"cd,ef'), 'ab"cd,ef')

    def test_a_quote_and_a_comma_in_a_mail_address_arrive(self):
        self.load_members('anna:x:"anna, v"@mail.example:Anna:::1:192.168.1.5:2::')
        self.assertIn('"anna, v"@mail.example', self.column("mybb_users", "email"))

    def test_two_quotes_in_a_row_become_one(self):
        self.assertEqual(self.member_with_password('ab""cd'), 'ab"cd')

    def test_a_backslash_in_a_password_is_taken_as_an_escape(self):
        self.assertEqual(self.member_with_password(r"ab\cd\\ef"), r"abcd\ef")
        shutil.rmtree(self.folder / "board")
        self.assertEqual(self.member_with_password(r"tab\there"), "tab\there")

    def test_a_password_of_backslash_and_capital_n_becomes_null(self):
        self.assertIsNone(self.member_with_password(r"\N"))

    def test_a_quote_with_a_comma_behind_it_moves_the_columns(self):
        _, said = self.load_members('anna:ab",cd:anna@mail.example:Anna:::1:192.168.1.5:2::')
        # The text behind it has become the salt, and all that follows stands one column too far.
        self.assertEqual(self.column("mybb_users", "password"), ["ab"])
        self.assertEqual(self.column("mybb_users", "salt"), ['cd"'])
        self.assertEqual(self.column("mybb_users", "email"), [""])
        self.assertEqual(self.column("mybb_users", "birthdayprivacy"), [""])
        self.assertEqual(self.column("mybb_users", "signature"), ["all"])
        self.assertIn("Incorrect integer value: 'anna@mail.example' for column", said)
        self.assertIn("Row 1 was truncated; it contained more data than there were input columns", said)

    def test_a_backslash_at_the_end_of_a_password_swallows_the_next_columns(self):
        _, said = self.load_members("anna:ab\\:anna@mail.example:Anna:::1:192.168.1.5:2::")
        self.assertIn("Row 1 doesn't contain data for all columns", said)
        # Up to the next quote that is neither escaped nor doubled and has a comma behind it.
        self.assertEqual(self.column("mybb_users", "password"), ['ab",",","anna@mail.example'])

    def attachment_of_page_3(self):
        post = generate_board.post(1, 3, "anna", "Anna", 1, generate_board.attachment(3, "notes-1.txt"))
        board = self.board_of_posts(post)
        (board / "discus" / "messages" / "3" / "notes-1.txt").write_bytes(b"notes")
        return Result(self.folder, board)

    def test_an_attachments_path_loses_its_backslashes(self):
        result = self.attachment_of_page_3()
        self.assert_loads(result)
        (name,) = self.column("mybb_attachments", "filename")
        # From \board\discus\messages\3\notes-1.txt: "\b" is a backspace and "\n" a line end.
        self.assertTrue(name.endswith("\x08oarddiscusmessages3\x0aotes-1.txt"), repr(name))

    def test_an_attachments_path_stays_whole_without_escapes(self):
        result = self.attachment_of_page_3()
        server.make_tables(result.database_charset)
        command = manual_command("sed ", "ESCAPED BY")
        subprocess.run(["sh", "-c", command], cwd=result.output, check=True)
        with open(result.output / "load.sql", "rb") as script:
            loaded = server.client("--local-infile=1", "--show-warnings", "board", stdin=script)
        self.assertEqual((loaded.returncode, loaded.stdout), (0, b""))
        self.assert_tables_hold_the_files(result, has_escapes=False)
        (name,) = self.column("mybb_attachments", "filename")
        self.assertTrue(name.endswith("\\board\\discus\\messages\\3\\notes-1.txt"), name)


class TheManual(LoadTest):
    """The commands of Docs/loading.md do what it says."""

    def run_command(self, command, folder):
        """A command of the manual, with this test's server and database in the place of the operator's."""
        client = " ".join(f"'{word}'" for word in server.command())
        command = command.replace("mariadb --user=NAME --password", client).replace("DATABASE", "board")
        return subprocess.run(
            ["sh", "-c", command], cwd=folder, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True
        )

    def test_the_result_is_loaded_on_the_machine_of_the_run(self):
        # The database has another charset than the files.
        result = Result(self.folder, self.generated("iso-8859-1"))
        server.make_tables("utf8mb4")
        command = manual_command("mariadb ", SCRIPT).replace("utf8mb4", "latin1")
        loaded = self.run_command(command, result.output)
        self.assertEqual((loaded.returncode, loaded.stdout), (0, ""))
        self.assert_tables_hold_the_files(result)

    def test_the_result_is_loaded_on_another_machine(self):
        result = Result(self.folder, self.generated("utf-8"), charset="utf-8")
        moved = self.folder / "moved here"
        result.output.rename(moved)
        result.output = moved
        server.make_tables("utf8mb4")
        for command in (manual_command("LC_ALL=C sed ", "INFILE"), manual_command("mariadb ", "load.sql")):
            done = self.run_command(command, moved)
            self.assertEqual((done.returncode, done.stdout), (0, ""))
        self.assert_tables_hold_the_files(result)

    def test_a_script_from_windows_is_loaded_on_another_machine(self):
        result = Result(self.folder, self.generated("utf-8"), charset="utf-8")
        script = result.script.replace(f"{result.output}/", r"C:\\Übertragung\\out\\")
        (result.output / SCRIPT).write_bytes(script.encode("cp1252"))
        server.make_tables("utf8mb4")
        for command in (manual_command("LC_ALL=C sed ", "INFILE"), manual_command("mariadb ", "load.sql")):
            done = self.run_command(command, result.output)
            self.assertEqual((done.returncode, done.stdout), (0, ""))
        self.assert_tables_hold_the_files(result)

    def test_lines_and_rows_are_counted(self):
        result = Result(self.folder, self.generated("utf-8", pages=130, posts=200), charset="utf-8",
                        more=["--split-mb", "0.01"])  # fmt: skip
        self.load_without_a_word(result)
        lines = self.run_command(manual_command("cat ", "wc -l"), result.output)
        rows = self.run_command(manual_command("mariadb ", "COUNT"), result.output)
        self.assertEqual(lines.stdout.split(), ["200"])
        self.assertEqual(rows.stdout.split(), ["COUNT(*)", "200"])

    def test_a_row_whose_number_is_taken_is_left_out_with_a_warning(self):
        result = Result(self.folder, self.generated("utf-8"), charset="utf-8")
        server.make_tables("utf8mb4", keys={"mybb_users": "uid"})
        server.ask("INSERT INTO mybb_users (uid, username) VALUES (2, 'keeper')")
        status, said = result.load()
        self.assertEqual((status, said), (0, "Warning (Code 1062): Duplicate entry '2' for key 'PRIMARY'\n"))
        self.assertEqual(server.ask("SELECT username FROM mybb_users WHERE uid = 2"), [["keeper"]])

    def test_an_apostrophe_in_the_folders_name_breaks_the_script(self):
        result = Result(self.folder, self.generated("utf-8"), output="it's", charset="utf-8")
        server.make_tables("utf8mb4")
        status, _ = result.load()
        self.assertEqual(status, 1)
        self.assertEqual(set(self.counts().values()), {0})


def manual_command(begin, holds):
    """The one command of the manual that begins so and holds that text."""
    blocks = re.findall(r"^```sh\n(.*?)^```", MANUAL.read_text(encoding="utf-8"), re.MULTILINE | re.DOTALL)
    lines = [line for block in blocks for line in block.splitlines()]
    (command,) = [line for line in lines if line.startswith(begin) and holds in line]
    return command


def read_tables():
    printed = subprocess.run([programs.columns], capture_output=True, text=True, check=True).stdout
    for line in printed.splitlines():
        table, column, kind = line.split()
        tables.setdefault(table, []).append((column, kind))


def main():
    if os.environ.get("TESSALY_SKIP_DATABASE") == "1":
        print("The database tests are left out: TESSALY_SKIP_DATABASE is 1.")
        sys.exit(SKIPPED)
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--cli", required=True, help="path of tessaly-cli")
    parser.add_argument("--columns", required=True, help="path of print_columns")
    _, rest = parser.parse_known_args(namespace=programs)
    # A test that is stopped from outside cleans up as well.
    signal.signal(signal.SIGTERM, signal.default_int_handler)
    read_tables()
    with tempfile.TemporaryDirectory(prefix="tessaly-db-") as folder:
        global server, scratch
        scratch = Path(folder)
        server = BoardServer(scratch)
        try:
            server.start()
            unittest.main(argv=[sys.argv[0], *rest])
        finally:
            server.stop()


if __name__ == "__main__":
    main()
