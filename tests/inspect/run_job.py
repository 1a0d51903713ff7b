"""Runs the shell lines of a job: run_job.py FILE NAME=VALUE... Prints each step's name, what it says, and its exit status.

What the job takes from the network, and steps of others (`uses`), is left out."""
import subprocess
import sys

import yaml

with open(sys.argv[1], encoding="utf-8") as file:
    (job,) = yaml.safe_load(file)["jobs"].values()
given = dict(word.split("=", 1) for word in sys.argv[2:])
missing = [name for name in given if name not in job["env"]]
if missing:
    sys.exit(f"the job has no {missing}")
settings = "".join(f"export {name}='{given.get(name, value)}'\n" for name, value in job["env"].items())
for step in job["steps"]:
    if "run" not in step or step["name"].startswith("Install"):
        continue
    result = subprocess.run(["sh", "-ec", settings + step["run"]], stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)
    print(f"{step['name']}\n{result.stdout}exit status {result.returncode}")
