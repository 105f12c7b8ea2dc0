#!/usr/bin/env python3
"""Compares what pmi_report says about QIF 3.0 documents with what the documents state.

    compare_with_document.py PMI_REPORT MODEL.qif...

Reads each document on its own, without the host's reader. Says for every model how many values were
compared, which differ (id, where, document, report), and which the document states while the report
neither gives nor lists them. Where the document states nothing, the report has to give nothing.
Exit code 1 when anything differs, is left out, or when fewer values were compared than MINIMUM.
"""

import json
import math
import re
import subprocess
import sys
import xml.etree.ElementTree as ElementTree
from collections import defaultdict

MINIMUM = {"mounting_bracket.qif": 1525, "nist_ctc_01_asme1_ap242.qif": 840,
           "nist_ctc_03_asme1_ap242.qif": 1187, "nist_ftc_08_asme1_ap242.qif": 2440}
DOUBLE, FLOAT = 1e-12, 1e-6  # relative
FLOATS = {"placed", "frame", "depth", "line", "extensionLines", "font", "clippingPlane"}

words = lambda text: dict(word.split("=") for word in text.split())
MAIN_TYPES = words("""Diameter=diametral SphericalDiameter=diametral Radius=radial
    SphericalRadius=radial Angle=angular AngleBetween=angular AngleFrom=angular Thread=thread
    CurveLength=curveLength LinearCoordinate=coordinate AngularCoordinate=coordinate
    ConicalTaper=taper FlatTaper=taper""")
TYPES = words("DistanceBetween=distance DistanceFrom=distance AngleFrom=angleBetween")
TOLERANCES = """Straightness Flatness Circularity Cylindricity Conicity Sphericity LineProfile
    SurfaceProfile PointProfile Angularity Perpendicularity Parallelism Position Concentricity
    Coaxiality Symmetry CircularRunout TotalRunout""".split()
MATERIAL = words("MAXIMUM=maximumMaterial LEAST=leastMaterial REGARDLESS=regardlessOfFeatureSize")
FLAGS = words("""FreeState=freeState StatisticalCharacteristic=statisticalTolerance
    CommonZone=commonZone TangentPlane=tangentPlane""")
LENGTHS = words("""ProjectedToleranceZoneValue=projectedZone ProjectedToleranceZone=projectedZone
    UnequallyDisposedZone=unequallyDisposed MaximumToleranceValue=maximumTolerance""")
ZONES = words("DiametricalZone=diametrical SphericalZone=spherical")
SEGMENTS = [f"{n}CompositeSegment{kind}Definition"
            for n in ("Second", "Third", "Fourth") for kind in ("Position", "Profile")]
PRECEDENCES = "PRIMARY SECONDARY TERTIARY QUATERNARY QUINARY SENARY".split()
TARGET_TYPES = words("""FeatureZonePoint=point FeatureZoneCurveLine=line
    FeatureZoneAreaCircular=circle FeatureZoneAreaRectangular=rectangle""")
TEXTURES = words("""UNDEFINED=unspecified MACHINING_MANDATORY=machiningMandatory PERPENDICULAR=⊥
    SPECIFIED_SURFACE_ONLY=specifiedSurfaceOnly ALL_PART_SURFACES=allPartSurfaces""")
ENTITIES = ("EntityInternalIds/Id", "FeatureNominalIds/Id")
SYMBOLS = {"DIAMETER": "⌀", "PLUS_MINUS": "±", "DEGREE": "°", "BR": "\n", "M": "Ⓜ"}
# Children of the elements visited that the comparison reads, or that only tie elements together.
READ = {*"""CharacteristicDefinitionId FeatureNominalIds EntityInternalIds Name TargetValue
    Tolerance DimensionType ToleranceValue ToleranceZonePerUnitLength ToleranceZonePerUnitArea
    ZoneShape DatumReferenceFrameId MaterialCondition Extent Obtention Applicability RoughnessAverage
    MinimumMaterialRemoval ProductionMethod Cutoff SecondaryRoughnessParameter DirectionOfLay
    OtherSurfaceParameter DatumLabel DatumTargetIds DatumTargetLabel FeatureNominalId TargetZoneId
    Text Plane Texts Reference Color AnnotationVisibleIds BodyIds ZoneSectionId CameraIds
    DatumDefinitionId MaterialModifier ReferencedComponent WitnessLines Attributes""".split(),
        *FLAGS, *LENGTHS, *SEGMENTS}

vector = lambda text: text and [float(x) for x in text.split()]
cross = lambda a, b: [a[i - 2] * b[i - 1] - a[i - 1] * b[i - 2] for i in range(3)]
unit_vector = lambda a: [x / math.hypot(*a) for x in a]
true = lambda text: text in ("true", "1")
lower_first = lambda text: text[0].lower() + text[1:]
# The origin, moved by every (length, direction).
along = lambda o, *steps: [o[i] + sum(s * d[i] for s, d in steps) for i in range(3)]


def close(want, got, tolerance=DOUBLE, scale=0.0):
    if isinstance(want, list):
        scale = max([scale] + [abs(x) for x in want if isinstance(x, (int, float))])
        return isinstance(got, list) and len(got) == len(want) and all(
            close(w, g, tolerance, scale) for w, g in zip(want, got))
    if isinstance(want, bool) or not isinstance(want, (int, float)):
        return want == got or (want is None and got == "")
    return isinstance(got, (int, float)) and abs(want - got) <= tolerance * max(
        abs(want), abs(got), scale)


class Document:
    """A document's elements by id, without namespaces, and its units."""

    def __init__(self, path):
        self.root = ElementTree.parse(path).getroot()
        for element in self.root.iter():
            element.tag = element.tag.rpartition("}")[2]
        self.by_id = {e.get("id"): e for e in self.root.iter() if e.get("id")}
        self.rescale(float(self.root.findtext("Product/Header/ScaleCoefficient") or 1))
        self.displays = defaultdict(list)
        for display in self.root.iter("PMIDisplay"):
            self.displays[display.findtext("Reference/Id")].append(display)
        self.fonts = {f.get("index"): f for f in self.root.iter("Font")}
        units = self.root.find("FileUnits")
        self.factors = {u.findtext("UnitName"): float(u.findtext("UnitConversion/Factor") or 1)
                        for u in units.iter() if u.tag.endswith(("LinearUnit", "AngularUnit"))}
        primary = lambda kind: units.findtext(f"PrimaryUnits/{kind}Unit/UnitName")
        self.length = primary("Linear")
        self.pmi_length = primary("PMILinear") or self.length
        self.pmi_angle = primary("PMIAngular") or primary("Angular")
        self.written = []  # what was read in other units than the model's

    def rescale(self, scale):
        """Writes the distances of displays and views as the part has them."""
        for element in (e for name in ("ViewSet", "VisualizationSet")
                        for e in self.root.find("Product").iterfind(name + "//*")):
            if "lineHeight" in element.attrib:
                element.set("lineHeight", str(float(element.get("lineHeight")) / scale))
            if re.search("Point|Origin|Near$|Height$|Center$", element.tag) and not len(element):
                element.text = " ".join(str(float(n) / scale) for n in element.text.split())

    def refers(self, element, *paths):
        """The elements whose ids stand at the paths."""
        return [self.by_id[i.text] for path in paths for i in element.findall(path)]

    def value(self, element, degrees=False):
        """The value of an element of a characteristic, in the document's length unit or degrees."""
        if element is None:
            return None
        unit = element.get(*(("angularUnit", self.pmi_angle) if degrees else
                             ("linearUnit", self.pmi_length)))
        model = math.pi / 180 if degrees else self.factors[self.length]
        if not math.isclose(self.factors[unit], model):
            self.written.append([element.text, unit])
        return float(element.text) * self.factors[unit] / model

    def entities(self, elements):
        """The topology that features or entities come down to, in the document's order."""
        found = []
        for e in elements:
            if e.tag.endswith("FeatureNominal"):
                found += self.entities(self.refers(e, *ENTITIES))
            elif e.tag in ("Face", "Edge", "Vertex", "Body"):
                found.append({"kind": e.tag.lower(), "id": e.get("id"),
                              "label": e.get("label") or e.get("id")})
        return found

    def drawn(self, ident):  # the texts of an annotation, a line each
        data = [t.findtext("Data") or "" for d in self.displays[ident] for t in d.iter("Text")]
        return "\n".join(re.sub(r"\{(\w+)\}", lambda m: SYMBOLS.get(m[1], m[0]), t) for t in data)


class Comparison:
    def __init__(self, document, report):
        self.doc, self.report = document, report
        self.compared, self.listed, self.wrong = 0, 0, []
        self.skipped = {(s["kind"], ident) for s in report["source"]["skipped"]
                        for ident in (s["id"], s["annotation"])}
        self.reported = {a["id"]: {**a, "frame": view["frame"]}
                         for view in report["views"] for a in view["annotations"]}
        self.seen, self.applied = set(), defaultdict(set)  # annotations; those on an entity, by id
        for path, state in (("Characteristics/CharacteristicNominals/*", self.characteristic),
                            ("DatumDefinitions/*", self.datum),
                            ("DatumTargetDefinitions/*", self.target),
                            *((f"Product/*/{tag}", self.note)
                              for tag in ("Note", "NoteFlag", "PartNote"))):
            for element in self.doc.root.findall(path):
                self.annotation(element, state)
        self.check("-", "annotations", sorted(self.seen), sorted(self.reported))
        self.check("-", "entities", {i: sorted(self.applied[i]) for i in sorted(self.applied)},
                   {e["id"]: sorted(e["annotations"]) for e in report["entities"]})
        views = self.doc.root.findall("Product/ViewSet/SavedViewSet/SavedView")
        self.check("-", "captures", [self.saved_view(v) for v in views], report["captures"])
        self.account(report["source"])

    def check(self, ident, where, want, got, tolerance=DOUBLE):
        """Compares value by value. Of an object, what is wanted counts."""
        if (isinstance(want, list) and isinstance(got, list) and len(want) == len(got)
                and not all(isinstance(x, (int, float)) for x in want)):
            want, got = dict(enumerate(want)), dict(enumerate(got))
        if isinstance(want, dict) and isinstance(got, dict):
            for key, value in want.items():
                self.check(ident, f"{where}/{key}", value, got.get(key),
                           FLOAT if key in FLOATS else tolerance)
            return
        self.compared += 1
        if not close(want, got, tolerance):
            self.wrong.append(f"{ident} {where}: document {want!r}, report {got!r}")

    def no_place(self, ident, *kinds):
        """Something is stated that the report does not have: it has to be listed as skipped."""
        listed = any((kind, ident) in self.skipped for kind in kinds)
        self.listed += listed
        self.wrong += () if listed else [f"{ident} {kinds[0]}: stated, not reported, not listed"]

    def check_children(self, ident, *elements):
        for child in (child for element in elements for child in element):
            nothing = (child.text or "").strip() in ("", "false", "NONE") and len(child) == 0
            if not (child.tag in READ or child.tag.startswith("Leader") or nothing):
                self.no_place(ident, child.tag)

    def account(self, source):
        """Entries have a severity, and ids of the report; what is lost is not in the report."""
        ids = {None, *self.reported, *(c["id"] for c in self.report["captures"])}
        total = {s: sum(e["count"] for e in source["skipped"] if e["severity"] == s)
                 for s in ("lost", "reduced", "ignored")}
        self.check("-", "skipped", {**total, "skippedCount": sum(total.values())}, source)
        counts = words("""datums=DatumDefinition datumTargets=DatumTarget faces=Face edges=Edge
            vertices=Vertex bodies=Body displays=PMIDisplay savedViews=SavedView""")
        self.check("-", "counts", {key: len([*self.doc.root.iter(tag)]) or None
                                   for key, tag in counts.items()}, source["counts"])
        for entry in source["skipped"]:
            tag = getattr(self.doc.by_id.get(entry["id"]), "tag", None)
            lost = entry["severity"] == "lost" and entry["kind"] == tag
            self.check(entry["id"], f"skipped {entry['kind']}", [True, False], [
                lost or entry["annotation"] in ids, lost and entry["id"] in self.reported])

    def annotation(self, element, state):
        """`state` gives its own part, what it is on, and whether its drawn texts are told."""
        ident, self.doc.written = element.get("id"), []
        got = self.reported.get(ident, {})
        self.check_children(ident, element)
        wanted, on, drawn = state(element)
        self.seen.add(ident)
        wanted.update(id=ident, hidden=element.get("hidden") == "true",
                      entities=self.doc.entities(on), written=sorted(self.doc.written))
        for entity in wanted["entities"]:
            self.applied[entity["id"]].add(ident)
        got["written"] = sorted([w["text"], w["unit"]] for w in got.get("written", ()))
        for display in self.doc.displays[ident]:
            self.check_children(ident, display)
            if display.find("Texts") is not None and not drawn:
                self.no_place(ident, "Texts")
            wanted.update(self.place(ident, display, got))
        self.check(ident, "", wanted, got)

    def place(self, ident, display, got):
        """Where a display stands. Each point of its lines is in the report, or the line listed."""
        plane = display.find("Plane")
        if plane is None:
            return self.no_place(ident, "PMIDisplay") or {}
        view = self.doc.by_id[plane.findtext("AnnotationViewId/Id")]
        origin = vector(plane.findtext("Origin")) or [0, 0, 0]
        x = vector(plane.findtext("Direction") or view.findtext("Direction"))
        y = unit_vector(cross(vector(view.findtext("Normal")), x))
        axes = (got["frame"]["xAxis"], got["frame"]["yAxis"])
        got["placed"] = along(got["frame"]["origin"], *zip(got["position"], axes))
        dimension, ways, wanted = got.get("dimension", {}), [], {}
        flats = [p for name in ("line", "extensionLines") for p in dimension.get(name) or ()]
        leaders = [[leader["tail"], leader["head"]] for leader in got["leaders"]]
        size = max(map(abs, origin))
        is_in = lambda point, points: any(close(point, p, scale=size) for p in points)
        for line in (e for e in display if e.tag.startswith(("Leader", "WitnessLines"))):
            points = {}
            for leaf in (e for e in line.iter() if len(e) == 0 and e is not line):
                if len((leaf.text or "").split()) != 2:
                    self.no_place(ident, line.tag, leaf.tag)
                    continue
                flat = vector(leaf.text)
                points[leaf.tag] = along(origin, *zip(flat, (x, y)))
                if is_in(points[leaf.tag], sum(leaders, [])) or any(
                        close(flat, p, FLOAT) for p in flats):
                    self.compared += 1
                else:
                    self.no_place(ident, line.tag)
            flat = lambda *paths: [vector(line.findtext(path)) for path in paths]
            if line.tag == "WitnessLines":
                wanted["extensionLines"] = (
                    flat("BeginPoint", "EndPoint", "CircleCenter") if "CircleCenter" in points else
                    flat("Segment1/StartPoint", "Segment2/StartPoint", "Segment1/EndPoint"))
                continue
            tails = [points[tag] for tag in ("PointExtension", "EndPoint") if tag in points]
            heads = [points[tag] for tag in ("StartPoint", "PointConnection") if tag in points]
            ways += [[tail, head] for tail in tails for head in heads]
            if len(heads) == 2 and dimension:
                wanted["line"] = flat("StartPoint", "PointConnection")
                continue
            self.check(ident, line.tag, True, is_in([tails[0], heads[0]], leaders))
        for tail, head in leaders:  # each along a line of the document, and none of no length
            self.check(ident, "leader", True, tail != head and is_in([tail, head], ways))
        return {"placed": origin, "frame": {"xAxis": x, "yAxis": y}, "depth": 0.0,
                **({"dimension": wanted} if dimension else {})}

    def characteristic(self, nominal):
        stem = nominal.tag[:-len("CharacteristicNominal")]
        definition = self.doc.by_id[nominal.findtext("CharacteristicDefinitionId")]
        self.check_children(nominal.get("id"), definition)
        key, state = (("tolerance", self.tolerance) if stem in TOLERANCES else
                      ("roughness", self.texture) if stem == "SurfaceTexture" else
                      ("dimension", self.dimension))
        fields, drawn = state(nominal, definition, stem)
        kind = "geometricTolerance" if key == "tolerance" else key
        return ({"kind": kind, "name": nominal.findtext("Name"), key: fields},
                self.doc.refers(nominal, "FeatureNominalIds/Id", "EntityInternalIds/Id"), drawn)

    def dimension(self, nominal, definition, stem):
        target = nominal.find("TargetValue")
        for feature in self.doc.refers(nominal, "FeatureNominalIds/Id"):
            if target is None:  # the size of the feature that the characteristic is named after
                target = self.doc.by_id[feature.findtext("FeatureDefinitionId")].find(stem)
        main = MAIN_TYPES.get(stem, "linear")
        degrees = main == "angular" or stem.startswith("Angular")
        value = self.doc.value(target, degrees)
        places = lambda e: int(e.get("decimalPlaces") or len(e.text.partition(".")[2]))
        limits = [definition.find(f"Tolerance/{which}Value") for which in ("Max", "Min")]
        stated = [limit for limit in limits if limit is not None]
        as_limit = true(definition.findtext("Tolerance/DefinedAsLimit"))
        how, prefix, suffix = {
            "BASIC_OR_TED": ("basic", "[", "]"), "REFERENCE_OR_AUXILIARY": ("reference", "(", ")")
        }.get(definition.findtext("DimensionType"),
              ("limits" if as_limit else "plusMinus" if stated else "none", None, None))
        wanted = {"type": TYPES.get(stem, lower_first(stem)), "mainType": main,
                  "value": value, "tolerance": how, "texts": {"prefix": prefix, "suffix": suffix},
                  "precision": None if target is None else
                  places(target) if target.tag == "TargetValue" else 0,
                  "tolerancePrecision": max(map(places, stated), default=None)}
        for key, limit in zip(("upper", "lower"), limits):
            wanted[key], wanted[key + "Text"] = self.doc.value(limit, degrees), None
            if limit is not None and as_limit:
                wanted[key] -= value or 0
                wanted[key + "Text"] = f"{float(limit.text):.{places(limit)}f}"
        # Texts around the value stand at the ends of the drawn text, a call-out is all of it.
        ident = nominal.get("id")
        texts = self.reported[ident]["dimension"]["texts"]
        drawn, before, after, callout = ("".join((text or "").split()) for text in (
            self.doc.drawn(ident), texts["before"], texts["after"], texts["holeCallout"]))
        self.check(ident, "texts around the value", [True] * 3, [
            drawn.startswith(before), drawn.endswith(after), callout in ("", drawn)])
        return wanted, callout != ""

    def tolerance(self, nominal, definition, stem):
        ident = nominal.get("id")
        drawn = [m.text for d in self.doc.displays[ident] for m in d.iter("Modifier")]
        extents = [definition.findtext("Extent/ExtentEnum") or "", *drawn]
        rows = [definition] + [s for tag in SEGMENTS for s in definition.findall(tag)]
        self.check_children(ident, *rows[1:])
        return {"type": lower_first(stem), "rows": [self.row(row) for row in rows],
                "allAround": any(text.startswith("ALL_AROUND") for text in extents)}, False

    def row(self, row):
        number = lambda path: self.doc.value(row.find(path))
        magnitude, refinement = number("ToleranceValue"), number("*/ToleranceValuePerUnit")
        units = map(number, ("*/UnitLength", "*/*/RectangularUnitAreaLength",
                             "*/*/RectangularUnitAreaWidth", "*/*/CircularUnitAreaDiameter"))
        rates = [unit for unit in units if unit is not None] + [0, 0]
        modifiers = [(MATERIAL.get(row.findtext("MaterialCondition")), None)]
        modifiers += [(FLAGS[e.tag], None) for e in row if e.tag in FLAGS and true(e.text)]
        modifiers += [(LENGTHS[e.tag], self.doc.value(e)) for e in row if e.tag in LENGTHS]
        zone, frame = row.find("ZoneShape/*"), row.findtext("DatumReferenceFrameId")
        return {"magnitude": refinement if magnitude is None else magnitude,
                "modifiers": [{"type": t, "magnitude": m} for t, m in modifiers if t],
                "refinement": 0 if magnitude is None else refinement or 0,
                "rateUnit1": rates[0], "rateUnit2": rates[1],
                "valueType": ZONES.get(getattr(zone, "tag", None), "none"),
                "frame": frame and self.frame(self.doc.by_id[frame])}

    def frame(self, frame):
        wanted = []
        for reference in sorted(frame.findall("Datums/Datum"), key=lambda datum: PRECEDENCES.index(
                datum.findtext("Precedence/PrecedenceEnum") or "PRIMARY")):
            datums = []
            for datum in reference.iter("SimpleDatum"):
                self.check_children(frame.get("id"), datum)
                named = self.doc.by_id[datum.findtext("DatumDefinitionId")]
                material = MATERIAL.get(datum.findtext("MaterialModifier"))
                datums.append({"id": named.get("id"), "label": named.findtext("DatumLabel"),
                               "modifiers": [{"type": material}] if material else []})
            wanted.append({"label": "-".join(d["label"] for d in datums), "datums": datums})
        return {"note": frame.findtext("Name"), "references": wanted}

    def texture(self, nominal, definition, _):
        fields = [definition.find("RoughnessAverage"), *map(nominal.find, (
            "MinimumMaterialRemoval", "ProductionMethod", "Cutoff", "SecondaryRoughnessParameter",
            "DirectionOfLay", "OtherSurfaceParameter"))]
        written = lambda f: f"{TEXTURES.get(f.text, f.text)} {f.get('linearUnit', '')}".strip()
        return {"obtention": TEXTURES.get(nominal.findtext("Obtention"), "unspecified"),
                "applicability": TEXTURES.get(nominal.findtext("Applicability"), "unknown"),
                "fields": [None if f is None else written(f) for f in fields]}, False

    def datum(self, datum):
        label = datum.findtext("DatumLabel")
        targets = [t.findtext("DatumTargetLabel")
                   for t in self.doc.refers(datum, "DatumTargetIds/Id")]
        return ({"kind": "datum", "name": label, "datum": {"label": label, "targets": targets}},
                self.doc.refers(datum, "FeatureNominalIds/Id"), False)

    def target(self, target):
        zone = self.doc.by_id[target.findtext("TargetZoneId")]
        label, diameter = target.findtext("DatumTargetLabel"), zone.findtext("Circle/Diameter")
        points = [zone.findtext(p) for p in ("Point", "Line/StartPoint", "Circle/CenterPoint")]
        return {"kind": "datumTarget", "name": label, "datumTarget": {
            "label": label, "type": TARGET_TYPES.get(zone.tag, "area"),
            "point1": next((vector(p) for p in points if p), None),
            "point2": vector(zone.findtext("Line/EndPoint")),
            "note": diameter and "⌀" + diameter}}, (
                self.doc.refers(zone, "FaceIds/Id", "EdgeIds/Id", "VertexId")
                or self.doc.refers(target, "FeatureNominalId")), False

    def note(self, note):
        own, drawn, font = note.findtext("Text"), self.doc.drawn(note.get("id")), None
        for texts in [t for d in self.doc.displays[note.get("id")] for t in d.findall("Texts")]:
            font = self.doc.fonts[texts.get("fontIndex")]
            points = float(font.findtext("Size")) / 72 * 0.0254 / self.doc.factors[self.doc.length]
            font = {"height": float(texts.get("lineHeight") or points),
                    **{s: font.get(s) == "true" for s in ("bold", "italic", "underline")}}
        return ({"kind": "flagNote" if note.tag == "NoteFlag" else "text",
                 "name": note.get("label"), "texts": [{"string": own or drawn, "font": font}]},
                self.doc.refers(note, "EntityInternalIds/Id"), own in (None, drawn))

    def saved_view(self, view):
        self.check_children(view.get("id"), view)
        visible = self.doc.refers(view, "AnnotationVisibleIds/Id")
        names = [e.findtext("Name") or e.findtext("DatumLabel") or e.findtext("DatumTargetLabel")
                 or e.get("label") for e in visible]
        cameras = sorted(view.findall("CameraIds/Id"), key=lambda c: c.get("active") != "true")
        camera = self.doc.by_id[cameras[0].text] if cameras else None
        section = self.doc.refers(view, "ZoneSectionId")
        part = lambda key: vector(section[0].findtext("SectionPlanes/SectionPlane/Plane/" + key))
        wanted = {"id": view.get("id"), "name": view.get("label"), "camera": None,
                  "clippingPlane": section and {"point": part("Point"), "normal": part("Normal")}
                  or None, "members": {"count": len(visible + view.findall("BodyIds/Id")),
                                       "annotations": names, "ids": [e.get("id") for e in visible]}}
        if camera is None:
            return wanted
        # The orientation takes directions of the model to right, up and towards the viewer.
        w, a, b, c = unit_vector(vector(camera.findtext("Orientation/Value")))
        up = [2 * (a * b + w * c), w * w - a * a + b * b - c * c, 2 * (b * c - w * a)]
        back = [2 * (a * c - w * b), 2 * (b * c + w * a), w * w - a * a - b * b + c * c]
        target, near = vector(camera.findtext("ViewPlaneOrigin")), float(camera.findtext("Near"))
        return {**wanted, "camera": {
            "name": camera.get("label") or view.get("label"), "target": target,
            "type": "perspective" if camera.get("form") == "PERSPECTIVE" else "parallel",
            "viewDirection": [-x for x in back], "viewDirectionNormal": up,
            "origin": along(target, (-near, back)), "zoom": 1 / float(camera.findtext("Height"))}}


def main(program, *models):
    failed = False
    for model in models:
        answer = subprocess.run([program, model, "--json"], stdout=subprocess.PIPE, check=False)
        found = Comparison(Document(model), json.loads(answer.stdout))
        least = MINIMUM.get(model.rpartition("/")[2], 1)
        print(f"{model}: {found.compared} values compared (at least {least}), {found.listed} "
              f"listed as skipped, {len(found.wrong)} wrong", *found.wrong, sep="\n  ")
        failed = failed or found.wrong or found.compared < least
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]) if len(sys.argv) > 2 else __doc__)
