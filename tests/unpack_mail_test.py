"""scripts/unpack-mail on hand-made report mails: a multipart/related message
of the product's shape (alternative text and HTML, quoted-printable in
iso-8859-1, base64 pictures with content ids, one named by filename and one
by content id alone) in a Maildir, a second mail of the same report, a
mail without HTML, a Subject in encoded words, a mail that the strict
parser refuses, and with --tidy an HTML part with a tidy error.

usage: unpack_mail_test.py UNPACK_MAIL
"""
import base64
import os
import subprocess
import sys
import tempfile

from checklist import check, finish

script = sys.argv[1]


LAMP = b"\x89PNG\r\n\x1a\n lamp bytes"
CHART = b"\x89PNG\r\n\x1a\n chart bytes \x00\xff"


def b64(data):
    return base64.encodebytes(data).decode().replace("\n", "\r\n")


HTML = ('<!DOCTYPE HTML PUBLIC \'-//W3C//DTD HTML 4.01 Transitional//EN\'>\r\n'
        '<html><head><title>T</title></head><body>T=E6ller <img src=3D"cid:ok_lamp" border=3D\'0\' '
        'alt=3D"OK">=\r\n<img src=3D"cid:chart0" alt=3D"c"> <img src=3D"cid:missing" alt=3D"m">'
        '</body></html>\r\n')


def report_mail(subject, html=HTML, stamp="Date: Tue, 24 Nov 2026 04:59:00 +0000\r\n"
                                           "Message-ID: <1@example.test>\r\n"):
    return ("From: reports@example.test\r\n"
            "To: ops@example.test\r\n"
            "Subject: " + subject + "\r\n" + stamp +
            "MIME-Version: 1.0\r\n"
            'Content-Type: multipart/related; boundary="rel"\r\n'
            "\r\n"
            "--rel\r\n"
            'Content-Type: multipart/alternative; boundary="alt"\r\n'
            "\r\n"
            "--alt\r\n"
            'Content-Type: text/plain; charset="iso-8859-1"\r\n'
            "Content-Transfer-Encoding: quoted-printable\r\n"
            "\r\n"
            "T=E6ller: 99.5 %\r\n"
            "--alt\r\n"
            'Content-Type: text/html; charset="iso-8859-1"\r\n'
            "Content-Transfer-Encoding: quoted-printable\r\n"
            "\r\n" + html +
            "--alt--\r\n"
            "--rel\r\n"
            "Content-Type: image/png\r\n"
            "Content-Transfer-Encoding: base64\r\n"
            "Content-ID: <ok_lamp>\r\n"
            "Content-Disposition: attachment;\r\n"
            '\tfilename="ok_lamp.png"\r\n'
            "\r\n" + b64(LAMP) +
            "--rel\r\n"
            "Content-Type: image/png\r\n"
            "Content-Transfer-Encoding: base64\r\n"
            "Content-ID: <chart0>\r\n"
            "\r\n" + b64(CHART) +
            "--rel--\r\n").encode("ascii")


with tempfile.TemporaryDirectory() as d:
    maildir = os.path.join(d, "maildir")
    for sub in ("new", "cur", "tmp"):
        os.makedirs(os.path.join(maildir, sub))
    with open(os.path.join(maildir, "new", "1.mail"), "wb") as f:
        f.write(report_mail("Tavrel report - Weekly / web"))
    with open(os.path.join(maildir, "new", "2.mail"), "wb") as f:
        f.write(report_mail("Tavrel report - Weekly / web"))
    out = os.path.join(d, "out")
    run = subprocess.run([sys.executable, script, "--out", out, maildir],
                         capture_output=True, text=True, timeout=60)
    check(run.returncode == 0, "exit %d: %s" % (run.returncode, run.stderr))
    folder = os.path.join(out, "Weekly _ web")
    check(sorted(os.listdir(out)) == ["Weekly _ web", "Weekly _ web (2)"],
          "folders: %r" % (os.listdir(out) if os.path.isdir(out) else None))
    if os.path.isdir(folder):
        check(sorted(os.listdir(folder)) == ["chart0.png", "ok_lamp.png", "report.html",
                                             "report.txt"], "files: %r" % os.listdir(folder))
        html = open(os.path.join(folder, "report.html"), "rb").read()
        check(b'<img src="ok_lamp.png" border=\'0\' alt="OK">' in html, "lamp link: %r" % html)
        check(b'<img src="chart0.png" alt="c">' in html, "chart link: %r" % html)
        check(b'src="cid:missing"' in html, "a link without part stays: %r" % html)
        check(b"T\xe6ller" in html, "HTML keeps its iso-8859-1 bytes: %r" % html)
        text = open(os.path.join(folder, "report.txt"), "rb").read()
        # The line end before a boundary belongs to the boundary.
        check(text == b"T\xe6ller: 99.5 %", "text: %r" % text)
        check(open(os.path.join(folder, "ok_lamp.png"), "rb").read() == LAMP, "lamp bytes")
        check(open(os.path.join(folder, "chart0.png"), "rb").read() == CHART, "chart bytes")
    check(run.stdout.count("report.html") == 2 and "(2 pictures)" in run.stdout,
          "summary lines: %r" % run.stdout)

    # A mail without HTML: its text is still unpacked, and the exit code says so.
    plain = os.path.join(d, "plain.mail")
    with open(plain, "wb") as f:
        f.write(b"Subject: Tavrel report - Plain\r\nContent-Type: text/plain\r\n\r\nhello\r\n")
    run = subprocess.run([sys.executable, script, "--out", out, plain, os.path.join(d, "nope")],
                         capture_output=True, text=True, timeout=60)
    check(run.returncode == 1, "exit without HTML: %d" % run.returncode)
    check("no text/html part" in run.stderr and "nope: no such file" in run.stderr,
          "complaints: %r" % run.stderr)
    check(open(os.path.join(out, "Plain", "report.txt"), "rb").read().rstrip() == b"hello",
          "plain text unpacked")

    # The folder is named by the decoded Subject; the page passes tidy.
    foreign = os.path.join(d, "foreign.mail")
    with open(foreign, "wb") as f:
        f.write(report_mail("=?UTF-8?B?VGF2cmVsIHJlcG9ydCAtIMOGcsO4?="))
    run = subprocess.run([sys.executable, script, "--tidy", "--out", out, foreign],
                         capture_output=True, text=True, timeout=60)
    check(run.returncode == 0, "exit with a good mail and --tidy: %d: %s" % (run.returncode, run.stderr))
    check(os.path.isdir(os.path.join(out, "\u00c6r\u00f8")), "decoded folder: %r" % os.listdir(out))

    # No Date, a part without its closing boundary, an unknown element.
    bad = {"undated": report_mail("Tavrel report - Undated", stamp=""),
           "cut": report_mail("Tavrel report - Cut").rsplit(b"--rel--", 1)[0],
           "untidy": report_mail("Tavrel report - Untidy", html=HTML.replace("<body>", "<body><blonk>"))}
    for name, mail in bad.items():
        path = os.path.join(d, name + ".mail")
        with open(path, "wb") as f:
            f.write(mail)
        run = subprocess.run([sys.executable, script, "--tidy", "--out", out, path],
                             capture_output=True, text=True, timeout=60)
        check(run.returncode == 1, "exit with the %s mail: %d" % (name, run.returncode))
        want = {"undated": "no Date", "cut": "refused by the strict parser",
                "untidy": "tidy errors"}[name]
        check(want in run.stderr, "%s mail: %r" % (name, run.stderr))

finish()
