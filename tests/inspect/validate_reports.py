"""Reads a report of `korv-inspect check` from standard input as the machines that take it do: sarif, junit or gitlab."""
import json
import os
import sys
import xml.etree.ElementTree as xml

import jsonschema


def sarif(text):
    with open(os.path.join(os.path.dirname(__file__), "sarif", "sarif-schema-2.1.0.json"), encoding="utf-8") as file:
        schema = json.load(file)
    log = json.loads(text)
    jsonschema.Draft4Validator(schema, format_checker=jsonschema.FormatChecker()).validate(log)
    rules = log["runs"][0]["tool"]["driver"]["rules"]
    for result in log["runs"][0]["results"]:
        assert rules[result["ruleIndex"]]["id"] == result["ruleId"]
        place = result["locations"][0].get("physicalLocation")
        region = place.get("region", {}) if place else {}
        uri = place["artifactLocation"]["uri"] if place else "-"
        print(result["ruleId"], result["level"], uri, region.get("startLine", 0), region.get("startColumn", 0))


def junit(text):
    root = xml.fromstring(text)
    assert root.tag == "testsuites"
    for suite in root:
        cases = suite.findall("testcase")
        failures = suite.findall("testcase/failure")
        assert int(suite.get("tests")) == len(cases) and int(suite.get("failures")) == len(failures)
        assert all(case.get("name") and case.get("classname") for case in cases)
        assert all(failure.get("message") and failure.get("type") for failure in failures)
        print(suite.get("name"), len(cases), len(failures))
    assert int(root.get("tests")) == len(root.findall("testsuite/testcase"))
    assert int(root.get("failures")) == len(root.findall("testsuite/testcase/failure"))


def gitlab(text):
    findings = json.loads(text)
    assert len({finding["fingerprint"] for finding in findings}) == len(findings)
    for finding in findings:
        assert finding["severity"] in ("info", "minor", "major", "critical", "blocker") and finding["description"]
        path = finding["location"]["path"]
        assert not path.startswith("./") and finding["location"]["lines"]["begin"] > 0
        print(finding["check_name"], finding["severity"], finding["fingerprint"])


{"sarif": sarif, "junit": junit, "gitlab": gitlab}[sys.argv[1]](sys.stdin.read())
