"""Holds files against a JSON Schema: validate_files.py SCHEMA FILE... Ends with 1 when one does not fit, 2 on a bad schema."""
import json
import sys

from jsonschema import Draft202012Validator, SchemaError


def main():
    schema = json.load(open(sys.argv[1], encoding="utf-8"))
    try:
        Draft202012Validator.check_schema(schema)
    except SchemaError as fault:
        print(fault.message)
        return 2
    validator = Draft202012Validator(schema)
    faults = 0
    for name in sys.argv[2:]:
        with open(name, encoding="utf-8") as file:
            for fault in validator.iter_errors(json.load(file)):
                print(f"{name}: {fault.json_path}: {fault.message[:200]}")
                faults += 1
    return 1 if faults else 0


sys.exit(main())
