"""Parses every mail in a Maildir with Python's email package under the
strict policy (any defect raises) and prints, per mail, its headers,
envelope recipients and the tree of its parts, one fact per line. Texts are
printed decoded by their charset, with LF line ends, by ascii(); every
leaf's decoded bytes are also written to OUTDIR/part0, part1, ..., and
the decoded Subject of the last mail, in UTF-8, to OUTDIR/subject.

Header lines longer than 78 characters are counted ("long header lines"),
leaving out the lines that the server adds (X-RcptTo, X-MailFrom, X-Peer),
the Date must parse and the Message-ID must have the form <left@right>.

usage: read_maildir.py MAILDIR OUTDIR
"""
import email
import email.policy
import email.utils
import mailbox
import os
import re
import sys

out_dir = sys.argv[2]
leaves = 0


def show(part, depth):
    global leaves
    pad = "  " * depth
    line = f"{pad}{part.get_content_type()}"
    for header in ("Content-ID", "Content-Transfer-Encoding", "Content-Disposition"):
        if part[header]:
            line += f" {header}={part[header]}"
    if part.get_param("charset"):
        line += f" charset={part.get_param('charset')}"
    print(line)
    if part.is_multipart():
        preamble = (part.preamble or "").replace("\r\n", "\n")
        print(f"{pad}  preamble {ascii(preamble)}")
        for sub in part.iter_parts():
            show(sub, depth + 1)
        return
    content = part.get_payload(decode=True)
    with open(os.path.join(out_dir, f"part{leaves}"), "wb") as f:
        f.write(content)
    leaves += 1
    if part.get_content_maintype() == "text":
        print(f"{pad}  {ascii(part.get_content().replace(chr(13) + chr(10), chr(10)))}")


def header_block(raw):
    return raw.split(b"\n\n", 1)[0].split(b"\r\n\r\n", 1)[0]


box = mailbox.Maildir(sys.argv[1], create=False)
for key in sorted(box.keys()):
    raw = box.get_bytes(key)
    message = email.message_from_bytes(raw, policy=email.policy.strict)
    for header in ("From", "To", "Subject", "X-Mailer", "X-RcptTo", "X-MailFrom"):
        print(f"{header}: {message[header]}")
    with open(os.path.join(out_dir, "subject"), "wb") as f:
        f.write(str(message["Subject"]).encode("utf-8"))
    long_lines = [l for l in header_block(raw).splitlines()
                  if len(l) > 78 and not l.startswith((b"X-RcptTo:", b"X-MailFrom:", b"X-Peer:"))]
    print(f"long header lines {len(long_lines)}")
    email.utils.parsedate_to_datetime(message["Date"])  # raises when it doesn't parse
    print(f"Message-ID ok {bool(re.fullmatch(r'<[^<>@ ]+@[^<>@ ]+>', str(message['Message-ID'])))}")
    print(f"defects {len(message.defects)}")
    show(message, 0)
