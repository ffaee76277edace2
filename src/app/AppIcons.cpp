// SPDX-License-Identifier: GPL-3.0-or-later
#include "AppIcons.h"

#include <QString>

// Outside any namespace, as the resource's registration needs.
static void loadIcons()
{
    // The resources live in a static library: registered by hand, once.
    static const bool loaded = [] {
        Q_INIT_RESOURCE(Icons);
        return true;
    }();
    (void)loaded;
}

QIcon AppIcon(const char *name)
{
    loadIcons();
    return QIcon(QStringLiteral(":/icons/%1.svg").arg(QLatin1String(name)));
}
