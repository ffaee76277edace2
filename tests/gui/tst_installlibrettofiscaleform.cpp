// The booklet's instructions: the fields filled from the printer and the
// customer's data, and the reminder printed through the choice of a printer,
// read back from the PDF it makes.
#include "FormTestEnv.h"
#include "paperwork/InstallLibrettoFiscaleForm.h"
#include "paperwork/PrintFoglioForm.h"
#include "paperwork/SystemPrinters.h"
#include "printer/SharedState.h"
#include "ui/FileDialog.h"

#include <QComboBox>
#include <QLabel>
#include <QProcess>
#include <QPushButton>
#include <QtTest>

class TestInstallLibrettoFiscaleForm : public QObject
{
    Q_OBJECT
    std::optional<FormTestEnv> env;

private Q_SLOTS:
    void init()
    {
        env.emplace();
        FileDialog::startRecording();
        SystemPrinters::useForTests({{"Laser", true, false}});
        env->fake.setProperty("Azzeramenti", "12");
        env->fake.setProperty("DateDay", "5");
        env->fake.setProperty("DateMonth", "3");
        env->fake.setProperty("DateYear", "7");
        gRagioneSociale = QStringList{" bar ", "sport"};
        gSede = QStringList{BlankCustomerLine(), BlankCustomerLine()};
        gPartitaIva = " it0123 ";
        gNome = gQual = BlankCustomerLine();
        InstallLibrettoFiscaleForm::SampleMode = true;
    }
    void cleanup()
    {
        SystemPrinters::stopUsingTestPrinters();
        FileDialog::stopRecording();
        env.reset();
    }

    void fieldsAtLoad_data()
    {
        QTest::addColumn<bool>("busy");
        QTest::newRow("printer asked") << false;
        QTest::newRow("busy control: what the properties hold") << true;
    }
    void fieldsAtLoad()
    {
        QFETCH(bool, busy);
        env->fake.busy = busy;
        InstallLibrettoFiscaleForm form;
        QCOMPARE(env->fake.count("ReadAzzeramenti") + env->fake.count("ReadDateTime"), busy ? 0 : 2);
        QCOMPARE(form.lblAzzera->text(), QStringLiteral("12"));
        QCOMPARE(form.lblDataInst->text(), QStringLiteral("05/03/07"));
        QCOMPARE(form.lblPIva->text(), QStringLiteral("IT0123"));
        QCOMPARE(form.lblRagSocUte->text(), QStringLiteral("BAR SPORT"));
        QCOMPARE(form.lblRagSoc2->text(), QStringLiteral("BAR SPORT"));
        QCOMPARE(form.lblIndFisc->text(), BlankCustomerLine() + " " + BlankCustomerLine());
        QCOMPARE(form.lblFirma->text() + form.lblQualif->text(), BlankCustomerLine() + BlankCustomerLine());
    }

    void reminderPrintedOnTheChosenDevice()
    {
        InstallLibrettoFiscaleForm form;
        form.show();
        int16_t mode = 0;
        whenModal("PrintFoglioForm", [&](QWidget *w) {
            auto *choice = static_cast<PrintFoglioForm *>(w);
            mode = PrintFoglioForm::PrintMode;
            choice->comboPrn->setCurrentText("PDF");
            choice->btnOK->click(); // "APPLICA"
        });
        const QString pdf = env->folder.filePath("promemoria.pdf");
        FileDialog::queueAnswer(pdf);
        form.btnPrint->click();
        QCOMPARE(mode, int16_t(3));
        QVERIFY(form.isVisible()); // the form stays
        QProcess p;
        p.start("pdftotext", {pdf, "-"});
        QVERIFY(p.waitForFinished(30000));
        const QString text = QString::fromUtf8(p.readAllStandardOutput()).normalized(QString::NormalizationForm_KC).simplified();
        for (const char *piece : {"Istruzioni per la compilazione del libretto fiscale", "BAR SPORT", "IT0123", "05/03/07",
                                  "Anche posteriore a quella di consegna", "8282 + C + 01 + INVIO (Z01)"})
            QVERIFY2(text.contains(QLatin1String(piece)), qPrintable(QString(piece) + " not in: " + text));
    }

    void nothingPrintedWithoutApplica()
    {
        InstallLibrettoFiscaleForm form;
        whenModal("PrintFoglioForm", [](QWidget *w) { w->close(); });
        form.btnPrint->click();
        QVERIFY(SystemPrinters::jobs().isEmpty());
        QVERIFY(FileDialog::asked().isEmpty());

        whenModal("PrintFoglioForm", [](QWidget *w) { static_cast<PrintFoglioForm *>(w)->btnOK->click(); });
        form.btnPrint->click(); // the first printer of the list, its own copies
        QCOMPARE(SystemPrinters::jobs().size(), 1);
        QCOMPARE(SystemPrinters::jobs().first().device + QString::number(SystemPrinters::jobs().first().copies),
                 QStringLiteral("Laser0"));
    }
};

QTEST_MAIN(TestInstallLibrettoFiscaleForm)
#include "tst_installlibrettofiscaleform.moc"
