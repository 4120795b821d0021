"""One session with the server, one call after the other, and the server's tasks, for the tests in Python."""

import glob
import os
import subprocess
import uuid

ENGINE = sorted(glob.glob("/usr/lib/*/fis-gtm/V*_*"))[-1]


class Session:
    """One server process, signed on; any environment variables go to it."""

    def __init__(self, program, data, user="SORREL,ADA", **environment):
        self.command, self.user = ([program, "--data", data], {**os.environ, **environment}), user
        self.start(*self.command)
        self.number = 0
        self.told = []  # the progress and events that arrived during calls
        self.token = uuid.uuid4().hex  # unique: the server answers a known session's old numbers from memory
        if user:
            assert user in self.reply("MEVHOST SIGNON", f"{self.token}^{user}^2")

    def resume(self):
        """Continues a session whose server was killed; the next call has the number of the last one: a retry."""
        last = self.number - 1
        while self.number != last:
            self.process.wait(10)
            self.start(*self.command)
            self.number = 0
            if self.user in self.call("MEVHOST SIGNON", f"{self.token}^{self.user}^2"):
                self.number = last

    def start(self, command, environment):
        self.process = subprocess.Popen(command, stdin=subprocess.PIPE, stdout=subprocess.PIPE, env=environment)

    def frame(self):
        """The body of one frame; empty if the server has ended."""
        length = self.process.stdout.read(8)
        return self.process.stdout.read(int(length)).decode(errors="replace") if len(length) == 8 else ""

    def send(self, name, parameter, purpose=""):
        self.number += 1
        body = f"{self.number}{purpose and ' ' + purpose}\n{name}\n{parameter}".encode()
        self.process.stdin.write(b"%08d%s" % (len(body), body))
        self.process.stdin.flush()

    def call(self, name, parameter, purpose=""):
        """The body of the answer; empty if the server has ended."""
        try:
            self.send(name, parameter, purpose)
        except BrokenPipeError:
            return ""
        answer = self.frame()
        while answer[:1] in ("P", "E"):
            self.told.append(answer)
            answer = self.frame()
        return answer

    def reply(self, name, parameter, purpose=""):
        """The text of the reply; a failed call raises."""
        answer = self.call(name, parameter, purpose)
        assert answer.startswith(f"R{self.number}\n"), answer
        return answer.split("\n", 1)[1]

    def lines(self, name, parameter):
        return [line.split("^") for line in self.reply(name, parameter).split("\r\n") if line]

    def save(self, comment):
        """Saves a refusal of patient 14; whether the server acknowledged it."""
        return self.call("MEVREF SET", f"^EXAM^1^14^01/02/2026^{comment}").endswith("\n1")

    def saved(self):
        """The comments of the refusals that are on file."""
        return sorted(line[11] for line in self.lines("MEVREF GET", "14"))

    def close(self, kill=False):
        if kill:
            self.process.kill()
        self.process.stdin.close()
        self.process.wait()
        self.process.stdout.close()


def task(program, data, *arguments, **environment):
    """Runs one of the server's tasks; its exit status and its output."""
    done = subprocess.run([program, "--data", data, *arguments], env={**os.environ, **environment}, capture_output=True,
                          text=True, check=False, stdin=subprocess.DEVNULL)
    return done.returncode, done.stdout + done.stderr


def engine(data, command, **environment):
    """Runs a shell command in the data folder, with the engine's programs in $gtm_dist; its exit status."""
    settings = {"gtm_dist": ENGINE, "mev_data": "/proc/self/cwd", "gtmgbldir": "app.gld", "gtm_chset": "M",
                "gtmroutines": ENGINE + "/libgtmutil.so"}
    return subprocess.run(["bash", "-c", command], cwd=data, env={**os.environ, **settings, **environment}, check=False,
                          stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL).returncode
