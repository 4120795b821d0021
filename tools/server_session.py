"""One session with the server, one call after the other, for the tests and benches that are written in Python."""

import os
import subprocess
import uuid


class Session:
    """One server process, signed on."""

    def __init__(self, program, data, user="SORREL,ADA", **environment):
        self.start([program, "--data", data], {**os.environ, **environment})
        self.number = 0
        self.told = []  # while it waited
        self.token = uuid.uuid4().hex  # of its own also where the data stay: a known number would be answered from memory
        if user:
            assert user in self.reply("MEVHOST SIGNON", f"{self.token}^{user}^2")

    def start(self, command, environment):
        self.process = subprocess.Popen(command, stdin=subprocess.PIPE, stdout=subprocess.PIPE, env=environment)

    def frame(self):
        """One frame's body; empty when the server has ended."""
        length = self.process.stdout.read(8)
        return self.process.stdout.read(int(length)).decode(errors="replace") if len(length) == 8 else ""

    def send(self, name, parameter, purpose=""):
        self.number += 1
        body = f"{self.number}{purpose and ' ' + purpose}\n{name}\n{parameter}".encode()
        self.process.stdin.write(b"%08d%s" % (len(body), body))
        self.process.stdin.flush()

    def call(self, name, parameter, purpose=""):
        """The answer's body; empty when the server has ended."""
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
        """The reply's text; a failed call raises."""
        answer = self.call(name, parameter, purpose)
        assert answer.startswith(f"R{self.number}\n"), answer
        return answer.split("\n", 1)[1]

    def lines(self, name, parameter):
        return [line.split("^") for line in self.reply(name, parameter).split("\r\n") if line]

    def close(self):
        self.process.stdin.close()
        self.process.wait()
        self.process.stdout.close()
