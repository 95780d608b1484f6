#!/usr/bin/python3
"""Tests of bench/e2e-generation's own parts: the world it writes (valid for
the host, the report and the samples it promises) and the memory wrapper
(passes the "smem::" variables on, writes the peak RSS).

  e2e_generation_test.py TAVREL_HOST
"""
import importlib.machinery
import importlib.util
import json
import os
import subprocess
import sys
import tempfile
import unittest

sys.dont_write_bytecode = True
HERE = os.path.dirname(os.path.abspath(__file__))
loader = importlib.machinery.SourceFileLoader("e2e_generation", os.path.join(HERE, "e2e-generation"))
e2e = importlib.util.module_from_spec(importlib.util.spec_from_loader(loader.name, loader))
loader.exec_module(e2e)
HOST = None


def walk(o):
    yield o
    for c in o.get("children", []):
        yield from walk(c)


class WorldTest(unittest.TestCase):
    def setUp(self):
        self.dir = tempfile.TemporaryDirectory()
        self.path = os.path.join(self.dir.name, "world.json")
        self.counts = e2e.write_world(self.path, 3, 4, "127.0.0.1:2525")
        with open(self.path) as f:
            self.world = json.load(f)

    def tearDown(self):
        self.dir.cleanup()

    def test_the_host_loads_it(self):
        done = subprocess.run([HOST, "check", "--world", self.path], capture_output=True, text=True)
        self.assertEqual(done.returncode, 0, done.stderr)

    def test_one_ordered_availability_report_over_every_check(self):
        objects = list(walk(self.world["objects"]))
        reports = [o for o in objects if o["class"] == "Report"]
        self.assertEqual(len(reports), 1)
        props = reports[0]["props"]
        self.assertEqual(props["type"]["enum"][1], 1)
        self.assertEqual(props["destination"], {"string": "ops@example.test"})
        self.assertEqual([c["class"] for c in reports[0]["children"]],
                         ["ReportSelection", "ReportOrder"])
        selected = reports[0]["children"][0]["props"]["contains"]["object_set"]
        domain = next(o for o in objects if o.get("id") == selected[0])
        checks = [o for o in walk(domain) if o["class"] == "Check"]
        self.assertEqual(len(checks), 12)
        self.assertTrue(all(c["props"]["dataType"] == {"uint": 5} for c in checks))
        self.assertEqual(self.world["config"]["mail_server"], "127.0.0.1:2525")

    def test_a_month_of_five_minute_samples_per_check(self):
        series = self.world["series"]
        self.assertEqual(self.counts, (12, 12 * 8640))
        self.assertEqual(len({s["owner"] for s in series}), 12)
        for s in series:
            records = s["records"]
            self.assertEqual(len(records), 8640)
            self.assertEqual(records[0][0], e2e.END - 30 * 86400)
            self.assertEqual(records[-1][1], e2e.END)
            self.assertTrue(all(a[1] == b[0] for a, b in zip(records, records[1:])))
            self.assertTrue(all(r[2] <= r[3] <= r[4] for r in records))


class WrapperTest(unittest.TestCase):
    def test_passes_the_environment_and_writes_the_peak(self):
        with tempfile.TemporaryDirectory() as d:
            wrapper, rss = os.path.join(d, "reporter"), os.path.join(d, "rss")
            e2e.write_wrapper(wrapper, rss, "/usr/bin/env")
            env = dict(os.environ)
            env["smem::mapfile"] = "/some/file"
            done = subprocess.run([wrapper], env=env, capture_output=True, text=True)
            self.assertEqual(done.returncode, 0, done.stderr)
            self.assertIn("smem::mapfile=/some/file", done.stdout.splitlines())
            with open(rss) as f:
                self.assertGreater(int(f.read().split()[-1]), 0)


if __name__ == "__main__":
    HOST = sys.argv.pop(1)
    unittest.main()
