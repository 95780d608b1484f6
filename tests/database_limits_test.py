"""The real tavrel-report under tavrel-host on what the database may hold at
its edges; each world is built here.

- Report periods before 1970: a fixed period with a negative `startTime`,
  and orders dated in the first day of 1970 for "yesterday" and "last
  week". Each such generation ends in the failure incident, its order goes,
  and the report after them in the pass is generated; the reporter ends
  with 0.
- A report in a domain chain as deep as the database allows, its instance
  at the deepest level: the replies about that tree are read, the report is
  generated and the reporter ends with 0.

usage: database_limits_test.py TAVREL_HOST TAVREL_REPORT
"""
import json
import os
import sys
import tempfile

from cases import case, finish
from dump import prop_value
from host_runs import run_host
from run_results import RunResults, clean

host, reporter = sys.argv[1], sys.argv[2]
ORDER = 1700000000
MAX_DEPTH = 256  # Levels below the root domain that the stand-in allows.


class Run(RunResults):
    """One host run on `world` until it has been idle for a second."""

    def __init__(self, world):
        with tempfile.TemporaryDirectory() as d:
            world_file = os.path.join(d, "world.json")
            with open(world_file, "w") as f:
                json.dump(world, f)
            log_file, dump_file = os.path.join(d, "host.log"), os.path.join(d, "dump.json")
            env = dict(os.environ, TMPDIR=d, TZ="UTC")
            done = run_host(
                [host, "run", "--world", world_file, "--reporter", reporter, "--until-idle", "1",
                 "--eval-scale", "0.01", "--log", log_file, "--dump", dump_file],
                120, env=env, log_file=log_file)
            self.code = done.returncode
            self.stderr = done.stderr
            self.read_results(d, log_file, dump_file)


def report(rid, order_time, **props):
    """A report ordered by hand once, over the domain Ops."""
    p = {"name": {"string": "R" + rid}, "treeLabel": {"string": "Label " + rid},
         "type": {"enum": [65566, 1]}, "order": {"uint": 0}, "date": {"enum": [65546, 0]},
         "period": {"enum": [65546, 1]}, "contains": {"object_set": ["0.1.20"]},
         "maxInstances": {"null": "uint"}}
    p.update(props)
    return {"class": "Report", "id": rid, "props": p,
            "children": [{"class": "ReportOrder", "props": {"orderTime": {"date": order_time}}}]}


def world(children, series=()):
    return {"config": {"log_mask": 4096},
            "objects": {"class": "Domain", "id": "0.1", "props": {"name": {"string": "Root"}},
                        "children": children},
            "series": list(series)}


# A domain with a node and a measured check, whose summary names the period
# as text: the way by which a period before 1970 reached the time texts.
OPS = {"class": "Domain", "id": "0.1.20", "props": {"name": {"string": "Ops"}},
       "children": [{"class": "Node", "id": "0.1.21",
                     "props": {"name": {"string": "alpha"},
                               "longLabel": {"string": "alpha.example"}},
                     "children": [{"class": "CheckGroup",
                                   "props": {"siblingName": {"string": "Services"}},
                                   "children": [{"class": "Check", "id": "0.1.22",
                                                 "props": {"siblingName": {"string": "HTTP"},
                                                           "longLabel": {"string": "HTTP"},
                                                           "active": {"bool": True}}}]}]}]}
OPS_SERIES = {"owner": "0.1.22", "property": "tsdbIndex", "data_type": 5,
              "records": [[ORDER - 3600, ORDER, 0.5, 1.0, 2.0, 12, 0]]}


def generated(run, check, rid, what):
    """The report has one finished instance, its order went, and its
    incidents tell of the start and the end."""
    found = run.children(rid, "ReportInstance")
    check(len(found) == 1 and prop_value(found[0], "workerNode") == 0
          and prop_value(found[0], "progress") == 100,
          "%s: instances %r" % (what, found))
    check(run.children(rid, "ReportOrder") == [], "%s: the order stays" % what)
    check(run.incidents(rid) == [(1, "Generation of report number 1 initiated."),
                                 (1, "Generation of report number 1 done.")],
          "%s: incidents %r" % (what, run.incidents(rid)))


@case("periods before 1970 fail their generation, the pass goes on, the process stays")
def before_1970_case(check):
    fixed = report("0.1.5", ORDER, period={"null": "enum"}, startTime={"date": -86400},
                   duration={"uint": 172800})
    yesterday = report("0.1.7", 3600)   # 1 January 1970 01:00: yesterday is in 1969
    last_week = report("0.1.9", 3600, period={"enum": [65546, 2]})
    good = report("0.1.11", ORDER)
    run = Run(world([OPS, fixed, yesterday, last_week, good], [OPS_SERIES]))
    check(run.code == 0, "exit code %d, stderr %r" % (run.code, run.stderr))
    check("Assertion failed" not in run.stderr, "stderr %r" % run.stderr)
    clean(run, check)
    for rid, start in (("0.1.5", -86400), ("0.1.7", -86400), ("0.1.9", -864000)):
        check(run.incidents(rid) == [
            (4, "Generation of report failed: Report period starts before 1970: %d" % start)],
            "%s: incidents %r" % (rid, run.incidents(rid)))
        check(run.children(rid, "ReportOrder") == [], "%s: the order stays" % rid)
        check(run.children(rid, "ReportInstance") == [], "%s: an instance was made" % rid)
    generated(run, check, "0.1.11", "the report after them")


@case("a report as deep as the database allows is generated")
def deep_case(check):
    # Domains d1 .. d256 in a chain; the report lies in d254, 255 levels
    # down, so that its order and its instance lie at the limit. The reply
    # about the instance nests its issueNode reference as deep as any reply
    # about stored objects can. The domains hold no node, so the analysis
    # writes nothing below the instance.
    chain = [{"class": "Domain", "props": {"name": {"string": "d%d" % level}}, "children": []}
             for level in range(1, MAX_DEPTH + 1)]
    for above, below in zip(chain, chain[1:]):
        above["children"].append(below)
    owner = chain[253]
    rid = "0.1.9000"
    owner["children"].append(report(rid, ORDER, contains={"object_set": [
        "/" + "/".join("d%d" % level for level in range(1, 255))]}))
    run = Run(world([chain[0]]))
    check(run.code == 0, "exit code %d, stderr %r" % (run.code, run.stderr))
    check("Caught" not in run.stderr and "Assertion failed" not in run.stderr,
          "stderr %r" % run.stderr)
    clean(run, check)
    generated(run, check, rid, "deep report")


finish()
