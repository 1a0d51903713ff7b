"""A small host in Python: loads a module, says why that failed if it did, and asks what an id stands for."""

import sys

import korv

with korv.Context(sys.argv[1] if len(sys.argv) > 1 else ".") as context:
    try:
        context.load("example-interfaces")
    except korv.LoadError as error:
        sys.exit("\n".join(failure.text for failure in error.failures))
    leaf = context.by_id(0x1001, 2)
    print(f"attribute 2 of class {leaf.class_id:#x} is {leaf.name} of {leaf.node.name}")
