"""Reads the one mail of a Maildir as a report mail and prints what a test
checks, one fact per line: headers, the tree of parts with their content
ids, the cid: references of the HTML in order of first use, and for each
picture whether it decodes: a PNG must have its signature, chunks with good
CRCs from IHDR to IEND and IDAT data that inflates (png_check.py); a GIF
its header.
The decoded text and HTML parts are written to OUTDIR/text and OUTDIR/html.

usage: read_report_mail.py MAILDIR OUTDIR
"""
import mailbox
import os
import re
import sys

from png_check import png_problem

out_dir = sys.argv[2]


def check_png(data):
    problem, size = png_problem(data)
    return problem if problem else f"ok {size[0]} x {size[1]}"


def show(part, depth):
    line = "  " * depth + part.get_content_type()
    if part["Content-ID"]:
        line += " " + part["Content-ID"]
    print(line)
    if part.is_multipart():
        for sub in part.get_payload():
            show(sub, depth + 1)


mails = list(mailbox.Maildir(sys.argv[1], create=False))
print(f"mails {len(mails)}")
message = mails[0]
for header in ("From", "To", "Subject", "X-RcptTo"):
    print(f"{header}: {message[header]}")
print(f"defects {len(message.defects)}")
show(message, 0)
html = ""
for part in message.walk():
    if part.is_multipart():
        continue
    data = part.get_payload(decode=True)
    kind = part.get_content_type()
    if kind == "text/plain":
        open(os.path.join(out_dir, "text"), "wb").write(data)
    elif kind == "text/html":
        open(os.path.join(out_dir, "html"), "wb").write(data)
        html = data.decode("latin-1")
    elif kind == "image/png":
        print(f"png {part['Content-ID']} {check_png(data)}")
    elif kind == "image/gif":
        print(f"gif {part['Content-ID']} {'ok' if data[:6] in (b'GIF87a', b'GIF89a') else 'bad'}")
refs = []
for ref in re.findall(r'src="cid:([^"]*)"', html):
    if ref not in refs:
        refs.append(ref)
print("html refers to " + " ".join(refs))
