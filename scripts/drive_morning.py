#!/usr/bin/env python3
"""Plays a trader's morning in qzchart and compares after each step what the screen shows and what the store holds:

    drive_morning.py QZCHART FOLDER

Opens a folder of stocks, draws twelve tools, restyles, snaps, hides, writes a note, shows the band, switches period,
stock and user and back, kills the program, opens it again, and runs it twice on one stock. Exits with 1 and says which
step failed.
"""

import csv
import os
import sqlite3
import sys

from chart_user import (EYE, FAMILIES, MAGNET, NOTE, POINTS, RAY, SEGMENT, Chart, User, Window, desktop, expect, program,
                        run, wait_for)

STOCK, OTHER = "daily", "dearer"


def write_stocks(qzchart, environment, folder):
    """The sample bars, and the daily ones once more at ten times the price."""
    run("env", f"HOME={environment['HOME']}", qzchart, "--generate-samples", folder)
    with open(os.path.join(folder, f"{STOCK}.csv"), encoding="utf-8") as source:
        rows = list(csv.reader(source))
    with open(os.path.join(folder, f"{OTHER}.csv"), "w", encoding="utf-8", newline="") as target:
        writer = csv.writer(target)
        writer.writerow(rows[0])
        for row in rows[1:]:
            writer.writerow([row[0], *(f"{float(price) * 10:.2f}" for price in row[1:5]), *row[5:]])
    return {row[0].replace("-", ""): [float(price) for price in row[1:5]] for row in rows[1:]}


class Store:
    """What the users' files hold."""

    def __init__(self, home):
        self.home = home

    def files(self):
        return [os.path.join(folder, name) for folder, _, names in os.walk(self.home) for name in names
                if name == "LinePaint.db"]

    def rows(self):
        """(key, type, width, text, points) of every figure of every user, in order."""
        found = []
        for path in sorted(self.files()):
            try:
                with sqlite3.connect(f"file:{path}?mode=ro", uri=True, timeout=5) as database:
                    found += database.execute("SELECT graphIndex, graphType, lineWidth, textValue, points FROM GraphTable "
                                              "ORDER BY rowid").fetchall()
            except sqlite3.OperationalError:
                pass  # no table yet
        return found

    def wait_for_count(self, count, what):
        wait_for(f"{count} stored figures after {what}, but there are {len(self.rows())}",
                 lambda: len(self.rows()) == count, 10)


class Morning(Chart):
    def __init__(self, user, store, prices):
        super().__init__(user, f"^{STOCK} - qzchart$")
        self.store = store
        self.prices = prices

    def expect_stored(self, before, count, what):
        self.store.wait_for_count(before + count, what)

    def place(self, column, row, points, what):
        before = len(self.store.rows())
        self.press_tool(column, row)
        for x, y in points:
            self.user.click(self.point(x, y))
        self.expect_stored(before, 1, what)
        self.user.key("Escape")

    def draw_and_restyle(self):
        self.place(SEGMENT, 0, ((0.42, 0.20), (0.55, 0.30)), "a segment")
        self.user.click(self.point(0.485, 0.25))
        # The third control of the strip is the line width.
        self.user.click(Window("^Drawing style$").at(120, 15))
        self.user.key("Down")
        self.user.key("Return")
        wait_for("the chosen width is stored", lambda: [row[2] for row in self.store.rows()] == [2], 10)
        self.user.look("restyled")
        self.user.key("Escape")

    def draw_ten(self):
        for step, (name, (row, column, count)) in enumerate(FAMILIES.items()):
            shift = 0.012 * (step - 4)
            self.place(column, row, [(x + shift, y + shift) for x, y in POINTS[:count]], f"a {name}")
        self.place(RAY, 0, ((0.45, 0.88), (0.60, 0.82)), "a ray in the volume pane")
        self.user.look("eleven tools")

    def write_note(self):
        before = len(self.store.rows())
        self.press_tool(NOTE[1], NOTE[0])
        self.user.click(self.point(0.45, 0.60))
        wait_for("the editor of the note", lambda: Window.find("^Text$"), 5)
        run("xdotool", "type", "--delay", "50", "it's a top, \"perhaps\"")
        self.user.key("Return")
        self.expect_stored(before, 1, "a note")
        wait_for("its text is stored", lambda: self.store.rows()[-1][3] == "it's a top, \"perhaps\"", 5)
        self.user.key("Escape")

    def snap(self):
        self.press_function(MAGNET)
        self.place(SEGMENT, 0, ((0.60, 0.316), (0.70, 0.40)), "a segment with the magnet on")
        self.press_function(MAGNET)
        date, _, price = self.store.rows()[-1][4].split(";")[0].split(",")
        expect(any(abs(float(price) - each) < 1e-6 for each in self.prices[date]),
               f"the magnet snaps to a price of the candle, not to {price} on {date}")

    def hide_and_show(self):
        shown = self.candles("before hiding")
        self.press_function(EYE)
        expect(self.candles("hidden") == 0, "the eye hides every figure")
        self.press_function(EYE)
        expect(abs(self.candles("shown again") - shown) < 0.05 * shown, "the eye shows them again")

    def show_band(self):
        before = len(self.store.rows())
        self.user.key("s")
        wait_for("the window of the statistics", lambda: Window.find("^Range statistics$"), 5)
        self.user.look("band")
        self.user.key("s")
        wait_for("it closes", lambda: not Window.find("^Range statistics$"), 5)
        expect(len(self.store.rows()) == before, "the band is not a stored figure")

    def go_to(self, stock, key):
        self.user.key(key)
        wait_for(f"{stock} on show", lambda: Window.find(f"^{stock} - qzchart$"), 10)

    def switch_and_back(self, what, there, back):
        """Another sheet is empty and keeps its own; the first one is as it was."""
        stored = self.store.rows()
        shown = self.candles(f"before {what}")
        there()
        expect(self.candles(what) == 0, f"nothing of the first sheet shows after switching the {what}")
        self.place(SEGMENT, 0, ((0.45, 0.30), (0.60, 0.40)), f"a segment after switching the {what}")
        back()
        left = self.candles(f"back from another {what}")
        expect(abs(left - shown) < 0.02 * shown, f"the figures are back on the screen: {shown} px, {left} px")
        expect(sorted(set(self.store.rows()) & set(stored)) == sorted(set(stored)), f"the {what} changed no stored figure")

    def sign_in(self, name):
        self.user.key("alt+f")
        self.user.key("u")
        wait_for("the question for the user", lambda: Window.find("^Login user$"), 5)
        self.user.key("ctrl+a")
        self.user.key("BackSpace")
        if name:
            run("xdotool", "type", "--delay", "50", name)
        self.user.key("Return")
        wait_for("the answer is taken", lambda: not Window.find("^Login user$"), 5)
        wait_for("the tools go with the user", lambda: not Window.find("Drawing tools"), 5)
        self.open_palette()


def main():
    qzchart, pictures = sys.argv[1:3]
    with desktop(pictures) as environment:
        stocks = os.path.join(environment["HOME"], "stocks")
        prices = write_stocks(qzchart, environment, stocks)
        store = Store(environment["HOME"])
        user = User(pictures)
        with program(environment, qzchart, stocks) as process:
            morning = Morning(user, store, prices)
            morning.draw_and_restyle()
            morning.draw_ten()
            morning.write_note()
            morning.snap()
            morning.hide_and_show()
            morning.show_band()
            morning.switch_and_back("period", lambda: user.key("period"), lambda: user.key("comma"))
            morning.switch_and_back("stock", lambda: morning.go_to(OTHER, "Page_Down"),
                                    lambda: morning.go_to(STOCK, "Page_Up"))
            morning.switch_and_back("user", lambda: morning.sign_in("eve"), lambda: morning.sign_in(""))
            stored = store.rows()
            shown = morning.candles("before the program is killed")
            process.kill()
            process.wait()
        expect(store.rows() == stored, "a killed program leaves what was stored")
        with program(environment, qzchart, stocks):
            again = Morning(user, store, prices)
            left = again.candles("opened again")
            expect(abs(left - shown) < 0.02 * shown, f"the figures are where they were: {shown} px, {left} px")
            expect(store.rows() == stored, "opening changes nothing in the store")
            alone = again.look("one program")
            with program(environment, qzchart, os.path.join(stocks, f"{STOCK}.csv")):
                wait_for("two windows of one stock", lambda: len(Window.all(f"^{STOCK} - qzchart$")) == 2)
                Morning(user, store, prices).place(SEGMENT, 0, ((0.62, 0.15), (0.70, 0.18)), "a segment by the second program")
                user.look("second program")
            wait_for("the first program shows it", lambda: again.difference(alone, again.look("both")) > 50, 5)
            expect(len(store.rows()) == len(stored) + 1, "neither program lost a figure of the other one")


if __name__ == "__main__":
    main()
