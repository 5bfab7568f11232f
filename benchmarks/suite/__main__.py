"""Runs the suite: python3 -m suite, as scripts/bench does."""

import sys

from suite.commandline import main

if __name__ == "__main__":
    sys.exit(main())
