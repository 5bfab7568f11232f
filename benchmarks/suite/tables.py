"""Tables, and how figures are written in their cells. A figure that was not measured is None, and
its cell empty."""

from __future__ import annotations

import re
from dataclasses import dataclass

#: Nanoseconds in a unit of time.
NS, US, MS = 1, 1e3, 1e6
#: Instructions in a unit of them.
THOUSAND, MILLION = 1e3, 1e6


@dataclass(frozen=True)
class Table:
    """A title, the columns' heads, and lines of as many cells; all are text."""

    title: str
    head: list[str]
    lines: list[list[str]]


def amount(value: float | None, unit: float, digits: int) -> str:
    """A number in a unit, such as instructions in thousands."""
    return "" if value is None else f"{value / unit:.{digits}f}"


def time(summary: dict | None, unit: float = US, digits: int = 2) -> str:
    """The median of a time in nanoseconds."""
    return "" if summary is None else amount(summary["median"], unit, digits)


def time_and_spread(summary: dict | None, unit: float = US, digits: int = 2) -> str:
    """The same, with half the distance between the quartiles."""
    if summary is None:
        return ""
    return f"{time(summary, unit, digits)} ±{50 * summary['spread']:.0f} %"


def ratio(value: float | None, other: float | None) -> float | None:
    """How many times the other; None where one of them was not measured."""
    return None if value is None or other is None else value / other


def as_text(table: Table) -> str:
    """A table for a terminal, numbers to the right."""
    columns = list(zip(table.head, *table.lines))
    widths = [max(map(len, column)) for column in columns]
    is_number = [all(re.match(r"^(×? ?[\d-].*)?$", cell) for cell in column[1:])
                 for column in columns]
    lines = []
    for line in [table.head, *table.lines]:
        cells = [cell.rjust(width) if right else cell.ljust(width)
                 for cell, width, right in zip(line, widths, is_number)]
        lines.append(("  " + "  ".join(cells)).rstrip())
    return "\n".join([table.title, *lines])
