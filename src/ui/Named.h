// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QLatin1String>

// Gives a widget (or action, layout, timer) its name, the one the screens
// are found and driven by, and hands it back: named(new QLabel(..), "lblX").
template <typename W>
W *named(W *object, const char *name)
{
    object->setObjectName(QLatin1String(name));
    return object;
}
