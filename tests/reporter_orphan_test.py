"""tavrel-report ends when its parent dies: tavrel-host is killed by SIGKILL
while the reporter is idle, in a generation, and in a mailing to a server
that accepts the connection and never answers. Each time the reporter must
be gone within 20 s (the time it took is printed), must have ended in order
(its own FIFO removed: a process killed by a signal leaves it), and nothing
may be new in /dev/shm. The killed host can't remove its own FIFO
directory; that is all that may be left in the run's TMPDIR.

usage: reporter_orphan_test.py TAVREL_HOST TAVREL_REPORT RESOURCE_DIR
"""
import json
import os
import re
import signal
import subprocess
import sys
import tempfile
import time
import unittest

from acceptance_worlds import report, world
from host_runs import HostRun, marked_processes, shm_entries, wait_until_gone
from ports import free_port

HOST, REPORTER, RESOURCES = sys.argv.pop(1), sys.argv.pop(1), sys.argv.pop(1)
DEADLINE = 180    # the host run's, in seconds: a hang, not slowness
GONE_WITHIN = 20  # seconds for the reporter to end after the host was killed
REPORTER_ID = 12

# Accepts connections on the port and never answers; makes the file
# ARGV[2] + ".listening" when it listens, ARGV[2] when a connection came.
SILENT_SERVER = """
import socket, sys
s = socket.socket()
s.setsockopt(socket.SOL_SOCKET, socket.SO_REUSEADDR, 1)
s.bind(("127.0.0.1", int(sys.argv[1])))
s.listen(5)
open(sys.argv[2] + ".listening", "w").close()
held = []
while True:
    c, _ = s.accept()
    held.append(c)
    with open(sys.argv[2], "w") as f:
        f.write("accepted")
"""


def wait_for(what, cond, seconds=120):
    deadline = time.monotonic() + seconds
    while not cond():
        if time.monotonic() > deadline:
            raise AssertionError("waited %d s for %s" % (seconds, what))
        time.sleep(0.02)


class ReporterOutlivesNoParent(unittest.TestCase):
    def setUp(self):
        self.dir = tempfile.TemporaryDirectory(prefix="reporter_orphan_test.")
        self.tmp = os.path.join(self.dir.name, "tmp")  # The host's TMPDIR, ours alone.
        os.mkdir(self.tmp)
        self.log = os.path.join(self.dir.name, "host.log")
        self.shm_before = shm_entries()
        self.run_ = None
        self.server = None

    def tearDown(self):
        if self.run_:
            for pid in marked_processes(self.run_.marker):
                os.kill(pid, signal.SIGKILL)
            self.run_.finish()
        if self.server:
            self.server.kill()
            self.server.wait()
        self.dir.cleanup()

    def start(self, w, *extra, on_line=None):
        path = os.path.join(self.dir.name, "world.json")
        with open(path, "w") as f:
            json.dump(w, f)
        self.run_ = HostRun([HOST, "run", "--world", path, "--reporter", REPORTER, "--log", self.log,
                             "--eval-scale", "0.01", "--progress"] + list(extra), DEADLINE,
                            env=dict(os.environ, TMPDIR=self.tmp, TZ="UTC"), log_file=self.log,
                            name=self.id(), on_line=on_line).start()
        return self.run_

    def reporter_pid(self):
        pids = [p for p in marked_processes(self.run_.marker) if p != self.run_.proc.pid]
        return pids[0] if len(pids) == 1 else None

    def log_has(self, pattern):
        try:
            with open(self.log) as f:
                return re.search(pattern, f.read(), re.M) is not None
        except OSError:
            return False

    def kill_host_and_check(self, while_what):
        reporter = self.reporter_pid()
        self.assertIsNotNone(reporter, "no reporter running " + while_what)
        fifos = [os.path.join(r, n) for r, _, names in os.walk(self.tmp) for n in names]
        own = [f for f in fifos if f.endswith("." + str(REPORTER_ID))]
        self.assertEqual(1, len(own), "the reporter's FIFO among %r" % fifos)
        self.run_.proc.kill()
        self.run_.proc.wait()
        took = wait_until_gone([reporter], GONE_WITHIN,
                               "the reporter after its host was killed " + while_what)
        print("%s: the reporter ended %.2f s after its host was killed"
              % (while_what, took), flush=True)
        done = self.run_.finish()
        self.assertFalse(os.path.exists(own[0]), "the reporter's FIFO is left: it did not end "
                         "in order; stderr %r" % done.stderr[-2000:])
        self.assertNotIn("Sanitizer", done.stderr)
        self.assertNotIn("Assertion failed", done.stderr)
        left = [os.path.join(r, n) for r, _, names in os.walk(self.tmp) for n in names]
        self.assertEqual([], [f for f in left if f not in fifos], "new files in TMPDIR")
        self.assertEqual(set(), shm_entries() - self.shm_before, "new files in /dev/shm")
        return done

    def test_idle(self):
        self.start(world(RESOURCES, reports=[report("0.1.90", "R")]))
        # The order was carried out and the subscription acknowledged since.
        wait_for("the order's generation and an idle reporter",
                 lambda: self.log_has(r"^\S+ \S+ delete: rept \S+ status 0$"))
        time.sleep(1)  # Whatever followed the order has passed; the reporter waits.
        self.kill_host_and_check("while idle")

    def test_in_a_generation(self):
        started = []

        def at_first_steps(run, line):
            m = re.match(r"progress: \S+ (\d+)% R$", line.strip())
            if m and int(m.group(1)) < 50:
                started.append(int(m.group(1)))
        self.start(world(RESOURCES, nodes=250, reports=[report("0.1.90", "R")]),
                   on_line=at_first_steps)
        wait_for("a generation under way", lambda: started)
        done = self.kill_host_and_check("in a generation at %d %%" % started[0])
        # The dialog under way lost its peer.
        self.assertIn("Caught: ", done.stderr)

    def test_in_a_mailing(self):
        port = free_port()
        accepted = os.path.join(self.dir.name, "accepted")
        self.server = subprocess.Popen(["/usr/bin/python3", "-c", SILENT_SERVER, str(port), accepted])
        wait_for("the silent mail server", lambda: self.listening(accepted), 60)
        self.start(world(RESOURCES, reports=[report("0.1.90", "R", destination="ops@example.test")],
                         mail_server="127.0.0.1:%d" % port))
        wait_for("the reporter's mail connection", lambda: os.path.exists(accepted))
        self.kill_host_and_check("in a mailing")
        self.server.kill()
        self.server.wait()
        self.assertFalse(os.path.exists("/proc/%d" % self.server.pid), "mail server left")
        self.server = None

    def listening(self, accepted):
        if self.server.poll() is not None:
            raise AssertionError("the mail server ended with %d" % self.server.returncode)
        return os.path.exists(accepted + ".listening")


if __name__ == "__main__":
    unittest.main()
