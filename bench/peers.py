"""Sets korv-inspect beside other tools that read YANG: time, processor time and memory at the peak, for the same models.

usage: peers.py PROGRAMS [DIR]   PROGRAMS: where korv-inspect and korv_bench are; DIR: a directory of a set in YIN
"""
import glob
import os
import re
import shutil
import statistics
import subprocess
import sys
import tempfile
import time

REPETITIONS = 5


def run(command):
    """Seconds, processor seconds, MiB at the peak, exit status."""
    begin = time.monotonic()
    child = subprocess.Popen(command, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    _, status, usage = os.wait4(child.pid, 0)
    child.returncode = 0
    return (time.monotonic() - begin, usage.ru_utime + usage.ru_stime, usage.ru_maxrss / 1024,
            os.waitstatus_to_exitcode(status))


def compact(inspect, source, target):
    """The files of a directory in compact syntax: not every tool reads YIN. Those of modules, submodules left out."""
    files = sorted(glob.glob(source + "/*.yin"))
    subprocess.run([inspect, "convert", "--to", "yang", "-d", source, "-o", target + "/", *files], check=True)
    made = [os.path.join(target, os.path.basename(file)[: -len(".yin")] + ".yang") for file in files]
    return [file for file in made if not re.search(r"^\s*submodule\s", open(file).read(), re.MULTILINE)]


def commands(inspect, directory, files):
    yield "korv-inspect tree", [inspect, "tree", "--own", *files, "-d", directory]
    yield "pyang -f tree", ["pyang", "-f", "tree", "-p", directory, *files]
    modules = [f"--module={file}" for file in files]
    yield "yangdump --format=tree", ["yangdump", "--modpath=" + directory, "--format=tree", *modules]


def measure(title, inspect, directory, files):
    print(f"\n{title}\n{'':24}{'seconds':>10}{'processor':>11}{'MiB':>8}")
    kinds = list(commands(inspect, directory, files))
    runs = {name: [] for name, _ in kinds}
    for _ in range(REPETITIONS):
        for name, command in kinds:
            if shutil.which(command[0]):
                runs[name].append(run(command))
    for name, taken in runs.items():
        if not taken:
            print(f"{name:24}not installed")
            continue
        seconds, processor, memory, status = (statistics.median(values) for values in zip(*taken))
        end = f"exit status {status:.0f}" if status > 0 else f"ended by signal {-status:.0f}"
        refusal = f"  not all of them: {end}" if status else ""
        print(f"{name:24}{seconds:10.3f}{processor:11.3f}{memory:8.0f}{refusal}")


def main():
    programs = sys.argv[1]
    inspect = os.path.join(programs, "korv-inspect")
    with tempfile.TemporaryDirectory() as top:
        made = os.path.join(top, "made")
        os.mkdir(made)
        subprocess.run([os.path.join(programs, "korv_bench"), "--operation=write", made, "-"], check=True)
        plain = os.path.join(top, "plain")
        os.mkdir(plain)
        files = compact(inspect, made, plain)
        sets = [file for file in files if "bench-set-" in file]
        measure("one model of 100,000 nodes", inspect, plain, [plain + "/bench-load.yang"])
        measure(f"{len(sets)} generated models", inspect, plain, sets)
        if len(sys.argv) > 2:
            given = os.path.join(top, "given")
            os.mkdir(given)
            files = compact(inspect, sys.argv[2], given)
            measure(f"{len(files)} models of {sys.argv[2]}", inspect, given, files)


main()
