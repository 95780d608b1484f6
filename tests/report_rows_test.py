"""The rows of generated reports, black-box: tavrel-report under tavrel-host on
tests/worlds/report_rows.json, with one report added per case. Every result
object of the stored instance (from the host's dump) is compared with what
the test works out by hand from the world's samples:

- an availability report (kind 1) over web1, one check of each data type;
- an availability report from the start of monitoring over db1, whose
  checks began one and three hours before the order (time weighting);
- a configuration report (kind 5), with alert groups inherited from the
  node and from a domain;
- an incident report (kind 2) whose node log is filtered by the flags;
- the hide settings.

usage: report_rows_test.py TAVREL_HOST TAVREL_REPORT
"""
import copy
import json
import os
import subprocess
import sys
import tempfile

from cases import case, finish
from dump import objects_by_id, value
from host_runs import run_host

host, reporter = sys.argv[1], sys.argv[2]
# A host run's deadline in seconds: a hang, not slowness (the ASan run takes
# a few seconds).
DEADLINE = 120
here = os.path.dirname(os.path.abspath(__file__))
base_world = json.load(open(os.path.join(here, "worlds", "report_rows.json")))

T0 = 1700006400  # 2023-11-15 00:00:00 UTC, the start of the fixed period
HOURS4 = 14400
W = T0 + 20000  # the order time of every report: 2023-11-15 05:33:20
PERIOD = "2023-11-15 00:00:00 to 2023-11-15 04:00:00"


def report(kind, **props):
    """A Report on `contains` with an order at W; a fixed 4-hour period from T0
    unless `period` is given."""
    p = {"name": {"string": "R"}, "type": {"enum": [65566, kind]},
         "period": {"null": "enum"}, "startTime": {"date": T0}, "duration": {"uint": HOURS4},
         "contains": {"object_set": ["0.1.3"]}, "date": {"enum": [65546, 0]},
         "time": {"date": 36000}, "frequency": {"uint": 0}, "order": {"uint": 0},
         "maxInstances": {"null": "uint"}}
    p.update(props)
    return {"class": "Report", "id": "0.1.90", "props": p,
            "children": [{"class": "ReportOrder", "id": "0.1.91", "props": {"orderTime": {"date": W}}}]}


class Run:
    """One run of the host with the world and `rep` added, until idle."""

    def __init__(self, rep):
        world = copy.deepcopy(base_world)
        world["objects"]["children"].append(rep)
        with tempfile.TemporaryDirectory() as d:
            world_file = os.path.join(d, "world.json")
            with open(world_file, "w") as f:
                json.dump(world, f)
            dump_file = os.path.join(d, "dump.json")
            env = dict(os.environ, TMPDIR=d, TZ="UTC")
            log_file = os.path.join(d, "host.log")
            done = run_host(
                [host, "run", "--world", world_file, "--reporter", reporter, "--until-idle", "1",
                 "--eval-scale", "0.01", "--log", log_file, "--dump", dump_file],
                DEADLINE, env=env, log_file=log_file)
            self.code, self.stderr = done.returncode, done.stderr
            self.dump = json.load(open(dump_file))
            self.left = [n for n in os.listdir(d) if n.startswith("tavrel-host")]
        self.by_id = objects_by_id(self.dump)
        self.series = {(s["owner"], s["property"]): s for s in self.dump.get("series", [])}

    def instance(self):
        instances = [c for c in self.by_id["0.1.90"].get("children", [])
                     if c["class"] == "ReportInstance"]
        return instances[0] if len(instances) == 1 else None

    def name_of(self, oid):
        props = self.by_id[oid]["props"]
        return value(props.get("name", props.get("longLabel", {"string": "?"})))

    def lines(self):
        """The instance's result objects in display order (`order`), each as
        "CLASS name = text -> origin", the origin by its name, with the
        folder type for folders and the records of logs as (sev, msg)."""
        items = []

        def walk(o, parent):
            props = o.get("props", {})
            if "order" in props:
                items.append((value(props["order"]), o, parent))
            for c in o.get("children", []):
                walk(c, o)
        for c in self.instance().get("children", []):
            walk(c, None)
        out = []
        for _, o, parent in sorted(items, key=lambda t: t[0]):
            props = o["props"]
            cls = o["class"].replace("ReportResult", "")
            line = cls + " " + value(props["name"])
            if cls == "Folder":
                line = "Folder%d %s" % (value(props["folderType"])[1], value(props["name"]))
            if "text" in props:
                line += " = " + value(props["text"])
            if "originNode" in props:
                line += " -> " + self.name_of(value(props["originNode"]))
            if parent is not None and parent["class"] == "ReportResultFolder":
                line = "[" + value(parent["props"]["name"]) + "] " + line
            if cls == "Log":
                records = self.series.get((o["id"], "tsdbIncident"), {"records": []})["records"]
                line += " " + repr([(r[0], r[1]) for r in records])
            out.append(line)
        return out


def orderly(run, check):
    check(run.code == 0, "exit code %d, stderr %r" % (run.code, run.stderr))
    check(run.left == [], "left behind: %r" % run.left)
    check(run.instance() is not None, "no single instance")


def compare(check, got, expected):
    for i, (g, e) in enumerate(zip(got, expected)):
        check(g == e, "line %d: got %r, expected %r" % (i, g, e))
    check(len(got) == len(expected), "%d lines, expected %d; extra: %r" %
          (len(got), len(expected), got[len(expected):] or expected[len(got):]))


def pct(part, total):
    return "%.3f %%" % (part * 100.0 / total)


def summary(folder, ok, warn, alert, bad, unknown, total):
    """The four rows of a check from its sums (seconds)."""
    return ["[%s] Row Availability = %s -> Availability explanation" % (folder, pct(unknown + ok + warn, total)),
            "[%s] Row Downtime = %s -> Availability explanation" % (folder, pct(bad + alert, total)),
            "[%s] Row Confirmed uptime = %s -> Availability explanation" % (folder, pct(warn + ok, total)),
            "[%s] Row Unconfirmed uptime = %s -> Availability explanation" % (folder, pct(unknown, total))]


EXPLAINED = [
    ("Availability", "This field is the the sum of the fields 'Confirmed uptime' and 'Unconfirmed uptime'. "
     "The availability added to the downtime should result in 100.00 %."),
    ("Downtime", "This field indicates the percentage of the time that Tavrel has performed a check, but "
     "failed to get a reply. Or that the reply was outside the alarm thresholds. Ie. this is the  periods "
     "in which a red icon has appeared for this check."),
    ("Confirmed uptime", "This field indicates the percentage of the time that Tavrel has performed a check, "
     "and the reply was within the alarm thresholds. Ie. this is the periods in which a green or  yellow "
     "icon has appeared for a check."),
    ("Unconfirmed uptime", "This field indicates the percentage of the time that Tavrel has no data for the "
     "check. This may be caused by the Tavrel  Server or agent being down for a period, or that the check  "
     "was simply not configured at that time."),
]


def explanation():
    ex = "Availability explanation"
    out = ["Folder0 %s -> Root" % ex,
           "[%s] Row  = This section describes how the availability fields should be understood" % ex]
    for heading, text in EXPLAINED:
        out += ["[%s] Folder4 %s" % (ex, heading), "[%s] Row  = %s" % (heading, text)]
    out += ["[%s] Row  =  " % ex,
            "[%s] Row  = The availability percentage for a single check, visible at the very top of the "
            "section describing a check, is simply the sum of \"Confimed uptime\" and \"Unconfirmed "
            "uptime\".  In adding these numbers Tavrel makes the optimistic assumtion, that even though "
            "the Tavrel server is down for a period of time, everything else keeps running." % ex,
            "[%s] Row  = The total availability of a node is calculated as the average of the "
            "availabilities of those of its checks, which are included in the report.  The total "
            "availability of a domain is likewise calculated as the average of the availabilities of "
            "every node in the domain (including subdomains), which are included in the report." % ex]
    return out


def check_rows(name, ok=0, warn=0, alert=0, bad=0, unknown=0, total=HOURS4,
               period="Statistics during period " + PERIOD):
    return (["[web1.example.com] Folder3 %s -> %s" % (name, name), "[%s] Row  = %s" % (name, period)]
            + summary(name, ok, warn, alert, bad, unknown, total)
            + ["[%s] Graph Statistics" % name])


# The sums of web1's checks over 00:00 to 04:00, from the samples in the world
# (frequency 60 s, so gaps of up to 120 s join the next sample):
# a-cont: 1 h at 10 (ok), 1 h at 85 (over warnIfAbove 80), 1 h at 95 (over
#   alertIfAbove 90), 1 h at 10 with 1 good and 1 failed measurement:
#   (1 x 3600 + 1) / 2 = 1800 bad, 1800 ok.
CONT = dict(ok=3600 + 1800, warn=3600, alert=3600, bad=1800)
# b-uptime: 2 h good; a 1 h gap (over 120 s: unknown); 1 h only failed (bad).
UPTIME = dict(ok=7200, unknown=3600, bad=3600)
# c-enum: 2 h of state 0 (Ok); 2 h of states 0, 1, 2: 2400 s each to Ok,
#   Alert (stateAction1 2) and unknown (no stateAction2).
ENUM = dict(ok=7200 + 2400, alert=2400, unknown=2400)
# d-accum: 4 h, 3 good and 1 failed, max 5: all ok, no proportional share.
ACCUM = dict(ok=HOURS4)


def node_total(*checks):
    keys = ("ok", "warn", "alert", "bad", "unknown")
    return {k: sum(c.get(k, 0) for c in checks) for k in keys}


@case("availability report: every row of a check of each data type, node, domains, logs")
def availability_case(check):
    run = Run(report(1))
    orderly(run, check)
    node = node_total(CONT, UPTIME, ENUM, ACCUM)
    node_avail = pct(node["unknown"] + node["ok"] + node["warn"], 4 * HOURS4)
    check(node_avail == "80.208 %", "node availability worked out as %s" % node_avail)
    worst_node = "Row Worst node availability is web1.example.com = %s -> web1.example.com" % node_avail
    expected = (["Folder2 Root -> Root"] + explanation()
                + ["[Root] Folder2 Servers -> Servers", "[Servers] Folder1 web1.example.com -> web1"]
                + check_rows("a-cont", **CONT) + check_rows("b-uptime", **UPTIME)
                + check_rows("c-enum", **ENUM) + check_rows("d-accum", **ACCUM)
                + ["[web1.example.com] Folder3 e-log -> e-log",
                   "[e-log] Log Stored log from %s [(1, 'log started'), (4, 'disk full')]" % PERIOD,
                   "[web1.example.com] Row Availability = %s -> Availability explanation" % node_avail,
                   "[web1.example.com] Row Worst check availability is a-cont = 62.500 % -> a-cont",
                   # The default flags keep alerts and configuration changes.
                   "[web1.example.com] Log Incidents on the host from %s "
                   "[(4, 'web1 is down'), (1, 'admin tried to change web1')]" % PERIOD,
                   "[Servers] Row Availability = %s -> Availability explanation" % node_avail,
                   "[Servers] " + worst_node,
                   "[Root] Row Availability = %s -> Availability explanation" % node_avail,
                   "[Root] " + worst_node])
    compare(check, run.lines(), expected)


@case("availability from the start of monitoring is weighted by time: 50 % over 1 h, 100 % over 3 h")
def weighted_case(check):
    run = Run(report(1, period={"enum": [65546, 5]}, contains={"object_set": ["0.1.4"]},
                     formGraph={"bool": False}, alertScore={"bool": False},
                     includeConfig={"bool": False}))
    orderly(run, check)
    since = "Statistics from start of monitoring to 2023-11-15 05:33:20"
    # a-half: 30 min ok, 30 min at 95 (alert); b-full: 3 h ok.
    half = dict(ok=1800, alert=1800, total=3600)
    full = dict(ok=10800, total=10800)
    node = pct(1800 + 10800, 3600 + 10800)
    check(node == "87.500 %", "worked out %s" % node)
    rows = lambda name, sums: (["[db1.example.com] Folder3 %s -> %s" % (name, name),
                                "[%s] Row  = %s" % (name, since)] + summary(name, **dict(
                                    dict(ok=0, warn=0, alert=0, bad=0, unknown=0), **sums)))
    worst_node = "Row Worst node availability is db1.example.com = %s -> db1.example.com" % node
    expected = (["Folder2 Root -> Root"] + explanation()
                + ["[Root] Folder2 Servers -> Servers", "[Servers] Folder1 db1.example.com -> db1"]
                + rows("a-half", half) + rows("b-full", full)
                + ["[db1.example.com] Row Availability = %s -> Availability explanation" % node,
                   "[db1.example.com] Row Worst check availability is a-half = 50.000 % -> a-half",
                   "[db1.example.com] Log Incidents on the host from start of monitoring to "
                   "2023-11-15 05:33:20 []",
                   "[Servers] Row Availability = %s -> Availability explanation" % node,
                   "[Servers] " + worst_node,
                   "[Root] Row Availability = %s -> Availability explanation" % node,
                   "[Root] " + worst_node])
    compare(check, run.lines(), expected)


@case("configuration report: settings, alert groups inherited from the node and a domain")
def configuration_case(check):
    run = Run(report(5))
    orderly(run, check)

    def plain(name):
        return ["[web1.example.com] Folder3 %s -> %s" % (name, name),
                "[%s] Row Check interval = 60" % name, "[%s] Row Alert group = none" % name,
                "[%s] Row Alert strategy = Immediate" % name, "[%s] Row Forecast enabled = false" % name]
    expected = (["Folder2 Root -> Root", "[Root] Row Name = Root",
                 "[Root] Folder2 Servers -> Servers", "[Servers] Row Name = Servers",
                 "[Servers] Row Info URL = http://wiki/servers",
                 "[Servers] Folder1 web1.example.com -> web1",
                 "[web1.example.com] Folder3 a-cont -> a-cont",
                 "[a-cont] Row Label = front page", "[a-cont] Row Info URL = http://wiki/front",
                 "[a-cont] Row Check interval = 60",
                 # a-cont: 0.2, the node: 0.3, Servers: Ops.
                 "[a-cont] Row Alert group = as node -> as domain -> Ops",
                 "[a-cont] Row   = pager duty",
                 "[a-cont] Row Alert strategy = Immediate", "[a-cont] Row Forecast enabled = false",
                 "[a-cont] Row Alert when above = 90.000000", "[a-cont] Row Warn when above = 80.000000",
                 "[a-cont] Folder4 Check parameter", "[Check parameter] Row Port = 80",
                 "[Check parameter] Row URL to check = http://web1/",
                 "[a-cont] Folder4 LogCheck rules"]
                + plain("b-uptime") + ["[b-uptime] Folder4 LogCheck rules"]
                + plain("c-enum") + ["[c-enum] Folder4 State actions", "[State actions] Row running = Ok",
                                     "[State actions] Row stopped = Alert",
                                     "[c-enum] Folder4 LogCheck rules"]
                + plain("d-accum") + ["[d-accum] Row Alert when above = 90.000000",
                                      "[d-accum] Folder4 LogCheck rules"]
                + plain("e-log") + ["[e-log] Folder4 LogCheck rules",
                                    "[web1.example.com] Row Label = front web server",
                                    "[web1.example.com] Row Checkin interval = 300",
                                    "[web1.example.com] Row Alert group = as domain -> Ops",
                                    "[web1.example.com] Row   = pager duty",
                                    "[web1.example.com] Row Alert strategy = ScoreKeeper",
                                    "[web1.example.com] Row Checkin score = 2",
                                    "[web1.example.com] Row Alert ceiling = 40"])
    compare(check, run.lines(), expected)
    check(not any(s[1] == "tsdbIndex" and s[0] not in ("0.1.10", "0.1.11", "0.1.12", "0.1.13", "0.1.14",
                                                        "0.1.20", "0.1.21") for s in run.series),
          "a configuration report stored series")


@case("incident report: the node's log keeps what the four flags ask for, and no check data")
def incident_case(check):
    run = Run(report(2, goodScore={"bool": True}, warnScore={"bool": True},
                     alertScore={"bool": False}, includeConfig={"bool": False}))
    orderly(run, check)
    # Kept: severity 2, and severity 1 that is no configuration change (", access"
    # before " tried"). Dropped: severity 4 (alertScore off), the change (includeConfig
    # off), severity 3, and the incident after the period.
    compare(check, run.lines(), [
        "Folder2 Root -> Root", "[Root] Folder2 Servers -> Servers",
        "[Servers] Folder1 web1.example.com -> web1",
        "[web1.example.com] Log Incidents on the host from %s [(2, 'web1 slow'), (1, 'web1 is up'), "
        "(1, 'web1, access denied when admin tried')]" % PERIOD])


@case("hide settings: checks at level 3 with availability at least 75 % go, NaN stays")
def hide_case(check):
    run = Run(report(1, hideSectionLevel={"uint": 3}, hideSectionThreshold={"real": 75.0},
                     formSummary={"bool": False}))
    orderly(run, check)
    # b-uptime (75 % exactly), c-enum (83.333 %) and d-accum (100 %) go;
    # a-cont (62.5 %) stays, and so does e-log, which has no availability.
    compare(check, run.lines(), [
        "Folder2 Root -> Root", "[Root] Folder2 Servers -> Servers",
        "[Servers] Folder1 web1.example.com -> web1",
        "[web1.example.com] Folder3 a-cont -> a-cont", "[a-cont] Graph Statistics",
        "[web1.example.com] Folder3 e-log -> e-log",
        "[e-log] Log Stored log from %s [(1, 'log started'), (4, 'disk full')]" % PERIOD,
        "[web1.example.com] Log Incidents on the host from %s "
        "[(4, 'web1 is down'), (1, 'admin tried to change web1')]" % PERIOD])


@case("hide settings: a domain whose worst node is at least the threshold goes with all below it")
def hide_domain_case(check):
    run = Run(report(1, hideSectionLevel={"uint": 1}, hideSectionThreshold={"real": 80.0},
                     formSummary={"bool": False}, formGraph={"bool": False}))
    orderly(run, check)
    # Servers (depth 1) has worst 80.208 % (its one node); the root (depth 0) stays.
    compare(check, run.lines(), ["Folder2 Root -> Root"])


finish()
