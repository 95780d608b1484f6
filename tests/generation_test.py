"""Report generation end to end: tavrel-host runs the generation child (which
calls generate_report) over the world in worlds/generation.json plus the
reports of each case, and the dumped database is checked: the instance, its
folders in display order, the report's incident series, the selection of
checks, plans, hiding, and the failure paths (with the world's `faults`).

The last case runs the real reporter, whose subscription carries out a
ReportOrder with the same driver.

usage: generation_test.py TAVREL_HOST GENERATION_CHILD TAVREL_REPORT TESTS_DIR
"""
import copy
import json
import os
import subprocess
import sys
import tempfile

from dump import prop_value
from host_runs import run_host

host, generation_child, reporter, tests_dir = sys.argv[1:5]
# A host run's deadline in seconds: a hang, not slowness (the ASan run takes
# a few seconds).
DEADLINE = 120
BASE = json.load(open(os.path.join(tests_dir, "worlds", "generation.json")))
D0 = 1699830000          # 2023-11-13 00:00 in Copenhagen
ORDER = 1699920000       # 2023-11-14 01:00 in Copenhagen: "yesterday" is 2023-11-13
failures = []
cases = 0


def check(cond, what):
    if not cond:
        failures.append(what)


def report(rid, contains=None, kind=1, period=1, children=(), **props):
    p = {"name": {"string": "R" + rid}, "treeLabel": {"string": "Label " + rid},
         "type": {"enum": [65566, kind]}, "order": {"uint": 0}}
    if period is not None:
        p["period"] = {"enum": [65546, period]}
    if contains is not None:
        p["contains"] = {"object_set": contains} if contains != "null" else {"null": "object_set"}
    p.update(props)
    return {"class": "Report", "id": rid, "props": p, "children": list(children)}


def selection(contains, classes=(), paths=()):
    p = {"contains": {"object_set": contains}}
    if classes:
        p["nodeClasses"] = {"object_set": list(classes)}
    return {"class": "ReportSelection", "props": p,
            "children": [{"class": "ReportCheckSelection",
                          "props": {"contains": {"string_list": path}}} for path in paths]}


def run(reports, generate, faults=None, ops_reports=(), child=generation_child):
    """Runs the host with the reports added; returns (dump, log text, results by report id)."""
    world = copy.deepcopy(BASE)
    world["objects"]["children"].extend(reports)
    ops = next(c for c in world["objects"]["children"] if c.get("id") == "0.1.2")
    ops["children"].extend(ops_reports)
    if faults:
        world["faults"] = faults
    with tempfile.TemporaryDirectory() as d:
        world_file = os.path.join(d, "world.json")
        with open(world_file, "w") as f:
            json.dump(world, f)
        log_file, dump_file = os.path.join(d, "host.log"), os.path.join(d, "dump.json")
        env = dict(os.environ, TMPDIR=d, TZ="Europe/Copenhagen", TAVREL_TEST_GENERATE=generate)
        done = run_host([host, "run", "--world", world_file, "--reporter", child,
                         "--until-idle", "1", "--log", log_file, "--dump", dump_file],
                        DEADLINE, env=env, log_file=log_file)
        check(done.returncode == 0, "host exit %d: %s" % (done.returncode, done.stderr))
        log = open(log_file).read() if os.path.exists(log_file) else ""
        dump = json.load(open(dump_file)) if os.path.exists(dump_file) else {"objects": {}, "series": []}
    results = {}
    for line in log.splitlines():
        if " log: generated " in line:
            rid, _, result = line.split(" log: generated ", 1)[1].partition(": ")
            results[rid] = result
    return dump, log, results


def find(obj, oid):
    if obj.get("id") == oid:
        return obj
    for c in obj.get("children", []):
        r = find(c, oid)
        if r:
            return r
    return None


def instances(dump, rid):
    r = find(dump["objects"], rid)
    return [c for c in (r or {}).get("children", []) if c["class"] == "ReportInstance"]


def descendants(obj, cls):
    out = []
    for c in obj.get("children", []):
        if c["class"] == cls:
            out.append(c)
        out.extend(descendants(c, cls))
    return out


def folder_names(instance, folder_type=None):
    """Names of the domain, node and check folders below the instance in
    display order (`order`); the explanation section and sub-sections, which
    the summary rows add, are left out."""
    folders = sorted(descendants(instance, "ReportResultFolder"), key=lambda f: prop_value(f, "order"))
    return [prop_value(f, "name") for f in folders
            if prop_value(f, "folderType")[1] in (1, 2, 3)
            and (folder_type is None or prop_value(f, "folderType")[1] == folder_type)]


def series(dump, owner, prop):
    for s in dump["series"]:
        if s["owner"] == owner and s["property"] == prop:
            return s
    return None


def incidents(dump, rid):
    s = series(dump, rid, "tsdbIncident")
    return [(r[0], r[1]) for r in s["records"]] if s else []


def the_instance(dump, rid, what):
    found = instances(dump, rid)
    check(len(found) == 1, "%s: %d instances" % (what, len(found)))
    return found[0] if found else {"children": []}


# --- Availability report over a domain, old style; stale order; no content;
# --- old-style check choice; selections; node classes; overview; period 5.
cases += 1
ops_report = report("0.1.60", ["0.1.30", "0.1.40"])
dump, log, results = run(
    [report("0.1.10", ["0.1.2"]),
     report("0.1.11", ["0.1.2"]),
     report("0.1.12", "null"),
     report("0.1.13", ["0.1.21"]),
     report("0.1.14", ["0.1.20", "0.1.203"]),
     report("0.1.16", children=[selection(["0.1.2"], paths=[["Services", "HTTP"], ["Ping", "RTT"],
                                                            ["Services", "HTTP", "Load"]])]),
     report("0.1.17", children=[selection(["0.1.2"], classes=["0.1.52"]),
                                selection(["0.1.21"], classes=["0.1.50"])]),
     report("0.1.18", kind=4, children=[selection(["0.1.2"])]),
     report("0.1.19", ["0.1.21"], period=5)],
    " ".join(["0.1.10@%d" % ORDER, "0.1.11@%d@stale" % ORDER, "0.1.12@%d" % ORDER]
             + ["%s@%d" % (r, ORDER) for r in ("0.1.13", "0.1.14", "0.1.16", "0.1.17", "0.1.18",
                                               "0.1.19", "0.1.60")]),
    ops_reports=[ops_report])

# The finished instance of an old-style availability report.
inst = the_instance(dump, "0.1.10", "old style")
check(results.get("0.1.10") == inst.get("id"), "result %r" % results.get("0.1.10"))
check(folder_names(inst) == ["Root", "Ops", "alpha.example", "Disk on alpha", "HTTP on alpha",
                             "mid.example", "Syslog on mid", "zeta.example", "Load on zeta",
                             "HTTP on zeta", "Sub", "beta.example", "HTTP on beta"],
      "folders in order: %r" % folder_names(inst))
zeta = next(f for f in descendants(inst, "ReportResultFolder") if prop_value(f, "name") == "zeta.example")
check([prop_value(c, "name") for c in zeta["children"] if c["class"] == "ReportResultFolder"]
      == ["Load on zeta", "HTTP on zeta"],
      "check folders lie directly under the node's folder")
check(prop_value(zeta, "originNode") == "0.1.20", "a node folder refers to its node")
check([prop_value(inst, k) for k in ("workerNode", "progress", "public", "order", "startTime",
                                "duration", "orderTime", "issueNode", "name")]
      == [0, 100, True, 1, D0, 86400, ORDER, "0.1", "R0.1.10"],
      "instance properties %r" % inst.get("props"))
rep = find(dump["objects"], "0.1.10")
check(prop_value(rep, "order") == 1 and prop_value(rep, "progress") == 0, "report order and progress")
check(prop_value(rep, "lastGenerated") == prop_value(inst, "generated"), "lastGenerated is generated")
check(incidents(dump, "0.1.10") == [(1, "Generation of report number 1 initiated."),
                                    (1, "Generation of report number 1 done.")],
      "incidents %r" % incidents(dump, "0.1.10"))
graphs = descendants(inst, "ReportResultGraph")
check(len(graphs) == 5 and all(series(dump, g["id"], "tsdbIndex") for g in graphs),
      "each graph has its chart series")
syslog = next(f for f in descendants(inst, "ReportResultFolder") if prop_value(f, "name") == "Syslog on mid")
logs = descendants(syslog, "ReportResultLog")
check(len(logs) == 1 and [r[1] for r in series(dump, logs[0]["id"], "tsdbIncident")["records"]]
      == ["disk full", "disk ok"], "a log check's log holds its lines")
check("log: Starting generation of report .: Label 0.1.10" in log, "start line with path '.'")
check("log: Done generating report .: Label 0.1.10" in log, "done line")

# A stale version creates nothing and writes no incident.
check(instances(dump, "0.1.11") == [] and incidents(dump, "0.1.11") == [], "stale order")
check(prop_value(find(dump["objects"], "0.1.11"), "order") == 0 and results.get("0.1.11") == "",
      "stale order leaves the report")

# No selection and a null contains: aborted, the instance left unfinished.
inst = the_instance(dump, "0.1.12", "aborted")
check(prop_value(inst, "workerNode") == 1 and folder_names(inst) == [], "aborted instance")
check(incidents(dump, "0.1.12") == [(1, "Generation of report number 1 initiated."),
                                    (4, "Generation of report number 1 aborted. "
                                        "Unable to find template content.")],
      "aborted incidents %r" % incidents(dump, "0.1.12"))

# Old style: a listed node with none of its checks listed gets all its
# active checks; a listed inactive check is never taken.
check(folder_names(the_instance(dump, "0.1.13", "listed node"), 3) == ["Disk on alpha", "HTTP on alpha"],
      "listed node: %r" % folder_names(the_instance(dump, "0.1.13", "listed node"), 3))
check(folder_names(the_instance(dump, "0.1.14", "inactive"), 3) == ["Load on zeta", "HTTP on zeta"],
      "inactive listed: %r" % folder_names(the_instance(dump, "0.1.14", "inactive"), 3))

# Paths: group/check, check/accumulation (two elements), and three elements.
check(folder_names(the_instance(dump, "0.1.16", "paths"))
      == ["Root", "Ops", "alpha.example", "HTTP on alpha", "mid.example", "RTT on mid",
          "zeta.example", "Load on zeta", "HTTP on zeta", "Sub", "beta.example", "HTTP on beta"],
      "paths: %r" % folder_names(the_instance(dump, "0.1.16", "paths")))

# Node classes: an autoPromote class stands for its parent, which takes its
# derived classes along; a listed node of another class is not taken.
check(folder_names(the_instance(dump, "0.1.17", "classes"), 1) == ["zeta.example", "beta.example"],
      "classes: %r" % folder_names(the_instance(dump, "0.1.17", "classes"), 1))

# The domain overview: domain folders only.
check(folder_names(the_instance(dump, "0.1.18", "overview")) == ["Root", "Ops", "Sub"],
      "overview: %r" % folder_names(the_instance(dump, "0.1.18", "overview")))

# Period 5 starts at the first sample found.
inst = the_instance(dump, "0.1.19", "period 5")
check(prop_value(inst, "startTime") == D0 + 3600 and prop_value(inst, "duration") == ORDER - D0 - 3600,
      "period 5: %r %r" % (prop_value(inst, "startTime"), prop_value(inst, "duration")))

# A report in a subdomain covers only that domain and logs its path.
check(folder_names(the_instance(dump, "0.1.60", "subdomain"), 1) == ["beta.example"],
      "subdomain report: %r" % folder_names(the_instance(dump, "0.1.60", "subdomain")))
check("log: Starting generation of report Ops: Label 0.1.60" in log, "path of a subdomain report")

# --- A plan limits the intervals: alpha's samples lie before 08:00, so with
# --- the plan 08:00 to 10:00 its checks have no known availability and stay,
# --- while without it they are hidden (hideSectionLevel 3, threshold 0).
cases += 1
plan = {"class": "Plan", "children": [{"class": "DayPlanner", "props": {"name": {"string": "all"}},
        "children": [{"class": "Event", "props": {"active": {"bool": True},
                      "startTime": {"uint": 8 * 3600}, "duration": {"uint": 7200}}}]}]}
hide = {"hideSectionLevel": {"uint": 3}, "hideSectionThreshold": {"real": 0.0},
        "startTime": {"date": D0}, "duration": {"uint": 86400}}
fixed = [report("0.1.10", ["0.1.21"], children=[plan], **hide), report("0.1.11", ["0.1.21"], **hide)]
for r in fixed:
    r["props"]["period"] = {"null": "enum"}  # a fixed period: startTime and duration
dump, log, results = run(fixed, "0.1.10@%d 0.1.11@%d" % (ORDER, ORDER))
check(folder_names(the_instance(dump, "0.1.10", "plan"), 3) == ["Disk on alpha", "HTTP on alpha"],
      "with plan: %r" % folder_names(the_instance(dump, "0.1.10", "plan")))
check(folder_names(the_instance(dump, "0.1.11", "no plan"), 3) == [],
      "without plan: %r" % folder_names(the_instance(dump, "0.1.11", "no plan")))

# --- A database error during the analysis: finished, not public, no mail.
cases += 1
dump, log, results = run([report("0.1.10", ["0.1.2"])], "0.1.10@%d" % ORDER,
                         faults={"fail_create": ["ReportResultGraph"]})
inst = the_instance(dump, "0.1.10", "failed analysis")
check(prop_value(inst, "workerNode") == 0 and prop_value(inst, "progress") == 100
      and prop_value(inst, "public") is None, "failed analysis instance %r" % inst.get("props"))
check(incidents(dump, "0.1.10") == [(1, "Generation of report number 1 initiated."),
                                    (4, "Analysis of report number 1 failed.")],
      "failed analysis incidents %r" % incidents(dump, "0.1.10"))
check("log: Analysis failed: Injected failure: creates of ReportResultGraph fail" in log,
      "analysis failure logged")
check("Caught exception during creation of ReportResultGraph with parent " in log, "error line")
check(results.get("0.1.10") == "", "no instance id for a failed analysis")

# --- A node whose selector fails is left out and doesn't move the progress:
# --- with the instance's updates failing, the report keeps the last
# --- percentage, 50 after one of two nodes (99 had both counted).
cases += 1
dump, log, results = run([report("0.1.10", ["0.1.4", "0.1.21"])], "0.1.10@%d" % ORDER,
                         faults={"fail_update": ["ReportInstance"]})
inst = the_instance(dump, "0.1.10", "selector failure")
check(folder_names(inst, 1) == ["alpha.example"], "selector failure: %r" % folder_names(inst))
check("log: Cannot select old style checks: " in log, "selector failure logged")
check(prop_value(find(dump["objects"], "0.1.10"), "progress") == 50,
      "progress %r" % prop_value(find(dump["objects"], "0.1.10"), "progress"))
check(incidents(dump, "0.1.10")[-1] == (4, "Generation of report failed: Injected failure: "
                                           "updates of ReportInstance fail"),
      "failure handler incident %r" % incidents(dump, "0.1.10"))

# --- The real reporter carries out a ReportOrder: one finished instance,
# --- the order gone.
cases += 1
ordered = report("0.1.10", ["0.1.2"], date={"enum": [65546, 0]}, maxInstances={"null": "uint"},
                 children=[{"class": "ReportOrder", "props": {"orderTime": {"date": ORDER}}}])
dump, log, results = run([ordered], "", child=reporter)
inst = the_instance(dump, "0.1.10", "ordered")
check([c["class"] for c in find(dump["objects"], "0.1.10")["children"]] == ["ReportInstance"],
      "the order is carried out and deleted")
check(prop_value(inst, "workerNode") == 0 and prop_value(inst, "public") is True
      and prop_value(inst, "orderTime") == ORDER and prop_value(inst, "startTime") == D0,
      "ordered instance %r" % inst.get("props"))
check(folder_names(inst, 1) == ["alpha.example", "mid.example", "zeta.example", "beta.example"],
      "ordered nodes %r" % folder_names(inst, 1))
check(incidents(dump, "0.1.10") == [(1, "Generation of report number 1 initiated."),
                                    (1, "Generation of report number 1 done.")],
      "ordered incidents %r" % incidents(dump, "0.1.10"))

for f in failures:
    print("FAILED:", f)
print("%d cases, %d failed checks" % (cases, len(failures)))
sys.exit(1 if failures else 0)
