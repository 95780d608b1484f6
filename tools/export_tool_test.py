#!/usr/bin/env python3
"""Black-box test of `tavrel-tool export` over tests/data/report_world.json:
the CSV read back with Python's csv module and the JSON with json, both
compared with the rows, logs and charts of the stored instance, names with
commas, quotes, line breaks and UTF-8 kept whole, and bad arguments refused
with exit code 2."""
import copy
import csv
import io
import json
import os
import subprocess
import sys
import tempfile
import unittest

TOOL = sys.argv.pop(1) if len(sys.argv) > 1 else "tavrel-tool"
WORLD = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "tests", "data",
                     "report_world.json")
with open(WORLD) as world_file:
    BASE = json.load(world_file)


def export(world, *args):
    with tempfile.NamedTemporaryFile("w", suffix=".json", delete=False, encoding="utf-8") as f:
        json.dump(world, f, ensure_ascii=False)
    try:
        p = subprocess.run([TOOL, "export", "--dump", f.name, *args], capture_output=True,
                           timeout=60, env=dict(os.environ, TZ="UTC"))
        return p.returncode, p.stdout.decode("utf-8"), p.stderr.decode("utf-8")
    finally:
        os.unlink(f.name)


def walk(o, path=()):
    yield o, path
    name = o.get("props", {}).get("name", {}).get("string", "")
    for c in o.get("children", []):
        yield from walk(c, path + (name,) if o["class"] == "ReportResultFolder" else path)


def instance(world, id_):
    return next(o for o, _ in walk(world["objects"]) if o.get("id") == id_)


def stored_rows(world, id_):
    rows = set()
    for o, path in walk(instance(world, id_)):
        if o["class"] == "ReportResultRow":
            p = o["props"]
            rows.add((" / ".join(path), p.get("name", {}).get("string", ""),
                      p.get("text", {}).get("string", ""), p.get("originNode", {}).get("object", "")))
    return rows


class ExportCsv(unittest.TestCase):
    def read(self, world, *args):
        code, out, err = export(world, "--format", "csv", *args)
        self.assertEqual((0, ""), (code, err))
        self.assertTrue(out.endswith("\r\n"))
        return list(csv.DictReader(io.StringIO(out, newline="")))

    def test_rows_logs_and_charts_of_the_instance(self):
        lines = self.read(BASE, "--instance", "0.1.30")
        rows = {(l["path"], l["label"], l["value"], l["refers_to"]) for l in lines if l["kind"] == "row"}
        self.assertEqual(stored_rows(BASE, "0.1.30"), rows)
        incidents = next(s["records"] for s in BASE["series"] if s["owner"] == "0.1.61")
        logs = [l for l in lines if l["kind"] == "log"]
        self.assertEqual([r[1] for r in incidents], [l["value"] for l in logs])
        self.assertEqual(["alert", "ok", "warning"][:len(logs)], [l["severity"] for l in logs][:3])
        self.assertEqual("2023-11-13T03:00:00+00:00", logs[0]["time"])
        chart = next(l for l in lines if l["kind"] == "chart")
        records = next(s["records"] for s in BASE["series"] if s["owner"] == "0.1.60")
        self.assertEqual((str(len(records)), "HTTP response time", "2023-11-13T00:00:00+00:00"),
                         (chart["count"], chart["label"], chart["first"]))
        self.assertTrue(all(l["instance"] == "0.1.30" for l in lines))

    def test_texts_with_commas_quotes_line_breaks_and_utf8_survive(self):
        world = copy.deepcopy(BASE)
        odd = 'Avail, "core"\r\nnext \u00c6r\u00f8 \u2713 \u65e5\u672c'
        instance(world, "0.1.46")["props"]["name"] = {"string": odd}
        instance(world, "0.1.45")["props"]["name"] = {"string": "Servers, all"}
        lines = self.read(world, "--instance", "0.1.30")
        self.assertIn(("Servers, all", odd), {(l["path"], l["label"]) for l in lines})

    def test_every_instance_without_instance(self):
        world = copy.deepcopy(BASE)
        report = next(o for o, _ in walk(world["objects"]) if o["class"] == "Report")
        second = copy.deepcopy(instance(world, "0.1.30"))
        for o, _ in walk(second):
            if "id" in o:
                o["id"] = o["id"].replace("0.1.", "0.1.9")
        report["children"].append(second)
        ids = {l["instance"] for l in self.read(world)}
        self.assertEqual({"0.1.30", "0.1.930"}, ids)


class ExportJson(unittest.TestCase):
    def test_the_whole_tree_with_typed_values_and_series(self):
        code, out, err = export(BASE, "--instance", "0.1.30", "--format", "json")
        self.assertEqual((0, ""), (code, err))
        [got] = json.loads(out)
        self.assertEqual("0.1.20", got["report"])

        def ids(o):
            return [o["id"]] + [i for c in o["children"] for i in ids(c)]
        stored = sorted(o["id"] for o, _ in walk(instance(BASE, "0.1.30")))
        self.assertEqual(stored, sorted(ids(got["tree"])))
        self.assertEqual({"uint": 100}, got["tree"]["props"]["progress"])
        self.assertEqual("2023-11-13T00:00:00+00:00", got["tree"]["props"]["startTime"]["iso"])
        def find(o, id_):
            return o if o["id"] == id_ else next((f for c in o["children"] for f in [find(c, id_)] if f), None)
        self.assertEqual(next(s["records"] for s in BASE["series"] if s["owner"] == "0.1.60"),
                         find(got["tree"], "0.1.60")["series"]["tsdbIndex"])


class BadArguments(unittest.TestCase):
    def test_clear_errors_and_exit_2(self):
        broken = copy.deepcopy(BASE)
        broken["objects"]["children"][0]["children"][1]["id"] = 7  # no text
        code, out, err = export(broken, "--format", "json")
        self.assertEqual((2, ""), (code, out))
        self.assertIn("is no dump of tavrel-host", err)
        code, out, err = export(BASE, "--instance", "0.1.99", "--format", "csv")
        self.assertEqual((2, "", "error: No instance 0.1.99\n"), (code, out, err))
        code, _, err = export(BASE, "--instance", "0.1.30", "--format", "xml")
        self.assertEqual((2, "error: --format must be csv or json\n"), (code, err))
        with tempfile.NamedTemporaryFile("w", suffix=".txt", delete=False) as f:
            f.write("not a dump")
        try:
            p = subprocess.run([TOOL, "export", "--dump", f.name, "--format", "csv"],
                               capture_output=True, timeout=60)
        finally:
            os.unlink(f.name)
        self.assertEqual(2, p.returncode)
        self.assertIn(b"is no dump of tavrel-host", p.stderr)


if __name__ == "__main__":
    unittest.main()
