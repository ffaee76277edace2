// SPDX-License-Identifier: GPL-3.0-or-later
// A run-ending failure thrown inside an event handler ends the process with
// "Errore di run-time" and a non-zero status, without a crash.
#include "app/FiscordaApplication.h"
#include "settings/Conversions.h"
#include "settings/RunTimeError.h"
#include "ui/MsgBox.h"

#include <QProcess>
#include <QTimer>
#include <QtTest>
#include <cstring>

class TestRunTimeError : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void failureInAHandlerEndsTheRun()
    {
        QProcess child;
        child.start(QCoreApplication::applicationFilePath(), {QStringLiteral("--child")});
        QVERIFY(child.waitForFinished(30000));
        QCOMPARE(child.exitStatus(), QProcess::NormalExit); // no crash
        QCOMPARE(child.exitCode(), 1);
        const QString err = QString::fromLocal8Bit(child.readAllStandardError());
        QVERIFY2(err.contains(QStringLiteral("Errore di run-time '6':")), qPrintable(err));
        QVERIFY2(err.contains(QStringLiteral("Overflow")), qPrintable(err));
        QVERIFY(!child.readAllStandardOutput().contains("after"));
    }
};

// The child: a program whose timer handler converts a number that does not
// fit in an Integer.
static int runChild(int argc, char **argv)
{
    FiscordaApplication app(argc, argv);
    MsgBox::startRecording();
    QTimer::singleShot(0, [] {
        Conv::ToInteger(QStringLiteral("40000"));
        std::printf("after\n");
    });
    return app.exec();
}

int main(int argc, char **argv)
{
    if (argc > 1 && std::strcmp(argv[1], "--child") == 0)
        return runChild(argc, argv);
    QApplication app(argc, argv);
    TestRunTimeError test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_runtimeerror.moc"
