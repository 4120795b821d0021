#!/usr/bin/env python3
"""The host as a screen reader meets it: started as a user starts it, walked over the accessibility bus.

Opens the main window and its dialogs by keys. In each window every control that takes the focus or can be pressed must
have a name that can be spoken, unique in its window; the grid of records must expose exactly the texts of its cells.
Needs its own display and session bus:

    xvfb-run -a dbus-run-session -- walk_windows.py HOST SERVER LIBRARY
"""

import os
import subprocess
import sys
import tempfile
import time

import bus
from bus import (TABLES, Atspi, application, descendants, find, focus, focused, grid, has_state, main_window, press,
                 wait_for, windows)

HOST, SERVER, LIBRARY = sys.argv[1:4]

# Everything else that takes the focus is a control too.
BUTTONS = {Atspi.Role.PUSH_BUTTON, Atspi.Role.TOGGLE_BUTTON, Atspi.Role.MENU, Atspi.Role.MENU_ITEM, Atspi.Role.PAGE_TAB}
faults = []
walked = {}


def spoken_name(node):
    """The name of a drop-down list is its value: its purpose is in its label or its description."""
    if node.get_role() != Atspi.Role.COMBO_BOX:
        return node.get_name()
    labels = [relation.get_target(0).get_name() for relation in node.get_relation_set()
              if relation.get_relation_type() == Atspi.RelationType.LABELLED_BY]
    return labels[0] if labels else node.get_description()


def check(window):
    """Records the controls of a window that have no unique name."""
    title = window.get_name() or window.get_role_name()
    seen = {}
    if not window.get_name():
        faults.append(f"A {title} has no title")
    for node in descendants(window):
        is_entry = node.get_role() == Atspi.Role.MENU_ITEM
        if not (node.get_role() in BUTTONS or has_state(node, Atspi.StateType.FOCUSABLE)):
            continue
        if not (has_state(node, Atspi.StateType.SHOWING) or (is_entry and node.get_n_actions())):
            continue
        name = spoken_name(node)
        if not any(letter.isalnum() for letter in name):
            faults.append(f"{title}: {node.get_role_name()} has no name to speak, but '{name}'")
        key = (node.get_role(), name)
        if key in seen and node.get_parent().get_name() != "Pages":  # the view and its inside share the name
            faults.append(f"{title}: two of {node.get_role_name()} '{name}'")
        seen[key] = node
    walked[title] = len(seen)


# --- Keys ---


def focus_top_window():
    """Replaces the window manager, which is missing here."""
    def is_active():
        found = subprocess.run(["xdotool", "search", "--onlyvisible", "--pid", str(bus.host.pid), "--name", "."],
                               capture_output=True, text=True).stdout.split()
        # windowfocus fails for a window that is just closing.
        given = found and not subprocess.run(["xdotool", "windowfocus", found[-1]], capture_output=True).returncode
        return given and any(has_state(window, Atspi.StateType.ACTIVE) for window in windows())

    wait_for("an active window", is_active)


def open_by(*keys):
    """The window that the keys open, after its check and ready for keys."""
    before = windows()
    press(*keys)
    window = wait_for("a new window", lambda: next((w for w in windows() if w not in before), None))
    wait_for("its name", window.get_name)
    focus_top_window()
    wait_for("the focus in " + window.get_name(), lambda: focused(window))
    check(window)
    return window


def leave(window, *keys):
    press(*(keys or ("Escape",)))
    wait_for("the end of " + window.get_name(), lambda: window not in windows())
    focus_top_window()


# --- The checks ---


def choose_patient(name):
    """Selects a patient and the patient's first visit."""
    picker = open_by("ctrl+o")
    press(*name)
    wait_for("the patient found", lambda: find(picker, Atspi.Role.LABEL, "1 found."))
    check(picker)
    leave(picker, "Return")
    wait_for("the patient's name as title", lambda: name.split(",")[0] in main_window().get_name().lower())
    visits = open_by("ctrl+t")
    leave(visits, "Down", "Return")
    wait_for("the visit", lambda: any(node.get_name().startswith("Visit ") for node in descendants(main_window())))


def check_grid():
    """Compares the cells on the bus with the grid as the host prints it."""
    printed = subprocess.run([HOST, "--user", "SORREL,ADA", "--data", DATA, "--server-program", SERVER, "--patient",
                              "1", "--list"], capture_output=True, text=True, check=True,
                             env={**os.environ, "QT_QPA_PLATFORM": "offscreen"}).stdout
    expected = [line.split("\t") for line in printed.splitlines()[1:]]
    table = grid()
    told = [[table.get_accessible_at(row, column).get_name() for column in range(table.get_n_columns())]
            for row in range(table.get_n_rows())]
    if told != expected:
        faults.append(f"The grid tells {told}, not {expected}")
    headings = [table.get_column_description(column) for column in range(table.get_n_columns())]
    if headings != ["Record", "Summary"]:
        faults.append(f"The columns of the grid are told as {headings}")


def look_at_rows():
    table = grid()
    labels = [table.get_accessible_at(row, 0).get_name() for row in range(table.get_n_rows())]
    focus(grid())
    press("ctrl+Home", *["Down"] * labels.index("Functional Status"))
    leave(open_by("Return"))
    leave(open_by("alt+d"))
    report = open_by("Menu", "d")  # visit detail
    if not any("PROVIDER" in node.get_description().upper() for node in descendants(report)):
        faults.append("The visit's report is shown, but not told")
    leave(report)


def walk():
    bus.host = subprocess.Popen([HOST, "--user", "SORREL,ADA", "--data", DATA, "--server-program", SERVER])
    wait_for("the host on the bus", application)
    wait_for("the grid", lambda: main_window() and grid())
    focus_top_window()
    check(main_window())
    choose_patient("hartley")
    check(main_window())
    check_grid()
    focus(find(main_window(), Atspi.Role.COMBO_BOX))
    press("Home", "Down")
    leave(open_by("alt+a"))
    look_at_rows()
    leave(open_by("alt+h", "Return"))


DATA = None


def main():
    global DATA
    with tempfile.TemporaryDirectory() as home:
        DATA = home + "/data"
        os.environ.update(XDG_DATA_HOME=home + "/share", XDG_CONFIG_HOME=home + "/config", QT_ACCESSIBILITY="1",
                          QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1", QT_QPA_PLATFORM="xcb")
        subprocess.run([HOST, "--register", LIBRARY], check=True, stdout=subprocess.DEVNULL)
        try:
            walk()
        finally:
            if bus.host:
                bus.host.terminate()
                bus.host.wait()
    print(f"Controls by window: {walked}")
    if faults:
        sys.exit("\n".join(["Faults:", *faults]))

main()
