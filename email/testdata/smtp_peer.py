"""A scripted SMTP peer for failure-path tests: serves one connection on
127.0.0.1 by a script of steps, records what it received, and exits.

usage: smtp_peer.py WORKDIR
WORKDIR/script holds one step per line:
  send TEXT    send TEXT (\\r and \\n escapes allowed)
  recv         read one line
  data         read up to and including the line "."
  close        close the connection
  hang         keep the connection open, say nothing, until killed
The peer writes its port to WORKDIR/port (via a temporary file, so that a
reader never sees half of it) and everything it received to WORKDIR/received.
"""
import os
import socket
import sys
import time

work = sys.argv[1]
steps = [l.rstrip("\n") for l in open(os.path.join(work, "script"))]

server = socket.socket(socket.AF_INET, socket.SOCK_STREAM)
server.setsockopt(socket.SOL_SOCKET, socket.SO_REUSEADDR, 1)
server.bind(("127.0.0.1", 0))
server.listen(1)
with open(os.path.join(work, "port.tmp"), "w") as f:
    f.write(str(server.getsockname()[1]))
os.rename(os.path.join(work, "port.tmp"), os.path.join(work, "port"))

server.settimeout(60)
conn, _ = server.accept()
conn.settimeout(60)
reader = conn.makefile("rb")
received = open(os.path.join(work, "received"), "wb")


def readline():
    line = reader.readline()
    received.write(line)
    received.flush()
    return line


for step in steps:
    verb, _, arg = step.partition(" ")
    if verb == "send":
        conn.sendall(arg.replace("\\r", "\r").replace("\\n", "\n").encode("latin-1"))
    elif verb == "recv":
        readline()
    elif verb == "data":
        while readline() not in (b".\r\n", b""):
            pass
    elif verb == "close":
        conn.close()
        break
    elif verb == "hang":
        time.sleep(3600)
received.close()
