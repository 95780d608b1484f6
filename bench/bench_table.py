"""The table that scripts/bench and bench/e2e-generation print: one row a
figure, with its name and unit; large figures with thousands separators."""
import math


def print_table(rows):
    """rows: (name, figure, unit) tuples, printed in their order."""
    width = max(len(r[0]) for r in rows)
    print("%-*s  %16s  %s" % (width, "name", "figure", "unit"))
    print("%s  %s  %s" % ("-" * width, "-" * 16, "-" * 18))
    for name, value, unit in rows:
        text = "%.4g" % value if abs(value) < 1000 or math.isnan(value) else "{:,.0f}".format(value)
        print("%-*s  %16s  %s" % (width, name, text, unit))
