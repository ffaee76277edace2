// SPDX-License-Identifier: GPL-3.0-or-later
// The sale keypad's window (its rules are the model's test) and the X reports.
#include "FormTestEnv.h"
#include "app/DataOraForm.h"
#include "commissioning/InstallFlagForm.h"
#include "commissioning/InstallHeaderForm.h"
#include "commissioning/InstallLogoForm.h"
#include "programming/ProgForm.h"
#include "simulator/KelvoFpSimulaForm.h"
#include "simulator/XRepForm.h"

#include <QAction>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QtTest>

using Form = KelvoFpSimulaForm;

using Key = KeypadModel::Key;

static const QString kCloseReceipt = "Errore del registratore di cassa: CHIUDERE LO SCONTRINO.\r\n";

class TestSimulaKeypad : public QObject
{
    Q_OBJECT
    std::optional<FormTestEnv> env;

private Q_SLOTS:
    void init()
    {
        env.emplace(FormTestEnv::Options{.italian = true});
        KeypadModel::PaymentOpen = false;
    }
    void cleanup() { env.reset(); }

    // Each key after a figure (a count x value for the cash description)
    // does on the form what its rule does on a bare keypad.
    void everyKeyIsWired()
    {
        QList<std::pair<QString, Key>> keys{
            {"btnDecimali", Key::Decimal}, {"btnMoltiplicatoreProd", Key::Multiply}, {"btnCanc", Key::Clear},
            {"btnSubTot", Key::Subtotal}, {"btnContante", Key::Cash}, {"btnAssegno", Key::Cheque},
            {"btnCartaCredito", Key::Card}, {"btnTicket", Key::Ticket}, {"btnContanteDesc", Key::CashDescription},
            {"btnApriCassetto", Key::Drawer}, {"btnAvanzaScontrino", Key::Feed}, {"btnChiusuraGiorno", Key::Closure},
            {"btnBloccaTasti", Key::Lock}, {"btnSbloccaTasti", Key::Unlock}};
        for (int i = 0; i < 11; ++i)
            keys.append({QString("btnTastiera_%1").arg(i), Key(int(Key::Digit1) + i)});
        for (int n = 0; n < 4; ++n)
            keys << std::pair{QString("btnRep_%1").arg(n), Key(int(Key::Sale1) + n)}
                 << std::pair{QString("btnStorno_%1").arg(n), Key(int(Key::Void1) + n)};
        const char *adjust[] = {"btnAbbuonoPiuVal", "btnAbbuonoMenoVal", "btnScontoPercPiu", "btnScontoPercMeno"};
        for (int i = 0; i < 2; ++i)
            for (int a = 0; a < 4; ++a)
                keys.append({QString("%1_%2").arg(adjust[a]).arg(i), Key(int(i ? Key::TotalSurcharge : Key::ItemSurcharge) + a)});
        QCOMPARE(keys.size(), KeypadModel::KeyCount);
        for (const auto &[name, key] : keys) {
            const QList<Key> figure = key == Key::CashDescription ? QList{Key::Digit3, Key::Multiply, Key::Digit2}
                                                                  : QList{Key::Digit2};
            KeypadModel::PaymentOpen = false;
            KeypadModel bare;
            for (Key k : figure + QList{key})
                bare.press(k);
            const QStringList expected = env->fake.sent();
            env->fake.clearCalls();
            KeypadModel::PaymentOpen = false;
            Form form;
            for (Key k : figure)
                form.press(k);
            auto *button = form.findChild<QPushButton *>(name);
            QVERIFY2(button, qPrintable(name));
            button->click();
            QCOMPARE(env->fake.sent(), expected);
            QCOMPARE(form.txtDisplay->text(), bare.Display);
            QVERIFY2(!expected.isEmpty() || bare.Display != "2", qPrintable(name)); // the key did something
            env->fake.clearCalls();
        }
    }

    void physicalKeyboard()
    {
        Form form;
        QTest::keyClicks(&form, "3*2,5");
        QTest::keyClick(&form, Qt::Key_F2);
        QTest::keyClick(&form, Qt::Key_7, Qt::KeypadModifier);
        QTest::keyClicks(form.txtDescProd, "12");          // typed into the description, not keyed
        QTest::keyClick(form.txtDescProd, Qt::Key_Return); // ends the typing, pays nothing
        QTest::keyClick(&form, Qt::Key_F1, Qt::ShiftModifier);
        QTest::keyClick(&form, Qt::Key_Enter);
        QCOMPARE(env->fake.sent(), QStringList({"SellReparto(1,3,REP 2,25000,2,1)", "StornoReparto(1,12,1,70000,1,1)",
                                               "PayReceipt(1,Contante,0,0,0,1)"}));
        QTest::keyClick(&form, Qt::Key_4);
        QTest::keyClick(&form, Qt::Key_Delete);
        QCOMPARE(form.txtDisplay->text(), QStringLiteral("0"));
        form.btnBloccaTasti->click();
        QTest::keyClicks(&form, "12");
        QCOMPARE(form.txtDisplay->text(), QStringLiteral("-TASTIERA BLOCCATA-"));
    }

    void lockLeavesSomeKeysAlive()
    {
        Form form;
        form.btnBloccaTasti->click();
        QStringList alive;
        for (QPushButton *b : form.findChildren<QPushButton *>())
            if (b->isEnabled())
                alive << b->objectName();
        alive.sort();
        QCOMPARE(alive, QStringList({"btnBloccaTasti", "btnContanteDesc", "btnEsci", "btnMonitor", "btnSbloccaTasti"}));
        QVERIFY(form.comboOperatore->isEnabled());
    }

    // The mark follows the printer: read as the menu opens, moved only when
    // the printer took the switch (the calls are the model's).
    void learningModeMenu()
    {
        Form form;
        env->fake.setProperty("FlagValue", "1");
        Q_EMIT form.mSetup->aboutToShow();
        QVERIFY(form.mApprend->isChecked());
        env->fake.queueResult("ReadFlag", 7); // a failed read leaves the mark
        env->fake.setProperty("FlagValue", "0");
        Q_EMIT form.mSetup->aboutToShow();
        QVERIFY(form.mApprend->isChecked());
        form.mApprend->trigger();
        QVERIFY(!form.mApprend->isChecked());
        env->fake.setProperty("ErrorCode", "23");
        env->fake.queueResult("WriteFlag", -1);
        form.mApprend->trigger(); // refused: the mark stays
        QVERIFY(!form.mApprend->isChecked());
        QCOMPARE(MsgBox::shownTexts(), QStringList({"Modalità fiscale", kCloseReceipt}));
    }

    void resetsOfTotals()
    {
        Form form;
        MsgBox::queueAnswer(QMessageBox::No);
        form.mnuResetTotPLU->trigger();
        MsgBox::queueAnswer(QMessageBox::No);
        form.mnuResetTotPromoTable->trigger();
        QCOMPARE(env->fake.calls.size(), 0);

        form.mnuResetTotPLU->trigger();
        form.mnuResetTotPromoTable->trigger();
        QCOMPARE(env->fake.calls.size(), 1003); // which ones: the keypad model's test
        const auto shown = MsgBox::shown();
        QCOMPARE(shown.size(), 6);
        QCOMPARE(shown[0].text, QStringLiteral("Si proprio sicuro di voler resettare il totale dei PLU"));
        QCOMPARE(shown[1].text, QStringLiteral("Sei proprio sicuro di voler resettare il totale della tabella delle promozioni"));
        QVERIFY(shown[0].buttons == (QMessageBox::Yes | QMessageBox::No) && shown[0].title == "Fiscorda");
        QCOMPARE(shown[3].text + "|" + shown[3].title, QStringLiteral("Operazione completata!|Fiscorda"));
        QCOMPARE(shown[3].icon, QMessageBox::Information);
        QVERIFY(!QApplication::overrideCursor());
    }

    void screensOpened_data()
    {
        QTest::addColumn<QString>("opener");
        QTest::addColumn<QString>("screen");
        QTest::addColumn<QString>("mode");
        for (auto [item, kind] : {std::pair{"mCarte", 0}, {"mCont", 1}, {"mTicket", 2}, {"mIva", 3}, {"mReparti", 4},
                                  {"mOperat", 5}, {"mnuContantiPredefiniti", 6}})
            QTest::newRow(item) << item << "ProgForm" << QString("wizard 0 kind %1").arg(kind);
        QTest::newRow("mFlag") << "mFlag" << "InstallFlagForm" << "standalone";
        QTest::newRow("mLoghi") << "mLoghi" << "InstallLogoForm" << "standalone";
        QTest::newRow("mHeader") << "mHeader" << "InstallHeaderForm" << "standalone";
        QTest::newRow("btnXRep") << "btnXRep" << "XRepForm" << "";
        QTest::newRow("btnDGFE") << "btnDGFE" << "DGFEForm" << "";
        QTest::newRow("btnDataOra") << "btnDataOra" << "DataOraForm" << "wizard 0";
        QTest::newRow("btnMonitor") << "btnMonitor" << "FpMonitorForm" << "";
    }
    void screensOpened()
    {
        QFETCH(QString, opener);
        QFETCH(QString, screen);
        ProgForm::WizardMode = DataOraForm::WizardMode = true;
        ProgForm::TableKind = 9;
        InstallFlagForm::StandaloneMode = InstallLogoForm::StandaloneMode = InstallHeaderForm::StandaloneMode = false;
        Form form;
        form.show();
        QString seen;
        whenModal(screen, [&](QWidget *w) {
            seen = w->objectName();
            if (screen == "ProgForm")
                seen += QString(" wizard %1 kind %2").arg(int(ProgForm::WizardMode)).arg(ProgForm::TableKind);
            else if (screen == "DataOraForm")
                seen += QString(" wizard %1").arg(int(DataOraForm::WizardMode));
            else if (screen.startsWith("Install"))
                seen += InstallFlagForm::StandaloneMode || InstallLogoForm::StandaloneMode || InstallHeaderForm::StandaloneMode
                            ? " standalone" : " chain";
            w->close();
        });
        if (auto *action = form.findChild<QAction *>(opener))
            action->trigger();
        else
            form.findChild<QPushButton *>(opener)->click();
        QFETCH(QString, mode);
        QCOMPARE(seen, (screen + " " + mode).trimmed());
        QVERIFY(!QApplication::activeModalWidget() || QApplication::activeModalWidget() == &form);
    }

    void xReports()
    {
        XRepForm form;
        QCOMPARE(QStringList({form.comboOperatore->currentText(), form.comboReparto->currentText(),
                              form.comboOperatore->itemText(12), form.comboReparto->itemText(40)}),
                 QStringList({"1", "1", "12", "40"}));
        env->fake.busy = true;
        form.btnFinGior->click(); // lost without a word
        env->fake.busy = false;
        for (QPushButton *b : {form.btnFinGior, form.btnFinPer, form.btnOraGio, form.btnOraPer, form.btnOperGio, form.btnRepPer})
            b->click();
        form.comboOperatore->setCurrentText("0"); // sent as it stands
        form.comboReparto->setCurrentText("40");
        form.btnOperPer->click();
        env->fake.setProperty("ErrorCode", "23");
        env->fake.queueResult("PrintXRepartoGiorno", -1);
        form.btnRepGio->click();
        QCOMPARE(env->fake.sent(), QStringList({"PrintXFinanziarioGiorno(1)", "PrintXFinanziarioPeriodo(1)", "PrintXOrarioGiorno(1)",
                                               "PrintXOrarioPeriodo(1)", "PrintXOperatoreGiorno(1,1)", "PrintXRepartoPeriodo(1,1)",
                                               "PrintXOperatorePeriodo(1,0)", "PrintXRepartoGiorno(1,40)"}));
        QCOMPARE(MsgBox::shownTexts(), QStringList{kCloseReceipt});
    }
};

QTEST_MAIN(TestSimulaKeypad)
#include "tst_simulakeypad.moc"
