"""The common part of the test SMTP servers: a free port on 127.0.0.1, the
aiosmtpd controller started on it, the port written to WORKDIR/port (by
way of a temporary file, so that a reader never sees half of it), and then
nothing until the process is killed."""
import os
import socket
import time


def serve(work, make_controller):
    """Runs the controller that make_controller(port) gives."""
    probe = socket.socket()
    probe.bind(("127.0.0.1", 0))
    port = probe.getsockname()[1]
    probe.close()
    make_controller(port).start()
    with open(os.path.join(work, "port.tmp"), "w") as f:
        f.write(str(port))
    os.rename(os.path.join(work, "port.tmp"), os.path.join(work, "port"))
    while True:
        time.sleep(1)
