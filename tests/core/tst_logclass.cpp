// SPDX-License-Identifier: GPL-3.0-or-later
// The line writer: appends, starts anew on Reset, Windows-1252 with CR-LF.
#include "settings/LogClass.h"
#include "settings/RunTimeError.h"

#include "TestFiles.h"

#include <QtTest>

using TestFiles::contentOf;

class TestLogClass : public QObject
{
    Q_OBJECT
    QTemporaryDir m_dir;
    std::optional<LogClass> log;

private Q_SLOTS:
    void init()
    {
        log.emplace();
        log->FileName = m_dir.filePath(QStringLiteral("DGFE_%1.log").arg(QTest::currentTestFunction()));
    }

    void appendsUntilReset()
    {
        TestFiles::writeFile(log->FileName, "vecchia\r\n");
        log->Add(QStringLiteral("uno"));
        log->Add(QString());
        // While the writer still holds the file, every line is already on disk.
        QCOMPARE(contentOf(log->FileName), QByteArray("vecchia\r\nuno\r\n\r\n"));
        log->Reset();
        QCOMPARE(contentOf(log->FileName), QByteArray()); // there, and empty
        log->Add(QStringLiteral("\u20AC 12,50 caff\u00E8 \u201Cok\u201D \u4E2D"));
        QCOMPARE(contentOf(log->FileName), QByteArray("\x80 12,50 caff\xE8 \x93ok\x94 ?\r\n"));
    }

    void missingFileOrPlaceEndsTheRun()
    {
        try {
            log->Reset();
            QFAIL("Reset of a missing file went through");
        } catch (const RunTimeError &error) {
            QCOMPARE(error.code(), RunTimeError::FileNotFound);
        }
        QVERIFY(!QFile::exists(log->FileName));
        log->FileName = m_dir.filePath(QStringLiteral("nessuna/cartella.log"));
        QVERIFY_THROWS_EXCEPTION(RunTimeError, log->Add(QStringLiteral("x")));
    }
};

QTEST_GUILESS_MAIN(TestLogClass)
#include "tst_logclass.moc"
