"""The page of --html in a real browser, on the bundled models and on the real ones beside them."""

import html
import math
import pathlib
import re
import tempfile
import unittest

from browser import BUNDLED, ROOT, SHARED, chromium, report_of, settle, show, write_page
from selenium.webdriver.common.action_chains import ActionChains
from selenium.webdriver.common.actions.action_builder import ActionBuilder
from selenium.webdriver.common.by import By
from selenium.webdriver.common.keys import Keys

MODELS = sorted((ROOT / "models").iterdir())
REAL = sorted(SHARED.glob("*.qif")) + sorted(SHARED.glob("step/*.st*p"))
PIXELS = """
  return [...document.querySelectorAll("#viewer canvas")].map((canvas) => canvas.toDataURL());
"""
DRAWN = """
  const canvas = document.querySelector(arguments[0]);
  const flat = document.createElement("canvas");
  [flat.width, flat.height] = [canvas.width, canvas.height];
  const context = flat.getContext("2d");
  context.drawImage(canvas, 0, 0);
  const { data } = context.getImageData(0, 0, flat.width, flat.height);
  return data.filter((value, i) => i % 4 === 3 && value > 0).length / (data.length / 4);
"""


def on_each_model(test):
    def run(self):
        for model in MODELS + REAL:
            with self.subTest(model=model.name):
                test(self, model)

    return run


class PageTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = pathlib.Path(cls.enterClassContext(tempfile.TemporaryDirectory()))
        cls.browser = cls.enterClassContext(chromium())
        cls.browser.set_script_timeout(60)
        cls.pages = {}
        if not REAL:
            print("the real models are absent: the bundled ones alone are tested")

    # --- Helpers ---

    def page_of(self, model):
        if model not in self.pages:
            self.pages[model] = self.folder / (model.name + ".html")
            write_page(model, self.pages[model])
        return self.pages[model]

    def open(self, model):
        """Opens the page of a model and returns after how many seconds it was shown."""
        self.report = report_of(model)
        page = self.page_of(model)
        self.browser.get_log("performance")
        return show(self.browser, page)

    def run_script(self, script, *arguments):
        return self.browser.execute_script(script, *arguments)

    def find(self, selector):
        return self.browser.find_element(By.CSS_SELECTOR, selector)

    def viewer(self, name):
        settle(self.browser)
        return self.find("#viewer").get_attribute("data-" + name)

    def click(self, selector):
        self.run_script("document.querySelector(arguments[0]).click()", selector)

    def names(self, selector, name):
        script = "return [...document.querySelectorAll(arguments[0])].map((e) => e.dataset[arguments[1]])"
        return self.run_script(script, selector, name)

    def assert_near(self, actual, expected, tolerance):
        self.assertEqual(len(actual), len(expected))
        for a, b in zip(actual, expected):
            self.assertLessEqual(abs(a - b), tolerance, f"{actual} is not {expected}")

    # --- What holds on every model ---

    @on_each_model
    def test_opens_in_silence_with_a_row_for_each_annotation(self, model):
        seconds = self.open(model)
        self.assertLess(seconds, 3)
        severe = [e["message"] for e in self.browser.get_log("browser") if e["level"] == "SEVERE"]
        self.assertEqual(severe, [])
        asked = [
            url
            for entry in self.browser.get_log("performance")
            if '"Network.requestWillBeSent"' in entry["message"]
            for url in re.findall(r'"url":"((?!file:|data:|blob:|chrome)[^"]*)"', entry["message"])
        ]
        self.assertEqual(asked, [])
        places = self.names("#list [data-annotation]", "index")
        self.assertEqual(
            sorted(places),
            sorted(
                f"{v}:{a}"
                for v, view in enumerate(self.report["views"])
                for a in range(len(view["annotations"]))
            ),
        )
        for canvas in (".part", ".notes"):
            self.assertGreater(self.run_script(DRAWN, "#viewer " + canvas), 1e-4, canvas)

    @on_each_model
    def test_a_saved_view_moves_the_camera_and_shows_its_members_alone(self, model):
        self.open(model)
        size = self.run_script("return Page.viewer.model.size")
        seen = {}  # pictures, by what makes them different
        for i, capture in enumerate(self.report["captures"]):
            self.click(f'#captures [data-index="{i}"]')
            self.assertEqual(self.viewer("capture"), capture["id"] or "")
            numbers = [float(number) for number in self.viewer("camera").split()]
            camera = capture["camera"]
            if camera:
                self.assert_near(numbers[0:3], camera["origin"], 1e-6 * size)
                self.assert_near(numbers[3:6], camera["viewDirection"], 1e-6)
                self.assert_near(numbers[6:9], camera["viewDirectionNormal"], 1e-6)
                self.assert_near([numbers[9] / camera["zoom"]], [1], 1e-6)
                self.assertEqual(self.viewer("projection"), camera["type"])
            shown = set(self.names("#list [data-annotation]:not([data-hidden])", "annotation"))
            self.assertEqual(shown, set(capture["members"]["ids"]))
            look = [round(number, 2) for number in numbers[3:]]
            seen[str([look, capture["clippingPlane"], sorted(shown)])] = str(self.run_script(PIXELS))
        self.assertEqual(len(set(seen.values())), len(seen), "different views, the same picture")

    @on_each_model
    def test_a_chosen_annotation_lights_exactly_its_entities(self, model):
        self.open(model)
        for v, view in enumerate(self.report["views"]):
            for a, annotation in enumerate(view["annotations"]):
                self.click(f'#list [data-index="{v}:{a}"]')
                ids = {entity["id"] for entity in annotation["entities"]} - {None}
                self.assertEqual(set(self.viewer("lit").split()), ids)
                self.assertEqual(set(self.names("[data-entity][data-lit]", "entity")), ids)
                self.assertEqual(self.names("#list [aria-selected=true]", "index"), [f"{v}:{a}"])
                self.assert_explained(annotation)
        self.run_script("document.querySelector('#list').scrollTop = 0")
        self.click(f'#list [data-index="{v}:{a}"]')
        for _ in range(5):
            settle(self.browser)
        script = """const box = (selector) => document.querySelector(selector).getBoundingClientRect();
            return [box("#list").top, box("#list [data-chosen]").top, box("#list").bottom]"""
        places = self.run_script(script)
        self.assertEqual(places, sorted(places), "the chosen row is not in sight")
        self.find("body").send_keys(Keys.ESCAPE)
        self.assertEqual(self.viewer("lit"), "")

    def assert_explained(self, annotation):
        """The details name what it applies to, and its datums with what those are, each for a click."""
        by_id = {a["id"]: a for view in self.report["views"] for a in view["annotations"]}
        datums = [
            datum["id"]
            for row in annotation.get("tolerance", {"rows": []})["rows"]
            for reference in (row["frame"] or {"references": []})["references"]
            for datum in reference["datums"]
        ]
        is_silent = annotation["kind"] in ("text", "flagNote") and not any(t["string"] for t in annotation["texts"])
        details = self.run_script("return document.querySelector('#details').textContent")
        self.assertEqual("The report has no text of it." in details, is_silent)
        named = [annotation, *(by_id[id] for id in datums if id in by_id)]
        entities = {e["id"] for one in named for e in one["entities"]} - {None}
        self.assertEqual(set(self.names("#details [data-entity]", "entity")), entities)
        self.assertLessEqual({id for id in datums if id in by_id}, set(self.names("#details [data-refers]", "refers")))

    @on_each_model
    def test_a_clicked_face_lists_exactly_its_annotations(self, model):
        self.open(model)
        applied = {e["id"]: e["annotations"] for e in self.report["entities"] if e["kind"] == "face"}
        faces = self.run_script("return Page.viewer.model.drawing.faces")
        clicked = 0
        for button in ("4", "1", "2", "3"):
            self.find("#viewer").send_keys(button)
            settle(self.browser)
            for face in sorted(faces, key=lambda face: face["id"] not in applied):
                if clicked < 6 and self.click_on_face(face, faces):
                    clicked += 1
                    self.assertEqual(self.viewer("picked"), face["id"])
                    expected = [id for id in applied.get(face["id"], []) if id is not None]
                    self.assertEqual(self.names("#details [data-refers]", "refers"), expected)
                    self.assertEqual(sorted(self.names("#list [data-annotation][data-lit]", "annotation")), sorted(expected))
        self.assertGreater(clicked, 1 if faces else -1)

    def click_on_face(self, face, faces):
        """Clicks on a face's largest triangle; says no where something else is before it."""
        point = lambda face, i: face["points"][3 * i : 3 * i + 3]
        minus = lambda a, b: [x - y for x, y in zip(a, b)]
        cross = lambda a, b: [a[(i + 1) % 3] * b[(i + 2) % 3] - a[(i + 2) % 3] * b[(i + 1) % 3] for i in range(3)]
        dot = lambda a, b: sum(x * y for x, y in zip(a, b))
        corners = lambda face: (
            [point(face, i) for i in face["triangles"][k : k + 3]] for k in range(0, len(face["triangles"]), 3)
        )
        area = lambda t: math.dist((0, 0, 0), cross(minus(t[1], t[0]), minus(t[2], t[0])))
        largest = max(corners(face), key=area, default=None)
        if largest is None:
            return False
        centre = [sum(values) / 3 for values in zip(*largest)]
        places = "return arguments[0].map((point) => Page.viewer.picture.camera.project(point))"
        (x, y), *flat = self.run_script(places, [centre, *largest])
        left, top = self.run_script(
            "const box = document.querySelector('#viewer').getBoundingClientRect(); return [box.left, box.top]"
        )
        x, y = round(left + x) - left, round(top + y) - top  # the pointer stands on whole pixels
        (ax, ay), (bx, by) = minus(flat[1], flat[0]), minus(flat[2], flat[0])
        round_about = sum(math.dist(flat[i], flat[i - 1]) for i in range(3))
        if abs(ax * by - ay * bx) < 3 * round_about:
            return False  # less than three pixels to its sides: the pointer may miss it
        covered = """const { overlay, solid, camera } = Page.viewer.picture;
            const [x, y] = arguments;
            const isNear = ([u, v]) => Math.hypot(u - x, v - y) < 8;
            const places = solid.vertices.map(({ points }) => camera.project(points));
            return overlay.pick(x, y) !== null || places.some(isNear)"""
        if self.run_script(covered, x, y):
            return False
        direction = [float(number) for number in self.viewer("camera").split()[3:6]]
        depth = dot(centre, direction)
        for other in faces:
            if other is face:
                continue
            for t in corners(other):
                u, v, w = minus(t[1], t[0]), minus(t[2], t[0]), minus(centre, t[0])
                across = dot(cross(u, v), direction)
                if abs(across) < 1e-12:
                    continue
                k = -dot(cross(u, v), w) / across  # from the centre along the sight
                hit = [x + k * d for x, d in zip(w, direction)]
                a = dot(cross(hit, v), direction) / across
                b = dot(cross(u, hit), direction) / across
                if min(a, b, 1 - a - b) > -1e-3 and k < 1e-6 * max(1, abs(depth)):
                    return False
        mouse = ActionBuilder(self.browser, duration=0)
        mouse.pointer_action.move_to_location(round(left + x), round(top + y)).click()
        mouse.perform()
        return True

    @on_each_model
    def test_a_vertex_lights_up_where_it_is_and_can_be_picked(self, model):
        self.open(model)
        applied = {e["id"]: e["annotations"] for e in self.report["entities"] if e["kind"] == "vertex"}
        self.click("#captures button")
        chosen = self.run_script("return getComputedStyle(document.documentElement).getPropertyValue('--chosen').trim()")
        place = """const { picture, model } = Page.viewer;
            const [x, y] = picture.camera.project(model.vertices.get(arguments[0]).points);
            const box = document.querySelector("#viewer").getBoundingClientRect();
            const data = document.querySelector(".notes").getContext("2d").getImageData(x, y, 1, 1).data;
            const color = "#" + [...data.slice(0, 3)].map((n) => n.toString(16).padStart(2, "0")).join("");
            return [color, box.left + x, box.top + y, picture.solid.isInSight(picture.camera, model.vertices.get(arguments[0]).points)]"""
        picked = 0
        for vertex, annotations in applied.items():
            self.find("body").send_keys(Keys.ESCAPE)
            settle(self.browser)
            self.assertNotEqual(self.run_script(place, vertex)[0], chosen)
            self.click(f'#list [data-annotation="{annotations[0]}"]')
            settle(self.browser)
            color, x, y, is_in_sight = self.run_script(place, vertex)
            self.assertEqual(color, chosen, "the marker has its colour")
            if is_in_sight and picked < 3:
                mouse = ActionBuilder(self.browser, duration=0)
                mouse.pointer_action.move_to_location(round(x), round(y)).click()
                mouse.perform()
                if self.viewer("picked"):  # no annotation stands before it
                    self.assertEqual(self.viewer("picked"), vertex)
                    self.assertEqual(self.names("#details [data-refers]", "refers"), annotations)
                    picked += 1
        self.assertGreater(picked, 0 if applied else -1)

    @on_each_model
    def test_the_whole_part_is_not_made_small_by_what_stands_far_off(self, model):
        self.open(model)
        share = """const { picture, model } = Page.viewer;
            const { camera } = picture;
            const points = model.drawing.edges.flatMap(({ points }) => points.map((_, i) => points.slice(i, i + 3)))
                .filter((_, i) => i % 3 === 0).map((point) => camera.project(point));
            const span = (k) => Math.max(...points.map((p) => p[k])) - Math.min(...points.map((p) => p[k]));
            return Math.max(span(0) / camera.width, span(1) / camera.height)"""
        self.click("#captures button")
        settle(self.browser)
        self.assertGreater(self.run_script(share), 0.45)
        # One that is asked for is in the picture, wherever it stands.
        far = """const { model, picture } = Page.viewer;
            const far = ({ place }) => Page.length(Page.subtract(place.at, model.box.centre()));
            return model.annotations.filter(({ place }) => place).sort((a, b) => far(b) - far(a))[0].index"""
        self.click(f'#list [data-index="{self.run_script(far)}"]')
        self.click("#details .buttons button")
        settle(self.browser)
        inside = """const { picture, state } = Page.viewer;
            const [x, y] = picture.camera.project(state.chosen.place.at);
            return x > 0 && x < picture.camera.width && y > 0 && y < picture.camera.height"""
        self.assertTrue(self.run_script(inside))

    @on_each_model
    def test_findings_are_counted_listed_and_lead_to_what_they_are_about(self, model):
        page = self.folder / (model.name + ".checked.html")
        write_page(model, page, "--check")
        show(self.browser, page)
        report = report_of(model, "--check")
        findings = report["checks"]["findings"]
        counts = [int(n) for n in re.findall(r"\d+", self.find("header a[href='#findings']").text)]
        self.assertEqual(sum(counts), len(findings))
        self.assertEqual(len(self.names("#findings tbody tr", "x")), len(findings))
        ids = {a["id"] for view in report["views"] for a in view["annotations"]}
        expected = {f["annotation"] for f in findings} & ids
        rows = """return [...document.querySelectorAll("#list [data-annotation]")]
            .filter((row) => row.querySelector(".findings")).map((row) => row.dataset.annotation)"""
        self.assertEqual(set(self.run_script(rows)), expected)
        links = self.names("#findings a[data-place]", "place")
        for place in links[:5]:
            self.click(f'#findings a[data-place="{place}"]')
            self.assertEqual(self.names("#list [aria-selected=true]", "index"), [place])
            chosen = self.viewer("chosen")
            said = self.names("#details section [data-severity]", "severity")
            self.assertEqual(said, [f["severity"] for f in findings if f["annotation"] == chosen])
        self.assertEqual(bool(links), bool(expected))

    # --- The rest, on the bundled model ---

    def test_a_click_that_hits_nothing_keeps_the_choice(self):
        self.open(BUNDLED)
        self.click("#list [data-annotation] [data-entity]")
        first = self.names("#list [data-annotation]", "annotation")[0]
        self.assertEqual(self.viewer("chosen"), first, "a row is chosen wherever it is clicked")
        corner = self.run_script("const box = document.querySelector('#viewer').getBoundingClientRect(); return [box.right - 9, box.top + 9]")
        mouse = ActionBuilder(self.browser, duration=0)
        mouse.pointer_action.move_to_location(*map(round, corner)).click()
        mouse.perform()
        self.assertEqual(self.viewer("chosen"), first)

    def test_what_the_document_hides_is_not_drawn_but_a_part_hidden_as_a_whole_is(self):
        source = BUNDLED.read_text(encoding="utf-8")
        drawn = []
        for hidden in ([], ["SOLID"], ["SOLID", "WIRE"]):
            model = self.folder / f"hidden{len(hidden)}.qif"
            text = re.sub(rf'form="({"|".join(hidden) or "none"})"', r'form="\1" hidden="true"', source)
            model.write_text(text, encoding="utf-8")
            show(self.browser, self.page_of(model))
            script = "const { edges, faces } = Page.viewer.model.drawing; return [edges.length, faces.length]"
            drawn.append(self.run_script(script))
        whole, wires, all_hidden = drawn
        self.assertEqual((whole, wires), ([49, 18], [2, 0]))
        self.assertEqual(all_hidden, whole)

    def test_the_search_finds_and_the_filter_leaves_one_kind(self):
        self.open(BUNDLED)
        rows = "#list table:not([hidden]) [data-annotation]:not([hidden])"
        self.find("#search").send_keys("bore")
        names = {
            f"{v}:{a}"
            for v, view in enumerate(self.report["views"])
            for a, annotation in enumerate(view["annotations"])
            if "bore" in str([annotation["name"], annotation["entities"], annotation["texts"]]).lower()
        }
        settle(self.browser)
        self.assertEqual(set(self.names(rows, "index")), names)
        self.find("#search").clear()
        self.find("#kind").send_keys("Surface")
        settle(self.browser)
        self.assertEqual(len(self.names(rows, "index")), self.report["totals"]["roughness"])

    def test_the_keyboard_reaches_everything(self):
        self.open(BUNDLED)
        reached = set()
        for _ in range(60):
            self.browser.switch_to.active_element.send_keys(Keys.TAB)
            reached.add(self.run_script("const e = document.activeElement; return e.id || e.tagName + e.textContent"))
        buttons = self.run_script("return [...document.querySelectorAll('main button:not([hidden])')].map((b) => b.textContent)")
        expected = {"search", "kind", "viewer", *("BUTTON" + text for text in buttons)}
        self.assertEqual(expected - reached, set())
        self.assertTrue(any(one.startswith("TR") for one in reached), reached)
        self.find("#search").send_keys(Keys.ARROW_DOWN)
        ActionChains(self.browser).send_keys(Keys.ARROW_DOWN, Keys.ENTER).perform()
        second = self.names("#list [data-annotation]", "annotation")[1]
        self.assertEqual(self.viewer("chosen"), second)
        shift_left = Keys.SHIFT + Keys.ARROW_LEFT + Keys.NULL
        for key, changed in ((Keys.ARROW_LEFT, 3), (Keys.ARROW_UP, 3), (shift_left, 0), ("+", 9), ("-", 9)):
            before = self.viewer("camera").split()[changed]
            self.find("#viewer").send_keys(key)
            self.assertNotEqual(self.viewer("camera").split()[changed], before, f"key {key!r}")
        self.find("#viewer").send_keys("1", "p")
        self.assertEqual(self.viewer("projection"), "perspective")
        self.assert_near([float(n) for n in self.viewer("camera").split()[3:9]], [0, 1, 0, 0, 0, 1], 1e-9)
        self.find("#viewer").send_keys(Keys.ESCAPE)
        self.assertEqual(self.viewer("chosen"), "")

    def test_dark_and_print_differ_from_light(self):
        self.open(BUNDLED)
        light = self.browser.get_screenshot_as_png()
        dark = {"features": [{"name": "prefers-color-scheme", "value": "dark"}]}
        self.browser.execute_cdp_cmd("Emulation.setEmulatedMedia", dark)
        settle(self.browser)
        self.assertNotEqual(self.browser.get_screenshot_as_png(), light)
        pixels = self.run_script(PIXELS)
        self.run_script("dispatchEvent(new Event('beforeprint'))")
        self.assertNotEqual(self.run_script(PIXELS), pixels)
        self.run_script("dispatchEvent(new Event('afterprint'))")
        # On paper everything stands below each other.
        size = {"width": 794, "height": 1123, "deviceScaleFactor": 1, "mobile": False}
        self.browser.execute_cdp_cmd("Emulation.setEmulatedMedia", {"media": "print"})
        self.browser.execute_cdp_cmd("Emulation.setDeviceMetricsOverride", size)
        parts = """return [...document.querySelectorAll("main > *, #list table")].filter((e) => e.offsetHeight > 0)
            .filter((e) => e.scrollHeight > e.clientHeight + 1 || e.scrollWidth > e.clientWidth + 1).map((e) => e.id)"""
        self.assertEqual(self.run_script(parts), [])
        size = {**size, "width": 1280, "height": 800}
        self.browser.execute_cdp_cmd("Emulation.setDeviceMetricsOverride", size)
        self.browser.execute_cdp_cmd("Emulation.setEmulatedMedia", {"media": "", "features": []})
        self.assertGreater(len(self.browser.execute_cdp_cmd("Page.printToPDF", {})["data"]), 50000)

    def test_markup_in_a_document_stays_text(self):
        hostile = "</script><script>document.title='hit'</script><img src=x onerror=\"document.title='hit'\">'&\u202e"
        source = BUNDLED.read_text(encoding="utf-8")
        model = self.folder / "hostile.qif"
        texts = r"(<(Name|Data|Text|Label|DatumLabel)\b[^>]*>)[^<]*(?=</)"
        source = re.sub(texts, lambda m: m[1] + html.escape(hostile), source)
        model.write_text(re.sub(r'\blabel="[^"]*"', f'label="{html.escape(hostile)}"', source), encoding="utf-8")
        show(self.browser, self.page_of(model))
        for index in self.names("#list [data-annotation]", "index"):
            self.click(f'#list [data-index="{index}"]')
        settle(self.browser)
        self.assertNotEqual(self.browser.title, "hit")
        self.assertEqual(self.browser.find_elements(By.CSS_SELECTOR, "img, main script"), [])
        for place in ("#list", "#details", "#captures"):
            text = self.find(place).get_attribute("textContent")
            self.assertIn("<img src=x onerror=", text, place)
            self.assertNotIn("\u202e", text, place)

    def test_without_webgl_or_script_the_pictures_are_shown(self):
        page = self.page_of(BUNDLED)
        with chromium("--disable-3d-apis") as browser:
            show(browser, page, "pictures")
            self.assertTrue(browser.find_element(By.CSS_SELECTOR, "#pictures svg").is_displayed())
            self.assertIn("WebGL", browser.find_element(By.CSS_SELECTOR, "#viewer .warning").text)
            browser.execute_cdp_cmd("Emulation.setScriptExecutionDisabled", {"value": True})
            browser.get(page.as_uri())
            self.assertTrue(browser.find_element(By.CSS_SELECTOR, "#pictures svg").is_displayed())
            self.assertTrue(browser.find_element(By.CSS_SELECTOR, "#list [data-annotation]").is_displayed())


if __name__ == "__main__":
    unittest.main(verbosity=2)
