// SPDX-License-Identifier: GPL-3.0-or-later
// Where the program keeps its files: beside a portable or built executable,
// else in the user's folder with the installed data reachable from there.
#include "TestFiles.h"
#include "settings/ProgramFolder.h"

#include <QDir>
#include <QTemporaryDir>
#include <QtTest>

#include <unistd.h>

class TestProgramFolder : public QObject
{
    Q_OBJECT
    QTemporaryDir root;

    QString make(const QString &relative)
    {
        const QString path = root.filePath(relative);
        [&] { QVERIFY(QDir().mkpath(path)); }();
        return path;
    }

private Q_SLOTS:
    void init() { QVERIFY(root.isValid()); }

    void copyOfItsOwnKeepsEverythingBeside()
    {
        // A build or a portable copy: data beside it, whatever else is around.
        const QString bin = make("portable/bin");
        make("portable/bin/img");
        make("portable/share/fiscorda/img");
        QCOMPARE(ChooseProgramFolder(bin, make("home")), bin);
        QCOMPARE(ChooseProgramFolder(make("bare"), make("home")), root.filePath("bare"));
        QVERIFY(!QFileInfo::exists(root.filePath("home/fiscorda")));
    }

    void installedCopyUsesTheUsersFolder()
    {
        const QString bin = make("usr/bin");
        make("usr/share/fiscorda/img");
        make("usr/share/fiscorda/LoghiStandard");
        TestFiles::writeFile(root.filePath("usr/share/fiscorda/LoghiStandard/nataleA80.BIN"), "logo");
        const QString home = make("home/.local/share");

        const QString folder = ChooseProgramFolder(bin, home);
        QCOMPARE(folder, home + "/fiscorda");
        QVERIFY(QFileInfo(folder).isDir());
        // The installed data read as if they stood beside the program.
        QCOMPARE(TestFiles::contentOf(folder + "/LoghiStandard/nataleA80.BIN"), QByteArray("logo"));
        QVERIFY(QFileInfo(folder + "/img").isDir());

        // A second start finds it all in place; the user's own files stay.
        TestFiles::writeFile(folder + "/Settings.xml", "<settings/>");
        QCOMPARE(ChooseProgramFolder(bin, home), folder);
        QCOMPARE(TestFiles::contentOf(folder + "/Settings.xml"), QByteArray("<settings/>"));
    }

    void usersOwnDataFolderIsNotReplaced()
    {
        const QString bin = make("opt/bin");
        make("opt/share/fiscorda/LoghiStandard");
        const QString home = make("home2");
        make("home2/fiscorda/LoghiStandard");
        TestFiles::writeFile(home + "/fiscorda/LoghiStandard/mine.bmp", "mine");
        const QString folder = ChooseProgramFolder(bin, home);
        QVERIFY(!QFileInfo(folder + "/LoghiStandard").isSymLink());
        QCOMPARE(TestFiles::contentOf(folder + "/LoghiStandard/mine.bmp"), QByteArray("mine"));
    }

    void homeThatCannotBeWrittenGivesNothing()
    {
        if (geteuid() == 0)
            QSKIP("root writes anywhere");
        const QString bin = make("usr2/bin");
        make("usr2/share/fiscorda");
        const QString home = make("locked");
        QFile::setPermissions(home, QFileDevice::ReadOwner | QFileDevice::ExeOwner);
        QCOMPARE(ChooseProgramFolder(bin, home), QString());
        QFile::setPermissions(home, QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
    }
};

QTEST_GUILESS_MAIN(TestProgramFolder)
#include "tst_programfolder.moc"
