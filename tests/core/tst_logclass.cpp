// The line writer: appends, starts anew on Reset, Windows-1252 with CR-LF.
#include "settings/LogClass.h"
#include "settings/RunTimeError.h"

#include "TestFiles.h"

#include <QtTest>

using TestFiles::contentOf;
using TestFiles::writeFile;

class TestLogClass : public QObject
{
    Q_OBJECT
    QTemporaryDir m_dir;
    QString m_path;

private Q_SLOTS:
    void init() { m_path = m_dir.filePath(QStringLiteral("DGFE_%1.log").arg(QTest::currentTestFunction())); }

    void linesAreAppendedAndReadableAtOnce()
    {
        LogClass log;
        log.FileName = m_path;
        log.Add(QStringLiteral("uno"));
        log.Add(QString());
        log.Add(QStringLiteral("tre"));
        // While the writer still holds the file, every line is already on disk.
        QCOMPARE(contentOf(m_path), QByteArray("uno\r\n\r\ntre\r\n"));
    }

    void existingFileIsAppendedToUntilReset()
    {
        writeFile(m_path, "vecchia\r\n");
        LogClass log;
        log.FileName = m_path;
        log.Add(QStringLiteral("prima"));
        QCOMPARE(contentOf(m_path), QByteArray("vecchia\r\nprima\r\n"));
        log.Reset();
        QCOMPARE(contentOf(m_path), QByteArray()); // there, and empty
        log.Add(QStringLiteral("dopo"));
        QCOMPARE(contentOf(m_path), QByteArray("dopo\r\n"));
    }

    void resetOfAMissingFileEndsTheRun()
    {
        LogClass log;
        log.FileName = m_path;
        try {
            log.Reset();
            QFAIL("Reset of a missing file went through");
        } catch (const RunTimeError &error) {
            QCOMPARE(error.code(), RunTimeError::FileNotFound);
        }
        QVERIFY(!QFile::exists(m_path));
    }

    void unwritablePlaceEndsTheRun()
    {
        LogClass log;
        log.FileName = m_dir.filePath(QStringLiteral("nessuna/cartella.log"));
        QVERIFY_THROWS_EXCEPTION(RunTimeError, log.Add(QStringLiteral("x")));
    }

    void singleByteWindowsText()
    {
        LogClass log;
        log.FileName = m_path;
        log.Add(QStringLiteral("\u20AC 12,50 caff\u00E8 \u201Cok\u201D \u4E2D"));
        QCOMPARE(contentOf(m_path), QByteArray("\x80 12,50 caff\xE8 \x93ok\x94 ?\r\n"));
    }
};

QTEST_GUILESS_MAIN(TestLogClass)
#include "tst_logclass.moc"
