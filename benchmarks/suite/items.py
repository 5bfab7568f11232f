"""Items that show a theme: what it costs to make, switch and delete them, with Tavolins and with
what people would use instead."""

from __future__ import annotations

from dataclasses import dataclass

from suite.gates import Gate, instructions, measured
from suite.runner import CONTROLS, KIRIGAMI, Failure, Peer, scenario
from suite.section import Section, not_installed
from suite.tables import THOUSAND, Table, amount, ratio, time, time_and_spread


@dataclass(frozen=True)
class Contender:
    """Somebody who shows a theme.

    label: its name in tables.
    peer: what has to be installed for it.
    baseline: the contender with the same items that show constants; empty for those themselves.
    """

    label: str
    peer: Peer | None = None
    baseline: str = "plain"


TAVOLINS, ONE, TWO = "tavolins", "tavolins-one-class", "tavolins-two-classes"
CONTENDERS = {
    "plain": Contender("Rectangle with constants", baseline=""),
    "qml-singleton": Contender("QML singleton"),
    "cpp-singleton": Contender("C++ singleton"),
    "bare-attached": Contender("bare attached object"),
    "floor": Contender("floor of this design"),
    "material": Contender("Material", CONTROLS),
    "kirigami": Contender("Kirigami, colors at the root", KIRIGAMI),
    "kirigami-own": Contender("Kirigami, own theme per item", KIRIGAMI),
    "plain-control": Contender("Control with constants", CONTROLS, baseline=""),
    "control-palette": Contender("Control.palette", CONTROLS, baseline="plain-control"),
    TAVOLINS: Contender("Tavolins"),
    ONE: Contender("Tavolins, one class"),
    TWO: Contender("Tavolins, two classes"),
    "tavolins-no-scope": Contender("Tavolins, class without scope"),
}
SHAPES = {
    "four": "four bindings",
    "two": "two colors",
    "parts-each": "delegate, each part reads",
    "parts-root": "delegate, the root reads",
}
BINDINGS = {"color": "color", "border": "border color", "corner": "radius", "face": "font"}
PHASES = ("create", "switch", "destroy")
ORDERS = ("reverse", "random")
#: How many items, and how many times they are measured.
REPETITIONS = {100: 9, 1000: 9, 10000: 3}
SIZES = tuple(REPETITIONS)


def items(contender, count=1000, shape="four", **more):
    """Items of one contender; more is a measure other than life, and what belongs to it."""
    return scenario("items", count, CONTENDERS[contender].peer, contender=contender, shape=shape,
                    **more)


def themed_contenders():
    """Those that show a theme, not constants."""
    return [name for name, contender in CONTENDERS.items() if contender.baseline]


def rows_by_contender(rows, count=1000, shape="four"):
    """The rows of the section Items with so many items of one shape."""
    return {row["contender"]: row for row in rows
            if row["items"] == count and row["shape"] == shape}


def _destruction(contender, count, order):
    return items(contender, count, measure="destruction", order=order)


def _gates():
    def cost(phase, contender, count=1000):
        return instructions(items(contender, count), phase)

    def against(phase, contender, other):
        return cost(phase, contender) / cost(phase, other)

    def heap_over_bare(contender):
        return measured(items(contender), "heap") - measured(items("bare-attached"), "heap")

    def evaluations(contender, label, expected):
        scenario = items(contender, measure="evaluations")
        for (binding, name), limit in zip(BINDINGS.items(), expected):
            yield Gate(f"evaluations in a switch, {label}, {name}", limit,
                       measured(scenario, "evaluations", binding), "=")

    yield Gate("create, plain items / floor", 1.08, against("create", TAVOLINS, "floor"))
    yield Gate("create, plain items / Material", 1.0, against("create", TAVOLINS, "material"), "<",
               ceiling_with_qt6=1.03)
    yield Gate("create, plain items / Kirigami", 0.85, against("create", TAVOLINS, "kirigami"))
    yield Gate("create, one class / plain items", 1.6, against("create", ONE, TAVOLINS))
    yield Gate("create, two classes / one", 1.05, against("create", TWO, ONE))
    yield Gate("switch, plain items / floor", 1.03, against("switch", TAVOLINS, "floor"))
    yield from evaluations(TAVOLINS, "plain items", (3, 3, 2, 3))
    yield from evaluations(ONE, "one class", (2, 2, 2, 2))
    yield Gate("switch, one class / plain items", 1.15, against("switch", ONE, TAVOLINS))
    yield Gate("switch, one class / Kirigami's own themes", 0.36,
               against("switch", ONE, "kirigami-own"))
    yield Gate("switch, two classes / one", 1.05, against("switch", TWO, ONE))
    yield Gate("heap, plain items over bare attached", 300, heap_over_bare(TAVOLINS), unit="bytes",
               ceiling=600)
    yield Gate("heap, one class over bare attached", 2300, heap_over_bare(ONE), unit="bytes",
               ceiling_with_qt6=2600)
    yield Gate("destroy, plain items / bare attached", 1.35,
               against("destroy", TAVOLINS, "bare-attached"))
    yield Gate("destroy, one class / bare attached", 2.5, against("destroy", ONE, "bare-attached"))
    for contender, label in ((TAVOLINS, "plain items"), (ONE, "one class")):
        for phase in PHASES:
            yield Gate(f"{phase}, {label}, 10,000 items / 1,000", 1.1,
                       cost(phase, contender, 10000) / cost(phase, contender))
        for order in ORDERS:
            many, few = (instructions(_destruction(contender, count, order), "destroy")
                         for count in (10000, 1000))
            yield Gate(f"destroy {order}, {label}, 10,000 items / 1,000", 1.1, many / few)


class Items(Section):
    """All contenders in several numbers and shapes."""

    name = "items"
    gates = tuple(_gates())

    def smoke(self, known, count):
        if set(CONTENDERS) != set(known["contenders"]) or set(SHAPES) != set(known["shapes"]):
            raise Failure("items.py and tavolins-bench do not know the same contenders and shapes.")
        return [items(contender, count, shape) for contender in CONTENDERS for shape in SHAPES] \
            + [_destruction(TAVOLINS, count, order) for order in ("creation", *ORDERS)]

    def measure(self, runner, quick):
        sizes = {1000: 3} if quick else REPETITIONS
        shapes = ("four",) if quick else tuple(SHAPES)
        rows = []
        for count, repetitions in sizes.items():
            for shape in shapes if count == 1000 else ("four",):
                scenarios = {name: items(name, count, shape) for name in CONTENDERS}
                times = runner.timed(scenarios.values(), repetitions)
                if count == 1000:
                    runner.count_all(scenario for scenario in scenarios.values()
                                     if scenario not in runner.missing)
                rows += [self._row(runner, name, scenario, count, shape, times[scenario])
                         for name, scenario in scenarios.items()]
        return rows

    @staticmethod
    def _row(runner, contender, scenario, count, shape, times):
        row = {"contender": contender, "items": count, "shape": shape}
        if scenario in runner.missing:
            return row | {"unavailable": scenario.peer.package(runner.qt)}
        row |= {name: value for name, value in times.items() if name != "switches"}
        if count == 1000:
            row["instructions"] = runner.counts(scenario)
        return row

    def tables(self, rows):
        tables = {"items": self._costs(rows)}
        if {row["items"] for row in rows} == set(SIZES):
            tables |= {"sizes": self._sizes(rows), "shapes": self._shapes(rows)}
        return tables

    @staticmethod
    def _costs(rows):
        head = ["contender", *(f"{phase} µs" for phase in PHASES), "switch / bare",
                *(f"{phase} k instr." for phase in PHASES), "heap bytes"]
        found = rows_by_contender(rows)
        lines = []
        for name, row in found.items():
            contender = CONTENDERS[name]
            if "unavailable" in row:
                lines.append([not_installed(contender.label, row)] + [""] * (len(head) - 1))
                continue
            compared = heap = None
            if contender.baseline:
                compared = row["switch_ns"]["median"] \
                    / found["bare-attached"]["switch_ns"]["median"]
                heap = row["heap"]["median"] - found[contender.baseline]["heap"]["median"]
            lines.append([contender.label,
                          *(time_and_spread(row.get(f"{phase}_ns")) for phase in PHASES),
                          amount(compared, 1, 2),
                          *(amount(row["instructions"].get(phase), THOUSAND, 1)
                            for phase in PHASES),
                          amount(heap, 1, 0)])
        return Table("1,000 items with four bindings, per item", head, lines)

    @staticmethod
    def _sizes(rows):
        found = {count: rows_by_contender(rows, count) for count in SIZES}
        columns = [(phase, count) for phase in PHASES for count in SIZES]
        lines = [[contender.label,
                  *(time(found[count][name].get(f"{phase}_ns")) for phase, count in columns)]
                 for name, contender in CONTENDERS.items()]
        return Table("µs per item at 100, 1,000 and 10,000 items",
                     ["contender", *(f"{phase} {count:,}" for phase, count in columns)], lines)

    @staticmethod
    def _shapes(rows):
        phases = ("create", "switch")
        columns = [(phase, shape) for phase in phases for shape in SHAPES]
        lines = []
        for name, contender in CONTENDERS.items():
            counts = {shape: rows_by_contender(rows, shape=shape)[name].get("instructions", {})
                      for shape in SHAPES}
            gains = [ratio(counts["parts-root"].get(phase), counts["parts-each"].get(phase))
                     for phase in phases]
            lines.append([contender.label,
                          *(amount(counts[shape].get(phase), THOUSAND, 1)
                            for phase, shape in columns),
                          *("" if gain is None else f"× {gain:.2f}" for gain in gains)])
        return Table("Thousand instructions per item or delegate",
                     ["contender", *(f"{phase}, {SHAPES[shape]}" for phase, shape in columns),
                      "reading once: create", "switch"], lines)


class Evaluations(Section):
    """How many times each binding is evaluated in a switch."""

    name = "evaluations"

    def smoke(self, known, count):
        return [items(contender, count, shape, measure="evaluations")
                for contender in ("floor", TAVOLINS) for shape in SHAPES]

    def measure(self, runner, quick):
        rows = []
        for contender in themed_contenders():
            result = runner.once(items(contender, measure="evaluations"))
            if result is not None:
                rows.append({"contender": contender, "each": result["evaluations"]})
        return rows

    def tables(self, rows):
        lines = [[CONTENDERS[row["contender"]].label,
                  *(f"{row['each'][binding]:g}" for binding in BINDINGS)] for row in rows]
        return {self.name: Table("Evaluations of each binding in a switch",
                                 ["contender", *BINDINGS.values()], lines)}
