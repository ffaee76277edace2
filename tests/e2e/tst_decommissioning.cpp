// SPDX-License-Identifier: GPL-3.0-or-later
// The decommissioning against the emulated printer over TCP: a closure that
// the printer refuses is told and not counted, the closure and the whole
// fiscal memory land on the paper roll, and the declaration of the fifth
// step carries the printer's serial number, its resets count (those of
// the memory before it, plus the closure just made) and its date.
#include "EmulatorTestEnv.h"
#include "TestFiles.h"
#include "app/FiscordaForm.h"
#include "decommissioning/RemoveStepForm.h"
#include "paperwork/PrintFoglioForm.h"
#include "paperwork/SystemPrinters.h"
#include "ui/FileDialog.h"

#include <QLabel>
#include <QPushButton>
#include <QtTest>

class TestDecommissioning : public QObject
{
    Q_OBJECT
    std::optional<EmulatorTestEnv> env;

    QString paper() const { return QString::fromUtf8(TestFiles::contentOf(env->folder.filePath("paper.txt"))); }
    void run(const char *name, const QList<QByteArray> &args) { QCOMPARE(env->run(name, args).result, 0); }

private Q_SLOTS:
    void init()
    {
        env.emplace();
        FileDialog::startRecording();
        SystemPrinters::useForTests({});
        EmulatorConfig config;
        config.resets = 41;
        config.paperPath = env->folder.filePath("paper.txt");
        QVERIFY(env->startOnTcp(config));
    }
    void cleanup()
    {
        SystemPrinters::stopUsingTestPrinters();
        FileDialog::stopRecording();
        env.reset();
    }

    void openedFromTheMainForm()
    {
        FiscordaForm mainForm(&*env->control);
        mainForm.show();
        QString serial;
        whenModal("RemoveStepForm", [&](QWidget *w) {
            auto *wizard = static_cast<RemoveStepForm *>(w);
            serial = wizard->lblMat->text() + ' ' + wizard->windowTitle();
            wizard->close(); // at any step, without a question
        });
        mainForm.btnRemove->click();
        QCOMPARE(serial, QStringLiteral("QN41100123 Disintallazione"));
        QVERIFY(MsgBox::shownTexts().isEmpty());
    }

    // (The way through the steps: the wizard's own test on a scripted printer.)
    void wholeDecommissioning()
    {
        RemoveStepForm form;
        form.show();

        // A receipt left open: the printer refuses the closure.
        run("SellReparto", {"1", "1", "PANE", "25000", "1", "1"});
        form.btnZChiusura->click();
        QCOMPARE(MsgBox::shownTexts().last(), QStringLiteral("Errore del registratore di cassa: CHIUDERE LO SCONTRINO.\r\n"));
        QVERIFY(!form.ClosureDone);
        run("PayReceipt", {"1", "", "0", "0", "0", "1"});
        form.btnZChiusura->click();
        QVERIFY(form.ClosureDone);
        QVERIFY(paper().contains("AZZERAMENTO N. 0042"));

        form.btnPrint->click();
        QVERIFY(form.FiscalMemoryPrinted);
        const QString roll = paper();
        const qsizetype memory = roll.indexOf("STAMPA MEMORIA FISCALE");
        QVERIFY(memory > roll.indexOf("CHIUSURA GIORNALIERA"));
        QVERIFY(roll.mid(memory).contains("MATRICOLA QN41100123"));
        QVERIFY(roll.mid(memory).contains(QRegularExpression("AZZERAMENTI +42")));

        const QString declaration = env->folder.filePath("modulo.txt");
        whenModal("PrintFoglioForm", [&](QWidget *w) {
            auto *module = static_cast<PrintFoglioForm *>(w);
            FileDialog::queueAnswer(declaration);
            module->btnPrintFile->click();
            module->btnOK->click();
        });
        const QDate dayBefore = QDate::currentDate(); // the day may turn meanwhile
        form.btnPrintMod->click();
        QCOMPARE(FileDialog::asked().value(0).folder, QStringLiteral("Modulo_Disinstallazione_QN41100123.txt"));
        const QString text = QString::fromLatin1(TestFiles::contentOf(declaration));
        QVERIFY(text.contains("|     KX90      |   QN41100123   |   42    |           |            |\r\n"));
        QVERIFY(text.contains("     che in data: " + dayBefore.toString("dd / MM / yyyy") + "\r\n")
                || text.contains("     che in data: " + QDate::currentDate().toString("dd / MM / yyyy") + "\r\n"));
        QVERIFY(text.contains("     della ditta: \r\n")); // blank for the hand
    }
};

QTEST_MAIN(TestDecommissioning)
#include "tst_decommissioning.moc"
