"""tavrel-host run leaves nothing behind: after a normal run, a run whose
reporter is killed, a run whose reporter can't be started, and a host stopped
by SIGTERM or SIGINT, there is no FIFO or other file of the host in its
temporary directory, no new file in /dev/shm (the pool is an anonymous
memfd), and no process that the run started is still alive.

Processes of a run are found by a marker in their environment, which the host
passes on to its child.

usage: host_leak_test.py TAVREL_HOST QUEUE_CHILD
"""
import json
import os
import signal
import sys
import tempfile
import time
import unittest

from host_runs import HostRun, marked_processes, shm_entries

HOST, CHILD = sys.argv.pop(1), sys.argv.pop(1)
DEADLINE = 60  # a host run's, in seconds: a hang, not slowness
WORLD = {"config": {"mail_server": "mail.example:2525"},
         "objects": {"class": "Domain", "id": "0.1", "props": {"name": {"string": "root"}}}}


class HostLeaves(unittest.TestCase):
    def setUp(self):
        self.dir = tempfile.TemporaryDirectory(prefix="host_leak_test.")
        self.tmp = os.path.join(self.dir.name, "tmp")  # The host's TMPDIR, ours alone.
        os.mkdir(self.tmp)
        self.world = os.path.join(self.dir.name, "world.json")
        with open(self.world, "w") as f:
            json.dump(WORLD, f)
        self.shm_before = shm_entries()
        self.markers = []

    def tearDown(self):
        for marker in self.markers:
            for pid in marked_processes(marker):
                os.kill(pid, signal.SIGKILL)
        self.dir.cleanup()

    def start(self, reporter):
        """The host on the world with `reporter`; its processes carry the
        run's marker (self.marker)."""
        run = HostRun([HOST, "run", "--world", self.world, "--reporter", reporter,
                       "--until-idle", "1"], DEADLINE, env=dict(os.environ, TMPDIR=self.tmp),
                      name=self.id()).start()
        self.marker = run.marker
        self.markers.append(run.marker)
        return run

    def assert_nothing_left(self):
        # A process ends a moment after its last descriptor closed; give the
        # kernel that moment before calling a survivor a leak.
        deadline = time.monotonic() + 5
        while marked_processes(self.marker) and time.monotonic() < deadline:
            time.sleep(0.05)
        self.assertEqual([], marked_processes(self.marker), "processes left")
        left = []
        for root, dirs, files in os.walk(self.tmp):
            left += [os.path.join(root, n) for n in dirs + files]
        self.assertEqual([], left, "left in the host's temporary directory")
        self.assertEqual(set(), shm_entries() - self.shm_before, "new files in /dev/shm")

    def test_normal_run(self):
        done = self.start(CHILD).finish()
        err = done.stderr
        # The child's delete of a missing object fails, so it ends with 1.
        self.assertEqual(1, done.code, err)
        self.assertIn("reporter exited with 1", err)
        self.assert_nothing_left()

    def sleeper(self):
        """A reporter that never ends on its own (nor says a word, so the
        idle stop never comes): the queue test child is over too soon to be
        caught running."""
        path = os.path.join(self.dir.name, "sleeper")
        with open(path, "w") as f:
            f.write("#!/bin/sh\nexec sleep 600\n")
        os.chmod(path, 0o755)
        return path

    def running_reporter(self, host):
        """The pid of the reporter that `host` started, once it runs."""
        deadline = time.monotonic() + 30
        child = []
        while not child and time.monotonic() < deadline:
            # The host itself carries the marker too; the child is the other one.
            child = [p for p in marked_processes(self.marker) if p != host.proc.pid]
            time.sleep(0.01)
        self.assertEqual(1, len(child), "the reporter never started")
        # While it runs, the FIFOs are there: the checks afterwards can see them.
        self.assertNotEqual([], os.listdir(self.tmp))
        return child[0]

    def test_reporter_killed(self):
        host = self.start(self.sleeper())
        os.kill(self.running_reporter(host), signal.SIGKILL)
        self.assertIn("reporter exited with 137", host.finish().stderr)
        self.assert_nothing_left()

    def test_host_stopped_by_a_signal(self):
        for signo in (signal.SIGTERM, signal.SIGINT):
            host = self.start(self.sleeper())
            self.running_reporter(host)
            host.proc.send_signal(signo)
            done = host.finish()
            self.assertEqual(128 + signo, done.code, done.stderr)
            self.assertIn("stopped by signal %d" % signo, done.stderr)
            self.assert_nothing_left()

    def test_reporter_that_cannot_start(self):
        missing = os.path.join(self.dir.name, "no-such-reporter")
        done = self.start(missing).finish()
        self.assertEqual(2, done.code)
        self.assertIn("Cannot start " + missing, done.stderr)
        self.assert_nothing_left()


if __name__ == "__main__":
    unittest.main()
