"""Class models of YANG modules: what libkorv_libyang makes of them, as Python objects.

    with korv.Context("models") as context:
        module = context.load("example-interfaces")
        for node in module.walk():
            for leaf in node.attributes:
                print(leaf.path, leaf.field_id, leaf.base_type)

Log lines go to the logger "korv". Objects of an unloaded module or a closed context raise GoneError.
"""

import logging as _logging

from ._korv import Augment, Context, Leaf, Module, Node, Walk, __version__
from .errors import Error, Failure, GoneError, LoadError, NotFoundError

__all__ = ["Augment", "Context", "Error", "Failure", "GoneError", "Leaf", "LoadError", "Module", "Node",
           "NotFoundError", "Walk", "__version__"]

# Nothing is written unless the program sets up logging.
_logging.getLogger("korv").addHandler(_logging.NullHandler())
