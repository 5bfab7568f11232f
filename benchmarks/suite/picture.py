"""The picture in docs/performance.md: what an item costs each contender. matplotlib is loaded when
a picture is drawn and not before, as nothing else needs it."""

from suite.items import CONTENDERS, rows_by_contender
from suite.report import machine_line
from suite.runner import Failure

INK, FAINT_INK = "#26262e", "#6a6a74"
CONSTANTS, OTHER, FLOOR, OWN = "#dcdce2", "#93a3ba", "#4d5d6e", "#1060c0"
PANELS = {"create": "k instructions", "switch": "k instructions", "destroy": "k instructions",
          "heap": "bytes"}
#: A bar so many times as long as the next is cut off, for the others to be told apart.
FAR = 2


def load_library():
    """matplotlib, told to draw without a display. Raises Failure where it is missing."""
    try:
        import matplotlib
    except ImportError as error:
        raise Failure("The picture needs matplotlib (Debian's package python3-matplotlib)."
                      ) from error
    matplotlib.use("svg")
    matplotlib.rcParams.update({
        # Text stays text, and names do not change from run to run: a difference between two
        # pictures is a difference between figures.
        "svg.fonttype": "none",
        "svg.hashsalt": "tavolins",
        "font.family": "sans-serif",
        "font.sans-serif": ["DejaVu Sans", "Helvetica", "Arial"],
        "font.size": 9,
        "text.color": INK,
    })
    return matplotlib


def _color(contender):
    return OWN if contender.startswith("tavolins") else FLOOR if contender == "floor" else OTHER


def _amount(row, panel):
    if panel == "heap":
        return row["heap"]["median"]
    return row["instructions"].get(panel, 0) / 1000


def _panel(axes, panel, shown, rows):
    amounts = {name: _amount(row, panel) for name, row in shown.items()}
    longest, next_longest = sorted(amounts.values(), reverse=True)[:2]
    is_cut = longest > FAR * next_longest
    # What room is left to the right is for the numbers.
    end = next_longest * 1.12 if is_cut else longest
    axes.set_xlim(0, end * 1.38)
    for line, (name, amount) in enumerate(amounts.items()):
        constants = min(_amount(rows[CONTENDERS[name].baseline], panel), amount)
        length = min(amount, end)
        axes.barh(line, constants, 0.68, color=CONSTANTS)
        axes.barh(line, length - constants, 0.68, left=constants, color=_color(name))
        if amount > length:
            _cut(axes, line, length)
        form = f"{amount:,.0f}" if panel == "heap" or amount >= 100 else f"{amount:.1f}"
        axes.text(length + end * 0.03, line, form, va="center", ha="left",
                  weight="bold" if _color(name) == OWN else "normal")
    heading = axes.text(0, -0.9, panel, weight="bold", va="bottom")
    axes.annotate(PANELS[panel], (1, 0), (5, 0), xycoords=heading, textcoords="offset points",
                  va="bottom", color=FAINT_INK, size=8)
    axes.set_ylim(len(amounts) - 0.4, -1.1)
    axes.set_axis_off()


def _cut(axes, line, length):
    """White strokes through the end of a bar that is longer than what is shown of it."""
    step = length * 0.02
    for offset in (2.2, 4.4):
        left = length - offset * step
        axes.plot([left - step / 2, left + step / 2], [line + 0.42, line - 0.42], color="white",
                  linewidth=2, solid_capstyle="butt")


def _legend(figure, height, machine):
    from matplotlib.patches import Patch

    parts = {"the same item with constants": CONSTANTS, "others": OTHER,
             CONTENDERS["floor"].label: FLOOR, "Tavolins": OWN}
    figure.legend(handles=[Patch(color=color, label=label) for label, color in parts.items()],
                  loc="lower left", ncol=len(parts), frameon=False, fontsize=8, handlelength=1,
                  handleheight=1, handletextpad=0.5, columnspacing=1.6, borderaxespad=0.4)
    figure.text(0.992, 0.14 / height, machine, va="center", ha="right", size=8, color=FAINT_INK)


def draw(report: dict, path):
    """Draws bars for each contender that is installed; the plain item's part is set off."""
    load_library()
    from matplotlib.figure import Figure

    rows = rows_by_contender(report["items"])
    shown = {name: row for name, row in rows.items()
             if CONTENDERS[name].baseline and "unavailable" not in row}
    # In inches, so that title and legend stay where they are however many lines there are.
    width, height = 10.4, 0.24 * len(shown) + 1.35
    figure = Figure(figsize=(width, height), facecolor="white")
    figure.text(0.012, 1 - 0.23 / height, "What an item with four bindings costs, 1,000 items",
                size=12, weight="bold", va="center")
    panels = figure.subplots(1, len(PANELS), sharey=True)
    figure.subplots_adjust(left=0.215, right=0.995, top=1 - 0.55 / height,
                           bottom=0.46 / height, wspace=0.06)
    for axes, panel in zip(panels, PANELS):
        _panel(axes, panel, shown, rows)
    for line, name in enumerate(shown):
        panels[0].text(-0.02, line, CONTENDERS[name].label, va="center", ha="right",
                       weight="bold" if _color(name) == OWN else "normal",
                       transform=panels[0].get_yaxis_transform())
    _legend(figure, height, machine_line(report))
    figure.savefig(path, format="svg", metadata={"Date": None})
