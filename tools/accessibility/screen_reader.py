"""What a screen reader knows of the program, and the keys of a person who uses one."""

import re
import subprocess
import time
from functools import cached_property

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, Gio, GLib

PATIENCE = 60.0
JAPANESE = re.compile("[\u3040-\u30ff\u3400-\u9fff]")
# The same in any language: numbers with their units, two answers whose words are fixed, the program's own name.
NO_LANGUAGE = re.compile(r"[\d.]+( kPa|%)|OK|Cancel|tensio")
# Roles that say nothing of what a control is for.
NO_ROLE = {"filler", "unknown", "invalid", "panel", "redundant object", "layered pane", "viewport"}
EVENTS = ["object:property-change:accessible-value", "object:property-change:accessible-name",
          "object:property-change:accessible-description", "object:state-changed:checked",
          "object:state-changed:focused"]


class Failure(Exception):
    pass


def switch_on():
    """As a screen reader does when it starts; only then do programs talk."""
    bus = Gio.bus_get_sync(Gio.BusType.SESSION)
    value = GLib.Variant("(ssv)", ("org.a11y.Status", "IsEnabled", GLib.Variant("b", True)))
    bus.call_sync("org.a11y.Bus", "/org/a11y/bus", "org.freedesktop.DBus.Properties", "Set", value, None, 0, -1, None)
    Atspi.init()


class Node:
    """What is known of a thing; asked for when it is needed, and then kept."""

    def __init__(self, accessible):
        self.accessible = accessible

    @cached_property
    def name(self):
        return self.accessible.get_name() or ""

    @cached_property
    def role(self):
        return self.accessible.get_role_name()

    @cached_property
    def description(self):
        return self.accessible.get_description() or ""

    @cached_property
    def states(self):
        return {state.value_nick for state in self.accessible.get_state_set().get_states()}

    @cached_property
    def interfaces(self):
        return self.accessible.get_interfaces()

    @cached_property
    def actions(self):
        count = self.accessible.get_n_actions() if "Action" in self.interfaces else 0
        return [self.accessible.get_action_name(index) for index in range(count)]

    @cached_property
    def value(self):
        """Now, at least, at most."""
        it = self.accessible
        if "Value" not in self.interfaces:
            return None
        return it.get_current_value(), it.get_minimum_value(), it.get_maximum_value()

    @cached_property
    def text(self):
        return self.accessible.get_text(0, -1) if "EditableText" in self.interfaces else None

    @cached_property
    def label(self):
        """What it is labelled by."""
        return " ".join(relation.get_target(0).get_name() for relation in self.accessible.get_relation_set()
                        if relation.get_relation_type() == Atspi.RelationType.LABELLED_BY)

    def words(self):
        """A combo box is named by what it shows; what it is for is said beside."""
        return f"{self.label} {self.description}" if self.role == "combo box" and not JAPANESE.search(self.name) else self.name

    def children(self):
        for index in range(self.accessible.get_child_count()):
            child = self.accessible.get_child_at_index(index)
            if child:
                yield Node(child)

    def is_shown(self):
        return {"showing", "visible"} <= self.states

    def is_control(self):
        return "focusable" in self.states or any(action != "SetFocus" for action in self.actions)

    def act(self, action):
        if action not in self.actions:
            raise Failure(f"cannot {action}: {self}")
        self.accessible.do_action(self.actions.index(action))

    def __str__(self):
        parts = [self.role, f"“{self.name}”"]
        if self.label:
            parts.append(f"of “{self.label}”")
        if self.description:
            parts.append(f"({self.description})")
        if self.value:
            parts.append("= {:.1f} of {:.0f}…{:.0f}".format(*self.value))
        if self.text is not None:
            parts.append(f"= “{self.text}”")
        parts.append(" ".join(sorted(self.states - {"showing", "visible", "enabled", "resizable", "read-only"})))
        if self.actions:
            parts.append("→ " + ", ".join(self.actions))
        return " ".join(part for part in parts if part)


class Program:
    """The running program, as far as a screen reader knows it."""

    def __init__(self, command):
        self.heard = []
        self.focus = None
        self.listener = Atspi.EventListener.new(self._hear)
        for kind in EVENTS:
            self.listener.register(kind)
        self.process = subprocess.Popen(command)
        self.root = self.wait("the program on the accessibility bus", self._find)
        self.root.set_cache_mask(Atspi.Cache.NONE)

    def _hear(self, event):
        self.heard.append((event.type, event.source.get_name()))
        if event.type.startswith("object:state-changed:focused") and event.detail1:
            self.focus = event.source

    def _find(self):
        desktop = Atspi.get_desktop(0)
        desktop.clear_cache()
        for index in range(desktop.get_child_count()):
            child = desktop.get_child_at_index(index)
            if child and child.get_process_id() == self.process.pid and child.get_child_count():
                return child
        return None

    def wait(self, what, condition, patience=PATIENCE):
        end = time.monotonic() + patience
        while True:
            while GLib.MainContext.default().iteration(False):
                pass
            try:
                result = condition()
            except GLib.Error:
                # It went while it was looked at.
                result = None
            if result:
                return result
            if self.process.poll() is not None:
                raise Failure(f"the program ended with {self.process.returncode} before: {what}")
            if time.monotonic() > end:
                raise Failure(f"waited in vain for: {what}")
            time.sleep(0.02)

    def windows(self):
        return [node for node in Node(self.root).children() if node.is_shown()]

    def front(self):
        """The window that keys go to."""
        return next((window for window in self.windows() if "active" in window.states), None)

    def walk(self, node=None, depth=0, where=lambda node: True):
        """All that stands in a node, in the order of the tree; past a node that does not fit, nothing."""
        for child in (node or Node(self.root)).children():
            if where(child):
                yield depth, child
                yield from self.walk(child, depth + 1, where)

    def all(self, role=None, name="", window=None):
        return [node for _, node in self.walk(window, where=Node.is_shown)
                if re.search(name, node.name) and role in (None, node.role)]

    def find(self, role=None, name="", patience=PATIENCE):
        return self.wait(f"{role or 'anything'} “{name}”", lambda: next(iter(self.all(role, name)), None), patience)

    def focused(self):
        """The control that last reported the focus, and still has it."""
        node = self.focus and Node(self.focus)
        return node if node and "focused" in node.states else None

    def key(self, *keys):
        subprocess.run(["xdotool", "key", "--clearmodifiers", *keys], check=True)

    def type(self, text):
        subprocess.run(["xdotool", "type", "--delay", "20", text], check=True)

    def tab(self, key="Tab"):
        """Moves on, and says to what."""
        before = self.focused()
        self.key(key)
        moved = lambda: (after := self.focused()) and (not before or after.accessible != before.accessible) and after
        return self.wait(f"another focus than {before}", moved, 10.0)

    def tab_to(self, name):
        for _ in range(60):
            node = self.focused()
            if node and re.search(name, node.name):
                return node
            self.tab()
        raise Failure(f"Tab does not reach “{name}”")

    def window_opens(self, name):
        return self.wait(f"window “{name}”", lambda: (front := self.front()) and re.search(name, front.name) and front)

    def listen(self, kind, name, deed, patience=10.0):
        """Acts and waits for the report."""
        self.heard.clear()
        deed()
        self.wait(f"event {kind} of “{name}”",
                  lambda: any(kind in heard and re.search(name, source or "") for heard, source in self.heard), patience)


def faults(program, window):
    """What a screen reader's user would miss in a window."""
    in_panel_of_files = "ファイル" in window.name or "保存" in window.name
    for _, node in program.walk(window, where=lambda node: node.is_shown() or "menu" in node.role):
        if node.is_control() and not node.name:
            yield f"has no name: {node}"
        if node.is_control() and node.role in NO_ROLE:
            yield f"has no role that says what it is: {node}"
        if node.role in ("image", "icon", "progress bar", "chart") and not node.name:
            yield f"has no name: {node}"
        is_content = in_panel_of_files and node.role in ("table cell", "list item", "table column header")
        if node.name and not is_content and not JAPANESE.search(node.words()) and not NO_LANGUAGE.fullmatch(node.words()):
            yield f"is not Japanese: {node}"


def listing(program, window):
    yield str(window)
    for depth, node in program.walk(window, where=lambda node: node.is_shown() or "menu" in node.role or "separator" in node.role):
        yield "  " * (depth + 1) + str(node)
