"""The one list of what is measured. A further measurement is an entry here: a Comparison with its
rows, columns and gates, or a Section of its own where that is not enough."""

from suite.controls import Controls
from suite.gates import Gate, instructions
from suite.items import CONTENDERS, ONE, TAVOLINS, Evaluations, Items, items
from suite.loading import CHECKER, CLEAN, FLOOR, Loading, load
from suite.runner import Scenario, scenario
from suite.section import Comparison, Row
from suite.tables import MILLION, MS, NS, THOUSAND, amount, time_and_spread


def _reload(contender):
    return Row(contender, f"1,000 × {CONTENDERS[contender].label}",
               items(contender, measure="reload"), "reload")


def _call(name):
    return Row(name, name, scenario("calls", 100_000), name, counted=scenario("calls", 1000))


CHECK = load(CHECKER, CLEAN)
CHECK_MANY = load(CHECKER, CLEAN, 10000)
PARSE = load(FLOOR, CLEAN)


def _over(key):
    """How many times the first row's."""
    def cell(row, first):
        value, floor = ((r["ns"]["median"] if key == "ns" else r[key]) for r in (row, first))
        return f"{value / floor:.2f}"
    return cell


def _startup(name, label, text, import_path, uri, value):
    document = f"import QtQml 2.15\nimport {uri} 1.0\n" \
               f"QtObject {{{{ property int value: {value} }}}}"
    return Row(name, label, Scenario(("tavolins-bench-startup", text, import_path, document)),
               "startup")


SECTIONS = (
    Items(),
    Evaluations(),
    Loading(),
    Controls(),
    Comparison(
        "checking", "Checking, per theme of 3 KB", "work",
        rows=(
            Row("json", "reading and parsing, 1,000 themes", PARSE, "load"),
            Row("checker", "checking, 1,000 themes", CHECK, "load"),
            Row("checker-many", "checking, 10,000 themes", CHECK_MANY, "load"),
        ),
        columns=(
            ("µs", lambda row, _: time_and_spread(row["ns"])),
            ("ratio", _over("ns")),
            ("k instr.", lambda row, _: amount(row["instructions"], THOUSAND, 1)),
            ("ratio", _over("instructions")),
        ),
        repetitions=(5, 3),
        gates=(
            Gate("check, themes of 3 KB / reading and parsing", 40.0,
                 instructions(CHECK, "load") / instructions(PARSE, "load")),
            Gate("check, a theme, 10,000 themes / 1,000", 1.1,
                 instructions(CHECK_MANY, "load") / instructions(CHECK, "load")),
        )),
    Comparison(
        "reload", "Reading the current theme anew, per item", "items",
        rows=(_reload(TAVOLINS), _reload(ONE)),
        columns=(
            ("reload µs", lambda row, _: time_and_spread(row["ns"])),
            ("k instr.", lambda row, _: amount(row["instructions"], THOUSAND, 1)),
        )),
    Comparison(
        "calls", "Calls with three class names, a path of depth three", "call",
        rows=(_call("hasClassname"), _call("getStyle"), _call("getClassValue")),
        columns=(
            ("ns", lambda row, _: time_and_spread(row["ns"], NS, 0)),
            ("instructions", lambda row, _: amount(row["instructions"], 1, 0)),
        )),
    Comparison(
        "startup", "Start-up, fresh processes", "import",
        repetitions=(15, 5),
        rows=(
            _startup("empty", "empty module", "text", "{programs}/qml", "EmptyModule", "0"),
            _startup("tavolins", "Tavolins and the first attached theme", "text", "{import_path}",
                     "{uri}", "Theme.radius"),
            _startup("tavolins-no-text",
                     "the same where nothing has asked for the default font before", "no-text",
                     "{import_path}", "{uri}", "Theme.radius"),
        ),
        columns=(
            ("ms", lambda row, _: time_and_spread(row["ns"], MS)),
            ("over the empty module",
             lambda row, empty: amount(row["ns"]["median"] - empty["ns"]["median"], MS, 2)),
            ("M instr.", lambda row, _: amount(row["instructions"], MILLION, 1)),
        )),
)
