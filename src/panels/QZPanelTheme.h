#pragma once

#include <QPalette>

/// `colors` in those of the present theme: the panel's background, its text, and what is drawn around its controls.
QPalette panelColors(QPalette colors);
