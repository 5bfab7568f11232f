"""Loading folders of themes, against listing the folder, reading its files and parsing their JSON.
"""

from suite.gates import Gate, instructions, measured
from suite.runner import Failure, scenario
from suite.section import Section
from suite.tables import THOUSAND, Table, amount, time

FOLDERS = {
    "plain": "themes of 3 KB",
    "styles": "the same with a styles folder",
    "small": "themes of a few lines",
    "extend-one": "all extend one later theme",
    "extend-each": "each extends a later theme of its own",
}
#: A folder of themes of 3 KB without any problem, for the checker.
CLEAN = "clean"
#: The folders that are measured with 10,000 themes as well.
GROWING = ("small", "extend-one", "extend-each")
FLOOR, TAVOLINS, CHECKER = "json", "tavolins", "checker"


def load(reader, folder, count=1000):
    """Loading a folder of so many themes, by the plugin or by its floor."""
    return scenario("load", count, reader=reader, folder=folder)


def _gates():
    def cost(reader, folder, count=1000):
        return instructions(load(reader, folder, count), "load")

    def growth(folder):
        return cost(TAVOLINS, folder, 10000) / cost(TAVOLINS, folder)

    yield Gate("load, no styles folder / reading and parsing", 3.0,
               cost(TAVOLINS, "plain") / cost(FLOOR, "plain"))
    yield Gate("load, with a styles folder / reading and parsing", 3.0,
               cost(TAVOLINS, "styles") / cost(FLOOR, "styles"))
    yield Gate("load, folders listed for 1,000 themes without styles", 1,
               measured(load(TAVOLINS, "plain"), "listed"), "=")
    yield Gate("load, a theme, 10,000 themes / 1,000", 1.1, growth("small"))
    yield Gate("load, a theme extending a later one, 10,000 / 1,000", 1.1, growth("extend-each"))


class Loading(Section):
    """Each folder by the plugin and by its floor."""

    name = "loading"
    gates = tuple(_gates())

    def smoke(self, known, count):
        if {*FOLDERS, CLEAN} != set(known["folders"]):
            raise Failure("loading.py and tavolins-bench do not know the same folders.")
        return [load(reader, folder, count) for folder in FOLDERS for reader in (FLOOR, TAVOLINS)]

    def measure(self, runner, quick):
        rows = []
        for count, folders in ((1000, FOLDERS), (10000, () if quick else GROWING)):
            scenarios = {(folder, reader): load(reader, folder, count)
                         for folder in folders for reader in (FLOOR, TAVOLINS)}
            times = runner.timed(scenarios.values(), 3 if quick else 5)
            runner.count_all(scenarios.values())
            for (folder, reader), loaded in scenarios.items():
                calls = {name: times[loaded][name]["median"] / count
                         for name in ("opened", "looked_up", "listed")}
                rows.append({"reader": reader, "folder": folder, "themes": count,
                             "load_ns": times[loaded]["load_ns"], "file_calls": calls,
                             "instructions": runner.counts(loaded)["load"]})
        return rows

    def tables(self, rows):
        floors = {(row["folder"], row["themes"]): row for row in rows if row["reader"] == FLOOR}
        lines = []
        for row in rows:
            if row["reader"] == FLOOR:
                continue
            floor = floors[row["folder"], row["themes"]]
            lines.append([f"{row['themes']:,}", FOLDERS[row["folder"]],
                          time(floor["load_ns"]), time(row["load_ns"]),
                          f"{row['load_ns']['median'] / floor['load_ns']['median']:.2f}",
                          amount(floor["instructions"], THOUSAND, 1),
                          amount(row["instructions"], THOUSAND, 1),
                          f"{row['instructions'] / floor['instructions']:.2f}",
                          f"{row['file_calls']['looked_up']:.1f}",
                          f"{row['file_calls']['listed']:.3g}"])
        head = ["themes", "folder", "reading and parsing µs", "Tavolins µs", "ratio",
                "k instr. (floor)", "k instr.", "ratio", "look-ups", "folders listed"]
        return {self.name: Table("Loading, per theme", head, lines)}
