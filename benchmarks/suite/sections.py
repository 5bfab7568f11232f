"""The one list of what is measured. A further measurement is an entry here: a Comparison with its
rows, columns and gates, or a Section of its own where that is not enough."""

from suite.items import CONTENDERS, ONE, TAVOLINS, Evaluations, Items, items
from suite.loading import Loading
from suite.runner import Scenario, scenario
from suite.section import Comparison, Row
from suite.tables import MILLION, MS, NS, THOUSAND, amount, time_and_spread


def _reload(contender):
    return Row(contender, f"1,000 × {CONTENDERS[contender].label}",
               items(contender, measure="reload"), "reload")


def _call(name):
    return Row(name, name, scenario("calls", 100_000), name, counted=scenario("calls", 1000))


def _startup(name, label, text, import_path, uri, value):
    document = f"import QtQml 2.15\nimport {uri} 1.0\n" \
               f"QtObject {{{{ property int value: {value} }}}}"
    return Row(name, label, Scenario(("tavolins-bench-startup", text, import_path, document)),
               "startup")


SECTIONS = (
    Items(),
    Evaluations(),
    Loading(),
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
