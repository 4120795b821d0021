"""The disk of the server becomes full while a session saves: it is told, nothing acknowledged is lost, and when there is
room again the work goes on. full_disk.py PHSERVER; ends with 77 where no small disk can be made."""

import os
import subprocess
import sys
import tempfile

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "../../tools"))
from server_session import Session

MEGABYTE = 1 << 20


class Saver(Session):
    def save(self, comment):
        return self.call("MEVREF SET", f"^EXAM^1^14^01/02/2026^{comment}")

    def end(self, how="end"):
        if how == "kill":
            self.process.kill()
        self.process.stdin.close()
        self.process.wait()

    def saved(self):
        lines = self.call("MEVREF GET", "14").split("\n", 1)[1].split("\r\n")
        return sorted(line.split("^")[11] for line in lines if line)


def fill(path):
    with open(path, "wb", buffering=0) as file:
        try:
            while True:
                file.write(bytes(MEGABYTE))
        except OSError:
            pass


def main(program, disk):
    data = os.path.join(disk, "data")
    session = Saver(program, data)
    acknowledged = [f"before {number}" for number in range(20)]
    for comment in acknowledged:
        assert session.save(comment).endswith("\n1"), comment
    filler = os.path.join(disk, "filler")
    fill(filler)
    answer = ""
    for number in range(20000):
        comment = f"full {number} " + "x" * 150
        answer = session.save(comment)
        if not answer.endswith("\n1"):
            break
        acknowledged.append(comment)
    # In words, unless the engine itself had to end.
    assert answer == "" or "disk is full" in answer or "cannot go on" in answer or "could not carry out" in answer, answer
    print(f"{len(acknowledged)} saves, then: {answer!r}")
    session.close()
    os.remove(filler)

    session = Saver(program, data)
    there = session.saved()
    missing = [comment for comment in acknowledged if there.count(comment) != 1]
    assert not missing, f"{len(missing)} of the saves are not there once: {missing[:3]}"
    assert len(there) <= len(acknowledged) + 1 # the one that was refused may have been made
    assert session.save("after").endswith("\n1")
    session.close()
    assert subprocess.run([program, "--data", data, "--check"], stdout=subprocess.DEVNULL, check=False).returncode == 0


if __name__ == "__main__":
    if len(sys.argv) == 2:
        unshare = ["unshare", "--map-root-user", "--mount"]
        # A namespace may be allowed where mounting in it is not.
        if subprocess.run(unshare + ["mount", "-t", "tmpfs", "tmpfs", "/tmp"], check=False).returncode != 0:
            print("No small disk can be made here.")
            sys.exit(77)
        sys.exit(subprocess.run(unshare + [sys.executable, __file__, sys.argv[1], "inside"], check=False).returncode)
    with tempfile.TemporaryDirectory() as folder:
        subprocess.run(["mount", "-t", "tmpfs", "-o", "size=30m", "tmpfs", folder], check=True)
        try:
            main(sys.argv[1], folder)
        finally:
            subprocess.run(["umount", "-l", folder], check=False)
