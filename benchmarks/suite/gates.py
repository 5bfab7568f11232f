"""Limits, and what is compared with them."""

from __future__ import annotations

import operator
from dataclasses import dataclass

from suite.tables import Table

PASS = "PASS"
FAIL = "FAIL"
NOT_INSTALLED = "not installed"
RELATIONS = {"<=": operator.le, "<": operator.lt, "=": operator.eq}


class Figure:
    """A number that a gate compares with its limit. It is made before anything is measured, from
    other figures where it is a ratio or a difference, and says what has to be counted for it."""

    def __init__(self, scenarios, value):
        self.scenarios = scenarios
        self._value = value

    def value(self, runner):
        """The number; None when something that it needs is not installed."""
        return self._value(runner)

    def __truediv__(self, other: Figure) -> Figure:
        return self._combined(other, operator.truediv)

    def __sub__(self, other: Figure) -> Figure:
        return self._combined(other, operator.sub)

    def _combined(self, other, operation):
        def value(runner):
            values = self.value(runner), other.value(runner)
            return None if None in values else operation(*values)
        return Figure(self.scenarios + other.scenarios, value)


def instructions(scenario, phase: str) -> Figure:
    """What callgrind counts in one phase."""
    return Figure((scenario,), lambda runner: runner.counts(scenario).get(phase))


def measured(scenario, name: str, part: str | None = None) -> Figure:
    """What the program itself measures and is the same in each run; part is one of several."""
    def value(runner):
        result = runner.once(scenario)
        if result is None:
            return None
        return result[name] if part is None else result[name][part]
    return Figure((), value)


@dataclass(frozen=True)
class Gate:
    """A limit on a figure. One that is known to be out of reach, for the reason that
    docs/performance.md gives, has a ceiling above it: what lies between is told as missed, and only
    what lies above the ceiling fails. Some are out of reach with Qt 6 only, or farther than with
    Qt 5."""

    title: str
    limit: float
    figure: Figure
    relation: str = "<="
    unit: str = ""
    ceiling: float | None = None
    ceiling_with_qt6: float | None = None

    def verdict(self, value, qt=5) -> str:
        """PASS, FAIL, NOT_INSTALLED, or how a known miss is told; qt is the major version."""
        if value is None:
            return NOT_INSTALLED
        if RELATIONS[self.relation](value, self.limit):
            return PASS
        ceiling = self.ceiling
        if qt == 6 and self.ceiling_with_qt6 is not None:
            ceiling = self.ceiling_with_qt6
        if ceiling is not None and value <= ceiling:
            return f"missed (fails above {ceiling:g})"
        return FAIL


def check(gates, runner) -> list[dict]:
    """Measures what gates need and compares it: a row for each, in their order."""
    gates = list(gates)
    runner.count_all(scenario for gate in gates for scenario in gate.figure.scenarios)
    rows = []
    for gate in gates:
        value = gate.figure.value(runner)
        rows.append({"title": gate.title, "relation": gate.relation, "limit": gate.limit,
                     "value": value, "unit": gate.unit, "verdict": gate.verdict(value, runner.qt)})
    return rows


def failures(rows) -> int:
    """How many of check()'s rows fail."""
    return sum(row["verdict"] == FAIL for row in rows)


def known_misses(rows) -> int:
    """How many of check()'s rows lie between their limit and their ceiling."""
    return sum(row["verdict"] not in (PASS, FAIL, NOT_INSTALLED) for row in rows)


def table(rows) -> Table:
    """check()'s rows for people."""
    lines = []
    for row in rows:
        form = ".0f" if row["unit"] == "bytes" else "g" if row["relation"] == "=" else ".3f"
        unit = f" {row['unit']}" if row["unit"] else ""
        value = "-" if row["value"] is None else f"{row['value']:{form}}{unit}"
        lines.append([row["title"], f"{row['relation']} {row['limit']:g}{unit}", value,
                      row["verdict"]])
    return Table("Gates", ["gate", "limit", "measured", "verdict"], lines)
