"""Parses every mail in a Maildir with Python's email package and prints,
per mail, its envelope and headers and the tree of its parts with their
decoded content, one fact per line.

usage: read_maildir.py MAILDIR
"""
import mailbox
import sys


def show(part, depth):
    pad = "  " * depth
    print(f"{pad}part {part.get_content_type()}"
          + (f" id={part['Content-ID']}" if part["Content-ID"] else ""))
    if part.is_multipart():
        for sub in part.get_payload():
            show(sub, depth + 1)
    else:
        content = part.get_payload(decode=True)
        print(f"{pad}  bytes={len(content)} content={content!r}")


for key, message in sorted(mailbox.Maildir(sys.argv[1], create=False).items()):
    print(f"from {message['From']}")
    print(f"to {message['To']}")
    print(f"subject {message['Subject']}")
    print(f"x-report {message['X-Report']}")
    print(f"defects {len(message.defects)}")
    show(message, 0)
