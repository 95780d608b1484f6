"""Report mailing end to end: tavrel-report under tavrel-host mails to a real
SMTP server, Debian's python3-aiosmtpd on a free port of 127.0.0.1, which
delivers into a Maildir (refusing the recipients "no...@", see
refusing_mailbox.py), and, for the hang-up, to the scripted peer of
email/testdata/smtp_peer.py. Each case is one host run (`TZ=UTC`,
`--until-idle 2`, `--eval-scale 0.01`) on tests/worlds/mail.json, whose two
reports "First" and "Second" each have an order and get their destination
from the case. The main case also grafts the finished instance 0.1.30 of
tests/data/report_world.json with two ReportSendTo jobs.

Checked: the mails parsed with Python's `email` package, also under its
strict policy, with a Date and a Message-ID; the HTML without errors by
Debian's `tidy -errors` (multipart/related
over multipart/alternative with text/plain and text/html, then the PNG
parts, shown inline, whose Content-IDs are the HTML's `cid:` references; every PNG with
its signature, chunk CRCs from IHDR to IEND and IDAT that inflates); the
text part against `tavrel-tool render --format text` on the dump in the
report's zone; the jobs deleted; the report's incident lines; and, for a
refused recipient among two, all refused, no server and a hang-up in the
middle of the dialogue, the failure or success line, with the next report
of the same run still generated and mailed. The servers are started here
and stopped by their pids.

usage: mail_test.py TAVREL_HOST TAVREL_REPORT TAVREL_TOOL RESOURCE_DIR TESTS_DIR SMTP_PEER
"""
import copy
import email
import email.policy
import json
import mailbox
import os
import re
import socket
import subprocess
import sys
import tempfile
import time
from email.header import decode_header, make_header
from email.utils import parseaddr

from cases import case, finish
from dump import objects_by_id, value
from ports import free_port
from host_runs import run_host

host, reporter, tool, resources, tests_dir, smtp_peer = sys.argv[1:7]
# A host run's deadline in seconds: a hang, not slowness (the ASan run takes
# a few seconds).
DEADLINE = 120
sys.path.insert(0, os.path.dirname(smtp_peer))
from png_check import png_problem  # noqa: E402 (beside the peer, in email/testdata)
python = "/usr/bin/python3"  # Debian's, which has aiosmtpd
base_world = json.load(open(os.path.join(tests_dir, "worlds", "mail.json")))
read_world = json.load(open(os.path.join(tests_dir, "data", "report_world.json")))
FIRST, SECOND, KEPT = "0.1.120", "0.1.130", "0.1.20"  # the reports
KEPT_INSTANCE = "0.1.30"  # the finished instance of report_world.json
FIRST_ZONE = 3600  # timeZone of First and Second (mail.json)
FIRST_NAME = "\u00c6r\u00f8 \u2713 \u65e5\u672c"  # First's name in UTF-8: Ærø ✓ 日本
KEPT_ZONE = -18000  # timeZone given to the grafted report


def wait_for_port(port, proc):
    for _ in range(200):
        if proc.poll() is not None:
            raise RuntimeError("server ended with %d before it listened" % proc.returncode)
        try:
            socket.create_connection(("127.0.0.1", port), 1).close()
            return
        except OSError:
            time.sleep(0.05)
    raise RuntimeError("nothing listens on port %d" % port)


class Server:
    """A process started by the test and stopped by its pid."""

    def started(self, wait):
        """Runs `wait`; if it raises, the process is stopped first."""
        try:
            wait()
        except Exception:
            self.stop()
            raise

    def stop(self):
        if self.proc.poll() is None:
            self.proc.kill()
        self.proc.wait(10)
        self.output.close()

    def gone(self):
        return self.proc.returncode is not None and not os.path.exists("/proc/%d" % self.proc.pid)


class Aiosmtpd(Server):
    def __init__(self, work):
        self.maildir = os.path.join(work, "maildir")
        for sub in ("new", "cur", "tmp"):
            os.makedirs(os.path.join(self.maildir, sub))
        self.port = free_port()
        env = dict(os.environ, PYTHONPATH=tests_dir)
        self.output = open(os.path.join(work, "smtp.log"), "wb")
        self.proc = subprocess.Popen(
            [python, "-m", "aiosmtpd", "-n", "-s", "0", "-l", "127.0.0.1:%d" % self.port,
             "-c", "refusing_mailbox.RefusingMailbox", self.maildir],
            stdout=self.output, stderr=subprocess.STDOUT, env=env)
        self.started(lambda: wait_for_port(self.port, self.proc))

    def mails(self):
        return list(mailbox.Maildir(self.maildir, create=False))


class Peer(Server):
    """smtp_peer.py serving one connection by `script`."""

    def __init__(self, work, script):
        self.work = os.path.join(work, "peer")
        os.makedirs(self.work)
        with open(os.path.join(self.work, "script"), "w") as f:
            f.write(script)
        self.output = open(os.path.join(self.work, "output"), "wb")
        self.proc = subprocess.Popen([python, smtp_peer, self.work],
                                     stdout=self.output, stderr=subprocess.STDOUT)
        port_file = os.path.join(self.work, "port")

        def read_port():
            for _ in range(200):
                if os.path.exists(port_file) or self.proc.poll() is not None:
                    break
                time.sleep(0.05)
            self.port = int(open(port_file).read())
        self.started(read_port)

    def received(self):
        return open(os.path.join(self.work, "received"), "rb").read()


def world(port, first, second, send_jobs=None):
    """mail.json with the mail server at `port` and the destinations of First
    and Second; with `send_jobs` (a list of address lists), the domain of
    report_world.json joins it, its instance 0.1.30 carrying one ReportSendTo
    job per list."""
    w = copy.deepcopy(base_world)
    w["config"]["mail_server"] = "127.0.0.1:%d" % port
    w["config"]["resource_directory"] = resources
    domain = w["objects"]["children"][0]
    for report in domain["children"]:
        if report["id"] in (FIRST, SECOND):
            report["props"]["destination"] = {"string": first if report["id"] == FIRST else second}
        if report["id"] == FIRST:  # a name that goes out in encoded words
            report["props"]["name"] = {"string": FIRST_NAME}
    if send_jobs is not None:
        kept = copy.deepcopy(read_world["objects"]["children"][0])
        for o in kept["children"]:
            if o["id"] == KEPT:
                o["props"].update({"date": {"enum": [65546, 0]}, "time": {"date": 0},
                                   "frequency": {"uint": 0}, "maxInstances": {"null": "uint"},
                                   "timeZone": {"int": KEPT_ZONE}})
                instance = next(c for c in o["children"] if c["id"] == KEPT_INSTANCE)
                instance["props"]["order"] = {"uint": 3}
                instance["children"] += [
                    {"class": "ReportSendTo", "id": "0.1.%d" % (140 + i),
                     "props": {"destination": {"string_list": job}}}
                    for i, job in enumerate(send_jobs)]
        w["objects"]["children"].append(kept)
        w["series"] += read_world["series"]
    return w


class Run:
    """One host run with the reporter on `w`, until idle."""

    def __init__(self, work, w):
        world_file = os.path.join(work, "world.json")
        with open(world_file, "w") as f:
            json.dump(w, f)
        self.dump_file = os.path.join(work, "dump.json")
        tmp = os.path.join(work, "tmp")
        os.makedirs(tmp)
        env = dict(os.environ, TMPDIR=tmp, TZ="UTC")
        log = os.path.join(work, "host.log")
        done = run_host(
            [host, "run", "--world", world_file, "--reporter", reporter, "--until-idle", "2",
             "--eval-scale", "0.01", "--log", log, "--dump", self.dump_file],
            DEADLINE, env=env, log_file=log)
        self.code, self.stderr = done.returncode, done.stderr
        self.log = open(log).read().splitlines()
        self.dump = json.load(open(self.dump_file))
        self.left = os.listdir(tmp)
        self.by_id = objects_by_id(self.dump)
        self.incidents = {s["owner"]: [(r[0], r[1]) for r in s["records"]]
                          for s in self.dump.get("series", []) if s["property"] == "tsdbIncident"}

    def instances(self, report):
        return [c for c in self.by_id[report].get("children", []) if c["class"] == "ReportInstance"]

    def log_index(self, text):
        """The number of the first log line that holds `text`, or None."""
        return next((i for i, line in enumerate(self.log) if text in line), None)


def orderly(run, check):
    check(run.code == 0, "exit code %d, stderr %r" % (run.code, run.stderr[-2000:]))
    check(run.left == [], "left in TMPDIR: %r" % run.left)


def generated(run, check, report):
    """The report's one finished instance; its id."""
    done = [i for i in run.instances(report) if value(i["props"]["workerNode"]) == 0
            and value(i["props"]["progress"]) == 100]
    check(len(done) == 1, "%s: %d finished instances" % (report, len(done)))
    lines = run.incidents.get(report, [])
    check((1, "Generation of report number 1 done.") in lines, "%s not generated: %r" % (report, lines))
    return done[0]["id"] if done else None


def mailing_lines(run, report):
    return [(sev, msg) for sev, msg in run.incidents.get(report, [])
            if "send" in msg or "sent" in msg or "Sending" in msg]


def render_text(run, instance, zone):
    done = subprocess.run([tool, "render", "--dump", run.dump_file, "--instance", instance,
                           "--format", "text", "--zone", str(zone)],
                          capture_output=True, timeout=60)
    if done.returncode != 0:
        raise RuntimeError("render failed: %r" % done.stderr)
    return done.stdout


def check_mail(check, mail, run, instance, zone, recipients):
    """One report mail: headers, the tree of parts, the pictures against the
    HTML's references, the text against the text renderer."""
    name = value(run.by_id[instance]["props"]["name"])
    what = "mail of %s" % instance
    check(subject_of(mail) == "Tavrel report - " + name, "%s: Subject %r" % (what, mail["Subject"]))
    check(parseaddr(mail["From"])[1] == "reports@example.test", "%s: From %r" % (what, mail["From"]))
    check(mail["X-RcptTo"] == recipients, "%s: delivered to %r" % (what, mail["X-RcptTo"]))
    check(not mail.defects, "%s: defects %r" % (what, mail.defects))
    try:
        strict = email.message_from_bytes(mail.as_bytes(), policy=email.policy.strict)
        check(strict["Date"] is not None and strict["Message-ID"] is not None,
              "%s: Date %r, Message-ID %r" % (what, strict["Date"], strict["Message-ID"]))
    except Exception as e:  # the strict policy raises on any defect
        check(False, "%s: the strict parser refused the mail: %s" % (what, e))
    check(mail.get_content_type() == "multipart/related", "%s: top %s" % (what, mail.get_content_type()))
    parts = mail.get_payload() if mail.is_multipart() else []
    check(len(parts) >= 2, "%s: %d related parts" % (what, len(parts)))
    if len(parts) < 2:
        return
    alternative = parts[0]
    check([p.get_content_type() for p in alternative.walk()] ==
          ["multipart/alternative", "text/plain", "text/html"],
          "%s: alternative part %r" % (what, [p.get_content_type() for p in alternative.walk()]))
    text, html = (p for p in alternative.get_payload())
    for p in (text, html):
        check(p["Content-Transfer-Encoding"] == "quoted-printable" and
              p.get_content_charset() == "utf-8",
              "%s: %s is %s in %s" % (what, p.get_content_type(), p["Content-Transfer-Encoding"],
                                      p.get_content_charset()))
    expected = render_text(run, instance, zone).replace(b"\r\n", b"\n")
    got = text.get_payload(decode=True).replace(b"\r\n", b"\n")
    check(got == expected and len(got) > 200,
          "%s: text part differs from the renderer's (%d and %d bytes)" % (what, len(got), len(expected)))
    page = html.get_payload(decode=True)
    tidy = subprocess.run(["tidy", "-errors", "-quiet"], input=page, capture_output=True, timeout=60)
    complaints = tidy.stderr.decode("utf-8", "replace")
    lines = page.split(b"\n")
    quoted = [lines[int(n) - 1][:200] for n in re.findall(r"line (\d+) column \d+ - Error", complaints)]
    check(tidy.returncode < 2, "%s: tidy finds errors in the HTML:\n%s%r" % (what, complaints, quoted))
    refs = []
    for ref in re.findall(r'src="cid:([^"]*)"', html.get_payload(decode=True).decode("latin-1")):
        if ref not in refs:
            refs.append(ref)
    ids = [(p["Content-ID"] or "").strip("<>") for p in parts[1:]]
    check(ids == refs, "%s: Content-IDs %r, cid: references %r" % (what, ids, refs))
    check("chart0" in ids and "report_logo" in ids, "%s: no chart or logo among %r" % (what, ids))
    for p in parts[1:]:
        check(p["Content-Transfer-Encoding"] == "base64", "%s: %s not base64" % (what, p["Content-ID"]))
        check(p.get_content_disposition() == "inline",
              "%s: %s shown as %s" % (what, p["Content-ID"], p.get_content_disposition()))
        if p.get_content_type() == "image/png":
            bad, _ = png_problem(p.get_payload(decode=True))
            check(bad is None, "%s: PNG %s: %s" % (what, p["Content-ID"], bad))
        else:
            check(p.get_content_type() == "image/gif" and p.get_payload(decode=True)[:6] == b"GIF89a",
                  "%s: part %s of type %s" % (what, p["Content-ID"], p.get_content_type()))


def mail_case(name, first, second, run_checks, send_jobs=None):
    """A case with aiosmtpd."""
    @case(name)
    def _(check):
        with tempfile.TemporaryDirectory() as work:
            server = Aiosmtpd(work)
            try:
                run = Run(work, world(server.port, first, second, send_jobs))
                mails = server.mails()
            finally:
                server.stop()
            check(server.gone(), "the SMTP server is still there")
            orderly(run, check)
            run_checks(check, run, mails)


def subject_of(mail):
    """The Subject, its encoded words decoded."""
    return str(make_header(decode_header(mail["Subject"] or "")))


def by_subject(mails, name):
    return [m for m in mails if subject_of(m) == "Tavrel report - " + name]


TO_TWO = "ops@example.test, boss@example.test"
JOB = ["alice@example.test", "bob@example.test"]


def main_checks(check, run, mails):
    first = generated(run, check, FIRST)
    generated(run, check, SECOND)
    check(len(mails) == 2, "%d mails, expected First's and the job's" % len(mails))
    if first:
        check(FIRST_NAME in value(run.by_id[first]["props"]["name"]),
              "First's instance is named %r" % value(run.by_id[first]["props"]["name"]))
        got = by_subject(mails, value(run.by_id[first]["props"]["name"]))
        check(len(got) == 1, "First mailed %d times" % len(got))
        if got:
            check_mail(check, got[0], run, first, FIRST_ZONE, TO_TWO)
    kept = by_subject(mails, value(run.by_id[KEPT_INSTANCE]["props"]["name"]))
    check(len(kept) == 1, "the job's instance mailed %d times" % len(kept))
    if kept:
        check_mail(check, kept[0], run, KEPT_INSTANCE, KEPT_ZONE, ", ".join(JOB))
    jobs = [c["id"] for c in run.by_id[KEPT_INSTANCE].get("children", []) if c["class"] == "ReportSendTo"]
    check(jobs == [], "jobs left: %r" % jobs)
    check(mailing_lines(run, FIRST) == [(1, "Sending report number 1 to %s..." % TO_TWO),
                                        (1, "Report number 1 sent to %s" % TO_TWO)],
          "First's lines: %r" % mailing_lines(run, FIRST))
    # An empty destination mails nothing and says nothing; an empty job neither.
    check(mailing_lines(run, SECOND) == [], "Second's lines: %r" % mailing_lines(run, SECOND))
    to_job = ", ".join(JOB)
    check(mailing_lines(run, KEPT) == [(1, "Sending report number 3 to %s..." % to_job),
                                       (1, "Report number 3 sent to %s" % to_job)],
          "the job's lines: %r" % mailing_lines(run, KEPT))
    # The mail follows the generation it reports.
    lines = [msg for _, msg in run.incidents.get(FIRST, [])]
    check(lines[-3:-2] == ["Generation of report number 1 done."], "First's lines end %r" % lines[-3:])


mail_case("a generated report and a ReportSendTo job are mailed; the job is deleted",
          TO_TWO, "", main_checks, send_jobs=[JOB, []])


def one_refused(check, run, mails):
    first = generated(run, check, FIRST)
    check(len(mails) == 1, "%d mails" % len(mails))
    if mails and first:
        check_mail(check, mails[0], run, first, FIRST_ZONE, "ops@example.test")
    to = "nobody@example.test, ops@example.test"
    check(mailing_lines(run, FIRST) == [(1, "Sending report number 1 to %s..." % to),
                                        (1, "Report number 1 sent to %s" % to)],
          "lines: %r" % mailing_lines(run, FIRST))


mail_case("one refused recipient among two: the mail goes to the other",
          "nobody@example.test, ops@example.test", "", one_refused)


def all_refused(check, run, mails):
    """First fails; Second, generated after it in the same run, is mailed."""
    generated(run, check, FIRST)
    second = generated(run, check, SECOND)
    to = "nobody@example.test, noone@example.test"
    check(mailing_lines(run, FIRST) == [(1, "Sending report number 1 to %s..." % to),
                                        (4, "Report number 1 has not been send to %s!" % to)],
          "First's lines: %r" % mailing_lines(run, FIRST))
    check(mailing_lines(run, SECOND) == [(1, "Sending report number 1 to ops@example.test..."),
                                         (1, "Report number 1 sent to ops@example.test")],
          "Second's lines: %r" % mailing_lines(run, SECOND))
    failed = run.log_index("Unable to send report e-mail - please check mail server setup")
    later = run.log_index("Added email for reporting: ops@example.test")
    check(failed is not None and later is not None and failed < later,
          "First's failure (log line %r) doesn't come before Second's mailing (%r)" % (failed, later))
    check(len(mails) == 1, "%d mails" % len(mails))
    if mails and second:
        check_mail(check, mails[0], run, second, FIRST_ZONE, "ops@example.test")


mail_case("all recipients refused; the next report of the run is still generated and mailed",
          "nobody@example.test, noone@example.test", "ops@example.test", all_refused)


def first_not_sent(check, run):
    """A run whose one mailing, First's to ops@, failed."""
    orderly(run, check)
    generated(run, check, FIRST)
    check(mailing_lines(run, FIRST) == [(1, "Sending report number 1 to ops@example.test..."),
                                        (4, "Report number 1 has not been send to ops@example.test!")],
          "lines: %r" % mailing_lines(run, FIRST))
    check(run.log_index("Unable to send report e-mail - please check mail server setup") is not None,
          "no failure in the log")


@case("no server listening")
def no_server(check):
    with tempfile.TemporaryDirectory() as work:
        first_not_sent(check, Run(work, world(free_port(), "ops@example.test", "")))


@case("the server hangs up in the middle of the dialogue")
def hang_up(check):
    with tempfile.TemporaryDirectory() as work:
        peer = Peer(work, "send 220 peer ready\\r\\n\nrecv\nsend 250 hello\\r\\n\n"
                          "recv\nsend 250 sender ok\\r\\n\nrecv\nclose\n")
        try:
            run = Run(work, world(peer.port, "ops@example.test", ""))
            received = peer.received()
        finally:
            peer.stop()
        check(peer.gone(), "the peer is still there")
        first_not_sent(check, run)
        check(b"RCPT TO:<ops@example.test>" in received and b"DATA" not in received,
              "the peer got %r" % received)


finish()
