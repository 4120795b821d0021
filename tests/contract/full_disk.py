"""The server's disk becomes full while a session saves: the session gets an error, no acknowledged save is lost, and
saving works again once there is room. full_disk.py PHSERVER; exits with 77 where no small disk can be mounted."""

import os
import subprocess
import sys
import tempfile

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "../../tools"))
from server_session import Session, task

MEGABYTE = 1 << 20


def fill(path):
    with open(path, "wb", buffering=0) as file:
        try:
            while True:
                file.write(bytes(MEGABYTE))
        except OSError:
            pass


def main(program, disk):
    data = os.path.join(disk, "data")
    session = Session(program, data)
    acknowledged = [f"before {number}" for number in range(20)]
    for comment in acknowledged:
        assert session.save(comment), comment
    filler = os.path.join(disk, "filler")
    fill(filler)
    answer = ""
    for number in range(20000):
        comment = f"full {number} " + "x" * 150
        answer = session.call("MEVREF SET", f"^EXAM^1^14^01/02/2026^{comment}")
        if not answer.endswith("\n1"):
            break
        acknowledged.append(comment)
    # An error in words, unless the engine itself had to end.
    errors = "disk is full", "cannot continue", "could not carry out"
    assert answer == "" or any(error in answer for error in errors), answer
    session.close()
    os.remove(filler)

    session = Session(program, data)
    there = session.saved()
    missing = [comment for comment in acknowledged if there.count(comment) != 1]
    assert not missing, f"{len(missing)} of the saves are not there once: {missing[:3]}"
    assert len(there) <= len(acknowledged) + 1 # the one that was refused may have been made
    assert session.save("after")
    session.close()
    assert task(program, data, "--check")[0] == 0


if __name__ == "__main__":
    if len(sys.argv) == 2:
        unshare = ["unshare", "--map-root-user", "--mount"]
        # A namespace may be allowed where mounting in it is not.
        if subprocess.run(unshare + ["mount", "-t", "tmpfs", "tmpfs", "/tmp"], check=False).returncode != 0:
            print("No small disk can be mounted here.")
            sys.exit(77)
        sys.exit(subprocess.run(unshare + [sys.executable, __file__, sys.argv[1], "inside"], check=False).returncode)
    with tempfile.TemporaryDirectory() as folder:
        subprocess.run(["mount", "-t", "tmpfs", "-o", "size=30m", "tmpfs", folder], check=True)
        try:
            main(sys.argv[1], folder)
        finally:
            subprocess.run(["umount", "-l", folder], check=False)
