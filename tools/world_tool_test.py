#!/usr/bin/env python3
"""Black-box test of `tavrel-tool world-check`: a world file in, a verdict out."""
import os
import subprocess
import sys
import tempfile
import unittest

TOOL = sys.argv.pop(1) if len(sys.argv) > 1 else "tavrel-tool"


def check(world_text, extra=()):
    with tempfile.NamedTemporaryFile("w", suffix=".json", delete=False) as f:
        f.write(world_text)
    try:
        p = subprocess.run([TOOL, "world-check", "--world", f.name, *extra],
                           capture_output=True, timeout=30)
        return p.returncode, p.stdout, p.stderr
    finally:
        os.unlink(f.name)


class WorldCheck(unittest.TestCase):
    def test_good_world_is_summed_up(self):
        world = """{"objects": {"class": "Domain", "children": [
                      {"class": "Node", "props": {"name": {"string": "n"}}}]},
                    "series": [{"owner": "/n", "property": "tsdbIncident", "data_type": 4,
                                "records": [[1, "up", 5], [4, "down", 9]]}]}"""
        self.assertEqual((0, b"ok: 3 objects, 1 series, 2 records\n", b""), check(world))

    def test_first_fault_with_its_path(self):
        world = """{"objects": {"class": "Domain", "children": [
                      {"class": "Check", "props": {"active": {"bool": "yes"}}}]}}"""
        self.assertEqual(
            (1, b"", b"error: objects.children[0].props.active.bool: expected true or false\n"),
            check(world))

    def test_syntax_error(self):
        code, out, err = check('{"objects": ')
        self.assertEqual((1, b""), (code, out))
        self.assertTrue(err.startswith(b"error: not valid JSON: "), err)

    def test_missing_file_and_arguments(self):
        p = subprocess.run([TOOL, "world-check", "--world", "/nonexistent.json"],
                           capture_output=True, timeout=30)
        self.assertEqual((1, b"error: cannot read world file /nonexistent.json\n"),
                         (p.returncode, p.stderr))
        p = subprocess.run([TOOL, "world-check"], capture_output=True, timeout=30)
        self.assertEqual(1, p.returncode)
        self.assertTrue(p.stderr.startswith(b"error: "), p.stderr)
        self.assertEqual(1, check("{}", ["--extra"])[0])


if __name__ == "__main__":
    unittest.main()
