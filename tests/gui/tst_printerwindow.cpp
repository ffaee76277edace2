// SPDX-License-Identifier: GPL-3.0-or-later
// The training printer's window against its real printer, with Fiscorda's
// simulator and control on the other end of the line.
#include "EmulatorTestEnv.h"
#include "TestFiles.h"
#include "emulator/window/PaperRollView.h"
#include "emulator/window/PrinterWindow.h"
#include "simulator/KelvoFpSimulaForm.h"

#include <QCheckBox>
#include <QDir>
#include <QLabel>
#include <QPushButton>
#include <QStandardPaths>
#include <QTcpServer>
#include <QTextBlock>
#include <QtTest>

using Form = KelvoFpSimulaForm;

namespace {

// A loopback port nobody holds, below 32768 (the control's TcpPort is 16-bit).
quint16 freePort()
{
    for (quint16 port = quint16(21000 + QCoreApplication::applicationPid() % 5000); port < 32767; ++port) {
        QTcpServer probe;
        if (probe.listen(QHostAddress::LocalHost, port))
            return port;
    }
    return 0;
}

} // namespace

class TestPrinterWindow : public QObject
{
    Q_OBJECT
    std::optional<FormTestEnv> env;
    std::optional<KelvoProtocolControl> control;
    WindowSettings settings;

    std::unique_ptr<PrinterWindow> open()
    {
        auto w = std::make_unique<PrinterWindow>(settings);
        control.emplace();
        control->setEuroSettings(2);
        control->setUseTcp(1);
        control->setIpAddress(QStringLiteral("127.0.0.1"));
        control->setTcpPort(int16_t(settings.tcpPort));
        gFPControl = &*control;
        return w;
    }

private Q_SLOTS:
    void initTestCase() { QStandardPaths::setTestModeEnabled(true); }
    void init()
    {
        env.emplace(FormTestEnv::Options{.italian = true});
        KeypadModel::PaymentOpen = false;
        settings = WindowSettings();
        settings.tcpPort = freePort();
        settings.statePath = env->folder.filePath(QStringLiteral("state.json"));
    }
    void cleanup()
    {
        gFPControl = &env->fake;
        control.reset();
        env.reset();
    }

    void receiptOnTheRollAsOnPaper()
    {
        auto w = open();
        QCOMPARE(w->message(), QString());
        QCOMPARE(control->OpenTcp(), int16_t(0));
        Form form;
        // A sale, a discount, a void, paid in cash with change.
        for (const QString &t : QStringLiteral("2 , 5 0 btnRep_0 0 , 3 btnAbbuonoMenoVal_0 4 btnRep_3 4 btnStorno_3 "
                                               "1 0 btnContante").split(' ')) {
            if (t.size() == 1 && t[0].isDigit())
                form.btnTastiera[t == "0" ? 9 : t.toInt() - 1]->click();
            else if (t == ",")
                form.btnDecimali->click();
            else
                form.findChild<QPushButton *>(t)->click();
        }
        QCOMPARE(MsgBox::shownTexts(), QStringList());
        w->flush();
        const QStringList paper = QString::fromUtf8(TestFiles::contentOf(settings.effectivePaperPath()).chopped(1)).split('\n');
        QVERIFY(paper.size() > 10);
        QCOMPARE(w->roll()->lines(), paper);
        QVERIFY(paper.contains(QStringLiteral("STORNO")));
        QCOMPARE(w->findChild<QLabel *>(QStringLiteral("lblVisore"))->text(),
                 QStringLiteral("TOTALE          2,20\nRESTO           7,80"));
    }

    void faultFromTheWindow_data()
    {
        QTest::addColumn<QString>("toggle");
        QTest::addColumn<int>("result");
        QTest::addColumn<int>("errorCode");
        QTest::newRow("paper out") << "chkCartaEsaurita" << -1 << 2;
        QTest::newRow("offline") << "chkFuoriLinea" << -1 << 3;
        QTest::newRow("nak") << "chkNak" << 7 << 0;
        QTest::newRow("bad checksum") << "chkBadSum" << 4 << 0;
        QTest::newRow("power off") << "chkSpenta" << 1 << 0;
    }
    void faultFromTheWindow()
    {
        QFETCH(QString, toggle);
        QFETCH(int, result);
        QFETCH(int, errorCode);
        auto w = open();
        QCOMPARE(control->OpenTcp(), int16_t(0));
        int16_t op = 1;
        auto *box = w->findChild<QCheckBox *>(toggle);
        QVERIFY(box && !box->toolTip().isEmpty());
        box->click();
        QCOMPARE(int(control->FeedPaper(op, 1)), result);
        if (errorCode)
            QCOMPARE(int(control->ErrorCode()), errorCode);
        box->click();
        QVERIFY(!box->isChecked());
        QCOMPARE(int(control->FeedPaper(op, 1)), 0);
    }

    void badInputLeavesAMessage_data()
    {
        QTest::addColumn<QString>("what");
        QTest::addColumn<QString>("says");
        QTest::newRow("broken state file") << "state" << "damaged";
        QTest::newRow("port in use") << "port" << "porta TCP";
        QTest::newRow("serial of another model") << "serial" << "QN";
        QTest::newRow("COM link that is a file") << "pty" << "COM7";
    }
    void badInputLeavesAMessage()
    {
        QFETCH(QString, what);
        QFETCH(QString, says);
        QTcpServer holder;
        if (what == "state") {
            TestFiles::writeFile(settings.statePath, "{ not a printer");
        } else if (what == "port") {
            QVERIFY(holder.listen(QHostAddress::LocalHost, settings.tcpPort));
        } else if (what == "pty") {
            TestFiles::writeFile(env->folder.filePath(QStringLiteral("COM7")), ""); // not a link: left alone
            settings.usePty = true;
            settings.comNumber = 7;
        } else {
            settings.serial = QStringLiteral("QO41100123"); // a KX81's, on a KX90
        }
        auto w = open();
        QVERIFY2(w->message().contains(says), qPrintable(w->message()));
        if (what == "state") {
            const QStringList aside = QDir(env->folder.path()).entryList({QStringLiteral("state.json.damaged-*")});
            QCOMPARE(aside.size(), 1);
            QCOMPARE(TestFiles::contentOf(env->folder.filePath(aside[0])), QByteArray("{ not a printer"));
        }
        // Still usable: the settings put right bring the printer up.
        holder.close();
        settings.serial.clear();
        settings.usePty = false;
        QVERIFY(w->applySettings(settings));
        QCOMPARE(control->OpenTcp(), int16_t(0));
        int16_t op = 1;
        QCOMPARE(int(control->FeedPaper(op, 1)), 0);
    }

    void fiscordaSettingsWrittenOnlyWhenMissing()
    {
        QVERIFY(SeedFiscordaSettings(env->folder.path(), 4660));
        QCOMPARE(env->readSettings(), QString("<settings><mode>TCP</mode><comnumber>1</comnumber><comsettings>9600,n,8,1"
                                               "</comsettings><tcpport>4660</tcpport><ipaddress>127.0.0.1</ipaddress>"
                                               "<timeoutack>-1</timeoutack><timeoutop>-1</timeoutop><maxnreparti>40"
                                               "</maxnreparti></settings>"));
        env->writeSettings(QStringLiteral("<mode>COM</mode>"));
        QVERIFY(!SeedFiscordaSettings(env->folder.path(), 4660));
        QCOMPARE(env->readSettings(), QStringLiteral("<settings><mode>COM</mode></settings>"));
    }

    void rollStaysBounded()
    {
        auto w = open();
        QStringList lines;
        for (int i = 0; i < PaperRollView::MaxLines + 700; ++i)
            lines << QStringLiteral("RIGA %1").arg(i);
        w->roll()->appendLines(lines.mid(0, 500));
        w->roll()->appendLines(lines.mid(500));
        QCOMPARE(w->roll()->lines().size(), PaperRollView::MaxLines);
        QCOMPARE(w->roll()->document()->blockCount(), PaperRollView::MaxLines);
        QCOMPARE(w->roll()->lines().last(), lines.last());
        QCOMPARE(w->roll()->document()->lastBlock().text(), lines.last());
    }
};

QTEST_MAIN(TestPrinterWindow)
#include "tst_printerwindow.moc"
