// SPDX-License-Identifier: GPL-3.0-or-later
// The flag screen against a scripted printer.
#include "FormTestEnv.h"
#include "TestFiles.h"
#include "commissioning/InstallFlagForm.h"
#include "printer/SharedState.h"
#include "settings/RunTimeError.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QtTest>

static const QByteArray kPrinterValues =
    "<settings><InstallFlagS14 f1=\"0\" f4=\"0\" f3=\"0\" f7=\"0\" f12=\"1\" f8=\"0\" f13=\"0\" f26=\"1\" f25=\"0\" "
    "f28=\"0\" f27=\"1\" f9=\"0\" f11=\"0\"/><InstallFlagS15 f7=\"12\" f8=\"8\" f11=\"1\" f12=\"0\" f13=\"0\"/></settings>";

class TestInstallFlagForm : public QObject
{
    Q_OBJECT
    std::optional<FormTestEnv> env;
    QMap<int, int> flags;  // the printer's flags
    QMap<int, int> params; // and parameters
    QSet<QString> refused; // "ReadParam 8": answered -1, no properties

    QString filePath() const { return env->folder.filePath("KX90ProgQN41100123.xml"); }

private Q_SLOTS:
    void init()
    {
        env.emplace();
        InstallFlagForm::StandaloneMode = false;
        env->fake.setMatricola("QN");
        refused.clear();
        flags = {{12, 1}, {26, 1}, {27, 1}};
        params = {{7, 12}, {8, 8}, {11, 1}};
        env->fake.handler = [this](const FakeFPControl::Call &c, FakeFPControl &f) -> std::optional<int16_t> {
            const int n = c.args.value(0).toInt();
            if (refused.contains(c.name + ' ' + c.args.value(0)))
                return int16_t(-1);
            if (c.name == "ReadFlag")
                f.setProperty("FlagValue", QString::number(flags.value(n)));
            if (c.name == "ReadParam") {
                f.setProperty("ParamNumber", QString::number(n));
                f.setProperty("ParamValue", QString::number(params.value(n)));
            }
            return std::nullopt;
        };
    }
    void cleanup() { env.reset(); }

    void readingPasses()
    {
        InstallFlagForm form;
        QCOMPARE(form.Check1[4]->isChecked(), true); // flag 12
        QCOMPARE(form.Check1[0]->isChecked(), false);
        QCOMPARE(form.txtIntensPrn->text() + form.txtContrasto->text() + form.txtNCassa->text(), QStringLiteral("1281"));
        QCOMPARE(form.comboLarg->currentIndex(), 0);
        QVERIFY(!form.Check1[4]->isEnabled() && !form.txtNCassa->isEnabled() && !form.btnDefault->isEnabled());
        QVERIFY(MsgBox::shown().isEmpty());
        QCOMPARE(env->fake.count("ReadFlag") + env->fake.count("ReadParam"), 18);

        form.chkImposta->click(); // reads again, enables, and says so
        QVERIFY(form.Check1[4]->isEnabled() && form.comboLarg->isEnabled() && form.btnDefault->isEnabled());
        QCOMPARE(MsgBox::shownTexts(), QStringList{"Lettura flag eseguita!"});
        QCOMPARE(MsgBox::shown().first().icon, QMessageBox::Information);
        form.txtNCassa->setText("77");
        form.chkImposta->click(); // greyed in silence; what was typed is gone
        QVERIFY(!form.txtNCassa->isEnabled());
        QCOMPARE(form.txtNCassa->text(), QStringLiteral("1"));
        QCOMPARE(MsgBox::shownTexts().size(), 1);
    }

    void readRefusals()
    {
        env->fake.setProperty("ErrorCode", "16");
        refused = {"ReadFlag 1", "ReadParam 8"};
        InstallFlagForm::StandaloneMode = true;
        flags[1] = 1;
        InstallFlagForm form;
        QVERIFY(form.chkImposta->isChecked() && form.chkImposta->isHidden());
        QCOMPARE(form.btnNext->text(), QStringLiteral("Programma"));
        QVERIFY(!form.Check1[0]->isEnabled() && !form.Check1[0]->isChecked()); // as it was
        QVERIFY(form.Check1[1]->isEnabled()); // the others at once, and no "Lettura flag eseguita!"
        // The refused read of 8 still answers ParamNumber 7 from before: it is
        // the field of 7 that goes grey, and 8's stays as it was.
        QVERIFY(!form.txtIntensPrn->isEnabled());
        QCOMPARE(form.txtIntensPrn->text(), QStringLiteral("12"));
        QCOMPARE(form.txtContrasto->text(), QString());
        QVERIFY(form.txtNCassa->isEnabled());
        QCOMPARE(MsgBox::shownTexts(), QStringList(2, "Errore del registratore di cassa: NON PREVISTO.\r\n"));
    }

    void avantiOnAFreshForm()
    {
        gNome = "Rossi";
        InstallFlagForm form;
        whenModal("InstallExtraModForm", [](QWidget *w) { w->close(); }); // the next step: tst_commissioningchain
        form.btnNext->click();
        QCOMPARE(env->fake.sent(u',', "Write"), QStringList());
        QVERIFY(MsgBox::shown().isEmpty());
        QCOMPARE(TestFiles::contentOf(filePath()), kPrinterValues);
        QCOMPARE(gNome, QString(52, '_'));
        QCOMPARE(gSede, QStringList(2, QString(52, '_')));
    }

    void onlyChangedFlagsAreSent()
    {
        InstallFlagForm::StandaloneMode = true;
        gNome = "Rossi";
        InstallFlagForm form;
        form.Check1[7]->setChecked(true); // flag 13
        form.Check1[9]->setChecked(false); // flag 26
        form.txtNCassa->setText("abc");    // saved, not sent
        form.comboLarg->setCurrentIndex(2);
        env->fake.clearCalls();
        form.btnNext->click();
        QCOMPARE(env->fake.sent(u',', "Write"), QStringList({"WriteFlag(13,1)", "WriteFlag(26,0)", "WriteParam(7,12)",
                                                             "WriteParam(8,8)", "WriteParam(12,2)", "WriteParam(13,0)"}));
        QCOMPARE(MsgBox::shownTexts(), QStringList{"Programmazione flag avvenuta!"});
        QByteArray expected = kPrinterValues;
        expected.replace("f13=\"0\" f26=\"1\"", "f13=\"1\" f26=\"0\"").replace("f11=\"1\" f12=\"0\"", "f11=\"abc\" f12=\"2\"");
        QCOMPARE(TestFiles::contentOf(filePath()), expected);
        QCOMPARE(gNome, QStringLiteral("Rossi")); // alone, the customer's data stay
        QVERIFY(!form.isVisible());
    }

    void roundStopsAtTheFirstRefusedWrite_data()
    {
        QTest::addColumn<int>("errorCode");
        QTest::addColumn<QString>("text");
        QTest::newRow("flag not on this printer") << 16 << "NON PREVISTO.";
        QTest::newRow("receipt open") << 23 << "CHIUDERE LO SCONTRINO.";
    }
    void roundStopsAtTheFirstRefusedWrite()
    {
        QFETCH(int, errorCode);
        QFETCH(QString, text);
        InstallFlagForm form;
        form.chkImposta->click();
        for (int i : {0, 1, 2, 3})
            form.Check1[i]->setChecked(true); // flags 1, 4, 3, 7
        env->fake.setProperty("ErrorCode", QString::number(errorCode));
        env->fake.queueResult("WriteFlag", 0);
        env->fake.queueResult("WriteFlag", 0);
        env->fake.queueResult("WriteFlag", -1); // the third flag
        MsgBox::clearShown();
        env->fake.clearCalls();
        bool nextOpened = false;
        whenModal("InstallExtraModForm", [&](QWidget *w) { nextOpened = true; w->close(); });
        form.btnNext->click();
        QCOMPARE(env->fake.sent(u',', "Write"), QStringList({"WriteFlag(1,1)", "WriteFlag(4,1)", "WriteFlag(3,1)"}));
        QCOMPARE(env->fake.count("ReadFlag"), 3); // nothing more is even compared
        QCOMPARE(MsgBox::shownTexts(), QStringList{"Errore del registratore di cassa: " + text + "\r\n"});
        QCOMPARE(TestFiles::contentOf(filePath()), QByteArray("<settings><InstallFlagS14 f1=\"1\" f4=\"1\"/></settings>"));
        QVERIFY(nextOpened); // the chain goes on
    }

    void leavingAField_data()
    {
        QTest::addColumn<QString>("field");
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("outcome"); // 1 passes, 0 out of range, -1 ends the run
        QTest::newRow("intensity 25") << "txtIntensPrn" << "25" << 1;
        QTest::newRow("intensity 26") << "txtIntensPrn" << "26" << 0;
        QTest::newRow("contrast 16") << "txtContrasto" << "16" << 0;
        QTest::newRow("display 100") << "txtSpegniVisore" << "100" << 0;
        QTest::newRow("no number") << "txtContrasto" << "abc" << 1;
        QTest::newRow("till number, unchecked") << "txtNCassa" << "5000" << 1;
        QTest::newRow("beyond an Integer") << "txtIntensPrn" << "40000" << -1;
    }
    void leavingAField()
    {
        QFETCH(QString, field);
        QFETCH(QString, text);
        QFETCH(int, outcome);
        InstallFlagForm form;
        auto *edit = form.findChild<QLineEdit *>(field);
        edit->setText(text);
        if (outcome < 0) {
            QVERIFY_THROWS_EXCEPTION(RunTimeError, form.ValidateField(edit));
            return;
        }
        QCOMPARE(form.ValidateField(edit), outcome == 1);
        QCOMPARE(MsgBox::shownTexts(), outcome == 1 ? QStringList() : QStringList{"Valore fuori scala!"});
    }

    void defaultsAndTheUncheckedDisplayTime()
    {
        InstallFlagForm form;
        form.chkImposta->click();
        form.btnDefault->click(); // the screen only
        QCOMPARE(form.txtIntensPrn->text() + form.txtContrasto->text() + form.txtNCassa->text()
                     + form.txtSpegniVisore->text(),
                 QStringLiteral("12800"));
        QCOMPARE(env->fake.sent(u',', "Write"), QStringList());
        form.txtSpegniVisore->clear();
        QVERIFY_THROWS_EXCEPTION(RunTimeError, form.btnNext_Click());
        QVERIFY(!QFile::exists(filePath()));
    }
};

QTEST_MAIN(TestInstallFlagForm)
#include "tst_installflagform.moc"
