// SPDX-License-Identifier: GPL-3.0-or-later
#include "ProgrammingFileName.h"

namespace ProgrammingFileName {

QString offered(const QString &matricola)
{
    return QStringLiteral("KX90Prog") + matricola + QStringLiteral(".xml");
}

QString openPattern()
{
    return QStringLiteral("KX90*.xml");
}

QString filter()
{
    return QStringLiteral("*.xml");
}

Location forOpen(const QString &path)
{
    // With no separator at all the whole text is the name and the folder
    // stays empty: the program's folder.
    const qsizetype slash = path.lastIndexOf(QLatin1Char('/'));
    const QString file = path.mid(slash + 1);
    Location location;
    location.name = file.left(qMax<qsizetype>(0, file.size() - 4));
    location.folder = slash >= 0 ? path.left(slash) : QString();
    return location;
}

Location forSave(const QString &path)
{
    if (path.contains(QLatin1String(".xml"), Qt::CaseSensitive))
        return forOpen(path);
    return forOpen(path + QStringLiteral(".xml"));
}

} // namespace ProgrammingFileName
