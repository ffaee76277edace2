// SPDX-License-Identifier: GPL-3.0-or-later
#include "ProgramFolder.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

namespace {

QString &overrideFolder()
{
    static QString folder;
    return folder;
}

QString userDataHome()
{
    const QString xdg = qEnvironmentVariable("XDG_DATA_HOME");
    if (!xdg.isEmpty() && QDir::isAbsolutePath(xdg))
        return xdg;
    return QDir::homePath() + QStringLiteral("/.local/share");
}

// The data that stand beside the program.
const char *const DataFolders[] = {"img", "LoghiStandard"};

} // namespace

QString ChooseProgramFolder(const QString &binaryFolder, const QString &userDataHome)
{
    const QDir bin(binaryFolder);
    const QString share = QDir::cleanPath(bin.filePath(QStringLiteral("../share/fiscorda")));
    // Data beside the executable make it a folder of its own, wherever it is.
    if (bin.exists(QStringLiteral("img")) || !QFileInfo(share).isDir())
        return binaryFolder;

    const QString user = QDir::cleanPath(userDataHome + QStringLiteral("/fiscorda"));
    if (!QDir().mkpath(user))
        return QString();
    for (const char *name : DataFolders) {
        const QString link = user + QLatin1Char('/') + QLatin1String(name);
        const QFileInfo info(link);
        if (info.exists() || info.isSymLink())
            continue; // the user's own copy, or a link already made (even a broken one)
        QFile::link(share + QLatin1Char('/') + QLatin1String(name), link);
    }
    return user;
}

QString ProgramFolder()
{
    if (!overrideFolder().isEmpty())
        return overrideFolder();
    if (!QCoreApplication::instance())
        return QCoreApplication::applicationDirPath(); // too early to choose for good
    static const QString chosen = [] {
        const QString bin = QCoreApplication::applicationDirPath();
        const QString folder = ChooseProgramFolder(bin, userDataHome());
        // A home that cannot be written: the executable's folder, as a portable copy.
        return folder.isEmpty() ? bin : folder;
    }();
    return chosen;
}

void SetProgramFolderForTests(const QString &folder)
{
    overrideFolder() = folder;
}
