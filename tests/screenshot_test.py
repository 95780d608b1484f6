"""scripts/screenshot on hand-made pages: a page with text and a picture
passes and leaves its screenshot; a blank page and a page whose picture is
missing fail, each with its reason. The PNG reader is checked on its own on
pictures of every filter type. Exit 77 (skipped) without chromium.

usage: screenshot_test.py SCREENSHOT
"""
import importlib.machinery
import importlib.util
import os
import shutil
import struct
import subprocess
import sys
import tempfile

from checklist import check, failures, finish
import zlib

script = sys.argv[1]


def png(width, height, pixel, filter_type=0):
    """An RGB PNG; `pixel(x, y)` gives (r, g, b). Rows use `filter_type`
    (0 none, 1 sub, 2 up, 3 average, 4 paeth), encoded here the plain way."""
    def paeth(a, b, c):
        p = a + b - c
        pa, pb, pc = abs(p - a), abs(p - b), abs(p - c)
        return a if pa <= pb and pa <= pc else (b if pb <= pc else c)
    raw, prev = bytearray(), bytes(width * 3)
    for y in range(height):
        row = bytes(v for x in range(width) for v in pixel(x, y))
        out = bytearray()
        for i, v in enumerate(row):
            a = row[i - 3] if i >= 3 else 0
            b = prev[i]
            c = prev[i - 3] if i >= 3 else 0
            pred = [0, a, b, (a + b) >> 1, paeth(a, b, c)][filter_type]
            out.append((v - pred) & 255)
        raw += bytes([filter_type]) + out
        prev = row

    def chunk(kind, body):
        return (struct.pack(">I", len(body)) + kind + body +
                struct.pack(">I", zlib.crc32(kind + body) & 0xffffffff))
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">IIBBBBB", width, height, 8, 2, 0, 0, 0))
            + chunk(b"IDAT", zlib.compress(bytes(raw))) + chunk(b"IEND", b""))


loader = importlib.machinery.SourceFileLoader("screenshot", script)
module = importlib.util.module_from_spec(importlib.util.spec_from_loader("screenshot", loader))
loader.exec_module(module)

with tempfile.TemporaryDirectory() as d:
    # The reader: a quarter of the picture dark, under every filter type.
    for f in range(5):
        path = os.path.join(d, "f%d.png" % f)
        with open(path, "wb") as out:
            out.write(png(20, 10, lambda x, y: (30, 60, 90) if x < 10 and y < 5 else (255, 255, 255), f))
        share = module.non_white_share(path)
        check(abs(share - 0.25) < 1e-9, "filter %d: share %r" % (f, share))

    if not shutil.which("chromium"):
        print("chromium is not installed: skipped")
        sys.exit(77 if not failures else 1)

    def page(name, body, picture=True):
        folder = os.path.join(d, name)
        os.makedirs(folder)
        if picture:
            with open(os.path.join(folder, "chart0.png"), "wb") as out:
                out.write(png(200, 120, lambda x, y: (200, 30, 30) if (x // 20 + y // 20) % 2 else (20, 20, 160)))
        with open(os.path.join(folder, "report.html"), "w") as out:
            out.write("<html><body>" + body + "</body></html>\n")
        return os.path.join(folder, "report.html")

    good = page("good", "<h1>Availability</h1><p>99.5 %</p><img src='chart0.png'>")
    blank = page("blank", "", picture=False)
    missing = page("missing", "<h1>Charts</h1><img src='chart0.png'><img src='cid:chart1'>")
    shots = os.path.join(d, "shots")
    run = subprocess.run([sys.executable, script, "--out", shots, "--timeout", "90", good, blank,
                          missing], capture_output=True, text=True, timeout=400)
    lines = run.stdout.splitlines()
    check(run.returncode == 1, "exit %d: %s %s" % (run.returncode, run.stdout, run.stderr))
    check(len(lines) == 3 and lines[0].startswith("ok ") and lines[0].endswith("good.png"),
          "good page: %r" % run.stdout)
    check(len(lines) == 3 and lines[1].startswith("FAIL") and "blank page" in lines[1],
          "blank page: %r" % run.stdout)
    check(len(lines) == 3 and lines[2].startswith("FAIL") and "missing images: cid:chart1" in lines[2]
          and "blank" not in lines[2], "page with a missing picture: %r" % run.stdout)
    check(os.path.isfile(os.path.join(shots, "good.png")) and
          module.non_white_share(os.path.join(shots, "good.png")) > 0.01, "the good screenshot")

finish()
