#!/usr/bin/env python3
"""Black-box test of `tavrel-tool tavml`: stdin in, conversion or error out."""
import subprocess
import sys
import unittest

TOOL = sys.argv.pop(1) if len(sys.argv) > 1 else "tavrel-tool"


def run(args, stdin):
    p = subprocess.run([TOOL, "tavml"] + args, input=stdin, capture_output=True, timeout=30)
    return p.returncode, p.stdout, p.stderr


class TavmlTool(unittest.TestCase):
    def test_html(self):
        self.assertEqual(
            (0, b"<b>x</b><br>\n<a href=\"a&quot;b\">a&quot;b</a>", b""),
            run(["--html"], b"<b>x</b>\r\n<link url='a\"b'>"))

    def test_html_with_target(self):
        self.assertEqual((0, b"<a  target=\"_top\"href=\"u\">u</a>", b""),
                         run(["--html", "--target", "_top"], b"<link url='u'>"))

    def test_text(self):
        self.assertEqual((0, b"A XYZ\n" + b"-" * 72 + b"\n", b""),
                         run(["--text"], b"A <b>x<i>y</i>z</b><hr>"))

    def test_empty_input(self):
        self.assertEqual((0, b"", b""), run(["--text"], b""))

    def test_fault_goes_to_stderr_and_stdout_stays_empty(self):
        self.assertEqual((1, b"", b"error: Mismatched tags\n"), run(["--html"], b"<b>x<i></b>"))
        self.assertEqual((1, b"", b"error: Unterminated u-tag\n"), run(["--text"], b"<u>"))
        self.assertEqual((1, b"", b"error: & (ampersand) not allowed\n"), run(["--text"], b"a&b"))

    def test_bad_arguments(self):
        for args in ([], ["--html", "--text"], ["--text", "--target", "t"], ["--html", "x"],
                     ["--html", "--target"]):
            code, out, err = run(args, b"")
            self.assertEqual(1, code, args)
            self.assertEqual(b"", out, args)
            self.assertTrue(err.startswith(b"error: "), (args, err))


if __name__ == "__main__":
    unittest.main()
