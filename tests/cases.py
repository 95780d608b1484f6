"""Named cases for the end-to-end test scripts: each case runs at once when
it is defined, collects its failures instead of stopping at the first, and
`finish` prints them and exits 1 if any case failed.

    @case("what it shows")
    def some_case(check):
        check(condition, "what went wrong")
    finish()
"""
import sys

results = {}
current = None  # The name of the case that runs now (host_runs names its runs by it).


def case(name):
    def register(f):
        failures = []

        def check(cond, what):
            if not cond:
                failures.append(what)
        global current
        current = name
        try:
            f(check)
        except Exception as e:  # A broken run is a failure of the case, not of the script.
            failures.append("raised %r" % e)
        finally:
            current = None
        results[name] = failures
        return f
    return register


def finish():
    failed = sum(1 for f in results.values() if f)
    for name, failures in results.items():
        for f in failures:
            print("FAILED: %s: %s" % (name, f))
    print("%d passed, %d failed" % (len(results) - failed, failed))
    sys.exit(1 if failed else 0)
