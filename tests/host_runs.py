"""Runs of tavrel-host for the end-to-end tests, each under a deadline of its
own, so that a hang shows what hung instead of running into CTest's time-out
without a word.

    done = run_host([host, "run", ...], deadline=120, env=env, log_file=log)
    done.code, done.stdout, done.stderr

Every run carries a marker in its environment, which the host passes on to
its child, so the processes of the run are found in /proc whatever their
parent is. When the deadline passes, the run prints (flushed at once) a line
that begins with HANG_MARK and names the case, the tail of the host's log,
and each process of the run still alive (state, wait channel, kernel stack,
descriptors, and a gdb backtrace where gdb is installed); then it kills those
processes by pid and raises HostHang. Deadlines are generous: they catch
hangs, they measure nothing.
"""
import itertools
import os
import shutil
import signal
import subprocess
import sys
import threading
import time

import cases

HANG_MARK = "HOST RUN HANG:"
MARKER_KEY = "TAVREL_TEST_RUN"
_serial = itertools.count(1)


class HostHang(Exception):
    """A host run passed its deadline; the details have been printed."""


def shm_entries():
    """The names in /dev/shm, to find what a run left there."""
    return set(os.listdir("/dev/shm")) if os.path.isdir("/dev/shm") else set()


def marked_processes(marker):
    """The pids of live processes (not zombies) whose environment holds
    `marker` ("KEY=VALUE")."""
    found = []
    for pid in filter(str.isdigit, os.listdir("/proc")):
        try:
            with open("/proc/%s/environ" % pid, "rb") as f:
                if marker.encode() in f.read().split(b"\0"):
                    with open("/proc/%s/stat" % pid) as s:
                        if s.read().rsplit(")", 1)[1].split()[0] != "Z":
                            found.append(int(pid))
        except OSError:
            pass  # Gone meanwhile, or not ours to read.
    return found


def wait_until_gone(pids, seconds, what):
    """Waits until none of `pids` is alive (or a zombie only); returns the
    seconds it took. Raises AssertionError naming `what` after `seconds`."""
    start = time.monotonic()
    while True:
        alive = [p for p in pids if _alive(p)]
        if not alive:
            return time.monotonic() - start
        if time.monotonic() - start > seconds:
            raise AssertionError("%s: still alive after %d s: %s"
                                 % (what, seconds, ", ".join(_describe_short(p) for p in alive)))
        time.sleep(0.05)


def _alive(pid):
    try:
        with open("/proc/%d/stat" % pid) as s:
            return s.read().rsplit(")", 1)[1].split()[0] != "Z"
    except OSError:
        return False


def _read(path, limit=4000):
    try:
        with open(path, errors="replace") as f:
            return f.read()[:limit].strip()
    except OSError as e:
        return "(%s)" % e.strerror


def _describe_short(pid):
    stat = _read("/proc/%d/stat" % pid)
    name = stat[stat.find("(") + 1:stat.rfind(")")]
    state = stat.rsplit(")", 1)[1].split()[:2] if ")" in stat else ["?", "?"]
    return "%d %s state %s parent %s" % (pid, name, state[0], state[1])


def describe_process(pid):
    """What a hung process is doing, as lines of text."""
    lines = ["process " + _describe_short(pid),
             "  cmdline: " + _read("/proc/%d/cmdline" % pid).replace("\0", " "),
             "  wchan: " + _read("/proc/%d/wchan" % pid)]
    lines += ["  stack: " + l for l in _read("/proc/%d/stack" % pid).splitlines()]
    try:
        fd_dir = "/proc/%d/fd" % pid
        for fd in sorted(os.listdir(fd_dir), key=int):
            try:
                lines.append("  fd %s -> %s" % (fd, os.readlink(os.path.join(fd_dir, fd))))
            except OSError:
                pass
    except OSError as e:
        lines.append("  fds: (%s)" % e.strerror)
    gdb = shutil.which("gdb")
    if gdb:
        try:
            bt = subprocess.run([gdb, "-p", str(pid), "-batch", "-nx", "-ex", "thread apply all bt"],
                                capture_output=True, text=True, timeout=120).stdout
            lines += ["  gdb: " + l for l in bt.splitlines() if l.startswith(("#", "Thread"))]
        except (subprocess.TimeoutExpired, OSError) as e:
            lines.append("  gdb: %r" % e)
    return lines


def _log_tail(log_file, n=40):
    if not log_file:
        return ["(no log file)"]
    try:
        with open(log_file, errors="replace") as f:
            return f.read().splitlines()[-n:]
    except OSError as e:
        return ["(no log: %s)" % e.strerror]


class Completed:
    """What a finished run gives back."""

    def __init__(self, code, stdout, stderr, stdout_bytes=b"", stderr_bytes=b""):
        self.code, self.returncode = code, code
        self.stdout, self.stderr = stdout, stderr
        # The same as sent, for output compared byte for byte.
        self.stdout_bytes, self.stderr_bytes = stdout_bytes, stderr_bytes


class HostRun:
    """A running host: `start` it, then `finish`. `on_line(run, line)` sees
    each line of standard output as it comes (on a reader thread); `proc` is
    the Popen object and `marker` the run's "KEY=VALUE" marker."""

    def __init__(self, args, deadline, env=None, log_file=None, name=None, on_line=None):
        self.args, self.deadline, self.log_file = list(args), deadline, log_file
        self.name = name or cases.current or os.path.basename(sys.argv[0])
        self.on_line = on_line
        value = "%d.%d" % (os.getpid(), next(_serial))
        self.marker = "%s=%s" % (MARKER_KEY, value)
        self.env = dict(env if env is not None else os.environ, **{MARKER_KEY: value})

    def start(self):
        self.started = time.monotonic()
        self.proc = subprocess.Popen(self.args, stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                                     env=self.env)
        self._out, self._err, self._raw = [], [], []
        self._readers = [threading.Thread(target=self._read_out),
                         threading.Thread(target=lambda: self._err.append(self.proc.stderr.read()))]
        for t in self._readers:
            t.start()
        return self

    def _read_out(self):
        for raw in self.proc.stdout:
            self._raw.append(raw)
            line = raw.decode("utf-8", "replace")
            self._out.append(line)
            if self.on_line:
                try:
                    self.on_line(self, line)
                except Exception as e:  # Noted; the run goes on to its end.
                    self._out.append("on_line raised %r\n" % e)

    def finish(self):
        """Waits for the host until the deadline; returns a Completed, or
        reports the hang, kills the run's processes and raises HostHang."""
        left = self.deadline - (time.monotonic() - self.started)
        try:
            code = self.proc.wait(timeout=max(0.1, left))
        except subprocess.TimeoutExpired:
            self._hang()
        self._join_readers()
        raw_err = self._err[0] if self._err else b""
        return Completed(code, "".join(self._out), raw_err.decode("utf-8", "replace"),
                         b"".join(self._raw), raw_err)

    def _join_readers(self):
        for t in self._readers:
            t.join()
        self.proc.stdout.close()
        self.proc.stderr.close()

    def _hang(self):
        alive = marked_processes(self.marker)
        report = ["%s %s: still running after %d s: %s"
                  % (HANG_MARK, self.name, self.deadline, " ".join(self.args))]
        report += ["log tail: " + l for l in _log_tail(self.log_file)]
        report += ["stdout tail: " + l.rstrip("\n") for l in self._out[-10:]]
        for pid in alive:
            report += describe_process(pid)
        print("\n".join(report), flush=True)
        for pid in alive:
            try:
                os.kill(pid, signal.SIGKILL)
            except ProcessLookupError:
                pass
        self.proc.wait()
        self._join_readers()
        raise HostHang("%s: %s passed its deadline of %d s"
                       % (self.name, os.path.basename(self.args[0]), self.deadline))


def run_host(args, deadline, env=None, log_file=None, name=None, on_line=None):
    """Runs the host to its end under `deadline` seconds; see HostRun."""
    return HostRun(args, deadline, env, log_file, name, on_line).start().finish()
