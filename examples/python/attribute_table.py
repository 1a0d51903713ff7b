"""A table of all attributes of some modules.

    python3 attribute_table.py DIRECTORY MODULE...
"""

import sys

import korv

directory, *modules = sys.argv[1:]
with korv.Context(directory) as context:
    for name in modules:
        context.load(name)
    for leaf in context.attributes:
        kind = f"{leaf.base_type} {{{', '.join(leaf.enum_values)}}}" if leaf.enum_values else leaf.base_type
        print(f"{leaf.class_id:#06x} {leaf.field_id:3} {'*' if leaf.key else ' '} {leaf.path:45} {kind}")
