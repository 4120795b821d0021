"""The power fails while a session saves: every acknowledged save is stored, although only synced data reached the disk.
power_loss.py PHSERVER LOSSY-DISK-LIBRARY"""

import os
import shutil
import sys
import tempfile

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "../../tools"))
from server_session import Session, task

SAVES = 60


def main(program, library):
    with tempfile.TemporaryDirectory() as folder:
        data, disk = os.path.join(folder, "data"), os.path.join(folder, "disk")
        Session(program, data).close()
        shutil.copytree(data, disk)
        session = Session(program, data, LD_PRELOAD=library, LOSSY_FOLDER=data, LOSSY_DISK=disk,
                          PHSERVER_KEEP="LD_PRELOAD LOSSY_FOLDER LOSSY_DISK")
        for number in range(SAVES):
            assert session.save(f"saved {number}")
        # One disk has the synced part of each file, the other the database as it was written and the synced journal.
        written = os.path.join(folder, "written")
        shutil.copytree(disk, written)
        shutil.copy(os.path.join(data, "app.dat"), written)
        assert os.path.getmtime(os.path.join(disk, "app.mjl")) > os.path.getmtime(os.path.join(data, "created"))
        for lost in (disk, written):
            after = Session(program, lost)
            assert after.saved() == sorted(f"saved {number}" for number in range(SAVES)), (lost, len(after.saved()))
            after.close()
            assert task(program, lost, "--check")[0] == 0
        session.close(kill=True)


main(*sys.argv[1:])
