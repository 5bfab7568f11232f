"""What scripts/bench runs: measurements, their limits, and what is made of them.

sections.py has the one list of what is measured; a further measurement is an entry there.
"""
