// SPDX-License-Identifier: GPL-3.0-or-later
#include "AppendFile.h"

bool openForAppend(QFile &file, const QString &path, const QString &what, QString *error)
{
    file.close();
    if (path.isEmpty())
        return true;
    file.setFileName(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Append | QIODevice::Text)) {
        if (error)
            *error = QStringLiteral("cannot open the %1 %2: %3").arg(what, path, file.errorString());
        return false;
    }
    return true;
}
