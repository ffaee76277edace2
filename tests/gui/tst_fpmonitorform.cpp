// SPDX-License-Identifier: GPL-3.0-or-later
// The diagnostic screen: state digits into texts and colours, the versions
// as shown, and what stays blank when the printer cannot be read.
#include "FormTestEnv.h"
#include "app/FpMonitorForm.h"

#include <QLabel>
#include <QtTest>

static QString shown(const QLabel *l)
{
    const QColor c = l->palette().color(QPalette::WindowText);
    return l->text() + (c == Qt::red ? " red" : c == Qt::blue ? " blue" : c == Qt::black ? " black" : " ?");
}

class TestFpMonitorForm : public QObject
{
    Q_OBJECT
    std::optional<FormTestEnv> env;

private Q_SLOTS:
    void init()
    {
        env.emplace();
        for (auto [name, value] : {std::pair{"FirmwareVersion", " 3.12 "}, {"FiscalMemoryVersion", "1000"},
                                   {"MatricolaPrefix", "QM"}, {"DgfeState", "4"}, {"DgfePercent", "87"}})
            env->fake.setProperty(name, value);
    }
    void cleanup() { env.reset(); }

    void statesAndVersions()
    {
        env->fake.setProperty("PrinterStatus", "2151");
        FpMonitorForm form;
        QCOMPARE(QStringList({shown(form.lblCarta), shown(form.lblDGFE), shown(form.lblCassetto),
                              shown(form.lblScontrino), shown(form.lblStato)}),
                 QStringList({"Carta scontrino red", "In esaurimento red", "Indeterminato blue",
                              "Scontrino chiuso black", "DGFE pieno red"}));
        QCOMPARE(QStringList({form.lblCpu->text(), form.lblMem->text(), form.LblModelloCassa->text(), form.lblPercOcc->text()}),
                 QStringList({"3.12", "1", "KELVO KX90 II", "87"}));

        // Paper has no entry for 1; the other tables end at 5, 1 and 4.
        env->fake.setProperty("PrinterStatus", "1629");
        FpMonitorForm beyond;
        for (const QLabel *l : {beyond.lblCarta, beyond.lblDGFE, beyond.lblCassetto, beyond.lblScontrino})
            QCOMPARE(shown(l), QStringLiteral("Indeterminato blue"));
        QVERIFY(MsgBox::shown().isEmpty());
    }

    void blankStates()
    {
        env->fake.setProperty("PrinterStatus", "");
        FpMonitorForm empty;
        QCOMPARE(empty.lblCarta->text() + empty.lblScontrino->text(), QString());
        QCOMPARE(empty.lblCpu->text() + "|" + empty.LblModelloCassa->text(), QStringLiteral("3.12|KELVO KX90 II"));

        env->fake.setDefaultResult("ReadPrinterInfo", 1);
        env->fake.setDefaultResult("ReadDgfeStatus", 1);
        FpMonitorForm offline;
        QCOMPARE(MsgBox::shownTexts(), QStringList(2, "Registratore non collegato.\r\n"));
        QCOMPARE(offline.lblCpu->text() + offline.LblModelloCassa->text() + offline.lblPercOcc->text(), QString());
    }
};

QTEST_MAIN(TestFpMonitorForm)
#include "tst_fpmonitorform.moc"
