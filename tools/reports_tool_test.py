#!/usr/bin/env python3
"""Black-box test of `tavrel-tool reports`: the overview of every report of
tests/data/report_world.json, with a schedule, a fixed period, an open
order and a second report added, as text and as JSON; a file that is no
dump is refused with exit code 2."""
import copy
import json
import os
import subprocess
import sys
import tempfile
import unittest

TOOL = sys.argv.pop(1) if len(sys.argv) > 1 else "tavrel-tool"
WORLD = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "tests", "data",
                     "report_world.json")


def world():
    with open(WORLD) as f:
        w = json.load(f)
    servers = w["objects"]["children"][0]
    report = next(c for c in servers["children"] if c["class"] == "Report")
    report["props"].update({"type": {"enum": [65566, 1]}, "date": {"enum": [65546, 2]},
                            "time": {"date": 8 * 3600 + 30 * 60}, "frequency": {"uint": 0},
                            "period": {"enum": [65546, 2]}, "timeZone": {"int": 3600},
                            "destination": {"string": "ops@example.test"}})
    report["children"].append({"class": "ReportOrder", "id": "0.1.90",
                               "props": {"orderTime": {"date": 1700000000}}})
    other = {"class": "Report", "id": "0.1.91",
             "props": {"name": {"string": "Audit, yearly"}, "type": {"enum": [65566, 5]},
                       "date": {"enum": [65546, 0]}, "startTime": {"date": 1672531200},
                       "duration": {"uint": 86400}}}
    servers["children"].append(other)
    return w


def reports(w, *args):
    with tempfile.NamedTemporaryFile("w", suffix=".json", delete=False) as f:
        json.dump(w, f)
    try:
        p = subprocess.run([TOOL, "reports", "--dump", f.name, *args], capture_output=True, timeout=60)
        return p.returncode, p.stdout.decode(), p.stderr.decode()
    finally:
        os.unlink(f.name)


class Reports(unittest.TestCase):
    def test_json_overview(self):
        code, out, err = reports(world(), "--json")
        self.assertEqual((0, ""), (code, err))
        weekly, audit = json.loads(out)
        self.assertEqual(("0.1.20", "Servers / Weekly", "availability report"),
                         (weekly["id"], weekly["path"], weekly["kind"]))
        self.assertEqual("every week on Monday at 08:30", weekly["schedule"])
        self.assertEqual("last week, Monday to Sunday", weekly["period"])
        self.assertEqual("ops@example.test", weekly["destination"])
        self.assertEqual([{"id": "0.1.30", "order_time": "2023-11-14T01:00:00+01:00", "progress": 100,
                           "generated": "2023-11-14T01:10:00+01:00"}], weekly["instances"])
        self.assertEqual([{"id": "0.1.90", "order_time": "2023-11-14T23:13:20+01:00"}],
                         weekly["open_orders"])
        self.assertEqual(("configuration report", "not scheduled",
                          "fixed, 2023-01-01T00:00:00+00:00 to 2023-01-02T00:00:00+00:00", [], []),
                         (audit["kind"], audit["schedule"], audit["period"], audit["instances"],
                          audit["open_orders"]))

    def test_text_overview(self):
        code, out, err = reports(world())
        self.assertEqual((0, ""), (code, err))
        self.assertIn("Report 0.1.20: Servers / Weekly\n  kind:        availability report\n", out)
        self.assertIn("  instance     0.1.30, ordered for 2023-11-14T01:00:00+01:00, 100 %, "
                      "generated 2023-11-14T01:10:00+01:00\n", out)
        self.assertIn("  open order   0.1.90, for 2023-11-14T23:13:20+01:00\n", out)
        self.assertIn("Report 0.1.91: Servers / Audit, yearly\n", out)

    def test_no_dump_is_refused(self):
        code, out, err = reports({"nothing": 1})
        self.assertEqual((2, ""), (code, out))
        self.assertIn("is no dump of tavrel-host", err)


if __name__ == "__main__":
    unittest.main()
