#!/bin/sh
# Installs the Python package as a user does, into a virtual environment of its own, and uses it from another folder.
# usage: pip.sh PYTHON PROJECT BUILD WORK
set -eu

python=$1 project=$2 build=$3 work=$4
rm -rf "$work"
mkdir -p "$work"
"$python" -m venv "$work/env"
cd "$work"
KORV_BUILD=$build env/bin/pip install -q --disable-pip-version-check "$project"
env -u PYTHONPATH -u LD_LIBRARY_PATH env/bin/python - "$project/examples/yin" <<'END'
import shutil, sys, tempfile
import korv

assert "env/lib" in korv.__file__, korv.__file__
with tempfile.TemporaryDirectory() as models:  # without quelvo-mim-extensions, which comes with the package
    for name in ("example-types", "example-interfaces"):
        shutil.copy(f"{sys.argv[1]}/{name}.yin", models)
    with korv.Context(models) as context:
        assert context.load("example-interfaces").class_count == 5
END
