// SPDX-License-Identifier: GPL-3.0-or-later
// The table editor against the emulated printer over loopback TCP: a row of
// each table read, changed and read back; the department count beyond the
// printer's. (The tickets' and the VAT's writes, the VAT defaults, a refused
// value and a failed write are the editor's own test on a scripted printer;
// those tables meet this printer in the full programming's round trip.)
#include "EmulatorTestEnv.h"
#include "printer/SharedState.h"
#include "programming/ProgForm.h"
#include "settings/Conversions.h"
#include "programming/ProgrammingGridModel.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QtTest>

class TestProgFormEmulator : public QObject
{
    Q_OBJECT
    std::optional<EmulatorTestEnv> env;

    void start(int departments = 40)
    {
        EmulatorConfig config;
        config.departments = departments;
        QVERIFY(env->startOnTcp(config));
    }
    Reply read(const char *name, int n) { return env->run(name, {QByteArray::number(n)}); }

private Q_SLOTS:
    void init()
    {
        env.emplace();
        Conv::setLocaleForTests(QLocale::c()); // the numbers below are written so
        ProgForm::WizardMode = false;
        gMaxNReparti = 40;
    }
    void cleanup() { env.reset(); }

    void rowReadAndWrittenPerKind_data()
    {
        QTest::addColumn<int>("kind");
        QTest::addColumn<int>("row");
        QTest::addColumn<QString>("before");     // txtDesc once the row is selected
        QTest::addColumn<QStringList>("fields"); // txtDesc, txtLimite, txtPercOpr typed
        QTest::addColumn<QString>("readBack");   // command to read the row on the printer
        QTest::addColumn<QStringList>("stored"); // property=value expected there
        QTest::addColumn<QStringList>("gridRow");

        QTest::newRow("card") << 0 << 2 << "VISA" << QStringList{"DINERS", "", ""} << "ReadCarta"
                              << QStringList{"CartaDescrizione=DINERS"} << QStringList{"2", "DINERS"};
        QTest::newRow("cash") << 1 << 4 << "" << QStringList{"ASSEGNI", "", ""} << "ReadContante"
                              << QStringList{"ContanteDescrizione=ASSEGNI"} << QStringList{"4", "ASSEGNI"};
        QTest::newRow("department") << 4 << 9 << "" << QStringList{"DOLCI  ", "25", ""} << "ReadReparto"
                                    << QStringList{"RepartoDescrizione=DOLCI  ", "RepartoLimite=250000",
                                                   "RepartoIva=2", "RepartoScontRiass=1", "RepartoGrpMerc=4"}
                                    << QStringList{"9", "DOLCI  ", "25", "10", "1", "4"};
        QTest::newRow("operator") << 5 << 3 << "OPERATORE 3" << QStringList{"LUCA", "4321", "3.5"}
                                  << "ReadOperatore"
                                  << QStringList{"OperatoreDescrizione=LUCA", "OperatorePassword=4321",
                                                 "OperatorePercentuale=3.5"}
                                  << QStringList{"3", "LUCA", "4321", "3.5"};
        QTest::newRow("preset amount") << 6 << 2 << "100" << QStringList{"150", "", ""} << "ReadContantePredefinito"
                                       << QStringList{"ContanteImporto=1500000"} << QStringList{"2", "150"};
    }
    void rowReadAndWrittenPerKind()
    {
        QFETCH(int, kind);
        QFETCH(int, row);
        QFETCH(QString, before);
        QFETCH(QStringList, fields);
        QFETCH(QString, readBack);
        QFETCH(QStringList, stored);
        QFETCH(QStringList, gridRow);
        start();
        ProgForm::TableKind = int16_t(kind);
        ProgForm form;
        QVERIFY2(MsgBox::shownTexts().isEmpty(), qPrintable(MsgBox::shownTexts().join('|')));
        form.selectRow(row);
        QCOMPARE(form.txtDesc->text(), before);
        form.txtDesc->setText(fields[0]);
        form.txtLimite->setText(fields[1]);
        form.txtPercOpr->setText(fields[2]);
        if (kind == 4) {
            form.comboIVA->setCurrentIndex(1); // the second rate: VAT row 2
            form.comboScontRiass->setCurrentIndex(1);
            form.comboGrpMerc->setCurrentIndex(4);
        }
        form.btnAdd->click();
        QCOMPARE(MsgBox::shownTexts(), QStringList{"Programmazione effettuata!"});
        const Reply r = read(readBack.toLatin1().constData(), row);
        for (const QString &p : stored) {
            const QString name = p.section('=', 0, 0);
            QCOMPARE(name + "=" + r.property(name.toLatin1().constData()), p);
        }
        QCOMPARE(form.gridModel->grid().row(row), gridRow);
        QCOMPARE(form.currentRow(), row);
    }

    void departmentsBeyondThePrinter()
    {
        start(30);
        gMaxNReparti = 35;
        ProgForm::TableKind = 4;
        ProgForm form;
        // The printer's refusal of department 31 is shown once; 31 to 35 stay blank.
        QCOMPARE(MsgBox::shownTexts().size(), 1);
        QVERIFY(MsgBox::shownTexts().first().contains("NON PREVISTO"));
        QCOMPARE(form.gridModel->rowCount(), 35);
        QCOMPARE(form.gridModel->grid().text(30, 0), QStringLiteral("30"));
        QCOMPARE(form.gridModel->grid().row(31), QStringList(6));
        QCOMPARE(form.gridModel->grid().text(1, 1), QStringLiteral("ALIMENTARI"));
        // Department 1 has VAT row 4: the grid shows the rate.
        QCOMPARE(form.gridModel->grid().text(1, 3), QStringLiteral("4"));
        QCOMPARE(form.gridModel->grid().text(9, 3), QString()); // no VAT row
    }
};

QTEST_MAIN(TestProgFormEmulator)
#include "tst_progformemulator.moc"
