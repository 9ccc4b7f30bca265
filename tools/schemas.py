#!/usr/bin/python3
"""JSON Schemas of the results that the commands of lanqor write with --json.

usage: schemas.py --write FOLDER RESULT.json...
       schemas.py --check FOLDER RESULT.json...

--write makes one schema for each command of the results, NAME.schema.json. A result lists its own
parts, columns, units and types ("contents"); what all results of a command have is required, what
some have is allowed; what one fit tells of itself, every fit may. Columns of a scan are those of
the inputs that are varied, and stay open.
--check validates each result by the schema of its command (Debian: python3-jsonschema) and tells
what is wrong; of a long table the first and the last rows.
"""
import collections
import json
import pathlib
import sys

OPEN_PARTS = {"scan", "scan_as_given"}
UNIT_OF_ROW = "unit"
CHECKED_ROWS = 25  # at either end of a table


class Column:
    """What the results tell of a column."""

    def __init__(self, described):
        self.uncertainty_of = described.get("uncertainty_of")
        self.types, self.units, self.count = set(), set(), 0

    def add(self, described):
        self.types |= {described["type"]} if "type" in described else set()
        self.units |= {described["unit"]} if "unit" in described else set()
        self.count += 1

    def value(self):
        types = self.types - ({"integer"} if "number" in self.types else set())
        return {"type": sorted(types | {"null"})} if types else {"type": "null"}


class Part:
    """What the results tell of a part."""

    def __init__(self, described):
        self.is_record, self.count, self.columns = described["is_record"], 0, {}

    def add(self, described):
        self.count += 1
        for column in described["columns"]:
            self.columns.setdefault(column["key"], Column(column)).add(column)

    def members(self, columns, value):
        return {"type": "object",
                "properties": {key: value(key, column) for key, column in columns.items()},
                "required": sorted(key for key, column in columns.items()
                                   if column.count == self.count),
                "additionalProperties": False}

    def cell(self, key, column):
        if not column.units:
            return column.value()
        unit = {"type": "string"} if UNIT_OF_ROW in column.units else {"enum": sorted(column.units)}
        cell = {"type": "object", "properties": {"value": column.value(), "unit": unit},
                "required": ["value", "unit"], "additionalProperties": False}
        uncertainty = {name: other for name, other in self.columns.items()
                       if other.uncertainty_of == key}
        if uncertainty:
            cell["properties"]["uncertainty"] = self.members(
                uncertainty, lambda name, other: other.value())
            cell["required"].append("uncertainty")
        return cell

    def schema(self, name):
        row = self.members({key: column for key, column in self.columns.items()
                            if column.uncertainty_of is None}, self.cell)
        if name in OPEN_PARTS:
            row = {"type": "object"}
        return row if self.is_record else {"type": "array", "items": row}


def schema_of(command, results, of_fits):
    parts = {}
    if command.startswith("fit "):
        for described in of_fits:
            parts.setdefault(described["name"], Part(described)).add(described)
        for part in parts.values():
            part.count = 0
            for column in part.columns.values():
                column.count = 0
    for result in results:
        for described in result["contents"]["parts"]:
            parts.setdefault(described["name"], Part(described)).add(described)
    schema = {
        "$schema": "https://json-schema.org/draft/2020-12/schema",
        "title": f"Result of lanqor {command}",
        "type": "object",
        "properties": {name: part.schema(name) for name, part in parts.items()},
        "required": ["contents"] + sorted(name for name, part in parts.items()
                                          if part.count == len(results)),
        "additionalProperties": False,
    }
    version = {"const": results[0]["contents"]["schema_version"]}
    text = {"type": "string"}
    schema["properties"]["run"]["properties"].update(command={"const": command},
                                                     schema_version=version)
    column = {"type": "object", "required": ["key"], "additionalProperties": False,
              "properties": {"key": text, "unit": text, "uncertainty_of": text,
                             "type": {"enum": ["boolean", "integer", "number", "string"]}}}
    part = {"type": "object", "required": ["name", "is_record", "columns"],
            "additionalProperties": False,
            "properties": {"name": {"enum": sorted(parts)}, "is_record": {"type": "boolean"},
                           "columns": {"type": "array", "items": column}}}
    schema["properties"]["contents"] = {
        "type": "object", "required": ["schema_version", "parts"], "additionalProperties": False,
        "properties": {"schema_version": version, "parts": {"type": "array", "items": part}}}
    return schema


def file_of(folder, command):
    return folder / (command.replace(" ", "-") + ".schema.json")


def write(folder, results):
    commands = collections.defaultdict(list)
    for result in results.values():
        commands[result["run"]["command"]].append(result)
    of_fits = [part for result in results.values() for part in result["contents"]["parts"]
               if part["name"].startswith("fit_")]
    for command, own in commands.items():
        text = json.dumps(schema_of(command, own, of_fits), indent=1, sort_keys=True,
                          ensure_ascii=False)
        file_of(folder, command).write_text(text + "\n", encoding="utf-8")


def validator(folder, command):
    import jsonschema
    schema = json.loads(file_of(folder, command).read_text(encoding="utf-8"))
    jsonschema.Draft202012Validator.check_schema(schema)
    return jsonschema.Draft202012Validator(schema)


def check(folder, results):
    validators = {}
    faults = 0
    for name, result in results.items():
        command = result["run"]["command"]
        if command not in validators:
            validators[command] = validator(folder, command)
        for part, rows in result.items():
            if isinstance(rows, list):
                result[part] = rows[:CHECKED_ROWS] + rows[CHECKED_ROWS:][-CHECKED_ROWS:]
        for error in validators[command].iter_errors(result):
            print(f"{name}: {error.json_path}: {error.message}")
            faults += 1
    return faults


def main():
    if len(sys.argv) < 4 or sys.argv[1] not in ("--write", "--check"):
        sys.exit(__doc__)
    folder = pathlib.Path(sys.argv[2])
    results = {name: json.loads(pathlib.Path(name).read_text(encoding="utf-8"))
               for name in sys.argv[3:]}
    sys.exit(1 if (write if sys.argv[1] == "--write" else check)(folder, results) else 0)


if __name__ == "__main__":
    main()
