"""A whole run by its plain steps, without uploads, links, markup, redirection pages and sequences. Slow and short
where the program is fast and long: both must write the same."""

from dataclasses import dataclass, field
from pathlib import Path

from plain_text import (
    DESCRIPTIONS, Collection, Failure, between, clean_name, element, escaped, find, find_backward, first_section,
    in_32_bits, is_numeric, leading_digits, leading_number, section_at, split, to_integer, without, without_tags,
)  # fmt: skip

FAMILIES = ("forums", "threads", "posts", "users", "usergroups", "announcements")
ALLOWED_TO_GROUPS = {12, 13, 14, 15, 17, 18, 19, 20, 25, 26, 27, 28}


@dataclass
class Member:
    username: str
    password: str
    email: str
    real_name: str
    registered: int
    address: str
    last_post: int
    groups: str
    number: int = 0


@dataclass
class Page:
    """What is known of the page in hand at one depth."""

    path: str = ""
    text: str = ""
    topic_number: str = ""
    file_number: str = ""
    me_name: str = ""
    subject: str = ""
    parent: int = 0
    parent_list: str = ""
    thread_base: int = 0
    first_post: int = 0
    last_post: int = 0
    first_poster: int = 0
    last_poster: int = 0
    top_section: str = ""
    post_section: str = ""
    announcement_section: str = ""


@dataclass
class Family:
    """The rows of one table, a list for each of its files."""

    files: list = field(default_factory=lambda: [[]])
    size: int = 0
    is_open: bool = False


class PlainRun:
    def __init__(self, source, administrator, users, groups, with_hidden, limit):
        self.messages_folder = f"{source}/discus/messages/".replace("/", "\\")
        self.main_folder = f"{source}/discus_admin_7/".replace("/", "\\")
        self.secure_folder = self.main_folder + "secure\\"
        self.administrator = escaped(administrator.strip(" "))
        self.default_users = users
        self.default_groups = groups
        self.with_hidden = with_hidden
        self.limit = limit
        self.families = {name: Family() for name in FAMILIES}
        self.statements = []
        self.messages = []
        self.is_cancelled = False
        self.processed = []
        self.message_count = ""
        self.members = Collection()
        self.by_real_name = Collection()
        self.by_user_name = Collection()
        self.real_names = Collection()
        self.groups = Collection()
        self.forum_ids = Collection()
        self.post_counts = {"forum": 0, "thread": 0, "post": 0, "announcement": 0}
        self.depth = 0
        self.pages = [Page()]
        self.first_time = self.last_time = 0

    def run(self):
        self.read_members()
        self.write_groups()
        self.read_board()
        self.write_users()
        for name in ("threads", "posts", "users", "usergroups", "announcements"):
            self.finish(name)
        # Nobody saves the forums of a board that was left early.
        if self.families["forums"].is_open:
            self.families["forums"].files.pop()

    def count(self, what):
        self.post_counts[what] += 1
        return self.post_counts[what]

    def handle(self, label, failure):
        text = DESCRIPTIONS[failure.number]
        self.messages.append(f"{failure.number} - {label}\r\n\r\n{text}")
        self.is_cancelled = True

    # Files

    def write(self, name, row):
        family = self.families[name]
        family.is_open = True
        if self.limit >= 1 and len(row) + family.size > self.limit:
            self.statements.append((name, len(family.files)))
            family.files.append([])
            family.size = 0
        family.files[-1].append(row)
        family.size += len(row) + 2

    def finish(self, name):
        family = self.families[name]
        if family.is_open:
            self.statements.append((name, len(family.files)))
        family.is_open = False

    @staticmethod
    def native(path):
        return Path(path.replace("\\", "/"))

    def read(self, path):
        return self.native(path).read_bytes().decode("utf-8")

    # Members and groups

    def read_members(self):
        path = self.main_folder + "users.txt"
        text = self.read(path) if self.native(path).is_file() else ""
        kept = self.default_users
        self.default_users = 0
        name = self.administrator
        self.add_member(f"{name},,admin@example.com,{name},,,,0,,,".split(","))
        self.default_users = max(kept - 1, 0)
        names = []
        for line in split(text, "\r\n" if "\r" in text else "\n"):
            if line == "":
                continue
            fields = line.split(":")
            if len(fields) > 9:
                names = split(fields[9], "/")
            self.add_groups(names)
            if fields[0].strip(" "):
                self.add_member(fields)

    def add_groups(self, names):
        for i, name in enumerate(names):
            if name == "":
                continue
            names[i] = clean_name(name).strip(" ")
            number = len(self.groups) + 1 + self.default_groups
            self.groups.setdefault(names[i].lower(), (number, names[i]))

    def add_member(self, fields):
        try:
            member = self.make_member(fields)
        except Failure as failure:
            self.handle("DiscusAddMember()", failure)
            return 0
        if member.real_name.lower() in self.real_names:
            member.real_name += f" {member.number}"
        else:
            self.real_names.add(member.real_name, member.real_name)
        if member.username.lower() in self.by_user_name:
            member.username += f"_{member.number}"
        self.by_user_name.setdefault(member.username.lower(), member)
        self.by_real_name.setdefault(member.real_name.lower(), member)
        self.members.setdefault(str(member.number), member)
        return member.number

    def make_member(self, fields):
        def number_of(text):
            return to_integer(text) if is_numeric(text) else 0

        username = clean_name(element(fields, 0)).strip(" ")
        password = element(fields, 1)
        email = element(fields, 2).lower()
        real_name = fields[3] if element(fields, 3).strip(" ") else fields[0]
        member = Member(
            username, password, email, clean_name(real_name).strip(" "), number_of(element(fields, 6)),
            element(fields, 7), number_of(element(fields, 8)), element(fields, 9))  # fmt: skip
        member.number = len(self.by_real_name) + 1 + self.default_users
        return member

    def write_groups(self):
        if self.is_cancelled:
            return
        for number, name in self.groups.values():
            head = [str(number), "0", f'"{name}"', '""', '"{username}"', '""', "0", '"images/star.png"', '""']
            rights = ["1" if column in ALLOWED_TO_GROUPS else "0" for column in range(10, 90)]
            self.write("usergroups", ",".join(head + rights))
        self.finish("usergroups")

    def write_users(self):
        primary = fallback = 0
        try:
            for member in list(self.members.values())[1:]:
                if member.groups:
                    numbers = [self.groups.item(name)[0] for name in member.groups.split("/") if name]
                    primary = numbers[0] if numbers else 0
                address = self.address_number(member.address)
                if address == 0:
                    address = fallback
                    fallback += 1
                self.write("users", self.user_row(member, primary, address))
            self.finish("users")
        except Failure as failure:
            self.handle("mybbWriteUserFile()", failure)

    @staticmethod
    def address_number(address):
        if "." not in address:
            return leading_number(address)
        codes = ""
        for i in range(4):
            part = element(address.split("."), i)
            if part == "":
                raise Failure(5)
            codes += str(ord(part[0]))
        return to_integer(codes)

    @staticmethod
    def user_row(member, primary, address):
        return (
            f'{member.number},"{escaped(member.username)}","{member.password}","","","{member.email}",0,0,"","","",'
            f'{primary},"",0,"",{member.registered},0,0,{member.last_post},"","","","","","","","all","",'
            '1,0,0,0,1,0,1,1,1,0,"",1,1,1,1,1,1,0,0,0,"","","0",0,0,"","",0,0,0,"","","","",0,0,0,'
            f'{address},{address},"",0,1,0,0,0,0,0,0,0,0,0,0,0,0,"",0'
        )

    # The board and its forums

    def read_board(self):
        if self.is_cancelled:
            return
        path = self.messages_folder + "board-topics.html"
        try:
            if self.read_categories(self.read(path)):
                self.finish("forums")
                self.finish("posts")
        except Failure as failure:
            self.handle(f"DiscusProcessDiscusMainBoardFile() - {path}", failure)

    def read_categories(self, text):
        start = behind = 1
        while True:
            section, start, behind = section_at(text, "<!--Category: ", "<!--/Category-->", start, behind)
            if section == "":
                return True
            if behind > len(text):
                return False
            name = escaped(without_tags(first_section(section, "<!--Text-->", "<!--/Text-->")))
            self.write_forum(name, "", "c")
            behind = find(text, "<!--Category: ", behind + 1)
            self.read_tops(between(text, start, behind or len(text) + 1), name)
            start = behind
            if self.is_cancelled or behind == 0:
                return True

    def read_tops(self, body, name):
        position = behind = 1
        while True:
            section, position, behind = section_at(body, "<!--Top: ", "<!--/Top-->", position, behind)
            if section == "":
                return
            number = leading_digits(section[len("<!--Top: ") :][:10])
            position = behind + 1
            self.processed.append(number)
            self.depth = 0
            self.walk(number, self.forum_ids.item(name), False)
            if self.is_cancelled:
                return

    def write_forum(self, name, parents, kind):
        """Gives the list of parents as the row shows it."""
        name = escaped(without_tags(name))
        number = self.count("forum")
        parent = leading_number(parents)
        parents = parents.removesuffix(",")
        if "," in parents:
            parent = to_integer(parents.split(",")[-1])
        self.write(
            "forums",
            f'{number},"{name}","","","{kind}",{parent},"{parents}",1,1,1,0,0,0,"",0,0,"",0,1,1,1,1,1,1,1,1,0,"",'
            '1,0,0,0,"","",0,0,0,0,0,"",""',
        )
        self.forum_ids[name.lower()] = number
        return parents

    # The pages

    def page(self):
        return self.pages[self.depth]

    def walk(self, name, parent, is_path):
        if self.is_cancelled:
            return
        self.depth += 1
        page = Page(parent=parent, thread_base=self.post_counts["thread"])
        self.pages = [*self.pages[: self.depth], page]
        page.parent_list = "".join(f"{above.parent}," for above in self.pages[1:])
        try:
            if self.choose_file(page, name, is_path):
                self.read_page(page)
                self.read_sections()
        except Failure as failure:
            self.handle(f"DiscusProcessBoardTopics() - {self.page().path}", failure)
        if self.is_cancelled:
            return
        self.depth -= 1
        self.pages = self.pages[: self.depth + 1]

    def choose_file(self, page, name, is_path):
        if is_path:
            page.path = name
            secure = name.replace(self.messages_folder, self.secure_folder)
            page.file_number = leading_digits(without(name, self.messages_folder).split("\\")[-1])
        else:
            page.path = f"{self.messages_folder}{name}\\{name}.html"
            secure = f"{self.secure_folder}{name}\\{name}.html"
            page.file_number = name
        if self.native(page.path).is_file():
            return True
        if not self.with_hidden or not self.native(secure).is_file():
            return False
        page.path = secure
        return True

    def read_page(self, page):
        page.text = self.read(page.path)
        page.topic_number = self.tag_value(page.text, "<!--Topic: ")[0]
        page.me_name = escaped(self.tag_value(page.text, "<!--Me: ")[1])
        link = first_section(page.text, ".html?", "</a>")
        subject = first_section(link, ">", "</a>") or first_section(link, ">", "<")
        page.subject = escaped(without_tags(subject[1:]))
        self.message_count = str(self.post_counts["post"])

    @staticmethod
    def tag_value(text, opening):
        value = without(without(first_section(text, opening, "-->"), "-->"), opening)
        return leading_digits(value), without_tags(value[find(value, "/") :].strip(" "))

    def read_sections(self):
        page = self.page()
        tops = announcements = posts = (0, 0)
        is_first = True
        while True:
            page.top_section, *tops = section_at(page.text, "<!--Top: ", "<!--/Top-->", *tops)
            page.announcement_section, *announcements = section_at(
                page.text, "<!--Announcement-->", "<!--/Announcement-->", *announcements)  # fmt: skip
            page.post_section, *posts = section_at(page.text, "<!--Post: ", "<!--/Post: ", *posts)
            has_sections = page.top_section or page.announcement_section or page.post_section
            if is_first:
                page.parent_list = self.write_forum(page.me_name, page.parent_list, "f")
            if not has_sections:
                return
            tops, announcements, posts = (tops[1],) * 2, (announcements[1],) * 2, (posts[1],) * 2
            if page.top_section and page.subject:
                self.enter_top(page)
            # A sub-topic that was left by a cancel leaves its own page in hand.
            if self.page().post_section:
                self.read_posts()
                self.write_thread()
                posts = (len(page.text) - 1,) * 2
            if self.page().announcement_section:
                self.write_announcement()
            if self.is_cancelled:
                return
            is_first = False

    def enter_top(self, page):
        is_hidden = find(page.top_section, "<!-- Topic Hidden -->") != 0
        link = first_section(page.top_section, "<a href=", "?")
        for mark in ("<a href=", "?", '"'):
            link = without(link, mark)
        last = find_backward(link, "/", -1)
        before = find_backward(link, "/", last - 1)
        folder = self.secure_folder if is_hidden else self.messages_folder
        path = f"{folder}{leading_digits(link[before:])}\\{link[last:]}"
        self.walk(path, self.forum_ids.item(page.me_name), True)

    def write_announcement(self):
        page = self.page()
        text = "" if self.is_cancelled else escaped(without_tags(page.announcement_section))
        number = self.count("announcement")
        self.write(
            "announcements",
            f'{number},{page.parent},{page.first_poster},"{page.me_name}","{text}",0,0,1,1,1',
        )

    # The posts of a page

    def read_posts(self):
        page = self.page()
        forum = self.forum_ids.item(page.me_name)
        if self.is_cancelled:
            return
        try:
            self.write_posts(page, forum)
        except Failure as failure:
            self.handle("DiscusProcessPostsOnPage()", failure)

    def write_posts(self, page, forum):
        page.first_post = self.post_counts["post"] + 1
        self.first_time = self.last_time = 0
        posters, times, rows = [], [], []
        position = 1
        while opening := find(page.text, "<!--Post: ", position):
            tag = between(page.text, opening, find(page.text, "-->", opening)) + "-->"
            closing = tag[:4] + "/" + tag[4:]
            close = find(page.text, closing, opening)
            if not close:
                break
            position = close + len(closing)
            section = between(page.text, opening, position)
            name, poster = self.poster_of(section)
            time = self.time_of(section)
            if rows:
                self.last_time = time
            else:
                self.first_time = time
            if not any(times):
                times.append(in_32_bits(self.first_time - time))
            posters.append(poster)
            number = self.count("post")
            message = escaped(without_tags(first_section(section, "<!--Text-->", "<!--/Text-->").replace('"', "")))
            key = f"{page.topic_number}^{page.file_number}^{self.post_number_of(section)}"
            rows.append(
                f'{number},{page.thread_base + 1},0,{forum},"{page.subject}",0,{poster},"{name}",{time},"{message}",'
                f'0,0,0,0,0,"{key}",1'
            )
        # The first poster is that of the newest post.
        is_reversed = bool(times) and times[-1] > 0
        ends = (posters[0], posters[-1]) if posters else (0, 0)
        page.first_poster, page.last_poster = ends if is_reversed else ends[::-1]
        if is_reversed:
            self.first_time, self.last_time = self.last_time, self.first_time
            rows.reverse()
        page.last_post = self.post_counts["post"]
        for row in rows:
            self.write("posts", row)

    def poster_of(self, section):
        name = without_tags(first_section(section, "<!--name-->", "<!--/name-->")).strip(" ")
        name = clean_name(name) or "Anonymous"
        if member := self.by_real_name.get(name.lower()):
            return member.real_name, member.number
        if member := self.by_user_name.get(name.lower()):
            return member.username, member.number
        return name, self.add_member([name] + [""] * 10)

    @staticmethod
    def time_of(section):
        time = without(first_section(section, "<!--Time: ", "-->"), "<!--Time:").strip(" ")
        return to_integer(without(time, "-->"))

    @staticmethod
    def post_number_of(section):
        return leading_digits(without(first_section(section, "<!--Post: ", "<!--/Post: "), "<!--Post: "))

    def write_thread(self):
        page = self.page()
        forum = self.forum_ids.item(page.me_name)
        if self.is_cancelled:
            return
        page.last_post = max(page.last_post, page.first_post)
        first = self.members.item(str(page.first_poster or 1))
        last = self.members.item(str(page.last_poster or 1))
        views = page.last_post - page.first_post + 1
        self.write(
            "threads",
            f'{self.count("thread")},{forum},"{page.me_name}",0,0,0,{first.number},"{first.username}",'
            f'{self.first_time},{page.first_post},{self.last_time},"{last.username}",{last.number},{views},{views - 1},'
            '"",0,0,0,"",1,0,0,0,0',
        )
