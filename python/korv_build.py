"""Makes the wheel of korv for pip, by the rules of PEP 517: the package with the libraries that it needs within it.

The project is built with CMake into a temporary folder. KORV_BUILD names a build folder that is ready to be used instead.
"""

import base64
import hashlib
import os
import pathlib
import re
import shutil
import subprocess
import sys
import sysconfig
import tempfile
import zipfile

ROOT = pathlib.Path(__file__).resolve().parent.parent
VERSION = re.search(r"^project\(korv_libyang VERSION ([0-9.]+)", (ROOT / "CMakeLists.txt").read_text(), re.M).group(1)
METADATA = f"""Metadata-Version: 2.1
Name: korv
Version: {VERSION}
Summary: Class models of YANG modules, as Python objects
Requires-Python: >=3.9
"""


def run(*command):
    subprocess.run([str(word) for word in command], check=True)


def build(folder):
    """Builds the package and what it needs, nothing else."""
    run("cmake", "-S", ROOT, "-B", folder, "-G", "Ninja", "-DCMAKE_BUILD_TYPE=RelWithDebInfo",
        f"-DPython3_EXECUTABLE={sys.executable}", "-DKORV_BUILD_PYTHON=ON", "-DKORV_BUILD_INSPECT=OFF",
        "-DKORV_BUILD_TESTS=OFF", "-DKORV_BUILD_BENCH=OFF")
    run("cmake", "--build", folder)


def collect(build_folder, stage, package):
    """Puts the installed files where they are in the wheel: libraries into korv/lib, models into korv/share."""
    for component in ("python", "runtime"):
        run("cmake", "--install", build_folder, "--prefix", stage, "--strip", "--component", component)
    shutil.copytree(next(stage.rglob("korv/__init__.py")).parent, package)
    for library in stage.rglob("lib*.so.*"):
        if library.is_symlink():  # the name that programs are linked with; a wheel has no links
            (package / "lib").mkdir(exist_ok=True)
            shutil.copy(library.resolve(), package / "lib" / library.name)
    shutil.copytree(stage / "share" / "korv_libyang", package / "share" / "korv_libyang")


def write_wheel(path, tree, tag):
    info = f"korv-{VERSION}.dist-info"
    texts = {f"{info}/METADATA": METADATA,
             f"{info}/WHEEL": f"Wheel-Version: 1.0\nGenerator: korv_build\nRoot-Is-Purelib: false\nTag: {tag}\n"}
    files = {str(file.relative_to(tree)): file.read_bytes() for file in sorted(tree.rglob("*")) if file.is_file()}
    files.update((name, text.encode()) for name, text in texts.items())
    record = ""
    with zipfile.ZipFile(path, "w", zipfile.ZIP_DEFLATED) as wheel:
        for name, data in files.items():
            wheel.writestr(name, data)
            digest = base64.urlsafe_b64encode(hashlib.sha256(data).digest()).rstrip(b"=").decode()
            record += f"{name},sha256={digest},{len(data)}\n"
        wheel.writestr(f"{info}/RECORD", record + f"{info}/RECORD,,\n")


def build_wheel(wheel_directory, config_settings=None, metadata_directory=None):
    version = f"cp{sys.version_info.major}{sys.version_info.minor}"
    tag = f"{version}-{version}-{re.sub('[-.]', '_', sysconfig.get_platform())}"
    name = f"korv-{VERSION}-{tag}.whl"
    with tempfile.TemporaryDirectory() as temporary:
        work = pathlib.Path(temporary)
        ready = os.environ.get("KORV_BUILD")
        if not ready:
            build(work / "build")
        collect(ready or work / "build", work / "stage", work / "wheel" / "korv")
        write_wheel(pathlib.Path(wheel_directory) / name, work / "wheel", tag)
    return name
