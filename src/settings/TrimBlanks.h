// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

// Blanks (spaces) off both ends, as the printer pads its texts with them;
// a tab or other white space is part of the text and stays.
QString TrimBlanks(const QString &text);
