"""The data open whatever happened to clock, folder, lock or version, and come back from a backup.
data_folder.py PHSERVER [CASE...]; ends with 77 where libfaketime is missing."""

import glob
import gzip
import os
import shutil
import signal
import subprocess
import sys
import tempfile
import threading
import time

from full_disk import Saver

PROGRAM = os.path.abspath(sys.argv[1])
HERE = os.path.dirname(os.path.abspath(__file__))
ENGINE = sorted(glob.glob("/usr/lib/*/fis-gtm/V*_*"))[-1]
FAKETIME = glob.glob("/usr/lib/*/faketime/libfaketime.so.1")


def clock(step):
    """The environment of a process whose clock is wrong."""
    return {"LD_PRELOAD": FAKETIME[0], "FAKETIME": step, "PHSERVER_KEEP": "LD_PRELOAD FAKETIME"} if step else {}


def session(data, step=""):
    return Saver(PROGRAM, data, **clock(step))


def engine(data, command, **environment):
    """A command of the engine's own programs, in the data folder."""
    settings = {"gtm_dist": ENGINE, "mev_data": "/proc/self/cwd", "gtmgbldir": "app.gld", "gtm_chset": "M",
                "gtmroutines": ENGINE + "/libgtmutil.so"}
    subprocess.run(["bash", "-c", command], cwd=data, env={**os.environ, **settings, **environment}, check=False,
                   stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)


def run(data, *arguments, **environment):
    """The status and the words of a task."""
    done = subprocess.run([PROGRAM, "--data", data, *arguments], env={**os.environ, **environment}, capture_output=True,
                          text=True, check=False, stdin=subprocess.DEVNULL)
    return done.returncode, done.stdout + done.stderr


def save(work, *comments):
    for comment in comments:
        assert work.save(comment).endswith("\n1"), comment
    return list(comments)


def opens(data, expected):
    """The data are sound and hold these saves, each once; more can be made."""
    work = session(data)
    assert work.saved() == sorted(expected), (data, work.saved(), expected)
    expected += save(work, "more")
    work.close()
    assert run(data, "--check")[0] == 0, data


def clocks(folder):
    """Steps of the clock at each start, kills between; another session joins with the right clock."""
    data, made = folder + "/data", []
    for count, step in enumerate(["", "-1s", "", "-5m", "+1d", "-1d", "", "+1d", "-1s"]):
        first, second = session(data, step), session(data)
        made += save(first, f"first {count}") + save(second, f"second {count}")
        ends = [("kill", "kill"), ("kill", "end"), ("end", "end")][count % 3]
        first.end(ends[0])
        second.end(ends[1])
    opens(data, made)
    # What a server did that went on with the journal: recovery finds no beginning, or a beginning behind the end.
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
    """Shared memory that is gone as soon as nobody uses it."""
    with open("/proc/sysvipc/shm", encoding="ascii") as table:
        return {line.split()[1] for line in table if len(line.split()[2]) > 3 and line.split()[2].startswith("1")}


def places(folder):
    """Moved and copied folders, closed and killed, of today and of before; the original's memory stays as it is."""
    for count, (old, end, move) in enumerate((old, end, move) for old in (0, 1) for end in ("end", "kill") for move in "ml"):
        data, there = f"{folder}/a {count}", f"{folder}/b{count}, \"moved\" $HOME"
        work, made = session(data), []
        if old: # full names, as earlier versions wrote them
            work.close()
            os.remove(data + "/place")
            full = f'-journal=enable,on,before_images,filename=\\"{data}/app.mjl\\"'.replace(" ", "\\ ")
            engine(data, f'"$gtm_dist/mupip" set {full} -region DEFAULT', mev_data=data)
            die = 'ZSYSTEM "kill -9 "_$JOB' if end == "kill" else "HALT"
            engine(data, f"""exec "$gtm_dist/mumps" -run %XCMD 'SET ^MEVTST=1 {die}'""", mev_data=data)
        else:
            made += save(work, "one", "two")
            work.end(end)
        live = session(data) if move == "l" else None
        if live:
            time.sleep(1) # its start has come to the disk
            shutil.copytree(data, there)
            for journal in glob.glob(data + "/app.mjl*"): # never older than the database's copy
                shutil.copy(journal, there)
        else:
            os.rename(data, there)
        doomed = doomed_memory()
        opens(there, list(made))
        assert doomed_memory() <= doomed, "a copy took the original's memory away"
        if live:
            joins = session(data) # by the memory that the copy named too
            made += save(live, "live") + save(joins, "joins")
            live.close()
            joins.close()
        if move != "m":
            opens(data, made)


def locks(folder):
    """A lock that is never given back ends in a sentence that names who holds it."""
    data = folder + "/data"
    session(data).close()
    with subprocess.Popen(["flock", "-x", data + "/lock", "sleep", "30"], start_new_session=True) as holder:
        time.sleep(0.3)
        status, words = run(data, "--check", PHSERVER_LOCK_LIMIT="2")
        os.killpg(holder.pid, signal.SIGKILL)
    assert status == 1 and f"by process {holder.pid} (flock, user" in words, words
    # One that goes on is waited for, whatever the limit.
    with subprocess.Popen(["flock", "-x", data + "/lock", "bash", "-c",
                           'for i in 1 2 3 4; do echo "Working +$i" >"$0/making-ready"; sleep 1; done', data]):
        time.sleep(0.3)
        waiting = Saver(PROGRAM, data, PHSERVER_LOCK_LIMIT="2")
    assert any("making the data ready: Working" in frame for frame in waiting.told), waiting.told
    waiting.close()


def journals(folder):
    """Old ones go while sessions are at work, and recovery misses none."""
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
    work.end("kill")
    opens(data, made)
    assert not glob.glob(data + "/rolled_bak*")


def kills(folder):
    """All sessions are killed while they save; the next start does not wait for the dead."""
    data, made = folder + "/data", []
    session(data).close()

    def saver(work, name):
        for count in range(100000):
            if not work.save(f"{name} {count}").endswith("\n1"):
                return
            made.append(f"{name} {count}")

    for turn in range(3):
        savers = [session(data) for _ in range(4)]
        threads = [threading.Thread(target=saver, args=(work, f"{turn} {number}")) for number, work in enumerate(savers)]
        for thread in threads:
            thread.start()
        time.sleep(0.4)
        for work in savers:
            work.process.kill()
        for thread in threads:
            thread.join()
        begun = time.time()
        work = session(data)
        assert time.time() - begun < 25, "a start after kills took a minute"
        there = work.saved()
        assert not set(made) - set(there) and len(set(there)) == len(there)
        work.close()
    assert run(data, "--check")[0] == 0


def backups(folder):
    """Online, of one moment, whole or none; restored only over data that nobody uses, which stay beside."""
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
    # Interrupted anywhere, a restore is brought to its end by the next start.
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
    """A session stays with the version that it began with, though that is gone; data of the first release are converted."""
    source, target, data = folder + "/source", folder + "/server", folder + "/data"
    shutil.copytree(os.path.join(HERE, "../../server"), source)
    subprocess.run([source + "/compile", target], check=True)
    old = os.path.realpath(target + "/phserver")
    work = Saver(target + "/phserver", data)
    for turn in range(3): # every routine that it has not used yet becomes another
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
    engine(first, f"""printf '%s\\n' '{segment}' 'change -region DEFAULT -key_size=1019 -record_size=1048576 -stdnull -qdbrundown' exit |
        "$gtm_dist/mumps" -run GDE; "$gtm_dist/mupip" create; "$gtm_dist/mupip" load ../first.zwr
        "$gtm_dist/mupip" set -journal=enable,on,before_images,filename={first}/app.mjl -region DEFAULT; touch created""")
    work = session(first)
    assert any("Indexing the names" in frame for frame in work.told), work.told
    assert "14^QUIET,IRIS^" in work.call("MEVHOST PATIENTS", "iris")
    assert work.call("MEVUTL GETPARM", "RepHist-PedWtOpt").endswith("\n2")
    work.close()
    opens(first, [])
    engine(first, """"$gtm_dist/mumps" -run %XCMD 'SET ^MEVDATA("VERSION")=99'""")
    newer = subprocess.run([PROGRAM, "--data", first], stdin=subprocess.DEVNULL, capture_output=True, check=False).stdout
    assert b"F0\nA newer server made this data" in newer, newer


def surroundings(folder):
    """Odd names and variables do no harm; a folder open to others is closed; dumps lie with the data and go."""
    odd = {"gtm_local_collate": "1", "gtmcompile": "-bad", "CDPATH": "/", "BASH_ENV": "/none", "PATH": "/bin"}
    for name in 'a"b', "$HOME,", "a\nb", "$(touch x)", "\\b", "x" * 200:
        work = Saver(PROGRAM, os.path.join(folder, name), **odd)
        made = save(work, "one")
        work.end("kill")
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
        other = subprocess.run(["runuser", "-u", "nobody", "--", PROGRAM, "--data", data, "--check"], capture_output=True,
                               text=True, check=False)
        assert "belongs to another user" in other.stderr or "cannot be" in other.stderr, other.stderr


if __name__ == "__main__":
    if not FAKETIME:
        print("libfaketime is not installed.")
        sys.exit(77)
    for case in clocks, places, locks, journals, kills, backups, upgrades, surroundings:
        if len(sys.argv) == 2 or case.__name__ in sys.argv[2:]:
            with tempfile.TemporaryDirectory() as folder:
                began = time.time()
                case(folder)
                print(f"{case.__name__}: {time.time() - began:.1f} s", flush=True)
