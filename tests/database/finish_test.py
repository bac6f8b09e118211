#!/usr/bin/env python3
"""Finishes boards, loads them into tables like those of a living forum and asks the database what became of them.

The tables have the columns of the forum's 1.8 line that matter, and others that the scripts do not name.
TESSALY_SKIP_DATABASE=1 in the environment leaves all of it out.
"""

import argparse
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
CHECK = "1 Check.sql"
LOAD = "2 Load.sql"
FORUM = "http://forum.example/"

sys.path.insert(0, str(SOURCE_TREE / "bench"))
import generate_board  # noqa: E402
from server import Server  # noqa: E402

programs = argparse.Namespace()
server = None
# Holds all that the tests make.
scratch = None

SWITCHES = (
    "allownotices hideemail subscriptionmethod invisible receivepms receivefrombuddy pmnotice pmnotify "
    "buddyrequestspm buddyrequestsauto showimages showvideos showsigs showavatars showquickreply showredirect "
    "showcodebuttons"
).split()
PERMISSIONS = (
    "canview canviewthreads canviewprofiles candlattachments canpostthreads canpostreplys canpostattachments "
    "canratethreads caneditposts candeleteposts candeletethreads caneditattachments cansearch canusercp"
).split()


def flags(names):
    return ", ".join(f"`{name}` tinyint(1) NOT NULL DEFAULT 0" for name in names)


# "{}" is the prefix. Texts without a default must be named by whoever inserts a row.
TABLES = [
    """CREATE TABLE {}forums (
      fid smallint unsigned NOT NULL AUTO_INCREMENT PRIMARY KEY, name varchar(120) NOT NULL DEFAULT '',
      description text NOT NULL, linkto varchar(180) NOT NULL DEFAULT '', type char(1) NOT NULL DEFAULT '',
      pid smallint unsigned NOT NULL DEFAULT 0, parentlist text NOT NULL,
      disporder smallint unsigned NOT NULL DEFAULT 0, active tinyint(1) NOT NULL DEFAULT 0,
      open tinyint(1) NOT NULL DEFAULT 0, threads int unsigned NOT NULL DEFAULT 0,
      posts int unsigned NOT NULL DEFAULT 0, lastpost int unsigned NOT NULL DEFAULT 0,
      lastposter varchar(120) NOT NULL DEFAULT '', lastposteruid int unsigned NOT NULL DEFAULT 0,
      lastposttid int unsigned NOT NULL DEFAULT 0, lastpostsubject varchar(120) NOT NULL DEFAULT '',
      rules text NOT NULL, defaultsortby varchar(10) NOT NULL DEFAULT '', """
    + flags("allowhtml allowmycode allowsmilies allowimgcode allowvideocode allowpicons allowtratings "
            "usepostcounts usethreadcounts requireprefix showinjump modposts".split())
    + ")",
    """CREATE TABLE {}threads (
      tid int unsigned NOT NULL AUTO_INCREMENT PRIMARY KEY, fid smallint unsigned NOT NULL DEFAULT 0,
      subject varchar(120) NOT NULL DEFAULT '', prefix smallint unsigned NOT NULL DEFAULT 0,
      icon smallint unsigned NOT NULL DEFAULT 0, poll int unsigned NOT NULL DEFAULT 0,
      uid int unsigned NOT NULL DEFAULT 0, username varchar(80) NOT NULL DEFAULT '',
      dateline int unsigned NOT NULL DEFAULT 0, firstpost int unsigned NOT NULL DEFAULT 0,
      lastpost int unsigned NOT NULL DEFAULT 0, lastposter varchar(120) NOT NULL DEFAULT '',
      lastposteruid int unsigned NOT NULL DEFAULT 0, views int unsigned NOT NULL DEFAULT 0,
      replies int unsigned NOT NULL DEFAULT 0, closed varchar(30) NOT NULL DEFAULT '',
      sticky tinyint(1) NOT NULL DEFAULT 0, notes text NOT NULL, visible tinyint(1) NOT NULL DEFAULT 0,
      attachmentcount int unsigned NOT NULL DEFAULT 0, deletetime int unsigned NOT NULL DEFAULT 0)""",
    """CREATE TABLE {}posts (
      pid int unsigned NOT NULL AUTO_INCREMENT PRIMARY KEY, tid int unsigned NOT NULL DEFAULT 0,
      replyto int unsigned NOT NULL DEFAULT 0, fid smallint unsigned NOT NULL DEFAULT 0,
      subject varchar(120) NOT NULL DEFAULT '', icon smallint unsigned NOT NULL DEFAULT 0,
      uid int unsigned NOT NULL DEFAULT 0, username varchar(80) NOT NULL DEFAULT '',
      dateline int unsigned NOT NULL DEFAULT 0, message text NOT NULL,
      ipaddress varbinary(16) NOT NULL DEFAULT '', includesig tinyint(1) NOT NULL DEFAULT 0,
      editreason varchar(150) NOT NULL DEFAULT '', visible tinyint(1) NOT NULL DEFAULT 0, KEY (tid))""",
    """CREATE TABLE {}users (
      uid int unsigned NOT NULL AUTO_INCREMENT PRIMARY KEY, username varchar(120) NOT NULL DEFAULT '',
      password varchar(120) NOT NULL DEFAULT '', salt varchar(10) NOT NULL DEFAULT '',
      loginkey varchar(50) NOT NULL DEFAULT '', email varchar(220) NOT NULL DEFAULT '',
      postnum int unsigned NOT NULL DEFAULT 0, threadnum int unsigned NOT NULL DEFAULT 0,
      avatar varchar(200) NOT NULL DEFAULT '', usergroup smallint unsigned NOT NULL DEFAULT 0,
      regdate int unsigned NOT NULL DEFAULT 0, lastactive int unsigned NOT NULL DEFAULT 0,
      lastpost int unsigned NOT NULL DEFAULT 0, signature text NOT NULL, buddylist text NOT NULL,
      ignorelist text NOT NULL, pmfolders text NOT NULL, notepad text NOT NULL, usernotes text NOT NULL,
      birthdayprivacy varchar(4) NOT NULL DEFAULT 'all', timezone varchar(5) NOT NULL DEFAULT '',
      regip varbinary(16) NOT NULL DEFAULT '', lastip varbinary(16) NOT NULL DEFAULT '',
      reputation int NOT NULL DEFAULT 0, """
    + flags(SWITCHES)
    + ", UNIQUE KEY username (username))",
    """CREATE TABLE {}usergroups (
      gid smallint unsigned NOT NULL AUTO_INCREMENT PRIMARY KEY, type tinyint unsigned NOT NULL DEFAULT 2,
      title varchar(120) NOT NULL DEFAULT '', description text NOT NULL,
      namestyle varchar(200) NOT NULL DEFAULT '{{username}}', usertitle varchar(120) NOT NULL DEFAULT '',
      starimage varchar(120) NOT NULL DEFAULT '', """
    + flags(PERMISSIONS)
    + ")",
    """CREATE TABLE {}attachments (
      aid int unsigned NOT NULL AUTO_INCREMENT PRIMARY KEY, pid int unsigned NOT NULL DEFAULT 0,
      posthash varchar(50) NOT NULL DEFAULT '', uid int unsigned NOT NULL DEFAULT 0,
      filename varchar(255) NOT NULL DEFAULT '', filetype varchar(120) NOT NULL DEFAULT '',
      filesize int unsigned NOT NULL DEFAULT 0, attachname varchar(255) NOT NULL DEFAULT '',
      downloads int unsigned NOT NULL DEFAULT 0, dateuploaded int unsigned NOT NULL DEFAULT 0,
      visible tinyint(1) NOT NULL DEFAULT 0, thumbnail varchar(120) NOT NULL DEFAULT '')""",
    """CREATE TABLE {}announcements (
      aid int unsigned NOT NULL AUTO_INCREMENT PRIMARY KEY, fid int NOT NULL DEFAULT 0,
      uid int unsigned NOT NULL DEFAULT 0, subject varchar(120) NOT NULL DEFAULT '', message text NOT NULL,
      startdate int unsigned NOT NULL DEFAULT 0, enddate int unsigned NOT NULL DEFAULT 0, """
    + flags("allowhtml allowmycode allowsmilies".split())
    + ")",
]  # fmt: skip

# What a fresh installation holds.
FRESH = [
    "INSERT INTO {}forums (fid, name, description, type, pid, parentlist, rules) "
    "VALUES (1, 'My Category', '', 'c', 0, '1', ''), (2, 'My Forum', '', 'f', 1, '1,2', '')",
    "INSERT INTO {}users (uid, username, signature, buddylist, ignorelist, pmfolders, notepad, usernotes) "
    "VALUES (1, 'admin', '', '', '', '', '', '')",
    "INSERT INTO {}usergroups (gid, title, description) VALUES (1, 'Guests', ''), (2, 'Registered', ''), "
    "(3, 'Super Moderators', ''), (4, 'Administrators', ''), (5, 'Awaiting Activation', ''), "
    "(6, 'Moderators', ''), (7, 'Banned', '')",
]

# The tables' names -> those of the files and of the numbers.
NUMBERS = {"forums": "fid", "threads": "tid", "posts": "pid", "users": "uid", "usergroups": "gid",
           "attachments": "aid", "announcements": "aid"}  # fmt: skip


class Board:
    """A board that was converted and finished."""

    def __init__(self, root, output, *more, charset=None, website=generate_board.WEBSITE):
        self.output = output
        self.website = website
        self.folder = output / "finish"
        command = [programs.cli, "convert", "--root", root, "--output", output, "--website", website,
                   "--forum", FORUM, "--admin", "admin", "--program-folder", SOURCE_TREE,
                   "--ini", output.with_suffix(".ini"), "--finish", "--quiet", *more]  # fmt: skip
        if charset:
            command += ["--charset", charset]
        run = subprocess.run(command, capture_output=True, text=True)
        self.status = run.returncode
        self.errors = run.stderr

    def finish_again(self, *options):
        run = subprocess.run(
            [programs.cli, "finish", "--output", self.output, *options], capture_output=True, text=True
        )
        return run.returncode, run.stderr

    def script(self, name):
        with open(self.folder / name, "rb") as script:
            done = server.client("--local-infile=1", "-NB", "board", stdin=script, cwd=self.folder)
        return done.returncode, done.stdout.decode(errors="replace")

    def check(self):
        """The table of the check, a row a list."""
        status, said = self.script(CHECK)
        if status != 0:
            raise AssertionError(said)
        return [line.split("\t") for line in said.splitlines()]

    def load(self):
        return self.script(LOAD)

    def numbers(self, table):
        with open(self.folder / f"{table}.txt", encoding="utf-8", newline="\n") as file:
            return [int(line.split("\t")[0]) for line in file]


class FinishTest(unittest.TestCase):
    maxDiff = 2000

    def setUp(self):
        self.folder = Path(tempfile.mkdtemp(dir=scratch))
        self.addCleanup(shutil.rmtree, self.folder)
        self.prefix = "mybb_"

    def make_forum(self, prefix="mybb_", engine="InnoDB", charset="utf8mb4"):
        self.prefix = prefix
        made = ["DROP DATABASE IF EXISTS board", f"CREATE DATABASE board CHARACTER SET {charset}", "USE board",
                f"SET default_storage_engine = {engine}"]  # fmt: skip
        server.ask(";".join(made + [text.format(prefix) for text in TABLES + FRESH]), database=None)

    def ask(self, statement):
        return server.ask(re.sub(r"\b([a-z]+)_\b", lambda m: f"{self.prefix}{m[1]}", statement))

    def value(self, statement):
        return self.ask(statement)[0][0]

    def sample(self, *more):
        website = "http://www.radio-club.example/discus/"
        board = Board(SOURCE_TREE / "samples" / "board", self.folder / "sample", *more, website=website)
        self.assertEqual(board.status, 0, board.errors)
        return board

    def generated(self, charset, *more, name="generated", **sizes):
        wanted = dict(pages=70, posts=200, members=30, attachments=25, message_length=300, attachment_bytes=200)
        root = self.folder / f"{name} source"
        generate_board.generate(root, charset=charset, seed=1, **(wanted | sizes))
        board = Board(root, self.folder / name, *more, charset=charset)
        self.assertEqual((board.status, board.errors), (0, ""))
        return board

    def load(self, board):
        self.assertEqual(board.check()[-1][0], "ready")
        status, said = board.load()
        self.assertEqual(status, 0, said)
        self.assertIn("loaded: ", said)

    def counts(self):
        return {table: int(self.value(f"SELECT COUNT(*) FROM {table}_")) for table in NUMBERS}

    def assert_none(self, statement):
        self.assertEqual(self.ask(statement), [], statement)

    def assert_lives(self, *boards):
        self.assert_posts_and_threads_fit()
        self.assert_forums_fit()
        self.assert_members_fit()
        self.assert_no_token_is_left()
        self.assert_links_resolve()
        for board in boards:
            self.assert_attachments_fit(board)

    def assert_posts_and_threads_fit(self):
        self.assert_none("SELECT p.pid FROM posts_ p LEFT JOIN threads_ t USING (tid) "
                         "WHERE t.tid IS NULL OR t.fid <> p.fid OR p.visible <> 1 OR t.visible <> 1")  # fmt: skip
        self.assert_none("SELECT t.tid FROM threads_ t LEFT JOIN forums_ f USING (fid) "
                         "WHERE f.fid IS NULL OR f.type <> 'f'")  # fmt: skip
        self.assert_none(
            "SELECT t.tid FROM threads_ t LEFT JOIN (SELECT tid, COUNT(*) n, MIN(dateline) early, "
            "MAX(dateline) late FROM posts_ GROUP BY tid) p USING (tid) WHERE p.n IS NULL OR t.replies + 1 <> p.n "
            "OR t.dateline <> p.early OR t.lastpost <> p.late"
        )
        self.assert_none("SELECT t.tid FROM threads_ t LEFT JOIN posts_ p ON p.pid = t.firstpost "
                         "WHERE p.pid IS NULL OR p.tid <> t.tid OR p.dateline <> t.dateline OR p.uid <> t.uid")  # fmt: skip
        self.assert_none(
            "SELECT t.tid FROM threads_ t WHERE NOT EXISTS (SELECT 1 FROM posts_ p WHERE p.tid = t.tid "
            "AND p.dateline = t.lastpost AND p.uid = t.lastposteruid)"
        )

    def assert_forums_fit(self):
        self.assert_none(
            "SELECT f.fid FROM forums_ f LEFT JOIN forums_ a ON a.fid = f.pid WHERE f.parentlist <> "
            "CONCAT(IF(f.pid = 0, '', CONCAT(a.parentlist, ',')), f.fid) OR (f.pid > 0 AND a.fid IS NULL)"
        )
        self.assert_none("SELECT pid, disporder FROM forums_ WHERE fid > 2 AND pid > 0 "
                         "GROUP BY pid, disporder HAVING COUNT(*) > 1")  # fmt: skip
        self.assert_none(
            "SELECT f.fid FROM forums_ f LEFT JOIN (SELECT fid, COUNT(*) n, SUM(replies + 1) posts, "
            "MAX(lastpost) late FROM threads_ GROUP BY fid) t USING (fid) WHERE f.threads <> COALESCE(t.n, 0) "
            "OR f.posts <> COALESCE(t.posts, 0) OR f.lastpost <> COALESCE(t.late, 0)"
        )
        self.assert_none(
            "SELECT f.fid FROM forums_ f LEFT JOIN threads_ t ON t.tid = f.lastposttid WHERE f.lastpost > 0 AND "
            "(t.tid IS NULL OR t.fid <> f.fid OR t.lastpost <> f.lastpost OR t.lastposter <> f.lastposter OR "
            "t.lastposteruid <> f.lastposteruid OR t.subject <> f.lastpostsubject)"
        )
        self.assert_none("SELECT a.aid FROM announcements_ a LEFT JOIN forums_ f USING (fid) WHERE f.fid IS NULL")

    def assert_members_fit(self):
        self.assert_none(
            "SELECT u.uid FROM users_ u WHERE u.uid > 1 AND (u.postnum <> (SELECT COUNT(*) FROM posts_ p "
            "WHERE p.uid = u.uid) OR u.threadnum <> (SELECT COUNT(*) FROM threads_ t WHERE t.uid = u.uid))"
        )
        self.assert_none("SELECT u.uid FROM users_ u LEFT JOIN usergroups_ g ON g.gid = u.usergroup "
                         "WHERE u.uid > 1 AND g.gid IS NULL")  # fmt: skip
        self.assert_none("SELECT p.pid FROM posts_ p LEFT JOIN users_ u USING (uid) WHERE p.uid > 0 AND u.uid IS NULL")
        self.assert_none("SELECT uid FROM users_ WHERE uid > 1 AND (LEFT(password, 1) <> '!' OR "
                         "LENGTH(loginkey) <> 50 OR LENGTH(salt) <> 8 OR regip <> '' OR lastip <> '')")  # fmt: skip
        self.assertEqual(self.value("SELECT COUNT(*) - COUNT(DISTINCT password) FROM users_"), "0")

    def assert_no_token_is_left(self):
        token = r"\\([][;|{}:<>]\\)"
        for table, columns in {
            "posts": ["subject", "username", "message"],
            "threads": ["subject", "username", "lastposter"],
            "forums": ["name", "lastposter", "lastpostsubject"],
            "users": ["username"], "usergroups": ["title"], "announcements": ["subject", "message"],
        }.items():  # fmt: skip
            for column in columns:
                self.assert_none(f"SELECT `{column}` FROM {table}_ WHERE `{column}` REGEXP '{token}'")

    def messages(self):
        return [text for text, in self.ask("SELECT message FROM posts_ UNION ALL SELECT message FROM announcements_")]

    def assert_links_resolve(self):
        threads = {tid for tid, in self.ask("SELECT tid FROM threads_")}
        forums = {fid for fid, in self.ask("SELECT fid FROM forums_")}
        posts = {pid: tid for pid, tid in self.ask("SELECT pid, tid FROM posts_")}
        pages = {tuple(page) for page in self.ask("SELECT SUBSTRING_INDEX(editreason, '^', 1), "
                 "SUBSTRING_INDEX(SUBSTRING_INDEX(editreason, '^', 2), '^', -1) FROM posts_")}  # fmt: skip
        for message in self.messages():
            for tid, pid, anchor in re.findall(r"showthread\.php\?tid=(\d+)(?:&pid=(\d+)#pid(\d+))?", message):
                self.assertIn(tid, threads)
                self.assertEqual(pid, anchor)
                if pid:
                    self.assertEqual(posts[pid], tid)
            for fid in re.findall(r"forumdisplay\.php\?fid=(\d+)", message):
                self.assertIn(fid, forums)
            for page in re.findall(r"\[url=http://[^]]*/discus/messages/(\d+)/(\d+)\.html", message):
                self.assertNotIn(page, pages, message)

    def assert_attachments_fit(self, board):
        numbers = board.numbers("attachments")
        self.assertGreater(len(numbers), 0)
        rows = self.ask(
            "SELECT a.aid, a.attachname, a.filesize, a.filename, p.message FROM attachments_ a "
            f"LEFT JOIN posts_ p USING (pid) WHERE a.aid BETWEEN {min(numbers)} AND {max(numbers)}"
        )
        self.assertEqual(len(rows), len(numbers))
        for aid, name, size, bare_name, message in rows:
            self.assertIn(f"[attachment={aid}]", message)
            self.assertEqual((board.output / "attachments" / name).stat().st_size, int(size))
            self.assertNotRegex(bare_name, r"[/\\]")
        self.assert_none(
            "SELECT t.tid FROM threads_ t WHERE t.attachmentcount <> (SELECT COUNT(*) FROM attachments_ a "
            "JOIN posts_ p USING (pid) WHERE p.tid = t.tid)"
        )


class Loading(FinishTest):
    def test_the_sample_board(self):
        self.make_forum()
        board = self.sample()
        self.load(board)
        # Beside what was there: 20 pages and categories less the 9 that became threads.
        self.assertEqual(
            self.counts(),
            {"forums": 13, "threads": 12, "posts": 49, "users": 16, "usergroups": 12, "attachments": 6,
             "announcements": 4},
        )  # fmt: skip
        self.assert_lives(board)
        self.assertEqual(
            self.ask("SELECT t.subject, p.username FROM attachments_ a JOIN posts_ p USING (pid) "
                     "JOIN threads_ t USING (tid) WHERE a.filename = 'meter-manual-1301.txt'"),
            [["Test gear", "Peter Marsh"]],
        )  # fmt: skip
        self.assertEqual(self.ask("SELECT DISTINCT type FROM usergroups_ WHERE gid > 7"), [["2"]])
        # Tomás is in no group; the one before him in the member file is.
        self.assertEqual(self.value("SELECT usergroup FROM users_ WHERE username = 'tomas'"), "2")
        self.assertEqual(self.value("SELECT usergroup FROM users_ WHERE username = 'maeve'"), "10")

    def test_the_redirect_map_has_a_line_for_each_redirection_page(self):
        board = self.sample()
        pages = {"/" + page.relative_to(board.output / "redirect").as_posix()
                 for page in (board.output / "redirect").rglob("*.html")}  # fmt: skip
        self.assertIn("/discus/messages/31/155.html", pages)
        lines = (board.folder / "redirect.apache.txt").read_text(encoding="utf-8").splitlines()
        self.assertEqual(pages - {line.split(" ")[0] for line in lines}, set())

    def assert_two_boards_live(self, charset):
        self.make_forum()
        first = self.sample()
        self.load(first)
        second = self.generated(charset, "--users", "50", "--groups", "20", "--first-forum", "1000",
                                "--first-thread", "500", "--first-post", "10000")  # fmt: skip
        self.load(second)
        self.assert_lives(first, second)
        self.assertEqual(self.value("SELECT MIN(fid) FROM forums_ WHERE fid > 13"), "1000")
        self.assertEqual(self.value("SELECT MIN(tid) FROM threads_ WHERE tid > 12"), "500")
        self.assertEqual(self.value("SELECT MIN(pid) FROM posts_ WHERE pid > 49"), "10000")
        counts = self.counts()
        self.assertEqual(counts["posts"], 49 + 200)
        self.assertEqual(counts["attachments"], 6 + 25)
        return " ".join(self.messages()).lower()

    def test_the_sample_and_a_board_in_utf_8(self):
        messages = self.assert_two_boards_live("utf-8")
        for text in ("καλημέρα κόσμε", "привет, мир", "日本語の表示", "🎉", "𝕏"):
            self.assertIn(text, messages)

    def test_the_sample_and_a_board_in_iso_8859_1(self):
        messages = self.assert_two_boards_live("iso-8859-1")
        for text in ("grüße aus köln", "15 € – 20 €", "“curly”"):
            self.assertIn(text, messages)

    def test_the_sample_and_a_board_in_shift_jis(self):
        messages = self.assert_two_boards_live("shift-jis")
        for text in ("日本語の表示です", "ソフトウェア、能力", "申込書と予定表"):
            self.assertIn(text, messages)

    def test_the_same_board_twice_with_other_start_numbers(self):
        self.make_forum()
        board = self.generated("utf-8")
        self.load(board)
        self.ask("UPDATE users_ SET username = CONCAT('first ', username) WHERE uid > 1")
        again = self.generated("utf-8", "--users", "100", "--groups", "30", "--first-forum", "300",
                               "--first-thread", "3000", "--first-post", "30000", name="again")  # fmt: skip
        self.load(again)
        self.assert_lives(board, again)
        self.assertEqual(self.value("SELECT COUNT(*) FROM posts_"), "400")

    def test_numbers_are_changed_by_finishing_again(self):
        self.make_forum()
        board = self.sample()
        self.load(board)
        self.assertEqual(board.finish_again("--first-forum", "100", "--first-thread", "100", "--first-post", "100"),
                         (0, ""))  # fmt: skip
        # Members and groups have the numbers that the conversion gave them.
        self.assertEqual(board.check()[-1][0], "not ready: 5 group numbers are taken; 15 member numbers are "
                         "taken; 15 member names are taken")  # fmt: skip

    def test_pages_that_stay_forums(self):
        self.make_forum()
        board = self.sample("--keep-pages-as-forums")
        self.load(board)
        self.assertEqual(self.counts()["forums"], 22)
        self.assert_lives(board)

    def test_another_prefix(self):
        self.make_forum("club_")
        board = self.sample("--prefix", "club_")
        self.load(board)
        self.assert_lives(board)

    def test_tables_without_transactions(self):
        self.make_forum(engine="MyISAM")
        board = self.sample()
        self.load(board)
        self.assert_lives(board)

    def test_the_forums_own_user_has_rights_enough(self):
        self.make_forum()
        board = self.sample()
        server.ask("CREATE OR REPLACE USER forum; GRANT SELECT, INSERT, UPDATE, DELETE ON board.* TO forum",
                   database=None)  # fmt: skip
        with open(board.folder / LOAD, "rb") as script:
            loaded = server.client("--local-infile=1", "--user=forum", "board", stdin=script, cwd=board.folder)
        self.assertEqual(loaded.returncode, 0, loaded.stdout)
        self.assert_lives(board)

    def test_a_board_without_a_note_lives_without_attachments(self):
        self.make_forum()
        board = self.generated("utf-8")
        (board.output / "FinishNote.txt").unlink()
        self.assertEqual(board.finish_again("--forum", FORUM), (0, ""))
        self.load(board)
        self.assertEqual(self.counts()["attachments"], 0)
        self.assert_posts_and_threads_fit()
        self.assert_links_resolve()
        self.assertIn("25 attachments have no place", (board.folder / "Left over.txt").read_text(encoding="utf-8"))


class Trouble(FinishTest):
    """What stands in the way is found before anything is loaded, and nothing is kept of half a load."""

    def setUp(self):
        super().setUp()
        self.make_forum()
        self.board = self.sample()

    def assert_not_ready(self, *problems):
        rows = self.board.check()
        self.assertEqual(rows[-1][0], "not ready: " + "; ".join(problems))
        before = self.counts()
        status, said = self.board.load()
        self.assertEqual(status, 1)
        self.assertIn("not ready: " + problems[0], said)
        self.assertEqual(self.counts(), before)
        return rows[:-1]

    def test_a_taken_forum_number(self):
        self.ask("INSERT INTO forums_ (fid, description, parentlist, rules) VALUES (5, '', '5', '')")
        rows = self.assert_not_ready("1 forum numbers are taken")
        self.assertEqual([row[:2] for row in rows], [["forum numbers that are taken", "1"]])

    def test_a_taken_thread_number(self):
        self.ask("INSERT INTO threads_ (tid, notes) VALUES (12, '')")
        self.assert_not_ready("1 thread numbers are taken")

    def test_a_taken_post_number(self):
        self.ask("INSERT INTO posts_ (pid, message) VALUES (1, ''), (49, ''), (50, '')")
        self.assert_not_ready("2 post numbers are taken")

    def test_a_taken_attachment_number(self):
        self.ask("INSERT INTO attachments_ (aid) VALUES (6), (7)")
        self.assert_not_ready("1 attachment numbers are taken")

    def test_a_taken_group_number(self):
        self.ask("INSERT INTO usergroups_ (gid, description) VALUES (8, '')")
        self.assert_not_ready("1 group numbers are taken")

    def add_user(self, number, name):
        self.ask("INSERT INTO users_ (uid, username, signature, buddylist, ignorelist, pmfolders, notepad, "
                 f"usernotes) VALUES ({number}, '{name}', '', '', '', '', '', '')")  # fmt: skip

    def test_a_taken_member_number(self):
        self.add_user(16, "somebody")
        self.assert_not_ready("1 member numbers are taken")

    def test_taken_member_names_whatever_their_case_and_accents(self):
        self.add_user(100, "GEORG")
        self.add_user(101, "Karin from orebro")
        rows = self.assert_not_ready("2 member names are taken")
        self.assertEqual(rows[0][:3], ["member names that are taken", "2", "GEORG, Karin from orebro"])

    def test_the_list_of_many_taken_names_is_cut(self):
        board = self.board
        self.load(board)
        again = self.generated("utf-8", "--users", "100", "--groups", "30", "--first-forum", "300",
                               "--first-thread", "3000", "--first-post", "30000")  # fmt: skip
        self.load(again)
        (row, _) = [row for row in again.check() if "names" in row[0]]
        self.assertEqual(row[1], str(len(again.numbers("users"))))
        self.assertRegex(row[2], r"^.{200} \.\.\.$")

    def test_all_collisions_at_once(self):
        self.ask("INSERT INTO forums_ (fid, description, parentlist, rules) VALUES (5, '', '5', '')")
        self.ask("INSERT INTO threads_ (tid, notes) VALUES (12, '')")
        self.add_user(16, "Lotte")
        self.assert_not_ready("1 member numbers are taken", "1 forum numbers are taken",
                              "1 thread numbers are taken", "1 member names are taken")  # fmt: skip

    def test_announcements_are_numbered_behind_those_that_are_there(self):
        self.ask("INSERT INTO announcements_ (aid, fid, message) VALUES (3, 2, 'hello')")
        self.load(self.board)
        self.assertEqual(self.ask("SELECT aid FROM announcements_ ORDER BY aid"), [["3"], ["4"], ["5"], ["6"], ["7"]])

    def test_a_column_that_is_too_short(self):
        self.ask("ALTER TABLE threads_ MODIFY subject varchar(20) NOT NULL")
        rows = self.assert_not_ready("1 columns are too short")
        self.assertEqual(rows[0][2], "mybb_threads.subject")

    def test_a_column_that_is_not_there(self):
        self.ask("ALTER TABLE posts_ DROP editreason")
        rows = self.assert_not_ready("1 columns are missing")
        self.assertEqual(rows[0][2], "mybb_posts.editreason")

    def test_a_missing_column_hides_nothing_else(self):
        self.ask("ALTER TABLE posts_ DROP editreason")
        self.ask("INSERT INTO threads_ (tid, notes) VALUES (12, '')")
        self.ask("INSERT INTO posts_ (pid, message) VALUES (49, '')")
        self.add_user(16, "Lotte")
        self.assert_not_ready("1 member numbers are taken", "1 thread numbers are taken", "1 post numbers are taken",
                              "1 member names are taken", "1 columns are missing")  # fmt: skip

    def test_numbers_without_a_column_are_not_asked_for(self):
        self.ask("ALTER TABLE threads_ DROP tid")
        self.ask("INSERT INTO posts_ (pid, message) VALUES (49, '')")
        self.assert_not_ready("1 post numbers are taken", "1 columns are missing")

    def test_names_without_a_column_are_not_asked_for(self):
        self.ask("ALTER TABLE users_ DROP username")
        self.ask("INSERT INTO users_ (uid, signature, buddylist, ignorelist, pmfolders, notepad, usernotes) "
                 "VALUES (16, '', '', '', '', '', '')")  # fmt: skip
        self.assert_not_ready("1 member numbers are taken", "1 columns are missing")

    def test_a_charset_that_lacks_characters(self):
        self.ask("ALTER TABLE posts_ MODIFY message text CHARACTER SET ascii NOT NULL")
        rows = self.assert_not_ready("1 columns lack characters")
        self.assertEqual(rows[0][2], "mybb_posts.message")

    def test_a_prefix_that_is_not_there(self):
        self.assertEqual(self.board.finish_again("--prefix", "other_"), (0, ""))
        (row, last) = self.board.check()
        self.assertRegex(last[0], r"^not ready: \d+ columns are missing$")
        self.assertEqual(row[0], "columns that are missing")
        self.assertEqual(row[3], "see whether prefix and version are right")
        status, said = self.board.load()
        self.assertEqual(status, 1)
        self.assertRegex(said, r"not ready: \d+ columns are missing")

    def test_a_table_that_is_not_there(self):
        self.ask("RENAME TABLE attachments_ TO elsewhere")
        self.ask("INSERT INTO threads_ (tid, notes) VALUES (12, '')")
        (taken, missing, last) = self.board.check()
        # Eight columns that are loaded and four that are set.
        self.assertEqual(last[0], "not ready: 1 thread numbers are taken; 12 columns are missing")
        self.assertEqual(taken[0], "thread numbers that are taken")
        self.assertIn("mybb_attachments.filename", missing[2])

    def test_names_in_tables_of_other_charsets(self):
        # As one compares names, and as another does.
        for charset, collation in (("utf8mb3", "utf8mb3_unicode_ci"), ("latin1", "latin1_german1_ci")):
            with self.subTest(charset=charset):
                self.make_forum(charset=charset)
                self.ask(f"ALTER TABLE users_ CONVERT TO CHARACTER SET {charset} COLLATE {collation}")
                self.add_user(100, "GEORG")
                self.add_user(101, "Karin from örebro")
                last = self.board.check()[-1][0]
                self.assertTrue(last.startswith("not ready: 2 member names are taken"), last)

    def test_nothing_stays_of_a_load_that_loses_a_row(self):
        # Takes no two members with one mail address, which nobody can foresee.
        self.ask("ALTER TABLE users_ ADD UNIQUE KEY (email)")
        before = self.counts()
        status, said = self.board.load()
        self.assertEqual(status, 1)
        self.assertIn("nothing is loaded: users are incomplete", said)
        self.assertEqual(self.counts(), before)

    def test_loading_twice_is_refused(self):
        self.load(self.board)
        before = self.counts()
        status, said = self.board.load()
        self.assertEqual(status, 1)
        self.assertIn("not ready: ", said)
        self.assertEqual(self.counts(), before)


class Extremes(FinishTest):
    def board_of_posts(self, *posts):
        """A board of one page; a post is who wrote it and what."""
        board = generate_board.Board(self.folder / "board", "utf-8", 1)
        page = generate_board.Page(3, 3, "Radios", None)
        page.posts = 1
        written = [generate_board.post(n, 3, "x", name, 1043846797 + n, text)
                   for n, (name, text) in enumerate(posts, 1)]  # fmt: skip
        board.write_page(page, "".join(written))
        board.write_board_file([("Things", [page])])
        (board.main / "users.txt").write_bytes(b"")
        return Board(board.root, self.folder / "out", charset="utf-8")

    def test_messages_that_are_longer_than_a_post(self):
        self.make_forum()
        board = self.board_of_posts(("Anna", "日本語の 長い " * 10000), ("Bert", "short"), ("Anna", "x" * 140000))
        self.assertEqual((board.status, board.errors), (0, ""))
        self.load(board)
        # 200,000 bytes of Japanese take four posts, and 140,000 of one word three.
        self.assertEqual(
            [[name, int(size) <= 65535] for name, size in
             self.ask("SELECT username, LENGTH(message) FROM posts_ ORDER BY pid")],
            [["Anna", True]] * 4 + [["Bert", True]] + [["Anna", True]] * 3,
        )  # fmt: skip
        text = "".join(text for text, in self.ask("SELECT message FROM posts_ ORDER BY pid"))
        self.assertEqual(text, "日本語の 長い " * 10000 + "short" + "x" * 140000)
        self.assert_posts_and_threads_fit()
        self.assert_forums_fit()
        self.assert_members_fit()

    def test_names_beyond_the_charset_of_the_members_table(self):
        for charset, name in (("utf8mb3", "👍"), ("latin1", "Ёлка")):
            with self.subTest(charset=charset):
                self.make_forum()
                self.ask(f"ALTER TABLE users_ CONVERT TO CHARACTER SET {charset}")
                board = self.board_of_posts((name, "hello"))
                self.assertEqual((board.status, board.errors), (0, ""))
                (row, last) = board.check()
                self.assertEqual(last[0], "not ready: 1 columns lack characters")
                self.assertEqual(row[2], "mybb_users.username")
                status, said = board.load()
                self.assertEqual(status, 1)
                self.assertIn("not ready: 1 columns lack characters", said)
                shutil.rmtree(self.folder / "board")

    def test_names_that_the_database_takes_for_one_stay_apart(self):
        names = ["José", "Jose", "JOSÉ ", "Straße", "Strasse", "Strase", "かな", "カナ", "👍", "👎", "Ångström",
                 "angstrom", "Ёлка", "елка", "Ｗｉｄｅ", "wide", "Aydın", "AYDIN",
                 "n" * 130, "N" * 140]  # fmt: skip
        for collation in ("utf8mb4_general_ci", "utf8mb4_unicode_ci", "utf8mb4_unicode_520_ci"):
            with self.subTest(collation=collation):
                self.make_forum()
                self.ask(f"ALTER TABLE users_ CONVERT TO CHARACTER SET utf8mb4 COLLATE {collation}")
                board = self.board_of_posts(*[(name, "hello") for name in names])
                self.assertEqual((board.status, board.errors), (0, ""))
                self.load(board)
                # One is another's name in other case for the conversion itself.
                self.assertEqual(self.counts()["users"] - 1, len(board.numbers("users")))
                self.assertEqual(self.value("SELECT MAX(CHAR_LENGTH(username)) FROM users_"), "120")
                shutil.rmtree(self.folder / "board")


def main():
    if os.environ.get("TESSALY_SKIP_DATABASE") == "1":
        print("The database tests are left out: TESSALY_SKIP_DATABASE is 1.")
        sys.exit(SKIPPED)
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--cli", required=True, help="path of tessaly-cli")
    _, rest = parser.parse_known_args(namespace=programs)
    # A test that is stopped from outside cleans up as well.
    signal.signal(signal.SIGTERM, signal.default_int_handler)
    with tempfile.TemporaryDirectory(prefix="tessaly-db-") as folder:
        global server, scratch
        scratch = Path(folder)
        server = Server(scratch)
        try:
            server.start()
            unittest.main(argv=[sys.argv[0], *rest])
        finally:
            server.stop()


if __name__ == "__main__":
    main()
