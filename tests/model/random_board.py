"""Boards at random, as full of oddities as they come: names that collide, tags cut off, pages that are missing."""

NAMES = [
    "Anna", "Bert", "anna", "Carl, Jr", "O'Neil", 'Dora "D"', "Eve?", "...", "Anna 3", "bert_4", "<b>Gus</b>",
    "Hal\nIda", "", "  Jo  ", "Anonymous", "a\\b", "K.", "x .y",
]  # fmt: skip
TOPICS = [
    "Radios", "Tubes", "radios", "A, B", "<i>Nested</i>", "", "Misc/More", "x<y", 'Q"q"', "New\nline", "it's",
]  # fmt: skip
BODIES = ["hello", "one, two", "it's\nhere", "a\\b", "", "<u>x</u> y <i>z", "p > q"]
SITES = ["http://h.example/discus/messages/", "/discus/messages/", "http://h/", ""]


class RandomBoard:
    def __init__(self, random, folder):
        self.random = random
        self.messages = folder / "discus" / "messages"
        self.main = folder / "discus_admin_7"
        self.pages = 100
        self.posts = 0
        # The first folder tells the charset.
        self.put(self.messages, 0, 0, "nothing")
        (self.main / "secure").mkdir(parents=True)
        self.put_board_file()
        self.put_members()

    def one_of(self, *choices):
        return self.random.choice(choices)

    def happens(self, share):
        return self.random.random() < share

    def in_some_case(self, tag):
        if self.happens(0.85):
            return tag
        return "".join(c.upper() if self.happens(0.5) else c.lower() for c in tag)

    def shuffled(self, pieces):
        if self.happens(0.3):
            self.random.shuffle(pieces)
        return "".join(pieces)

    @staticmethod
    def put(base, folder, number, text):
        path = base / str(folder) / f"{number}.html"
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(text.encode())

    def put_board_file(self):
        text = self.one_of("", "x\n")
        tops = 0
        for category in range(self.one_of(1, 1, 2, 3)):
            name = self.in_some_case("<!--Text-->") + self.random.choice(TOPICS) + "<!--/Text-->"
            text += self.in_some_case("<!--Category: ") + f"{category}-->" + (name if self.happens(0.9) else "")
            text += self.in_some_case("<!--/Category-->") + self.one_of("\n", "\n", "")
            for _ in range(self.one_of(0, 1, 2, 3)):
                tops += 1
                number = self.one_of(str(tops), str(tops), f"{tops}x", "")
                text += self.in_some_case("<!--Top: ") + f"{number}-->t<!--/Top-->" + self.one_of("\n", "\n", "")
                self.put_page(tops, tops, 1, self.happens(0.1))
        (self.messages / "board-topics.html").write_bytes(text.encode())

    def put_page(self, folder, number, level, is_secure):
        pieces = []
        for _ in range(self.one_of(0, 0, 1, 2, 3) if level < 3 else 0):
            self.pages += 1
            child, is_hidden = self.pages, self.happens(0.15)
            pieces.append(self.top(folder, child, is_hidden))
            self.put_page(folder, child, level + 1, is_hidden if self.happens(0.9) else not is_hidden)
        if self.happens(0.2):
            pieces.append("<!--Announcement-->news<!--/Announcement-->")
        moment = self.random.randrange(1000, 5000)
        posts = "".join(self.post(moment) for _ in range(self.one_of(0, 1, 2, 4)))
        pieces.insert(self.random.randrange(len(pieces) + 1), posts)
        text = self.head(folder, number) + self.one_of("", "\n", "junk") + "".join(pieces) + self.one_of("", "\n")
        if self.happens(0.02):
            text = text[: self.random.randrange(len(text) + 1)]
        if self.happens(0.96):
            self.put(self.main / "secure" if is_secure else self.messages, folder, number, text)

    def head(self, folder, number):
        topic = self.one_of(f"{folder}/", f"{folder}/", "") + self.random.choice(TOPICS)
        me = self.one_of(f"{number}/", f"{number}/", "") + self.random.choice(TOPICS) + self.one_of("", str(number))
        subject = self.one_of("Subject", "S, t", "<b>S</b>", "")
        pieces = [
            self.in_some_case("<!--Topic: ") + topic + "-->",
            self.in_some_case("<!--Me: ") + me + "-->\n",
            f'<a href="http://h/discus/messages/{folder}/{number}.html?9">{subject}</a>\n',
        ]
        return self.shuffled([piece for piece in pieces if self.happens(0.95)])

    def top(self, folder, number, is_hidden):
        link = self.random.choice(SITES) + f"{folder}/{number}.html"
        if self.happens(0.03):
            link = self.one_of(f"{number}.html", "/x.html", "", f"{folder}x/{number}.html")
        quote = self.one_of('"', "")
        return (
            self.in_some_case("<!--Top: ") + f"{number}-->" + ("<!-- Topic Hidden -->" if is_hidden else "")
            + self.in_some_case("<a href=") + quote + link + self.one_of("?123", "?123", "?", "") + quote
            + ">Sub</a>" + (self.in_some_case("<!--/Top-->") if self.happens(0.97) else "")
        )  # fmt: skip

    def post(self, moment):
        self.posts += 1
        number = self.one_of(str(self.posts), str(self.posts), str(self.posts), "", "x", " 7 b")
        time = self.one_of(str(moment + self.posts), str(moment - self.posts), str(moment), "0", "-5", "1e3", " 12 ")
        if self.happens(0.02):
            time = self.one_of("abc", "", "99999999999")
        name = self.in_some_case("<!--name-->") + self.random.choice(NAMES) + self.in_some_case("<!--/name-->")
        body = self.in_some_case("<!--Text-->") + self.random.choice(BODIES) + self.in_some_case("<!--/Text-->")
        pieces = [self.in_some_case("<!--Time: ") + time + "-->\n" if self.happens(0.995) else ""]
        pieces += [piece for piece in (name, body) if self.happens(0.94)]
        closing = f"<!--/Post: {number}-->" if self.happens(0.95) else self.one_of("<!--/Post: 9-->", "")
        return self.in_some_case(f"<!--Post: {number}-->") + self.shuffled(pieces) + closing + self.one_of("\n", "")

    def put_members(self):
        lines = [self.member() for _ in range(self.one_of(0, 2, 5, 9))]
        end = self.one_of("\n", "\r\n")
        if self.happens(0.9):
            (self.main / "users.txt").write_bytes((end.join(lines) + self.one_of("", end)).encode())

    def member(self):
        name, other = (self.random.choice(NAMES).replace("\n", " ") for _ in range(2))
        address = self.one_of("1.2.3.4", "0", "", "12ab", "9.9.9.9", "a.b.c.d")
        groups = self.one_of("", "Mods", "Mods/Eds", "eds", "/Crew//Mods")
        if self.happens(0.02):
            address = self.one_of("1.2", "1..2.3")
        if self.happens(0.03):
            groups = "a, b"
        fields = [
            name, "pw", self.one_of("A@b", "x,y"), self.one_of("", other, " "), "", "",
            self.one_of("5", "x", "", "1.5"), address, self.one_of("7", "", "z"), groups, "",
        ]  # fmt: skip
        if self.happens(0.01):
            fields = fields[: self.random.randrange(1, 10)]
        return ":".join(fields)
