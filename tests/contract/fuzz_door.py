"""Hostile certificates: names of any bytes in the door's header (remote/session), and mutated certificates
(remote/certificate.lua, in the door's own Lua). fuzz_door.py PHSERVER [SECONDS]"""

import ctypes
import faulthandler
import os
import random
import subprocess
import sys
import tempfile
import time

SENTENCE = b"F0\nThe server finds no user's name in your certificate."
# Prints its environment in place of a session.
STUB = '#!/bin/sh\nprintf "<%s><%s><%s>" "$mev_user" "$mev_peer" "$mev_certificate"\nexec cat\n'
NAMES = [*[text % b"touch executed" for text in (b"$(%s)", b"`%s`", b"; %s #", b"a[$(%s)]")], b"SORREL,ADA", b"'",
         b"%s%n%d", b"-n", b"*", b"\xc3\x89LAN,M", b"\xff\xfe", b"~root", b"$mev_user", b"x" * 30000, b" ", b"\\x41",
         b"A^B", b'"', b"\n", b"1\n\n2", b"\0", b"", b"\x7f"]


def field(kind, value):
    return bytes([kind]) + len(value).to_bytes(2, "big") + value


def header(dice):
    """A header of the door and the expected output of the session; empty for a broken header."""
    allowed = [byte for byte in range(32, 256) if byte not in b'"\\^\x7f']
    name = dice.choice((dice.choice(NAMES), dice.choice(NAMES) + dice.randbytes(dice.randrange(4)) + dice.choice(NAMES),
        bytes(dice.choices(dice.choice((range(256), allowed, allowed)), k=dice.choice((1, 2, 10, 64, 200, 201))))))
    inner = [field(0x21, b"TLSv1.3"), field(0x22, name), field(0x23, dice.randbytes(6))]
    dice.shuffle(inner)
    fields = [field(dice.choice((1, 2, 3, 4, 0x30)), dice.randbytes(dice.randrange(20)))
              for _ in range(dice.randrange(3))]
    fields += [field(0x20, b"\1\0\0\0\0" + b"".join(inner)), field(5, b"fit 1F")]
    dice.shuffle(fields)
    addresses, family, peer = dice.choice(((b"\x7f\0\0\1" + bytes(8), b"\x11", b"127.0.0.1"),
        (bytes(15) + b"\1" + bytes(20), b"\x21", b"0000:" * 7 + b"0001")))
    body = addresses + b"".join(fields)
    begin, length = b"\r\n\r\n\0\r\nQUIT\n\x21" + family, len(body).to_bytes(2, "big")
    if dice.random() < 0.2:  # shorter than its length fields say
        return dice.choice((begin + length + body[:-1], begin + (len(body) - 1).to_bytes(2, "big") + body[:-1],
            begin + (len(body) + 2).to_bytes(2, "big") + body + b"\4\0")), b""
    if not 0 < len(name) <= 200 or any(byte not in allowed for byte in name):
        return begin + length + body, b"%08d%s" % (len(SENTENCE), SENTENCE)
    return begin + length + body, b"%08dESESSION\n%s<%s><%s><1F>" % (len(name) + 9, name, name, peer)


def session(dice, folder, script):
    sent, said = header(dice)
    rest = dice.randbytes(20) if said.endswith(b">") else b""
    done = subprocess.run([script, folder + "/data"], input=sent + rest, capture_output=True, timeout=10, cwd=folder,
                          check=False)
    assert done.stdout == said + rest, (sent, done.stdout, said)
    assert not os.path.exists(os.path.join(folder, "executed")), sent


class Lua:
    """The converter of certificate.lua, as the door calls it."""

    def __init__(self, path):
        self.lua = ctypes.CDLL("liblua5.3.so.0")
        self.lua.luaL_newstate.restype = ctypes.c_void_p
        self.lua.lua_tolstring.restype = ctypes.c_char_p
        self.state = ctypes.c_void_p(self.lua.luaL_newstate())
        self.lua.luaL_openlibs(self.state)
        with open(path, encoding="utf-8") as file:
            self.run("core = { register_converters = function(_, f) converter = f end }\n" + file.read())

    def run(self, text, results=0):
        failed = (self.lua.luaL_loadstring(self.state, text.encode())
                  or self.lua.lua_pcallk(self.state, 0, results, 0, ctypes.c_ssize_t(0), None))
        word = self.lua.lua_tolstring(self.state, -1, None) if failed or results else None
        assert not failed, (text[-3000:], word)
        self.lua.lua_settop(self.state, 0)
        return word

    def fitness(self, der):
        began = time.process_time()
        word = self.run(f'return converter("{der.hex()}")', 1)
        assert time.process_time() - began < 0.1, der.hex()
        return word


def mutated(dice, der):
    der = bytearray(der)
    for _ in range(dice.randrange(5)):
        at = dice.randrange(len(der))
        what = dice.choice((b"", bytes([dice.randrange(256)]), b"\x88" + b"\xff" * 7 + dice.randbytes(1),
            bytes([0x80 + dice.randrange(20)]), b"\x30", b"\xa3"))
        der[at:at + dice.choice((len(what), 1, 1))] = what
    return bytes(der[:dice.randrange(1, len(der) + 1)] if dice.random() < 0.1 else der)


def main(program, seconds="2"):
    dice = random.Random(20261121)
    remote = os.path.join(os.path.dirname(os.path.abspath(program)), "remote")
    with tempfile.TemporaryDirectory() as folder:
        os.makedirs(folder + "/door/remote")
        script, stub = folder + "/door/remote/session", folder + "/door/phserver"
        os.symlink(remote + "/session", script)
        os.symlink(remote + "/../lib", folder + "/door/lib")
        with open(stub, "w", encoding="utf-8") as file:
            file.write(STUB)
        os.chmod(stub, 0o755)
        subprocess.run([remote + "/make-test-authority", folder + "/authority"], check=True)
        convert = ["openssl", "x509", "-outform", "DER", "-in"]
        certificates = [subprocess.check_output([*convert, f"{folder}/authority/{name}.pem"])
                        for name in ("sorrel", "mail", "nameless")]
        lua = Lua(remote + "/certificate.lua")
        assert [lua.fitness(der) for der in certificates] == [b"fit", b"purpose", b"names"]
        words, end = set(), time.monotonic() + float(seconds)
        while time.monotonic() < end:
            faulthandler.dump_traceback_later(30, exit=True)
            session(dice, folder, script)
            for _ in range(50):
                words.add(lua.fitness(mutated(dice, dice.choice(certificates))))
        assert words == {b"fit", b"purpose", b"names", b"unreadable"}


main(*sys.argv[1:])
