#!/usr/bin/env python3
"""Cuts a model into small documents with one kind of thing each: seeds.py MODEL FOLDER.

What an element refers to comes with it, and what displays it; of the topology, faces without
their boundaries but for one. Some documents are also written in other encodings and compressed.
"""
import copy
import gzip
import pathlib
import re
import sys
import xml.etree.ElementTree as ET

SPACE = "http://qifstandards.org/xsd/qif3"
ET.register_namespace("", SPACE)


def local(element):
    return element.tag.split("}")[-1]


def references(element, of_face):
    """The ids that an element names: one of a view's annotations, and edges only for an edge."""
    if local(element) == "Face" and not of_face or local(element) in ("Body", "Shell", "PartNote"):
        return
    views = 0
    for child in element.iter():
        name = local(child)
        if name == "Id" or re.search("Id$|^Vertex(Beg|End)$|^EdgeOriented$", name):
            views += local(element) == "SavedView" and name == "Id"
            if child.text and views <= 2:
                yield child.text.strip()


def cut(root, by_id, shown, start, of_face):
    wanted, open_ids = set(), [start]
    while open_ids:
        key = open_ids.pop()
        if key in wanted or key not in by_id:
            continue
        wanted.add(key)
        open_ids += [*references(by_id[key], of_face), *shown.get(key, [])]
    tree = copy.deepcopy(root)

    def prune(element):
        for child in list(element):
            key, name = child.get("id"), local(child)
            displayed = child.find(f"{{{SPACE}}}Reference/{{{SPACE}}}Id")
            drop = (
                (key is not None and key not in wanted and name not in ("Part", "Body"))
                or (name == "Id" and (child.text or "").strip() not in wanted)
                or (displayed is not None and displayed.text.strip() not in wanted)
                or (name == "LoopIds" and not of_face)
                or name in ("GeometrySet", "Header", "Version", "QPId", "StandardsDefinitions")
            )
            if drop:
                element.remove(child)
            else:
                prune(child)

    prune(tree)
    for _ in range(3):  # lists that are empty now
        for parent in list(tree.iter()):
            for child in list(parent):
                if not (len(child) or child.get("id") or (child.text or "").strip()):
                    parent.remove(child)
    return re.sub(rb">\s+<", b"><", ET.tostring(tree, encoding="utf-8"))


def main():
    model, folder = map(pathlib.Path, sys.argv[1:])
    root = ET.parse(model).getroot()
    by_id = {e.get("id"): e for e in root.iter() if e.get("id")}
    shown = {}  # what the displays of an annotation name
    for display in root.iter(f"{{{SPACE}}}PMIDisplay"):
        ids = list(references(display, False))
        shown[ids[-1]] = ids
    seeds = {}
    for key, element in by_id.items():
        name = local(element)
        if re.search("Nominal$|Item$|^Datum|Note|View$|^Edge$|^Body$|Target", name):
            seeds.setdefault(name, cut(root, by_id, shown, key, name == "Edge"))
    note = seeds["Note"].decode()
    declared = '<?xml version="1.0" encoding="%s"?>'
    seeds["gzip"] = gzip.compress(seeds["Note"], mtime=0)
    seeds["utf16"] = (declared % "UTF-16" + note).encode("utf-16")
    for encoding in ("iso-8859-1", "windows-1252"):
        seeds[encoding] = (declared % encoding + note).encode(encoding, "xmlcharrefreplace")
    text = note.replace("</Text>", "<!-- c --><?p i?><![CDATA[d]]>&e;&#8960;</Text>", 1)
    seeds["pieces"] = ('<!DOCTYPE QIFDocument [<!ENTITY e "f">]>' + text).encode()
    seeds["step"] = b"ISO-10303-21;"
    for name, text in seeds.items():
        (folder / f"{name}.qif").write_bytes(text)


main()
