#!/usr/bin/env python3
"""Compares what pmi_report says about STEP AP242 files with what the files state.

    compare_with_step.py PMI_REPORT MODEL.stp...

Reads each file on its own, without the host's reader, with the counts and texts that it carries
about itself. Prints for every model how many values were compared and each that differs (instance,
what, file, report). Exit code 1 when one differs, or fewer were compared than the file's PMI needs.
"""

import json
import math
import re
import subprocess
import sys
from collections import Counter
from itertools import repeat

sys.dont_write_bytecode = True  # the sources' folder stays as it is
from step_exchange import MODIFIERS, Exchange, dot

DOUBLE, FLOAT = 1e-9, 1e-6  # relative: the plug-in hands planes and places out as float
PER_INSTANCE = 10  # values compared at least for each tolerance, dimension, datum and target
PMI = (r"\b(?:(?!PLUS_MINUS)[A-Z]+_TOLERANCE|(?:DIMENSIONAL|ANGULAR)_(?:SIZE|LOCATION)|DATUM"
       r"|PLACED_DATUM_TARGET_FEATURE)\s*\(\s*['#]")
LETTERS = {"Ⓜ": "maximumMaterial", "Ⓛ": "leastMaterial", "Ⓕ": "freeState", "Ⓣ": "tangentPlane",
           "Ⓟ": "projectedZone", "[ST]": "statisticalTolerance", "MAX": "maximumTolerance"}
SYMBOLS = {"⌓": "surfaceProfile", "⌖": "position", "⊥": "perpendicularity", "∠": "angularity",
           "∥": "parallelism", "▱": "flatness", "⌒": "lineProfile"}
TARGETS = "PLACED_DATUM_TARGET_FEATURE", "DATUM_TARGET"
ZONES = {"cylindrical or circular": "diametrical", "spherical": "spherical"}
SIZES = "DIMENSIONAL_SIZE", "ANGULAR_SIZE"
LOCATIONS = "DIMENSIONAL_LOCATION", "ANGULAR_LOCATION", "DIRECTED_DIMENSIONAL_LOCATION"
DIMENSIONS = {"diameter": ("diameter", "diametral"), "radius": ("radius", "radial"),
              "linear distance": ("distance", "linear"), "thickness": ("thickness", "linear"),
              "angle": ("angleBetween", "angular")}
LINKS = "DRAUGHTING_MODEL_ITEM_ASSOCIATION", "DRAUGHTING_MODEL_ITEM_ASSOCIATION_WITH_PLACEHOLDER"
CAMERAS = "CAMERA_MODEL_D3", "CAMERA_MODEL_D3_MULTI_CLIPPING"
LINEAR = {"mm": 1e-3, "cm": 1e-2, "m": 1.0, "inch": 0.0254}


def close(want, got, limit, scale):
    if isinstance(want, (list, tuple)) and isinstance(got, (list, tuple)):
        return len(want) == len(got) and all(map(close, want, got, repeat(limit), repeat(scale)))
    if isinstance(want, float) and isinstance(got, (int, float)):
        return abs(want - got) <= limit * max(abs(want), abs(got), scale)
    return want == got


class Comparison:
    def __init__(self, file, report):
        self.file, self.report, self.compared, self.different = file, report, 0, []
        self.left = [(v["frame"], a) for v in report["views"] for a in v["annotations"]]
        self.joined = {}  # (frame, annotation) by instance
        self.stands_for = {}  # lower rows and datum features: instance of the annotation
        self.listed = {s["id"]: s["reason"] for s in report["source"]["skipped"]}
        self.check("-", "length unit", file.unit, LINEAR.get(report["source"]["linearUnit"]))

    def check(self, number, what, want, got, limit=DOUBLE, scale=0.0):
        self.compared += 1
        if not close(want, got, limit, scale):
            self.different.append((number, what, want, got))

    def join(self, kind, n, name, aspects):
        """Finds the annotation: by id where the report has ids, else by kind, name and entities."""
        want, with_ids = self.file.entities(aspects), all("id" in a for _, a in self.left)
        listed = lambda a: sorted((e["kind"], e["id"] if with_ids else "", e["label"])
                                  for e in a["entities"])
        want = want if with_ids else sorted((k, "", label) for k, _, label in want)
        found = [r for r in self.left if r[1]["kind"] == kind and r[1]["name"] == name
                 and r[1].get("id", f"#{n}") == f"#{n}"]
        found.sort(key=lambda r: listed(r[1]) != want)
        self.check(n, f"{kind} {name}, in the report", True, bool(found))
        if not found:
            return None
        self.left.remove(found[0])
        self.joined[n] = found[0]
        self.check(n, "entities", want, listed(found[0][1]))
        return found[0][1].get(kind.replace("geometricT", "t"), found[0][1])

    def presentations(self):
        """{callout or occurrence: annotations that it shows}; those that show none are notes."""
        f, self.shows = self.file, {}
        callouts = f.every("DRAUGHTING_CALLOUT")
        within = {r for c in callouts for r in f.refs(f.of(c))}
        occurrences = f.every("ANNOTATION_CURVE_OCCURRENCE", "ANNOTATION_TEXT_OCCURRENCE",
                              "TESSELLATED_ANNOTATION_OCCURRENCE")
        for e in callouts + [n for n in occurrences if n not in within]:
            links = f.using(e, *LINKS)  # those without a name count where none has one
            links = [p for p in links if "link" in p[0]] or [p for p in links if not p[0]]
            shown = [self.stands_for.get(p[2], p[2]) for p in links]
            self.shows[e] = [n for n in dict.fromkeys(shown) if n in self.joined]
            if not self.shows[e] and self.note(e):
                self.shows[e] = [e]
            hidden = any(f.using(item, "INVISIBILITY") for item in [e] + f.refs(f.of(e)))
            within = f.refs(f.of(e))
            planes = [p for i in [e] + within for p in f.using(i, "ANNOTATION_PLANE")][:1]
            leaders = [f.refs(f.of(c[2], "POLYLINE")) for i in within
                       if (c := f.of(i, "LEADER_CURVE"))]
            ends = [[f.of(p)[1] for p in (points[-1], points[0])] for points in leaders]
            for n in self.shows[e]:
                self.check(n, "hidden", hidden, self.joined[n][1]["hidden"])
                self.check(n, "leaders, their ends", ends, [[leader["head"], leader["tail"]]
                           for leader in self.joined[n][1]["leaders"]])
                self.words(n, e)
                for plane in planes:
                    self.place(n, f.placement(plane[2])[1:], f.points(e))

    def words(self, n, element):
        """The counts and words that are stated for what is drawn around a value or a frame."""
        f, annotation = self.file, self.joined[n][1]
        drawn = "".join(f.validation(u).get("equivalent unicode string", "") for u in f.users[element])
        texts = re.findall(r"TXT\\+[wn]([^\\]*)", drawn)
        if got := annotation.get("dimension"):
            texts, got = re.findall(r"DIM\\+w(.*)", re.sub(r"\\+[sn]", " ", drawn)), got["texts"]
        elif got := annotation.get("tolerance"):
            got = got["notes"]
        if got:
            words = lambda parts: re.findall(r"[0-9]+X|[A-Z]{2,}[0-9]*", " ".join(parts))
            self.check(n, "words around it", words(texts), words([got["before"] or "", got["after"] or ""]))

    def note(self, n):
        f = self.file
        links = [p[2] for p in f.using(n, "DRAUGHTING_MODEL_ITEM_ASSOCIATION")]
        aspects = [s for s in links if not f.of(s, "PROPERTY_DEFINITION")]
        got = self.join("text", n, f.of(n)[0], aspects)
        lines = [f.of(i)[1] for s in links for p in f.using(s, "PROPERTY_DEFINITION_REPRESENTATION")
                 for i in f.items(p[1])]
        if not lines:
            lines = [f.of(t)[1] for o in f.refs(f.of(n)) if f.of(o, "ANNOTATION_TEXT_OCCURRENCE")
                     for t in f.refs(f.of(o)) if f.of(t, "TEXT_LITERAL")]
        if got:
            self.check(n, "text", "\n".join(lines), "\n".join(t["string"] for t in got["texts"]))
        return got

    def place(self, n, axes, points):
        """The annotation is turned as its plane states, and lies within what is drawn of it."""
        frame, annotation = self.joined[n]
        if frame is None:
            return self.check(n, "plane", True, False)
        self.check(n, "plane's axes", axes[:2], [frame["xAxis"], frame["yAxis"]], FLOAT, 1)
        at = [o + dot(along, annotation["position"] + [annotation["depth"]]) for o, *along in
              zip(frame["origin"], frame["xAxis"], frame["yAxis"], axes[2])]
        for axis, name in zip(axes, "xyz"):
            along, got = [dot(p, axis) for p in points], dot(at, axis)
            want = min(max(got, min(along)), max(along))
            self.check(n, f"place, {name} in what is drawn", want, got, FLOAT, max(map(abs, at)))

    def tolerances(self):
        f = self.file
        for n, kind, rows in f.tolerances():
            name, _, _, aspect, *_ = f.of(n, "GEOMETRIC_TOLERANCE") or f.of(n)
            self.stands_for.update({row: n for row in rows})
            if got := self.join("geometricTolerance", n, name, [aspect]):
                self.check(n, "type", kind, got["type"])
                around = "ALL_AROUND_SHAPE_ASPECT" in f.all[aspect]
                self.check(n, "all around", around, got["allAround"])
                self.check(n, "rows", len(rows), len(got["rows"]))
                for row, reported in zip(rows, got["rows"]):
                    self.row(row, reported)
                    self.own_words(row, got, reported)

    def row(self, n, got):
        f, base = self.file, self.file.of(n, "GEOMETRIC_TOLERANCE") or self.file.of(n)
        part = lambda name: f.of(n, "GEOMETRIC_TOLERANCE_WITH_" + name)
        self.check(n, "magnitude", f.value(base[2]), got["magnitude"])
        zones = [z for z in f.users[n] if f.of(z, "TOLERANCE_ZONE")]
        forms = [ZONES.get(f.of(f.of(z)[5])[0], "none") for z in zones] + ["none"]
        self.check(n, "zone", forms[0], got["valueType"])
        unit, area = part("DEFINED_UNIT"), part("DEFINED_AREA_UNIT") or [None]
        first = f.value(unit[0]) if unit else 0.0
        other = {"SQUARE": lambda: first, "RECTANGULAR": lambda: f.value(area[1])}
        self.check(n, "unit length or area", [0.0, first, other.get(area[0], float)()],
                   [got["refinement"], got["rateUnit1"], got["rateUnit2"]])
        want = [(MODIFIERS.get(m, m), None) for m in (part("MODIFIERS") or [[]])[0]]
        want += [("projectedZone", f.value(p[3])) for z in zones
                 for p in f.using(z, "PROJECTED_ZONE_DEFINITION")]
        for name, p in (("maximumTolerance", part("MAXIMUM_TOLERANCE")),
                        ("unequallyDisposed", f.of(n, "UNEQUALLY_DISPOSED_GEOMETRIC_TOLERANCE"))):
            want += [(name, f.value(p[-1]))] if p else []
        reported = sorted((m["type"], m["magnitude"]) for m in got["modifiers"])
        self.check(n, "modifiers", sorted(want), reported)
        systems = (part("DATUM_REFERENCE") or base[4:5] or [[]])[0]
        want = [f.compartment(c) for s in systems for c in (f.of(s, "DATUM_SYSTEM") or [[s]])[-1]]
        want = [("-".join(label for label, _ in datums), datums) for datums in want]
        reported = [(r["label"], [(d["label"], sorted(m["type"] for m in d["modifiers"]))
                                  for d in r["datums"]])
                    for r in got["frame"]["references"]] if got["frame"] else []
        self.check(n, "datums in order, with modifiers", want, reported)

    def own_words(self, n, tolerance, row):
        """A row against what the file says of it for validation; numbers may be in mm there."""
        said = self.file.validation(n)
        labels = [r["label"] for r in row["frame"]["references"]] if row["frame"] else []
        if own := said.get("datum references"):
            self.check(n, "validation, datum references", own, ",".join(labels) or "none")
        if "equivalent unicode string" in said:
            _, symbol, value, *datums = re.split(r"(?:\\+[wx])+", said["equivalent unicode string"])
            self.check(n, "validation, type and all around", (SYMBOLS.get(symbol[0]), symbol[1:]),
                       (tolerance["type"], "AAS" if tolerance["allAround"] else ""))
            number = [float(re.match(r"⌀?([\d.]+)", value)[1])]
            self.check(n, "validation, magnitude", True, self.same(number, [row["magnitude"]]))
            self.check(n, "validation, modifiers", {m for s, m in LETTERS.items() if s in value},
                       {m["type"] for m in row["modifiers"]})
            self.check(n, "validation, datums", [re.sub("[Ⓛ-Ⓜ]", "", d) for d in datums], labels)

    def same(self, said, got, unit=0.0):
        """In the model's unit, or in mm where that is inch; rounded to `unit`."""
        near = [max(unit, FLOAT * abs(x)) * (1 + FLOAT) for x in got]
        return len(said) == len(got) and any(all(
            abs(s - r * x) <= r * n for s, x, n in zip(said, got, near)) for r in (1, 25.4))

    def dimensions(self):
        f = self.file
        for n in f.every(*SIZES, *LOCATIONS):
            p = f.of(n, *SIZES, *LOCATIONS)
            aspects, kind = (p[:1], p[1]) if f.of(n, *SIZES) else (p[2:4], p[0])
            names = [f.of(link[4])[0] for link in f.using(n, *LINKS) if link[2] == n]
            if got := self.join("dimension", n, next(filter(None, names), kind), aspects):
                self.check(n, "type", DIMENSIONS.get(kind), (got["type"], got["mainType"]))
                self.dimension(n, got, any(t.startswith("ANGULAR") for t in f.all[n]))

    def dimension(self, n, got, angle):
        f, value = self.file, lambda item: f.value(item, angle)
        uses = f.using(n, "DIMENSIONAL_CHARACTERISTIC_REPRESENTATION")
        items = [i for use in uses for i in f.items(use[1])]
        measures = {f.of(i, "REPRESENTATION_ITEM", *f.all[i])[0]: i for i in items if f.measure(i)}
        nominal = measures.get("nominal value")
        if nominal is None:
            return self.check(n, "listed", "it has no value", self.listed.get(f"#{n}"))
        self.check(n, "value", value(nominal), got["value"])
        ranges = [p[0] for p in f.using(n, "PLUS_MINUS_TOLERANCE")]
        bounds = [b for r in ranges for b in f.of(r, "TOLERANCE_VALUE") or []]
        fits = [p[0] + p[2] for r in ranges if (p := f.of(r, "LIMITS_AND_FITS"))]
        want = [value(b) for b in bounds] or [None, None]
        if "upper limit" in measures:
            bounds = [measures["lower limit"], measures["upper limit"]]
            want = [value(b) - value(nominal) for b in bounds]
            self.check(n, "limits as written", [f.measure(b)[0] for b in bounds],
                       [float(got[key] or "nan") for key in ("lowerText", "upperText")])
        self.check(n, "deviations", want, [got["lower"], got["upper"]], DOUBLE, abs(value(nominal)))
        for key, item in (("precision", nominal), *(("tolerancePrecision", b) for b in bounds)):
            if f.decimals(item) is not None:
                self.check(n, key, f.decimals(item), got[key])
        qualifiers = f.refs(f.of(nominal, "QUALIFIED_REPRESENTATION_ITEM") or [])
        fits += [q[0][:3].upper() for i in qualifiers if (q := f.of(i, "TYPE_QUALIFIER"))]
        shown = "".join(got["texts"][k] or "" for k in ("prefix", "after", "suffix"))
        self.check(n, "marks, their signs sorted", sorted("".join(f.marks(items) + fits)), sorted(shown))
        if said := f.validation(n).get("equivalent unicode string"):
            first, *rest = [float(x) for x in re.findall(r"[+-]?\d*\.?\d+", said.replace("- ", ""))]
            if got["lowerText"]:  # two limits instead of a value
                own = [got["value"] + got[key] for key in ("lower", "upper")]
            else:
                own = [got["value"], *(got[key] for key in ("upper", "lower") if rest)]
                rest += [-r for r in rest if "±" in said]
            self.check(n, "validation, numbers", True,
                       self.same([first, *rest], own, 0.5 * 10 ** -got["precision"]))

    def datums(self):
        f, self.features = self.file, 0
        for n in f.every("DATUM"):
            label = f.of(n, "DATUM")[4]
            sources = [r[2] for r in f.using(n, "SHAPE_ASPECT_RELATIONSHIP") if r[3] == n]
            targets = {s: label + p[4] for s in sources if (p := f.of(s, *TARGETS))}
            of = {s: [r[2] for r in f.using(s, "FEATURE_FOR_DATUM_TARGET_RELATIONSHIP")]
                  for s in targets}
            features = [s for s in sources if s not in targets]
            self.features += bool(features)
            self.stands_for.update({s: n for s in features})
            if got := self.join("datum", n, label, sum(of.values(), [n] + features)):
                self.check(n, "label", label, got["label"])
                self.check(n, "targets", sorted(targets.values()), sorted(got["targets"]))
            for target, name in targets.items():
                if found := self.join("datumTarget", target, name, of[target]):
                    self.target(target, name, found)

    def target(self, n, label, got):
        f = self.file
        self.check(n, "label and kind", (label, f.of(n)[1]), (got["label"], got["type"]))
        uses = [use for p in f.users[n] for use in f.using(p, "SHAPE_DEFINITION_REPRESENTATION")]
        items = [i for use in uses for i in f.items(use[1])]
        sizes = [f.value(i) for i in items if f.measure(i)]
        self.check(n, "sizes", sizes, [float(x) for x in re.findall(r"[\d.]+", got["note"])])
        places = [f.placement(i) for i in items if not f.measure(i)]
        half = [size / 2 for size in sizes] if got["type"] == "rectangle" else [0.0, 0.0]
        corners = [[o - half[0] * x - half[1] * y for o, x, y in zip(*p[:3])] for p in places]
        self.check(n, "place", corners, [got["point1"]])

    def views(self):
        f = self.file
        cameras = {n: i for n in f.every("DRAUGHTING_MODEL") for i in f.items(n)
                   if f.of(i, *CAMERAS)}
        self.check("-", "saved views", len(cameras), len(self.report["captures"]))
        for (n, camera), got in zip(cameras.items(), self.report["captures"]):
            name = f.of(camera)[0] or f.of(n, "REPRESENTATION", *f.all[n])[0]
            self.check(n, "name, id", (name, f"#{n}"), (got["name"], got.get("id", f"#{n}")))
            within = [r for i in f.items(n) if f.of(i, "ANNOTATION_PLANE") for r in f.of(i)[3]]
            elements = [e for e in dict.fromkeys(f.items(n) + within) if e in self.shows]
            members = [m for e in elements for m in self.shows[e]]
            names, ids = [self.joined[m][1]["name"] for m in members], [f"#{m}" for m in members]
            self.check(n, "number of members", len(members), got["members"]["count"])
            self.check(n, "members", sorted(names), sorted(got["members"]["annotations"]))
            self.check(n, "ids of members", sorted(ids), sorted(got["members"].get("ids", ids)))
            self.camera(n, f.of(camera), got["camera"], elements)
            planes = f.of(camera, "CAMERA_MODEL_D3_MULTI_CLIPPING") or [[]]
            clipping = [[at, z] for at, _, _, z in map(f.placement, planes[-1])]
            plane = got["clippingPlane"]
            self.check(n, "clipping plane", clipping,
                       [[plane["point"], plane["normal"]]] if plane else [], FLOAT, 1)
            for v in [n] + [v for v in f.users[n] if f.of(v, "MODEL_GEOMETRIC_VIEW")]:
                if said := f.validation(v).get("number of annotations"):
                    shown = got["members"]["count"] - len(members) + len(elements)
                    self.check(v, "validation, number of annotations", said, shown)

    def camera(self, n, stated, got, elements):
        f = self.file
        eye, _, up, z = f.placement(stated[1])
        self.check(n, "camera's name and place", (stated[0], eye), (got["name"], got["origin"]))
        self.check(n, "camera, up", up, got["viewDirectionNormal"], FLOAT, 1)
        projection, point, distance, *_, box = f.of(stated[2], "VIEW_VOLUME")
        height = f.of(box, "PLANAR_BOX")[2]
        self.check(n, "camera, zoom", 2 / height, got["zoom"])
        self.check(n, "camera, projection", {"CENTRAL": "perspective"}.get(projection, "parallel"),
                   got["type"])
        angle = math.degrees(2 * math.atan(height / 2 / abs(distance - f.of(point)[1][2])))
        self.check(n, "camera, angle", angle if projection == "CENTRAL" else 0.0, got["viewAngle"])
        fronts = [f.placement(p[2])[3] for e in elements for p in f.using(e, "ANNOTATION_PLANE")]
        sides = {dot(front, z) > 0 for front in fronts}
        if len(sides) == 1:  # all its annotations are read from the same side
            want = [-c for c in z] if sides.pop() else z
            self.check(n, "camera looks at texts' front", want, got["viewDirection"], FLOAT, 1)

    def counts(self):
        rows = [len(a["tolerance"]["rows"]) for _, a in self.joined.values() if "tolerance" in a]
        of = lambda *types: sum(bool(self.file.of(n, *types)) for n in self.joined)
        shown = sum(any(self.joined[m][0] for m in shown) for shown in self.shows.values())
        got = {"geometric tolerances": sum(rows), "composite tolerances": sum(r > 1 for r in rows),
               "datum features": self.features, "datums": self.features, "annotations": shown,
               "dimensional sizes": of(*SIZES), "dimensional locations": of(*LOCATIONS),
               "datum targets": of(*TARGETS), "views": len(self.report["captures"])}
        for n in self.file.every("PRODUCT_DEFINITION_SHAPE"):
            said = {k.partition(" of ")[2]: v for k, v in self.file.validation(n).items()}
            for name in got.keys() & said.keys():
                self.check(n, "validation, number of " + name, said[name], got[name])
        for n, of in {**{n: n for n in self.joined}, **self.stands_for}.items():
            if said := self.file.validation(n).get("number of PMI presentation elements"):
                shown = self.joined.get(of, [None])[0] is not None
                self.check(n, "validation, presentations", said, float(shown))

    def run(self):
        for name in "tolerances dimensions datums presentations views counts".split():
            getattr(self, name)()
        for _, annotation in self.left:
            self.check("-", "annotation that the file does not state", None, annotation["name"])


def main(arguments):
    if len(arguments) < 2:
        sys.exit(__doc__)
    failed = False
    for path in arguments[1:]:
        done = subprocess.run([arguments[0], "--json", path], stdout=subprocess.PIPE, check=False)
        comparison = Comparison(Exchange(path), json.loads(done.stdout))
        comparison.run()
        least = PER_INSTANCE * max(len(re.findall(PMI, comparison.file.text)), 1)
        kinds = Counter(a["kind"] for _, a in comparison.joined.values())
        print(f"{path}: {comparison.compared} values compared (at least {least}),",
              f"{len(comparison.different)} differ;", *(f"{n} {kind}" for kind, n in kinds.items()))
        for number, what, want, got in comparison.different:
            print(f"  #{number} {what}: file {want!r}, report {got!r}")
        failed |= bool(comparison.different) or comparison.compared < least
    return failed


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
