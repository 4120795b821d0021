"""One session with the server, one call after the other, for the tests and benches that are written in Python."""

import os
import subprocess


class Session:
    """One server process, signed on."""

    count = 0

    def __init__(self, program, data, user="SORREL,ADA", **environment):
        Session.count += 1
        self.process = subprocess.Popen([program, "--data", data], stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                                        env={**os.environ, **environment})
        self.number = 0
        self.told = []  # while it waited
        if user:
            answer = self.call("MEVHOST SIGNON", f"{Session.count:032x}^{user}")
            assert answer.startswith("R1\n") and user in answer, answer

    def call(self, name, parameter, purpose=""):
        """The answer's body; empty when the server has ended."""
        self.number += 1
        body = f"{self.number}{purpose and ' ' + purpose}\n{name}\n{parameter}".encode()
        try:
            self.process.stdin.write(b"%08d%s" % (len(body), body))
            self.process.stdin.flush()
        except BrokenPipeError:
            return ""
        while True:
            length = self.process.stdout.read(8)
            if len(length) < 8:
                return ""
            answer = self.process.stdout.read(int(length)).decode(errors="replace")
            if answer[0] not in "PE":
                return answer
            self.told.append(answer)

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
