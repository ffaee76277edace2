// SPDX-License-Identifier: GPL-3.0-or-later
// The header step against the emulated printer: read back, programmed and
// printed on the next receipt at the model's width.
#include "EmulatorTestEnv.h"
#include "TestFiles.h"
#include "commissioning/InstallHeaderForm.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QtTest>

class TestCommissioningSteps : public QObject
{
    Q_OBJECT
    std::optional<EmulatorTestEnv> env;

    Reply run(const char *name, const QList<QByteArray> &args) { return env->run(name, args); }
    // The receipt's lines above its "EURO" row.
    QStringList lastReceiptHead()
    {
        const QStringList roll = env->roll();
        const qsizetype euro = roll.lastIndexOf(QRegularExpression("^ +EURO$"));
        const qsizetype cut = roll.lastIndexOf(QRegularExpression("^~+$"), euro); // then a blank line
        return roll.mid(cut + 2, euro - cut - 2);
    }
    static void markRows(InstallHeaderForm &form)
    {
        for (int i = 0; i < 3; ++i)
            form.ComboContR[i]->setCurrentIndex(i);
    }

private Q_SLOTS:
    void init()
    {
        env.emplace();
        InstallHeaderForm::StandaloneMode = true;
    }
    void cleanup() { env.reset(); }

    void headerOnTheNextReceipt_data()
    {
        QTest::addColumn<QString>("firmware");
        QTest::addColumn<int>("width");
        QTest::newRow("KX90, firmware 2") << "2.10" << 40;
        QTest::newRow("KX90, firmware 1") << "1.10" << 27;
    }
    void headerOnTheNextReceipt()
    {
        QFETCH(QString, firmware);
        QFETCH(int, width);
        EmulatorConfig config;
        config.firmware = firmware;
        QVERIFY(env->startOnTcp(config));
        InstallHeaderForm form;
        QCOMPARE(form.maxChars, width);
        // The new printer's header comes back trimmed, or not at all.
        QCOMPARE(form.txtR[0]->text(), width == 40 ? QStringLiteral("KELVO DEMO S.R.L.") : QString());
        markRows(form);
        form.txtR[0]->setText("BAR SPORT");
        form.comboTipoR[0]->setCurrentIndex(0);
        form.checkCentraR[0]->setChecked(true);
        form.txtR[1]->setText("VIA ROMA 1, " + QString(40, 'X')); // cut to the width
        form.comboTipoR[1]->setCurrentIndex(1);
        form.checkCentraR[1]->setChecked(false);
        form.txtR[2]->setText("P.IVA 0123");
        form.comboTipoR[2]->setCurrentIndex(0);
        for (int i = 3; i < 6; ++i) {
            form.txtR[i]->clear();
            form.comboTipoR[i]->setCurrentIndex(0);
        }
        form.btnNext_Click();
        QVERIFY(MsgBox::shownTexts().isEmpty());
        QVERIFY(env->roll().join('\n').contains("PROGRAMMAZIONE INTESTAZIONE"));

        QCOMPARE(run("SellReparto", {"1", "1", "PANE", "25000", "1", "1"}).result, 0);
        QCOMPARE(run("PayReceipt", {"1", "", "0", "0", "0", "1"}).result, 0);
        const int p = width == 40 ? 15 : 8; // the step's own centring: one blank short a side
        QCOMPARE(lastReceiptHead(), QStringList({QString(p, ' ') + "BAR SPORT" + QString(p, ' '),
                                                 ("VIA ROMA 1, " + QString(40, 'X')).left(width), "P.IVA 0123"}));
        QCOMPARE(run("ReadHeaderStyle", {"2"}).property("HeaderStyle"), QStringLiteral("2"));
        QVERIFY(TestFiles::contentOf(env->folder.filePath("KX90ProgQN41100123.xml")).contains("R1=\"BAR SPORT\""));
    }
};

QTEST_MAIN(TestCommissioningSteps)
#include "tst_commissioningsteps.moc"
