#!/usr/bin/env python3
"""Holds the reports that tests have saved against their schema: match_schema.py SCHEMA FOLDER MINIMUM.

Exit code 1 when one does not match or there are fewer than MINIMUM. Removes the folder when all is
well, so that what a test of yesterday left is not taken for one of today.
"""
import json
import pathlib
import shutil
import sys

import jsonschema

schema = json.loads(pathlib.Path(sys.argv[1]).read_text())
jsonschema.Draft201909Validator.check_schema(schema)
validator = jsonschema.Draft201909Validator(schema)
matched = wrong = 0
for path in sorted(pathlib.Path(sys.argv[2]).glob("*.json")):
    text = path.read_text().strip()
    # One document behind another, each on a line or over several.
    while text:
        document, end = json.JSONDecoder().raw_decode(text)
        text = text[end:].lstrip()
        errors = [error for top in validator.iter_errors(document)
                  for error in [top, *top.context]]
        matched += not errors
        wrong += bool(errors)
        for error in errors:
            print(f"{path.name}: {error.json_path}: {error.message[:300]}")
print(f"{matched} reports match the schema, {wrong} do not")
if wrong or matched < int(sys.argv[3]):
    sys.exit(1)
shutil.rmtree(sys.argv[2])
