"""Validates JSON files: validate.py SCHEMA FILE...

Prints a line for each file: "valid", or where it does not fit, and why; "no JSON" for a file that
the standard does not allow. The exit code is 0 unless the schema itself is wrong.
"""

import json
import sys

from jsonschema import Draft202012Validator


def main():
    with open(sys.argv[1], encoding="utf-8") as file:
        schema = json.load(file)
    Draft202012Validator.check_schema(schema)
    validator = Draft202012Validator(schema)
    for path in sys.argv[2:]:
        try:
            with open(path, encoding="utf-8") as file:
                document = json.load(file)
        except (OSError, ValueError, RecursionError):
            print("no JSON")
            continue
        errors = sorted(validator.iter_errors(document), key=lambda error: error.json_path)
        text = "; ".join(f"{error.json_path}: {error.message}" for error in errors)
        print(text.replace("\n", " ") or "valid")


main()
