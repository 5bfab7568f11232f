"""What a part of the measurements is."""

from __future__ import annotations

from dataclasses import dataclass
from typing import Callable

from suite.runner import Scenario
from suite.tables import Table


class Section:
    """One part of the measurements: its scenarios, the rows that they give, the tables made of the
    rows, and the limits.

    name: its key in performance.json.
    gates: limits that scripts/bench --gates checks.
    """

    name: str
    gates: tuple = ()

    def smoke(self, known: dict, count: int) -> list[Scenario]:
        """Every scenario once, each with a few items. Raises Failure when this section and what the
        programs say they know differ."""
        raise NotImplementedError

    def measure(self, runner, quick: bool) -> list[dict]:
        """What performance.json holds of it; quick measures less."""
        raise NotImplementedError

    def tables(self, rows: list[dict]) -> dict[str, Table]:
        """Tables by the names of their places in docs/performance.md."""
        raise NotImplementedError


@dataclass(frozen=True)
class Row:
    """One line of a Comparison.

    name, label: its name in performance.json and in the table.
    scenario, phase: what is run, and which of its phases is the row's.
    counted: what callgrind counts instead, where the scenario would take too long for it.
    """

    name: str
    label: str
    scenario: Scenario
    phase: str
    counted: Scenario | None = None


@dataclass(frozen=True)
class Comparison(Section):
    """Rows that stand below each other in one table. Each gives the time ("ns") and the
    instructions of its phase.

    head: what the rows are.
    columns: their heads, and the functions that make a cell of a row and the first row.
    repetitions: how many times everything is run, and how many times when it has to be quick.
    """

    name: str
    title: str
    head: str
    rows: tuple[Row, ...]
    columns: tuple[tuple[str, Callable[[dict, dict], str]], ...]
    repetitions: tuple[int, int] = (9, 3)
    gates: tuple = ()

    def smoke(self, known, count):
        return [row.counted or row.scenario for row in self.rows]

    def measure(self, runner, quick):
        times = runner.timed([row.scenario for row in self.rows], self.repetitions[quick])
        runner.count_all(row.counted or row.scenario for row in self.rows)
        return [self._measured(row, runner, times[row.scenario]) for row in self.rows]

    def _measured(self, row, runner, times):
        if row.scenario in runner.missing:
            return {"name": row.name, "unavailable": row.scenario.peer.package(runner.qt)}
        counts = runner.counts(row.counted or row.scenario)
        return {"name": row.name, "ns": times[f"{row.phase}_ns"],
                "instructions": counts[row.phase]}

    def tables(self, rows):
        labels = {row.name: row.label for row in self.rows}
        lines = []
        for row in rows:
            label = labels[row["name"]]
            if "unavailable" in row:
                lines.append([not_installed(label, row)] + [""] * len(self.columns))
            else:
                lines.append([label] + [cell(row, rows[0]) for _, cell in self.columns])
        head = [self.head] + [head for head, _ in self.columns]
        return {self.name: Table(self.title, head, lines)}


def not_installed(label: str, row: dict) -> str:
    """The first cell of a row whose peer was not there."""
    return f"{label} (not installed: {row['unavailable']})"
