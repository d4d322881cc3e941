#!/usr/bin/env python3
"""Plays a user of qzchart's panels and looks at the screen after each step:

    drive_panels.py QZCHART FOLDER

Exits with 1 and says which step failed.
"""

import sys

from chart_user import (DELETE_ALL, EYE, FAMILIES, MAGNET, NOTE, POINTS, RAY, SEGMENT, Chart, User, Window, desktop, expect,
                        program, run, wait_for)

# Where a family is taken hold of as a whole: on a line of it, off its points. A regression's guides are its points.
GRIPS = {"channel": (0.525, 0.375), "fan": (0.525, 0.375), "levels": (0.55, 0.50), "cycle": (0.45, 0.35),
         "waves": (0.525, 0.375), "shape": (0.525, 0.375), "range rule": (0.50, 0.50)}


class Session(Chart):
    def expect_keyboard(self, after):
        """A shortcut, unlike a single key, works only in the active window."""
        self.user.key("ctrl+o")
        dialog = "^Open bars$"
        wait_for(f"the keyboard is the chart's after {after}", lambda: Window.find(dialog), 5)
        self.user.key("Escape")
        wait_for("the dialog closes", lambda: not Window.find(dialog), 5)

    def draw(self):
        empty = self.candles("palette")
        self.press_tool(SEGMENT)
        # The click into the palette gave the keyboard back to the chart: Escape reaches it.
        self.user.key("Escape")
        self.user.click(self.point(0.4, 0.3))
        self.user.click(self.point(0.6, 0.5))
        expect(self.candles("cancelled") == empty, "Escape after a click into the palette cancels the tool")

        self.press_tool(SEGMENT)
        self.user.click(self.point(0.4, 0.3))
        self.user.click(self.point(0.6, 0.5))
        thin = self.candles("segment")
        expect(thin > empty + 100, "a segment in the candle pane")
        return thin

    def restyle(self, thin):
        # The strip has appeared at the top of the chart: its third control is the line width.
        strip = Window("^Drawing style$")
        self.user.click(strip.at(120, 15))
        self.user.look("width menu")
        for _ in range(4):
            self.user.key("Down")
        self.user.key("Return")
        thick = self.candles("restyled")
        expect(thick > 2 * thin, "a wider line from the strip")
        self.expect_keyboard("a choice in the strip")
        self.user.click(strip.at(25, 15))
        picker = "^Stroke colour$"
        wait_for("a colour picker", lambda: Window.find(picker))
        self.user.key("Escape")
        wait_for("the picker closes", lambda: not Window.find(picker))
        self.expect_keyboard("picking a colour")
        return thick

    def draw_in_volumes(self):
        before = self.volumes("before the ray")
        self.press_tool(RAY)
        self.user.click(self.point(0.4, 0.88))
        self.user.click(self.point(0.6, 0.82))
        expect(self.volumes("ray") > before + 100, "a ray in the volume pane")

    def move_divider(self):
        before = self.look("before the divider")
        self.user.drag(self.point(0.5, 0.7425), self.point(0.5, 0.60))
        after = self.look("divider")
        changed = self.difference(before, after, 0.62, 0.70)
        expect(changed > 1000, "the divider moves")

    def hide_and_show(self):
        shown = self.candles("before hiding")
        self.press_function(EYE)
        expect(self.candles("hidden") == 0, "the eye hides every figure")
        self.expect_keyboard("hiding")
        self.press_tool(SEGMENT)
        self.expect_keyboard("a click on a disabled tool")
        self.press_function(EYE)
        expect(self.candles("shown") > shown / 2, "the eye shows them again")

    def delete_all(self):
        before = self.candles("before deleting")
        self.press_function(DELETE_ALL)
        self.user.look("question")
        self.user.key("Escape")
        expect(self.candles("kept") == before, "Escape answers the question with no")
        self.expect_keyboard("the question")
        self.press_function(DELETE_ALL)
        self.user.key("Tab")
        self.user.key("space")
        expect(self.candles("deleted") == 0, "yes deletes every figure")

    def draw_families(self):
        """Each is drawn, moved as a whole and back, pulled by its first point and deleted, so that nothing lies over the
        next one."""
        for name, (row, column, count) in FAMILIES.items():
            before = self.look(f"before {name}")
            self.press_tool(column, row)
            for x, y in POINTS[:count]:
                self.user.click(self.point(x, y))
            drawn = self.look(name)
            expect(self.difference(before, drawn) > 30, f"a {name} in the candle pane")
            if name in GRIPS:
                x, y = GRIPS[name]
                self.user.drag(self.point(x, y), self.point(x + 0.05, y - 0.05))
                moved = self.look(f"{name} moved")
                expect(self.difference(drawn, moved) > 30, f"a {name} moves as a whole")
                self.user.drag(self.point(x + 0.05, y - 0.05), self.point(x, y))
                drawn = self.look(f"{name} moved back")
            x, y = POINTS[0]
            # A glyph stands on its point and is taken hold of inside its box.
            grip = y - 0.01 if count == 1 else y
            self.user.drag(self.point(x, grip), self.point(x - 0.1, y - 0.2))
            expect(self.difference(drawn, self.look(f"{name} pulled")) > 30, f"a {name} follows its point")
            self.user.key("Delete")
            left = self.difference(before, self.look(f"{name} deleted"))
            expect(left < 100, f"nothing is left of a deleted {name}, but {left} px are")

    def write_note(self):
        self.press_tool(NOTE[1], NOTE[0])
        self.user.click(self.point(0.45, 0.4))
        wait_for("the editor of the note", lambda: Window.find("^Text$"), 5)
        run("xdotool", "type", "--delay", "50", "first top")
        run("xdotool", "key", "shift+Return")
        run("xdotool", "type", "--delay", "50", "12.50")
        written = self.look("note in its editor")
        self.user.key("Return")
        wait_for("Return closes the editor", lambda: not Window.find("^Text$"), 5)
        self.expect_keyboard("writing a note")
        expect(self.difference(written, self.look("note")) > 100, "the editor leaves the screen")
        self.user.click(self.point(0.7, 0.15))
        return self.candles("note on the chart")

    def range_statistics(self):
        before = self.look("before range statistics")
        self.user.key("s")
        wait_for("the window of the statistics", lambda: Window.find("^Range statistics$"), 5)
        shown = self.look("range statistics")
        expect(self.difference(before, shown) > 10000, "the band lies over the candles")
        self.user.drag(self.point(0.45, 0.25), self.point(0.50, 0.25))
        expect(self.difference(shown, self.look("band moved")) > 1000, "the band follows the mouse")
        self.expect_keyboard("moving the band")
        self.user.key("s")
        left = self.difference(before, self.look("range statistics closed"))
        expect(left < 100, f"nothing is left of the band, but {left} px are")

    def quit(self, process):
        self.press_function(MAGNET)
        expect(process.poll() is None, "the program is still there")
        self.user.key("ctrl+q")
        wait_for("Ctrl+Q after a click on the magnet quits", lambda: process.poll() is not None, 5)


def main():
    qzchart, folder = sys.argv[1:3]
    with desktop(folder) as environment:
        with program(environment, qzchart) as process:
            session = Session(User(folder))
            thin = session.draw()
            session.restyle(thin)
            session.draw_in_volumes()
            session.move_divider()
            session.hide_and_show()
            session.delete_all()
            note = session.write_note()
            session.draw_families()
            session.range_statistics()
            session.quit(process)
        with program(environment, qzchart):
            back = Session(session.user).candles("after a restart")
            expect(note > 0 and abs(back - note) < 0.2 * note, f"the note is back after a restart: {note}, {back} px")


if __name__ == "__main__":
    main()
