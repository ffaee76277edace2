// The diagnostic screen: the state digits decoded into texts and colours,
// the versions as shown, and what it shows when the printer cannot be read.
#include "FakeFPControl.h"
#include "app/FpMonitorForm.h"
#include "settings/RunTimeError.h"
#include "ui/MsgBox.h"

#include <QLabel>
#include <QPushButton>
#include <QtTest>

namespace {
QColor colourOf(const QLabel *label)
{
    return label->palette().color(QPalette::WindowText);
}
}

class TestFpMonitorForm : public QObject
{
    Q_OBJECT
    FakeFPControl fake;

    void printer(const QString &status)
    {
        fake.setProperty(QStringLiteral("PrinterStatus"), status);
        fake.setProperty(QStringLiteral("FirmwareVersion"), QStringLiteral(" 3.12 "));
        fake.setProperty(QStringLiteral("FiscalMemoryVersion"), QStringLiteral("0012"));
        fake.setProperty(QStringLiteral("MatricolaPrefix"), QStringLiteral("QM"));
        fake.setProperty(QStringLiteral("MatricolaModel"), QStringLiteral("01"));
        fake.setProperty(QStringLiteral("MatricolaNumber"), QStringLiteral("12"));
        fake.setProperty(QStringLiteral("DgfeState"), QStringLiteral("1"));
        fake.setProperty(QStringLiteral("DgfePercent"), QStringLiteral("87"));
        fake.setProperty(QStringLiteral("DgfeNumber"), QStringLiteral("3"));
    }

private Q_SLOTS:
    void init()
    {
        fake = FakeFPControl();
        gFPControl = &fake;
        MsgBox::startRecording();
    }
    void cleanup() { MsgBox::stopRecording(); }

    void statesVersionsAndJournal()
    {
        printer(QStringLiteral("2151"));
        FpMonitorForm form;
        QCOMPARE(form.objectName(), QStringLiteral("FpMonitorForm"));
        QCOMPARE(form.windowTitle(), QStringLiteral("Controllo Diagnostico"));
        QCOMPARE(form.lblCarta->text(), QStringLiteral("Carta scontrino"));
        QCOMPARE(colourOf(form.lblCarta), QColor(Qt::red));
        QCOMPARE(form.lblDGFE->text(), QStringLiteral("In esaurimento"));
        QCOMPARE(colourOf(form.lblDGFE), QColor(Qt::red));
        QCOMPARE(form.lblCassetto->text(), QStringLiteral("Indeterminato"));
        QCOMPARE(colourOf(form.lblCassetto), QColor(Qt::blue));
        QCOMPARE(form.lblScontrino->text(), QStringLiteral("Scontrino chiuso"));
        QCOMPARE(colourOf(form.lblScontrino), QColor(Qt::black));
        QCOMPARE(form.lblCpu->text(), QStringLiteral("3.12"));
        QCOMPARE(form.lblMem->text(), QStringLiteral("12"));
        QCOMPARE(form.LblModelloCassa->text(), QStringLiteral("KELVO KX90 II"));
        QCOMPARE(form.lblStato->text(), QStringLiteral("In esaurimento"));
        QCOMPARE(colourOf(form.lblStato), QColor(Qt::red));
        QCOMPARE(form.lblPercOcc->text(), QStringLiteral("87"));
        QCOMPARE(form.lblNumero->text(), QStringLiteral("3"));
        QCOMPARE(fake.callNames(), (QStringList{"ReadPrinterInfo", "ReadMatricola", "ReadDgfeStatus"}));
        QCOMPARE(fake.callsOf(QStringLiteral("ReadDgfeStatus")).first().args, QStringList{"1"});
        QVERIFY(MsgBox::shown().isEmpty());
    }

    void digitsBeyondTheTablesInBlue()
    {
        // Paper has no entry for 1; the others run out at 6, 2 and 5.
        printer(QStringLiteral("1629"));
        FpMonitorForm form;
        for (const QLabel *field : {form.lblCarta, form.lblDGFE, form.lblCassetto, form.lblScontrino}) {
            QCOMPARE(field->text(), QStringLiteral("Indeterminato"));
            QCOMPARE(colourOf(field), QColor(Qt::blue));
        }
    }

    void emptyStatusLeavesTheStatesBlank()
    {
        printer(QString());
        FpMonitorForm form;
        for (const QLabel *field : {form.lblCarta, form.lblDGFE, form.lblCassetto, form.lblScontrino})
            QCOMPARE(field->text(), QString());
        QCOMPARE(form.lblCpu->text(), QStringLiteral("3.12"));
        QCOMPARE(form.lblMem->text(), QStringLiteral("12"));
        QCOMPARE(form.LblModelloCassa->text(), QStringLiteral("KELVO KX90 II"));
    }

    void fiscalMemoryVersionLosesItsFirstThreeZeros_data()
    {
        QTest::addColumn<QString>("version");
        QTest::addColumn<QString>("shown");
        QTest::newRow("1000") << "1000" << "1";
        QTest::newRow("leading") << "0003" << "3";
        QTest::newRow("fourth zero stays") << "00000" << "00";
        QTest::newRow("inner zero") << "1020" << "1 2";
    }
    void fiscalMemoryVersionLosesItsFirstThreeZeros()
    {
        QFETCH(QString, version);
        QFETCH(QString, shown);
        printer(QStringLiteral("0000"));
        fake.setProperty(QStringLiteral("FiscalMemoryVersion"), version);
        FpMonitorForm form;
        QCOMPARE(form.lblMem->text(), shown);
    }

    void journalStateOutsideItsTableLeavesTheField()
    {
        printer(QStringLiteral("0000"));
        fake.setProperty(QStringLiteral("DgfeState"), QStringLiteral("7"));
        FpMonitorForm form;
        QCOMPARE(form.lblStato->text(), QString());
        QCOMPARE(form.lblPercOcc->text(), QStringLiteral("87"));
    }

    void noPrinterOpensBlankAfterTwoMessages()
    {
        printer(QStringLiteral("0000"));
        fake.setDefaultResult(QStringLiteral("ReadPrinterInfo"), 1);
        fake.setDefaultResult(QStringLiteral("ReadDgfeStatus"), 1);
        FpMonitorForm form;
        QCOMPARE(MsgBox::shownTexts(),
                 (QStringList{"Registratore non collegato.\r\n", "Registratore non collegato.\r\n"}));
        QCOMPARE(form.lblCarta->text(), QString());
        QCOMPARE(form.lblCpu->text(), QString());
        QCOMPARE(form.LblModelloCassa->text(), QString());
        QCOMPARE(form.lblPercOcc->text(), QString());
        QCOMPARE(fake.count(QStringLiteral("ReadMatricola")), 0);
    }

    void busyAsksNothing()
    {
        printer(QStringLiteral("0000"));
        fake.busy = true;
        FpMonitorForm form;
        QVERIFY(fake.calls.isEmpty());
        QVERIFY(MsgBox::shown().isEmpty());
        QCOMPARE(form.lblCarta->text(), QString());
        QCOMPARE(form.lblStato->text(), QString());
    }

    void stateThatIsNoDigitEndsTheRun()
    {
        for (const QString &status : {QStringLiteral("0a00"), QStringLiteral("00")}) {
            printer(status);
            try {
                FpMonitorForm form;
                QFAIL(qPrintable(QStringLiteral("status %1 was decoded").arg(status)));
            } catch (const RunTimeError &e) {
                QCOMPARE(e.code(), RunTimeError::TypeMismatch);
            }
        }
    }

    void closeButton()
    {
        printer(QStringLiteral("0000"));
        FpMonitorForm form;
        QCOMPARE(form.btnOk->text(), QStringLiteral("CHIUDI"));
        form.show();
        form.btnOk->click();
        QVERIFY(!form.isVisible());
    }
};

QTEST_MAIN(TestFpMonitorForm)
#include "tst_fpmonitorform.moc"
