"""Compares pages with the JSON reports of the same models: check_page.py PROGRAM MODEL ...

A page must hold every annotation, entity, capture and account entry once, and nothing that asks for
anything from elsewhere or that its own content security policy forbids."""
import base64
import collections
import hashlib
import html.parser
import json
import subprocess
import sys


class Page(html.parser.HTMLParser):
    VOID = {"meta", "br", "link", "img", "input"}

    def __init__(self, text):
        super().__init__()
        self.elements = []  # (name, attributes, text pieces)
        self.open = []
        self.feed(text)
        self.close()
        assert not self.open, "left open: " + str([e[0] for e in self.open])

    def handle_starttag(self, name, attributes):
        element = (name, dict(attributes), [])
        assert len(element[1]) == len(attributes), "an attribute twice"
        self.elements.append(element)
        if name not in self.VOID:
            self.open.append(element)

    def handle_startendtag(self, name, attributes):
        self.elements.append((name, dict(attributes), []))

    def handle_endtag(self, name):
        assert self.open and self.open[-1][0] == name, "closes " + name
        self.open.pop()

    def handle_data(self, data):
        for element in self.open:
            element[2].append(data)

    def find(self, name=None, attribute=None, value=None):
        return [(n, a, "".join(t)) for n, a, t in self.elements
                if name in (None, n) and (attribute is None or attribute in a)
                and value in (None, a.get(attribute))]


def check(program, model):
    run = lambda *options: subprocess.run([program, *options, model], stdout=subprocess.PIPE,
                                          stderr=subprocess.DEVNULL).stdout.decode()
    report = json.loads(run("--json"))
    page = Page(run("--html", "-"))
    (_, _, told), = page.find("script", "id", "report")
    told = json.loads(told)
    # What of the geometry is not in the picture is said on the page alone.
    extra = [e for e in told["source"]["skipped"] if e not in report["source"]["skipped"]]
    assert all(e["severity"] == "ignored" for e in extra), extra
    source = report["source"]
    source["skipped"] += extra
    for total in ("ignored", "skippedCount"):
        source[total] += sum(e["count"] for e in extra)
    source["skipped"].sort(key=str)
    told["source"]["skipped"].sort(key=str)
    assert told == report, "the report differs"

    # Everything that the policy names is there, and nothing else runs.
    (_, meta, _), = page.find("meta", "http-equiv", "Content-Security-Policy")
    policy = dict((d.split()[0], d.split()[1:]) for d in meta["content"].split(";"))
    assert policy["default-src"] == ["'none'"]
    for element in ("script", "style"):
        texts = [t for _, a, t in page.find(element) if "type" not in a]
        hashes = ["'sha256-%s'" % base64.b64encode(hashlib.sha256(t.encode()).digest()).decode()
                  for t in texts]
        assert texts and hashes == policy[element + "-src"], element
    for name, attributes, _ in page.elements:
        for attribute, value in attributes.items():
            assert attribute != "style" and not attribute.startswith("on"), attribute
            assert attribute not in ("href", "src") or value.startswith("#"), value
    ids = collections.Counter(a["id"] for _, a, _ in page.find(attribute="id"))
    assert max(ids.values()) == 1, ids
    for _, attributes, _ in page.find(attribute="href"):
        assert attributes["href"][1:] in ids, attributes

    # A row for each annotation.
    rows = page.find("tr", "data-annotation")
    assert len({a["data-annotation"] for _, a, _ in rows}) == len(rows)
    places = sorted(tuple(map(int, a["data-index"].split(":"))) for _, a, _ in rows)
    assert places == [(v, i) for v, view in enumerate(report["views"])
                      for i in range(len(view["annotations"]))], "rows"
    annotations = [a for view in report["views"] for a in view["annotations"]]
    assert sorted(a["data-entity"] for _, a, _ in page.find("li", "data-entity")) == sorted(
        e["id"] for a in annotations for e in a["entities"] if e["id"] is not None)
    for _, attributes, _ in rows:
        view, place = map(int, attributes["data-index"].split(":"))
        own = report["views"][view]["annotations"][place]["id"]
        assert attributes["data-annotation"] == own, "ids of real models are their own"

    captures = report["captures"]
    assert [a["data-capture"] for _, a, _ in page.find("a", "data-capture")] == [
        c["id"] for c in captures]
    assert len(page.find("figure")) == max(len(captures), 1)
    for severity in ("lost", "reduced", "ignored"):
        (_, _, text), = page.find("span", "data-severity", severity)
        assert text == "%d %s" % (report["source"][severity], severity)
    print("%s: %d rows" % (model, len(rows)))


for each in sys.argv[2:]:
    check(sys.argv[1], each)
