"""What the tests of korv share: models, and a context over the examples."""

import os
import pathlib

import korv
import pytest

EXAMPLES = pathlib.Path(os.environ["KORV_SOURCE_DIR"]) / "examples" / "yin"


@pytest.fixture
def context():
    with korv.Context(EXAMPLES) as context:
        yield context


@pytest.fixture
def write(tmp_path):
    """Writes a module in compact syntax; the rest of its file is what the test says."""

    def write_module(name, body):
        head = f'module {name} {{ yang-version 1.1; namespace "urn:{name}"; prefix p;\n'
        (tmp_path / f"{name}.yang").write_text(head + body + "\n}\n")
        return tmp_path

    return write_module
