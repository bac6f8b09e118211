#!/usr/bin/env python3
"""Makes a message board of any size, shaped like a real one. The same arguments make the same bytes."""

import argparse
import random
import shutil
import sys
import time
from pathlib import Path

HOST = "http://www.board.example"
WEBSITE = HOST + "/discus/"
ADMIN_FOLDER = "discus_admin_1043846797"
FIRST_MOMENT = 946684800
FACE = 'face="Verdana,Arial,Helvetica"'

# Charset names on offer, each with the codec that writes it the way browsers read it.
CODECS = {"utf-8": "utf_8", "iso-8859-1": "cp1252", "shift-jis": "cp932"}

WORDS = (
    "the a of and to in that it is was for on with as at by from we you they this have had not but what "
    "all were when your can there each which do how their if will up about out many then them these so "
    "some her would make like him into time has look two more write go see number no way could people my "
    "than first water been call who oil its now find long down day did get come made may part radio valve "
    "chassis capacitor resistor board keyboard monitor printer cable manual schematic workshop garden "
    "engine bicycle camera lens filter paper journey mountain harbour ferry timetable kitchen recipe "
    "bread violin orchestra rehearsal library chapter printing letterpress type museum catalogue weather "
    "barometer station signal antenna feedline receiver amplifier turntable needle record cassette"
).split()

# What the board's people write beyond plain words, by charset.
ACCENTS = {
    "iso-8859-1": ["Grüße aus Köln", "déjà vu à Évreux", "¿dónde está?", "15 € – 20 €", "“curly” ‘quotes’…"],
    "utf-8": ["Grüße aus Köln", "Καλημέρα κόσμε", "Привет, мир", "日本語の表示", "größer ≠ 大きい", "🎉 und 𝕏"],
    "shift-jis": ["日本語の表示です", "ソフトウェア、能力", "申込書と予定表", "①と②〜⑩", "ﾊﾝｶｸｶﾅ", "Здравствуйте"],
}
MARKS = [
    "&amp;", "&quot;quoted&quot;", "caf&eacute;", "K&ouml;ln", "&nbsp;", "it&#8217;s", "&#8222;so&#8220;",
    "&hellip;", "&lt;tag&gt;", "&copy; 2003", "&frac12; inch", "&#189;",
]  # fmt: skip
UNKNOWN_MARKS = ["&bogus;", "&#99999;", "&smile;"]

FIRST_NAMES = (
    "Anna Bert Carla David Elena Frank Greta Hugo Irma Jonas Karin Lars Maeve Nils Olga Peter Quentin Rosa "
    "Sven Tomas Ulla Viktor Wanda Xaver Yara Zeno Astrid Bruno Cecile Dario Edith Felix Gisela Henrik Ines "
    "Jakob Klara Leon Marta Niko"
).split()
LAST_NAMES = (
    "Virtanen Huebner Ferreira Lindqvist Weiss Marsh Stern Carvalho Novak Dubois Rossi Kowalski Jensen "
    "Larsen Moreau Schmidt Keller Bauer Vogel Hansen Berg Lund Dahl Holm Strand Nyman Korhonen Laine Makela "
    "Saari Toth Nagy Kovacs Varga Horvath Petrov Ivanov Popov Sokolov Orlov"
).split()
GROUPS = ["Moderators", "Editors", "Committee", "Tape swappers", "Valve experts", "", "", "", "", ""]


class Page:
    def __init__(self, number, top, name, parent):
        self.number = number
        self.top = top
        self.name = name
        self.parent = parent
        self.children = []
        self.posts = 0
        self.hidden = False

    @property
    def address(self):
        return f"{HOST}/discus/messages/{self.top}/{self.number}.html"

    def way(self):
        """The pages from the top to this one."""
        return [*self.parent.way(), self] if self.parent else [self]


class Board:
    """Writes the files of one board."""

    def __init__(self, folder, charset, seed):
        self.root = Path(folder)
        self.messages = self.root / "discus" / "messages"
        self.main = self.root / ADMIN_FOLDER
        self.secure = self.main / "secure"
        self.charset = charset
        self.codec = CODECS[charset]
        self.rng = random.Random(seed)
        for made in (self.messages, self.secure):
            made.mkdir(parents=True, exist_ok=True)

    def pick(self, items):
        return items[int(self.rng.random() * len(items))]

    def write_bytes(self, page, name, data):
        """A file of the page's folder."""
        path = (self.secure if page.hidden else self.messages) / str(page.top) / name
        path.parent.mkdir(exist_ok=True)
        path.write_bytes(data)

    def write_page(self, page, body):
        text = head(page, self.charset) + body + FOOT
        self.write_bytes(page, f"{page.number}.html", text.encode(self.codec))

    def write_board_file(self, categories):
        rows = []
        for number, (name, tops) in enumerate(categories, 1):
            rows.append(
                f'<!--Category: {number}--><tr bgcolor="#c0c0b0"><td colspan=4><font size="2"><b>'
                f"<!--Text-->{name}<!--/Text--></b></font></td></tr><!--/Category-->\n"
            )
            rows += [entry(top, FIRST_MOMENT) for top in tops]
        body = f'<body bgcolor="#ffffff">\n<table width="95%" border=0>\n{"".join(rows)}</table>\n'
        meta = f'<meta http-equiv="Content-Type" content="text/html; charset={self.charset}">'
        text = f"<html>\n<head>\n<title>Topics</title>\n{meta}\n</head>\n{body}{FOOT}"
        (self.messages / "board-topics.html").write_bytes(text.encode(self.codec))

    def write_members(self, members):
        lines = "".join(
            f"{login}:{login}3xYz7Qw:{login}@mail.example:{name}:::{FIRST_MOMENT + 3600 * i}:"
            f"192.168.{i // 250 % 250}.{i % 250}:{FIRST_MOMENT + 7200 * i}:{groups}:\n"
            for i, (login, name, groups) in enumerate(members)
        )
        (self.main / "users.txt").write_bytes(lines.encode("utf-8"))


FOOT = (
    '</table>\n<hr size=1>\n<center><font size="1">Administrator\'s Control Panel</font></center>\n'
    "</body>\n</html>\n"
)


def head(page, charset):
    way = page.way()
    top = way[0]
    levels = "".join(f"<!--Level {i}: {p.number}/{p.name}-->\n" for i, p in enumerate(way[1:], 1))
    # Only the page itself is linked with the time of its change behind it.
    links = "".join(f'<a href="{p.address}">{p.name}</a> &raquo; ' for p in way[:-1])
    kind = "Messages" if page.posts else "Sublist"
    return (
        f"<html>\n<head>\n<title>Board of the example club: {page.name}</title>\n"
        f'<meta http-equiv="Content-Type" content="text/html; charset={charset}">\n'
        f"<!--Topic: {page.top}/{top.name}-->\n<!--Me: {page.number}/{page.name}-->\n{levels}"
        f"<!--Properties: icons=1;hidden={int(page.hidden)}-->\n<!--Param: {kind}-->\n"
        f"<!--Parent: {page.parent.number if page.parent else ''}-->\n</head>\n"
        f'<body bgcolor="#ffffff" text="#000000" link="#0000cc" vlink="#551a8b">\n'
        f'<table width="95%" border=0 cellspacing=0 cellpadding=3><tr bgcolor="#e0e0d0">\n'
        f'<td><font {FACE} size="1"><a href="{HOST}/discus/messages/board-topics.html">Topics</a> &raquo; '
        f'{links}<a href="{page.address}?{FIRST_MOMENT + page.number}">{page.name}</a></font></td>\n'
        f'<td align=right><a href="{HOST}/cgi-bin/discus/show.cgi?tpc={page.top}">Search</a></td>\n'
        f'</tr></table>\n<table width="95%" border=0 cellspacing=1 cellpadding=3>\n'
    )


def entry(page, moment):
    hidden = "<!-- Topic Hidden -->" if page.hidden else ""
    return (
        f'<!--Top: {page.number}--><tr bgcolor="#ffffff">{hidden}\n'
        f'<td width=20><img src="{HOST}/discus/icons/tree_f.gif" height=16 width=16 border=0 alt="Topic">'
        f'</td>\n<td><font {FACE} size="2"><a href="{page.address}?{moment}">{page.name}</a></font></td>\n'
        f'<td align=center><font size="2">{page.posts}</font></td>\n'
        f'<td><font size="1">March 14, 2003</font></td></tr><!--/Top-->\n'
    )


def post(number, top, login, name, moment, body):
    return (
        f"<!--Post: {number}--><!--Time: {moment}-->\n"
        f'<!--p:--><tr bgcolor="#f5f5ff"><td valign=top width=160><a name="POST{number}"></a>'
        f'<a href="{HOST}/cgi-bin/discus/show.cgi?tpc={top}&post={number}#POST{number}">'
        f'<img src="{HOST}/discus/icons/mark_top.gif" height=12 width=12 border=0 alt=""></a><br>\n'
        f'<font {FACE} size="2"><b><!--email--><a href="mailto:{login}@mail.example" '
        f'target="_blank"><!--/email--><!--name-->{name}<!--/name--></a></b></font><br>\n'
        f'<!--field:posts--><!--/field--><font size="1">Sunday, January 26, 2003 - 2:00 pm</font></td>\n'
        f"<td valign=top><!--Text-->{body}<!--/Text--></td></tr>\n"
        f"<!--/Post: {number}-->\n"
    )


def announcement(text):
    return f"<tr><td><!--Announcement--><b>News.</b> {text}<!--/Announcement--></td></tr>\n"


def attachment(top, name):
    address = f"{HOST}/discus/messages/{top}/{name}"
    return (
        f'<BR>\n<!--attachment:{name}--><a href="{address}" target=_blank>'
        f'<img src="{HOST}/discus/icons/attachment.gif" border=0 alt="file">{name}</a><!--/attachment-->'
    )


def groups_of(i):
    return "/".join(filter(None, dict.fromkeys((GROUPS[i % 10], GROUPS[i % 7]))))


def members_of(count):
    members = []
    for i in range(count):
        first = FIRST_NAMES[i % len(FIRST_NAMES)]
        last = LAST_NAMES[i // len(FIRST_NAMES) % len(LAST_NAMES)]
        turn = i // (len(FIRST_NAMES) * len(LAST_NAMES))
        name = f"{first} {last}" + (f" {turn + 1}" if turn else "")
        members.append((f"{first.lower()}{i}", name, groups_of(i)))
    return members


def grow_tree(board, count):
    """The board's pages in the order of the walk: tops, their topics, and archives below some topics."""
    pages = []
    tops = []
    for number in range(1, count + 1):
        if (number - 1) % 60 == 0:
            page = Page(number, number, f"Topic area {number}", None)
            tops.append(page)
        elif number % 4 == 3 and pages[-1].parent:
            above = pages[-1] if pages[-1].parent is tops[-1] else pages[-1].parent
            page = Page(number, tops[-1].number, f"Archive {number} through January 31, 2003", above)
        else:
            words = " ".join(board.pick(WORDS) for _ in range(3))
            page = Page(number, tops[-1].number, f"{words.capitalize()} ({number})", tops[-1])
        if page.parent:
            page.parent.children.append(page)
        pages.append(page)
    for page in pages[49::100]:
        page.hidden = not page.children and page.parent is not None
    return pages, tops


def share_out(board, pages, posts):
    """A few pages hold most of the posts."""
    holders = [page for page in pages if page.parent] or pages
    weights = [0.3 + 3 * board.rng.random() ** 4 for _ in holders]
    scale = posts / sum(weights)
    before = total = 0
    for page, weight in zip(holders, weights):
        total += weight * scale
        page.posts = round(total) - before
        before += page.posts
    holders[-1].posts += posts - before


def sentences_of(board):
    accents = ACCENTS[board.charset]
    made = []
    for i in range(3000):
        words = [board.pick(WORDS) for _ in range(6 + int(board.rng.random() * 12))]
        if i % 5 == 0:
            words.insert(2, board.pick(accents))
        if i % 6 == 0:
            words.insert(4, board.pick(MARKS))
        if i % 500 == 0:
            words.insert(5, board.pick(UNKNOWN_MARKS))
        if i % 9 == 0:
            words[1] = f'"{words[1]}"'
        if i % 7 == 0:
            words[3] += ","
        made.append(" ".join(words).capitalize() + board.pick([". ", ". ", ". ", "? ", "! "]))
    return made


def decorations_of(board, pages):
    """Pieces that stand in a share of the posts, each with that share."""

    def word():
        return board.pick(WORDS)

    def link():
        to = board.pick(pages)
        return f'<a href="{to.address}">{to.name}</a>'

    def picture():
        return f'<img src="{HOST}/discus/messages/{board.pick(pages).top}/photo-{word()}.jpg" alt="Photo"> '

    return [
        (0.30, lambda: f"<b>{word()}</b> "),
        (0.15, lambda: f"<i>{word()}</i> "),
        (0.10, lambda: f'<font size="+1">{word()}</font> '),
        (0.08, lambda: f'<font color="ff0000">{word()} {word()}</font> '),
        (0.05, lambda: f'<font face="Courier"><font size="-1">{word()}</font> {word()}</font> '),
        (0.03, lambda: f"<center>{word()}</center>"),
        (0.10, lambda: f'<img src="{HOST}/discus/clipart/happy.gif" alt=":)" border=0> '),
        (0.06, lambda: f'<A HREF="http://elsewhere.example/{word()}.html" TARGET="_top">{word()}</A> '),
        (0.05, link),
        (0.02, picture),
    ]


def message(board, sentences, decorations, length):
    wanted = length * (0.2 + 1.6 * board.rng.random())
    pieces = []
    written = 0
    while written < wanted:
        piece = board.pick(sentences)
        pieces.append(piece)
        written += len(piece)
        if len(pieces) % 4 == 0:
            pieces.append("<BR>\n")
    for share, decoration in decorations:
        if board.rng.random() < share:
            pieces.insert(int(board.rng.random() * len(pieces)), decoration())
    return "".join(pieces)


class Uploads:
    """Files beside the pages, as many as asked for, spread evenly over the posts."""

    def __init__(self, board, count, mean_bytes, posts):
        self.board = board
        self.count = count
        self.mean_bytes = mean_bytes
        self.posts = posts
        self.made = 0
        self.noise = board.rng.randbytes(mean_bytes * 2)

    def of_post(self, number, page):
        sections = []
        while self.made * self.posts < number * self.count:
            self.made += 1
            name = f"manual-{self.made}.pdf"
            start = self.made % 97
            size = int(self.mean_bytes * (0.5 + self.board.rng.random()))
            self.board.write_bytes(page, name, self.noise[start : start + size])
            sections.append(attachment(page.top, name))
        return "".join(sections)


def generate(folder, pages, posts, members, attachments, message_length, attachment_bytes, charset, seed):
    board = Board(folder, charset, seed)
    all_members = members_of(members)
    all_pages, tops = grow_tree(board, pages)
    share_out(board, all_pages, posts)
    sentences = sentences_of(board)
    decorations = decorations_of(board, all_pages)
    uploads = Uploads(board, attachments, attachment_bytes, posts)
    number = 0

    def poster():
        if board.rng.random() < 0.02:
            return "visitor", f"Visitor {int(board.rng.random() * (posts // 100 + 1))}"
        login, name, _ = all_members[int(members * board.rng.random() ** 2)]
        return login, name

    for page in all_pages:
        parts = [entry(child, FIRST_MOMENT + child.number) for child in page.children]
        if page.number % 40 == 1:
            parts.insert(0, announcement(board.pick(sentences)))
        sections = []
        for _ in range(page.posts):
            number += 1
            body = message(board, sentences, decorations, message_length) + uploads.of_post(number, page)
            sections.append(post(number, page.top, *poster(), FIRST_MOMENT + 600 * number, body))
        if page.number % 5 == 0:
            sections.reverse()
        board.write_page(page, "".join(parts + sections))
    half = (len(tops) + 1) // 2
    board.write_board_file([("Machines &amp; tools", tops[:half]), ("People, places", tops[half:])])
    board.write_members(all_members)


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("folder", help="the board's root; an earlier board there is replaced")
    parser.add_argument("--pages", type=int, default=300)
    parser.add_argument("--posts", type=int, default=6000)
    parser.add_argument("--members", type=int, default=500)
    parser.add_argument("--attachments", type=int, default=200)
    parser.add_argument("--message-length", type=int, default=1600, help="mean characters of a message")
    parser.add_argument("--attachment-bytes", type=int, default=4096, help="mean size of a file")
    parser.add_argument("--charset", choices=sorted(CODECS), default="iso-8859-1")
    parser.add_argument("--seed", type=int, default=1)
    options = vars(parser.parse_args())
    folder = Path(options["folder"])
    if folder.exists() and any(folder.iterdir()):
        if not (folder / ADMIN_FOLDER / "users.txt").is_file():
            sys.exit(f"{folder} is not empty and no board of this script.")
        shutil.rmtree(folder)
    started = time.monotonic()
    generate(**options)
    html = [file.stat().st_size for file in folder.rglob("*.html")]
    print(f"{len(html)} files of HTML, {sum(html) / 1e6:.1f} MB, in {time.monotonic() - started:.1f} s")


if __name__ == "__main__":
    main()
