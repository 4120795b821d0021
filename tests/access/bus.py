"""The host on the accessibility bus, and the keys that a test presses in it."""

import subprocess
import sys
import time

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402

PATIENCE = 20  # seconds

# Their children are cells and entries: texts of the data.
TABLES = {Atspi.Role.COMBO_BOX, Atspi.Role.LIST, Atspi.Role.LIST_BOX, Atspi.Role.TABLE, Atspi.Role.TREE_TABLE}

host = None  # the process; set by the test that starts it


def wait_for(what, look):
    """The first result of `look` that is not empty; exits if there is none in time."""
    end = time.monotonic() + PATIENCE
    while time.monotonic() < end:
        try:
            found = look()
        except GLib.Error:
            found = None  # closed meanwhile
        if found:
            return found
        time.sleep(0.02)
    for window in windows():
        print(f"  open: {window.get_role_name()} '{window.get_name()}'", file=sys.stderr)
    raise SystemExit(f"Not seen within {PATIENCE} s: {what}")


def children(node):
    return [child for child in (node.get_child_at_index(i) for i in range(node.get_child_count())) if child]


def application():
    return next((child for child in children(Atspi.get_desktop(0)) if child.get_process_id() == host.pid), None)


def has_state(node, state):
    return node.get_state_set().contains(state)


def windows():
    program = application()
    return [window for window in children(program) if has_state(window, Atspi.StateType.SHOWING)] if program else []


def descendants(node):
    """The node and all its descendants, except the cells of tables."""
    yield node
    if node.get_role() not in TABLES:
        for child in children(node):
            yield from descendants(child)


def find(window, role, name=None):
    return next((node for node in descendants(window) if node.get_role() == role and name in (None, node.get_name())
                 and has_state(node, Atspi.StateType.SHOWING)), None)


def focused(window):
    return next((n for n in descendants(window) if has_state(n, Atspi.StateType.FOCUSED)), None)


def main_window():
    return next((w for w in windows() if w.get_role() == Atspi.Role.FRAME), None)


def grid():
    return find(main_window(), Atspi.Role.TABLE, "Personal health records")


def press(*keys):
    subprocess.run(["xdotool", "key", "--delay", "30", *keys], check=True)


def focus(node):
    """Presses Tab until the node has the focus."""
    for _ in range(40):
        if has_state(node, Atspi.StateType.FOCUSED):
            return
        press("Tab")
        time.sleep(0.03)
    raise SystemExit(f"Tab does not reach {node.get_role_name()} {node.get_name()}")
