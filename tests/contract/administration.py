"""Users, limits, events and the audit, for an administrator and a stubborn client. administration.py PHSERVER"""

import glob
import os
import re
import resource
import socket
import subprocess
import sys
import tempfile
import time

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "../../tools"))
import server_session

TOKEN = "0" * 32


class Session(server_session.Session):
    """One server process. mev_user is the name in the certificate; patience is the number of refusals before delays."""

    def __init__(self, user=None, certified="", patience="100"):
        super().__init__(PROGRAM, DATA, user, mev_user=certified, mev_peer="192.0.2.7" if certified else "",
                         mev_certificate="2F07" if certified else "", mev_patience=patience)

    def text(self, name, parameter=""):
        """The text of the reply, or the whole error frame."""
        answer = self.call(name, parameter)
        return answer.split("\n", 1)[1] if answer.startswith("R") else answer


def admin(*words, fails=False):
    """Runs a task of the server; its output."""
    status, said = server_session.task(PROGRAM, DATA, *words)
    assert (status != 0) == fails, (words, said)
    return said


def by_engine(code):
    """Runs M code on the data, with the server's routines available."""
    server = os.path.dirname(os.path.realpath(PROGRAM))
    routines = f"{server}/objects/server.so {server_session.ENGINE}/libgtmutil.so"
    assert server_session.engine(DATA, 'exec "$gtm_dist/mumps" -run %XCMD "$code"', code=code, gtm_tmp=DATA,
        mev_native=f"{server}/native", gtmroutines=routines, GTMXC_digest=f"{server}/native/digest.xc") == 0, code


def users():
    first = Session()
    assert first.text("MEVHOST USERS") == ""
    assert "--users add LAST,FIRST" in first.text("MEVHOST SIGNON", TOKEN + "^REED,OLIVE")
    first.close()
    for name in ("REED, OLIVE", "Reed,Olive", "REED", "R^D,OLIVE", "", "REED,O\\", "A" * 79 + ",B", "REED,\x01"):
        admin("--users", "add", name, fails=True)
    admin("--users", "add", "REED,OLIVE", "Nurse")
    assert "number 1" in admin("--users", "add", "REED,OLIVE", fails=True)
    assert "keys: PROVIDER" in admin("--users", "keys", "REED,OLIVE", "+PROVIDER", "+MEVZ ER EDIT", "-MEVZ ER EDIT")
    said = admin("--users", "keys", "REED,OLIVE", "+MEVZ ELDER CARE EDIT", fails=True)
    assert "The keys are: PROVIDER, MEVZ REP" in said
    admin("--users", "class", "REED,OLIVE", "TRAINEES", fails=True)
    assert "class TRAINEES" in admin("--users", "class", "REED,OLIVE", "+TRAINEES")
    admin("--users", "block", "TRAINEES")
    admin("--users", "enable", "NOBODY,AT ALL", fails=True)
    at_work = Session("REED,OLIVE")
    assert at_work.text("MEVUTL CHKSEC", "PROVIDER|QASZMENU^MEV DISABLE REP HIST EDITING") == "1|0^0~TRAINEES"
    for _ in range(60):
        assert at_work.text("MEVUTL SETPARM", "RepHist-PedWtOpt^1") == "1"
    by_engine(f'SET n="" FOR c=0:1 SET n=$ORDER(^MEVDONE("{at_work.token}",n)) IF n="" ZHALT c\'=50')
    at_work.call("MEVHOST SUBSCRIBE", "X.1")
    assert "Not the number of a user named" in admin("--users", "disable", "REED,OLIVE", "2", fails=True)
    admin("--users", "disable", "REED,OLIVE")
    admin("--notify", "X.1")  # a wrongly delivered event would be read instead of the next reply
    for call in (("MEVHOST KEYS", "PROVIDER"), ("MEVUTL SETPARM", "RepHist-PedWtOpt^1")):
        assert at_work.text(*call).startswith("-1^REED,OLIVE may not work here any more"), call
    at_work.close()
    admin("--users", "enable", "REED,OLIVE")
    # A second user of the same name, which only a fault can create.
    by_engine('SET ^MEVUSR(2,0)="REED,OLIVE^^^1",^MEVUSR("B","REED,OLIVE",2)=""')
    assert "several users named" in Session().text("MEVHOST SIGNON", TOKEN + "^REED,OLIVE")
    admin("--users", "disable", "REED,OLIVE", "2")
    by_engine('SET ^MEVPAT(5,0)="QUIET,IRIS^F^2900101"')


def limits():
    stubborn = Session("REED,OLIVE", patience="20")
    began = time.monotonic()
    answers = [stubborn.text("MEVREF SET", f"^EXAM^9^5^{'x' * 8000}") for _ in range(26)]
    assert time.monotonic() - began > 0.6 and set(answers) == {"-1^The refused item is not known."}, answers
    # With the stubborn one there are fifty; local sessions have no limit.
    many = [Session(certified="REED,OLIVE") for _ in range(50)]
    signed = [session.text("MEVHOST SIGNON", session.token + "^REED,OLIVE") for session in many]
    assert [reply[0] for reply in signed] == ["1"] * 49 + ["-"] and "has 50 sessions" in signed[-1], signed
    many.append(Session("REED,OLIVE"))
    for session in many:
        session.process.stdin.close()
    for session in many:
        session.process.wait(20)
    by_engine('SET ^MEVLIM(1)=$ZUT\\1000000_"^201"')
    stubborn.text("MEVREF DEL", "9")
    assert "Too many calls were refused" in stubborn.frame() and stubborn.frame() == ""
    reader = Session("REED,OLIVE")
    for call, name in (("UNSUBSCRIBE", "Q"), ("SUBSCRIBE", "Q"), ("UNSUBSCRIBE", "Q"), ("UNSUBSCRIBE", "Q")):
        assert reader.text("MEVHOST " + call, name) == "1"
    by_engine('ZHALT $DATA(^MEVSUB("Q"))')
    assert {reader.text("MEVHOST SUBSCRIBE", f"X.{number}") for number in range(1000)} == {"1"}
    assert reader.text("MEVHOST SUBSCRIBE", "X.1") == "1"
    assert reader.text("MEVHOST SUBSCRIBE", "Y").startswith("-1^This session subscribes to 1,000")
    admin("--notify", "X.1")
    assert reader.frame() == "EX.1\n"
    reader.process.send_signal(19)
    by_engine('SET s=$ORDER(^MEVSUB("X.1","")) FOR i=1:1:5000 SET ^MEVQUE(s,$INCREMENT(^MEVQUE(s)))="X.1"_$C(10)')
    for _ in range(2):
        admin("--notify", "X.1")
        by_engine('ZHALT $ORDER(^MEVQUE($ORDER(^MEVSUB("X.1","")),0))\'=""')
    reader.process.send_signal(18)
    assert "does not read its events" in reader.frame() and reader.frame() == ""


class OnSocket(Session):
    """Reads as a remote session does."""

    def start(self, command, environment):
        own, theirs = socket.socketpair()
        with own, theirs:
            self.process = subprocess.Popen(command, stdin=theirs, stdout=theirs, env=environment)
            self.process.stdin, self.process.stdout = own.makefile("wb"), own.makefile("rb")

    def close(self, kill=False):
        self.process.stdout.close()
        super().close(kill)


def events():
    """Events arrive between frames, also during a call, on pipes and sockets, until the session unsubscribes."""
    writer, other = Session("REED,OLIVE"), Session("REED,OLIVE")
    for call, name in (("", "REFUSAL.50"), ("", "REFUSAL.5"), ("UN", "REFUSAL.5")):
        assert other.text(f"MEVHOST {call}SUBSCRIBE", name) == "1"
    assert writer.text("MEVREF SET", "^EXAM^1^5^01/02/2026^first") == "1"
    record = writer.lines("MEVREF GET", "5")[0][0]
    for kind in (Session, OnSocket):
        reader = kind("REED,OLIVE")
        assert reader.text("MEVHOST SUBSCRIBE", "REFUSAL" if kind is Session else "REFUSAL.5") == "1"
        for turn in range(70):
            began, calls = time.monotonic(), turn % 7
            writer.send("MEVREF SET", f"{record}^EXAM^1^5^01/02/2026^turn {turn}")
            for _ in range(calls):
                reader.send("MEVHOST KEYS", "PROVIDER")
            assert sorted(reader.frame()[0] for _ in range(calls + 1)) == ["E"] + ["R"] * calls
            assert writer.frame().endswith("\n1") and time.monotonic() - began < 8, turn
        reader.process.stdin.close()
    assert other.text("MEVHOST KEYS", "PROVIDER") == "1" and other.told == []


def deliveries():
    """Two writers at once, twenty listeners: each gets each event once, in time, and then reads the last change."""
    writers = Session("REED,OLIVE"), Session("REED,OLIVE")
    listeners = [kind("REED,OLIVE") for kind in (Session, OnSocket) for _ in range(10)]
    for session in listeners:
        assert session.text("MEVHOST SUBSCRIBE", "REFUSAL.5") == "1"
    records = []
    for writer in writers:
        known = {line[0] for line in writer.lines("MEVREF GET", "5")}
        assert writer.text("MEVREF SET", "^EXAM^1^5^01/02/2026^first") == "1"
        records += {line[0] for line in writer.lines("MEVREF GET", "5")} - known
    for session in listeners:
        assert session.frame() == session.frame() == "EREFUSAL.5.REF\n"
    for turn in range(100):
        began = time.monotonic()
        for writer, record in zip(writers, records):
            writer.send("MEVREF SET", f"{record}^EXAM^1^5^01/02/2026^turn {turn}")
        for session in listeners[turn % 4::4]:
            session.send("MEVHOST KEYS", "PROVIDER")  # interrupted by the events, or not
        for index, session in enumerate(listeners):
            frames = sorted(session.frame()[0] for _ in range(3 if index % 4 == turn % 4 else 2))
            assert frames[-3:] in (["E", "E"], ["E", "E", "R"]), (turn, index, frames)
        assert time.monotonic() - began < 8, turn  # a lost signal would cost a turn of 20 s
        assert [writer.frame().endswith("\n1") for writer in writers] == [True, True]
        for session in listeners[turn % 5::5]:
            texts = {line[0]: line[11] for line in session.lines("MEVREF GET", "5")}
            assert [texts[record] for record in records] == [f"turn {turn}"] * 2, (turn, texts)
    assert not any(session.told for session in listeners)  # no event twice
    # Sent entries are removed, if not immediately; those of ended sessions immediately.
    by_engine('SET s="" FOR  SET s=$ORDER(^MEVQUE(s)) QUIT:s=""  SET f=$ORDER(^MEVQUE(s,"")) '
              'IF f,^MEVQUE(s)-f>100 ZHALT 1')
    for session in (*writers, *listeners):
        session.close(kill=session is listeners[0])
    Session("REED,OLIVE").close()  # its sign-on clears the killed session
    by_engine('SET s="" FOR  SET s=$ORDER(^MEVQUE(s)) QUIT:s=""  ZHALT:\'$DATA(^MEVSES(s)) 1')


def own_changes():
    """Only the session that makes a change gets its event as an own one, also in a second process after a reconnect."""
    writer, again, other = Session("REED,OLIVE"), Session(), Session("REED,OLIVE")
    again.text("MEVHOST SIGNON", f"{writer.token}^REED,OLIVE^2")
    for session in (writer, again, other):
        session.text("MEVHOST SUBSCRIBE", "REFUSAL.5")
    writer.send("MEVREF SET", "^EXAM^1^5^01/02/2026^own")
    assert writer.frame().endswith("\n1") and writer.frame() == "EREFUSAL.5.REF\nOWN"
    assert again.frame() == "EREFUSAL.5.REF\nOWN" and other.frame() == "EREFUSAL.5.REF\n"
    admin("--notify", "REFUSAL.5.REF")
    admin("--notify", "REFUSAL.5.REF", "of nobody")
    for session in (writer, again, other):
        assert session.frame() + session.frame() == "EREFUSAL.5.REF\nEREFUSAL.5.REF\nof nobody"
        session.close()


def audit():
    killed = Session("REED,OLIVE")
    killed.text("MEVHOST SUBSCRIBE", "REFUSAL.5")
    killed.process.kill()
    killed.process.wait()
    remote = Session("REED,OLIVE", certified="REED,OLIVE")
    by_engine('ZHALT $DATA(^MEVSUB)')  # a sign-on clears the entries of the killed session
    assert remote.text("MEVHOST SIGNON", TOKEN + "^SORREL,ADA").startswith("-1^Your certificate")
    for call, parameter in (("HOST PATIENT", "5"), ("REP GET", "5^^1"), ("REF GET", "5"), ("REP GET", "5"),
                            ("REF SET", "^EXAM^1^5^01/02/2026^first"), ("REF GET", "5^1"),
                            ("REF SET", "1^EXAM^1^5^01/02/2026^second"), ("REF DEL", "1")):
        reply = remote.text("MEV" + call, parameter)
        assert not reply.startswith("-1^"), (call, reply)
    remote.close()
    said = admin("--audit", "--patient", "5")
    heads = re.findall(r"^Entry (\d+)  \S+T\S+Z  REED,OLIVE \(user 1\)  (.*), patient 5, session (\d+)$", said, re.M)
    refused = [head for head in heads if head[1] == "MEVREF SET: refused"]
    assert len(refused) == 26, said  # of the stubborn one
    heads = [head for head in heads if head not in refused]
    assert [head[1] for head in heads] == ["LOOK PATIENT: looked", "LOOK LIST: looked",
        "LOOK DETAIL: looked, record REP 5", "MEVREF SET: made, record REF 1", "LOOK DETAIL: looked, record REF 1",
        "MEVREF SET: changed, record REF 1", "MEVREF DEL: deleted, record REF 1"], said
    assert len(set(head[2] for head in heads)) == 1
    assert said.count("certificate REED,OLIVE (number 2F07), from 192.0.2.7") == 7
    assert 'before "^MEVREF",1,1: first' in said and said.count('after "^MEVREF",1,1: second') == 1
    assert admin("--audit", "--record", "REF", "1").count("Entry") == 4
    yesterday = time.strftime("%Y-%m-%d", time.gmtime(time.time() - 86400))
    told = admin("--audit", "--user", "REED,OLIVE", "--since", yesterday)
    for part in ("SIGNOFF: done", "SIGNON: refused", "cut; bytes and digest of the whole: 8010^", "asked: ^EXAM^9^5"):
        assert part in told, part
    assert len(max(told.splitlines(), key=len)) < 4200
    assert re.search(r"  administrator \(.*\)  USERS add: made, record USR 1$", admin("--audit"), re.M)
    assert "No such entry" in admin("--audit", "--since", "2999-01-01")

    *_, kept = admin("--audit", "--verify").splitlines()
    entry, last = int(heads[4][0]), int(kept.split()[0])
    changed, inserted = f"Entry {entry} or the one before it was changed", "Entry {} was inserted"
    for change, found in (
            (f'SET $PIECE(^MEVAUD({entry}),"^",7)="BARE,JUNO"', changed),
            (f'SET ^MEVAUD({entry},"BEFORE","^MEVREF",1,1)="thirst"', changed),
            (f'SET ^MEVAUD({entry},"NOTE","a")=1', f"Entry {entry} has an unexpected node"),
            # With a recalculated hash: the next entry does not match any more.
            (f'SET n=^MEVAUD({entry}),$PIECE(n,"^",2)=9,f=$PIECE(^MEVAUD({entry - 1}),"^",11),'
             f'$PIECE(n,"^",11)=$$LINK^MEVAUDIT(f,{entry},$PIECE(n,"^",1,10)),^MEVAUD({entry})=n',
             f"Entry {entry + 1} or the one before it was changed"),
            (f"KILL ^MEVAUD({entry})", f"Entry {entry} is missing"),
            (f"MERGE ^MEVAUD({entry}.5)=^MEVAUD({entry})", inserted.format(f"{entry}.5")),
            (f"MERGE ^MEVAUD({last + 1})=^MEVAUD({last})", inserted.format(last + 1)),
            (f"KILL ^MEVAUD({last})", f"Entry {last} is missing at the end"),
            *[(f'KILL ^MEVAUX({index},{entry})', f"Entry {entry} is missing in the index")
              for index in ('"PATIENT",5', '"RECORD","MEVREF",1')],
            (f'SET $PIECE(^MEVAUD({entry}),"^",12)="x"', changed),
            ("SET ^MEVAUD(0)=1", inserted.format(0)), ("KILL ^MEVAUD", "All entries are missing"),
            (f'SET ^MEVAUD={last - 1}_"^"_$PIECE(^MEVAUD({last - 1}),"^",11) KILL ^MEVAUD({last})',
             f"Entry {last} does not have the hash")):
        by_engine("MERGE ^KEPT=^MEVAUD,^KEPX=^MEVAUX " + change)
        assert found in admin("--audit", "--verify", *kept.split(), fails=True), change
        by_engine("KILL ^MEVAUD,^MEVAUX MERGE ^MEVAUD=^KEPT,^MEVAUX=^KEPX KILL ^KEPT,^KEPX")
    # Entries of an older server are added to the chain: readable, and protected against changes.
    by_engine('KILL ^MEVAUD,^MEVAUX SET ^MEVAUD=1,^MEVAUD(1)="67895,52736^1^MEVREF DEL^1",^MEVAUD(1,"CALL")=9,'
              '^MEVAUD(1,"BEFORE","^MEVREF",9,0)="5^3260102"')
    by_engine("DO CHAIN^MEVAUDIT")
    assert "changed or deleted, patient 5" not in admin("--audit", "--verify") + admin("--audit", "--patient", "5")
    assert "MEVREF DEL: changed or deleted\n    asked: 9" in admin("--audit", "--patient", "5")
    by_engine('SET $PIECE(^MEVAUD(1),"^",2)=2')
    assert "Entry 2 or the one before it was changed" in admin("--audit", "--verify", fails=True)


def faults():
    """A call that fails midway changes nothing, and later saves of the session are kept."""
    session = Session("REED,OLIVE")
    save, before = ("MEVREF SET", "^EXAM^1^5^01/02/2026^after the fault"), session.text("MEVREF GET", "5")
    by_engine('SET ^KEPT=^MEVREF(0),^MEVVST("AA",5,1,999)="" KILL ^MEVREF(0)')
    assert "could not carry out MEVHOST VISITS: GVUNDEF" in session.text("MEVHOST VISITS", "5")
    assert session.text(*save).startswith("-1^The server could not carry out MEVREF SET: GVUNDEF")
    by_engine('SET ^MEVREF(0)=^KEPT KILL ^KEPT,^MEVVST("AA",5,1)')
    assert Session("REED,OLIVE").text("MEVREF GET", "5") == before and session.text(*save) == "1"
    # What a session has read and saved is remembered while others sign on; old entries are removed.
    by_engine('SET ^MEVSEEN("x")=1,^MEVDONE("x")=1')
    record = session.lines("MEVREF GET", "5")[0][0]
    again = ("MEVREF SET", f"{record}^EXAM^1^5^01/02/2026^after the fault")
    assert "could not be read into the form" in session.call(*again, purpose="CHECK")
    session.call("MEVREF GET", f"5^{record}", purpose="EDIT")
    for turn in range(2):
        Session("REED,OLIVE").close()
        session.number -= turn
        assert session.reply(*again, purpose=f"CHECK {session.number + turn}") == "1"
        entries = entries if turn else admin("--audit", "--record", "REF", record)
    assert entries == admin("--audit", "--record", "REF", record)
    by_engine('ZHALT $DATA(^MEVSEEN("x"))!$DATA(^MEVDONE("x"))')
    session.process.kill()
    assert "after the fault" in Session("REED,OLIVE").text("MEVREF GET", "5")
    # A number that another user of the same session token has used is not answered from memory.
    admin("--users", "add", "SECOND,ANN")
    two = Session("REED,OLIVE"), Session("SECOND,ANN")
    two[1].token, two[1].number = two[0].token, two[0].number - 1
    two[1].text("MEVHOST SIGNON", f"{two[0].token}^SECOND,ANN")
    assert [one.text("MEVUTL SETPARM", "RepHist-PedWtOpt^1") for one in two] == ["1", "-1^Request 2 was another call."]
    assert two[0].text("MEVHOST SAMPLE", "") == "0"
    # The files are private to the user, and the processes write no core dumps.
    assert not [name for name in glob.glob(f"{DATA}/**", recursive=True) if os.stat(name).st_mode & 0o77]
    assert resource.prlimit(two[0].process.pid, resource.RLIMIT_CORE) == (0, 0)


PROGRAM = os.path.abspath(sys.argv[1])
os.umask(0o022)
with tempfile.TemporaryDirectory() as folder:
    DATA = os.path.join(folder, "data")
    for task in ("--audit", "--check", "--notify", "--users"):
        assert "There is no database" in admin(task, fails=True)
    assert "no users yet" in admin("--empty", "--users")
    users()
    limits()
    audit()
    events()
    deliveries()
    own_changes()
    faults()
