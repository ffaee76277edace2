// SPDX-License-Identifier: GPL-3.0-or-later
// The cash-register simulator against the emulated printer: a whole receipt
// as printed and the eight X reports (the key rules: the keypad model's test).
#include "EmulatorTestEnv.h"
#include "settings/Conversions.h"
#include "simulator/KelvoFpSimulaForm.h"
#include "simulator/XRepForm.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QtTest>

using Form = KelvoFpSimulaForm;

class TestSimulatorEmulator : public QObject
{
    Q_OBJECT
    std::optional<EmulatorTestEnv> env;
    qint64 rollMark = 0;

    // Keys by their faces: digits and ',' one character each, others by name.
    void keys(Form &f, const QString &sequence)
    {
        for (const QString &t : sequence.split(' ', Qt::SkipEmptyParts)) {
            if (t == "00")
                f.btnTastiera[10]->click();
            else if (t.size() == 1 && t[0].isDigit())
                f.btnTastiera[t == "0" ? 9 : t.toInt() - 1]->click();
            else if (t == ",")
                f.btnDecimali->click();
            else if (t == "x")
                f.btnMoltiplicatoreProd->click();
            else if (t.startsWith("desc:"))
                f.txtDescProd->setText(t.mid(5).replace('_', ' '));
            else if (auto *b = f.findChild<QPushButton *>(t))
                b->click();
            else
                QFAIL(qPrintable("no key " + t));
        }
    }
    // What came out of the printer since the last look.
    QStringList paper()
    {
        const PaperRoll &roll = env->emu->model().context().roll;
        const qint64 fresh = roll.linesPrinted() - rollMark;
        rollMark = roll.linesPrinted();
        return roll.tail().mid(roll.tail().size() - fresh);
    }

private Q_SLOTS:
    void init()
    {
        env.emplace();
        Conv::setLocaleForTests(QLocale(QLocale::Italian, QLocale::Italy));
        KeypadModel::PaymentOpen = false;
        QVERIFY(env->start());
        env->emu->model().context().systemClock = [] { return QDateTime(QDate(2026, 3, 10), QTime(9, 30)); };
        QVERIFY(env->connectTcp());
        rollMark = env->emu->model().context().roll.linesPrinted();
    }
    void cleanup()
    {
        env.reset();
        Conv::setLocaleForTests(QLocale::system());
    }

    void wholeReceipt()
    {
        Form form;
        keys(form, "desc:Pane_integrale 2 , 5 0 btnRep_0 "
                   "3 x 1 , 2 btnRep_1 0 , 3 btnAbbuonoMenoVal_0 "
                   "4 btnRep_3 4 btnStorno_3 "
                   "btnSubTot 2 btnAssegno");
        QVERIFY(KeypadModel::PaymentOpen);
        keys(form, "9 btnRep_0");                  // shut while the payment is open
        keys(form, "btnCanc 1 0 btnContante");
        QVERIFY(!KeypadModel::PaymentOpen);
        QCOMPARE(MsgBox::shownTexts(), QStringList());
        const QStringList expected{
            "   K E L V O   D E M O   S . R . L .",
            "VIA DEI TIGLI 12",
            "00100 BORGO NUOVO",
            "P.IVA 01234567890",
            "                                    EURO",
            "Pane integrale                      2,50",
            "  3 x 1,20",
            "REP 2                               3,60",
            "SCONTO                             -0,30",
            "REP 4                               4,00",
            "STORNO",
            "BEVANDE                            -4,00",
            "SUBTOTALE                           5,80",
            "----------------------------------------",
            "TOTALE EURO                         5,80",
            "Assegno                             2,00",
            "Contante                           10,00",
            "RESTO                               6,20",
            "",
            "10-03-2026 09:30             SC. N. 0001",
            "             MF QN41100123",
            "",
            "~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~",
            "",
        };
        QCOMPARE(paper(), expected);
    }

    void xReports_data()
    {
        QTest::addColumn<QString>("button");
        QTest::addColumn<QStringList>("lines"); // as they follow the title
        const QStringList fin{"SCONTRINI FISCALI                      1", "VENDITE                            11,00",
                              "STORNI                             -1,00", "SCONTI                              0,00",
                              "MAGGIORAZIONI                       0,00"};
        QTest::newRow("financial day")
            << "btnFinGior" << QStringList{"LETTURA X FINANZIARIO", "GIORNALIERO"} + fin + QStringList{"TOTALE GIORNALIERO                 10,00"};
        QTest::newRow("financial period")
            << "btnFinPer" << QStringList{"LETTURA X FINANZIARIO", "PERIODICO"} + fin + QStringList{"TOTALE PERIODICO                   10,00"};
        const QStringList hour{"09:00-09:59  1 SC.                 10,00"};
        QTest::newRow("hourly day") << "btnOraGio" << QStringList{"LETTURA X ORARIO", "GIORNALIERO"} + hour;
        QTest::newRow("hourly period") << "btnOraPer" << QStringList{"LETTURA X ORARIO", "PERIODICO"} + hour;
        const QStringList op{"1 OPERATORE 1                          1", "  TOTALE                           10,00"};
        QTest::newRow("operator day") << "btnOperGio" << QStringList{"LETTURA X OPERATORI", "GIORNALIERO"} + op;
        QTest::newRow("operator period") << "btnOperPer" << QStringList{"LETTURA X OPERATORI", "PERIODICO"} + op;
        const QStringList dep{"2 FRUTTA                            6,00", "  PEZZI                                2"};
        QTest::newRow("department day") << "btnRepGio" << QStringList{"LETTURA X REPARTI", "GIORNALIERO"} + dep;
        QTest::newRow("department period") << "btnRepPer" << QStringList{"LETTURA X REPARTI", "PERIODICO"} + dep;
    }
    void xReports()
    {
        QFETCH(QString, button);
        QFETCH(QStringList, lines);
        Form form;
        keys(form, "5 btnRep_0 2 x 3 btnRep_1 1 btnStorno_0 btnContante");
        XRepForm reports(&form);
        reports.comboReparto->setCurrentText("2");
        reports.findChild<QPushButton *>(button)->click();
        QCOMPARE(MsgBox::shownTexts(), QStringList());
        QStringList printed = paper();
        for (QString &l : printed)
            l = l.trimmed(); // titles are centred
        for (QString &l : lines)
            l = l.trimmed();
        const qsizetype title = printed.indexOf(lines.first());
        QVERIFY2(title > 0, qPrintable(printed.join('\n')));
        QCOMPARE(printed.mid(title, 2), lines.mid(0, 2));                  // the report, day or period
        QCOMPARE(printed.mid(title + 3, lines.size() - 2), lines.mid(2)); // under the rule
    }
};

QTEST_MAIN(TestSimulatorEmulator)
#include "tst_simulatoremulator.moc"
