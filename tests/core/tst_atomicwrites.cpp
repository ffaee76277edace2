// SPDX-License-Identifier: GPL-3.0-or-later
// Files survive their writer killed at any moment: settings are one whole
// version, never a mix; logs only grow.
#include "TestFiles.h"
#include "settings/LogClass.h"
#include "settings/XmlSettings.h"

#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QtTest>

#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

namespace {

// Runs write(i) for i = 0, 1, 2, ... in a child process until it is killed
// after a random delay of up to maxMicros.
template <typename Write>
void killWriterAtRandom(Write write, int maxMicros)
{
    const pid_t child = fork();
    QVERIFY(child >= 0);
    if (child == 0) {
        try {
            for (int i = 0;; ++i)
                write(i);
        } catch (...) {
            _exit(3);
        }
    }
    usleep(useconds_t(QRandomGenerator::global()->bounded(maxMicros)));
    kill(child, SIGKILL);
    int status = 0;
    QCOMPARE(waitpid(child, &status, 0), child);
    // Killed, not ended by itself: a writer that failed would prove nothing.
    QVERIFY2(WIFSIGNALED(status), "the writer ended before it was killed");
}

// Versions of differing length and content, big enough that writing one
// takes many system calls.
QString version(int i)
{
    return QString(200'000 + (i % 2) * 50'000, QLatin1Char(i % 2 ? 'b' : 'a'));
}

} // namespace

class TestAtomicWrites : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void settingsFileIsAlwaysOneWholeVersion()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("Settings.xml"));
        auto save = [&dir](int i) {
            XmlSettings xml;
            xml.OpenSettings(QStringLiteral("Settings"), dir.path(), QStringLiteral("settings"));
            xml.SetValue(QStringLiteral("mode"), version(i));
            xml.CloseSettings();
        };
        save(0);
        const QByteArray a = TestFiles::contentOf(path);
        save(1);
        const QByteArray b = TestFiles::contentOf(path);

        int seenA = 0, seenB = 0;
        for (int round = 0; round < 40; ++round) {
            killWriterAtRandom(save, 20'000);
            const QByteArray now = TestFiles::contentOf(path);
            QVERIFY2(now == a || now == b, qPrintable(QStringLiteral("round %1: %2 bytes of a mix")
                                                          .arg(round).arg(now.size())));
            seenA += now == a;
            seenB += now == b;
        }
        QVERIFY(seenA + seenB == 40);

        // And what is left reads as settings again.
        XmlSettings xml;
        xml.OpenSettings(QStringLiteral("Settings"), dir.path(), QString());
        QVERIFY(xml.Loaded);
    }

    void logOnlyGrows()
    {
        // A log is appended to: a kill may cut the line being written (the
        // system stops a write at a page boundary for a kill), but what was
        // there before stays as it was, and nothing else gets in.
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("log.txt"));
        const QString line(3000, QLatin1Char('x'));
        QByteArray before;
        for (int round = 0; round < 20; ++round) {
            killWriterAtRandom(
                [&](int) {
                    LogClass log;
                    log.FileName = path;
                    for (int i = 0; i < 50; ++i)
                        log.Add(line);
                },
                10'000);
            // A writer killed at once may not have created the log yet.
            const QByteArray now = QFile::exists(path) ? TestFiles::contentOf(path) : QByteArray();
            QVERIFY(now.startsWith(before));
            QVERIFY(now.count('x') + now.count('\r') + now.count('\n') == now.size());
            before = now;
        }
        QVERIFY(before.contains(line.toLatin1() + "\r\n"));
    }
};

QTEST_GUILESS_MAIN(TestAtomicWrites)
#include "tst_atomicwrites.moc"
