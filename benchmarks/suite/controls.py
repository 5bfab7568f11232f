"""Controls of the style for Qt Quick Controls: what it costs to make each and to switch a page of
them, beside those of Qt's own styles."""

import statistics

from suite.gates import Figure, Gate, instructions
from suite.runner import CONTROLS, Failure, scenario
from suite.section import Section
from suite.tables import THOUSAND, Table, amount, ratio

OURS, FUSION, MATERIAL = "Tavolins", "Fusion", "Material"
STYLES = ("Default", FUSION, MATERIAL, OURS)
#: How many of each control are made, and how many stand on the page.
MADE, ON_THE_PAGE = 10, 300
PAGES = {
    MATERIAL: "Material.theme",
    OURS: "Tavolins, themes that differ in their colors",
    "all": "Tavolins, themes that differ in fonts and radius as well",
}


def create(style, count=MADE):
    """Making every control in one style, each in a phase of its own."""
    return scenario("controls", count, CONTROLS, look=style)


def switch(page, count=ON_THE_PAGE):
    """Switching one of PAGES."""
    if page == "all":
        return scenario("page", count, CONTROLS, look=OURS, differ="all")
    return scenario("page", count, CONTROLS, look=page)


def _ratios(runner):
    """What each control costs in our style, as so many times what it costs in Fusion."""
    ours, fusion = runner.counts(create(OURS)), runner.counts(create(FUSION))
    return [ours[control] / fusion[control] for control in sorted(ours) if control in fusion]


def _objects(runner, style):
    measured = runner.once(create(style))
    return measured and measured["objects"]


def _figure_of_ratios(summarize):
    def value(runner):
        ratios = _ratios(runner)
        return summarize(ratios) if ratios else None
    return Figure((create(OURS), create(FUSION)), value)


def _figure_of_objects(summarize):
    def value(runner):
        ours, material = (_objects(runner, style) for style in (OURS, MATERIAL))
        return summarize(ours, material) if ours and material else None
    return Figure((), value)


def _gates():
    yield Gate("controls, create / Fusion, median", 1.15, _figure_of_ratios(statistics.median))
    # With Qt 6 each color of a window's palette is a property, and a window of ours has them all.
    yield Gate("controls, create / Fusion, the most", 1.6, _figure_of_ratios(max),
               ceiling_with_qt6=6)
    yield Gate("controls, objects of all / Material", 1.0, _figure_of_objects(
        lambda ours, material: sum(ours.values()) / sum(material.values())))
    # What the attached theme needs to learn of its control's end is one more object; with Qt 6 the
    # palette of a window is several.
    yield Gate("controls, objects more than Material's, the most", 0, _figure_of_objects(
        lambda ours, material: max(ours[control] - material[control] for control in ours)),
        ceiling=3, ceiling_with_qt6=6)
    yield Gate("controls, switch a page / Material", 1.6,
               instructions(switch(OURS), "switch") / instructions(switch(MATERIAL), "switch"))


class Controls(Section):
    """A row for each control, and one for each page that is switched."""

    name = "controls"
    gates = tuple(_gates())

    def smoke(self, known, count):
        if set(STYLES) != set(known["styles"]):
            raise Failure("controls.py and tavolins-bench do not know the same styles.")
        return [create(style, count) for style in STYLES] + [switch(page, count) for page in PAGES]

    def measure(self, runner, quick):
        runner.count_all([create(style) for style in STYLES] + [switch(page) for page in PAGES])
        counts = {style: runner.counts(create(style)) for style in STYLES}
        objects = {style: _objects(runner, style) or {} for style in STYLES}
        rows = [{"control": control,
                 "instructions": {style: counts[style].get(control) for style in STYLES},
                 "objects": {style: objects[style].get(control) for style in STYLES}}
                for control in sorted(counts[OURS])]
        return rows + [{"page": page, "instructions": runner.counts(switch(page)).get("switch")}
                       for page in PAGES]

    def tables(self, rows):
        controls = [row for row in rows if "control" in row]
        pages = [row for row in rows if "page" in row]
        return {self.name: self._controls(controls), "pages": self._pages(pages)}

    @staticmethod
    def _controls(rows):
        lines = []
        for row in rows:
            costs = row["instructions"]
            times = ratio(costs[OURS], costs[FUSION])
            lines.append([row["control"]]
                         + [amount(costs[style], THOUSAND, 0) for style in STYLES]
                         + [f"× {times:.2f}" if times else ""]
                         + [str(row["objects"][style]) for style in STYLES])
        head = ["control", *(f"{style} k instr." for style in STYLES), "Tavolins / Fusion",
                *(f"{style} objects" for style in STYLES)]
        return Table("Making a control", head, lines)

    @staticmethod
    def _pages(rows):
        material = {row["page"]: row["instructions"] for row in rows}.get(MATERIAL)
        lines = []
        for row in rows:
            times = ratio(row["instructions"], material)
            lines.append([PAGES[row["page"]], amount(row["instructions"], THOUSAND, 1),
                          f"× {times:.2f}" if times else ""])
        return Table("Switching a page of 300 controls, per control",
                     ["switched by", "k instr.", "/ Material"], lines)
