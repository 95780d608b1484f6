#!/usr/bin/env python3
"""The HTML of the example report (data/report_world.json) in a real browser:
headless Chromium takes a screenshot of the page that tavrel-tool render
wrote, and the picture must have the window's size and show a page that is
neither blank nor of one colour. The page and the screenshot stay in
ARTEFACT_DIR (report/report.html, report.png) for people to look at.

Exits 77 (skipped) when Chromium isn't installed or can't run here.

usage: report_browser_test.py TAVREL_TOOL RESOURCE_DIR ARTEFACT_DIR
"""
import os
import shutil
import signal
import struct
import subprocess
import sys
import tempfile
import zlib

SKIP = 77
WIDTH, HEIGHT = 1024, 1400


def fail(text):
    print("FAIL: " + text)
    sys.exit(1)


def skip(text):
    print("SKIP: " + text)
    sys.exit(SKIP)


def paeth(a, b, c):
    p = a + b - c
    pa, pb, pc = abs(p - a), abs(p - b), abs(p - c)
    if pa <= pb and pa <= pc:
        return a
    return b if pb <= pc else c


def decode_png(data):
    """Width, height and rows of pixels (tuples of RGB) of an 8-bit RGB or
    RGBA PNG without interlacing, as Chromium writes its screenshots."""
    if data[:8] != b"\x89PNG\r\n\x1a\n":
        fail("the screenshot is no PNG")
    pos, idat, header = 8, b"", None
    while pos < len(data):
        length, kind = struct.unpack(">I4s", data[pos:pos + 8])
        body = data[pos + 8:pos + 8 + length]
        if kind == b"IHDR":
            header = struct.unpack(">IIBBBBB", body)
        elif kind == b"IDAT":
            idat += body
        pos += 12 + length
    width, height, depth, colour, _, _, interlace = header
    if depth != 8 or colour not in (2, 6) or interlace:
        fail("unexpected PNG form: depth %d colour %d interlace %d" % (depth, colour, interlace))
    step = 3 if colour == 2 else 4
    raw = zlib.decompress(idat)
    stride = width * step
    rows, previous = [], bytearray(stride)
    for y in range(height):
        start = y * (stride + 1)
        kind, line = raw[start], bytearray(raw[start + 1:start + 1 + stride])
        for i in range(stride):
            a = line[i - step] if i >= step else 0
            b = previous[i]
            c = previous[i - step] if i >= step else 0
            if kind == 1:
                line[i] = (line[i] + a) & 0xff
            elif kind == 2:
                line[i] = (line[i] + b) & 0xff
            elif kind == 3:
                line[i] = (line[i] + (a + b) // 2) & 0xff
            elif kind == 4:
                line[i] = (line[i] + paeth(a, b, c)) & 0xff
        rows.append([tuple(line[x:x + 3]) for x in range(0, stride, step)])
        previous = line
    return width, height, rows


def screenshot(browser, page, picture):
    """Runs headless Chromium on `page`; kills its process group after a
    minute, and in any case once it is done, so that no helper stays."""
    with tempfile.TemporaryDirectory() as profile:
        args = [browser, "--headless", "--no-sandbox", "--disable-gpu", "--hide-scrollbars",
                "--user-data-dir=" + profile, "--window-size=%d,%d" % (WIDTH, HEIGHT),
                "--screenshot=" + picture, "file://" + page]
        proc = subprocess.Popen(args, stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                                start_new_session=True)
        try:
            output, _ = proc.communicate(timeout=60)
        except subprocess.TimeoutExpired:
            os.killpg(proc.pid, signal.SIGKILL)
            proc.communicate()
            skip("chromium did not finish within 60 seconds")
        finally:
            try:
                os.killpg(proc.pid, signal.SIGKILL)
            except ProcessLookupError:
                pass
        return proc.returncode, output.decode(errors="replace")


def main():
    tool, resources, artefacts = sys.argv[1:4]
    browser = shutil.which("chromium") or shutil.which("chromium-browser")
    if browser is None:
        skip("chromium is not installed (scripts/setup installs it)")
    world = os.path.join(os.path.dirname(os.path.abspath(__file__)), "data", "report_world.json")
    folder = os.path.join(artefacts, "report")
    shutil.rmtree(folder, ignore_errors=True)
    page = os.path.join(folder, "report.html")
    rendered = subprocess.run([tool, "render", "--dump", world, "--instance", "0.1.30",
                               "--format", "html", "--zone", "0", "--images", folder,
                               "--resources", resources], capture_output=True, timeout=60)
    if rendered.returncode != 0:
        fail("render: %r" % rendered.stderr)
    with open(page, "wb") as f:
        f.write(rendered.stdout)

    picture = os.path.join(artefacts, "report.png")
    if os.path.exists(picture):
        os.unlink(picture)
    code, output = screenshot(browser, os.path.abspath(page), picture)
    if not os.path.exists(picture):
        skip("chromium can't run here (exit %d): %s" % (code, output.strip()[-300:]))

    with open(picture, "rb") as f:
        width, height, rows = decode_png(f.read())
    if (width, height) != (WIDTH, HEIGHT):
        fail("screenshot is %d x %d, not %d x %d" % (width, height, WIDTH, HEIGHT))
    colours = {p for row in rows for p in row}
    inked = sum(1 for row in rows for p in row if p != (255, 255, 255))
    # The title, the header's band, the lamps and the chart's filled areas
    # give many colours; a page that failed to load or lost its pictures
    # would be white or grey.
    if len(colours) < 64:
        fail("only %d colours: the page looks blank" % len(colours))
    if inked < width * height // 20:
        fail("only %d of %d pixels are not white" % (inked, width * height))
    # The chart's warning band is yellow (the palette's warning fill): it shows
    # that the chart picture was found and drawn.
    yellow = sum(1 for row in rows for (r, g, b) in row if r > 240 and g > 200 and b < 120)
    if yellow < 1000:
        fail("only %d yellow pixels: the chart is missing" % yellow)
    print("ok: %s, %d x %d, %d colours, %d inked pixels" % (picture, width, height,
                                                            len(colours), inked))


if __name__ == "__main__":
    main()
