"""Robustness of the whole road, black-box: tavrel-report under tavrel-host on
worlds built from tests/worlds/acceptance.json, each case with a fault from
outside the reporter:

- the reporter killed (SIGKILL) in the middle of a generation: the host
  still dumps, and a second run on the dump deletes the orphan instance and
  carries the order out;
- the database process gone in the middle of a generation (the world's
  `faults.vanish_after`): the reporter ends with 1 and "Caught: ";
- no mail server on the configured port: an incident in the report's
  history, and the next report of the run is still generated;
- a damaged `unit` blob on a check: the analysis fails with its incident,
  the instance is finished, and the next report is generated and mailed;
- a bad markup text: the rendered report shows the parse error in its place;
- SYS_EXIT while a generation runs (`--stop-after`): taken only after the
  generation and its mail, exit 0.

usage: acceptance_test.py TAVREL_HOST TAVREL_REPORT TAVREL_TOOL RESOURCE_DIR
"""
import json
import os
import re
import signal
import socket
import subprocess
import sys
import tempfile
import threading

import acceptance_worlds
from acceptance_worlds import W, report
from cases import case, finish
from dump import value
from host_runs import run_host
from ports import free_port
from run_results import RunResults, clean

host, reporter, tool, resources = sys.argv[1:5]


def world(**options):
    return acceptance_worlds.world(resources, **options)


# A case's host run under ASan takes up to about 40 s on the shared machine.
DEADLINE = 240


class Run(RunResults):
    """One host run on `w` (a world, or a file name); `on_progress(host, line)`
    sees each --progress line as it comes (`host.proc` is the host's Popen).
    Keeps the exit code, standard error, the log lines without date and
    clock, and the dump."""

    def __init__(self, w, *extra, on_progress=None):
        with tempfile.TemporaryDirectory() as d:
            world_file = os.path.join(d, "world.json")
            with open(world_file, "w") as f:
                json.dump(w, f)
            log_file, dump_file = os.path.join(d, "host.log"), os.path.join(d, "dump.json")
            env = dict(os.environ, TMPDIR=d, TZ="UTC")
            done = run_host(
                [host, "run", "--world", world_file, "--reporter", reporter, "--eval-scale", "0.01",
                 "--log", log_file, "--dump", dump_file, "--progress"] + list(extra),
                DEADLINE, env=env, log_file=log_file, on_line=on_progress)
            self.code, self.stderr = done.code, done.stderr
            self.progress = done.stdout.splitlines()
            self.read_results(d, log_file, dump_file)


def finished(instance):
    p = instance["props"]
    return value(p["workerNode"]) == 0 and value(p["progress"]) == 100


def served(run, check, rid, done=True, number=1):
    """The report has one finished instance and no order left; with `done`,
    generation `number` is done by its incidents."""
    instances = run.children(rid, "ReportInstance")
    check(len(instances) == 1 and finished(instances[0]), "%s: instances %r" % (rid, instances))
    check(run.children(rid, "ReportOrder") == [], "%s: order left" % rid)
    if done:
        check(("Generation of report number %d done." % number in [m for _, m in run.incidents(rid)]),
              "%s: incidents %r" % (rid, run.incidents(rid)))


class MailServer:
    """An SMTP server in this process (aiosmtpd's thread) that keeps each
    message's recipients and bytes."""

    def __enter__(self):
        from aiosmtpd.controller import Controller
        outer = self
        self.mails = []

        class Keep:
            async def handle_DATA(self, server, session, envelope):
                outer.mails.append((envelope.rcpt_tos, envelope.content))
                return "250 OK"
        self.port = free_port()
        self.controller = Controller(Keep(), hostname="127.0.0.1", port=self.port)
        self.controller.start()
        return self

    def __exit__(self, *exc):
        self.controller.stop()


MANY = 250  # nodes of a long generation: some seconds of work


def reporter_pid(host_pid):
    """The reporter, the host's one child, found through /proc."""
    with open("/proc/%d/task/%d/children" % (host_pid, host_pid)) as f:
        pids = [int(p) for p in f.read().split()]
    for pid in pids:
        with open("/proc/%d/cmdline" % pid, "rb") as f:
            if os.path.basename(f.read().split(b"\0")[0]) == b"tavrel-report":
                return pid
    return None


@case("a reporter killed mid-generation: the host dumps; the next run drops the orphan and serves the order")
def restart_case(check):
    killed = []

    def kill_at_first_step(host_run, line):
        # The instance starts at 1 %; at 5 % some nodes are done and the
        # report's number is written.
        m = re.match(r"progress: \S+ (\d+)% R$", line.strip())
        if not killed and m and 5 <= int(m.group(1)) < 50:
            pid = reporter_pid(host_run.proc.pid)
            if pid:
                os.kill(pid, signal.SIGKILL)
                killed.append(pid)
    first = Run(world(nodes=MANY, reports=[report("0.1.90", "R")]), "--until-idle", "1",
                on_progress=kill_at_first_step)
    check(killed, "never killed; progress %r" % first.progress[-3:])
    check(first.code == 128 + signal.SIGKILL, "exit code %d, stderr %r" % (first.code, first.stderr))
    clean(first, check)
    orphans = first.children("0.1.90", "ReportInstance")
    check(len(orphans) == 1 and value(orphans[0]["props"]["workerNode"]) == 1,
          "orphan %r" % orphans)
    check(len(first.children("0.1.90", "ReportOrder")) == 1, "order gone with the kill")
    if not orphans:
        return

    second = Run(first.dump, "--until-idle", "1")
    check(second.code == 0, "second run: exit code %d, stderr %r" % (second.code, second.stderr))
    clean(second, check)
    check("trace: Deleting partially generated report" in second.lines, "no deletion traced")
    check("delete: rept %s status 0" % orphans[0]["id"] in second.lines,
          "orphan not deleted: %r" % second.having("delete: "))
    # The killed generation had number 1; the order's generation is the second.
    served(second, check, "0.1.90", number=2)
    instances = second.children("0.1.90", "ReportInstance")
    check(instances and value(instances[0]["props"]["orderTime"]) == W, "order time %r" % instances)


@case("the database gone mid-generation: the reporter ends with 1 and Caught")
def database_gone_case(check):
    run = Run(world(nodes=20, reports=[report("0.1.90", "R")], faults={"vanish_after": 80}),
              "--until-idle", "1")
    check(run.code == 1, "exit code %d" % run.code)
    # The dialog that waits finds the end of the stream; the failure handler's
    # incident then can't be written either, and that ends the process.
    check(re.search(r"^Caught: (Peer DBMS returned EOS when waiting for dbms::\w+|"
                    r"EOS from SiblingOStream\[2\] \(Write to failed process\))$", run.stderr, re.M),
          "stderr %r" % run.stderr)
    clean(run, check)
    gone = "database: gone after 80 requests"
    check(gone in run.lines, "not gone: %r" % run.lines[-5:])
    # It went while the instance was being generated.
    check(any(l.startswith("create: rept") for l in run.lines[:run.lines.index(gone)]
              if gone in run.lines), "gone before the generation began")
    instances = run.children("0.1.90", "ReportInstance")
    check(len(instances) == 1 and value(instances[0]["props"]["workerNode"]) == 1,
          "instance %r" % instances)
    check(run.dump["faults"] == {"vanish_after": 80}, "faults dumped %r" % run.dump.get("faults"))


@case("no mail server: an incident, no crash, and the next report is generated")
def mail_down_case(check):
    port = free_port()
    run = Run(world(reports=[report("0.1.90", "R1", destination="ops@example.test"),
                             report("0.1.95", "R2", destination="cto@example.test")],
                    mail_server="127.0.0.1:%d" % port), "--until-idle", "1")
    check(run.code == 0, "exit code %d, stderr %r" % (run.code, run.stderr))
    clean(run, check)
    for rid, to in (("0.1.90", "ops@example.test"), ("0.1.95", "cto@example.test")):
        served(run, check, rid)
        sent = [(sev, m) for sev, m in run.incidents(rid) if "has not been send" in m]
        check(len(sent) == 1 and sent[0][0] == 4 and sent[0][1].endswith(" to " + to + "!"),
              "%s: incidents %r" % (rid, run.incidents(rid)))
    check(len(run.having("log: Unable to send report e-mail - please check mail server setup")) == 2,
          "log %r" % [l for l in run.lines if l.startswith("log:")])


@case("a damaged unit blob: the report stands, its mail fails with an incident, the next is mailed")
def bad_unit_case(check):
    # The analysis copies the blob to the chart unread; it is decoded when the
    # chart is drawn for the mail, so the failure is the mail's.
    with MailServer() as smtp:
        run = Run(world(nodes=1, good_nodes=1, unit="ff", mail_server="127.0.0.1:%d" % smtp.port,
                        reports=[report("0.1.90", "R1", kind=3, destination="ops@example.test"),
                                 report("0.1.95", "R2", kind=3, contains="0.1.7",
                                        destination="cto@example.test")]),
                  "--until-idle", "1")
    check(run.code == 0, "exit code %d, stderr %r" % (run.code, run.stderr))
    clean(run, check)
    served(run, check, "0.1.90")
    check(run.incidents("0.1.90")[-2:] == [
        (1, "Sending report number 1 to ops@example.test..."),
        (4, "Report number 1 has not been send to ops@example.test!")],
        "R1 incidents %r" % run.incidents("0.1.90"))
    check(any(re.match(r'log: SMTP connection to 127\.0\.0\.1:\d+ lost: "entryFromBlob met eod"$', l)
              for l in run.lines), "no client line: %r" % run.having("log: "))
    check("log: Unable to send report e-mail - please check mail server setup" in run.lines,
          "no mail failure logged")
    instance = run.children("0.1.90", "ReportInstance")
    check(instance and instance[0]["props"].get("public") == {"bool": True}, "R1 not public")
    served(run, check, "0.1.95")
    check(not any("has not been send" in m for _, m in run.incidents("0.1.95")),
          "R2 incidents %r" % run.incidents("0.1.95"))
    check([to for to, _ in smtp.mails] == [["cto@example.test"]],
          "mails to %r" % [to for to, _ in smtp.mails])


def render(dump, instance, fmt):
    with tempfile.TemporaryDirectory() as d:
        f = os.path.join(d, "dump.json")
        with open(f, "w") as out:
            json.dump(dump, out)
        html = ["--images", os.path.join(d, "images"), "--resources", resources] if fmt == "html" else []
        done = subprocess.run([tool, "render", "--dump", f, "--instance", instance, "--format", fmt,
                               "--zone", "0"] + html,
                              capture_output=True, timeout=60, env=dict(os.environ, TMPDIR=d))
    return done.returncode, done.stdout.decode("utf-8", "replace"), done.stderr.decode()


@case("a bad markup text shows its parse error in place; the rest renders")
def bad_markup_case(check):
    text = "<b>Fish & chips</b>"
    run = Run(world(reports=[report("0.1.90", "R")], texts=[text]), "--until-idle", "1")
    check(run.code == 0, "exit code %d, stderr %r" % (run.code, run.stderr))
    clean(run, check)
    served(run, check, "0.1.90")
    instances = run.children("0.1.90", "ReportInstance")
    if not instances:
        return
    iid = instances[0]["id"]
    code, page, err = render(run.dump, iid, "html")
    check(code == 0, "html: exit code %d, %r" % (code, err))
    m = re.search(r"Parse error: [^<]* in &quot;&lt;b&gt;Fish &amp; chips&lt;/b&gt;&quot;|"
                  r"Parse error: [^<]* in \"&lt;b&gt;Fish &amp; chips&lt;/b&gt;\"", page)
    check(m, "html: no parse error in %r" % page[:3000])
    check(m and page.find("web000") > m.start(), "html: the report stops at the text")
    check(page.rstrip().endswith("</html>"), "html: cut short")
    code, plain, err = render(run.dump, iid, "text")
    check(code == 0, "text: exit code %d, %r" % (code, err))
    m = re.search(r"Parse error: .* in \"<b>Fish & chips</b>\"", plain)
    check(m, "text: no parse error in %r" % plain[:2000])
    check(m and plain.find("web000") > m.start(), "text: the report stops at the text")


@case("SYS_EXIT during a generation is taken after the generation and its mail; exit 0")
def stop_during_generation_case(check):
    def at(prefix):
        found = [i for i, l in enumerate(run.lines) if l.startswith(prefix)]
        return found[0] if found else -1
    # The stop must fall after the instance was made; on a machine so slow
    # that the reporter isn't that far after a second, once more with more.
    for stop_after in ("1", "3"):
        with MailServer() as smtp:
            run = Run(world(nodes=MANY, reports=[report("0.1.90", "R", destination="ops@example.test")],
                            mail_server="127.0.0.1:%d" % smtp.port), "--stop-after", stop_after)
        if 0 <= at("create: rept") < at("stop: SYS_EXIT to rept"):
            break
    check(run.code == 0, "exit code %d, stderr %r" % (run.code, run.stderr))
    clean(run, check)
    served(run, check, "0.1.90")
    check([to for to, _ in smtp.mails] == [["ops@example.test"]], "mails %r" % smtp.mails[:1])
    lines = run.lines
    created = at("create: rept")
    stop = at("stop: SYS_EXIT to rept")
    shutdown = at("log: Reporter initiating shutdown")
    updates = [i for i, l in enumerate(lines) if l.startswith("update: rept")]
    mailed = at("trace: Mail transaction completed successfully.")
    # The stop came while the generation ran; the reporter took it after the
    # instance was closed and the mail sent.
    check(0 <= created < stop, "the stop came before the generation: %d, %d" % (created, stop))
    check(updates and stop < updates[-1] < mailed < shutdown,
          "stop %d, last update %d, mail %d, shutdown %d" % (stop, updates[-1], mailed, shutdown))



ORDERS = 10  # orders of one report, each for another time


@case("many orders of one report: each update serves one more, none is deleted ungenerated")
def many_orders_case(check):
    r = report("0.1.90", "R")
    times = [W + 3600 * k for k in range(ORDERS)]
    r["children"] = [{"class": "ReportOrder", "props": {"orderTime": {"date": t}}} for t in times]
    # A short idle limit: the host must still wait for each reply that is
    # due or that the reporter is treating, however slow the machine is.
    run = Run(world(reports=[r]), "--until-idle", "0.01")
    check(run.code == 0, "exit code %d, stderr %r" % (run.code, run.stderr))
    clean(run, check)
    instances = run.children("0.1.90", "ReportInstance")
    check(sorted(value(i["props"]["orderTime"]) for i in instances) == times,
          "order times %r" % [value(i["props"]["orderTime"]) for i in instances])
    check(all(finished(i) for i in instances), "unfinished instances %r" % instances)
    check(run.children("0.1.90", "ReportOrder") == [], "orders left")
    done = [m for _, m in run.incidents("0.1.90") if m.endswith(" done.")]
    check(len(done) == ORDERS, "generations done: %r" % done)


class SilentMailServer:
    """A mail server that greets, reads the client's first line and then says
    nothing more; when the reporter has come that far, `on_hello` runs."""

    def __init__(self, on_hello):
        self.sock = socket.create_server(("127.0.0.1", 0))
        self.port = self.sock.getsockname()[1]
        self.sock.settimeout(120)
        self.thread = threading.Thread(target=self.serve, args=(on_hello,))
        self.thread.start()

    def serve(self, on_hello):
        try:
            conn, _ = self.sock.accept()
        except OSError:
            return
        with conn:
            conn.sendall(b"220 silent\r\n")
            conn.settimeout(120)
            conn.makefile("rb").readline()
            on_hello()
            try:
                conn.recv(1)  # until the reporter's end closes the connection
            except OSError:
                pass

    def close(self):
        self.sock.close()
        self.thread.join()


@case("the reporter killed while it mails: the mail goes out after the restart")
def killed_while_mailing_case(check):
    host_pid, killed = [], []

    def kill_reporter():
        pid = reporter_pid(host_pid[0]) if host_pid else None
        if pid:
            os.kill(pid, signal.SIGKILL)
            killed.append(pid)
    silent = SilentMailServer(kill_reporter)
    try:
        r = report("0.1.90", "R", destination="ops@example.test")
        first = Run(world(reports=[r], mail_server="127.0.0.1:%d" % silent.port), "--until-idle", "1",
                    on_progress=lambda run, line: host_pid.append(run.proc.pid))
    finally:
        silent.close()
    check(killed, "never killed in the mailing")
    check(first.code == 128 + signal.SIGKILL, "exit code %d, stderr %r" % (first.code, first.stderr))
    clean(first, check)
    if not first.dump:
        return
    with MailServer() as smtp:
        first.dump["config"]["mail_server"] = "127.0.0.1:%d" % smtp.port
        second = Run(first.dump, "--until-idle", "1")
    check(second.code == 0, "second run: exit code %d, stderr %r" % (second.code, second.stderr))
    clean(second, check)
    served(second, check, "0.1.90")
    check([to for to, _ in smtp.mails] == [["ops@example.test"]], "mails %r" % smtp.mails[:1])
    check(second.incidents("0.1.90")[-1:] == [(1, "Report number 1 sent to ops@example.test")],
          "incidents %r" % second.incidents("0.1.90"))
    instances = second.children("0.1.90", "ReportInstance")
    check(instances and not [c for c in instances[0].get("children", []) if c["class"] == "ReportSendTo"],
          "the mail job is left: %r" % instances)

finish()
