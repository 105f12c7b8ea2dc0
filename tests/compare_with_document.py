#!/usr/bin/env python3
"""Compares what pmi_report says about QIF 3.0 documents with what the documents state.

    compare_with_document.py PMI_REPORT MODEL.qif...

Reads each document on its own, without the host's reader. Says for every model how many values were
compared, which differ (id, what, document, report), which the document states and the report has no
place for, and which of those the report lists as skipped. Exit code 1 when anything differs or is
left out without a word.
"""

import json
import math
import re
import subprocess
import sys
import xml.etree.ElementTree as ElementTree
from collections import defaultdict

DOUBLE, FLOAT = 1e-12, 1e-6  # relative: the plug-in hands placements in views out as float

MAIN_TYPES = {  # main type of a dimension: characteristics
    "diametral": "Diameter SphericalDiameter", "radial": "Radius SphericalRadius",
    "linear": "Length Width Height Depth Thickness Chord Square DistanceBetween DistanceFrom",
    "angular": "Angle AngleBetween AngleFrom", "curveLength": "CurveLength", "thread": "Thread",
    "coordinate": "LinearCoordinate AngularCoordinate", "taper": "ConicalTaper FlatTaper",
    "userDefined": "UserDefinedLinear UserDefinedAngular"}
DIMENSIONS = {stem: main for main, stems in MAIN_TYPES.items() for stem in stems.split()}
TYPES = {"DistanceBetween": "distance", "DistanceFrom": "distance", "AngleFrom": "angleBetween",
         "UserDefinedLinear": "userDefined", "UserDefinedAngular": "userDefined"}
IN_DEGREES = {"Angle", "AngleBetween", "AngleFrom", "AngularCoordinate", "UserDefinedAngular"}
TOLERANCES = {name[0].upper() + name[1:]: name for name in (
    "straightness flatness circularity cylindricity conicity sphericity ellipticity toroidicity "
    "otherForm lineProfile surfaceProfile pointProfile angularity perpendicularity parallelism "
    "position concentricity coaxiality symmetry circularRunout totalRunout").split()}
MATERIAL = {"MAXIMUM": "maximumMaterial", "LEAST": "leastMaterial",
            "REGARDLESS": "regardlessOfFeatureSize", "MAXIMUM_RPR": "maximumMaterialReciprocity",
            "LEAST_RPR": "leastMaterialReciprocity"}
FLAG_MODIFIERS = {"FreeState": "freeState", "StatisticalCharacteristic": "statisticalTolerance",
                  "CommonZone": "commonZone", "TangentPlane": "tangentPlane",
                  "OrientationOnly": "orientationOnly", "EachRadialElement": "eachRadialElement"}
VALUE_MODIFIERS = {"ProjectedToleranceZoneValue": "projectedZone",
                   "ProjectedToleranceZone": "projectedZone",
                   "UnequallyDisposedZone": "unequallyDisposed",
                   "MaximumToleranceValue": "maximumTolerance"}
ZONES = {"DiametricalZone": "diametrical", "SphericalZone": "spherical"}
SEGMENTS = [n + "CompositeSegment" + kind + "Definition"
            for n in ("Second", "Third", "Fourth") for kind in ("Position", "Profile")]
PRECEDENCES = ["PRIMARY", "SECONDARY", "TERTIARY", "QUATERNARY", "QUINARY", "SENARY"]
TARGET_TYPES = {"FeatureZonePoint": "point", "FeatureZoneCurveLine": "line",
                "FeatureZoneAreaCircular": "circle", "FeatureZoneAreaRectangular": "rectangle"}
OBTENTIONS = {"UNDEFINED": "unspecified", "MACHINING_MANDATORY": "machiningMandatory",
              "MACHINING_FORBIDDEN": "machiningForbidden"}
APPLICABILITIES = {"SPECIFIED_SURFACE_ONLY": "specifiedSurfaceOnly",
                   "ALL_PART_SURFACES": "allPartSurfaces", "BASIC_SURFACE": "basicSurface"}
LAYS = {"PARALLEL": "=", "PERPENDICULAR": "⊥", "CROSS_HATCH": "X", "MULTI_DIRECTIONAL": "M",
        "CIRCULAR": "C", "RADIAL": "R", "PARTICULATE": "P"}
SYMBOLS = {"DIAMETER": "⌀", "PLUS_MINUS": "±", "DEGREE": "°", "BR": "\n", "M": "Ⓜ"}

# Children of the elements visited that the comparison reads, or that only tie elements together.
READ = {*"""CharacteristicDefinitionId FeatureNominalIds EntityInternalIds Name TargetValue
    Tolerance DimensionType NonTolerance ToleranceValue ToleranceZonePerUnitLength
    ToleranceZonePerUnitArea ZoneShape DatumReferenceFrameId MaterialCondition Extent Obtention
    Applicability RoughnessAverage MinimumMaterialRemoval ProductionMethod Cutoff
    SecondaryRoughnessParameter DirectionOfLay OtherSurfaceParameter DatumLabel DatumTargetIds
    DatumTargetLabel FeatureNominalId TargetZoneId Text Plane Texts Reference
    AnnotationVisibleIds AnnotationHiddenIds BodyIds ZoneSectionId CameraIds
    """.split(), *FLAG_MODIFIERS, *VALUE_MODIFIERS, *SEGMENTS}
# How things are drawn, as far as no query of the plug-in answers it, and applications' own data.
DRAWING = {"Color", "Frames", "GroupID", "Attributes"}

COUNTS = "{} values compared, {} differ, {} left out, {} listed as skipped"


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
        self.linear = {u.findtext("UnitName"): float(u.findtext("UnitConversion/Factor") or 1)
                       for u in units.iter() if u.tag in ("LinearUnit", "PMILinearUnit")}
        self.angular = {u.findtext("UnitName"): float(u.findtext("UnitConversion/Factor") or 1)
                        for u in units.iter() if u.tag in ("AngularUnit", "PMIAngularUnit")}
        primary = units.find("PrimaryUnits")
        self.length = primary.findtext("LinearUnit/UnitName")
        self.pmi_length = primary.findtext("PMILinearUnit/UnitName") or self.length
        self.pmi_angle = (primary.findtext("PMIAngularUnit/UnitName")
                          or primary.findtext("AngularUnit/UnitName"))

    def refers(self, element, path):
        """The elements whose ids stand at `path`."""
        return [self.by_id[i.text] for i in element.findall(path)]

    def value(self, element, degrees=False):
        """The value of an element of a characteristic, in the document's length unit or degrees."""
        if element is None:
            return None
        if degrees:
            unit = self.angular[element.get("angularUnit", self.pmi_angle)]
            return float(element.text) * unit * 180 / math.pi
        unit = element.get("linearUnit", self.pmi_length)
        return float(element.text) * self.linear[unit] / self.linear[self.length]

    def entities(self, elements):
        """The topology that features or entities come down to, in the document's order."""
        found = []
        for e in elements:
            if e.tag.endswith("FeatureNominal"):
                found += self.entities(self.refers(e, "EntityInternalIds/Id"))
                found += self.entities(self.refers(e, "FeatureNominalIds/Id"))
            elif e.tag in ("Face", "Edge", "Vertex", "Body"):
                found.append([e.tag.lower(), e.get("id"), e.get("label") or e.get("id")])
        return found

    def display_text(self, display):
        lines = [t.findtext("Data") or "" for t in display.findall("Texts/Text")]
        return [re.sub(r"\{(\w+)\}", lambda m: SYMBOLS.get(m[1], m[0]), line) for line in lines]


def get(found, *keys):
    """found[key][key]..., or None where that ends early; a callable key is called instead."""
    for key in keys:
        if found is None or (isinstance(key, int) and key >= len(found)):
            return None
        if callable(key):
            found = key(found)
        else:
            found = found.get(key) if isinstance(found, dict) else found[key]
    return found


def close(want, got, tolerance, scale):
    if isinstance(want, (list, tuple)):
        if not isinstance(got, list) or len(got) != len(want):
            return False
        scale = max([scale] + [abs(x) for x in want if isinstance(x, (int, float))])
        return all(close(w, g, tolerance, scale) for w, g in zip(want, got))
    if isinstance(want, bool) or not isinstance(want, (int, float)):
        return want == got
    return (isinstance(got, (int, float))
            and abs(want - got) <= tolerance * max(abs(want), abs(got), scale))


class Tally:
    """What came out for one model."""

    def __init__(self, skipped):
        self.compared, self.different, self.listed = 0, [], []
        self.left_out = defaultdict(list)
        self.skipped = {(s["kind"], s["id"]): s["reason"] for s in skipped}

    def check(self, ident, what, want, got, tolerance=DOUBLE, scale=0.0):
        if want is None:
            return
        self.compared += 1
        if not close(want, got, tolerance, scale):
            self.different.append((ident, what, want, got))

    def no_place(self, ident, what):
        """A value is stated that the report can't hold: it has to be listed as skipped."""
        reason = self.skipped.get((what.split("/")[0], ident))
        if reason:
            self.listed.append((ident, what, reason))
        else:
            self.left_out[what].append(ident)

    def check_children(self, ident, element, known=()):
        for child in element:
            nothing = (child.text or "").strip() in ("", "false", "NONE") and len(child) == 0
            if not (child.tag in READ or child.tag in DRAWING or child.tag in known or nothing):
                self.no_place(ident, child.tag)


def vector(text):
    return [float(x) for x in text.split()]


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
        self.tally = Tally(report["source"]["skipped"])
        self.reported = defaultdict(list)
        for view in report["views"]:
            for annotation in view["annotations"]:
                key = annotation["kind"], annotation["name"]
                self.reported[key].append((view["frame"], annotation))

    def run(self):
        for path, compare in (
                ("Characteristics/CharacteristicNominals/*", self.characteristic),
                ("DatumDefinitions/DatumDefinition", self.datum),
                ("DatumTargetDefinitions/DatumTarget", self.target),
                ("Product/NoteSet/Note", self.note), ("Product/NoteFlagSet/NoteFlag", self.note),
                ("Product/PartNoteSet/PartNote", self.no_annotation)):
            for element in self.doc.root.findall(path):
                compare(element)
        self.saved_views()
        for (kind, name), rest in self.reported.items():
            for _ in rest:
                self.tally.check("-", f"annotation of the report, {kind} {name}", "none", "one")
        return self.tally

    def no_annotation(self, element):
        self.tally.no_place(element.get("id"), element.tag)

    # --- What every annotation has ---------------------------------------------------------------

    def annotation(self, element, kind, name, entities):
        """Finds the annotation, compares what all have; gives a check bound to its id."""
        ident = element.get("id")
        found = self.reported[kind, name]
        frame, annotation = found.pop(0) if found else (None, None)
        check = lambda what, want, *keys, **more: self.tally.check(
            ident, what, want, get(annotation, *keys), **more)
        check("kind", kind, "kind")
        check("id", ident, "id")
        check("name", name, "name")
        check("hidden", element.get("hidden") == "true", "hidden")
        self.tally.check_children(ident, element)
        if entities:
            check("entities", entities, "entities", lambda found: [[*e.values()] for e in found])
        for display in self.doc.displays[ident]:
            self.display(ident, display, frame, annotation)
        return check

    def display(self, ident, display, frame, annotation):
        dimension = get(annotation, "dimension")
        leaders = [e for e in display if e.tag.startswith("Leader")]
        self.tally.check_children(ident, display, ["WitnessLines"] + [l.tag for l in leaders])
        plane = display.find("Plane")
        if plane is None:
            if leaders or display.find("Texts") is not None:
                self.tally.no_place(ident, "PMIDisplay")
            return
        view = self.doc.by_id[plane.findtext("AnnotationViewId/Id")]
        origin = vector(plane.findtext("Origin") or "0 0 0")
        x = vector(plane.findtext("Direction") or view.findtext("Direction"))
        y = unit_vector(cross(vector(view.findtext("Normal")), x))
        size = max(map(abs, origin))
        position = get(annotation, "position") if frame else None
        placed = position and along(frame["origin"], (position[0], frame["xAxis"]),
                                    (position[1], frame["yAxis"]))
        self.tally.check(ident, "plane's origin", origin, placed, FLOAT, size)
        self.tally.check(ident, "plane's x axis", x, get(frame, "xAxis"), FLOAT, 1)
        self.tally.check(ident, "plane's y axis", y, get(frame, "yAxis"), FLOAT, 1)
        self.tally.check(ident, "depth", 0.0, get(annotation, "depth"), FLOAT, size)

        def point(text):
            u, v = vector(text)
            return along(origin, (u, x), (v, y))

        wanted = []
        for leader in leaders:
            head, end = leader.findtext("StartPoint"), leader.findtext("EndPoint")
            tail = leader.findtext("PointExtension") or end
            second = leader.findtext("PointConnection")
            if second is None:
                wanted.append((point(tail), point(head)))
            elif dimension is not None:
                # The second head stands at the connection; from there the line runs on to the text.
                for i, text in enumerate((head, second)):
                    self.tally.check(ident, f"dimension line, end {i + 1}", vector(text),
                                     get(dimension, "line", i), FLOAT)
            else:
                heads = [head] + [second] * (vector(second) != vector(tail))
                wanted += [(point(tail), point(text)) for text in heads]
            for path, lost in (("PointExtension", "EndPoint, its break"), ("Center", "Center")):
                if leader.find(path) is not None:
                    self.tally.no_place(ident, f"{leader.tag}/{lost}")
        got = get(annotation, "leaders") or []
        self.tally.check(ident, "leaders", len(wanted), len(got))
        for i, (tail, head) in enumerate(wanted):
            self.tally.check(ident, f"leader {i}, tail", tail, get(got, i, "tail"), scale=size)
            self.tally.check(ident, f"leader {i}, head", head, get(got, i, "head"), scale=size)

        witness = display.find("WitnessLines")
        if witness is None:
            return
        if dimension is None:
            self.tally.no_place(ident, "WitnessLines")
            return
        paths = ["Segment1/StartPoint", "Segment2/StartPoint", "Segment1/EndPoint"]
        if witness.find("CircleCenter") is not None:
            paths = ["BeginPoint", "EndPoint", "CircleCenter"]
        for i, path in enumerate(paths):
            self.tally.check(ident, "witness line, " + path, vector(witness.findtext(path)),
                             get(dimension, "extensionLines", i), FLOAT)
        for path in ("Segment2/EndPoint", "ZextensionPoint1", "ZextensionPoint2"):
            if witness.find(path) is not None:
                self.tally.no_place(ident, "WitnessLines/" + path)

    # --- Characteristics -------------------------------------------------------------------------

    def characteristic(self, nominal):
        stem = nominal.tag[:-len("CharacteristicNominal")]
        definition = self.doc.by_id[nominal.findtext("CharacteristicDefinitionId")]
        kind, compare = (("dimension", self.dimension) if stem in DIMENSIONS else
                         ("geometricTolerance", self.tolerance) if stem in TOLERANCES else
                         ("roughness", self.texture) if stem == "SurfaceTexture" else (None, None))
        if kind is None:
            self.no_annotation(nominal)
            return
        entities = self.doc.entities(self.doc.refers(nominal, "FeatureNominalIds/Id")
                                     + self.doc.refers(nominal, "EntityInternalIds/Id"))
        check = self.annotation(nominal, kind, nominal.findtext("Name"), entities)
        self.tally.check_children(nominal.get("id"), definition)
        compare(nominal, definition, stem, check)

    def nominal_value(self, nominal, stem):
        """The target value, or the size of the feature that the characteristic is named after."""
        target = nominal.find("TargetValue")
        for feature in self.doc.refers(nominal, "FeatureNominalIds/Id") if target is None else ():
            definition = self.doc.by_id[feature.findtext("FeatureDefinitionId")]
            target = definition.find(stem) if target is None else target
        return target

    def dimension(self, nominal, definition, stem, check):
        degrees = stem in IN_DEGREES
        kind = TYPES.get(stem, stem[0].lower() + stem[1:])
        check("dimension type", kind, "dimension", "type")
        check("main type", DIMENSIONS[stem], "dimension", "mainType")
        target = self.nominal_value(nominal, stem)
        value = self.doc.value(target, degrees)
        check("value", value, "dimension", "value")
        if target is not None and target.get("decimalPlaces"):
            check("precision", int(target.get("decimalPlaces")), "dimension", "precision")
        limits = [definition.find("Tolerance/" + tag) for tag in ("MaxValue", "MinValue")]
        as_limit = definition.findtext("Tolerance/DefinedAsLimit") in ("true", "1")
        for limit, key in zip(limits, ("upper", "lower")):
            if limit is None:
                continue
            wanted = self.doc.value(limit, degrees) - (as_limit and value or 0)
            check(key, wanted, "dimension", key, scale=abs(value or 0) if as_limit else 0)
            places = limit.get("decimalPlaces")
            if places:
                check("tolerance precision", int(places), "dimension", "tolerancePrecision")
            if as_limit:  # the text is what the limit looks like on the drawing
                text = f"{float(limit.text):.{places}f}" if places else limit.text
                check(key + " text", text, "dimension", key + "Text")
        self.dimension_texts(nominal, definition, target, limits if as_limit else [], check)

    def dimension_texts(self, nominal, definition, target, limits, check):
        marks = {"BASIC_OR_TED": "[]", "REFERENCE_OR_AUXILIARY": "()"}
        around = marks.get(definition.findtext("DimensionType"), "")
        for key, mark in zip(("prefix", "suffix"), around):
            check(key, mark, "dimension", "texts", key)
        stated = [float(e.text) for e in [target] + limits if e is not None]
        for display in self.doc.displays[nominal.get("id")]:
            text = " ".join(self.doc.display_text(display))
            for number in re.finditer(r"\d*\.?\d+", text):
                decimals = len(number[0].partition(".")[2])
                if any(abs(float(number[0]) - s) <= 0.5000001 * 10 ** -decimals for s in stated):
                    break
            else:
                continue
            before = text[:number.start()].rstrip(" ([⌀□SR")
            after = re.sub(r"^(\s|IN\b|[°±+\-/)\]]|\d*\.?\d+(IN)?)*", "", text[number.end():])
            check("text before", before or None, "dimension", "texts", "before")
            check("text after", after.strip() or None, "dimension", "texts", "after")
            if before[-1:] in ("⌴", "⌵", "↧"):
                check("hole callout", text, "dimension", "texts", "holeCallout")

    def tolerance(self, nominal, definition, stem, check):
        check("tolerance type", TOLERANCES[stem], "tolerance", "type")
        extent = definition.findtext("Extent/ExtentEnum") or ""
        drawn = [m.text for d in self.doc.displays[nominal.get("id")] for m in d.iter("Modifier")]
        around = any(text.startswith("ALL_AROUND") for text in [extent] + drawn)
        check("all around", around, "tolerance", "allAround")
        if extent.startswith("ALL_OVER") or extent.endswith("SIDE"):
            self.tally.no_place(nominal.get("id"), "Extent")
        rows = [definition] + [s for tag in SEGMENTS for s in definition.findall(tag)]
        check("rows", len(rows), "tolerance", "rows", len)
        for segment in rows[1:]:
            self.tally.check_children(nominal.get("id"), segment)
        for i, row in enumerate(rows):
            self.row(row, lambda what, want, *keys, i=i: check(
                f"row {i}, {what}", want, "tolerance", "rows", i, *keys))

    def row(self, row, check):
        number = lambda path: self.doc.value(row.find(path))
        magnitude, refinement = number("ToleranceValue"), number("*/ToleranceValuePerUnit")
        if magnitude is None:  # the value per unit stands alone
            magnitude, refinement = refinement, None
        check("magnitude", magnitude, "magnitude")
        check("refinement", refinement, "refinement")
        for path, key in (("*/UnitLength", "rateUnit1"),
                          ("*/*/RectangularUnitAreaLength", "rateUnit1"),
                          ("*/*/RectangularUnitAreaWidth", "rateUnit2"),
                          ("*/*/CircularUnitAreaDiameter", "rateUnit1")):
            check(path.rpartition("/")[2], number(path), key)
        zone = row.find("ZoneShape/*")
        if zone is not None:
            check("zone shape", ZONES.get(zone.tag, "none"), "valueType")

        others = [(name, None) for tag, name in FLAG_MODIFIERS.items()
                  if row.findtext(tag) in ("true", "1")]
        others += [(name, number(tag)) for tag, name in VALUE_MODIFIERS.items()
                   if row.find(tag) is not None]
        material = row.findtext("MaterialCondition")
        self.modifiers(check, "modifiers", material, others, "modifiers")
        frame = row.findtext("DatumReferenceFrameId")
        if frame:
            self.frame(self.doc.by_id[frame], check)

    def modifiers(self, check, what, material, others, *keys):
        wanted = dict(others)
        if material in MATERIAL:
            wanted[MATERIAL[material]] = None
        by_name = lambda modifiers: {m["type"]: m["magnitude"] for m in modifiers}
        check(what, sorted(wanted), *keys, by_name, sorted)
        for name, magnitude in wanted.items():
            check(f"{what}, {name}", magnitude, *keys, by_name, lambda found: found.get(name))

    def frame(self, frame, check):
        check("frame, note", frame.findtext("Name"), "frame", "note")
        references = sorted(frame.findall("Datums/Datum"), key=lambda datum: PRECEDENCES.index(
            datum.findtext("Precedence/PrecedenceEnum") or "PRIMARY"))
        check("references", len(references), "frame", "references", len)
        for i, reference in enumerate(references):
            datums = list(reference.iter("SimpleDatum"))
            for datum in datums:
                self.tally.check_children(frame.get("id"), datum, (
                    "DatumDefinitionId", "MaterialModifier", "ReferencedComponent"))
            labels = [self.doc.by_id[d.findtext("DatumDefinitionId")].findtext("DatumLabel")
                      for d in datums]
            at = ("frame", "references", i)
            check(f"reference {i}, label", "-".join(labels), *at, "label")
            check(f"reference {i}, datums", len(datums), *at, "datums", len)
            for k, (datum, label) in enumerate(zip(datums, labels)):
                check(f"reference {i}, datum {k}", label, *at, "datums", k, "label")
                material = datum.findtext("MaterialModifier")
                self.modifiers(check, f"reference {i}, datum {k}, modifiers", material, [],
                               *at, "datums", k, "modifiers")

    def texture(self, nominal, definition, _, check):
        check("obtention", OBTENTIONS.get(nominal.findtext("Obtention")), "roughness", "obtention")
        check("applicability", APPLICABILITIES.get(nominal.findtext("Applicability")),
              "roughness", "applicability")
        fields = [definition.find("RoughnessAverage"), *map(nominal.find, (
            "MinimumMaterialRemoval", "ProductionMethod", "Cutoff", "SecondaryRoughnessParameter",
            "DirectionOfLay", "OtherSurfaceParameter"))]
        for i, field in enumerate(fields):
            if field is not None:
                words = [LAYS.get(field.text, field.text), field.get("linearUnit", "")]
                check(f"field {i}", " ".join(words).strip(), "roughness", "fields", i)

    # --- Datums, notes, saved views --------------------------------------------------------------

    def datum(self, datum):
        label = datum.findtext("DatumLabel")
        entities = self.doc.entities(self.doc.refers(datum, "FeatureNominalIds/Id"))
        check = self.annotation(datum, "datum", label, entities)
        check("label", label, "datum", "label")
        targets = self.doc.refers(datum, "DatumTargetIds/Id")
        check("targets", [t.findtext("DatumTargetLabel") for t in targets], "datum", "targets")

    def target(self, target):
        zone = self.doc.by_id.get(target.findtext("TargetZoneId"))
        ids = [i.text for path in ("FaceIds/Id", "EdgeIds/Id", "VertexId")
               for i in (zone.findall(path) if zone is not None else ())]
        ids = ids or [target.findtext("FeatureNominalId")]
        label = target.findtext("DatumTargetLabel")
        entities = self.doc.entities([self.doc.by_id[i] for i in ids if i])
        check = self.annotation(target, "datumTarget", label, entities)
        check("label", label, "datumTarget", "label")
        if zone is None:
            return
        check("type", TARGET_TYPES.get(zone.tag, "area"), "datumTarget", "type")
        points = [zone.findtext(p) for p in ("Point", "Line/StartPoint", "Circle/CenterPoint")]
        check("point 1", next((vector(p) for p in points if p), None), "datumTarget", "point1")
        end = zone.findtext("Line/EndPoint")
        check("point 2", vector(end) if end else None, "datumTarget", "point2")
        diameter = zone.findtext("Circle/Diameter")
        check("size", diameter and "⌀" + diameter, "datumTarget", "note")

    def note(self, note):
        kind = "flagNote" if note.tag == "NoteFlag" else "text"
        entities = self.doc.entities(self.doc.refers(note, "EntityInternalIds/Id"))
        check = self.annotation(note, kind, note.get("label"), entities)
        displays = self.doc.displays[note.get("id")]
        shown = "\n".join(line for d in displays for line in self.doc.display_text(d))
        check("text", note.findtext("Text") or shown, "texts", 0, "string")
        for texts in [d.find("Texts") for d in displays if d.find("Texts") is not None]:
            font = self.doc.fonts[texts.get("fontIndex")]
            height = texts.get("lineHeight")
            check("font, height", float(height) if height else None, "texts", 0, "font", "height",
                  tolerance=FLOAT)
            for style in ("bold", "italic", "underline"):
                check("font, " + style, font.get(style) == "true", "texts", 0, "font", style)

    def saved_views(self):
        views = self.doc.root.findall("Product/ViewSet/SavedViewSet/SavedView")
        self.tally.check("-", "saved views", len(views), len(self.report["captures"]))
        for i, view in enumerate(views):
            got = get(self.report["captures"], i)
            check = lambda what, want, *keys, **more: self.tally.check(
                view.get("id"), what, want, get(got, *keys), **more)
            check("id", view.get("id"), "id")
            check("name", view.get("label"), "name")
            self.tally.check_children(view.get("id"), view)
            visible = self.doc.refers(view, "AnnotationVisibleIds/Id")
            names = [e.findtext("Name") or e.findtext("DatumLabel")
                     or e.findtext("DatumTargetLabel") or e.get("label") for e in visible]
            members = visible + view.findall("BodyIds/Id")
            check("members, number", len(members), "members", "count")
            check("members", names, "members", "annotations")
            check("members, ids", [e.get("id") for e in visible], "members", "ids")
            cameras = view.findall("CameraIds/Id")
            active = [c for c in cameras if c.get("active") == "true"] or cameras
            if active:
                self.camera(self.doc.by_id[active[0].text], check)
            if len(cameras) > 1:
                self.tally.no_place(view.get("id"), "CameraIds")
            section = self.doc.by_id.get(view.findtext("ZoneSectionId"))
            if section is not None:
                planes = section.findall("SectionPlanes/SectionPlane/Plane")
                for path, key in (("Point", "point"), ("Normal", "normal")):
                    check("section, " + key, vector(planes[0].findtext(path)), "clippingPlane", key,
                          tolerance=FLOAT)
                if len(planes) > 1:
                    self.tally.no_place(view.get("id"), "ZoneSection")

    def camera(self, camera, check):
        """The orientation takes directions of the model to right, up and towards the viewer."""
        w, a, b, c = unit_vector(vector(camera.findtext("Orientation/Value")))
        up = [2 * (a * b + w * c), w * w - a * a + b * b - c * c, 2 * (b * c - w * a)]
        back = [2 * (a * c - w * b), 2 * (b * c + w * a), w * w - a * a - b * b + c * c]
        target = vector(camera.findtext("ViewPlaneOrigin"))
        near = float(camera.findtext("Near"))
        check("camera, name", camera.get("label"), "camera", "name")
        perspective = camera.get("form") == "PERSPECTIVE"
        check("camera, type", "perspective" if perspective else "parallel", "camera", "type")
        check("camera, target", target, "camera", "target")
        check("camera, direction", [-x for x in back], "camera", "viewDirection", scale=1)
        check("camera, up", up, "camera", "viewDirectionNormal", scale=1)
        check("camera, origin", along(target, (-near, back)), "camera", "origin", scale=abs(near))
        check("camera, zoom", 1 / float(camera.findtext("Height")), "camera", "zoom")


def main(arguments):
    if len(arguments) < 2:
        sys.exit(__doc__)
    program, models = arguments[0], arguments[1:]
    totals = [0, 0, 0, 0]
    for model in models:
        answer = subprocess.run([program, model, "--json"], capture_output=True)
        if answer.returncode not in (0, 4):  # 4: some PMI was lost
            sys.exit(answer.stderr.decode())
        tally = Comparison(Document(model), json.loads(answer.stdout)).run()
        counts = [tally.compared, len(tally.different), sum(map(len, tally.left_out.values())),
                  len(tally.listed)]
        totals = list(map(sum, zip(totals, counts)))
        print(f"{model}: {COUNTS.format(*counts)}")
        for ident, what, want, got in tally.different:
            print(f"  {ident} {what}: document {want!r}, report {got!r}")
        for what, idents in sorted(tally.left_out.items()):
            print(f"  {what}: stated, not reported, not listed: {len(idents)} ({' '.join(idents)})")
        for ident, what, reason in tally.listed:
            print(f"  {ident} {what}: listed as skipped, {reason}")
    print(f"total: {COUNTS.format(*totals)}")
    return 1 if totals[1] + totals[2] else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
