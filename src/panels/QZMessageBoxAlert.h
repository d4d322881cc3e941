#pragma once

/// Lets QZAlert ask through a modal message box over the active window, unless a host installed a runner of its own.
void installMessageBoxAlert();
