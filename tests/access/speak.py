#!/usr/bin/env python3
"""Writes down what a screen reader says in each form. speak.py HOST SERVER LIBRARY FOLDER [SCENE...]

Opens the forms of the sample data by keys, as a user does, moves through each with Tab, and writes what Orca says into
FOLDER, a text for each form. Dates and times become patterns, because those of the sample data depend on the day on
which it was created. Needs its own display with a window manager, and its own session bus; tools/speak starts them.
"""

import json
import os
import re
import subprocess
import sys
import tempfile
import time

import bus
from bus import Atspi, application, find, focus, focused, grid, has_state, main_window, press, wait_for, windows

HOST, SERVER, LIBRARY, FOLDER, *WANTED = sys.argv[1:]
SILENCE = 0.7  # seconds after which Orca has said everything
FILLERS = {"Text unselected.", "selected"}  # said of the field that is left, before the next one
MOST_TABS = 70

# The patient's forms: how each is opened, and the name of its text.
PROVIDER = ("SORREL,ADA", 1, {
    "main-window": lambda: None,
    "patients": lambda: opened("ctrl+o"),
    "visits": lambda: opened("ctrl+t"),
    "reproductive": lambda: edited("Reproductive"),
    "functional-status": lambda: edited("Functional Status"),
    "functional-status-add": lambda: added("Functional Status"),
    "asthma": lambda: edited("Asthma Status"),
    "tx-contract": lambda: edited("Tx Contract"),
    "provider-lookup": lambda: searched(added("Treatment Contract"), "Provider", "s"),
    "date-typed": lambda: added("Treatment Contract"),
    "summary-opened": lambda: added("Treatment Contract"),
    "refusal": lambda: edited("Refusal"),
    "refusal-add": lambda: added("Refusal"),
    "visit-report": lambda: reported("Functional Status"),
})
INFANT = ("SORREL,ADA", 5, {
    "birth-measurements": lambda: edited("Birth Measurements"),
    "weight-typed": lambda: edited("Birth Measurements"),
    "infant-feeding": lambda: edited("Infant Feeding"),
    "infant-feeding-add": lambda: added("Infant Feeding"),
})
REGISTRY = ("ROLLINS,COLE", 11, {
    "asthma-add": lambda: added("Asthma Status"),
    "refused-typed": lambda: edited("Asthma Status"),
    "asthma-registry": lambda: pressed(edited("Asthma Status"), "Edit"),
})

# The texts of what is said while a field is typed: the field, and the keys.
TYPED = {
    "date-typed": ("Date Initiated", ["t", "minus", "3", "Tab"]),
    "summary-opened": ("Date Initiated", ["F2", "F2"]),
    "refused-typed": ("FEV 1", ["1", "9", "3", "Tab", "Return"]),
    "weight-typed": ("Birth Weight", ["3", "period", "2", "k", "Tab"]),
}

WEEKDAY = r"(?:Mon|Tue|Wed|Thu|Fri|Sat|Sun)[a-z]*"
MONTH = r"(?:Jan|Feb|Mar|Apr|May|Jun|Jul|Aug|Sep|Oct|Nov|Dec)[a-z]*"
PATTERNS = [
    (re.compile(rf"\b(?:{WEEKDAY},? )?{MONTH} \d{{1,2}}(?:, \d{{4}})?\b"), "<date>"),
    (re.compile(r"\b\d{1,2}/\d{1,2}/\d{2,4}\b"), "<date>"),
    (re.compile(r"\b\d{1,2}:\d{2}(?::\d{2})?\b"), "<time>"),
    (re.compile(r"\b\d+ (?:day|week|month|year)s? ago\b"), "<time ago>"),
    (re.compile(r"\bin \d+ (?:day|week|month|year)s?\b"), "<time ahead>"),
]


# --- What is said ---


class Ear:
    """What the reader has said and nobody has taken yet."""

    path, taken = None, 0

    def lines(self):
        with open(self.path, encoding="utf-8") as log:
            return [json.loads(line) for line in log.read().split("\n")[:-1]]

    def unread(self):
        return self.lines()[self.taken:]

    def skip_to(self, title):
        """Forgets what is said before the title."""
        def at_title():
            while self.unread() and not self.unread()[0].startswith(title):
                self.taken += 1
            return self.unread()

        wait_for("Orca says: " + title, at_title)

    def listen(self, patience=5.0):
        """What is said until the reader falls silent; waits for its first word."""
        begin = changed = time.monotonic()
        count = len(self.lines())
        while True:
            now, said = time.monotonic(), len(self.lines())
            if said != count:
                count, changed = said, now
            heard = any(line not in FILLERS for line in self.unread())
            if now - changed > SILENCE and (heard or now - begin > patience):
                break
            time.sleep(0.05)
        said = self.unread()[:count - self.taken]
        self.taken = count
        return said


ear = Ear()


def patterned(text):
    for pattern, name in PATTERNS:
        text = pattern.sub(name, text)
    return text


# --- The forms ---


def opened(*keys):
    """The window that the keys open, when a field in it has the focus."""
    ear.listen(0)
    before = windows()
    press(*keys)
    window = wait_for("a new window", lambda: next((w for w in windows() if w not in before
                                                       and w.get_role() == Atspi.Role.DIALOG), None))
    wait_for("the focus in it", lambda: has_state(window, Atspi.StateType.ACTIVE) and focused(window))
    ear.skip_to(window.get_name() + " dialog")
    return window


def stayed():
    """The main window, with the focus on the first record."""
    focus(grid())
    ear.listen(0)
    press("ctrl+Home", "Down")
    return main_window()


def row(kind):
    """Selects the first record of a kind in the grid."""
    table = grid()
    kinds = [table.get_accessible_at(line, 0).get_name() for line in range(table.get_n_rows())]
    focus(table)
    press("ctrl+Home", *["Down"] * kinds.index(kind))


def edited(kind):
    row(kind)
    return opened("Return")


def reported(kind):
    row(kind)
    return opened("Menu", "d")


def added(kind):
    types = find(main_window(), Atspi.Role.COMBO_BOX)
    focus(types)
    press("Home")
    for _ in range(10):
        if types.get_name().strip() == kind:
            return opened("alt+a")
        name = types.get_name()
        press("Down")
        wait_for("the next type", lambda: types.get_name() != name)
    raise SystemExit(f"{kind} cannot be added")


def pressed(form, caption):
    """The window that a button of the form opens."""
    focus(find(form, Atspi.Role.PUSH_BUTTON, caption))
    return opened("space")


def enter(form, field):
    """Moves into a field of the form and selects its text."""
    focus(next(node for node in bus.descendants(form)
               if node.get_name() == field and has_state(node, Atspi.StateType.EDITABLE)))
    press("ctrl+a")


def searched(form, field, letters):
    """The lookup of a field of the form."""
    enter(form, field)
    press("Delete", "Tab", "shift+Tab", *letters)
    return opened("Tab", "space")


def leave():
    """Closes the windows on top of the main window, and waits until Orca has noticed it."""
    ear.listen(0)
    had = len(windows())
    while len(windows()) > 1:
        count = len(windows())
        press("Escape")
        wait_for("the end of the window", lambda: len(windows()) < count)
    if had > 1:
        notice_main_window()


def notice_main_window():
    wait_for("the main window", lambda: has_state(main_window(), Atspi.StateType.ACTIVE))
    wait_for("its title", lambda: any(line.endswith(" - Personal Health frame.") for line in ear.unread()))
    ear.listen(0)


def select_visit():
    opened("ctrl+t")
    ear.listen(0)
    press("Down", "Return")
    wait_for("the visit", lambda: any(n.get_name().startswith("Visit ") for n in bus.descendants(main_window())))
    notice_main_window()


# --- The walk ---


def told(window):
    """What is said on the way through the window with Tab, until the focus is back at its start."""
    lines = ear.listen()
    first = focused(window)
    for _ in range(MOST_TABS):
        press("Tab")
        said = ear.listen()
        lines += ["", "Tab:", *said]
        if focused(window) == first:
            return lines
    raise SystemExit(f"Tab does not come back to its start in {window.get_name()}")


def told_typing(window, field, keys):
    """What is said after each key in a field."""
    enter(window, field)
    ear.listen(0)
    lines = []
    for key in keys:
        press(key)
        lines += [key + ":", *ear.listen(1.5), ""]
    return lines[:-1]


def write(name, lines):
    with open(os.path.join(FOLDER, name + ".txt"), "w", encoding="utf-8") as text:
        text.write("\n".join(patterned(line) for line in lines) + "\n")
    print(name, flush=True)


def walk(data, user, patient, scenes):
    scenes = {name: way for name, way in scenes.items() if not WANTED or name in WANTED}
    if not scenes:
        return
    bus.host = subprocess.Popen([HOST, "--user", user, "--data", data, "--server-program", SERVER, "--patient",
                                 str(patient)], stderr=subprocess.DEVNULL)
    wait_for("the grid", lambda: application() and main_window() and grid())
    wait_for("the main window", lambda: has_state(main_window(), Atspi.StateType.ACTIVE))
    select_visit()
    for name, way in scenes.items():
        window = way() or stayed()
        write(name, told_typing(window, *TYPED[name]) if name in TYPED else told(window))
        leave()
    end(bus.host)


def end(process):
    if not process or process.poll() is not None:
        return
    process.terminate()
    try:
        process.wait(5)
    except subprocess.TimeoutExpired:
        process.kill()


def main():
    os.makedirs(FOLDER, exist_ok=True)
    with tempfile.TemporaryDirectory() as home:
        os.environ.update(HOME=home, XDG_DATA_HOME=home + "/share", XDG_CONFIG_HOME=home + "/config", LANG="C.UTF-8",
                          GSETTINGS_BACKEND="memory", QT_ACCESSIBILITY="1", QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1",
                          QT_QPA_PLATFORM="xcb")
        subprocess.run([HOST, "--register", LIBRARY], check=True, stdout=subprocess.DEVNULL)
        said = ear.path = home + "/said"
        helpers = [subprocess.Popen(["openbox"]),
                   subprocess.Popen(["/usr/bin/python3", os.path.join(os.path.dirname(__file__), "reader.py"), said,
                                     home + "/orca"], stderr=subprocess.DEVNULL)]
        try:
            wait_for("Orca's first word", lambda: os.path.exists(said) and os.path.getsize(said))
            for user, patient, scenes in (PROVIDER, INFANT, REGISTRY):
                walk(home + "/data", user, patient, scenes)
        finally:
            for process in [bus.host, *helpers]:
                end(process)


main()
