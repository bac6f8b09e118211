"""Boards of one page that strain one rule each. The page's size is the measure."""

import itertools

from generate_board import FIRST_MOMENT, HOST, WORDS, Board, Page, attachment, entry, members_of, post

KNOWN = [f"&{name};" for name in "auml ouml uuml eacute egrave agrave ntilde ccedil copy reg".split()]
KNOWN += [f"&#{code};" for code in range(192, 240)]


def repeated(pieces, size):
    """Pieces in turn until there is enough."""
    made, length = [], 0
    while length < size:
        made.append(next(pieces))
        length += len(made[-1])
    return made


def counted(pattern):
    """The pattern filled in again and again, with a number that rises."""
    for number in numbers():
        yield pattern.format(number=number, host=HOST, word=WORDS[number % len(WORDS)])


def numbers():
    return itertools.count(1)


def one_post(body, number=1, name="Anna Virtanen"):
    return post(number, 1, "anna0", name, FIRST_MOMENT + number, body)


def body_of(pattern):
    return lambda board, size: one_post("".join(repeated(counted(pattern), size)))


def nested_fonts(board, size):
    count = size // len("<font size=2></font>")
    return one_post("<font size=2>" * count + "x" + "</font>" * count)


def known_entities(board, size):
    return one_post(" ".join(repeated(itertools.cycle(KNOWN), size)))


def unknown_entities(board, size):
    """Each of them once."""
    return one_post(" ".join(repeated(counted("&u{number:07};"), size)))


def unknown_entities_twice(board, size):
    half = " ".join(repeated(counted("&u{number:07};"), size // 2))
    return one_post(half + half)


def many_posts(board, size):
    return "".join(repeated((one_post("hello", number) for number in numbers()), size))


def unknown_members(board, size):
    return "".join(repeated((one_post("hello", number, f"Visitor {number}") for number in numbers()), size))


def equal_real_names(board, size):
    line_length = 100
    board.write_members([(f"user{i}", "Anna Virtanen", "") for i in range(size // line_length)])
    return one_post("hello")


def missing_sub_topics(board, size):
    top = Page(1, 1, "Top", None)
    missing = (entry(Page(1000 + number, 1, "Gone", top), FIRST_MOMENT) for number in numbers())
    return "".join(repeated(missing, size))


def attachments(board, size):
    board.write_bytes(Page(1, 1, "Top", None), "manual.pdf", b"manual")
    section = attachment(1, "manual.pdf")
    return "".join(repeated((one_post(section, number) for number in numbers()), size))


SHAPES = {
    'one character "<"': body_of("<"),
    'one character ">"': body_of(">"),
    "tags, all alike": body_of("<i>x</i>"),
    "tags, all different": body_of("<i{number}>x"),
    "tags in tags": body_of("<i {number}<b>"),
    "fonts, nested": nested_fonts,
    "fonts, side by side": body_of("<font size=2>x</font>"),
    "links to topics": body_of('<a href="{host}/discus/messages/1/1.html">{word}</a> '),
    "links elsewhere": body_of('<a href="http://elsewhere.example/{number}.html">{word}</a> '),
    "links to files": body_of('<a href="{host}/discus/messages/1/{word}.pdf">{word}</a> '),
    "images": body_of('<img src="{host}/discus/messages/1/{word}.jpg" alt="x"> '),
    "line ends, quotes, commas": body_of('",\n'),
    "entities, known": known_entities,
    "entities, unknown": unknown_entities,
    "entities, unknown, twice": unknown_entities_twice,
    'one character "&"': body_of("&"),
    "small posts": many_posts,
    "posts by unknown members": unknown_members,
    "equal real names": equal_real_names,
    "sub-topics that are missing": missing_sub_topics,
    "attachments": attachments,
}  # fmt: skip


def generate_hostile(folder, shape, size):
    board = Board(folder, "iso-8859-1", 1)
    page = Page(1, 1, "Top", None)
    page.posts = 1
    board.write_members(members_of(10))
    body = SHAPES[shape](board, size) if size else one_post("hello")
    board.write_page(page, body)
    board.write_board_file([("Category", [page])])
