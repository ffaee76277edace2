// SPDX-License-Identifier: GPL-3.0-or-later
// The logo screens against the emulated printer over the real control: a
// standard logo of the installation lands in the logo memory and heads the
// next receipt; a transfer that the line cuts half-way ends in the failure
// message and leaves the memory and the logo number alone; a huge file is
// refused at once. (The memory clear, and a second APPLICA whose name lost
// its file, are the screen's calls and the printer model's rule.)
#include "EmulatorTestEnv.h"
#include "TestFiles.h"
#include "commissioning/LoghiForm.h"
#include "commissioning/LoghiPersForm.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QtTest>

class TestLogoTransfer : public QObject
{
    Q_OBJECT
    std::optional<EmulatorTestEnv> env;

    void start(EmulatorConfig::Model model)
    {
        EmulatorConfig config;
        config.model = model;
        QVERIFY(env->startOnTcp(config));
    }
    // The standard logos as the installation ships them, beside the tests.
    static QString shippedFolder() { return QDir(QCoreApplication::applicationDirPath()).filePath("LoghiStandard"); }
    static QByteArray shipped(const QString &name) { return TestFiles::contentOf(QDir(shippedFolder()).filePath(name)); }
    PrinterMemory &memory() { return env->emu->model().memory(); }
    int param(int n) { return memory().params.value(n - 1); }
    QString status() { return env->emu->execute("ReadPrinterInfo", {"1"}).property("PrinterStatus"); }
    QString printed() { return env->emu->model().context().roll.tail().join('\n'); }

private Q_SLOTS:
    void init() { env.emplace(); }
    void cleanup() { env.reset(); }

    void standardLogoHeadsTheReceipt()
    {
        start(EmulatorConfig::Model::KX90);
        SetProgramFolderForTests(QCoreApplication::applicationDirPath());
        LoghiForm form;
        QCOMPARE(form.ImageList1.tags, QStringList({"02", "03", "04", "05", "06", "07", "08", "09"}));
        form.show();
        form.chkHeader->setChecked(true);
        QListWidget *list = form.ListViewHeader;
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(list->item(2)).center());
        form.ComboLarg->setCurrentText("58 mm");
        form.btnSave->click();

        QCOMPARE(MsgBox::shownTexts(), QStringList{"Programmazione intestazione scontrino ok!"});
        QCOMPARE(memory().logos.size(), 1);
        QCOMPARE(memory().logos[0].data, shipped("04_nataleA_60.bin"));
        QCOMPARE(param(9), 4);
        QCOMPARE(env->control->TimeoutAck(), int16_t(60));

        QCOMPARE(env->emu->execute("SellReparto", {"1", "1", "PANE", "25000", "1", "1"}).result, 0);
        QVERIFY(printed().contains("[ LOGO 4 ]"));
        QCOMPARE(env->emu->execute("PayReceipt", {"1", "", "0", "0", "0", "1"}).result, 0);
    }

    void transferCutHalfWay()
    {
        start(EmulatorConfig::Model::KX81);
        env->control->setTimeoutAck(1); // the lost piece costs a second
        const QString path = QDir(shippedFolder()).filePath("KX81_loghi.tlg");
        int pieces = 0;
        connect(&*env->emu, &EmulatorServer::requestHandled, this, [&](const QString &, const QByteArray &name, const Reply &) {
            if (name == "SendRawData" && ++pieces == 5)
                env->emu->faults().set(FaultSwitches::Wire::NoAck, 1); // the next piece never arrives
        });
        LoghiPersForm form;
        form.txtFileName->setText(path);
        form.txtIndexImg->setText("7");
        form.comboPos->setCurrentText("Coda");
        form.btnSave->click();

        QCOMPARE(MsgBox::shownTexts(), QStringList{"Programmazione logo non riuscita!"});
        QVERIFY(pieces > 10); // the rest of the file still went after the loss
        QVERIFY(memory().logos.isEmpty());
        QCOMPARE(param(10), 0);
        QCOMPARE(status().right(1), QStringLiteral("4"));
        QVERIFY(printed().contains("TRASFERIMENTO INCOMPLETO"));
    }

    // A file far beyond the logo memory: the printer refuses the job at its
    // start; the pieces still go, each refused, and the state decides.
    void hugeFileRefusedAtOnce()
    {
        start(EmulatorConfig::Model::KX90II);
        const QString path = env->folder.filePath("huge.bin");
        TestFiles::writeFile(path, QByteArray(3 * 1024 * 1024, 'x'));
        int pieces = 0;
        connect(&*env->emu, &EmulatorServer::requestHandled, this, [&](const QString &, const QByteArray &name, const Reply &) {
            pieces += name == "SendRawData" ? 1 : 0;
        });
        LoghiPersForm form;
        form.txtFileName->setText(path);
        form.btnSave->click();
        QCOMPARE(MsgBox::shownTexts(), QStringList{"Programmazione logo non riuscita!"});
        QCOMPARE(pieces, 2 + 3 * 1024 * 1024 / 100 + 1); // opening, whole pieces, rest, closing
        QVERIFY(memory().logos.isEmpty());
        QCOMPARE(param(9), 0);
    }
};

QTEST_MAIN(TestLogoTransfer)
#include "tst_logotransfer.moc"
