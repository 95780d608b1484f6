#!/usr/bin/env python3
"""Black-box test of `tavrel-tool fdio-print`, `class-name`, `property-name`."""
import struct
import subprocess
import sys
import unittest

TOOL = sys.argv.pop(1) if len(sys.argv) > 1 else "tavrel-tool"


def run(args, stdin=b""):
    p = subprocess.run([TOOL] + args, input=stdin, capture_output=True, timeout=30)
    return p.returncode, p.stdout, p.stderr


def header(type_index, dest, inresponse, exception=0):
    return struct.pack("<iiII", type_index, dest, inresponse, exception)


def string(text):
    return struct.pack("<Q", len(text)) + text


ACK = header(109, 2, 0) + struct.pack("<I", 0x1234)
EXCEPTION = header(86, 2, 5, 1) + string(b"Backend error")


class FdioPrint(unittest.TestCase):
    def test_events_in_printed_form(self):
        self.assertEqual(
            (0,
             b"TQL_ACKNOWLEDGE {\n  dest: dbms\n  inresponse: 0\n  req_id_to_ack: 4660\n}\n"
             b"MESSAGE_EXCEPTION {\n  dest: dbms\n  inresponse: 5\n"
             b"  Exception: Backend error\n}\n",
             b""),
            run(["fdio-print"], ACK + EXCEPTION))

    def test_empty_input_prints_nothing(self):
        self.assertEqual((0, b"", b""), run(["fdio-print"]))

    def test_unknown_type_is_an_error_not_an_abort(self):
        code, out, err = run(["fdio-print"], ACK + header(70, 0, 0))
        self.assertEqual(1, code)
        self.assertTrue(out.startswith(b"TQL_ACKNOWLEDGE {"))
        self.assertEqual(
            b"error: fdio >> event: unknown type index: 70 old was TQL_ACKNOWLEDGE dest dbms\n",
            err)

    def test_truncated_event(self):
        self.assertEqual((1, b"", b"error: truncated event at byte 0\n"),
                         run(["fdio-print"], ACK[:-1]))

    def test_absurd_string_length(self):
        code, _, err = run(["fdio-print"], header(86, 2, 5, 1) + struct.pack("<Q", 1 << 62))
        self.assertEqual((1, b"error: truncated event at byte 0\n"), (code, err))


class Catalogue(unittest.TestCase):
    def test_names(self):
        self.assertEqual((0, b".\n", b""), run(["class-name", "13"]))
        self.assertEqual((0, b"ReportInstance\n", b""), run(["class-name", "38"]))
        self.assertEqual((0, b"<unknown class: 999>\n", b""), run(["class-name", "999"]))
        self.assertEqual((0, b"workerNode\n", b""), run(["property-name", "3309"]))
        self.assertEqual((0, b"<unknown property: 4>\n", b""), run(["property-name", "4"]))

    def test_bad_arguments(self):
        self.assertEqual((1, b"", b"error: not an integer: x\n"), run(["class-name", "x"]))
        self.assertEqual(1, run(["property-name"])[0])
        self.assertEqual((1, b"", b"error: number out of range: 4294967296\n"),
                         run(["class-name", "4294967296"]))


if __name__ == "__main__":
    unittest.main()
