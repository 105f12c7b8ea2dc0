"""Reads STEP files (ISO 10303-21, AP242) for compare_with_step.py, without the host's reader."""

import math
import re
from collections import defaultdict

TOKEN = re.compile(r"""\s+ | /\*.*?\*/ | (?P<text>'(?:[^']|'')*') | \#(?P<ref>\d+)
    | (?P<number>[+-]?\d+\.?\d*(?:[eE][+-]?\d+)?) | \.(?P<enum>\w+)\.
    | (?P<word>[A-Za-z_]\w*) | (?P<mark>[()=;,$*])""", re.S | re.X)
ESCAPE = re.compile(r"(''|\\\\)|\\X\\(..)|\\S\\(.)|\\X([24])\\([0-9A-F]*)\\X0\\")
KINDS = {"CIRCULAR_RUNOUT": "circularRunout", "TOTAL_RUNOUT": "totalRunout",
         "ROUNDNESS": "circularity", "LINE_PROFILE": "lineProfile",
         "SURFACE_PROFILE": "surfaceProfile"}
KINDS.update({s.upper(): s for s in """angularity coaxiality concentricity cylindricity flatness
    parallelism perpendicularity position straightness symmetry""".split()})
MODIFIERS = {"MAXIMUM_MATERIAL_REQUIREMENT": "maximumMaterial", "FREE_STATE": "freeState",
             "LEAST_MATERIAL_REQUIREMENT": "leastMaterial", "TANGENT_PLANE": "tangentPlane",
             "STATISTICAL_TOLERANCE": "statisticalTolerance", "COMMON_ZONE": "commonZone"}
TOPOLOGY = {"ADVANCED_FACE": "face", "EDGE_CURVE": "edge", "VERTEX_POINT": "vertex",
            "CARTESIAN_POINT": "vertex", "MANIFOLD_SOLID_BREP": "body"}
GROUPS = {"COMPOSITE_SHAPE_ASPECT", "COMPOSITE_GROUP_SHAPE_ASPECT", "ALL_AROUND_SHAPE_ASPECT",
          "CONTINUOUS_SHAPE_ASPECT"}
NOTES = {"auxiliary": "()", "theoretical": "[]", "square": "□"}
PREFIXES = {None: 1, "MILLI": 1e-3, "CENTI": 1e-2, "MICRO": 1e-6, "KILO": 1e3}


class Ref(int):
    """A reference to an instance."""


def decoded(text):
    def plain(m):
        escape, code, shifted, width, codes = m.groups()
        if width:
            return bytes.fromhex(codes).decode("utf-16-be" if width == "2" else "utf-32-be")
        return escape[0] if escape else chr(int(code, 16)) if code else chr(ord(shifted) + 128)

    return ESCAPE.sub(plain, text)


def dot(a, b):
    return sum(x * y for x, y in zip(a, b))


def cross(a, b):
    return [a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]]


class Exchange:
    """A file's instances, {type: parameters} by number, and who refers to each.

    Parameters are str (texts and enumerations), float, Ref, None, lists, and (type, parameters).
    """

    def __init__(self, path):
        with open(path, encoding="latin-1") as stream:
            self.text = stream.read()
        start = re.search(r"\bDATA\s*(?:\([^;]*\))?;", self.text).end()
        self.tokens = ((m.lastgroup, m[m.lastgroup])
                       for m in TOKEN.finditer(self.text, start) if m.lastgroup)
        self.all, self.users = {}, defaultdict(list)
        for kind, number in self.tokens:
            if kind != "ref":
                break
            next(self.tokens)
            kind, name = next(self.tokens)
            if kind == "mark":  # complex: records up to the bracket's end
                records = {}
                for kind, name in self.tokens:
                    if kind == "mark":
                        break
                    records[name] = self.list_after()
            else:
                records = {name: self.list_after()}
            next(self.tokens)
            self.all[int(number)] = records
        for number, records in self.all.items():
            for target in dict.fromkeys(self.refs(list(records.values()))):
                self.users[target].append(number)
        context = next(p[-1] for s in self.every("MANIFOLD_SOLID_BREP") for p in self.using(
            s, "ADVANCED_BREP_SHAPE_REPRESENTATION", "SHAPE_REPRESENTATION"))
        self.unit = next(self.factor(u) for u in self.of(context, "GLOBAL_UNIT_ASSIGNED_CONTEXT")[0]
                         if self.of(u, "LENGTH_UNIT") is not None)

    def list_after(self):
        next(self.tokens)
        return self.parameters()

    def parameters(self):
        found = []
        for kind, value in self.tokens:
            if kind == "word":
                found.append((value, self.list_after()))
            elif kind != "mark":
                found.append({"ref": Ref, "number": float, "enum": str,
                              "text": lambda t: decoded(t[1:-1])}[kind](value))
            elif value == ")":
                return found
            elif value == "(":
                found.append(self.parameters())
            elif value != ",":
                found.append(None)
        raise ValueError("the file ends in a list")

    def refs(self, value):
        """Every reference in a parameter, those of lists and typed ones included."""
        if isinstance(value, Ref):
            return [int(value)]
        return [r for v in value for r in self.refs(v)] if isinstance(value, (list, tuple)) else []

    def of(self, number, *types):
        """The parameters of the instance's first record of these types, or of any type."""
        records = self.all.get(number, {})
        return next((records[t] for t in types or records if t in records), None)

    def every(self, *types):
        return [n for n in self.all if self.of(n, *types) is not None]

    def using(self, number, *types):
        """The parameters of the records of these types that refer to the instance."""
        return [p for n in sorted(self.users[number]) if (p := self.of(n, *types)) is not None]

    def items(self, representation):
        return (self.of(representation, "REPRESENTATION") or self.of(representation))[1]

    def factor(self, unit):
        """Of a unit to metre or radian."""
        if si := self.of(unit, "SI_UNIT"):
            return PREFIXES[si[-2]]
        value, of = self.measure(self.of(unit, "CONVERSION_BASED_UNIT")[1])
        return value * self.factor(of)

    def measure(self, number):
        """(number as written, unit) of any measure with unit, or None."""
        return next(((typed[1][0], unit) for p in self.all[number].values() for typed, unit in
                     zip(p, p[1:]) if isinstance(typed, tuple) and isinstance(unit, Ref)), None)

    def decimals(self, number):
        """As the measure's qualifiers state them, or None."""
        lists = [q[3] for q in self.using(number, "MEASURE_QUALIFICATION")]
        lists += self.of(number, "QUALIFIED_REPRESENTATION_ITEM") or []
        formats = [self.of(r, "VALUE_FORMAT_TYPE_QUALIFIER") for found in lists for r in found]
        return next((float(f[0].rpartition(".")[2]) for f in formats if f), None)

    def placement(self, number):
        """(location, x, y, z) of a placement, of a plane or of a box in a plane."""
        p = self.of(number, "AXIS2_PLACEMENT_3D")
        if p is None:
            return self.placement((self.of(number, "PLANE") or self.of(number, "PLANAR_BOX")[2:])[1])
        origin, z, x = (self.of(r)[1] for r in p[1:])
        return origin, x, cross(z, x), z

    def points(self, number):
        """All points of something drawn, where they are in the model."""
        if self.of(number, "COORDINATES_LIST"):
            return self.of(number)[2]
        if self.of(number, "CARTESIAN_POINT"):
            return [self.of(number)[1]]
        moved = self.of(number, "REPOSITIONED_TESSELLATED_ITEM")
        within = [p for p in self.all[number].values() if p is not moved]
        found = [p for r in self.refs(within) if not self.of(r, "ANNOTATION_PLACEHOLDER_OCCURRENCE")
                 and not any("STYLE" in t for t in self.all[r]) for p in self.points(r)]
        if not moved:
            return found
        axes = list(zip(*self.placement(moved[0])))
        return [[o + dot(along, p) for o, *along in axes] for p in found]

    # --- AP242 --------------------------------------------------------------------------

    def value(self, number, degrees=False):
        """A measure in the model's length unit, or in degrees."""
        written, unit = self.measure(number)
        if degrees:  # a degree's factor is written rounded
            return float(f"{math.degrees(written * self.factor(unit)):.9g}")
        return written * self.factor(unit) / self.unit

    def validation(self, n):
        """{name: value} of the validation properties of an instance."""
        found = [self.of(i) for p in self.users[n]
                 if (self.of(p, "PROPERTY_DEFINITION") or [0])[0] == "pmi validation property"
                 for use in self.using(p, "PROPERTY_DEFINITION_REPRESENTATION")
                 for i in self.items(use[1])]
        return {p[0]: p[1] for p in found if len(p) > 1}

    def entities(self, aspects):
        """Sorted (kind, id, label) of the topology that shape aspects come down to."""
        found, todo, seen = set(), list(aspects), set()
        while todo:
            s = todo.pop()
            if s in seen:
                continue
            seen.add(s)
            if self.of(s, "PRODUCT_DEFINITION_SHAPE"):
                found.update(self.every("MANIFOLD_SOLID_BREP"))
            for usage in self.using(s, "GEOMETRIC_ITEM_SPECIFIC_USAGE",
                                 "ITEM_IDENTIFIED_REPRESENTATION_USAGE"):
                found.update(self.refs(usage[4]))
            if GROUPS & self.all[s].keys():
                todo += [r[3] for r in self.using(s, "SHAPE_ASPECT_RELATIONSHIP")
                         if r[2] == s and not self.of(r[3], "DATUM")]
            todo += [r[3] for r in self.using(s, "SHAPE_ASPECT_DERIVING_RELATIONSHIP") if r[2] == s]
        return sorted((kind, f"#{n}", self.of(n, type)[0] or f"#{n}") for n in found
                      for type, kind in TOPOLOGY.items() if self.of(n, type))

    def compartment(self, n):
        """[(label, modifiers)] of a reference: one datum, or those of a common datum."""
        p = self.of(n)
        if self.of(n, "DATUM_REFERENCE"):  # of the first edition
            return [(self.of(p[1], "DATUM")[4], [])]
        if not isinstance(p[4], Ref):
            return [datum for element in self.refs(p[4]) for datum in self.compartment(element)]
        names = [m[1][0] for m in p[5] or [] if isinstance(m, tuple)]
        return [(self.of(p[4], "DATUM")[4], sorted(MODIFIERS.get(m, m) for m in names))]

    def tolerances(self):
        """(instance, kind, rows) of each frame; the first row is the instance itself."""
        below = defaultdict(list)
        for n in self.every("GEOMETRIC_TOLERANCE_RELATIONSHIP"):
            if self.of(n)[0] in ("", "composite"):
                below[self.of(n)[2]].append(self.of(n)[3])
        lower = {n for found in below.values() for n in found}
        for n, kind in [(n, KINDS[t[:-10]]) for n in self.all for t in self.all[n]
                        if t.endswith("_TOLERANCE") and t[:-10] in KINDS and n not in lower]:
            rows = [n]
            for row in rows:
                rows += below[row]
            yield n, kind, rows

    def marks(self, items):
        """The signs of a dimension's notes."""
        groups = [self.of(i, "COMPOUND_REPRESENTATION_ITEM") for i in items]
        notes = [self.of(i, "DESCRIPTIVE_REPRESENTATION_ITEM") for i in items + self.refs(groups)]
        return [NOTES.get(note[1], note[1]) for note in notes if note]
