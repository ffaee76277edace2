// SPDX-License-Identifier: GPL-3.0-or-later
#include "LogoFileList.h"

#include <QDir>

void LogoFileList::Refresh()
{
    QDir dir(Path);
    dir.setNameFilters({Pattern});
    m_files = dir.entryList(QDir::Files, QDir::Name | QDir::IgnoreCase);
}

QString LogoFileList::FullPath(int index) const
{
    return Path + QLatin1Char('/') + List(index);
}
