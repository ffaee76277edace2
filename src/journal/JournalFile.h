// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>

// Writes the journal's text file: every line in Windows-1252 (the page the
// printer speaks, and the one the technicians' editors expect), each ended by
// CR-LF, exactly as LogClass writes its lines. The file is written whole to a
// temporary beside the target and then put in its place, so a file that
// existed is replaced by the new content, never appended to, and a write
// that fails halfway leaves the old file (or none) rather than half a file.
class JournalFile
{
public:
    // False on failure, with the system's reason in *error.
    static bool write(const QString &path, const QStringList &lines, QString *error);
};
