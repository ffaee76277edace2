// SPDX-License-Identifier: GPL-3.0-or-later
#include "JournalFile.h"

#include "settings/Cp1252.h"

#include <QSaveFile>

bool JournalFile::write(const QString &path, const QStringList &lines, QString *error)
{
    QByteArray bytes;
    for (const QString &line : lines)
        bytes += Cp1252::encode(line) + "\r\n";

    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit()) {
        if (error)
            *error = file.errorString();
        return false;
    }
    return true;
}
