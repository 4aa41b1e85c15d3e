"""A whole session, by keys and through what a screen reader receives."""

import os
import re
import sys
from pathlib import Path

from screen_reader import Failure, Program, faults, listing, switch_on

OUTPUT = Path(os.environ["OUTPUT"])
HOME = Path(os.environ["HOME"])
HEADING = """What tensio reports to screen readers: the controls of each window in the order of the tree, and the order of Tab.
A control has a role, a “name”, a (description), = a value of its range or a text, states, → actions; one that is not
sensitive is disabled.
"""


class Session:
    def __init__(self):
        switch_on()
        self.program = Program([os.environ["TENSIO_BIN"] + "/tensio"])
        self.faults = []
        self.tree = []

    def done(self, what):
        print("ok   ", what, flush=True)

    def expect(self, what, condition):
        if condition:
            self.done(what)
        else:
            self.fault(what)

    def fault(self, what):
        print("FAULT", what, flush=True)
        self.faults.append(what)

    def look(self, title, window_name):
        """Lists a window, and has Tab go round it."""
        program = self.program
        window = program.window_opens(window_name)
        self.tree += [f"== {title}", *listing(program, window), ""]
        for fault in faults(program, window):
            self.fault(f"{title}: {fault}")
        self.go_round(title, window)

    def go_round(self, title, window):
        """Tab must reach every control; inside a list, and among radio buttons, arrows move."""
        program = self.program
        first = program.wait(f"a focus in {title}", program.focused, 10.0)
        able = [node for node in program.all(window=window)
                if {"focusable", "sensitive"} <= node.states and "transient" not in node.states]
        stops = [node for node in able
                 if node.role != "label" and (node.role != "radio button" or "checked" in node.states)]
        order = [first]
        while len(able) > 1 and (node := program.tab()).accessible != first.accessible and len(order) < 60:
            order.append(node)
        for stop in stops:
            if all(stop.accessible != node.accessible for node in order):
                self.fault(f"{title}: Tab does not reach {stop}")
        self.tree += ["Tab: " + " → ".join(node.name for node in order), ""]
        self.done(f"{title}: {len(order)} stops of Tab")

    def start(self):
        program = self.program
        self.look("主画面", "tensio")
        program.find("push button", "^開始$").act("Press")
        self.look("測定の開始", "^測定の開始$")
        program.key("Escape")
        program.window_opens("^tensio")
        program.tab_to("^開始$")
        program.key("space")
        program.window_opens("^測定の開始$")
        program.tab_to("^氏名$")
        program.type("Tanaka")
        program.tab_to("^目標圧（kPa）$")
        program.key("Up", "Up", "Down")
        program.wait("30.1 in the target's field", lambda: program.focused().text == "30.1", 10.0)
        program.key("Return")
        program.find("label", "^状態 (測定待ち|記録中)$")
        self.expect("the name is reported", program.find("label", "^氏名 Tanaka$"))
        self.expect("the title names the simulated device", program.find("frame", "模擬装置"))

    def measure(self):
        program = self.program
        pressing = program.wait("a live pressure", lambda: (gauge := program.all("progress bar", "圧力ゲージ")[0]) and gauge.value[0] > 5.0 and gauge)
        self.done(f"live pressure {pressing.value[0]:.1f} kPa")
        program.listen("accessible-value", "圧力ゲージ", lambda: None)
        program.listen("accessible-name", "現在の圧力", lambda: None)
        self.done("changes of the pressure are reported")

    def scales(self):
        program = self.program
        chart = lambda: program.find("chart").description
        for stop, keys in (("圧力目盛を上げる", (("Up", "〜85 kPa"), ("Down", "〜80 kPa"))),
                           ("時間目盛を短くする", (("Right", "35秒"), ("Left", "30秒")))):
            program.tab_to(stop)
            for key, scale in keys:
                program.key(key)
                program.wait(f"{scale} after {key}", lambda: scale in chart() and scale in program.focused().description.replace("時間目盛 ", ""), 10.0)
                self.done(f"{key}: {scale}")
        program.tab_to("^目標の割合")
        program.key("Down")
        program.find("menu item", "^90%$")
        program.key("Down", "Down", "Return")
        program.find("combo box", "^目標の割合 90%$")
        self.expect("90 % of the target", program.find("label", "^目標圧 27.1 kPa$"))
        program.tab_to("目標圧を上げる")
        program.key("Up")
        program.find("label", "^目標圧 27.2 kPa$")

    def history(self):
        program = self.program
        tiles = lambda: program.all("check box", "回目 最大圧")
        program.wait("three measurements", lambda: len(tiles()) >= 3, 120.0)
        self.expect("tiles cannot be selected while measuring", all("sensitive" not in tile.states for tile in tiles()))
        program.tab_to("^終了$")
        program.key("space")
        program.find("label", "^状態 待機中$")
        shown = tiles()
        first = program.tab_to(re.escape(shown[0].name))
        program.listen("state-changed:checked", first.name, lambda: program.key("space"))
        program.key("Right", "Return")
        program.wait("two selected", lambda: sum("checked" in tile.states and "selected" in tile.states for tile in tiles()) == 2, 10.0)
        self.expect("the focus follows the arrow", program.focused().name == shown[1].name)
        pressures = [float(re.search("最大圧 ([0-9.]+) kPa", tile.name)[1]) for tile in shown]
        average = float(re.search("([0-9.]+) kPa", program.find("label", "^選択した測定の平均 ").name)[1])
        self.expect(f"the average of the selected is reported: {average}", abs(average - sum(pressures[:2]) / 2) < 0.11)
        self.look("測定後の主画面", "^tensio")
        return shown

    def save(self, tiles):
        program = self.program
        file = HOME / "Desktop" / "tensio.csv"
        program.find("push button", "CSV").act("Press")
        program.window_opens("名前を付けて保存")
        program.key("Escape")
        program.window_opens("^tensio")
        self.expect("Esc saves nothing", not list(file.parent.iterdir()))
        program.tab_to("CSVファイルに保存$")
        program.key("Return")
        self.look("名前を付けて保存", "名前を付けて保存")
        program.tab_to("^ファイル名")
        program.key("ctrl+a")
        program.type(str(file))
        program.key("Return")
        program.wait("the file", file.exists)
        text = file.read_bytes().decode("utf-16")
        self.expect("the file contains the name and every measurement",
                    "Tanaka" in text and all(word in text for tile in tiles for word in tile.name.split()[0:3:2]))

    def preview(self):
        program = self.program
        program.key("ctrl+p")
        self.look("印刷プレビュー", "^印刷プレビュー$")
        program.tab_to("^印刷されるページ$")
        program.tab_to("^一覧$")
        program.key("Right")
        program.wait("the report as a grid", lambda: "checked" in program.find("radio button", "^グリッド$").states, 10.0)
        self.done("arrow chooses the report")
        program.tab_to("用紙の設定")
        program.key("space")
        self.look("用紙の設定", "ページ設定")
        program.key("Escape")
        program.window_opens("^印刷プレビュー$")
        program.tab_to("^閉じる$")
        program.key("Return")
        program.window_opens("^tensio")

    def menus(self):
        program = self.program
        program.key("alt+t")
        program.find("menu item", "^55.0 kPa$")
        program.key("5", "Escape", "Escape")
        program.find("menu item", r"目標圧の初期値").act("ShowMenu")
        program.find("menu item", "^55.0 kPa$").act("Press")
        program.wait("the default target on the disk", lambda: "55" in (HOME / ".config/tensio/tensio.ini").read_text(), 10.0)
        self.done("the default target is stored")
        program.key("alt+h", "a")
        self.look("tensioについて", "tensioについて")
        program.key("Escape")
        program.window_opens("^tensio($| —)")
        program.tab_to("^開始$")
        program.key("Return")
        self.look("警告", "削除されます")
        program.key("Escape")
        program.window_opens("^tensio($| —)")

    def quit(self):
        self.program.key("ctrl+q")
        code = self.program.process.wait(20.0)
        self.expect(f"the program ends with {code}", code == 0)

    def play(self):
        self.start()
        self.measure()
        self.scales()
        self.save(self.history())
        self.preview()
        self.menus()
        self.quit()


def main():
    session = Session()
    try:
        session.play()
    except Failure as failure:
        session.fault(str(failure))
    finally:
        if session.program.process.poll() is None:
            session.program.process.kill()
        (OUTPUT / "tree.txt").write_text("\n".join([HEADING, *session.tree]).replace(str(HOME), "~"))
    print(f"{len(session.faults)} faults; the tree is in build/accessibility/tree.txt")
    return 1 if session.faults else 0


sys.exit(main())
