// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QFile>
#include <QtTest>

// Whole-file reads and writes for tests that check what lands on disk.
namespace TestFiles {

inline QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<missing>");
}

inline void writeFile(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(bytes);
}

}
