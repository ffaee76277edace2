// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QIcon>

// The program's own pictures, drawn as SVG and built into the program, so
// that they stay sharp at any screen scale: "fiscorda" (the program's icon),
// "install", "remove", "journal", "simulator".
QIcon AppIcon(const char *name);
