#!/usr/bin/python3
"""Takes out of the libraries' public headers what only the stand-in is known to offer.

cmake/plain_headers.py FOLDER

FOLDER/<library>/*.h are a copy of the headers, which is changed in place.

In the plain headers a getter is not const, no function or constant is constexpr, a type code is a
variable of the library, and a few operations are missing. Every change must find its place.
"""
import pathlib
import re
import sys

# Classes whose functions are const in the libraries, too, and values that are read as constants.
KEEP_CONST = {
    "KOVAResult", "KOVAIdentifier", "KOVAAttributeExporter", "KOVAQALAttributeExporter",
    "KOVAAllocException", "KOVAAbortException", "QENvector", "QENunit_vector", "QENposition",
}

folder = pathlib.Path(sys.argv[1])
texts = {str(path.relative_to(folder)): path.read_text() for path in folder.glob("*/*.h")}


def change(header, pattern, replacement):
    """Replaces every match in one header, or in all when `header` is None."""
    found = 0
    for name in [header] if header else list(texts):
        texts[name], count = re.subn(pattern, replacement, texts[name], flags=re.MULTILINE)
        found += count
    if found == 0:
        sys.exit(f"plain_headers: nothing in {header or 'any header'} matches {pattern}")


def drop(header, declaration):
    """Takes out a declaration of one line with the comment above it."""
    change(header, r"(^ *//.*\n)*^ *" + declaration + r".*\n", "")


def without_const(match):
    """A class's body with getters that are not const."""
    body = match[0]
    if match[1] not in KEEP_CONST:
        body = body.replace(") const", ")").replace("const ENTITY_LIST& ", "ENTITY_LIST& ")
    return body


drop("framework_base/KOVAResult.h", r"constexpr long GetCode\(\)")
change("framework_base/KOVAResult.h", r"KOVAResult\(long code = 0\)", "KOVAResult(long code)")
drop("framework_base/KOVADynamicArray.h", r"const T& operator\[\]\(int index\) const")
drop("framework_core/KOVAIdentifier.h", r"KOVAIdentifier\(\) :")

lists = "orvo_kernel/lists.h"
change(lists, r"int add\(ENTITY\* entity, bool check = true\);", "int add(ENTITY* entity);")
for declaration in (r"void make_room\(", r"void remove\(", r"void clear\(", r"int lookup\("):
    drop(lists, declaration)
change(lists, r"^class ENTITY_LIST \{\n public:\n",
       r"\g<0>  ENTITY_LIST() = default;\n"
       r"  ENTITY_LIST(const ENTITY_LIST&) = delete;\n"
       r"  ENTITY_LIST& operator=(const ENTITY_LIST&) = delete;\n\n")

change("orvo_kernel/errors.h", r"outcome\(int errorNumber = 0, error_info\* info = nullptr\)",
       "outcome(int errorNumber, error_info* info)")
change("orvo_kernel/errors.h", r"enum problems_list_prop_type \{.*\};",
       "enum problems_list_prop_type : int {};")
change("orvo_kernel/errors.h", r"extern const message_module", "extern message_module")
change("orvo_kernel/entity.h", r"(int identity\(int level = 0\)) const override", r"\1 override")
drop("orvo_kernel/entity.h", r"static constexpr int derivation_level = 0;")
drop("orvo_kernel/entity.h", r"static constexpr int derivation_level = PARENT::derivation_level")

change(None, r"^(template <.*>\n)?^class (?:alignas\(.*\) )?(\w+)[^;{]*\{(.*\n)*?^\};",
       lambda match: without_const((match[0], match[2])))
change(None, r"^constexpr (\w+) (\w+) = .*;", r"extern const \1 \2;")
change(None, r"\bconstexpr ", "")

for name, text in texts.items():
    (folder / name).write_text(text)
