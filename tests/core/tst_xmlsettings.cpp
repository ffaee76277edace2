// SPDX-License-Identifier: GPL-3.0-or-later
// The settings file: look-up rules and their asymmetries, exact bytes, safe saves.
#include "settings/Conversions.h"
#include "settings/ProgramFolder.h"
#include "settings/RunTimeError.h"
#include "settings/XmlSettings.h"

#include "TestFiles.h"

#include <QtTest>

#ifdef Q_OS_UNIX
#include <csignal>
#include <sys/resource.h>
#endif

using TestFiles::contentOf;
using TestFiles::writeFile;

class TestXmlSettings : public QObject
{
    Q_OBJECT
    std::unique_ptr<QTemporaryDir> m_dir;

    QString path(const char *name) const { return m_dir->filePath(QString::fromLatin1(name)); }

private Q_SLOTS:
    void init()
    {
        m_dir = std::make_unique<QTemporaryDir>();
        SetProgramFolderForTests(m_dir->path());
        Conv::setLocaleForTests(QLocale(QLocale::Italian, QLocale::Italy));
    }
    void cleanup()
    {
        SetProgramFolderForTests(QString());
        Conv::setLocaleForTests(QLocale::system());
    }

    // A missing or broken file starts a new document: what is set in it is
    // not read back before it is written, and then it is.
    void newDocumentIsNotReadBackButIsWritten_data()
    {
        QTest::addColumn<QByteArray>("before");
        QTest::addColumn<QString>("root");
        QTest::addColumn<QByteArray>("written");
        QTest::newRow("missing") << QByteArray() << "" << QByteArray("<settings><mode>COM</mode></settings>");
        QTest::newRow("broken") << QByteArray("<settings><mode>TCP</mode>") << "prog"
                                << QByteArray("<prog><mode>COM</mode></prog>");
    }
    void newDocumentIsNotReadBackButIsWritten()
    {
        QFETCH(QByteArray, before);
        QFETCH(QString, root);
        if (!before.isEmpty())
            writeFile(path("Settings.xml"), before);
        XmlSettings s;
        s.OpenSettings(QStringLiteral("Settings"), QString(), root);
        QVERIFY(!s.Loaded && s.Created);
        QString value = QStringLiteral("untouched");
        QVERIFY(!s.GetValue(QStringLiteral("mode"), value));
        s.SetValue(QStringLiteral("mode"), "COM");
        QVERIFY(!s.GetValue(QStringLiteral("mode"), value));
        QCOMPARE(value, QStringLiteral("untouched"));
        s.CloseSettings(QString());
        QTEST(contentOf(path("Settings.xml")), "written");

        XmlSettings again;
        again.OpenSettings(QStringLiteral("Settings"), QString(), QString());
        QVERIFY(again.Loaded && !again.Created);
        QVERIFY(again.GetValue(QStringLiteral("mode"), value));
        QCOMPARE(value, QStringLiteral("COM"));
    }

    void bothSpellingsReachOneFile()
    {
        writeFile(path("settings.xml"), "<settings><mode>TCP</mode></settings>");
        XmlSettings s;
        s.OpenSettings(QStringLiteral("Settings"), QString(), QString());
        QVERIFY(s.Loaded);
        QCOMPARE(QFileInfo(s.filePath()).fileName(), QStringLiteral("settings.xml"));
        // With no file at all, the name is taken as given.
        s.OpenSettings(QStringLiteral("KX90Prog99"), m_dir->path(), QString());
        QCOMPARE(s.filePath(), path("KX90Prog99.xml"));
    }

    void gettersTakeTheFirstBelowTheRoot()
    {
        writeFile(path("p.xml"), "<settings><a><k>1</k></a><k Iva1=\"x\">2</k><b/></settings>");
        XmlSettings s;
        s.OpenSettings(QStringLiteral("p"), m_dir->path(), QString());
        QString value;
        QVERIFY(s.GetValue(QStringLiteral("k"), value));
        QCOMPARE(value, QStringLiteral("1"));
        // The attribute sits on the second k; the getter looks at the first only.
        value = QStringLiteral("untouched");
        QVERIFY(!s.GetValueAtt(QStringLiteral("k"), QStringLiteral("Iva1"), value));
        QVERIFY(!s.GetValue(QStringLiteral("missing"), value));
        QCOMPARE(value, QStringLiteral("untouched"));
        QVERIFY(s.GetValue(QStringLiteral("a"), value)); // the text of all below it
        QCOMPARE(value, QStringLiteral("1"));

        s.SetValue(QStringLiteral("k"), 9);
        s.CloseSettings(QString());
        QCOMPARE(contentOf(path("p.xml")), QByteArray("<settings><a><k>9</k></a><k Iva1=\"x\">2</k><b/></settings>"));
    }

    // Setters reach the root and getters do not; attributes keep the order of
    // their first writing; line breaks in them survive.
    void attributes()
    {
        const QString sede = QStringLiteral("Via Roma 1\r\n00100 Roma \"centro\" & <dintorni>\tè");
        XmlSettings s;
        s.OpenSettings(QStringLiteral("KX90Prog1"), m_dir->path(), QString());
        s.SetValueAtt(QStringLiteral("settings"), QStringLiteral("CPUVersion"), "1.2");
        s.SetValueAtt(QStringLiteral("InstallRep"), QStringLiteral("Desc2"), "b");
        s.SetValueAtt(QStringLiteral("InstallRep"), QStringLiteral("Desc1"), "a");
        s.SetValueAtt(QStringLiteral("InstallRep"), QStringLiteral("Desc2"), Currency::fromScaled(15000));
        s.SetValueAtt(QStringLiteral("InstallRep"), QStringLiteral("Lim1"), "");
        s.Update();
        s.SetValueAtt(QStringLiteral("InstallIva"), QStringLiteral("Iva1"), 22.5f);
        s.SetValueAtt(QStringLiteral("InstallExtra"), QStringLiteral("SedeLeg"), sede);
        s.CloseSettings(QString());
        const QByteArray bytes = contentOf(path("KX90Prog1.xml"));
        QVERIFY2(bytes.startsWith("<settings CPUVersion=\"1.2\"><InstallRep Desc2=\"1,5\" Desc1=\"a\" Lim1=\"\"/>"
                                  "<InstallIva Iva1=\"22,5\"/><InstallExtra SedeLeg=\"Via Roma 1&#13;&#10;00100"),
                 bytes.constData());
        QVERIFY(!bytes.contains('\n'));

        XmlSettings r;
        r.OpenSettings(QStringLiteral("KX90Prog1"), m_dir->path(), QString());
        QString value;
        QVERIFY(!r.GetValueAtt(QStringLiteral("settings"), QStringLiteral("CPUVersion"), value));
        QVERIFY(r.GetValueAtt(QStringLiteral("InstallIva"), QStringLiteral("Iva1"), value));
        QCOMPARE(value, QStringLiteral("22,5"));
        QVERIFY(r.GetValueAtt(QStringLiteral("InstallExtra"), QStringLiteral("SedeLeg"), value));
        QCOMPARE(value, sede);
    }

    void closeToAnotherPathLeavesTheOpenedFileAlone()
    {
        const QByteArray original = "<settings>\n  <mode>COM</mode>\n</settings>\n";
        writeFile(path("Settings.xml"), original);
        XmlSettings s;
        s.OpenSettings(QStringLiteral("Settings"), QString(), QString());
        s.SetValue(QStringLiteral("mode"), "TCP");
        s.CloseSettings(path("copy.xml"));
        QCOMPARE(contentOf(path("Settings.xml")), original);
        QCOMPARE(contentOf(path("copy.xml")), QByteArray("<settings><mode>TCP</mode></settings>"));
    }

    void failedSaveLeavesTheOldFile()
    {
        XmlSettings s;
        s.OpenSettings(QStringLiteral("Settings"), QString(), QString());
        s.SetValue(QStringLiteral("mode"), "COM");
        QVERIFY_THROWS_EXCEPTION(RunTimeError, s.CloseSettings(path("no/such/folder.xml")));

#ifdef Q_OS_UNIX
        // A full disk, as root too: files of this process may not grow past 1 KB.
        const QByteArray original = "<settings><mode>COM</mode></settings>";
        writeFile(path("Settings.xml"), original);
        s.OpenSettings(QStringLiteral("Settings"), QString(), QString());
        s.SetValue(QStringLiteral("comsettings"), QString(64 * 1024, QLatin1Char('x')));
        rlimit saved{};
        QCOMPARE(getrlimit(RLIMIT_FSIZE, &saved), 0);
        const auto oldHandler = std::signal(SIGXFSZ, SIG_IGN);
        rlimit small = saved;
        small.rlim_cur = 1024;
        QCOMPARE(setrlimit(RLIMIT_FSIZE, &small), 0);
        bool failed = false;
        try {
            s.Update();
        } catch (const RunTimeError &error) {
            failed = error.code() == RunTimeError::PathFileAccess;
        }
        setrlimit(RLIMIT_FSIZE, &saved);
        std::signal(SIGXFSZ, oldHandler);
        QVERIFY(failed);
        QCOMPARE(contentOf(path("Settings.xml")), original);
        QCOMPARE(QDir(m_dir->path()).entryList(QDir::Files), QStringList{QStringLiteral("Settings.xml")});
#endif
    }
};

QTEST_GUILESS_MAIN(TestXmlSettings)
#include "tst_xmlsettings.moc"
