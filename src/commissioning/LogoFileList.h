// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>

// The picture files of a folder, by name, as a file list shows them: a path
// and a pattern drive the list (the pattern without regard to case).
class LogoFileList
{
public:
    QString Path;
    QString Pattern = QStringLiteral("*.*");

    void Refresh();
    int ListCount() const { return int(m_files.size()); }
    QString List(int index) const { return m_files.value(index); } // the file name alone
    QString FullPath(int index) const;                              // Path, '/', the name

private:
    QStringList m_files;
};
