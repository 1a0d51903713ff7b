"""Compares JSON documents with schemas: validate.py FOLDER [SCHEMA DOCUMENT]...

A document with the ending .lines has one JSON text a line. Of small documents, each object is tried once more with a member
that no schema knows, which has to be refused. Prints what is wrong."""
import copy
import json
import sys

from jsonschema import Draft202012Validator

SMALL = 6000


def objects(value):
    """The value's objects, itself included."""
    if isinstance(value, dict):
        yield value
    for item in value.values() if isinstance(value, dict) else value if isinstance(value, list) else []:
        yield from objects(item)


def check(validator, name, text):
    document = json.loads(text)
    for error in validator.iter_errors(document):
        where = "/".join(str(step) for step in error.absolute_path)
        print(f"{name}: {where}: {error.message[:200]}")
    if len(text) > SMALL:
        return
    for number in range(len(list(objects(document)))):
        changed = copy.deepcopy(document)
        list(objects(changed))[number]["surprise"] = 1
        if validator.is_valid(changed):
            print(f"{name}: a new member of object {number} is not refused")


def main(folder, pairs):
    validators = {}
    for schema, path in zip(pairs[::2], pairs[1::2]):
        if schema not in validators:
            with open(f"{folder}/{schema}.schema.json", encoding="utf-8") as file:
                content = json.load(file)
            Draft202012Validator.check_schema(content)
            validators[schema] = Draft202012Validator(content)
        with open(path, encoding="utf-8") as file:
            texts = file.readlines() if path.endswith(".lines") else [file.read()]
        for text in texts:
            check(validators[schema], f"{schema} {path}", text)


main(sys.argv[1], sys.argv[2:])
