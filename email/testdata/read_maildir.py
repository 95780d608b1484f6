"""Parses every mail in a Maildir with Python's email package and prints,
per mail, its headers, envelope recipients and the tree of its parts, one
fact per line. Texts are printed decoded, with LF line ends, by ascii();
every leaf's decoded bytes are also written to OUTDIR/part0, part1, ...

usage: read_maildir.py MAILDIR OUTDIR
"""
import mailbox
import os
import sys

out_dir = sys.argv[2]
leaves = 0


def show(part, depth):
    global leaves
    pad = "  " * depth
    line = f"{pad}{part.get_content_type()}"
    for header in ("Content-ID", "Content-Transfer-Encoding"):
        if part[header]:
            line += f" {header}={part[header]}"
    if part.get_param("charset"):
        line += f" charset={part.get_param('charset')}"
    print(line)
    if part.is_multipart():
        preamble = (part.preamble or "").replace("\r\n", "\n")
        print(f"{pad}  preamble {ascii(preamble)}")
        for sub in part.get_payload():
            show(sub, depth + 1)
        return
    content = part.get_payload(decode=True)
    with open(os.path.join(out_dir, f"part{leaves}"), "wb") as f:
        f.write(content)
    leaves += 1
    if part.get_content_maintype() == "text":
        text = content.replace(b"\r\n", b"\n").decode("latin-1")
        print(f"{pad}  {ascii(text)}")


for key, message in sorted(mailbox.Maildir(sys.argv[1], create=False).items()):
    for header in ("From", "To", "Subject", "X-Mailer", "X-RcptTo", "X-MailFrom"):
        print(f"{header}: {message[header]}")
    print(f"defects {len(message.defects)}")
    show(message, 0)
