#!/usr/bin/env python3
"""Plays a user of qzchart with synthetic mouse and keys on the current X display and looks at the screen after each step:

    drive_panels.py QZCHART FOLDER

Figures are told from candles by their colour. Exits with 1 and says which step failed.
"""

import os
import shutil
import subprocess
import sys
import tempfile
import time

LINE_COLOUR = "#FE6400"
# Middles of the palette's buttons (px in its window): six columns, then the row of functions.
COLUMN, FIRST_COLUMN, ROW, LINES_ROW, FUNCTIONS_ROW = 28, 20, 42, 31, 317
SEGMENT, RAY, HORIZON = 0, 1, 4
MAGNET, EYE, DELETE_ALL = 0, 1, 2
# One tool of each family: its row and column, and how many points it has.
FAMILIES = {"channel": (1, 0, 3), "fan": (1, 3, 2), "levels": (2, 0, 2), "regression": (2, 3, 2), "cycle": (3, 0, 2),
            "waves": (4, 0, 4), "shape": (5, 0, 3), "range rule": (6, 1, 2), "mark": (6, 3, 1)}
NOTE = (6, 5)
# Where a family is taken hold of as a whole: on a line of it, off its points. A regression's guides are its points.
GRIPS = {"channel": (0.525, 0.375), "fan": (0.525, 0.375), "levels": (0.55, 0.50), "cycle": (0.45, 0.35),
         "waves": (0.525, 0.375), "shape": (0.525, 0.375), "range rule": (0.50, 0.50)}
POINTS = ((0.45, 0.50), (0.60, 0.25), (0.70, 0.45), (0.80, 0.20))


def run(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout.strip()


def shell_values(*command):
    return dict(line.split("=") for line in run("xdotool", *command).splitlines())


def wait_for(what, condition, seconds=30.0):
    end = time.monotonic() + seconds
    while True:
        value = condition()
        if value:
            return value
        if time.monotonic() > end:
            raise AssertionError(what)
        time.sleep(0.1)


def manages_windows():
    return subprocess.run(["xdotool", "get_num_desktops"], capture_output=True).returncode == 0


class Window:
    """A window of the program, found by a regular expression of its title."""

    def __init__(self, title):
        self.id = wait_for(f"a window titled {title}", lambda: self.find(title))

    @staticmethod
    def find(title):
        found = subprocess.run(["xdotool", "search", "--onlyvisible", "--name", title], capture_output=True, text=True)
        return found.stdout.split()[-1] if found.stdout.split() else None

    def size(self):
        values = shell_values("getwindowgeometry", "--shell", self.id)
        return int(values["WIDTH"]), int(values["HEIGHT"])

    def at(self, x, y):
        """A point of the window on the screen. The geometry above counts the window manager's frame twice."""
        run("xdotool", "mousemove", "--window", self.id, str(x), str(y))
        values = shell_values("getmouselocation", "--shell")
        return int(values["X"]), int(values["Y"])


class User:
    def __init__(self, folder):
        self.folder = folder
        self.step = 0

    @staticmethod
    def move(position):
        run("xdotool", "mousemove", *map(str, position))
        time.sleep(0.1)

    def click(self, position):
        self.move(position)
        run("xdotool", "click", "1")
        time.sleep(0.3)

    def drag(self, start, end):
        self.move(start)
        run("xdotool", "mousedown", "1")
        for part in (0.1, 0.5, 1.0):
            self.move(tuple(round(a + (b - a) * part) for a, b in zip(start, end)))
        run("xdotool", "mouseup", "1")
        time.sleep(0.3)

    @staticmethod
    def key(name):
        run("xdotool", "key", name)
        time.sleep(0.3)

    def look(self, name):
        """Saves the screen and returns its path."""
        self.step += 1
        path = os.path.join(self.folder, f"{self.step:02}-{name}.png")
        run("import", "-window", "root", path)
        return path


def line_pixels(picture, area):
    """Pixels of the figures' colour in `area` (x, y, width, height of the screen)."""
    x, y, width, height = area
    text = run("convert", picture, "-crop", f"{width}x{height}+{x}+{y}", "+repage", "-fuzz", "15%", "-fill", "black",
               "+opaque", LINE_COLOUR, "-fill", "white", "-opaque", LINE_COLOUR, "-format", "%[fx:round(mean*w*h)]",
               "info:")
    return int(float(text))


def expect(condition, what):
    if not condition:
        raise AssertionError(what)


class Session:
    def __init__(self, user):
        self.user = user
        self.chart = Window("qzchart")
        self.width, self.height = self.chart.size()
        user.click(self.chart.at(700, 20))
        user.key("p")
        self.palette = Window("Drawing tools")

    def look(self, name):
        """With the mouse off the chart, whose crosshair would be in every picture."""
        self.user.move(self.point(0.6, 0.055))
        return self.user.look(name)

    def area(self, top, bottom):
        """A band of the chart right of the palette, as screen coordinates."""
        x, y = self.chart.at(240, round(self.height * top))
        return x, y, self.width - 320, round(self.height * (bottom - top))

    def candles(self, name):
        return line_pixels(self.look(name), self.area(0.12, 0.70))

    def volumes(self, name):
        return line_pixels(self.look(name), self.area(0.76, 0.92))

    def press_tool(self, column, row=0):
        self.user.click(self.palette.at(FIRST_COLUMN + COLUMN * column, LINES_ROW + ROW * row))

    def press_function(self, column):
        self.user.click(self.palette.at(FIRST_COLUMN + COLUMN * column, FUNCTIONS_ROW))

    def point(self, x, y):
        return self.chart.at(round(self.width * x), round(self.height * y))

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

    def difference(self, before, after, top=0.12, bottom=0.70):
        """Pixels of a band of the chart that changed, of the candle pane if none is named."""
        x, y, width, height = self.area(top, bottom)
        text = subprocess.run(["compare", "-metric", "AE", "-extract", f"{width}x{height}+{x}+{y}", before, after, "null:"],
                              capture_output=True, text=True).stderr
        return int(float(text.split()[0]))

    def quit(self, program):
        self.press_function(MAGNET)
        expect(program.poll() is None, "the program is still there")
        self.user.key("ctrl+q")
        wait_for("Ctrl+Q after a click on the magnet quits", lambda: program.poll() is not None, 5)


def main():
    program, folder = sys.argv[1:3]
    shutil.rmtree(folder, ignore_errors=True)
    os.makedirs(folder)
    with tempfile.TemporaryDirectory() as home:
        environment = {**os.environ, "XDG_DATA_HOME": home, "HOME": home, "XDG_RUNTIME_DIR": home}
        manager = subprocess.Popen(["openbox"], env=environment, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        # A window that is shown while the manager starts may stay unmanaged and unseen.
        wait_for("a window manager", manages_windows)
        chart = subprocess.Popen([program], env=environment)
        try:
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
            session.quit(chart)
            chart = subprocess.Popen([program], env=environment)
            back = Session(session.user).candles("after a restart")
            expect(note > 0 and abs(back - note) < 0.2 * note, f"the note is back after a restart: {note}, {back} px")
        except AssertionError as failed:
            run("import", "-window", "root", os.path.join(folder, "failed.png"))
            print(f"drive_panels: failed: {failed}; pictures in {folder}", file=sys.stderr)
            return 1
        finally:
            chart.terminate()
            chart.wait()
            manager.terminate()
            manager.wait()
    return 0


if __name__ == "__main__":
    sys.exit(main())
