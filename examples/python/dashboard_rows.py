"""Rows for a dashboard, as CSV: what is sampled under which id, with its keys and the names of its enumerations.

    python3 dashboard_rows.py DIRECTORY MODULE...
"""

import csv
import sys

import korv

directory, *modules = sys.argv[1:]
out = csv.writer(sys.stdout, lineterminator="\n")
out.writerow(["sample", "class", "path", "keys", "attributes", "value_names"])
with korv.Context(directory) as context:
    for name in modules:
        context.load(name)
    for node in context.walk():
        if node.kind != "node" or not node.sample_id:
            continue
        names = [f"{leaf.name}.{value}={name}" for leaf in node.attributes for name, value in leaf.enum_values.items()]
        out.writerow([node.sample_id, node.class_id, node.path, " ".join(leaf.name for leaf in node.keys),
                      " ".join(leaf.name for leaf in node.attributes), " ".join(names)])
