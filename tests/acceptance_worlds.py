"""The worlds of the acceptance test and of the orphan test, built from
worlds/acceptance.json: one node with a continuous check sampled every
minute over four hours, copied as often as wanted, and reports with one
order each over a fixed period of those four hours."""
import copy
import json
import os

here = os.path.dirname(os.path.abspath(__file__))
base_world = json.load(open(os.path.join(here, "worlds", "acceptance.json")))

T0 = 1700006400  # 2023-11-15 00:00 UTC, the start of the data
W = T0 + 20000   # the order time of every report


def world(resources, nodes=1, reports=(), faults=None, mail_server=None, unit=None,
          good_nodes=0, texts=()):
    """The base world with the resource directory `resources` and `nodes`
    copies of its node in Servers (the first check's `unit` blob set to
    `unit` when given), `good_nodes` clean copies in a domain Good (0.1.7),
    the reports at the root, and `texts` as the root's opening texts."""
    w = copy.deepcopy(base_world)
    w["objects"]["children"] += [{"class": "ReportText", "props": {
        "type": {"enum": [65572, 0]}, "comment": {"string": t}}} for t in texts]
    servers = w["objects"]["children"][0]
    template = servers["children"].pop()
    records = w["series"].pop()["records"]
    good = {"class": "Domain", "id": "0.1.7", "props": {"name": {"string": "Good"}},
            "children": []}

    def add(domain, k):
        node = copy.deepcopy(template)
        base = 1000 + 3 * k
        node["id"] = "0.1.%d" % base
        node["props"]["name"] = {"string": "web%03d" % k}
        node["props"]["longLabel"] = {"string": "web%03d.example.test" % k}
        group = node["children"][0]
        group["id"] = "0.1.%d" % (base + 1)
        check = group["children"][0]
        check["id"] = "0.1.%d" % (base + 2)
        if unit is not None and domain is servers and k == 0:
            check["props"]["unit"] = {"blob_hex": unit}
        domain["children"].append(node)
        w["series"].append({"owner": check["id"], "property": "tsdbIndex", "data_type": 5,
                            "records": records})
    for k in range(nodes):
        add(servers, k)
    for k in range(good_nodes):
        add(good, nodes + k)
    if good_nodes:
        w["objects"]["children"].append(good)
    w["objects"]["children"] += list(reports)
    w["config"]["resource_directory"] = resources
    w["cluster"] = {"props": {"reportGenerator": {"string": "main"}}}
    if mail_server:
        w["config"]["mail_server"] = mail_server
    if faults:
        w["faults"] = faults
    return w


def report(rid, name, contains="0.1.2", kind=1, destination=None):
    """A Report with one order at W over a fixed period of four hours."""
    p = {"name": {"string": name}, "type": {"enum": [65566, kind]}, "period": {"null": "enum"},
         "startTime": {"date": T0}, "duration": {"uint": 14400},
         "contains": {"object_set": [contains]}, "date": {"enum": [65546, 0]},
         "time": {"date": 0}, "frequency": {"uint": 0}, "order": {"uint": 0},
         "maxInstances": {"null": "uint"}, "timeZone": {"int": 0}}
    if destination:
        p["destination"] = {"string": destination}
    children = [{"class": "ReportOrder", "props": {"orderTime": {"date": W}}}]
    return {"class": "Report", "id": rid, "props": p, "children": children}
