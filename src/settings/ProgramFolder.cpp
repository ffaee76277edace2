#include "ProgramFolder.h"

#include <QCoreApplication>

namespace {
QString &overrideFolder()
{
    static QString folder;
    return folder;
}
}

QString ProgramFolder()
{
    if (!overrideFolder().isEmpty())
        return overrideFolder();
    return QCoreApplication::applicationDirPath();
}

void SetProgramFolderForTests(const QString &folder)
{
    overrideFolder() = folder;
}
