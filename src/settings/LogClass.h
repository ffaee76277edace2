// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <memory>

class QFile;

// Writes lines to a text file, appending to what is there. The file opens
// at the first Add and stays open until Reset or the end of the object.
class LogClass
{
public:
    QString FileName; // set before the first Add

    LogClass();
    ~LogClass();
    LogClass(const LogClass &) = delete;
    LogClass &operator=(const LogClass &) = delete;

    // Writes text and a line end. A file that cannot be opened or written
    // ends the run (RunTimeError).
    void Add(const QString &text);

    // Deletes FileName and opens it anew, empty: what is added from here on
    // starts a new file. A file that does not exist ends the run.
    void Reset();

private:
    void openForAppend();

    std::unique_ptr<QFile> m_stream;
};
