#!/usr/bin/env python3
"""tavrel-tool report-tree and render over a world with a finished report
(data/report_world.json): the outline and the plain text match what is
expected byte for byte, the HTML page refers only to pictures that were
written beside it, and faults end in a clear "error: " line.

usage: report_read_test.py TAVREL_TOOL RESOURCE_DIR
"""
import json
import os
import re
import signal
import struct
import sys
import tempfile
import unittest

from host_runs import HostRun, marked_processes, run_host, wait_until_gone

TOOL = sys.argv.pop(1) if len(sys.argv) > 1 else "tavrel-tool"
RESOURCES = sys.argv.pop(1) if len(sys.argv) > 1 else "resources"
DATA = os.path.join(os.path.dirname(os.path.abspath(__file__)), "data")
WORLD = os.path.join(DATA, "report_world.json")


# A render runs a host and its reader child; a hang of the two is reported
# with both processes' state (host_runs.py) and they are killed.
DEADLINE = 120


def tool(*args):
    done = run_host([TOOL, *args], DEADLINE, name="tavrel-tool " + args[0])
    return done.returncode, done.stdout_bytes, done.stderr_bytes


def expected(name):
    with open(os.path.join(DATA, name), "rb") as f:
        return f.read()


def png_size(path):
    with open(path, "rb") as f:
        head = f.read(24)
    assert head[:8] == b"\x89PNG\r\n\x1a\n", path
    return struct.unpack(">II", head[16:24])


class ChangedWorld:
    """A copy of the example world, changed by `edit`, in a temporary file."""

    def __init__(self, edit):
        with open(WORLD) as f:
            self.world = json.load(f)
        edit(self.world)

    def __enter__(self):
        self.file = tempfile.NamedTemporaryFile("w", suffix=".json", delete=False)
        json.dump(self.world, self.file)
        self.file.close()
        return self.file.name

    def __exit__(self, *exc):
        os.unlink(self.file.name)


class ReportTree(unittest.TestCase):
    def test_outline_of_the_example_report(self):
        code, out, err = tool("report-tree", "--world", WORLD, "--instance", "0.1.30")
        self.assertEqual((0, b""), (code, err))
        self.assertEqual(expected("report_tree.expected"), out)

    def test_an_empty_instance_and_a_null_generation_time(self):
        def edit(world):
            instance = world["objects"]["children"][0]["children"][1]["children"][0]
            instance["children"] = []
            world["series"] = []
            instance["props"]["generated"] = {"null": "date"}
        with ChangedWorld(edit) as world:
            code, out, err = tool("report-tree", "--world", world, "--instance", "0.1.30")
        self.assertEqual((0, b""), (code, err))
        self.assertEqual(b'instance "Weekly" start 1699833600 duration 86400 generated 0'
                         b' by "Tavrel 5.2"\n', out)

    def test_a_graph_without_stored_series(self):
        def edit(world):
            world["series"] = [s for s in world["series"] if s["owner"] != "0.1.60"]
        with ChangedWorld(edit) as world:
            code, out, _ = tool("report-tree", "--world", world, "--instance", "0.1.30")
        self.assertEqual(0, code)
        self.assertIn(b'graph "HTTP response time" anchor 0.1.60 data type 0, 0 samples', out)

    def test_faults(self):
        code, out, err = tool("report-tree", "--world", WORLD, "--instance", "0.1.99")
        self.assertEqual((1, b"", b"error: Report instance 0.1.99 not found\n"), (code, out, err))
        code, _, err = tool("report-tree", "--world", WORLD, "--instance", "0.1.x")
        self.assertEqual(1, code)
        self.assertTrue(err.startswith(b"error: --instance: "), err)
        code, _, err = tool("report-tree", "--world", "/nonexistent.json", "--instance", "0.1.30")
        self.assertEqual((1, b"error: cannot read world file /nonexistent.json\n"), (code, err))
        code, _, err = tool("report-tree", "--world", WORLD, "--dump", WORLD, "--instance", "0.1")
        self.assertEqual((1, b"error: give --world or --dump, not both\n"), (code, err))

    def test_the_generator_name_must_be_stored(self):
        def edit(world):
            del world["cluster"]
        with ChangedWorld(edit) as world:
            code, out, err = tool("report-tree", "--world", world, "--instance", "0.1.30")
        self.assertEqual((1, b"", b"error: Property not found reportGenerator\n"),
                         (code, out, err))


class RenderText(unittest.TestCase):
    def test_text_of_the_example_report(self):
        code, out, err = tool("render", "--dump", WORLD, "--instance", "0.1.30",
                              "--format", "text", "--zone", "0")
        self.assertEqual((0, b""), (code, err))
        self.assertEqual(expected("report_text.expected"), out)

    def test_times_follow_the_zone(self):
        code, out, _ = tool("render", "--dump", WORLD, "--instance", "0.1.30",
                            "--format", "text", "--zone", "3600")
        self.assertEqual(0, code)
        self.assertIn(b"Alert: 13/11/2023 04:00:00: web2 is down\r\n", out)

    def test_bad_arguments(self):
        base = ["render", "--dump", WORLD, "--instance", "0.1.30"]
        self.assertEqual((1, b"error: --format must be html or text: pdf\n"),
                         tool(*base, "--format", "pdf")[::2])
        self.assertEqual((1, b"error: --format html needs --images DIR\n"),
                         tool(*base, "--format", "html")[::2])
        self.assertEqual((1, b"error: --images and --resources are for html\n"),
                         tool(*base, "--format", "text", "--images", "/tmp")[::2])


class RenderHtml(unittest.TestCase):
    def render(self, world, images):
        return tool("render", "--dump", world, "--instance", "0.1.30", "--format", "html",
                    "--zone", "0", "--images", images, "--resources", RESOURCES)

    def test_page_and_its_pictures(self):
        with tempfile.TemporaryDirectory() as d:
            images = os.path.join(d, "page")  # made by the tool
            code, out, err = self.render(WORLD, images)
            self.assertEqual((0, b""), (code, err))
            self.assertTrue(out.startswith(b"<!DOCTYPE HTML PUBLIC"), out[:80])
            self.assertTrue(out.endswith(b"</body>\r\n</html>\r\n"))
            self.assertIn(b'<style type="text/css">\r\n<!--\r\n', out)
            self.assertIn(b"span.reporttitle", out)
            sources = re.findall(rb'<img src="([^"]+)"', out)
            self.assertEqual({b"report_logo.png", b"spacer.gif", b"chart0.png", b"ok_lamp.png",
                              b"warning_lamp.png", b"alert_lamp.png"}, set(sources))
            written = set(os.listdir(images))
            self.assertEqual({s.decode() for s in sources}, written)
            for name in written:
                self.assertGreater(os.path.getsize(os.path.join(images, name)), 0, name)
            self.assertEqual(600, png_size(os.path.join(images, "chart0.png"))[0])
            self.assertEqual(png_size(os.path.join(RESOURCES, "ok_lamp_small.png")),
                             png_size(os.path.join(images, "ok_lamp.png")))

    def test_a_chart_without_data_shows_the_failure(self):
        def edit(world):
            world["series"] = [s for s in world["series"] if s["owner"] != "0.1.60"]
        with ChangedWorld(edit) as world, tempfile.TemporaryDirectory() as d:
            code, out, err = self.render(world, d)
            self.assertEqual(0, code)
            self.assertIn(b"Cannot draw chart chart0.png: Got unknown dataset type 0", err)
            self.assertIn(b'<img src="chart0.png" alt="HTTP response time">', out)
            width, height = png_size(os.path.join(d, "chart0.png"))
            # The error picture: one row of the small font, as wide as the text.
            self.assertEqual((len("Got unknown dataset type 0 in generate_check_image") * 6, 13),
                             (width, height))

    def test_missing_resources_leave_their_pictures_out(self):
        with tempfile.TemporaryDirectory() as d:
            code, out, err = tool("render", "--dump", WORLD, "--instance", "0.1.30",
                                  "--format", "html", "--images", d, "--resources", d)
            self.assertEqual(0, code)
            self.assertIn(b"<head>\r\n\r\n<title>", out)  # an empty style block
            self.assertIn(b'<img src="report_logo.png"', out)
            self.assertEqual(["chart0.png"], os.listdir(d))
            self.assertIn(b"tavrel.css", err)


class ToolKilled(unittest.TestCase):
    """tavrel-tool killed while its reader child waits on it in a dialog: the
    reader ends (the parent's end of stream, once read by the dialog, is not
    waited for a second time)."""

    def test_the_reader_ends(self):
        for attempt in range(10):  # A render that ended before it was seen is tried again.
            # The killed tool leaves its FIFO folder: a TMPDIR of its own.
            tmp = tempfile.TemporaryDirectory()
            run = HostRun([TOOL, "render", "--dump", WORLD, "--instance", "0.1.30",
                           "--format", "text", "--zone", "0"], DEADLINE,
                          env=dict(os.environ, TMPDIR=tmp.name), name="render killed")
            run.start()
            try:
                reader = []
                while not reader and run.proc.poll() is None:
                    reader = [p for p in marked_processes(run.marker) if p != run.proc.pid]
                if not reader:
                    continue
                run.proc.kill()
                took = wait_until_gone(reader, 20, "the reader after tavrel-tool was killed")
                print("the reader ended %.2f s after tavrel-tool was killed" % took, flush=True)
                return
            finally:
                for pid in marked_processes(run.marker):
                    os.kill(pid, signal.SIGKILL)
                run.finish()
                tmp.cleanup()
        self.skipTest("the render always ended before its reader was seen")


if __name__ == "__main__":
    unittest.main()
