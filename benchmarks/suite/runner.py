"""Runs the measuring programs of a build tree, each measurement in a process of its own."""

from __future__ import annotations

import concurrent.futures
import json
import os
import pathlib
import re
import shutil
import statistics
import subprocess
import sys
import tempfile
from dataclasses import dataclass


class Failure(Exception):
    """What ends a run; its text is for the person who started it."""


@dataclass(frozen=True)
class Peer:
    """Something to measure against that may not be installed: its name, and the Debian package that
    has it for each major version of Qt."""

    name: str
    packages: tuple[tuple[int, str], ...]

    def package(self, qt: int) -> str:
        """Name and package, as told to people where it is missing."""
        package = dict(self.packages).get(qt)
        return f"{self.name} ({package})" if package else self.name


CONTROLS = Peer("Qt Quick Controls", ((5, "qml-module-qtquick-controls2"),
                                      (6, "qml6-module-qtquick-controls")))
KIRIGAMI = Peer("Kirigami", ((5, "qml-module-org-kde-kirigami2"),
                             (6, "qml6-module-org-kde-kirigami")))


@dataclass(frozen=True)
class Scenario:
    """What one process measures.

    words: the program, found in the build tree's folder benchmarks, and its arguments. {uri},
        {import_path} and {programs} stand for what only the build tree knows.
    count: by how many items, themes or calls the counted instructions are divided.
    peer: what has to be installed for it, if anything.
    """

    words: tuple[str, ...]
    count: int = 1
    peer: Peer | None = None


def scenario(kind: str, count: int, peer: Peer | None = None, **options: str) -> Scenario:
    """A measurement of the program tavolins-bench."""
    words = [f"--{name}={value}" for name, value in sorted(options.items())]
    return Scenario(("tavolins-bench", kind, f"--count={count}", *words), count, peer)


class Runner:
    """Runs single measurements of one build tree, and keeps what callgrind has counted.

    missing: the scenarios that could not be measured, as their peer is not installed.
    known: what tavolins-bench says that it can measure.
    """

    def __init__(self, build_dir: pathlib.Path):
        self.programs = build_dir / "benchmarks"
        self.missing = set()
        self._scratch = tempfile.TemporaryDirectory(prefix="tavolins-bench-")
        self._results = {}
        self._instructions = {}
        self.known = json.loads(self._output([self.programs / "tavolins-bench", "list"]))
        self.qt = int(self.known["qt"].split(".")[0])
        self._facts = {
            "uri": self.known["uri"],
            "import_path": build_dir / "qml",
            "programs": self.programs,
        }

    def run(self, scenario: Scenario, wrapper=()) -> dict | None:
        """What one process measures; None when its peer is not installed."""
        program, *arguments = scenario.words
        command = [*wrapper, self.programs / program,
                   *(word.format(**self._facts) for word in arguments)]
        result = json.loads(self._output(command))
        if "unavailable" in result:
            self.missing.add(scenario)
            return None
        return result

    def once(self, scenario: Scenario) -> dict | None:
        """The same for what is exact, so that one process is enough for all who ask."""
        if scenario not in self._results:
            self._results[scenario] = self.run(scenario)
        return self._results[scenario]

    def timed(self, scenarios, repetitions: int) -> dict:
        """Runs scenarios in turns, so that a slow minute of the machine is everybody's. For each
        scenario the summary of each thing that it measures; nothing where a peer is missing."""
        samples = {scenario: {} for scenario in scenarios}
        for turn in range(repetitions):
            for number, scenario in enumerate(samples):
                progress(f"turn {turn + 1} of {repetitions}, {number + 1} of {len(samples)}")
                if scenario in self.missing:
                    continue
                for name, value in (self.run(scenario) or {}).items():
                    samples[scenario].setdefault(name, []).append(value)
        progress("")
        return {scenario: {name: summary(values) for name, values in measured.items()}
                for scenario, measured in samples.items()}

    def count_all(self, scenarios):
        """Counts the instructions of scenarios, as many at a time as there are cores."""
        if not shutil.which("valgrind"):
            raise Failure("valgrind is not installed (Debian's package valgrind).")
        wanted = [scenario for scenario in dict.fromkeys(scenarios)
                  if scenario not in self._instructions]
        # The longest ones first, so that no core is left waiting at the end.
        wanted.sort(key=lambda scenario: -scenario.count)
        with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
            counted = zip(wanted, pool.map(self._count, wanted))
            for done, (scenario, counts) in enumerate(counted, start=1):
                self._instructions[scenario] = counts
                progress(f"counting instructions: {done} of {len(wanted)}")
        progress("")

    def counts(self, scenario: Scenario) -> dict:
        """Instructions by phase, for one item; empty where a peer is missing."""
        return self._instructions[scenario] or {}

    def _count(self, scenario):
        with tempfile.TemporaryDirectory(dir=self._scratch.name) as folder:
            out = pathlib.Path(folder) / "out"
            result = self.run(scenario, ["valgrind", "-q", "--tool=callgrind", "--instr-atstart=no",
                                         f"--callgrind-out-file={out}"])
            if result is None:
                return None
            counts = {}
            for dump in pathlib.Path(folder).glob("out.*"):
                text = dump.read_text(encoding="utf-8", errors="replace")
                phase = re.search(r"^desc: Trigger: Client Request: (\w+)$", text, re.M)
                total = re.search(r"^totals: (\d+)$", text, re.M)
                if phase and total:
                    counts[phase[1]] = int(total[1]) / scenario.count
        for phase in ("switch", "reload"):
            if phase in counts:
                counts[phase] /= result["switches"]
        return counts

    def _output(self, command):
        environment = {
            **os.environ,
            "QT_QPA_PLATFORM": "offscreen",
            "QT_QUICK_BACKEND": "software",
            "XDG_RUNTIME_DIR": self._scratch.name,
            "LC_ALL": "C.UTF-8",
            # The same work in every process.
            "QT_HASH_SEED": "0",
            "QML_DISABLE_DISK_CACHE": "1",
        }
        words = [str(word) for word in command]
        try:
            done = subprocess.run(words, env=environment, stdout=subprocess.PIPE,
                                  stderr=subprocess.PIPE, text=True, check=False)
        except OSError as error:
            raise Failure(f"Can't run {words[0]}: {error.strerror}") from error
        if done.returncode != 0:
            raise Failure(f"{' '.join(words)}\nfailed:\n{done.stdout}{done.stderr}".rstrip())
        return done.stdout


def progress(text: str):
    """Tells a person who watches what is being done; an empty text wipes the line."""
    if sys.stderr.isatty():
        print(f"\r\033[K{text}", end="", file=sys.stderr, flush=True)


def summary(values) -> dict:
    """Median, and the distance of the quartiles as a part of it."""
    median = statistics.median(values)
    spread = 0.0
    if len(values) > 2 and median:
        low, _, high = statistics.quantiles(values, n=4, method="inclusive")
        spread = (high - low) / median
    return {"median": median, "spread": spread, "runs": len(values)}
