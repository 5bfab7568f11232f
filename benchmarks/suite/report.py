"""What a full run finds: a dictionary with the machine, the rows of each section and those of the
gates, as it stands in performance.json."""

import json
import os
import pathlib
import re

from suite import gates
from suite.sections import SECTIONS


def measure(runner, quick: bool) -> dict:
    """Measures all sections, and the gates unless it has to be quick."""
    report = {"machine": _machine(runner)}
    for section in SECTIONS:
        report[section.name] = section.measure(runner, quick)
    report["gates"] = [] if quick else check_gates(runner)
    return report


def check_gates(runner) -> list[dict]:
    """The gates of all sections."""
    return gates.check((gate for section in SECTIONS for gate in section.gates), runner)


def _machine(runner):
    return {
        "processor": _first_match(r"^model name\s*: (.*)$", "/proc/cpuinfo"),
        "cores": os.cpu_count(),
        "system": _first_match(r'^PRETTY_NAME="(.*)"$', "/etc/os-release"),
        "qt": runner.known["qt"],
    }


def _first_match(pattern, path):
    try:
        found = re.search(pattern, pathlib.Path(path).read_text(encoding="utf-8"), re.M)
    except OSError:
        return ""
    return found[1].strip() if found else ""


def machine_line(report: dict) -> str:
    """On what was measured."""
    facts = report["machine"]
    return f"{facts['processor']}, {facts['cores']} cores, {facts['system']}, Qt {facts['qt']}"


def tables(report: dict) -> dict:
    """All tables by the names of their places in docs/performance.md."""
    found = {}
    for section in SECTIONS:
        found |= section.tables(report[section.name])
    if report["gates"]:
        found["gates"] = gates.table(report["gates"])
    return found


def to_json(report: dict) -> str:
    """The report with one row a line, so that a difference between two runs reads as the rows that
    differ."""
    parts = []
    for name, content in report.items():
        if isinstance(content, list):
            rows = ",\n".join("  " + json.dumps(row, ensure_ascii=False) for row in content)
            text = f"[\n{rows}\n ]" if content else "[]"
        else:
            text = json.dumps(content, ensure_ascii=False)
        parts.append(f" {json.dumps(name)}: {text}")
    return "{\n" + ",\n".join(parts) + "\n}\n"
