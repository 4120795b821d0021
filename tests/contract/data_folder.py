"""The data open whatever happened to clock, folder, lock, version or other servers, and can be restored from a backup.
data_folder.py PHSERVER [CASE...]; clocks needs libfaketime, else 77. LONG in the environment: more kills, moves."""

import concurrent.futures
import glob
import gzip
import os
import random
import shutil
import signal
import subprocess
import sys
import tempfile
import time

HERE = os.path.dirname(os.path.abspath(__file__))
sys.path.insert(0, HERE + "/../../tools")
from server_session import Session, engine, task

PROGRAM = os.path.abspath(sys.argv[1])
LONG = "LONG" in os.environ
FAKETIME = glob.glob("/usr/lib/*/faketime/libfaketime.so.1")


def clock(step):
    """The environment of a process whose clock is wrong."""
    return {"LD_PRELOAD": FAKETIME[0], "FAKETIME": step, "PHSERVER_KEEP": "LD_PRELOAD FAKETIME"} if step else {}


def session(data, step=""):
    return Session(PROGRAM, data, **clock(step))


def run(data, *arguments, **environment):
    return task(PROGRAM, data, *arguments, **environment)


def save(work, *comments):
    for comment in comments:
        assert work.save(comment), comment
    return list(comments)


def opens(data, expected):
    """Asserts that the data are sound and hold these saves, each once, and that saving works."""
    work = session(data)
    assert work.saved() == sorted(expected), (data, work.saved(), expected)
    expected += save(work, "more")
    work.close()
    assert run(data, "--check")[0] == 0, data


def clocks(folder):
    """The clock steps at each start, with kills in between, while another session has the right time."""
    data, made = folder + "/data", []
    for count, step in enumerate(["", "-1s", "", "-5m", "+1d", "-1d", "", "+1d", "-1s"]):
        first, second = session(data, step), session(data)
        made += save(first, f"first {count}") + save(second, f"second {count}")
        first.close(kill=count % 3 < 2)
        second.close(kill=count % 3 == 0)
    opens(data, made)
    # A journal without a beginning, or one that begins after its end: recovery cannot use it.
    for step in "-1s", "-1d", "":
        time.sleep(1 - time.time() % 1)
        session(data).close()
        engine(data, """exec "$gtm_dist/mumps" -run %XCMD 'SET ^MEVTST=1 KILL ^MEVTST ZSYSTEM "kill -9 "_$JOB'""",
               LD_PRELOAD=FAKETIME[0], FAKETIME=step or "-0s")
        if not step:
            with open(data + "/app.mjl", "r+b") as journal:
                journal.seek(192) # when it began
                journal.write(int(time.time() + 86400).to_bytes(4, "little"))
        opens(data, made)
    with open(data + "/maintenance.log", encoding="latin-1") as log:
        told = log.read()
    assert "BOVTMGTEOVTM" in told and "is applied to the database again" in told


def doomed_memory():
    """Shared memory that is marked to be removed."""
    with open("/proc/sysvipc/shm", encoding="ascii") as table:
        return {line.split()[1] for line in table if len(line.split()[2]) > 3 and line.split()[2].startswith("1")}


def places(folder):
    """Moved and copied folders, after a close and a kill, of this version and an earlier one."""
    cases = [(old, kill, live) for old in (0, 1) for kill in (0, 1) for live in (0, 1)]
    for count, (old, kill, live) in enumerate(cases if LONG else [case for case in cases if sum(case) % 2]):
        data, there = f"{folder}/a {count}", f"{folder}/b{count}, \"moved\" $HOME"
        work, made = session(data), []
        if old: # full file names, as earlier versions wrote them
            work.close()
            os.remove(data + "/place")
            full = f'-journal=enable,on,before_images,filename=\\"{data}/app.mjl\\"'.replace(" ", "\\ ")
            engine(data, f'"$gtm_dist/mupip" set {full} -region DEFAULT', mev_data=data)
            die = 'ZSYSTEM "kill -9 "_$JOB' if kill else "HALT"
            engine(data, f"""exec "$gtm_dist/mumps" -run %XCMD 'SET ^MEVTST=1 {die}'""", mev_data=data)
        else:
            made += save(work, "one", "two")
            work.close(kill)
        user = session(data) if live else None
        if live:
            time.sleep(1) # until its start is on the disk
            shutil.copytree(data, there)
            for journal in glob.glob(data + "/app.mjl*"): # never older than the database's copy
                shutil.copy(journal, there)
        else:
            os.rename(data, there)
        doomed = doomed_memory()
        opens(there, list(made))
        assert doomed_memory() <= doomed, "the copy removed the memory of the original"
        if live:
            joins = session(data) # through the memory that the copy's files name too
            made += save(user, "live") + save(joins, "joins")
            user.close()
            joins.close()
            opens(data, made)


def locks(folder):
    """First starts at the same moment; a lock that is never released leads to an error that names its holder."""
    data = folder + "/data"
    with concurrent.futures.ThreadPoolExecutor(5) as pool:
        works = list(pool.map(session, [data] * 5))
    # A save that two processes of a session make at the same moment is made once: both have found that it is not known,
    # and wait until the database accepts changes again.
    for work in works[:2]:
        work.call("MEVHOST SIGNON", f"{'d' * 32}^SORREL,ADA^2")
    assert engine(data, '"$gtm_dist/mupip" freeze -on DEFAULT') == 0
    for work in works[:2]:
        work.send("MEVREF SET", "^EXAM^1^14^01/02/2026^only once")
    time.sleep(0.5)
    assert engine(data, '"$gtm_dist/mupip" freeze -off DEFAULT') == 0
    assert {work.frame().split("\n")[1] for work in works[:2]} == {"1"} and works[2].saved() == ["only once"]
    for work in works:
        work.close()
    with subprocess.Popen(["flock", "-x", data + "/lock", "sleep", "30"], start_new_session=True) as holder:
        time.sleep(0.3)
        status, words = run(data, "--check", PHSERVER_LOCK_LIMIT="2")
        os.killpg(holder.pid, signal.SIGKILL)
    assert status == 1 and f"by process {holder.pid} (flock, user" in words, words
    # A holder that reports progress is waited for, whatever the limit.
    with subprocess.Popen(["flock", "-x", data + "/lock", "bash", "-c",
                           'for i in 1 2 3 4; do echo "Working +$i" >"$0/making-ready"; sleep 1; done', data]):
        time.sleep(0.3)
        waiting = Session(PROGRAM, data, PHSERVER_LOCK_LIMIT="2")
    assert any("preparing the data: Working" in frame for frame in waiting.told), waiting.told
    waiting.close()


def journals(folder):
    """Old journals are removed while sessions are at work, and recovery needs none of them."""
    data, made = folder + "/data", []
    work = session(data)
    engine(data, """"$gtm_dist/mumps" -run %XCMD 'FOR I=1:1:300 SET ^MEVTST(I#3)=$JUSTIFY(I,1000000)'""")
    before = glob.glob(data + "/app.mjl_*")
    for name in before:
        os.utime(name, (time.time() - 600,) * 2)
    for count in range(500):
        made += save(work, f"save {count}")
    after = glob.glob(data + "/app.mjl_*")
    assert len(before) > 6 and len(after) == 3, (before, after)
    work.close(kill=True)
    opens(data, made)
    assert not glob.glob(data + "/rolled_bak*")
    # Blocks that a killed session was freeing are freed by the check.
    assert engine(data, """printf '%s\\n' "maps -busy -block=F00" "change -fileheader -kill_in_prog=1" \\
        "dump -fileheader" exit | "$gtm_dist/dse" 2>&1 | grep -q 'KILLs in progress *1'""") == 0
    assert run(data, "--check")[0] == 0
    # A database that is neither marked complete nor marked for removal was put there by somebody: it is kept.
    os.remove(data + "/created")
    assert run(data, "--check")[0] == 1 and os.path.exists(data + "/app.dat")


class Saver(Session):
    """Saves until it is stopped; retries as the host does when its server was killed."""

    made, stopped = (), False

    def run(self, name):
        while not self.stopped:
            comment = f"{name} {len(self.made)}"
            while not self.save(comment):
                self.resume()
            self.made += (comment,)


def kills(folder):
    """Servers are killed while sessions save: each acknowledged save is on file once, and the next start is quick."""
    data, dice = folder + "/data", random.Random(20261121)
    keeper, savers = session(data), [Saver(PROGRAM, data) for _ in range(20 if LONG else 8)]
    with concurrent.futures.ThreadPoolExecutor(len(savers)) as pool:
        runs = [pool.submit(saver.run, f"saver {number}") for number, saver in enumerate(savers)]
        for _ in range(200 if LONG else 5):
            time.sleep(dice.uniform(0.02, 0.08))
            dice.choice(savers).process.kill()
        for saver in savers:
            saver.stopped = True
        for done in runs:
            done.result()
    made = sorted(comment for saver in savers for comment in saver.made)
    assert keeper.saved() == made and all(saver.made for saver in savers), "a save is missing or on file twice"
    for work in [keeper, *savers]:
        work.process.kill()
    begun = time.monotonic()
    opens(data, made)
    assert time.monotonic() - begun < 25, "a start after kills took a minute"


def backups(folder):
    """A backup is made online, of one moment, whole or not at all; a restore needs unused data and keeps them aside."""
    data, copy, fresh = folder + "/data", folder + "/copy", folder + "/fresh"
    work = session(data)
    made = save(work, "before")
    status, words = run(data, "--backup", copy)
    assert status == 0, words
    save(work, "after")
    assert run(data, "--backup", copy)[0] == 1 and run(data, "--restore", copy)[0] == 1 # not empty; at work
    for delay in 0.03, 0.06, 0.1:
        with subprocess.Popen([PROGRAM, "--data", data, "--backup", folder + "/half"], start_new_session=True,
                              stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL) as backup:
            time.sleep(delay)
            os.killpg(backup.pid, signal.SIGKILL)
        whole = os.path.exists(folder + "/half/manifest")
        assert (run(fresh, "--restore", folder + "/half")[0] == 0) == whole
        shutil.rmtree(folder + "/half", ignore_errors=True)
        shutil.rmtree(fresh, ignore_errors=True)
    work.close()
    for target in fresh, data:
        status, words = run(target, "--restore", copy)
        assert status == 0, words
        opens(target, list(made))
    opens(glob.glob(data + ".before-restore-*")[0], made + ["after"])
    # The next start completes a restore that was interrupted anywhere.
    for count, moved in enumerate((None, (), ("app.dat",), ("app.dat", "app.gld", "created"))):
        half = f"{folder}/half{count}"
        shutil.copytree(data, half) if moved is None else os.mkdir(half)
        os.makedirs(half + "/restoring")
        os.mkdir(half + ".aside")
        for name in "app.dat", "app.gld", "created":
            place = half if moved and name in moved else half + "/restoring"
            shutil.copy(copy + "/" + name, place) if name != "created" else open(place + "/" + name, "w").close()
        with open(half + "/switching", "w", encoding="ascii") as mark:
            mark.write(f"{'old' if moved is None else 'new'} {half}.aside\n")
        opens(half, list(made))
    with open(copy + "/app.dat", "r+b") as file:
        file.seek(100000)
        file.write(b"other")
    assert "checksums differ" in run(data, "--restore", copy)[1]


def upgrades(folder):
    """A session keeps its version of the server even when that is removed; data of the first release are converted."""
    source, target, data = folder + "/source", folder + "/server", folder + "/data"
    shutil.copytree(os.path.join(HERE, "../../server"), source)
    subprocess.run([source + "/compile", target], check=True)
    old = os.path.realpath(target + "/phserver")
    work = Session(target + "/phserver", data)
    for turn in range(3): # replaces every routine, also those that the session has not used yet
        for routine in glob.glob(source + "/*/MEV*.m"):
            with open(routine, "w", encoding="ascii") as file:
                file.write(f"{os.path.basename(routine)[:-2]} ; {turn}\n QUIT\n")
        subprocess.run([source + "/compile", target], check=True)
        assert os.path.exists(old), "a version in use was removed"
    shutil.rmtree(os.path.dirname(old))
    save(work, "of old")
    assert len(work.saved()) == 1
    work.close()

    first = folder + "/first"
    os.makedirs(first, 0o700)
    with gzip.open(HERE + "/first_release.zwr.gz") as packed, open(folder + "/first.zwr", "wb") as file:
        shutil.copyfileobj(packed, file)
    segment = f'change -segment DEFAULT -file_name="{first}/app.dat" -block_size=4096 -allocation=4096'
    region = "change -region DEFAULT -key_size=1019 -record_size=1048576 -stdnull -qdbrundown"
    engine(first, f"""printf '%s\\n' '{segment}' '{region}' exit | "$gtm_dist/mumps" -run GDE
        "$gtm_dist/mupip" create; "$gtm_dist/mupip" load ../first.zwr
        "$gtm_dist/mupip" set -journal=enable,on,before_images,filename={first}/app.mjl -region DEFAULT
        touch created""")
    work = session(first)
    assert any("Indexing the names" in frame for frame in work.told), work.told
    assert "14^QUIET,IRIS^" in work.call("MEVHOST PATIENTS", "iris")
    assert work.call("MEVUTL GETPARM", "RepHist-PedWtOpt").endswith("\n2")
    work.close()
    opens(first, [])
    engine(first, """"$gtm_dist/mumps" -run %XCMD 'SET ^MEVDATA("VERSION")=99'""")
    newer = run(first)[1]
    assert "F0\nA newer server made this data" in newer, newer


def surroundings(folder):
    """Odd names and variables do no harm; folders of others are refused, open ones closed; old dumps are removed."""
    assert "F0\nThe data folder /proc/nothing cannot be written." in run("/proc/nothing")[1]
    odd = {"gtm_local_collate": "1", "gtmcompile": "-bad", "CDPATH": "/", "BASH_ENV": "/none", "PATH": "/bin"}
    for name in 'a"b\n$(touch x)\\b $HOME,', "x" * 200:
        work = Session(PROGRAM, os.path.join(folder, name), **odd)
        made = save(work, "one")
        work.close(kill=True)
        opens(os.path.join(folder, name), made)
    data = folder + "/open"
    session(data).close()
    os.chmod(data, 0o755)
    work = session(data)
    assert os.stat(data).st_mode & 0o777 == 0o700
    work.process.send_signal(signal.SIGILL)
    work.process.wait()
    dump, = glob.glob(data + "/GTM_FATAL_ERROR*")
    assert not glob.glob("GTM_FATAL_ERROR*")
    os.utime(dump, (0, 0))
    session(data).close()
    assert not os.path.exists(dump)
    if os.geteuid() == 0:
        os.chmod(folder, 0o755)
        os.chmod(data, 0o777)
        other = subprocess.run(["runuser", "-u", "nobody", "--", PROGRAM, "--data", data, "--check"],
                               capture_output=True, text=True, check=False)
        assert "belongs to another user" in other.stderr or "cannot be" in other.stderr, other.stderr


if __name__ == "__main__":
    if not FAKETIME and sys.argv[2:] in ([], ["clocks"]):
        print("libfaketime is not installed.")
        sys.exit(77)
    for case in clocks, places, locks, journals, kills, backups, upgrades, surroundings:
        if len(sys.argv) == 2 or case.__name__ in sys.argv[2:]:
            with tempfile.TemporaryDirectory() as folder:
                case(folder)
