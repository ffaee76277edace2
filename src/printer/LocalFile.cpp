// SPDX-License-Identifier: GPL-3.0-or-later
#include "LocalFile.h"

#include <QDir>
#include <QFileInfo>
#include <QStringList>

namespace LocalFile {

namespace {

// The entry of dir named name, exactly or else without regard to case.
QString entryOf(const QDir &dir, const QString &name)
{
    if (QFileInfo::exists(dir.filePath(name)))
        return name;
    const QStringList entries = dir.entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    for (const QString &entry : entries) {
        if (entry.compare(name, Qt::CaseInsensitive) == 0)
            return entry;
    }
    return QString();
}

}

QString find(const QString &path)
{
    if (path.isEmpty() || QFileInfo(path).isFile())
        return path;
    QString slashed = path;
    slashed.replace(QLatin1Char('\\'), QLatin1Char('/'));
    if (QFileInfo(slashed).isFile())
        return slashed;

    const bool absolute = slashed.startsWith(QLatin1Char('/'));
    QDir dir(absolute ? QStringLiteral("/") : QDir::currentPath());
    const QStringList parts = slashed.split(QLatin1Char('/'), Qt::SkipEmptyParts);
    for (qsizetype i = 0; i < parts.size(); ++i) {
        const QString &part = parts[i];
        if (part == QLatin1String(".") || part == QLatin1String("..")) {
            if (part == QLatin1String(".."))
                dir.cdUp();
            continue;
        }
        const QString entry = entryOf(dir, part);
        if (entry.isEmpty())
            return path;
        if (i + 1 == parts.size()) {
            const QString found = dir.filePath(entry);
            return QFileInfo(found).isFile() ? found : path;
        }
        if (!dir.cd(entry))
            return path;
    }
    return path;
}

}
