"""What can go wrong: the exceptions of korv, and a reason why a load failed."""

from dataclasses import dataclass
from typing import Optional, Sequence, Tuple


@dataclass(frozen=True)
class Failure:
    """One reason why a load failed."""

    refused_by: str
    """"schema": a file is missing or breaks a rule of YANG. "library": the extension statements make no class model."""
    module: str
    """Module or submodule that is wrong; may be empty."""
    file: Optional[str]
    """Path of the file, or None: not known. The library knows none."""
    line: int
    """Line in the file, or 0: not known."""
    column: int
    """Column, or 0."""
    text: str
    """The reason with its place in front."""
    sentence: str
    """The reason alone."""
    class_path: Optional[str] = None
    """What the library refused: path of the class node,"""
    leaf: Optional[str] = None
    """name of the leaf of that class,"""
    statement: Optional[str] = None
    """keyword of the statement,"""
    argument: Optional[str] = None
    """and its argument; each of them None where the reason names none."""


class Error(Exception):
    """Base of the exceptions of this package."""


class LoadError(Error):
    """A module cannot be loaded. All that the context held before is still there."""

    def __init__(self, module: str, failures: Sequence[Failure]) -> None:
        reasons = [failure.text for failure in failures] or ["no reason is known"]
        super().__init__(f"module '{module}' cannot be loaded: " + "\n".join(reasons))
        self.module = module
        self.failures: Tuple[Failure, ...] = tuple(failures)
        placed = [failure for failure in self.failures if failure.file is not None]
        self.file: Optional[str] = placed[0].file if placed else None
        """File, line and column of the first failure that has a place; None, 0 and 0 when none has."""
        self.line: int = placed[0].line if placed else 0
        self.column: int = placed[0].column if placed else 0

    def __reduce__(self):  # type: ignore[no-untyped-def]
        return type(self), (self.module, self.failures)


class NotFoundError(Error, LookupError):
    """No node or leaf has the path or ids that were asked for, or no module the name."""


class GoneError(Error, ReferenceError):
    """The module of this object has been unloaded, or its context closed."""
