// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

// Locale item types as the program asks for them.
constexpr int LOCALE_SMONDECIMALSEP = 22; // the monetary decimal separator

// The value of one item of the user's locale; an empty string for an item
// this program does not know.
QString GetLocaleValue(int lcType);
