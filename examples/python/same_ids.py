"""Is this id still what it was? Keeps what each attribute id stands for, and says what has changed since.

    python3 same_ids.py keep  FILE DIRECTORY MODULE...
    python3 same_ids.py check FILE DIRECTORY MODULE...     exit status 1: something has changed
"""

import json
import sys

import korv


def ids_of(directory, modules):
    with korv.Context(directory) as context:
        for name in modules:
            context.load(name)
        ids = {}
        for leaf in context.attributes:  # parts of one class may share an id
            ids.setdefault(f"{leaf.class_id:#x}/{leaf.field_id}", []).append(f"{leaf.path} {leaf.base_type}")
        return ids


command, file, directory, *modules = sys.argv[1:]
try:
    now = ids_of(directory, modules)
except korv.LoadError as error:
    sys.exit("\n".join(failure.text for failure in error.failures))
if command == "keep":
    with open(file, "w") as out:
        json.dump(now, out, indent=1)
    sys.exit()
with open(file) as kept:
    before = json.load(kept)
changed = [key for key in before if now.get(key) != before[key]]
for key in changed:
    print(f"{key} was {', '.join(before[key])}, is {', '.join(now.get(key, ['nothing']))}")
sys.exit(1 if changed else 0)
