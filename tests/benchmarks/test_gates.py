"""Limits: met, known to be missed, exceeded; and which scenarios have to be counted for them."""

import unittest

from suite import gates
from suite.gates import FAIL, NOT_INSTALLED, PASS, Figure, Gate, instructions, measured
from suite.runner import KIRIGAMI, scenario
from suite.sections import SECTIONS

OURS = scenario("items", 1000, contender="tavolins")
FLOOR = scenario("items", 1000, contender="floor")
PEER = scenario("items", 1000, KIRIGAMI, contender="kirigami")


class FakeRunner:
    """Knows the figures of OURS and FLOOR; what PEER needs is not installed."""

    qt = 5

    def __init__(self):
        self.counted = []

    def count_all(self, scenarios):
        self.counted += scenarios

    def counts(self, wanted):
        return {OURS: {"create": 300.0}, FLOOR: {"create": 200.0}, PEER: {}}[wanted]

    def once(self, wanted):
        return {OURS: {"heap": 900.0, "evaluations": {"color": 3}}, FLOOR: {"heap": 400.0},
                PEER: None}[wanted]


def constant(value):
    """A figure that nothing has to be measured for."""
    return Figure((), lambda runner: value)


class Verdicts(unittest.TestCase):
    def verdict(self, value, **gate):
        return Gate("title", 2, constant(value), **gate).verdict(value)

    def test_limit_itself_is_met(self):
        self.assertEqual(self.verdict(2), PASS)

    def test_limit_exceeded(self):
        self.assertEqual(self.verdict(2.001), FAIL)

    def test_strict_limit_is_not_met_by_itself(self):
        self.assertEqual(self.verdict(2, relation="<"), FAIL)
        self.assertEqual(self.verdict(1.999, relation="<"), PASS)

    def test_exact_limit_is_not_met_from_below(self):
        self.assertEqual(self.verdict(1, relation="="), FAIL)
        self.assertEqual(self.verdict(2, relation="="), PASS)

    def test_known_miss_up_to_its_ceiling(self):
        self.assertEqual(self.verdict(2, ceiling=5), PASS)
        self.assertEqual(self.verdict(3, ceiling=5), "missed (fails above 5)")
        self.assertEqual(self.verdict(5, ceiling=5), "missed (fails above 5)")

    def test_known_miss_got_worse(self):
        self.assertEqual(self.verdict(5.001, ceiling=5), FAIL)

    def test_not_installed_is_no_failure(self):
        self.assertEqual(self.verdict(None), NOT_INSTALLED)
        self.assertEqual(self.verdict(None, ceiling=5), NOT_INSTALLED)


class Figures(unittest.TestCase):
    def test_ratio_of_instructions(self):
        figure = instructions(OURS, "create") / instructions(FLOOR, "create")
        self.assertEqual(figure.value(FakeRunner()), 1.5)
        self.assertEqual(figure.scenarios, (OURS, FLOOR))

    def test_difference_of_what_programs_measure_needs_no_counting(self):
        figure = measured(OURS, "heap") - measured(FLOOR, "heap")
        self.assertEqual(figure.value(FakeRunner()), 500)
        self.assertEqual(figure.scenarios, ())

    def test_part_of_what_a_program_measures(self):
        self.assertEqual(measured(OURS, "evaluations", "color").value(FakeRunner()), 3)

    def test_missing_peer_on_either_side(self):
        ours, peer = instructions(OURS, "create"), instructions(PEER, "create")
        for name, figure in {"counted below": ours / peer, "counted above": peer / ours,
                             "measured": measured(OURS, "heap") - measured(PEER, "heap"),
                             "part": measured(PEER, "evaluations", "color")}.items():
            with self.subTest(name):
                self.assertIsNone(figure.value(FakeRunner()))


class Check(unittest.TestCase):
    def setUp(self):
        self.runner = FakeRunner()
        create = instructions(OURS, "create")
        heap = measured(OURS, "heap") - measured(FLOOR, "heap")
        self.rows = gates.check((
            Gate("met", 1.5, create / instructions(FLOOR, "create")),
            Gate("missed as known", 300, heap, unit="bytes", ceiling=600),
            Gate("exceeded", 1.2, create / instructions(FLOOR, "create")),
            Gate("no peer", 1, create / instructions(PEER, "create")),
            Gate("exact", 3, measured(OURS, "evaluations", "color"), "="),
        ), self.runner)

    def test_counts_what_the_gates_need(self):
        self.assertEqual(set(self.runner.counted), {OURS, FLOOR, PEER})

    def test_rows_are_what_is_recorded(self):
        self.assertEqual(self.rows[1], {
            "title": "missed as known", "relation": "<=", "limit": 300, "value": 500.0,
            "unit": "bytes", "verdict": "missed (fails above 600)"})

    def test_only_what_is_exceeded_fails(self):
        self.assertEqual(gates.failures(self.rows), 1)
        self.assertEqual(gates.known_misses(self.rows), 1)

    def test_table(self):
        table = gates.table(self.rows)
        self.assertEqual(table.head, ["gate", "limit", "measured", "verdict"])
        self.assertEqual(table.lines, [
            ["met", "<= 1.5", "1.500", "PASS"],
            ["missed as known", "<= 300 bytes", "500 bytes", "missed (fails above 600)"],
            ["exceeded", "<= 1.2", "1.500", "FAIL"],
            ["no peer", "<= 1", "-", "not installed"],
            ["exact", "= 3", "3", "PASS"],
        ])


class AllGates(unittest.TestCase):
    def test_titles_are_unique(self):
        titles = [gate.title for section in SECTIONS for gate in section.gates]
        self.assertGreater(len(titles), 0)
        self.assertEqual(len(titles), len(set(titles)))

    def test_known_miss_with_qt_6_alone(self):
        gate = Gate("title", 2, None, ceiling_with_qt6=5)
        self.assertEqual(gate.verdict(3, 5), FAIL)
        self.assertEqual(gate.verdict(3, 6), "missed (fails above 5)")
        self.assertEqual(gate.verdict(6, 6), FAIL)
        self.assertEqual(gate.verdict(2, 6), PASS)

    def test_known_miss_that_is_farther_with_qt_6(self):
        gate = Gate("title", 2, None, ceiling=3, ceiling_with_qt6=5)
        self.assertEqual(gate.verdict(4, 5), FAIL)
        self.assertEqual(gate.verdict(4, 6), "missed (fails above 5)")
        self.assertEqual(gate.verdict(6, 6), FAIL)

    def test_ceilings_lie_above_their_limits(self):
        for section in SECTIONS:
            for gate in section.gates:
                with self.subTest(gate.title):
                    for ceiling in gate.ceiling, gate.ceiling_with_qt6:
                        self.assertTrue(ceiling is None or ceiling > gate.limit)


if __name__ == "__main__":
    unittest.main()
