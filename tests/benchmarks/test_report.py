"""Tables, documents and the picture, made of the small run in recorded.json; and that what docs/
shows is what its performance.json says."""

import json
import pathlib
import subprocess
import sys
import tempfile
import unittest
import xml.etree.ElementTree

from suite import markdown, picture, report
from suite.runner import CONTROLS, KIRIGAMI, Failure, scenario, summary
from suite.section import Comparison, Row
from suite.tables import Table, amount, as_text, time, time_and_spread

HERE = pathlib.Path(__file__).resolve().parent
DOCS = HERE.parents[1] / "docs"


def recorded(path=HERE / "recorded.json"):
    """A run as it was written."""
    return json.loads(path.read_text(encoding="utf-8"))


class Cells(unittest.TestCase):
    def test_units(self):
        measured = {"median": 1234.6, "spread": 0.1, "runs": 3}
        self.assertEqual(time(measured), "1.23")
        self.assertEqual(time_and_spread(measured), "1.23 ±5 %")
        self.assertEqual(time_and_spread(measured, unit=1, digits=0), "1235 ±5 %")
        self.assertEqual(amount(46_512, 1000, 1), "46.5")

    def test_nothing_measured_is_an_empty_cell(self):
        self.assertEqual([time(None), time_and_spread(None), amount(None, 1, 1)], ["", "", ""])

    def test_summary(self):
        self.assertEqual(summary([4, 1, 2, 3, 5]), {"median": 3, "spread": 2 / 3, "runs": 5})
        self.assertEqual(summary([7]), {"median": 7, "spread": 0.0, "runs": 1})


class Tables(unittest.TestCase):
    def setUp(self):
        self.tables = report.tables(recorded())

    def test_a_small_run_has_no_tables_of_sizes_and_shapes(self):
        self.assertEqual(list(self.tables), [
            "items", "evaluations", "loading", "controls", "pages", "checking", "reload", "calls",
            "startup", "gates"])

    def test_every_line_has_a_cell_for_each_head(self):
        for name, table in self.tables.items():
            with self.subTest(name):
                self.assertEqual({len(line) for line in table.lines}, {len(table.head)})

    def test_items_stand_beside_items_with_constants(self):
        lines = {line[0]: line[1:] for line in self.tables["items"].lines}
        self.assertEqual(lines["Rectangle with constants"],
                         ["2.18 ±3 %", "", "0.46 ±17 %", "", "14.6", "", "4.1", ""])
        self.assertEqual(lines["Tavolins"], ["7.71 ±1 %", "12.79 ±9 %", "3.46 ±10 %", "3.64",
                                             "46.5", "65.9", "11.2", "2236"])

    def test_missing_peer_keeps_its_line(self):
        self.assertEqual(self.tables["items"].lines[2], [
            "Kirigami, colors at the root (not installed: Kirigami "
            "(qml-module-org-kde-kirigami2))", "", "", "", "", "", "", "", ""])

    def test_loading_stands_beside_its_floor(self):
        self.assertEqual(self.tables["loading"].lines[0], [
            "1,000", "themes of 3 KB", "22.56", "45.94", "2.04", "254.9", "366.9", "1.44", "3.0",
            "0.001"])

    def test_controls_stand_beside_those_of_other_styles(self):
        self.assertEqual(self.tables["controls"].lines, [
            ["Button", "283", "385", "1174", "360", "× 0.94", "5", "10", "36", "9"],
            ["Label", "83", "84", "90", "105", "× 1.25", "2", "2", "3", "4"]])
        self.assertEqual(self.tables["pages"].lines, [
            ["Material.theme", "37.7", "× 1.00"],
            ["Tavolins, themes that differ in their colors", "44.9", "× 1.19"]])

    def test_comparison_with_the_first_row(self):
        self.assertEqual([line[1:] for line in self.tables["startup"].lines], [
            ["2.80 ±4 %", "0.00", "4.9"], ["3.20 ±3 %", "0.40", "5.7"],
            ["6.01 ±3 %", "3.21", "30.5"]])

    def test_times_over_the_first_row(self):
        self.assertEqual(self.tables["checking"].lines[1], [
            "checking, 1,000 themes", "573.40 ±5 %", "15.61", "4072.2", "15.99"])

    def test_text_is_aligned(self):
        table = Table("Title", ["what", "n"], [["one", "1.0"], ["three", "10.0"]])
        self.assertEqual(as_text(table), "Title\n  what      n\n  one     1.0\n  three  10.0")


class FakeRunner:
    """Measures everything but what needs Kirigami."""

    qt = 5

    def __init__(self):
        self.missing = set()
        self.repetitions = None

    def timed(self, scenarios, repetitions):
        self.repetitions = repetitions
        self.missing = {scenario for scenario in scenarios if scenario.peer == KIRIGAMI}
        return {scenario: {} if scenario in self.missing else {"draw_ns": summary([2000, 2000])}
                for scenario in scenarios}

    def count_all(self, scenarios):
        self.counted = list(scenarios)

    def counts(self, scenario):
        return {"draw": 3.0 * scenario.count}


class ComparisonRows(unittest.TestCase):
    section = Comparison(
        "drawing", "Drawing", "what",
        rows=(Row("ours", "Ours", scenario("draw", 100), "draw", counted=scenario("draw", 10)),
              Row("other", "Other", scenario("draw", 100, CONTROLS, style="Other"), "draw"),
              Row("kirigami", "Kirigami", scenario("draw", 100, KIRIGAMI, style="K"), "draw")),
        columns=(("µs", lambda row, _: time(row["ns"])),
                 ("times ours", lambda row, ours: amount(row["instructions"]
                                                         / ours["instructions"], 1, 1))),
        repetitions=(9, 2))

    def test_measured_as_its_entry_says(self):
        runner = FakeRunner()
        rows = self.section.measure(runner, quick=True)
        self.assertEqual(runner.repetitions, 2)
        self.assertIn(scenario("draw", 10), runner.counted)
        self.assertEqual([row.get("instructions") for row in rows], [30.0, 300.0, None])
        self.assertEqual(self.section.tables(rows)["drawing"].lines, [
            ["Ours", "2.00", "1.0"], ["Other", "2.00", "10.0"],
            ["Kirigami (not installed: Kirigami (qml-module-org-kde-kirigami2))", "", ""]])
        self.section.measure(runner, quick=False)
        self.assertEqual(runner.repetitions, 9)

    def test_packages_are_those_of_the_measured_qt(self):
        self.assertEqual(CONTROLS.package(5), "Qt Quick Controls (qml-module-qtquick-controls2)")
        self.assertEqual(CONTROLS.package(6), "Qt Quick Controls (qml6-module-qtquick-controls)")


class Documents(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)

    def test_figures_are_replaced_and_words_are_kept(self):
        path = self.folder / "page.md"
        path.write_text("Before.\n\n<!-- figures: machine -->\nold\n<!-- end -->\n\nBetween.\n\n"
                        "<!-- figures: calls -->\n| old |\n<!-- end -->\n\nAfter.\n")
        table = Table("Calls", ["call", "ns"], [["getStyle", "173"]])
        markdown.fill_in(path, "new machine", {"calls": table})
        self.assertEqual(path.read_text(),
                         "Before.\n\n<!-- figures: machine -->\nnew machine\n<!-- end -->\n\n"
                         "Between.\n\n<!-- figures: calls -->\n| call | ns |\n| --- | ---: |\n"
                         "| getStyle | 173 |\n<!-- end -->\n\nAfter.\n")

    def test_table_without_a_place_is_a_failure_and_changes_nothing(self):
        path = self.folder / "page.md"
        text = "<!-- figures: machine -->\nold\n<!-- end -->\n"
        path.write_text(text)
        with self.assertRaisesRegex(Failure, "page.md has no place for the figures named calls"):
            markdown.fill_in(path, "new", {"calls": Table("Calls", ["call"], [])})
        self.assertEqual(path.read_text(), text)

    def test_document_of_its_own_can_be_filled_in_again(self):
        found = recorded()
        path = self.folder / "page.md"
        text = markdown.document(report.machine_line(found), report.tables(found))
        path.write_text(text, encoding="utf-8")
        markdown.fill_in(path, report.machine_line(found), report.tables(found))
        self.assertEqual(path.read_text(encoding="utf-8"), text)

    def test_json_has_a_row_a_line(self):
        found = recorded()
        text = report.to_json(found)
        self.assertEqual(json.loads(text), found)
        rows = sum(len(rows) for rows in found.values() if isinstance(rows, list))
        self.assertEqual(sum(line.startswith("  {") for line in text.splitlines()), rows)

    def test_docs_show_what_was_recorded(self):
        found = recorded(DOCS / "performance.json")
        path = self.folder / "performance.md"
        shown = (DOCS / "performance.md").read_text(encoding="utf-8")
        path.write_text(shown, encoding="utf-8")
        markdown.fill_in(path, report.machine_line(found), report.tables(found))
        self.assertEqual(path.read_text(encoding="utf-8"), shown)


class Picture(unittest.TestCase):
    def setUp(self):
        try:
            picture.load_library()
        except Failure as failure:
            self.skipTest(str(failure))
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.path = pathlib.Path(folder.name) / "picture.svg"

    def words(self):
        """All texts of the picture."""
        root = xml.etree.ElementTree.parse(self.path).getroot()
        return ["".join(text.itertext()).strip()
                for text in root.iter("{http://www.w3.org/2000/svg}text")]

    def test_shows_names_and_figures_of_who_is_there(self):
        picture.draw(recorded(), self.path)
        words = self.words()
        for word in ("bare attached object", "Tavolins, one class", "create", "k instructions",
                     "heap", "46.5", "65.9", "11.2", "3,601",
                     "Testing 3000, 2 cores, Debian, Qt 5.15.8"):
            with self.subTest(word):
                self.assertIn(word, words)
        self.assertNotIn("Kirigami, colors at the root", words)
        self.assertNotIn("Rectangle with constants", words)

    def test_same_figures_same_file(self):
        picture.draw(recorded(), self.path)
        first = self.path.read_bytes()
        picture.draw(recorded(), self.path)
        self.assertEqual(self.path.read_bytes(), first)


class Library(unittest.TestCase):
    def test_nothing_but_the_picture_needs_matplotlib(self):
        done = subprocess.run(
            [sys.executable, "-B", "-c", "import sys, suite.commandline\n"
             "sys.exit('matplotlib' in sys.modules)"], check=False)
        self.assertEqual(done.returncode, 0)


if __name__ == "__main__":
    unittest.main()
