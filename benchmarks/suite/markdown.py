"""Tables in Markdown: filled into a document between the words of people, or a document of their
own."""

import pathlib
import re

from suite.runner import Failure


def table(content) -> str:
    """A table, its first column to the left and all others to the right."""
    rule = ["---"] + ["---:"] * (len(content.head) - 1)
    return "\n".join("| " + " | ".join(line) + " |"
                     for line in [content.head, rule, *content.lines])


def _block(name, text):
    return f"<!-- figures: {name} -->\n{text}\n<!-- end -->"


def document(machine: str, tables: dict) -> str:
    """A whole document of tables, each under its title, that fill_in() can renew."""
    parts = ["# Performance", _block("machine", machine)]
    for name, content in tables.items():
        parts += [f"## {content.title}", _block(name, table(content))]
    return "\n\n".join(parts) + "\n"


def fill_in(path: pathlib.Path, machine: str, tables: dict, place="machine"):
    """Replaces the figures in a document, which stand between comments that name them; place is the
    name of that for the machine."""
    text = path.read_text(encoding="utf-8")
    blocks = {place: machine} | {name: table(content) for name, content in tables.items()}
    for name, block in blocks.items():
        replacement = _block(name, block)
        text, count = re.subn(rf"<!-- figures: {name} -->\n.*?<!-- end -->",
                              lambda _, block=replacement: block, text, flags=re.S)
        if count != 1:
            raise Failure(f"{path.name} has no place for the figures named {name}.")
    path.write_text(text, encoding="utf-8")
