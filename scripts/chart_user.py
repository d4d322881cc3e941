"""A user of qzchart made of synthetic mouse and keys on the current X display, and what there is to see on the screen.

Figures are told from candles by their colour.
"""

import contextlib
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
    def all(title):
        found = subprocess.run(["xdotool", "search", "--onlyvisible", "--name", title], capture_output=True, text=True)
        return found.stdout.split()

    @staticmethod
    def find(title):
        return (Window.all(title) or [None])[-1]

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


class Chart:
    """A chart window with its palette open, and the user in front of it."""

    def __init__(self, user, title="qzchart"):
        self.user = user
        self.chart = Window(title)
        self.width, self.height = self.chart.size()
        user.click(self.chart.at(700, 20))
        self.open_palette()

    def open_palette(self):
        self.user.key("p")
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

    def difference(self, before, after, top=0.12, bottom=0.70):
        """Pixels of a band of the chart that changed, of the candle pane if none is named."""
        x, y, width, height = self.area(top, bottom)
        text = subprocess.run(["compare", "-metric", "AE", "-extract", f"{width}x{height}+{x}+{y}", before, after, "null:"],
                              capture_output=True, text=True).stderr
        return int(float(text.split()[0]))


@contextlib.contextmanager
def desktop(folder):
    """Environment of a user without settings and figures on a desktop with a window manager. Pictures go to `folder`,
    also that of the screen on which a play failed."""
    shutil.rmtree(folder, ignore_errors=True)
    os.makedirs(folder)
    with tempfile.TemporaryDirectory() as home:
        environment = {**os.environ, "HOME": home, "XDG_DATA_HOME": home, "XDG_CONFIG_HOME": home,
                       "XDG_RUNTIME_DIR": home, "PICTURES": folder}
        manager = subprocess.Popen(["openbox"], env=environment, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        try:
            # A window that is shown while the manager starts may stay unmanaged and unseen.
            wait_for("a window manager", manages_windows)
            yield environment
        except AssertionError as failed:
            sys.exit(f"{os.path.basename(sys.argv[0])}: failed: {failed}; pictures in {folder}")
        finally:
            manager.terminate()
            manager.wait()


@contextlib.contextmanager
def program(environment, *command):
    """The running program, which does not outlive this."""
    process = subprocess.Popen(command, env=environment)
    try:
        yield process
    except AssertionError:
        run("import", "-window", "root", os.path.join(environment["PICTURES"], "failed.png"))
        raise
    finally:
        process.kill()
        process.wait()
