#!/usr/bin/env python3
"""Opens the report of a check in a real browser without a screen: it is read, filtered, folded and looked at in
light, in dark and on paper, and no text of the board becomes part of the page."""

import argparse
import base64
import json
import os
import shutil
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

SKIPPED = 77

programs = argparse.Namespace()
scratch = None
browser = None

# Titles, names and words that would do harm if they were taken for markup.
HOSTILE = {
    "title": '<script>window.harmed = 1</script>',
    "quotes": '"><img src=x onerror="window.harmed = 2">\' onmouseover=\'window.harmed=3',
    "entity": "&lt;script&gt;window.harmed = 4&lt;/script&gt;",
    "controls": "a\x01b\x1b[31mc\x7fd",
    "bidi": "abc\u202eTXT\u2066.exe\u200f",
    "close": "</code></blockquote></details></script></style><h1>harm</h1>",
}

PAGE = """<html><head><title>{title}</title></head>
<!--Topic: 12/{name}-->
<!--Me: {number}/{name}-->
<a href="http://old.example/discus/messages/1/1.html?99">Subject</a>
"""
POST = """<!--Post: {number}--><!--Time: {time}-->
<!--name-->{name}<!--/name-->
<!--Text-->{body}<!--/Text-->
<!--/Post: {number}-->
"""


def write_board(folder):
    messages = folder / "discus/messages"
    (messages / "12").mkdir(parents=True)
    (folder / "discus_admin_1/secure").mkdir(parents=True)
    (folder / "discus_admin_1/users.txt").write_text(
        "anna:secret-word:anna@host.example:Anna:::0:10.0.0.1:0:Editors/Modera<b>tors\n"
        "<img src=x onerror=alert(1)>:pw:x@host.example::::0:10.0.1:0:Editors\n")
    (messages / "board-topics.html").write_text(
        "<!--Category: 1--><!--Text-->Main &lt;b&gt;hall<!--/Text--><!--/Category-->\n"
        "<!--Top: 12-->x<!--/Top-->\n<!--Top: 13-->x<!--/Top-->\n")
    text = PAGE.format(title="Radios", name="Radios < & > " + HOSTILE["bidi"], number=12)
    text += '<!--Top: 20--><a href="http://old.example/discus/messages/12/20.html?9">x</a><!--/Top-->\n'
    link = '<a href="http://elsewhere.example">{}</a> '
    for number, harm in enumerate(HOSTILE.values(), start=1):
        time = 946684800 + number * 40_000_000
        text += POST.format(number=number, time=time, name="Anna", body=link.format(harm))
    text += POST.format(number=50, time="<script>window.harmed = 5</script>", name="Anna", body="x")
    (messages / "12/12.html").write_text(text, encoding="utf-8")
    below = PAGE.format(title="Valves", name="Valves", number=20)
    below += POST.format(number=60, time=946684800, name=HOSTILE["quotes"], body="<font size=2>x<font size=3>y</font>")
    (messages / "12/20.html").write_text(below, encoding="utf-8")
    (messages / "12/unused&quot;1.pdf").write_text("x")


def setUpModule():
    global scratch, browser
    scratch = Path(tempfile.mkdtemp(prefix="tessaly-page-"))
    write_board(scratch / "board")
    docs = scratch / "program/Docs"
    docs.mkdir(parents=True)
    (docs / "Redirect.html").write_text("AAAAA")
    (docs / "utf-8.txt").write_bytes(b"&lt;\t&lt;\t\r\n")
    run = subprocess.run(
        [programs.cli, "check", "--root", str(scratch / "board"), "--output", str(scratch / "output"),
         "--website", "http://old.example/", "--forum", "http://new.example/", "--admin", "Admin",
         "--program-folder", str(scratch / "program"), "--html", str(scratch / "report.html"), "--quiet"],
        capture_output=True, text=True, check=False)  # fmt: skip
    assert run.returncode == 1, (run.returncode, run.stderr)
    browser = open_browser()
    browser.get((scratch / "report.html").as_uri())


def tearDownModule():
    if browser is not None:
        browser.quit()
    shutil.rmtree(scratch)


def open_browser():
    from selenium import webdriver
    from selenium.webdriver.chrome.service import Service

    options = webdriver.ChromeOptions()
    for argument in ["--headless=new", "--no-sandbox", "--disable-dev-shm-usage", "--disable-gpu", "--hide-scrollbars",
                     f"--user-data-dir={scratch / 'profile'}", "--window-size=1100,1400"]:  # fmt: skip
        options.add_argument(argument)
    options.binary_location = shutil.which("chromium")
    options.set_capability("goog:loggingPrefs", {"browser": "ALL", "performance": "ALL"})
    return webdriver.Chrome(service=Service(shutil.which("chromedriver")), options=options)


def find(selector):
    return browser.find_elements("css selector", selector)


def shown(selector):
    return [element for element in find(selector) if element.is_displayed()]


def emulate(**media):
    features = [{"name": "prefers-color-scheme", "value": media.get("scheme", "light")}]
    browser.execute_cdp_cmd("Emulation.setEmulatedMedia", {"media": media.get("media", "screen"), "features": features})


def colour_of(selector, kind):
    text = browser.execute_script(
        "return getComputedStyle(document.querySelector(arguments[0]))[arguments[1]]", selector, kind)  # fmt: skip
    return tuple(int(float(part)) for part in text[text.index("(") + 1 : text.index(")")].split(",")[:3])


def brightness(colour):
    """Of 0 to 1, as contrast is reckoned."""
    parts = [part / 255 for part in colour]
    parts = [part / 12.92 if part <= 0.04045 else ((part + 0.055) / 1.055) ** 2.4 for part in parts]
    return 0.2126 * parts[0] + 0.7152 * parts[1] + 0.0722 * parts[2]


def contrast(one, other):
    light, dark = sorted([brightness(one), brightness(other)], reverse=True)
    return (light + 0.05) / (dark + 0.05)


def take_picture(name):
    """Kept for whoever wants to look, when a folder for it was named."""
    size = browser.execute_cdp_cmd("Page.getLayoutMetrics", {})["cssContentSize"]
    clip = {"x": 0, "y": 0, "width": size["width"], "height": size["height"], "scale": 1}
    picture = browser.execute_cdp_cmd(
        "Page.captureScreenshot", {"format": "png", "captureBeyondViewport": True, "clip": clip})  # fmt: skip
    data = base64.b64decode(picture["data"])
    if programs.pictures:
        Path(programs.pictures, name).write_bytes(data)
    return data


class Report(unittest.TestCase):
    def setUp(self):
        emulate()
        browser.refresh()

    def test_is_one_file_that_asks_no_network(self):
        browser.get_log("performance")
        browser.refresh()
        events = [json.loads(line["message"])["message"] for line in browser.get_log("performance")]
        addresses = {event["params"]["request"]["url"] for event in events
                     if event["method"] == "Network.requestWillBeSent"}  # fmt: skip
        self.assertEqual(addresses, {(scratch / "report.html").as_uri()})
        page = (scratch / "report.html").read_text(encoding="utf-8")
        for word in ["https://", "<link", "<img", "@import", "url("]:
            self.assertNotIn(word, page)

    def test_runs_without_a_complaint_and_takes_no_text_of_the_board_for_markup(self):
        self.assertEqual([entry for entry in browser.get_log("browser") if entry["level"] == "SEVERE"], [])
        self.assertIsNone(browser.execute_script("return window.harmed === undefined ? null : window.harmed"))
        self.assertEqual(len(find("script")), 1)
        self.assertEqual(len(find("h1")), 1)
        self.assertEqual(find("img") + find("b"), [])
        text = browser.execute_script("return document.body.textContent")
        self.assertIn("<script>window.harmed = 1</script>", text)
        self.assertIn("onerror=\"window.harmed = 2\"", text)

    def test_holds_no_control_character_and_no_mark_that_turns_the_writing(self):
        page = (scratch / "report.html").read_text(encoding="utf-8")
        for mark in "\x01\x1b\x7f\u202e\u2066\u200f":
            self.assertNotIn(mark, page)
        self.assertNotIn("secret-word", page)

    def test_shows_totals_years_and_the_tree(self):
        tiles = {element.find_element("css selector", "dt").text: element.find_element("css selector", "dd").text
                 for element in find(".tiles div")}  # fmt: skip
        self.assertEqual(tiles["Pages"], "2")
        self.assertEqual(tiles["Posts"], "8")
        self.assertEqual(tiles["Members"], "4")
        self.assertEqual(tiles["Ends the run"], "3")
        # 2001 to 2007; the seventh post is of 2000.
        bars = [bar.get_attribute("textContent") for bar in find("svg g title")]
        self.assertEqual(bars[0], "2000: 1 posts")
        self.assertEqual(len(bars), 8)
        chart = find("svg")[0]
        self.assertEqual(chart.get_attribute("role"), "img")
        self.assertIn("from 2000 to 2007", chart.get_attribute("textContent"))
        self.assertEqual(len(find("figure tbody tr")), 8)
        tree = find("ul.tree")[0].text
        self.assertIn("8 posts, 2 pages", tree)
        self.assertIn("12/12.html", tree)

    def test_filters_by_a_word_and_by_grade_and_tells_how_many_are_shown(self):
        everything = len(shown("ol.findings > li")) + len(shown("details.kind:not([open])"))
        self.assertGreater(everything, 5)
        words = find("#words")[0]
        words.send_keys("post 50")
        self.assertEqual([kind.get_attribute("id") for kind in shown("details.kind")], ["post-time"])
        self.assertEqual(find("#status")[0].text, "1 place shown")
        words.clear()
        words.send_keys("no such thing")
        self.assertEqual(shown("details.kind"), [])
        self.assertEqual(find("#status")[0].text, "0 places shown")
        browser.refresh()
        for grade in ["loses", "worth"]:
            find(f"input[value={grade}]")[0].click()
        self.assertEqual({kind.get_attribute("data-grade") for kind in shown("details.kind")}, {"ends"})
        self.assertEqual(find("#status")[0].text, "3 places shown")

    def test_unfolds_and_folds_by_keyboard(self):
        from selenium.webdriver.common.keys import Keys

        folded = find("details.kind:not([open])")
        self.assertGreater(len(folded), 0)
        summary = folded[0].find_element("css selector", "summary")
        browser.execute_script("arguments[0].focus()", summary)
        summary.send_keys(Keys.ENTER)
        self.assertEqual(folded[0].get_attribute("open"), "true")
        find("#unfold")[0].send_keys(Keys.ENTER)
        self.assertEqual(find("details.kind:not([open])"), [])
        find("#fold")[0].send_keys(Keys.SPACE)
        self.assertEqual(find("details.kind[open]"), [])

    def test_leads_the_keyboard_to_the_findings_first(self):
        from selenium.webdriver.common.keys import Keys

        find("body")[0].send_keys(Keys.TAB)
        self.assertEqual(browser.switch_to.active_element.get_attribute("href").split("#")[1], "findings")

    def test_is_told_whole_to_a_screen_reader(self):
        nodes = browser.execute_cdp_cmd("Accessibility.getFullAXTree", {})["nodes"]
        told = [(node.get("role", {}).get("value"), node.get("name", {}).get("value")) for node in nodes]
        roles = {role for role, _ in told}
        self.assertIn("search", roles)
        self.assertIn("status", roles)
        self.assertIn("main", roles)
        for name in ["Totals", "Findings", "Posts a year", "The board"]:
            self.assertIn(("region", name), told)
        for role, name in told:
            if role in ("searchbox", "checkbox", "button", "link", "DisclosureTriangle"):
                self.assertTrue(name, role)
        self.assertIn(("checkbox", "Ends the run"), told)
        # A drawing is told by its title and by its numbers.
        self.assertTrue(any(name and name.startswith("Posts a year A bar for each year from 2000") for _, name in told))

    def test_is_readable_in_light_in_dark_and_on_paper(self):
        pictures = {}
        for name, media in {"light": {}, "dark": {"scheme": "dark"}, "print": {"media": "print"}}.items():
            with self.subTest(name):
                emulate(**media)
                pictures[name] = take_picture(f"report-{name}.png")
                paper = colour_of("body", "backgroundColor")
                card = colour_of("details.kind", "backgroundColor")
                for selector in ["h1", "p.faint", ".badge.ends", ".badge.loses", ".badge.worth", ".path", "code"]:
                    ink = colour_of(selector, "color")
                    self.assertGreaterEqual(contrast(ink, paper), 4.5, (name, selector))
                    self.assertGreaterEqual(contrast(ink, card), 4.5, (name, selector))
                self.assertEqual(brightness(paper) < 0.2, name == "dark")
        self.assertNotEqual(pictures["light"], pictures["dark"])

    def test_fits_a_narrow_screen(self):
        browser.set_window_size(500, 900)
        width = browser.execute_script("return document.documentElement.scrollWidth - window.innerWidth")
        browser.set_window_size(1100, 1400)
        self.assertLessEqual(width, 0)

    def test_prints_everything_unfolded_without_the_filter(self):
        find("#fold")[0].click()
        sheet = browser.execute_cdp_cmd("Page.printToPDF", {"printBackground": True})["data"]
        data = base64.b64decode(sheet)
        self.assertTrue(data.startswith(b"%PDF-"))
        if programs.pictures:
            Path(programs.pictures, "report.pdf").write_bytes(data)
        self.assertGreater(len(find("details.kind:not([open])")), 0)  # folded again behind it
        emulate(media="print")
        self.assertEqual(shown("#filter"), [])

    def test_shows_all_without_scripts(self):
        browser.execute_cdp_cmd("Emulation.setScriptExecutionDisabled", {"value": True})
        browser.refresh()
        self.assertEqual(shown("#filter"), [])
        self.assertGreater(len(shown("details.kind")), 3)
        browser.execute_cdp_cmd("Emulation.setScriptExecutionDisabled", {"value": False})


def missing():
    """What is not there that the tests need."""
    things = [name for name in ("chromium", "chromedriver") if shutil.which(name) is None]
    try:
        import selenium  # noqa: F401
    except ImportError:
        things.append("python3-selenium")
    return things


def use_system_python():
    """Debian's module is there for Debian's own Python alone."""
    system = "/usr/bin/python3"
    if os.path.exists(system) and os.path.realpath(sys.executable) != os.path.realpath(system):
        os.execv(system, [system, "-B", *sys.argv])


if __name__ == "__main__":
    use_system_python()
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--cli", required=True)
    parser.add_argument("--pictures", help="a folder that keeps what was looked at")
    programs, rest = parser.parse_known_args()
    if os.environ.get("TESSALY_SKIP_BROWSER") == "1":
        print("The tests in a browser are left out: TESSALY_SKIP_BROWSER is 1.")
        sys.exit(SKIPPED)
    if missing():
        print("SKIPPED: the report is looked at in Chromium, and there is no " + ", no ".join(missing()) + " here.\n"
              "Install them (Debian: apt-get install chromium chromium-driver python3-selenium), or set "
              "TESSALY_SKIP_BROWSER=1.")
        sys.exit(SKIPPED)
    unittest.main(argv=[sys.argv[0], *rest])
