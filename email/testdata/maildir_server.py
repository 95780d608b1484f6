"""A real SMTP server (aiosmtpd) on 127.0.0.1 that delivers into a Maildir.

usage: maildir_server.py WORKDIR
Mail goes to WORKDIR/maildir; the port is written to WORKDIR/port once the
server takes connections. Runs until it is killed.
"""
import os
import sys

from aiosmtpd.controller import Controller
from aiosmtpd.handlers import Mailbox

from serve import serve

work = sys.argv[1]
serve(work, lambda port: Controller(Mailbox(os.path.join(work, "maildir")), hostname="127.0.0.1",
                                    port=port))
