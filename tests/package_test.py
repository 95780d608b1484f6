"""The Debian package, installed into a staging folder: CPack makes the
package from the build directory, `dpkg-deb -x` unpacks it, and the staged
programs run from there: `tavrel-tool --help` and `--version`, the manual
pages shown by `man -l` without warnings, and `tavrel-host run` on
examples/small-world.json, which starts the staged tavrel-report from
libexec/tavrel/ and generates the world's report with the staged resource
files (its mail goes to a closed port and fails, as the history says). No
staged file names the source or the build folder.

usage: package_test.py BUILD_DIR SOURCE_DIR
"""
import glob
import json
import os
import subprocess
import sys
import tempfile

from checklist import check, finish
from host_runs import run_host
from ports import free_port

build, source = (os.path.realpath(p) for p in sys.argv[1:3])


def run(cmd, **kwargs):
    return subprocess.run(cmd, capture_output=True, timeout=600, **kwargs)


with tempfile.TemporaryDirectory() as d:
    made = run(["cpack", "-G", "DEB", "--config", os.path.join(build, "CPackConfig.cmake"),
                "-B", os.path.join(d, "package")])
    debs = glob.glob(os.path.join(d, "package", "tavrel_*_amd64.deb"))
    check(made.returncode == 0 and len(debs) == 1, "cpack: %r %r" % (made.stdout[-2000:], debs))
    if not debs:
        finish()
    stage = os.path.join(d, "stage")
    check(run(["dpkg-deb", "-x", debs[0], stage]).returncode == 0, "dpkg-deb -x")
    usr = os.path.join(stage, "usr")
    for program in ("bin/tavrel-tool", "bin/tavrel-host", "libexec/tavrel/tavrel-report",
                    "libexec/tavrel/tavrel-report-reader", "share/tavrel/resources/tavrel.css",
                    "share/man/man1/tavrel-tool.1.gz", "share/man/man1/tavrel-host.1.gz",
                    "share/man/man8/tavrel-report.8.gz", "share/doc/tavrel/copyright"):
        check(os.path.isfile(os.path.join(usr, program)), "staged " + program)

    helped = run([os.path.join(usr, "bin/tavrel-tool"), "--help"])
    check(helped.returncode == 0 and helped.stdout.startswith(b"Usage: tavrel-tool"),
          "tavrel-tool --help: %r" % helped.stdout[:200])
    version = run([os.path.join(usr, "bin/tavrel-host"), "--version"])
    check(version.returncode == 0 and version.stdout.startswith(b"tavrel-host "), "--version")
    for page in glob.glob(os.path.join(usr, "share/man/man*/*.gz")):
        shown = run(["man", "--warnings", "-l", page], env=dict(os.environ, MANWIDTH="80"))
        check(shown.returncode == 0 and not shown.stderr and b"--help" in shown.stdout,
              "man -l %s: %r" % (os.path.basename(page), shown.stderr[:500]))
    manual = run(["man", "-l", os.path.join(usr, "share/man/man1/tavrel-tool.1.gz")],
                 env=dict(os.environ, MANWIDTH="200"))
    for line in helped.stdout.decode().splitlines():
        if line.startswith("  ") and line.split():
            word = line.split()[0]
            check(word.encode() in manual.stdout, "%s in the manual page of tavrel-tool" % word)

    world = json.load(open(os.path.join(source, "examples/small-world.json")))
    world["config"]["resource_directory"] = os.path.join(usr, "share/tavrel/resources")
    world["config"]["mail_server"] = "127.0.0.1:%d" % free_port()
    world_file = os.path.join(d, "world.json")
    json.dump(world, open(world_file, "w"))
    dump = os.path.join(d, "dump.json")
    done = run_host([os.path.join(usr, "bin/tavrel-host"), "run", "--world", world_file,
                     "--until-idle", "2", "--dump", dump, "--log", os.path.join(d, "host.log")],
                    300, name="staged tavrel-host run")
    check(done.code == 0, "staged run: exit %s %r" % (done.code, done.stderr[-1000:]))
    text = open(dump).read() if os.path.exists(dump) else ""
    check("Generation of report number 1 done." in text, "the report was generated")
    check("has not been send" in text, "the mail's failure stands in the history")

    for root, _, files in os.walk(stage):
        for name in files:
            data = open(os.path.join(root, name), "rb").read()
            for tree in (source, build):
                check(tree.encode() not in data, "%s names %s" % (name, tree))

finish()
