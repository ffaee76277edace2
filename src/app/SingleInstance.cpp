// SPDX-License-Identifier: GPL-3.0-or-later
#include "SingleInstance.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QDir>
#include <QLockFile>

std::unique_ptr<QLockFile> &SingleInstance::lock()
{
    static std::unique_ptr<QLockFile> held;
    return held;
}

QString SingleInstance::lockPath()
{
    const QByteArray exe = QCoreApplication::applicationFilePath().toUtf8();
    const QByteArray tag = QCryptographicHash::hash(exe, QCryptographicHash::Sha1).toHex().left(16);
    return QDir::tempPath() + QStringLiteral("/fiscorda-") + QString::fromLatin1(tag) + QStringLiteral(".lock");
}

bool SingleInstance::acquire()
{
    if (lock())
        return true;
    auto file = std::make_unique<QLockFile>(lockPath());
    file->setStaleLockTime(0); // only a dead owner makes a lock stale
    if (!file->tryLock(0))
        return false;
    lock() = std::move(file);
    return true;
}

void SingleInstance::releaseForTests()
{
    lock().reset();
}
