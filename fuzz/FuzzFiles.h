// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "FuzzCheck.h"

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QString>
#include <QTemporaryDir>

// The scratch folder of one fuzz target, memory-backed where there is one:
// every input is a file written and read again, many thousand times.
// `name` tells the targets' folders apart (e.g. "fuzzxml").
inline QString fuzzFolder(const char *name)
{
    static QTemporaryDir dir(QDir(QStringLiteral("/dev/shm")).exists()
                                 ? QStringLiteral("/dev/shm/%1-XXXXXX").arg(QLatin1String(name))
                                 : QDir::tempPath() + QStringLiteral("/%1-XXXXXX").arg(QLatin1String(name)));
    return dir.path();
}

inline void fuzzWrite(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    FUZZ_CHECK(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    FUZZ_CHECK(file.write(bytes) == bytes.size());
}

inline QByteArray fuzzRead(const QString &path)
{
    QFile file(path);
    FUZZ_CHECK(file.open(QIODevice::ReadOnly));
    return file.readAll();
}
