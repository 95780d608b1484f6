"""tavrel-host run and check, black-box, with the queue test child as the
reporter: the configuration is served from the world, log requests land in
the log file with their level, the child's exit code comes back, and the
database is dumped in the world format, loadable again.

usage: host_run_test.py TAVREL_HOST QUEUE_CHILD
"""
import json
import os
import subprocess
import sys
import tempfile

from host_runs import run_host

host, child = sys.argv[1], sys.argv[2]
# A host run's deadline in seconds: a hang, not slowness (the ASan run takes
# a few seconds).
DEADLINE = 60
failures = []


def check(cond, what):
    if not cond:
        failures.append(what)


world = {
    "config": {"mail_server": "mail.example:2525", "log_mask": 4096},
    "objects": {"class": "Domain", "id": "0.1", "props": {"name": {"string": "root"}},
                "children": [{"class": "Node", "props": {"name": {"string": "web"}}}]},
}
with tempfile.TemporaryDirectory() as d:
    world_file = os.path.join(d, "world.json")
    with open(world_file, "w") as f:
        json.dump(world, f)
    log_file = os.path.join(d, "host.log")
    dump_file = os.path.join(d, "dump.json")
    env = dict(os.environ, TMPDIR=d)
    run = run_host([host, "run", "--world", world_file, "--reporter", child,
                    "--until-idle", "1", "--log", log_file, "--dump", dump_file],
                   DEADLINE, env=env, log_file=log_file, name="host run with the queue child")
    # The child's delete of 0.1.5 fails in the database (no such object), so
    # it ends with 1, and the host passes that on.
    check(run.returncode == 1, "exit code %d, stderr %r" % (run.returncode, run.stderr))
    check("Caught: Object 0.1.5 not found" in run.stderr, "child's error: %r" % run.stderr)
    log = open(log_file).read()
    check(" log: config: mail.example:2525\n" in log, "log: %r" % log)
    dumped = json.load(open(dump_file))
    check(dumped["config"]["mail_server"] == "mail.example:2525", "dumped config")
    names = [c["props"]["name"]["string"] for c in dumped["objects"].get("children", [])]
    check(names == ["web"], "dumped children %r" % names)
    check(subprocess.run([host, "check", "--world", dump_file], capture_output=True).returncode == 0,
          "the dump loads again")
    # Nothing is left of the messenger: the FIFO directory is gone.
    left = [n for n in os.listdir(d) if n.startswith("tavrel-host")]
    check(left == [], "left behind: %r" % left)

    bad = os.path.join(d, "bad.json")
    with open(bad, "w") as f:
        f.write('{"objects": {"class": "Domain", "id": "0.1", "props": {"name": {"uint": "x"}}}}')
    checked = subprocess.run([host, "check", "--world", bad], capture_output=True, text=True)
    check(checked.returncode == 1 and checked.stderr.startswith("error: objects.props.name"),
          "bad world: %r" % checked.stderr)

for f in failures:
    print("FAILED:", f)
print("%d passed, %d failed" % (1 if not failures else 0, 1 if failures else 0))
sys.exit(1 if failures else 0)
