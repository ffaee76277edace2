// SPDX-License-Identifier: GPL-3.0-or-later
// The printer's memory across restarts, and a state file that went wrong.

#include "EmulatorTestKit.h"

#include "emulator/StateFile.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QRandomGenerator>
#include <QTemporaryDir>

#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

using namespace Kit;

class TestStateFile : public QObject
{
    Q_OBJECT

    QTemporaryDir dir;
    EmulatorConfig config;

    QString path() const { return dir.filePath(QStringLiteral("state.json")); }

private Q_SLOTS:
    void init()
    {
        QFile::remove(path());
        config = EmulatorConfig();
        config.statePath = path();
    }

    void memorySurvivesARestart()
    {
        QJsonObject before;
        {
            EmulatorServer emu(config);
            QVERIFY(emu.start());
            auto exec = [&](const char *name, const QList<QByteArray> &args) { return emu.execute(name, args); };
            QVERIFY(exec("SetDateTime", {"1", "6", "2027", "10", "0"}).isOk());
            QVERIFY(exec("WriteReparto", {"12", "TABACCHI \xC8", "0", "0", "0", "0", "1", "0", "0", "0", ""}).isOk());
            QVERIFY(exec("WriteHeaderLine", {"5", "TEL. 0123 456789"}).isOk());
            QVERIFY(exec("WriteFlag", {"8", "1"}).isOk());
            QVERIFY(exec("WriteParam", {"12", "2"}).isOk());
            QVERIFY(exec("LoadLogoFile", {QByteArray("\x00\x01\x02logo", 7)}).isOk());
            QVERIFY(exec("SellReparto", {"3", "2", "", euro(1, 10), "12", "1"}).isOk());
            QVERIFY(exec("PayReceipt", {"3", "", "0", "0", "0", "1"}).isOk());
            QVERIFY(exec("FiscalClosure", {"1"}).isOk());
            QVERIFY(exec("SellReparto", {"1", "1", "", euro(4), "1", "1"}).isOk());
            QVERIFY(exec("PayReceipt", {"1", "", "0", "2", "0", "1"}).isOk());
            emu.model().setJournalCondition(ElectronicJournal::Condition::NearFull);
            QVERIFY(emu.saveNow());
            before = emu.model().saveMemory();
        }
        EmulatorServer again(config);
        QVERIFY(again.start());
        QVERIFY2(again.notes().isEmpty(), qPrintable(again.notes().join('\n')));
        QCOMPARE(again.model().saveMemory(), before);
        QCOMPARE(again.execute("ReadReparto", {"12"}).property("RepartoDescrizione"), QStringLiteral("TABACCHI È"));
        QCOMPARE(again.execute("ReadClosureState", {"1"}).property("ClosureState"), QStringLiteral("2"));
        const QString clock = again.execute("ReadDateTime", {}).property("DateTime");
        QVERIFY2(clock.startsWith(QStringLiteral("2027-06-01T10:0")), qPrintable(clock));
        QCOMPARE(again.execute("ReadDgfeStatus", {"1"}).property("DgfeState"), QStringLiteral("1"));
        QCOMPARE(again.model().memory().logos.value(0).data, QByteArray("\x00\x01\x02logo", 7));
    }

    void everyChangeIsSavedAtOnce()
    {
        EmulatorServer emu(config);
        QVERIFY(emu.start());
        QVERIFY(emu.execute("WriteCarta", {"9", "SATISPAY"}).isOk());
        QVERIFY(emu.execute("FiscalClosure", {"1"}).isOk()); // the log keeps closures apart from the rest
        QVERIFY(emu.execute("FiscalClosure", {"1"}).isOk());
        EmulatorServer reader(config); // a second look at the file, without any explicit save
        QVERIFY(reader.start());
        QCOMPARE(reader.model().memory().cards[8], QStringLiteral("SATISPAY"));
        QCOMPARE(reader.model().saveMemory(), emu.model().saveMemory());
        QCOMPARE(reader.model().memory().fiscalMemory.size(), 2);
    }

    // The log of changes after the snapshot, as a kill or a broken disk can
    // leave it.
    void logIsReplayedAsFarAsItIsWhole_data()
    {
        QTest::addColumn<QString>("mutation");
        QTest::addColumn<QString>("card");
        QTest::addColumn<bool>("noted");
        QTest::newRow("as written") << "" << "B" << false;
        QTest::newRow("last record cut short") << "torn" << "B" << false;
        QTest::newRow("bad record before the end") << "garbage" << "A" << true;
        QTest::newRow("log already in the snapshot") << "folded" << "B" << false;
    }
    void logIsReplayedAsFarAsItIsWhole()
    {
        QFETCH(QString, mutation);
        QFETCH(QString, card);
        QFETCH(bool, noted);
        const QString log = StateFile(path()).logPath();
        QFile::remove(log);
        QJsonObject whole;
        {
            EmulatorServer emu(config);
            QVERIFY(emu.start());
            QVERIFY(emu.execute("WriteCarta", {"9", "A"}).isOk());
            QVERIFY(sell(emu.model(), 1, 3).isOk());
            QVERIFY(payCash(emu.model()).isOk());
            QVERIFY(emu.saveNow());
            QVERIFY(emu.execute("WriteCarta", {"9", "B"}).isOk());
            whole = emu.model().saveMemory();
            QFile f(log);
            QVERIFY(f.open(QIODevice::ReadOnly));
            QList<QByteArray> lines = f.readAll().split('\n');
            f.close();
            QCOMPARE(lines.size(), 4); // three records and the empty end
            if (mutation == QLatin1String("folded"))
                QVERIFY(emu.compactNow()); // as if killed before the log was emptied
            if (mutation == QLatin1String("torn"))
                lines.last() = R"({"n":4,"set":{"cards":["X")";
            if (mutation == QLatin1String("garbage"))
                lines.insert(1, "\x01not a record");
            QVERIFY(f.open(QIODevice::WriteOnly | QIODevice::Truncate));
            f.write(lines.join('\n'));
        }
        EmulatorServer again(config);
        QVERIFY(again.start());
        QCOMPARE(again.notes().join('\n').contains(QStringLiteral("damaged")), noted);
        QCOMPARE(again.model().memory().cards[8], card);
        if (!noted)
            QCOMPARE(again.model().saveMemory(), whole); // the receipt and its journal document once
        QCOMPARE(QFileInfo(log).size(), 0); // folded into the snapshot at the start
        for (const QString &aside : QDir(dir.path()).entryList({QStringLiteral("state.json.log.damaged-*")}))
            QFile::remove(dir.filePath(aside));
    }

    void damagedFileIsSetAsideAndNeverOverwritten()
    {
        {
            EmulatorServer emu(config);
            QVERIFY(emu.start());
            QVERIFY(emu.execute("WriteCarta", {"9", "SATISPAY"}).isOk());
        }
        QFile f(path());
        QVERIFY(f.open(QIODevice::ReadOnly));
        const QByteArray whole = f.readAll();
        f.close();
        const QByteArray half = whole.left(whole.size() / 2);
        QVERIFY(f.open(QIODevice::WriteOnly | QIODevice::Truncate));
        f.write(half);
        f.close();

        EmulatorServer emu(config);
        QVERIFY(emu.start()); // a clear message, a new printer, no crash
        QCOMPARE(emu.notes().size(), 1);
        QVERIFY(emu.notes().first().contains(QStringLiteral("damaged")));
        QVERIFY(emu.model().memory().cards[8].isEmpty());
        const QStringList aside = QDir(dir.path()).entryList({QStringLiteral("state.json.damaged-*")});
        QCOMPARE(aside.size(), 1);
        QFile kept(dir.filePath(aside.first()));
        QVERIFY(kept.open(QIODevice::ReadOnly));
        QCOMPARE(kept.readAll(), half);
        QVERIFY(StateFile(path()).load().outcome == StateFile::Outcome::Loaded); // the new printer is on disk
        QFile::remove(dir.filePath(aside.first()));
    }

    void mistypedValuesKeepTheirDefaults()
    {
        QJsonObject json = PrinterModel(config).saveMemory();
        json[QStringLiteral("iva")] = QJsonArray{QStringLiteral("x"), 12.5};
        json[QStringLiteral("departments")] = QStringLiteral("none");
        json[QStringLiteral("journal")] = QJsonObject{{QStringLiteral("entries"), 7}, {QStringLiteral("condition"), 3}};
        json[QStringLiteral("flags")] = QJsonArray{1};
        QFile f(path());
        QVERIFY(f.open(QIODevice::WriteOnly));
        f.write(QJsonDocument(json).toJson());
        f.close();

        EmulatorServer emu(config);
        QVERIFY(emu.start());
        QVERIFY(emu.notes().isEmpty());
        const PrinterMemory &m = emu.model().memory();
        QCOMPARE(m.iva[0], 22.0f);
        QCOMPARE(m.iva[1], 12.5f);
        QCOMPARE(m.departments.size(), 40);
        QCOMPARE(m.departments[1].description, QStringLiteral("FRUTTA"));
        QCOMPARE(m.flags.size(), 90);
        QCOMPARE(m.flags[0], 1);
        QCOMPARE(m.flags[11], 1);
        QVERIFY(m.journal.entries().isEmpty());
    }

    void killedWhileSavingLeavesAWholeFile()
    {
        // Two states of very different size; a child saves them in turn
        // until it is killed at a random moment. The file must then hold
        // one of the two, whole.
        PrinterModel small(config);
        PrinterModel big(config);
        for (int i = 0; i < 400; ++i) {
            QVERIFY(sell(big, 1 + i % 4, 1 + i).isOk());
            QVERIFY(payCash(big).isOk());
        }
        const QJsonObject a = small.saveMemory(), b = big.saveMemory();
        const StateFile file(path());
        QVERIFY(file.save(a));
        for (int round = 0; round < 12; ++round) {
            const pid_t child = fork();
            QVERIFY(child >= 0);
            if (child == 0) {
                for (int i = 0;; ++i)
                    file.save(i % 2 ? a : b);
            }
            QThread::usleep(2000 + QRandomGenerator::global()->bounded(30000));
            ::kill(child, SIGKILL);
            int status = 0;
            ::waitpid(child, &status, 0);
            const StateFile::Loaded loaded = file.load();
            QVERIFY2(loaded.outcome == StateFile::Outcome::Loaded, qPrintable(loaded.message));
            QVERIFY(loaded.json == a || loaded.json == b);
        }
    }
};

QTEST_GUILESS_MAIN(TestStateFile)
#include "tst_StateFile.moc"
