#!/usr/bin/python3
"""Fails unless docs/platform.md lists exactly what the plug-in uses of the platform's libraries.

cmake/platform_table.py BUILD HEADERS DOCUMENT

BUILD holds the compile commands of the plug-in, HEADERS/<library>/*.h is what it is compiled
against. The document has a section "## <library>" for each library. In a section count

- the first cell of a table's row, in backticks: a function or constant that is called or read,
- the lines of a fenced block: a class that the plug-in derives from, a virtual function that it
  overrides, or a function that it defines for the library,
- what stands in backticks in the paragraphs "Headers:", "Types:" and "Types, names of ours:".
  `A : B` is a class A that the plug-in uses as a B.

A template is looked at as it is instantiated. Where no instantiation is seen, what depends on its
parameters has to have the name of something that is used elsewhere.
"""
import ctypes
import json
import os
import pathlib
import re
import shlex
import sys

from clang.cindex import Cursor, CursorKind, Diagnostic, Index, TypeKind, conf

ROOT = pathlib.Path(__file__).resolve().parent.parent
OWN = str(ROOT / "KOVAOrvoPMI") + os.sep

CLASSES = (CursorKind.CLASS_DECL, CursorKind.STRUCT_DECL, CursorKind.CLASS_TEMPLATE,
           CursorKind.UNION_DECL)
TYPES = CLASSES + (CursorKind.ENUM_DECL, CursorKind.TYPE_ALIAS_DECL, CursorKind.TYPEDEF_DECL)
FUNCTIONS = (CursorKind.FUNCTION_DECL, CursorKind.CXX_METHOD, CursorKind.CONSTRUCTOR,
             CursorKind.DESTRUCTOR, CursorKind.CONVERSION_FUNCTION, CursorKind.FUNCTION_TEMPLATE)
VALUES = (CursorKind.VAR_DECL, CursorKind.FIELD_DECL, CursorKind.ENUM_CONSTANT_DECL)
NAMED = (CursorKind.MEMBER_REF_EXPR, CursorKind.DECL_REF_EXPR, CursorKind.OVERLOADED_DECL_REF)
OPERATORS = (CursorKind.BINARY_OPERATOR, CursorKind.UNARY_OPERATOR,
             CursorKind.COMPOUND_ASSIGNMENT_OPERATOR, CursorKind.ARRAY_SUBSCRIPT_EXPR)
CASTS = (CursorKind.UNEXPOSED_EXPR, CursorKind.CXX_STATIC_CAST_EXPR,
         CursorKind.CXX_DYNAMIC_CAST_EXPR)

conf.lib.clang_getOverriddenCursors.argtypes = [
    Cursor, ctypes.POINTER(ctypes.POINTER(Cursor)), ctypes.POINTER(ctypes.c_uint)]
conf.lib.clang_disposeOverriddenCursors.argtypes = [ctypes.POINTER(Cursor)]


def file_of(cursor):
    return os.path.realpath(cursor.location.file.name) if cursor.location.file else ""


def is_own(cursor):
    return file_of(cursor).startswith(OWN)


def place(cursor):
    """Says where a cursor stands, the same in every translation unit."""
    return (file_of(cursor), cursor.location.offset)


def position(cursor):
    return f"{os.path.relpath(file_of(cursor), ROOT)}:{cursor.location.line}"


def pattern_of(cursor):
    """The template that a declaration was made from, or the declaration itself."""
    template = conf.lib.clang_getSpecializedCursorTemplate(cursor)
    return template if template is not None else cursor


def overridden(cursor):
    """The functions that a virtual function overrides directly."""
    found = ctypes.POINTER(Cursor)()
    count = ctypes.c_uint()
    conf.lib.clang_getOverriddenCursors(cursor, ctypes.byref(found), ctypes.byref(count))
    declarations = []
    for i in range(count.value):
        found[i]._tu = cursor._tu
        declarations.append(Cursor.from_cursor_result(found[i], None, (cursor,)))
    return declarations


def first_declaration(function):
    """The function where it was declared virtual first."""
    while function.kind == CursorKind.CXX_METHOD and (bases := overridden(function)):
        function = bases[0]
    return function


def class_behind(expression_type):
    """The class that a value, a reference or a pointer is of, or nothing."""
    behind = expression_type.get_canonical()
    if behind.kind in (TypeKind.POINTER, TypeKind.LVALUEREFERENCE, TypeKind.RVALUEREFERENCE):
        behind = behind.get_pointee()
    declaration = behind.get_declaration()
    return declaration if declaration.kind in CLASSES else None


def parents_of(derived):
    definition = derived.get_definition()
    children = definition.get_children() if definition is not None else []
    return [child.type.get_declaration() for child in children
            if child.kind == CursorKind.CXX_BASE_SPECIFIER]


def derives(derived, base):
    return any(parent == base or derives(parent, base) for parent in parents_of(derived))


class Uses:
    def __init__(self, headers):
        self.headers = os.path.realpath(headers) + os.sep
        self.found = {}  # (library, kind, key) -> where
        self.bases = {}  # (library, class) -> the classes it is used as
        self.instantiated = set()  # places of the templates seen as they are instantiated
        self.unresolved = []  # (places of the templates around it, name or nothing, where)
        self.names = set()  # of what is used, and of what the plug-in declares

    def library(self, cursor):
        name = file_of(cursor)
        return name[len(self.headers):].split(os.sep)[0] if name.startswith(self.headers) else None

    def add(self, kind, declaration, where):
        """Notes a declaration of one of the libraries; the plug-in's own are passed over."""
        declaration = pattern_of(declaration)
        library = self.library(declaration)
        if library is None:
            return
        key = declaration.displayname
        parent = declaration.semantic_parent
        if parent.kind in CLASSES:
            self.add_type(parent, where)
            parent = pattern_of(parent)
            name = key[:key.find("(")] if "(" in key else key
            if declaration.kind == CursorKind.CONSTRUCTOR:
                name = parent.spelling
            key = f"{parent.spelling}::{name}{key[key.find('('):] if '(' in key else ''}"
            key = key.replace(f"({parent.spelling} &&)", f"(const {parent.spelling} &)")
        self.found.setdefault((library, kind, key), position(where))
        self.names.add(declaration.spelling)

    def add_type(self, declaration, where, base=None):
        declaration = pattern_of(declaration)
        declaration = declaration.get_definition() or declaration
        library = self.library(declaration)
        if library is None:
            return
        key = (library, declaration.spelling)
        self.found.setdefault((library, "type", declaration.spelling), position(where))
        bases = self.bases.setdefault(key, set())
        if base is not None and self.library(base) is not None:
            bases.add(base.spelling)
            self.add_type(base, where)

    def add_cast(self, cursor):
        """Notes which class is used as which other one."""
        children = [child for child in cursor.get_children() if child.kind.is_expression()]
        if len(children) != 1:
            return
        to, source = class_behind(cursor.type), class_behind(children[0].type)
        if to is None or source is None or to == source:
            return
        for derived, base in ((to, source), (source, to)):
            if derives(derived, base):
                self.add_base(derived, base, cursor)

    def add_base(self, derived, base, where):
        """Notes that a class is used as one of its bases; the plug-in's own stand for theirs."""
        if is_own(derived):
            for parent in parents_of(derived):
                if derives(parent, base):
                    self.add_base(parent, base, where)
        else:
            self.add_type(derived, where, base)

    def walk(self, cursor, templates=(), walked=None):
        """Notes every use in a part of the plug-in's source."""
        kind = cursor.kind
        if not is_own(cursor):
            return
        referenced = cursor.referenced
        if kind.is_declaration():
            self.declare(cursor)
        elif kind == CursorKind.CXX_BASE_SPECIFIER:
            self.derive(cursor)
        elif kind == CursorKind.TYPE_REF or kind == CursorKind.TEMPLATE_REF:
            if referenced is not None and referenced.kind in TYPES:
                self.add_type(referenced, cursor)
        elif kind == CursorKind.OVERLOADED_DECL_REF:
            self.note_overloads(cursor, templates)
        elif referenced is None:
            self.note_unresolved(cursor, templates)
        elif referenced.kind in FUNCTIONS + VALUES:
            if not is_own(referenced):
                self.add("operation", first_declaration(referenced), cursor)
            self.enter(referenced, walked)
        if kind in CASTS:
            self.add_cast(cursor)
        if kind == CursorKind.CXX_NEW_EXPR:
            self.add_allocation(cursor)
        if kind in (CursorKind.FUNCTION_TEMPLATE, CursorKind.LAMBDA_EXPR):
            templates += (place(cursor),)
        for child in cursor.get_children():
            self.walk(child, templates, walked)

    def enter(self, function, walked):
        """Walks a template of the plug-in as it was instantiated."""
        if not is_own(function) or function.hash in walked:
            return
        lambda_call = function.spelling == "operator()"
        if conf.lib.clang_getSpecializedCursorTemplate(function) is None and not lambda_call:
            return
        walked.add(function.hash)
        self.instantiated.add(place(function))
        for child in function.get_children():
            self.walk(child, (), walked)

    def declare(self, cursor):
        """Notes what the plug-in defines in place of a library, or for it."""
        if cursor.kind in FUNCTIONS + (CursorKind.FIELD_DECL,):
            self.names.add(cursor.spelling)
        if cursor.kind in (CursorKind.CXX_METHOD, CursorKind.DESTRUCTOR):
            for declaration in overridden(cursor):
                self.add("overridden", declaration, cursor)
                self.add_base(cursor.semantic_parent, declaration.semantic_parent, cursor)
        if cursor.kind == CursorKind.FUNCTION_DECL:
            self.add("overridden", cursor.canonical, cursor)

    def derive(self, cursor):
        """Notes a class that the plug-in derives one of its own from."""
        base = cursor.type.get_declaration()
        library = self.library(base)
        if library is not None:
            self.add_type(base, cursor)
            self.found.setdefault((library, "overridden", f"class {base.spelling}"),
                                  position(cursor))

    def add_allocation(self, cursor):
        """Notes the operator new of a class that has one of its own."""
        classes = [class_behind(cursor.type)]
        while classes and classes[0] is not None and self.library(classes[0]) is not None:
            for child in classes[0].get_definition().get_children():
                if child.spelling == "operator new":
                    self.add("operation", child, cursor)
                    return
            classes = parents_of(classes[0])

    def note_overloads(self, cursor, templates):
        """Notes what a using declaration brings in; elsewhere it is not known which one is meant."""
        count = conf.lib.clang_getNumOverloadedDecls(cursor)
        overloads = [conf.lib.clang_getOverloadedDecl(cursor, i) for i in range(count)]
        if templates:
            self.note_unresolved(cursor, templates)
            return
        for declaration in overloads:
            self.add("operation", declaration, cursor)

    def note_unresolved(self, cursor, templates):
        name = None
        if cursor.kind in NAMED:
            tokens = [t.spelling for t in cursor.get_tokens() if re.match(r"\w+$", t.spelling)]
            name = tokens[-1] if tokens else ""
        elif cursor.kind in OPERATORS:
            if cursor.type.kind != TypeKind.DEPENDENT:
                return
        elif cursor.kind == CursorKind.CALL_EXPR:
            makes = [child for child in cursor.get_children() if child.kind == CursorKind.TYPE_REF]
            if not makes:
                return
        else:
            return
        self.unresolved.append((templates, name, position(cursor)))

    def translation_unit(self, command):
        arguments = shlex.split(command["command"])[1:]
        output = arguments.index("-o")
        del arguments[output:output + 2]
        unit = Index.create().parse(None, arguments, options=1)
        errors = [d for d in unit.diagnostics if d.severity >= Diagnostic.Error]
        if errors:
            sys.exit(f"platform_table: {errors[0]}")
        walked = set()
        for cursor in unit.cursor.get_children():
            if not is_own(cursor):
                continue
            if cursor.kind == CursorKind.INCLUSION_DIRECTIVE:
                self.include(cursor)
            else:
                self.walk(cursor, (), walked)

    def include(self, cursor):
        library = cursor.displayname.split("/")[0]
        if os.path.isdir(self.headers + library):
            self.found.setdefault((library, "header", cursor.displayname), position(cursor))

    def finish(self):
        """The uses by library, with the bases that a class is used as."""
        lost = [f"{where}: cannot tell what {name or 'this'} is" for templates, name, where
                in self.unresolved
                if not self.instantiated.intersection(templates) and name not in self.names]
        uses = {}
        for (library, kind, key), where in self.found.items():
            bases = self.bases.get((library, key)) if kind == "type" else None
            uses[(library, kind, f"{key} : {', '.join(sorted(bases))}" if bases else key)] = where
        return uses, lost


def listed(document):
    """What the document lists, each with its line."""
    entries, twice = {}, []
    library = paragraph = None
    fenced = False
    for number, line in enumerate(document.read_text().splitlines(), 1):
        found = []
        if line.startswith("```"):
            fenced = not fenced
        elif fenced:
            found = [("overridden", line)]
        elif line.startswith("## "):
            library = line[3:].strip()
        elif not line.strip():
            paragraph = None
        elif row := re.match(r"\| `(.+?)` \|", line):
            found = [("operation", row[1].replace(r"\|", "|"))]
        else:
            if start := re.match(r"(Header|Type)s(, names of ours)?: ", line):
                paragraph = start[1].lower()
            if paragraph:
                found = [(paragraph, key) for key in re.findall(r"`(.+?)`", line)]
        for kind, key in found:
            if (library, kind, key) in entries:
                twice.append(f"{document.name}:{number}: a second time: {key}")
            entries[(library, kind, key)] = number
    return entries, twice


def to_paste(kind, key):
    if kind == "operation":
        return "| `" + key.replace("|", r"\|") + "` | | |"
    return key if kind == "overridden" else f"`{key}`"


def main():
    build, headers, document = pathlib.Path(sys.argv[1]), sys.argv[2], pathlib.Path(sys.argv[3])
    commands = json.loads((build / "compile_commands.json").read_text())
    uses = Uses(headers)
    for command in commands:
        if os.path.realpath(command["file"]).startswith(OWN):
            uses.translation_unit(command)
    used, problems = uses.finish()
    entries, twice = listed(document)
    problems += twice
    for (library, kind, key), where in sorted(used.items()):
        if (library, kind, key) not in entries:
            problems.append(f"{where}: uses what {document} does not list, "
                            f"{kind} of {library}:\n{to_paste(kind, key)}")
    for (library, kind, key), number in entries.items():
        if (library, kind, key) not in used:
            problems.append(f"{document}:{number}: lists what nothing uses, {kind} of {library}: "
                            f"{key}")
    if problems or not used:
        sys.exit("\n".join(problems + [f"platform_table: differences: {len(problems)}"]))
    counts = {kind: sum(1 for use in used if use[1] == kind)
              for kind in ("operation", "type", "header", "overridden")}
    print("platform_table: {operation} operations, {type} types, {header} headers and {overridden} "
          "overridden functions, all listed".format(**counts))


main()
