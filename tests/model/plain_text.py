"""Texts as the conversion takes them, each rule in its plainest form: positions count from 1, 0 is nowhere, and
searches ignore case. Boards of the tests hold nothing but ASCII."""

import re
from decimal import ROUND_HALF_EVEN, Decimal

DESCRIPTIONS = {
    5: "Invalid procedure call or argument",
    6: "Overflow",
    9: "Subscript out of range",
    13: "Type mismatch",
    457: "This key is already associated with an element of this collection",
}

FIELD_TOKENS = [
    (",", "([)"), ('"', "(})"), ("'", "({)"), ("\r\n", "(:)"), ("\n", "(:)"), ("`", "(<)"), ("\\", "(>)"),
]  # fmt: skip
NAME_MARKS = ["([)", "(;)", "(})", "(])", "(|)", "({)", "\r\n", "\n", "(<)", "?", "^", " .", "...", "(>)"]
NUMBER = re.compile(r"[+-]?([0-9]+\.?[0-9]*|\.[0-9]+)([eE][+-]?[0-9]+)?")


class Failure(Exception):
    def __init__(self, number):
        super().__init__(DESCRIPTIONS[number])
        self.number = number


class Collection(dict):
    """Items by keys that ignore case, in the order of their entry."""

    def add(self, key, item):
        if key.lower() in self:
            raise Failure(457)
        self[key.lower()] = item

    def item(self, key):
        if key.lower() not in self:
            raise Failure(5)
        return self[key.lower()]


def element(items, index):
    if not 0 <= index < len(items):
        raise Failure(9)
    return items[index]


def split(text, delimiter):
    return text.split(delimiter) if text else []


def find(text, what, start=1):
    if start < 1:
        raise Failure(5)
    return 0 if start > len(text) else text.lower().find(what.lower(), start - 1) + 1


def find_backward(text, what, start):
    if start == 0 or start < -1:
        raise Failure(5)
    if start > len(text):
        return 0
    end = len(text) if start == -1 else start
    return text[:end].lower().rfind(what.lower()) + 1


def between(text, start, end):
    if start < 1 or end < start:
        raise Failure(5)
    return text[start - 1 : end - 1]


def without(text, what):
    return re.sub(re.escape(what), "", text, flags=re.IGNORECASE)


def section_at(text, opening, closing, position, behind):
    """The section, where it stands, and the place behind it."""
    position = find(text, opening, position or 1)
    close = find(text, closing, position + len(opening)) if position else 0
    if not close:
        return "", position, behind
    behind = close + len(closing)
    return between(text, position, behind), position, behind


def first_section(text, opening, closing):
    return section_at(text, opening, closing, 1, 1)[0]


def without_tags(text):
    while opening := find(text, "<"):
        closing = find(text, ">", opening)
        if not closing:
            break
        text = without(text, between(text, opening, closing + 1))
    return text


def escaped(text):
    for mark, token in FIELD_TOKENS:
        text = text.replace(mark, token)
    return text


def clean_name(text):
    text = escaped(text)
    for mark in NAME_MARKS:
        text = text.replace(mark, "")
    return text


def leading_digits(text):
    return re.match("[0-9]*", text.strip(" "))[0]


def in_32_bits(number):
    if not -(2**31) <= number < 2**31:
        raise Failure(6)
    return number


def rounded(text):
    return in_32_bits(int(Decimal(text).quantize(Decimal(1), rounding=ROUND_HALF_EVEN)))


def is_numeric(text):
    return NUMBER.fullmatch(text.strip(" ")) is not None


def to_integer(text):
    if not is_numeric(text):
        raise Failure(13)
    return rounded(text.strip(" "))


def leading_number(text):
    number = NUMBER.match(text.lstrip(" \t\r\n"))
    return rounded(number[0]) if number else 0
