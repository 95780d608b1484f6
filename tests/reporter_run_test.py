"""The real tavrel-report under tavrel-host, black-box, on the world files in
tests/worlds: the schedule it lays, the cleaning up of what interrupted
generations left, the trimming to maxInstances, the orderly stop, a refused
subscription, and its metrics. Everything is read from the host's log (the
reporter's log and trace lines, and the host's own lines about schedules,
subscriptions and changes) and from the dump of the database.

usage: reporter_run_test.py TAVREL_HOST TAVREL_REPORT
"""
import json
import os
import re
import subprocess
import sys
import tempfile

from cases import case, finish
from run_results import RunResults, clean
from host_runs import run_host

host, reporter = sys.argv[1], sys.argv[2]
# A host run's deadline in seconds: a hang, not slowness (the ASan run takes
# a few seconds).
DEADLINE = 120
worlds = os.path.join(os.path.dirname(os.path.abspath(__file__)), "worlds")


class Run(RunResults):
    """One run of the host until it has been idle for a second."""

    def __init__(self, world, *extra):
        with tempfile.TemporaryDirectory() as d:
            log_file = os.path.join(d, "host.log")
            dump_file = os.path.join(d, "dump.json")
            env = dict(os.environ, TMPDIR=d, TZ="UTC")
            done = run_host(
                [host, "run", "--world", world, "--reporter", reporter, "--until-idle", "1",
                 "--eval-scale", "0.01", "--log", log_file, "--dump", dump_file] + list(extra),
                DEADLINE, env=env, log_file=log_file)
            self.code = done.returncode
            self.stderr = done.stderr
            self.read_results(d, log_file, dump_file)

    def children(self, report_id):
        return [c["id"] for c in self.objects()[report_id].get("children", [])]


def orderly(run, check):
    check(run.code == 0, "exit code %d, stderr %r" % (run.code, run.stderr))
    clean(run, check)


def next_daily(last, time_of_day):
    """The next run of a daily report after `last`, in UTC."""
    due = last - last % 86400 + time_of_day
    return due if last < due else due + 86400


def schedules(run):
    """(report id, last, next) for each treatment of a report."""
    out, current = [], None
    for line in run.lines:
        m = re.match(r"trace: Got a report, id=(\S+)$", line)
        if m:
            current = m.group(1)
        m = re.match(r"trace: Last: (\d+), next: (\d+)$", line)
        if m:
            out.append((current, int(m.group(1)), int(m.group(2))))
    return out


@case("a daily report is laid at its next due time, a report without schedule gets none")
def schedule_case(check):
    run = Run(os.path.join(worlds, "reporter_schedule.json"))
    orderly(run, check)
    seen = schedules(run)
    daily = [s for s in seen if s[0] == "0.1.5"]
    by_hand = [s for s in seen if s[0] == "0.1.8"]
    check(len(daily) >= 1 and len(by_hand) == len(daily), "treatments %r" % seen)
    for _, last, nxt in daily:
        check(nxt == next_daily(last, 36000), "daily: last %d, next %d" % (last, nxt))
    for _, _, nxt in by_hand:
        check(nxt == 0, "by hand: next %d" % nxt)
    laid = run.having("schedule: ")
    check(laid == ["schedule: SCHEDULED_REPORT_GENERATION to rept at %d" % s[2] for s in daily],
          "scheduled %r" % laid)
    # Two subscriptions, nothing written.
    check(len(run.having("subscribe: rept request ")) == 2, "subscriptions %r" % run.lines)
    check(run.having("update: ") + run.having("delete: ") + run.having("create: ") == [],
          "writes %r" % run.lines)


@case("leftovers go at start, progress is repaired, a steady state writes nothing; SYS_EXIT twice")
def cleanup_case(check):
    run = Run(os.path.join(worlds, "reporter_cleanup.json"), "--exit-twice")
    orderly(run, check)
    check("log: Fixing up progress (was: 50%) for issue 0.1.7" in run.lines, "no repair logged")
    check(run.having("delete: ") == ["delete: rept 0.1.6 status 0"], "deletes %r" % run.having("delete: "))
    check(run.having("update: ") == ["update: rept 0.1.7 status 0"], "updates %r" % run.having("update: "))
    check(run.children("0.1.5") == ["0.1.7", "0.1.9"], "instances %r" % run.children("0.1.5"))
    check(run.objects()["0.1.7"]["props"]["progress"] == {"uint": 100}, "progress of 0.1.7")
    # The stop: one shutdown for two SYS_EXIT, both subscriptions forgotten,
    # nothing treated after it.
    check(run.having("log: Reporter initiating shutdown") == ["log: Reporter initiating shutdown"],
          "shutdowns %r" % run.having("log: Reporter"))
    subscribed = [l.split()[3] for l in run.having("subscribe: rept request ")]
    forgotten = [l.split()[3] for l in run.having("forget: rept request ")]
    check(len(subscribed) == 2 and forgotten == subscribed, "subscribed %r, forgotten %r"
          % (subscribed, forgotten))
    check(all(l.endswith("status 0") for l in run.having("forget: ")), "forget statuses")
    stop = run.lines.index("log: Reporter initiating shutdown")
    check(not any(l.startswith("trace: Got") for l in run.lines[stop:]), "treated after the stop")

    with tempfile.TemporaryDirectory() as d:
        again = os.path.join(d, "again.json")
        with open(again, "w") as f:
            json.dump(run.dump, f)
        steady = Run(again)
    orderly(steady, check)
    check(steady.having("update: ") + steady.having("delete: ") + steady.having("create: ") == [],
          "steady state wrote %r" % steady.lines)
    check(not steady.having("log: Fixing up"), "steady state repaired")
    check(steady.dump["objects"] == run.dump["objects"], "steady state changed the objects")


@case("maxInstances trims the oldest after an order and after a due generation; null keeps all")
def surplus_case(check):
    run = Run(os.path.join(worlds, "reporter_surplus.json"))
    orderly(run, check)
    check(run.children("0.1.10") == ["0.1.11", "0.1.13"], "Keep2: %r" % run.children("0.1.10"))
    check(run.children("0.1.20") == ["0.1.21", "0.1.22", "0.1.23"],
          "KeepAll: %r" % run.children("0.1.20"))
    check(run.children("0.1.30") == ["0.1.32"], "Keep1: %r" % run.children("0.1.30"))
    deletes = [l.split()[2] for l in run.having("delete: ")]
    # Oldest first, then the served order; the due generation of Keep1 trims 0.1.31.
    check(deletes.index("0.1.12") < deletes.index("0.1.14") < deletes.index("0.1.15"),
          "Keep2 deletes %r" % deletes)
    check(sorted(deletes) == ["0.1.12", "0.1.14", "0.1.15", "0.1.24", "0.1.31"], "deletes %r" % deletes)
    due = next_daily(1700086400, 36000)
    check("schedule: SCHEDULED_REPORT_GENERATION to rept at %d" % due in run.lines,
          "Keep1 not laid at %d" % due)


@case("a refused report subscription ends the reporter with 1")
def refused_case(check):
    run = Run(os.path.join(worlds, "reporter_refused.json"))
    check(run.code == 1, "exit code %d" % run.code)
    check("Caught: Error in select (5, subscription refused by the world's faults)\n" in run.stderr,
          "stderr %r" % run.stderr)
    clean(run, check)


@case("metrics answer when ready and after SYS_EXIT")
def metrics_case(check):
    paths = ["queues/noblockings", "queues/blockings", "metering/time", "no/such", "queues", ""]
    args = []
    for p in paths:
        args += ["--metric", p]
    run = Run(os.path.join(worlds, "reporter_schedule.json"), *args)
    orderly(run, check)
    timing = r"n=(\d+) min=(\d+) max=(\d+) sum=(\d+) sum_squares=(\d+)$"
    for phase in ("ready", "stopping"):
        answers = {}
        for l in run.having("metric "):
            m = re.match(r"metric (.*) \((\w+)\): (.*)$", l)
            if m and m.group(2) == phase:
                answers[m.group(1)] = m.group(3)
        check(sorted(answers) == sorted(paths), "%s: answers %r" % (phase, answers))
        check(re.match(r"\d+$", answers.get("queues/noblockings", "")), "noblockings %r" % answers)
        check(re.match(timing, answers.get("queues/blockings", "")), "blockings %r" % answers)
        for unknown in ("no/such", "queues", ""):
            check(answers.get(unknown) == "error Unknown metric", "%r: %r" % (unknown, answers))
        m = re.match(timing, answers.get("metering/time", ""))
        # Each GET_METRIC answered before this one counts, found or not.
        expected = 2 if phase == "ready" else 8
        check(m and int(m.group(1)) == expected, "%s: metering/time %r" % (phase, answers))
    stop = run.lines.index("log: Reporter initiating shutdown")
    check(any(l.startswith("metric ") and "(stopping)" in l for l in run.lines[stop:]),
          "no answer after the stop")


finish()
