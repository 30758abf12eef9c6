#!/usr/bin/env python3
"""The pages of the service in a real browser: what people see, and what they can do there.

    pages_test.py SERVICE         SERVICE: the service's program
"""
import json
import pathlib
import re
import sqlite3
import subprocess
import sys
import tempfile
import unittest

HERE = pathlib.Path(__file__).resolve().parent
sys.path.append(str(HERE.parent / "support"))
import named_cases
from browser import Browser, Page

CONTENTS = bytes(range(256)) * 700
# Names in the scripts of the world, among them those that run from right to left, join their letters, or lie
# beyond the first plane; and what HTML would take for its own.
NAMES = {
    "latin": "Île-de-France, Łódź, Þórshöfn, Đà Nẵng",
    "combined": "A\u030aland, I\u0307zmir",
    "greek": "Πελοπόννησος",
    "cyrillic": "Кыргызстан, Београд",
    "georgian": "საქართველო",
    "armenian": "Հայաստան",
    "hebrew": "ירושלים (העיר העתיקה), 12",
    "arabic": "المملكة العربية السعودية",
    "devanagari": "भारत – हिन्दी",
    "tamil": "தமிழ்நாடு",
    "thai": "กรุงเทพมหานคร",
    "khmer": "កម្ពុជា",
    "chinese": "北京市、四川省",
    "japanese": "東京（とうきょう）ﾄｳｷｮｳ",
    "korean": "서울특별시",
    "ethiopic": "ኢትዮጵያ",
    "rare": "𠮷野家 𐍈 𝔐",
    "emoji": "🗺️ Map 🇨🇭 👩‍👩‍👧",
    "marks": "<b>Bold</b> & \"quoted\" 'apostrophes' &amp; &#65; </td></table>"
             "<script>document.title = 1</script>",
    "blanks": "\u00a0Nobreak\u200bzero\u202eoverride",
    "long": "Llanfairpwllgwyngyll" * 9,
}
TITLE = "Name or password forgotten?"
SIZES = [0, 1, 9, 10, 999, 1000, 65536, 2147483647]
SCREENS = [(1280, 800), (1024, 768), (800, 480), (640, 480), (480, 640), (320, 240), (240, 320), (176, 220)]


class Service:
    """The service with a catalogue of its own; two of the maps have a file."""

    def __init__(self, program):
        self.folder = tempfile.TemporaryDirectory()
        data = pathlib.Path(self.folder.name)
        self.process = subprocess.Popen([program, "--port", "0", "--made-up", "0", "--data", data],
                                        stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                                        stderr=subprocess.DEVNULL, text=True)
        self.port = int(re.fullmatch(r"listening on port (\d+)\n", self.process.stdout.readline())[1])
        self.address = f"http://127.0.0.1:{self.port}"
        (data / "maps").mkdir(exist_ok=True)
        for script in ("latin", "hebrew"):
            (data / "maps" / f"{script}.map").write_bytes(CONTENTS)
        with sqlite3.connect(data / "catalogue.db") as catalogue:
            for number, (script, name) in enumerate(NAMES.items()):
                catalogue.execute(
                    "INSERT INTO map (name, kilobytes, path, description, south, west, north, east)"
                    " VALUES (?, ?, ?, ?, -9000000, -18000000, 9000000, 18000000)",
                    (name, SIZES[number % len(SIZES)], f"/maps/{script}.map", f"{name}: {name}"))

    def close(self):
        self.process.terminate()
        self.process.wait()
        self.process.stdout.close()
        self.folder.cleanup()


class Pages(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.service = Service(sys.argv[1])
        cls.addClassCleanup(cls.service.close)
        cls.browser = Browser()
        cls.addClassCleanup(cls.browser.close)

    def setUp(self):
        self.page = self.opened("/")

    def opened(self, path, **settings):
        page = Page(self.browser, **settings)
        self.addCleanup(page.close)
        page.open(self.service.address + path)
        return page

    def cells(self, selector):
        return self.page.value(f"[...document.querySelectorAll({json.dumps(selector)})]"
                               ".map(cell => cell.textContent)")

    def edges(self, selector, side):
        """Where the texts of elements begin ("left") or end ("right"), each distance once."""
        return self.page.value(f"""[...new Set([...document.querySelectorAll("{selector}")].map(element => {{
            const range = document.createRange();
            range.selectNodeContents(element);
            return Math.round(range.getBoundingClientRect().{side});
        }}))]""")


class Catalogue(Pages):
    def test_names_of_every_script_are_shown_as_they_are(self):
        self.assertEqual(sorted(NAMES.values()), self.cells("td.name"))

    def test_descriptions_are_shown_as_they_are(self):
        self.assertEqual(sorted(f"{name}: {name}" for name in NAMES.values()), self.cells("td:last-child"))

    def test_texts_are_no_html(self):
        self.assertEqual("Orvande map shop", self.page.value("document.title"))
        self.assertEqual([], self.cells("b, script"))
        self.assertEqual(len(NAMES), self.page.value("document.querySelectorAll('tbody tr').length"))

    def test_rows_have_size_path_and_area(self):
        rows = dict(zip(self.cells("td.path"), zip(self.cells("td.size"), self.cells("td.area"))))
        area = "-90.00000, -180.00000, 90.00000, 180.00000"
        self.assertEqual({f"/maps/{script}.map": (str(SIZES[number % len(SIZES)]), area)
                          for number, script in enumerate(NAMES)}, rows)

    def test_sizes_stand_below_each_other(self):
        self.page.resize(1280, 800)
        self.assertEqual(1, len(self.edges("td.size", "right")))

    def test_names_from_right_to_left_begin_where_the_others_do(self):
        for screen in (1280, 800), (240, 320):
            self.page.resize(*screen)
            self.assertEqual(1, len(self.edges("td.name bdi", "left")), screen)
        self.assertEqual(sorted([NAMES["hebrew"], NAMES["arabic"]]), self.cells("td.name bdi:dir(rtl)"))

    def test_descriptions_from_right_to_left_begin_on_the_right(self):
        texts = sorted(f"{name}: {name}" for name in (NAMES["hebrew"], NAMES["arabic"]))
        self.assertEqual(texts, self.cells("td:last-child:dir(rtl)"))


class Download(Pages):
    def test_maps_that_have_a_file_are_links(self):
        self.assertEqual(["/maps/latin.map", "/maps/hebrew.map"], self.cells("a"))

    def test_a_click_saves_the_file(self):
        for screen in (1280, 800), (240, 320):
            self.page.resize(*screen)
            with tempfile.TemporaryDirectory() as folder:
                self.page.save_downloads_in(folder)
                self.page.click("a[href='/maps/hebrew.map']")
                self.assertEqual("hebrew.map", self.page.downloaded())
                self.assertEqual(CONTENTS, (pathlib.Path(folder) / "hebrew.map").read_bytes())
            self.assertEqual("/", self.page.value("location.pathname"))


class Screen(Pages):
    def test_nothing_is_wider_than_the_screen(self):
        for path in ("/", "/forgot.htm"):
            self.page.open(self.service.address + path)
            for width, height in SCREENS:
                self.page.resize(width, height)
                seen = self.page.value(
                    "[document.documentElement.scrollWidth, innerWidth, visualViewport.scale]")
                self.assertEqual([width, width, 1], seen, path)

    def test_no_text_is_cut(self):
        for screen in SCREENS:
            self.page.resize(*screen)
            cut = self.page.value("""[...document.querySelectorAll("td, th, p, h1")]
                .filter(element => element.scrollWidth > element.clientWidth && element.clientWidth)
                .map(element => element.textContent)""")
            self.assertEqual([], cut, screen)

    def test_a_narrow_screen_shows_rows_as_blocks(self):
        self.page.resize(240, 320)
        self.assertEqual(["block"], self.page.value("""[...new Set(
            [...document.querySelectorAll("tbody tr, td")].map(part => getComputedStyle(part).display))]"""))
        self.assertEqual('" KB"', self.page.value(
            'getComputedStyle(document.querySelector("td.size"), "::after").content'))
        self.page.resize(1280, 800)
        self.assertEqual("table-cell", self.page.value(
            'getComputedStyle(document.querySelector("td.size")).display'))


class Forgotten(Pages):
    def setUp(self):
        self.page = self.opened("/forgot.htm")

    def test_it_says_what_to_do(self):
        self.assertEqual(TITLE, self.page.value("document.querySelector('h1').innerText"))
        self.assertIn("create a new account", self.page.value("document.body.innerText"))

    def test_its_link_leads_to_the_map_shop(self):
        self.page.resize(176, 220)
        self.page.follow("a")
        self.assertEqual("/", self.page.value("location.pathname"))
        self.assertEqual("Orvande map shop", self.page.value("document.title"))

    def test_it_is_found_through_the_service_as_a_proxy(self):
        """As the sign-in dialog opens it, at the library's host."""
        page = Page(self.browser, proxy=f"127.0.0.1:{self.service.port}")
        self.addCleanup(page.close)
        page.open("http://www.orvande.example/forgot.htm?language=English")
        self.assertEqual(TITLE, page.value("document.querySelector('h1').innerText"))


if __name__ == "__main__":
    named_cases.main()
