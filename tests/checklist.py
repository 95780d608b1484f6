"""The frame of the end-to-end test scripts: checks that collect their
failures, and the end that prints them with the count and sets the exit
code (1 on any failure)."""
import sys

failures = []


def check(cond, what):
    """Notes `what` as failed unless `cond` holds; goes on either way."""
    if not cond:
        failures.append(what)


def finish():
    for f in failures:
        print("FAILED:", f)
    print("%d passed, %d failed" % (1 if not failures else 0, 1 if failures else 0))
    sys.exit(1 if failures else 0)
