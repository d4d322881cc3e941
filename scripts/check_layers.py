#!/usr/bin/env python3
"""Fails on an include that runs against the arrows between the rooms of src/ and app/, or that brings widgets below them.

  scripts/check_layers.py              checks the repository this script lies in
  scripts/check_layers.py --self-test  checks the checker against lines that it has to refuse or to accept
"""

import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent

LIBRARY = ("surface", "panels", "tools", "model", "platform")
# A room may include itself and these. Only the program's main file lies in no room.
MAY_INCLUDE = {
    "platform": (),
    "model": ("platform",),
    "tools": ("model", "platform"),
    "panels": ("model", "platform"),
    "surface": ("panels", "tools", "model", "platform"),
    "app/bars": (),
    "app/calendar": ("app/bars", "model"),
    "app/indicators": ("app/bars",),
    "app/chart": ("app/calendar", "app/indicators", "app/bars", *LIBRARY),
    "app/picture": ("app/chart", "app/calendar", "app/bars", *LIBRARY),
    "app/window": ("app/picture", "app/chart", "app/calendar", "app/bars", *LIBRARY),
    "app/demo": ("app/window", "app/picture", "app/chart", "app/calendar", "app/bars", *LIBRARY),
}
WITHOUT_WIDGETS = ("platform", "model", "tools", "app/bars", "app/calendar", "app/indicators")
# What uses the library; the library never uses them. "support" is the tests' kit by the name that tests include it by.
OUTSIDE = ("app", "examples", "bench", "tests", "support")

INCLUDE = re.compile(r'^\s*#\s*(?:include|import)\s*([<"])([^">]+)[">]')

# Qt modules whose headers bring QtWidgets with them.
WIDGET_MODULES = ("QtWidgets", "QtUiTools", "QtPrintSupport", "QtSvgWidgets", "QtOpenGLWidgets", "QtQuickWidgets")
WIDGET_FOLDERS = ("/usr/include/qt6", "/usr/include/*/qt6", "/usr/lib/qt6/include", "/opt/Qt/6.*/*/include")
# For a machine whose Qt lies elsewhere.
COMMON_WIDGET_HEADERS = """
    QAbstractButton QAbstractItemView QAbstractScrollArea QAbstractSlider QAbstractSpinBox QApplication QBoxLayout
    QButtonGroup QCheckBox QColorDialog QComboBox QCompleter QDialog QDialogButtonBox QDockWidget QDoubleSpinBox
    QErrorMessage QFileDialog QFontComboBox QFontDialog QFormLayout QFrame QGraphicsItem QGraphicsScene QGraphicsView
    QGridLayout QGroupBox QHBoxLayout QHeaderView QInputDialog QItemDelegate QLabel QLayout QLineEdit QListView
    QListWidget QMainWindow QMenu QMenuBar QMessageBox QPlainTextEdit QProgressBar QPushButton QRadioButton QRubberBand
    QScrollArea QScrollBar QSizePolicy QSlider QSpinBox QSplitter QStackedWidget QStatusBar QStyle QStyleOption
    QStyledItemDelegate QSystemTrayIcon QTabBar QTabWidget QTableView QTableWidget QTextBrowser QTextEdit QToolBar
    QToolButton QToolTip QTreeView QTreeWidget QVBoxLayout QWhatsThis QWidget QWidgetAction
    QPrinter QPrintDialog QSvgWidget QUiLoader
""".split()


def widget_headers():
    """Names, in lower case and without .h, that stand for a header with widgets in it."""
    names = {name.lower() for name in COMMON_WIDGET_HEADERS}
    for pattern in WIDGET_FOLDERS:
        for include in pathlib.Path("/").glob(pattern.lstrip("/")):
            # QtWidgets keeps forwarding headers for the classes that moved to QtGui, such as QAction.
            below = {entry.name.lower() for module in ("QtCore", "QtGui") for entry in include.glob(module + "/*")}
            for module in WIDGET_MODULES:
                for entry in include.glob(module + "/*"):
                    if entry.is_file() and entry.name.lower() not in below:
                        names.add(entry.name.lower().removesuffix(".h"))
    return names


def brings_widgets(header, names):
    parts = header.split("/")
    if parts[0] in WIDGET_MODULES:
        # <QtWidgets/QAction> is refused too: a program without QtWidgets has no such folder.
        return True
    return len(parts) == 1 and header.lower().removesuffix(".h") in names


def room_of(parts):
    """The room of a file: model of src/model/x.h and of model/x.h, app/bars of app/bars/x.h. Outside the rooms of src/
    and app/ it is the first folder, and None where there is no folder."""
    if parts[:1] == ["src"]:
        parts = parts[1:]
    if len(parts) < 2:
        return None
    return "/".join(parts[:2]) if parts[0] == "app" and len(parts) > 2 else parts[0]


def target_of(header, path):
    """The room that an include of the file `path` names; "../tools/x.h" in src/model names tools."""
    parts = list(path.parts[:-1]) if header.startswith(".") else []
    for part in header.split("/"):
        if part == "..":
            # Leaving the repository leads to no room.
            parts = parts[:-1]
        elif part not in (".", ""):
            parts.append(part)
    return room_of(parts)


def rule_broken(path, line, names):
    """What is wrong with one line of the file `path` (relative to the repository), or None."""
    match = INCLUDE.match(line)
    if not match or path.parts[0] not in ("src", "app") or str(path) == "app/main.cpp":
        return None
    room = room_of(list(path.parts))
    if room not in MAY_INCLUDE:
        return f"{path.parent} is no room; the rooms are {', '.join(MAY_INCLUDE)}"
    header = match.group(2)
    target = target_of(header, path)
    if path.parts[0] == "src" and target is not None and target.split("/")[0] in OUTSIDE:
        return f"src never includes {target}"
    if target in MAY_INCLUDE and target != room and target not in MAY_INCLUDE[room]:
        allowed = " and ".join(MAY_INCLUDE[room]) or "no other room"
        return f"{room} includes {allowed}, never {target}"
    if room in WITHOUT_WIDGETS and brings_widgets(header, names):
        return f"{room} works without widgets, and {header} brings them"
    return None


def check_repository():
    names = widget_headers()
    failures = 0
    for path in sorted([*ROOT.glob("src/**/*"), *ROOT.glob("app/**/*")]):
        if path.suffix not in (".h", ".cpp"):
            continue
        relative = path.relative_to(ROOT)
        for number, line in enumerate(path.read_text(encoding="utf-8").splitlines(), 1):
            rule = rule_broken(relative, line, names)
            if rule:
                print(f"{relative}:{number}: {rule}: {line.strip()}")
                failures += 1
    return failures


REFUSED = [
    ("src/platform/a.h", '#include "model/b.h"'),
    ("src/platform/a.cpp", '#include "surface/b.h"'),
    ("src/model/a.h", '#include "tools/b.h"'),
    ("src/model/a.cpp", '#include "panels/b.h"'),
    ("src/model/a.cpp", '#include "../tools/b.h"'),
    ("src/model/deep/a.cpp", '#include "../../surface/b.h"'),
    ("src/tools/a.cpp", '  #  include "surface/b.h"'),
    ("src/tools/a.cpp", '#include <panels/b.h>'),
    ("src/panels/a.cpp", '#include "tools/b.h"'),
    ("src/panels/a.cpp", '#include "surface/b.h"'),
    ("src/panels/a.cpp", '#include "src/surface/b.h"'),
    ("src/surface/a.cpp", '#include "app/b.h"'),
    ("src/surface/a.cpp", '#include "../../app/b.h"'),
    ("src/platform/a.cpp", '#include "support/b.h"'),
    ("src/attic/a.cpp", '#include "platform/b.h"'),
    ("src/platform/a.cpp", "#include <QWidget>"),
    ("src/model/a.cpp", "#include <qmessagebox.h>"),
    ("src/tools/a.cpp", "#include <QtWidgets>"),
    ("src/tools/a.cpp", "#include <QtWidgets/QAction>"),
    ("src/tools/a.cpp", "#include <QtUiTools/QUiLoader>"),
    ("src/platform/a.cpp", "#include <QApplication>"),
    ("src/surface/a.cpp", '#include "app/chart/b.h"'),
    ("app/a.cpp", '#include "surface/b.h"'),
    ("app/attic/a.cpp", '#include "app/bars/b.h"'),
    ("app/bars/a.cpp", '#include "app/calendar/b.h"'),
    ("app/bars/a.cpp", '#include "model/b.h"'),
    ("app/bars/a.cpp", '#include "../chart/b.h"'),
    ("app/bars/a.cpp", "#include <QWidget>"),
    ("app/calendar/a.cpp", '#include "app/chart/b.h"'),
    ("app/indicators/a.cpp", '#include "app/calendar/b.h"'),
    ("app/calendar/a.cpp", '#include "surface/b.h"'),
    ("app/chart/a.cpp", '#include "app/picture/b.h"'),
    ("app/picture/a.cpp", '#include "app/window/b.h"'),
    ("app/window/a.cpp", '#include "app/demo/b.h"'),
]
ACCEPTED = [
    ("src/platform/a.cpp", '#include "platform/a.h"'),
    ("src/platform/a.cpp", "#include <QGuiApplication>"),
    ("src/model/a.cpp", '#include "platform/b.h"'),
    ("src/model/a.cpp", "#include <QAction>"),
    ("src/tools/a.cpp", '#include "model/b.h"'),
    ("src/tools/a.cpp", '#include "b.h"'),
    ("src/tools/a.cpp", "// see QWidget"),
    ("src/panels/a.cpp", '#include "model/b.h"'),
    ("src/panels/a.cpp", "#include <QWidget>"),
    ("src/surface/a.cpp", '#include "panels/b.h"'),
    ("src/surface/a.cpp", '#include "tools/b.h"'),
    ("src/surface/a.cpp", '#include "../model/b.h"'),
    ("app/main.cpp", '#include "app/demo/b.h"'),
    ("app/main.cpp", "#include <QWidget>"),
    ("app/bars/a.cpp", '#include "app/bars/b.h"'),
    ("app/bars/a.cpp", "#include <QString>"),
    ("app/calendar/a.cpp", '#include "app/bars/b.h"'),
    ("app/calendar/a.cpp", '#include "model/b.h"'),
    ("app/chart/a.cpp", '#include "app/calendar/b.h"'),
    ("app/chart/a.cpp", '#include "surface/b.h"'),
    ("app/chart/a.cpp", "#include <QWidget>"),
    ("app/picture/a.cpp", '#include "app/chart/b.h"'),
    ("app/window/a.cpp", '#include "app/picture/b.h"'),
    ("app/demo/a.cpp", '#include "app/window/b.h"'),
    ("tests/model/a.cpp", "#include <QApplication>"),
    ("tests/support/a.cpp", '#include "tools/b.h"'),
]


def self_test():
    failures = 0
    # Once with the headers of the Qt that is installed, once with the list that stands in for them.
    for names in (widget_headers(), {name.lower() for name in COMMON_WIDGET_HEADERS}):
        for lines, refused in ((REFUSED, True), (ACCEPTED, False)):
            for path, line in lines:
                if bool(rule_broken(pathlib.PurePosixPath(path), line, names)) != refused:
                    print(f"self-test: {path}: {line!r} was {'accepted' if refused else 'refused'}")
                    failures += 1
    return failures


def main():
    if sys.argv[1:] == ["--self-test"]:
        return 1 if self_test() else 0
    if sys.argv[1:]:
        print(__doc__, file=sys.stderr)
        return 2
    return 1 if check_repository() else 0


if __name__ == "__main__":
    sys.exit(main())
