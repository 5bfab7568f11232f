"""The command line of scripts/bench."""

from __future__ import annotations

import argparse
import json
import os
import pathlib
import subprocess
import sys
from dataclasses import dataclass

from suite import gates, markdown, picture, report
from suite.runner import Failure, Runner, progress
from suite.sections import SECTIONS
from suite.tables import as_text

ROOT = pathlib.Path(__file__).resolve().parents[2]
DOCS = ROOT / "docs"
DESCRIPTION = """\
Measures the plugin against what people would use instead, and against its own floor.

Builds the preset "bench" and runs all contenders interleaved, a process for each repetition. Prints
tables, and writes docs/performance.json, docs/performance.svg and the figures in
docs/performance.md. Installs nothing; the group bench in scripts/packages lists what is needed and
what is measured against where it is there (Qt Quick Controls, Kirigami).

Exit code: 0 when all is well; 1 when a measurement failed or a gate was missed."""


@dataclass(frozen=True)
class Target:
    """Against which Qt is measured: the preset to build, and how the files are called that the
    figures are written to."""

    preset: str
    files: str


TARGETS = {5: Target("bench", "performance"), 6: Target("bench6", "performance-qt6")}


def _build(preset):
    for command in (["cmake", "--preset", preset],
                    ["cmake", "--build", "--preset", preset, "--parallel", str(os.cpu_count())]):
        done = subprocess.run(command, cwd=ROOT, stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                              text=True, check=False)
        if done.returncode != 0:
            raise Failure(f"{done.stdout}\nThe build failed.")
    return ROOT / "build" / preset


def _smoke(runner):
    """Runs every measurement once with few items and without callgrind."""
    scenarios = [scenario for section in SECTIONS
                 for scenario in section.smoke(runner.known, count=10)]
    for scenario in dict.fromkeys(scenarios):
        runner.run(scenario)
    print(f"{len(dict.fromkeys(scenarios)) - len(runner.missing)} measurements ran.")
    for package in sorted({missing.peer.package(runner.qt) for missing in runner.missing}):
        print(f"Not measured: {package} is not installed.")


def _gates(runner):
    found = report.check_gates(runner)
    print(f"\n{as_text(gates.table(found))}")
    failed = gates.failures(found)
    print(f"\nOf {len(found)} gates, {failed} failed and {gates.known_misses(found)} are known to "
          "be missed.")
    return 1 if failed else 0


def _write(found, output, files):
    """The document in docs/ that people wrote keeps their words around its figures."""
    tables = report.tables(found)
    output.mkdir(parents=True, exist_ok=True)
    (output / f"{files}.json").write_text(report.to_json(found), encoding="utf-8")
    picture.draw(found, output / f"{files}.svg")
    document = output / f"{files}.md"
    machine = report.machine_line(found)
    if output == DOCS and files == TARGETS[5].files:
        markdown.fill_in(document, machine, tables)
    else:
        document.write_text(markdown.document(machine, tables), encoding="utf-8")
    if output == DOCS and files != TARGETS[5].files:
        # Beside the figures of Qt 5, what people compare.
        beside = {"items-qt6": tables["items"]}
        markdown.fill_in(DOCS / f"{TARGETS[5].files}.md", machine, beside, "machine-qt6")
    print(f"\nWrote {files}.json, {files}.svg and {files}.md to {output}")


def _recorded(path):
    try:
        return json.loads(path.read_text(encoding="utf-8"))
    except (OSError, ValueError) as error:
        raise Failure(f"Can't read {path}: {error}") from error


def _measure(runner, quick, output, files):
    found = report.measure(runner, quick)
    print(report.machine_line(found))
    for table in report.tables(found).values():
        print(f"\n{as_text(table)}")
    _write(found, output, files)
    return 1 if gates.failures(found["gates"]) else 0


def _run(arguments):
    target = TARGETS[arguments.qt]
    if not arguments.gates and not arguments.smoke:
        # Told now, not after an hour of measuring.
        picture.load_library()
    if arguments.redraw:
        output = (arguments.output or DOCS).resolve()
        _write(_recorded(output / f"{target.files}.json"), output, target.files)
        return 0
    build_dir = (arguments.build_dir or _build(target.preset)).resolve()
    runner = Runner(build_dir)
    if runner.qt != arguments.qt:
        raise Failure(f"{build_dir} is built with Qt {runner.known['qt']}, not Qt {arguments.qt}.")
    if arguments.smoke:
        _smoke(runner)
        return 0
    if arguments.gates:
        return _gates(runner)
    output = arguments.output or (build_dir if arguments.quick else DOCS)
    return _measure(runner, arguments.quick, output.resolve(), target.files)


def main() -> int:
    """Does what the command line asks for, and returns the exit code."""
    parser = argparse.ArgumentParser(prog="scripts/bench", description=DESCRIPTION,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    mode = parser.add_mutually_exclusive_group()
    mode.add_argument("--quick", action="store_true",
                      help="1,000 items with four bindings and few repetitions; leaves the docs "
                           "as they are and writes to the build folder")
    mode.add_argument("--gates", action="store_true",
                      help="count instructions, compare them with the limits, exit with 1 when one "
                           "is missed; below three minutes")
    mode.add_argument("--smoke", action="store_true",
                      help="run every measurement once with ten items, to see that they work")
    mode.add_argument("--redraw", action="store_true",
                      help="measure nothing: make tables and picture anew from the figures of the "
                           "last run")
    parser.add_argument("--qt", type=int, choices=TARGETS, default=5,
                        help="the major version of Qt, 5 unless told otherwise; 6 builds the "
                             "preset bench6 and writes files called performance-qt6")
    parser.add_argument("--build-dir", type=pathlib.Path,
                        help="use the programs of this build folder instead of building")
    parser.add_argument("--output", type=pathlib.Path,
                        help="where document, JSON and picture are written (default: docs)")
    try:
        return _run(parser.parse_args())
    except Failure as failure:
        progress("")
        print(failure, file=sys.stderr)
        return 1
    except KeyboardInterrupt:
        return 130
