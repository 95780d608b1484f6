"""What a run of tavrel-host leaves for the end-to-end tests to read: the
log lines without their date and clock, the dump, and whatever of the
messenger's FIFO directory is left in the run's TMPDIR."""
import json
import os

from dump import objects_by_id


class RunResults:
    def read_results(self, tmpdir, log_file, dump_file):
        """Reads the log and the dump (None when none was written) of a run
        whose TMPDIR was `tmpdir`."""
        self.lines = [l.split(" ", 2)[2] for l in open(log_file).read().splitlines()]
        self.dump = json.load(open(dump_file)) if os.path.exists(dump_file) else None
        # The messenger's FIFO directory goes with the host.
        self.left = [n for n in os.listdir(tmpdir) if n.startswith("tavrel-host")]

    def having(self, prefix):
        return [l for l in self.lines if l.startswith(prefix)]

    def objects(self):
        """Every object of the dump by id."""
        return objects_by_id(self.dump)

    def children(self, rid, cls):
        """The children of class `cls` of the object `rid`."""
        return [c for c in self.objects()[rid].get("children", []) if c["class"] == cls]

    def incidents(self, rid):
        """The (severity, text) lines of the object's incident series."""
        for s in self.dump.get("series", []):
            if s["owner"] == rid and s["property"] == "tsdbIncident":
                return [(r[0], r[1]) for r in s["records"]]
        return []


def clean(run, check):
    """Nothing left behind, and no sanitizer report (under a sanitizer build)."""
    check(run.left == [], "left behind: %r" % run.left)
    check("Sanitizer" not in run.stderr and "runtime error" not in run.stderr,
          "sanitizer: %r" % run.stderr)
