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
from pathlib import Path

MINIMUM = {"mounting_bracket.qif": 1495, "nist_ctc_01_asme1_ap242.qif": 834,
           "nist_ctc_03_asme1_ap242.qif": 1182, "nist_ftc_08_asme1_ap242.qif": 2433}
DOUBLE, FLOAT = 1e-12, 1e-6  # relative
FLOATS = {"placed", "frame", "depth", "line", "extensionLines", "font", "clippingPlane"}

MAIN_TYPES = {  # main type of a dimension: characteristics
    "diametral": "Diameter SphericalDiameter", "radial": "Radius SphericalRadius",
    "angular": "Angle AngleBetween AngleFrom", "curveLength": "CurveLength", "thread": "Thread",
    "coordinate": "LinearCoordinate AngularCoordinate", "taper": "ConicalTaper FlatTaper"}
TYPES = {"DistanceBetween": "distance", "DistanceFrom": "distance", "AngleFrom": "angleBetween"}
TOLERANCES = """Straightness Flatness Circularity Cylindricity Conicity Sphericity LineProfile
    SurfaceProfile PointProfile Angularity Perpendicularity Parallelism Position Concentricity
    Coaxiality Symmetry CircularRunout TotalRunout""".split()
MATERIAL = {"MAXIMUM": "maximumMaterial", "LEAST": "leastMaterial",
            "REGARDLESS": "regardlessOfFeatureSize"}
FLAGS = {"FreeState": "freeState", "StatisticalCharacteristic": "statisticalTolerance",
         "CommonZone": "commonZone", "TangentPlane": "tangentPlane"}
LENGTHS = {"ProjectedToleranceZoneValue": "projectedZone",
           "ProjectedToleranceZone": "projectedZone", "UnequallyDisposedZone": "unequallyDisposed",
           "MaximumToleranceValue": "maximumTolerance"}
ZONES = {"DiametricalZone": "diametrical", "SphericalZone": "spherical"}
SEGMENTS = [n + "CompositeSegment" + kind + "Definition"
            for n in ("Second", "Third", "Fourth") for kind in ("Position", "Profile")]
PRECEDENCES = ["PRIMARY", "SECONDARY", "TERTIARY", "QUATERNARY", "QUINARY", "SENARY"]
TARGET_TYPES = {"FeatureZonePoint": "point", "FeatureZoneCurveLine": "line",
                "FeatureZoneAreaCircular": "circle", "FeatureZoneAreaRectangular": "rectangle"}
TEXTURES = {"UNDEFINED": "unspecified", "MACHINING_MANDATORY": "machiningMandatory",
            "SPECIFIED_SURFACE_ONLY": "specifiedSurfaceOnly",
            "ALL_PART_SURFACES": "allPartSurfaces", "PERPENDICULAR": "⊥"}
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


class Document:
    """A document's elements by id, without namespaces, and its units."""

    def __init__(self, path):
        self.root = ElementTree.parse(path).getroot()
        for element in self.root.iter():
            element.tag = element.tag.rpartition("}")[2]
        self.by_id = {e.get("id"): e for e in self.root.iter() if e.get("id")}
        self.displays = defaultdict(list)
        for display in self.root.iter("PMIDisplay"):
            self.displays[display.findtext("Reference/Id")].append(display)
        self.fonts = {f.get("index"): f for f in self.root.iter("Font")}
        units = self.root.find("FileUnits")
        self.factors = {u.findtext("UnitName"): float(u.findtext("UnitConversion/Factor") or 1)
                        for u in units.iter() if u.tag.endswith(("LinearUnit", "AngularUnit"))}
        primary = lambda kind: units.findtext(f"PrimaryUnits/{kind}/UnitName")
        self.length, self.angle = primary("LinearUnit"), primary("AngularUnit")
        self.pmi_length = primary("PMILinearUnit") or self.length
        self.pmi_angle = primary("PMIAngularUnit") or self.angle
        self.written = []  # what was read in other units than the model's

    def refers(self, element, path):
        """The elements whose ids stand at `path`."""
        return [self.by_id[i.text] for i in element.findall(path)]

    def value(self, element, degrees=False):
        """The value of an element of a characteristic, in the document's length unit or degrees."""
        if element is None:
            return None
        unit = (element.get("angularUnit", self.pmi_angle) if degrees
                else element.get("linearUnit", self.pmi_length))
        model = math.pi / 180 if degrees else self.factors[self.length]
        if not math.isclose(self.factors[unit], model):
            self.written.append([element.text, unit])
        return float(element.text) * self.factors[unit] / model

    def entities(self, elements):
        """The topology that features or entities come down to, in the document's order."""
        found = []
        for e in elements:
            if e.tag.endswith("FeatureNominal"):
                found += self.entities(self.refers(e, "EntityInternalIds/Id"))
                found += self.entities(self.refers(e, "FeatureNominalIds/Id"))
            elif e.tag in ("Face", "Edge", "Vertex", "Body"):
                found.append({"kind": e.tag.lower(), "id": e.get("id"),
                              "label": e.get("label") or e.get("id")})
        return found

    def drawn(self, ident):
        """The drawn texts of an annotation, a line each."""
        data = [t.findtext("Data") or "" for d in self.displays[ident] for t in d.iter("Text")]
        return "\n".join(re.sub(r"\{(\w+)\}", lambda m: SYMBOLS.get(m[1], m[0]), t) for t in data)


def close(want, got, tolerance=DOUBLE, scale=0.0):
    if isinstance(want, list):
        scale = max([scale] + [abs(x) for x in want if isinstance(x, (int, float))])
        return isinstance(got, list) and len(got) == len(want) and all(
            close(w, g, tolerance, scale) for w, g in zip(want, got))
    if isinstance(want, bool) or not isinstance(want, (int, float)):
        return want == got or (want is None and got == "")
    return isinstance(got, (int, float)) and abs(want - got) <= tolerance * max(
        abs(want), abs(got), scale)


def vector(text):
    return text and [float(x) for x in text.split()]


def cross(a, b):
    return [a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]]


def unit_vector(a):
    return [x / math.hypot(*a) for x in a]


def along(origin, *steps):
    """The origin, moved by every (length, direction)."""
    return [o + sum(s * d[i] for s, d in steps) for i, o in enumerate(origin)]


class Comparison:
    def __init__(self, document, report):
        self.doc, self.report = document, report
        self.compared, self.listed, self.different, self.left_out = 0, 0, [], []
        self.skipped = {(s["kind"], ident) for s in report["source"]["skipped"]
                        for ident in (s["id"], s["annotation"])}
        self.reported = {a["id"]: {**a, "frame": view["frame"]}
                         for view in report["views"] for a in view["annotations"]}
        self.seen, self.applied = set(), defaultdict(set)  # annotations; those on an entity, by id

    def check(self, ident, where, want, got, tolerance=DOUBLE):
        """Compares value by value. Of an object, what is wanted counts."""
        if isinstance(want, dict) and isinstance(got, dict):
            for key, value in want.items():
                self.check(ident, f"{where}/{key}", value, got.get(key),
                           FLOAT if key in FLOATS else tolerance)
        elif (isinstance(want, list) and isinstance(got, list) and len(want) == len(got)
              and not all(isinstance(x, (int, float)) for x in want)):
            for i, value in enumerate(want):
                self.check(ident, f"{where}/{i}", value, got[i], tolerance)
        else:
            self.compared += 1
            if not close(want, got, tolerance):
                self.different.append((ident, where, want, got))

    def no_place(self, ident, *kinds):
        """Something is stated that the report does not have: it has to be listed as skipped."""
        if any((kind, ident) in self.skipped for kind in kinds):
            self.listed += 1
        else:
            self.left_out.append((ident, kinds[0]))

    def check_children(self, ident, element):
        for child in element:
            nothing = (child.text or "").strip() in ("", "false", "NONE") and len(child) == 0
            if not (child.tag in READ or child.tag.startswith("Leader") or nothing):
                self.no_place(ident, child.tag)

    def run(self):
        for path, state in (("Characteristics/CharacteristicNominals/*", self.characteristic),
                            ("DatumDefinitions/DatumDefinition", self.datum),
                            ("DatumTargetDefinitions/DatumTarget", self.target),
                            ("Product/NoteSet/Note", self.note),
                            ("Product/NoteFlagSet/NoteFlag", self.note),
                            ("Product/PartNoteSet/PartNote", self.note)):
            for element in self.doc.root.findall(path):
                self.annotation(element, state)
        self.check("-", "annotations", sorted(self.seen), sorted(self.reported))
        self.check("-", "entities", {i: sorted(self.applied[i]) for i in sorted(self.applied)},
                   {e["id"]: sorted(e["annotations"]) for e in self.report["entities"]})
        views = self.doc.root.findall("Product/ViewSet/SavedViewSet/SavedView")
        self.check("-", "captures", [self.saved_view(v) for v in views], self.report["captures"])
        self.account(self.report["source"])
        return self

    def account(self, source):
        """Entries have a severity, and ids of the report; what is lost is not in the report."""
        ids = {None, *self.reported, *(c["id"] for c in self.report["captures"])}
        severities = ("lost", "reduced", "ignored")
        self.check("-", "skipped", {s: sum(e["count"] for e in source["skipped"] if e["severity"]
                                           == s) for s in severities}, source)
        counts = {"datums": "DatumDefinition", "datumTargets": "DatumTarget", "faces": "Face",
                  "edges": "Edge", "vertices": "Vertex", "bodies": "Body", "displays": "PMIDisplay",
                  "savedViews": "SavedView"}
        self.check("-", "counts", {key: len([*self.doc.root.iter(tag)]) or None
                                   for key, tag in counts.items()}, source["counts"])
        self.check("-", "skippedCount", sum(source[s] for s in severities), source["skippedCount"])
        for entry in source["skipped"]:
            tag = getattr(self.doc.by_id.get(entry["id"]), "tag", None)
            lost = entry["severity"] == "lost" and entry["kind"] == tag
            self.check(entry["id"], f"skipped {entry['kind']}", [True, False], [
                lost or entry["annotation"] in ids, lost and entry["id"] in self.reported])

    # --- What every annotation has ---------------------------------------------------------------

    def annotation(self, element, state):
        ident = element.get("id")
        got = self.reported.get(ident, {})
        self.check_children(ident, element)
        self.doc.written = []
        wanted, on, drawn = state(element)
        if wanted is None:
            return self.no_place(ident, element.tag)
        self.seen.add(ident)
        entities = self.doc.entities(on)
        for entity in entities:
            self.applied[entity["id"]].add(ident)
        wanted.update(id=ident, hidden=element.get("hidden") == "true", entities=entities,
                      written=sorted(self.doc.written))
        got["written"] = sorted([w["text"], w["unit"]] for w in got.get("written", ()))
        for display in self.doc.displays[ident]:
            self.check_children(ident, display)
            if display.find("Texts") is not None and not drawn:
                self.no_place(ident, "Texts")
            if display.find("Plane") is None:
                self.no_place(ident, "PMIDisplay")
            else:
                wanted.update(self.place(ident, display, got))
        self.check(ident, "", wanted, got)

    def place(self, ident, display, got):
        """Where a display stands. Each point of its lines is in the report, or the line listed."""
        plane = display.find("Plane")
        view = self.doc.by_id[plane.findtext("AnnotationViewId/Id")]
        origin = vector(plane.findtext("Origin")) or [0, 0, 0]
        x = vector(plane.findtext("Direction") or view.findtext("Direction"))
        y = unit_vector(cross(vector(view.findtext("Normal")), x))
        size = max(map(abs, origin))
        frame, position = got["frame"], got["position"]
        got["placed"] = along(frame["origin"], (position[0], frame["xAxis"]),
                              (position[1], frame["yAxis"]))
        dimension, ways, wanted = got.get("dimension", {}), [], {}
        leaders = [[leader["tail"], leader["head"]] for leader in got["leaders"]]
        is_in = lambda point, points: any(close(point, p, scale=size) for p in points)
        for line in display:
            if not line.tag.startswith(("Leader", "WitnessLines")):
                continue
            points = {}
            for element in line.iter():
                if len((element.text or "").split()) != 2:
                    if element is not line and len(element) == 0:
                        self.no_place(ident, line.tag, element.tag)
                    continue
                flat = vector(element.text)
                points[element.tag] = along(origin, *zip(flat, (x, y)))
                if is_in(points[element.tag], [end for leader in leaders for end in leader]) or any(
                        close(flat, p, FLOAT) for name in ("line", "extensionLines")
                        for p in dimension.get(name) or ()):
                    self.compared += 1
                else:
                    self.no_place(ident, line.tag)
            if line.tag == "WitnessLines":
                paths = (["BeginPoint", "EndPoint", "CircleCenter"] if "CircleCenter" in points else
                         ["Segment1/StartPoint", "Segment2/StartPoint", "Segment1/EndPoint"])
                wanted["extensionLines"] = [vector(line.findtext(path)) for path in paths]
                continue
            tails = [points[tag] for tag in ("PointExtension", "EndPoint") if tag in points]
            heads = [points[tag] for tag in ("StartPoint", "PointConnection") if tag in points]
            ways += [[tail, head] for tail in tails for head in heads]
            if len(heads) == 2 and dimension:
                wanted["line"] = [vector(line.findtext(path))
                                  for path in ("StartPoint", "PointConnection")]
            else:
                self.check(ident, line.tag, True, is_in([tails[0], heads[0]], leaders))
        for tail, head in leaders:  # each along a line of the document, and none of no length
            self.check(ident, "leader", True, tail != head and is_in([tail, head], ways))
        return {"placed": origin, "frame": {"xAxis": x, "yAxis": y}, "depth": 0.0,
                **({"dimension": wanted} if dimension else {})}

    # --- Characteristics -------------------------------------------------------------------------

    def characteristic(self, nominal):
        stem = nominal.tag[:-len("CharacteristicNominal")]
        definition = self.doc.by_id[nominal.findtext("CharacteristicDefinitionId")]
        self.check_children(nominal.get("id"), definition)
        key, state = (("geometricTolerance", self.tolerance) if stem in TOLERANCES else
                      ("roughness", self.texture) if stem == "SurfaceTexture" else
                      ("dimension", self.dimension))
        on = (self.doc.refers(nominal, "FeatureNominalIds/Id")
              + self.doc.refers(nominal, "EntityInternalIds/Id"))
        fields, drawn = state(nominal, definition, stem)
        return {"kind": key, "name": nominal.findtext("Name"),
                "tolerance" if key == "geometricTolerance" else key: fields}, on, drawn

    def dimension(self, nominal, definition, stem):
        target = nominal.find("TargetValue")
        for feature in self.doc.refers(nominal, "FeatureNominalIds/Id") if target is None else ():
            # The size of the feature that the characteristic is named after.
            own = self.doc.by_id[feature.findtext("FeatureDefinitionId")]
            target = own.find(stem) if target is None else target
        main = next((m for m, stems in MAIN_TYPES.items() if stem in stems.split()), "linear")
        degrees = main == "angular" or stem.startswith("Angular")
        value = self.doc.value(target, degrees)
        places = lambda e: int(e.get("decimalPlaces") or len(e.text.partition(".")[2]))
        limits = {"upper": definition.find("Tolerance/MaxValue"),
                  "lower": definition.find("Tolerance/MinValue")}
        stated = [limit for limit in limits.values() if limit is not None]
        as_limit = definition.findtext("Tolerance/DefinedAsLimit") in ("true", "1")
        how = "limits" if as_limit else "plusMinus" if stated else "none"
        how, prefix, suffix = {"BASIC_OR_TED": ("basic", "[", "]"),
                               "REFERENCE_OR_AUXILIARY": ("reference", "(", ")")}.get(
            definition.findtext("DimensionType"), (how, None, None))
        wanted = {"type": TYPES.get(stem, stem[0].lower() + stem[1:]), "mainType": main,
                  "value": value, "tolerance": how, "texts": {"prefix": prefix, "suffix": suffix},
                  "precision": None if target is None else
                  places(target) if target.tag == "TargetValue" else 0,
                  "tolerancePrecision": max(map(places, stated), default=None)}
        for key, limit in limits.items():
            wanted[key] = self.doc.value(limit, degrees)
            wanted[key + "Text"] = None
            if limit is not None and as_limit:
                wanted[key] -= value or 0
                wanted[key + "Text"] = f"{float(limit.text):.{places(limit)}f}"
        # Texts around the value stand at the ends of the drawn text, a call-out is all of it.
        ident = nominal.get("id")
        bare = lambda text: "".join((text or "").split())
        texts = self.reported[ident]["dimension"]["texts"]
        drawn, callout = bare(self.doc.drawn(ident)), bare(texts["holeCallout"])
        self.check(ident, "texts around the value", [True] * 3, [
            drawn.startswith(bare(texts["before"])), drawn.endswith(bare(texts["after"])),
            callout in ("", drawn)])
        return wanted, callout != ""

    def tolerance(self, nominal, definition, stem):
        ident = nominal.get("id")
        extent = definition.findtext("Extent/ExtentEnum") or ""
        drawn = [m.text for d in self.doc.displays[ident] for m in d.iter("Modifier")]
        rows = [definition] + [s for tag in SEGMENTS for s in definition.findall(tag)]
        for segment in rows[1:]:
            self.check_children(ident, segment)
        return {"type": stem[0].lower() + stem[1:], "rows": [self.row(row) for row in rows],
                "allAround": any(text.startswith("ALL_AROUND") for text in [extent] + drawn)}, False

    def row(self, row):
        number = lambda path: self.doc.value(row.find(path))
        magnitude, refinement = number("ToleranceValue"), number("*/ToleranceValuePerUnit")
        rates = [number(path) for path in (
            "*/UnitLength", "*/*/RectangularUnitAreaLength", "*/*/RectangularUnitAreaWidth",
            "*/*/CircularUnitAreaDiameter") if row.find(path) is not None] + [0, 0]
        material = MATERIAL.get(row.findtext("MaterialCondition"))
        modifiers = [{"type": material, "magnitude": None}] if material else []
        modifiers += [{"type": FLAGS[e.tag], "magnitude": None} for e in row
                      if e.tag in FLAGS and e.text in ("true", "1")]
        modifiers += [{"type": LENGTHS[e.tag], "magnitude": self.doc.value(e)} for e in row
                      if e.tag in LENGTHS]
        zone, frame = row.find("ZoneShape/*"), row.findtext("DatumReferenceFrameId")
        return {"magnitude": refinement if magnitude is None else magnitude, "modifiers": modifiers,
                "refinement": 0 if magnitude is None else refinement or 0,
                "rateUnit1": rates[0], "rateUnit2": rates[1],
                "valueType": ZONES.get(getattr(zone, "tag", None), "none"),
                "frame": frame and self.frame(self.doc.by_id[frame])}

    def frame(self, frame):
        references = sorted(frame.findall("Datums/Datum"), key=lambda datum: PRECEDENCES.index(
            datum.findtext("Precedence/PrecedenceEnum") or "PRIMARY"))
        wanted = []
        for reference in references:
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
        return {"obtention": TEXTURES.get(nominal.findtext("Obtention"), "unspecified"),
                "applicability": TEXTURES.get(nominal.findtext("Applicability"), "unknown"),
                "fields": [None if f is None else f"{TEXTURES.get(f.text, f.text)} "
                           f"{f.get('linearUnit', '')}".strip() for f in fields]}, False

    # --- Datums, notes, saved views --------------------------------------------------------------

    def datum(self, datum):
        label = datum.findtext("DatumLabel")
        targets = self.doc.refers(datum, "DatumTargetIds/Id")
        return ({"kind": "datum", "name": label, "datum": {"label": label, "targets": [
            t.findtext("DatumTargetLabel") for t in targets]}},
            self.doc.refers(datum, "FeatureNominalIds/Id"), False)

    def target(self, target):
        zone = self.doc.by_id[target.findtext("TargetZoneId")]
        ids = [i.text for path in ("FaceIds/Id", "EdgeIds/Id", "VertexId")
               for i in zone.findall(path)] or [target.findtext("FeatureNominalId")]
        label, diameter = target.findtext("DatumTargetLabel"), zone.findtext("Circle/Diameter")
        points = [zone.findtext(p) for p in ("Point", "Line/StartPoint", "Circle/CenterPoint")]
        return {"kind": "datumTarget", "name": label, "datumTarget": {
            "label": label, "type": TARGET_TYPES.get(zone.tag, "area"),
            "point1": next((vector(p) for p in points if p), None),
            "point2": vector(zone.findtext("Line/EndPoint")),
            "note": diameter and "⌀" + diameter}}, [self.doc.by_id[i] for i in ids], False

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
        cameras = view.findall("CameraIds/Id")
        active = [c for c in cameras if c.get("active") == "true"] or cameras
        section = self.doc.by_id.get(view.findtext("ZoneSectionId"))
        path = "SectionPlanes/SectionPlane/Plane/"
        return {"id": view.get("id"), "name": view.get("label"),
                "clippingPlane": None if section is None else {
                    "point": vector(section.findtext(path + "Point")),
                    "normal": vector(section.findtext(path + "Normal"))},
                "members": {"count": len(visible + view.findall("BodyIds/Id")),
                            "annotations": names, "ids": [e.get("id") for e in visible]},
                "camera": self.camera(self.doc.by_id[active[0].text], view) if active else None}

    def camera(self, camera, view):
        """The orientation takes directions of the model to right, up and towards the viewer."""
        w, a, b, c = unit_vector(vector(camera.findtext("Orientation/Value")))
        up = [2 * (a * b + w * c), w * w - a * a + b * b - c * c, 2 * (b * c - w * a)]
        back = [2 * (a * c - w * b), 2 * (b * c + w * a), w * w - a * a - b * b + c * c]
        target, near = vector(camera.findtext("ViewPlaneOrigin")), float(camera.findtext("Near"))
        return {"name": camera.get("label") or view.get("label"), "target": target,
                "type": "perspective" if camera.get("form") == "PERSPECTIVE" else "parallel",
                "viewDirection": [-x for x in back], "viewDirectionNormal": up,
                "origin": along(target, (-near, back)),
                "zoom": 1 / float(camera.findtext("Height"))}


def main(arguments):
    if len(arguments) < 2:
        sys.exit(__doc__)
    failed = False
    for model in arguments[1:]:
        answer = subprocess.run([arguments[0], model, "--json"], stdout=subprocess.PIPE, check=False)
        found = Comparison(Document(model), json.loads(answer.stdout)).run()
        least = MINIMUM.get(Path(model).name, 1)
        print(f"{model}: {found.compared} values compared (at least {least}), "
              f"{len(found.different)} differ, {found.listed} listed as skipped, "
              f"{len(found.left_out)} left out")
        for ident, where, want, got in found.different:
            print(f"  {ident} {where}: document {want!r}, report {got!r}")
        for ident, kind in found.left_out:
            print(f"  {ident} {kind}: stated, not reported, not listed")
        failed = failed or found.different or found.left_out or found.compared < least
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
