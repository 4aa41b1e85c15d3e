"""A whole session, by keys and through what a screen reader receives."""

import os
import re
import subprocess
import sys
import time
from pathlib import Path

import pyatspi
from dogtail.config import config
from gi.repository import GLib

config.checkForA11y = config.logDebugToFile = config.logDebugToStdOut = False
config.searchCutoffCount, config.actionDelay = 120, 0.1
from dogtail.tree import root  # It looks for programs as soon as it is imported.

OUTPUT = Path(os.environ["OUTPUT"])
HOME = Path(os.environ["HOME"])
JAPANESE = re.compile("[\u3040-\u30ff\u3400-\u9fff]")
# The same in any language: numbers with their units, two answers whose words are fixed, the program's own name.
NO_LANGUAGE = re.compile(r"[\d.]+( kPa|%)|OK|Cancel|tensio")
# Roles that say nothing of what a control is for.
NO_ROLE = {"filler", "unknown", "invalid", "panel", "redundant object", "layered pane", "viewport"}
EVENTS = ["object:property-change:accessible-value", "object:property-change:accessible-name",
          "object:state-changed:checked", "object:state-changed:focused"]


class Failure(Exception):
    pass


def walk(node, depth=0):
    """What a screen reader presents of a node, in the order of the tree: what is shown, and menus."""
    for child in node.children:
        if child.showing and child.visible or re.search("menu|separator", child.roleName):
            yield depth, child
            yield from walk(child, depth + 1)


def line(node):
    states = " ".join(state.value_nick for state in node.getState().get_states())
    value = "" if node.value is None else f"= {node.value:.1f} of {node.minValue:.0f}…{node.maxValue:.0f}"
    return f"{node.roleName} “{node.name}” ({node.description}) {value} {states} → {', '.join(node.actions)}"


def words(node):
    """A combo box is named by what it shows; what it is for is said beside."""
    if node.roleName == "combo box" and not JAPANESE.search(node.name):
        return f"{node.labeller and node.labeller.name} {node.description}"
    return node.name


def faults(window):
    """What a screen reader's user would miss in a window."""
    content = {"table cell", "list item", "table column header"} if re.search("ファイル|保存", window.name) else {}
    for _, node in walk(window):
        is_control = node.focusable or set(node.actions) - {"SetFocus"}
        if not node.name and (is_control or node.roleName in {"image", "icon", "progress bar", "chart"}):
            yield f"has no name: {line(node)}"
        if is_control and node.roleName in NO_ROLE:
            yield f"has no role that says what it is: {line(node)}"
        is_read = node.name and node.roleName not in content
        if is_read and not JAPANESE.search(words(node)) and not NO_LANGUAGE.fullmatch(words(node)):
            yield f"is not Japanese: {line(node)}"


class Session:
    def __init__(self):
        self.heard, self.focus, self.faults, self.tree = [], None, [], []
        pyatspi.Registry.registerEventListener(self.hear, *EVENTS)
        self.process = subprocess.Popen([os.environ["TENSIO_BIN"] + "/tensio"])
        self.program = root.application("tensio")
        self.program.clear_cache()
        self.program.set_cache_mask(pyatspi.cache.NONE)

    def hear(self, event):
        self.heard.append((event.rawType, event.source_name))
        if "focused" in event.rawType and event.detail1:
            self.focus = event.source

    def expect(self, what, condition=True):
        print("ok   " if condition else "FAULT", what, flush=True)
        if not condition:
            self.faults.append(what)

    def wait(self, what, condition, patience=60.0):
        end = time.monotonic() + patience
        while self.process.poll() is None and time.monotonic() < end:
            while GLib.MainContext.default().iteration(False):
                pass
            try:
                if result := condition():
                    return result
            except (GLib.Error, LookupError):
                pass  # It went while it was looked at.
            time.sleep(0.02)
        raise Failure(f"waited in vain for: {what}")

    def all(self, role, name="", window=None):
        return [node for _, node in walk(window or self.program) if role in node.roleName and re.search(name, node.name)]

    def find(self, role, name=""):
        return self.wait(f"{role} “{name}”", lambda: next(iter(self.all(role, name)), None))

    def focused(self):
        """The control that last reported the focus, and still has it."""
        return self.focus if self.focus and self.focus.focused else None

    def key(self, *keys, opens=None):
        subprocess.run(["xdotool", "key", "--clearmodifiers", *keys], check=True)
        if opens:
            self.window_opens(opens)

    def type(self, text):
        subprocess.run(["xdotool", "type", "--delay", "20", text], check=True)

    def tab(self):
        """Moves on, and says to what."""
        before = self.focused()
        self.key("Tab")
        return self.wait(f"another focus than {before}", lambda: (after := self.focused()) and after != before and after)

    def tab_to(self, name, *keys, opens=None):
        for _ in range(60):
            node = self.focused()
            if node and re.search(name, node.name):
                if keys:
                    self.key(*keys, opens=opens)
                return node
            self.tab()
        raise Failure(f"Tab does not reach “{name}”")

    def window_opens(self, name):
        """The window that keys go to."""
        def front():
            return next((window for window in self.program.children
                         if window.getState().contains(pyatspi.STATE_ACTIVE) and re.search(name, window.name)), None)
        return self.wait(f"window “{name}”", front)

    def listen(self, kind, name, *keys):
        """Waits for a report; after these keys, if any."""
        self.heard.clear()
        if keys:
            self.key(*keys)
        self.wait(f"event {kind} of “{name}”",
                  lambda: any(kind in heard and re.search(name, source or "") for heard, source in self.heard))

    def look(self, title, window_name):
        """Lists a window; Tab must reach its controls. Inside a list, and among radio buttons, arrows move."""
        window = self.window_opens(window_name)
        self.tree += [f"== {title}", *("  " * depth + line(node) for depth, node in walk(window)), ""]
        for fault in faults(window):
            self.expect(f"{title}: {fault}", False)
        first = self.wait(f"a focus in {title}", self.focused)
        able = [node for node in self.all("", window=window) if node.focusable and node.sensitive
                and not node.getState().contains(pyatspi.STATE_TRANSIENT)]
        order = [first]
        while len(able) > 1 and (node := self.tab()) != first and len(order) < 60:
            order.append(node)
        for stop in able:
            is_stop = stop.roleName != "label" and (stop.roleName != "radio button" or stop.checked)
            if is_stop and stop not in order:
                self.expect(f"{title}: Tab does not reach {line(stop)}", False)
        self.tree += ["Tab: " + " → ".join(node.name for node in order), ""]
        self.expect(f"{title}: {len(order)} stops of Tab")

    def start(self):
        self.look("主画面", "tensio")
        self.find("push button", "^開始$").doActionNamed("Press")
        self.look("測定の開始", "^測定の開始$")
        self.key("Escape", opens="^tensio")
        self.tab_to("^開始$", "space", opens="^測定の開始$")
        self.tab_to("^氏名$")
        self.type("Tanaka")
        self.tab_to("^目標圧（kPa）$", "Up", "Up", "Down")
        self.wait("30.1 in the target's field", lambda: self.focused().text == "30.1")
        self.key("Return")
        self.find("label", "^状態 (測定待ち|記録中)$")
        self.expect("the name is reported", self.find("label", "^氏名 Tanaka$"))
        self.expect("the title names the simulated device", self.find("frame", "模擬装置"))

    def measure(self):
        gauge = self.find("progress bar", "圧力ゲージ")
        self.wait("a live pressure", lambda: gauge.value > 5.0)
        self.listen("accessible-value", "圧力ゲージ")
        self.listen("accessible-name", "現在の圧力")
        self.expect("the pressure and its changes are reported")

    def scales(self):
        chart = self.find("chart")
        for stop, key, scale in (("圧力目盛を上げる", "Up", "〜85 kPa"), ("圧力目盛", "Down", "〜80 kPa"),
                                 ("時間目盛を短くする", "Right", "35秒"), ("時間目盛", "Left", "30秒")):
            self.tab_to(stop, key)
            self.wait(f"{scale} after {key}", lambda: scale in chart.description and scale in self.focused().description)
            self.expect(f"{key}: {scale}")
        self.tab_to("^目標の割合", "Down")
        self.find("menu item", "^90%$")
        self.key("Down", "Down", "Return")
        self.find("combo box", "^目標の割合 90%$")
        self.expect("90 % of the target", self.find("label", "^目標圧 27.1 kPa$"))
        self.tab_to("目標圧を上げる", "Up")
        self.find("label", "^目標圧 27.2 kPa$")

    def history(self):
        self.wait("three measurements", lambda: len(self.tiles()) >= 3, 120.0)
        self.expect("tiles cannot be selected while measuring", not any(tile.sensitive for tile in self.tiles()))
        self.tab_to("^終了$", "space")
        self.find("label", "^状態 待機中$")
        shown = self.tiles()
        first = self.tab_to(re.escape(shown[0].name))
        self.listen("state-changed:checked", first.name, "space")
        self.key("Right", "Return")
        self.wait("two selected", lambda: sum(tile.checked and tile.getState().contains(pyatspi.STATE_SELECTED)
                                                   for tile in self.tiles()) == 2)
        self.expect("the focus follows the arrow", self.focused().name == shown[1].name)
        pressures = [float(re.search("最大圧 ([0-9.]+) kPa", tile.name)[1]) for tile in shown]
        average = float(re.search("([0-9.]+) kPa", self.find("label", "^選択した測定の平均 ").name)[1])
        self.expect(f"the average of the selected is reported: {average}", abs(average - sum(pressures[:2]) / 2) < 0.11)
        self.look("測定後の主画面", "^tensio")

    def tiles(self):
        return self.all("check box", "回目 最大圧")

    def save(self):
        file = HOME / "Desktop" / "tensio.csv"
        self.find("push button", "CSV").doActionNamed("Press")
        self.window_opens("名前を付けて保存")
        self.key("Escape", opens="^tensio")
        self.expect("Esc saves nothing", not list(file.parent.iterdir()))
        self.tab_to("CSVファイルに保存$", "Return")
        self.look("名前を付けて保存", "名前を付けて保存")
        self.tab_to("^ファイル名", "ctrl+a")
        self.type(str(file))
        self.key("Return")
        self.wait("the file", file.exists)
        text = file.read_bytes().decode("utf-16")
        self.expect("the file contains the name and every measurement",
                    "Tanaka" in text and all(word in text for tile in self.tiles() for word in tile.name.split()[0:3:2]))

    def preview(self):
        self.key("ctrl+p")
        self.look("印刷プレビュー", "^印刷プレビュー$")
        self.tab_to("^印刷されるページ$")
        self.tab_to("^一覧$", "Right")
        self.wait("the report as a grid", lambda: self.find("radio button", "^グリッド$").checked)
        self.tab_to("用紙の設定", "space")
        self.look("用紙の設定", "ページ設定")
        self.key("Escape", opens="^印刷プレビュー$")
        self.tab_to("^閉じる$", "Return", opens="^tensio")

    def menus(self):
        self.key("alt+t")
        self.find("menu item", "^55.0 kPa$")
        self.key("5", "Escape", "Escape")
        self.find("menu item", "目標圧の初期値").doActionNamed("ShowMenu")
        self.find("menu item", "^55.0 kPa$").doActionNamed("Press")
        self.wait("the default target on the disk", lambda: "55" in (HOME / ".config/tensio/tensio.ini").read_text())
        self.key("alt+h", "a")
        self.look("tensioについて", "tensioについて")
        self.key("Escape", opens="^tensio($| —)")
        self.tab_to("^開始$", "Return")
        self.look("警告", "削除されます")
        self.key("Escape", opens="^tensio($| —)")
        self.key("ctrl+q")
        self.expect("the program ends", self.process.wait(20.0) == 0)


session = Session()
try:
    for step in (session.start, session.measure, session.scales, session.history, session.save, session.preview, session.menus):
        step()
except Failure as failure:
    session.expect(str(failure), False)
finally:
    session.process.kill()
    (OUTPUT / "tree.txt").write_text("\n".join(session.tree).replace(str(HOME), "~"))
print(f"{len(session.faults)} faults; the tree is in build/accessibility/tree.txt")
sys.exit(1 if session.faults else 0)
