"""The power goes while a session saves: what was acknowledged is there, though nothing that was not synced has reached the
disk. power_loss.py PHSERVER LOSSY-DISK-LIBRARY"""

import os
import shutil
import subprocess
import sys
import tempfile

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "../../tools"))
from server_session import Session

SAVES = 60


def comments(session):
    return sorted(line[11] for line in session.lines("MEVREF GET", "14"))


def main(program, library):
    with tempfile.TemporaryDirectory() as folder:
        data, disk = os.path.join(folder, "data"), os.path.join(folder, "disk")
        Session(program, data).close()
        shutil.copytree(data, disk)
        os.environ.update(LD_PRELOAD=library, LOSSY_FOLDER=data, LOSSY_DISK=disk, PHSERVER_KEEP="LD_PRELOAD LOSSY_FOLDER LOSSY_DISK")
        session = Session(program, data)
        for number in range(SAVES):
            assert session.reply("MEVREF SET", f"^EXAM^1^14^01/02/2026^saved {number}") == "1"
        # The one disk has of each file what was synced, the other the database as it was written and the synced journal.
        written = os.path.join(folder, "written")
        shutil.copytree(disk, written)
        shutil.copy(os.path.join(data, "app.dat"), written)
        assert os.path.getmtime(os.path.join(disk, "app.mjl")) > os.path.getmtime(os.path.join(data, "created"))
        for name in ("LD_PRELOAD", "PHSERVER_KEEP"):
            del os.environ[name]
        for lost in (disk, written):
            after = Session(program, lost)
            assert comments(after) == sorted(f"saved {number}" for number in range(SAVES)), (lost, len(comments(after)))
            after.close()
            assert subprocess.run([program, "--data", lost, "--check"], stdout=subprocess.DEVNULL, check=False).returncode == 0
        session.process.kill()
        session.process.wait()


main(*sys.argv[1:])
