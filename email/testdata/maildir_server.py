"""A real SMTP server (aiosmtpd) on 127.0.0.1 that delivers into a Maildir.

usage: maildir_server.py WORKDIR
Mail goes to WORKDIR/maildir; the port is written to WORKDIR/port once the
server takes connections. Runs until it is killed.
"""
import os
import socket
import sys
import time

from aiosmtpd.controller import Controller
from aiosmtpd.handlers import Mailbox

work = sys.argv[1]
probe = socket.socket()
probe.bind(("127.0.0.1", 0))
port = probe.getsockname()[1]
probe.close()

controller = Controller(Mailbox(os.path.join(work, "maildir")), hostname="127.0.0.1", port=port)
controller.start()
with open(os.path.join(work, "port.tmp"), "w") as f:
    f.write(str(port))
os.rename(os.path.join(work, "port.tmp"), os.path.join(work, "port"))
while True:
    time.sleep(1)
