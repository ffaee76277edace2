// SPDX-License-Identifier: GPL-3.0-or-later
// The commissioning chain: each step opens the next in its mode after it has
// gone; the customer's step keeps what was given.
#include "FormTestEnv.h"
#include "TestFiles.h"
#include "app/DataOraForm.h"
#include "app/FiscordaForm.h"
#include "commissioning/InstallFlagForm.h"
#include "commissioning/InstallHeaderForm.h"
#include "commissioning/InstallLogoForm.h"
#include "paperwork/InstallExtraModForm.h"
#include "paperwork/InstallLibrettoFiscaleForm.h"
#include "paperwork/PrintFoglioForm.h"
#include "paperwork/SystemPrinters.h"
#include "printer/SharedState.h"
#include "programming/ProgForm.h"
#include "ui/FileDialog.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTimer>
#include <QtTest>

namespace {

// What a step looked like when it came up.
struct Seen
{
    QString form;
    QString modes;          // the mode properties as the opener left them
    QStringList alsoShown;  // other dialogs still on the screen
};

QStringList otherDialogs(QWidget *current)
{
    QStringList names;
    for (QWidget *w : QApplication::topLevelWidgets())
        if (w != current && w->isVisible() && qobject_cast<QDialog *>(w))
            names << w->objectName();
    return names;
}

QPushButton *button(QWidget *form, const char *name)
{
    return form->findChild<QPushButton *>(QLatin1String(name));
}

}

class TestCommissioningChain : public QObject
{
    Q_OBJECT
    std::optional<FormTestEnv> env;
    QList<Seen> seen;
    QStringList bookletFields;

    // Acts on the form when it comes up, noting how it came.
    void onStep(const QString &form, std::function<QString()> modes, std::function<void(QWidget *)> forward)
    {
        whenModal(form, [=, this](QWidget *w) {
            seen.append({w->objectName(), modes(), otherDialogs(w)});
            forward(w);
        }, 20000);
    }

    void finishTheChainAsATechnician()
    {
        onStep("InstallExtraModForm", [] { return QString(); }, [](QWidget *w) {
            auto *form = static_cast<InstallExtraModForm *>(w);
            form->txtNome->setText(QStringLiteral("Anna Bianchi"));
            form->txtSede->setPlainText(QStringLiteral("Via Po 3\nTorino"));
            form->txtQual->setText(QStringLiteral("socia"));
            form->btnNext->click(); // the tax code left empty
        });
        onStep("InstallLibrettoFiscaleForm",
               [] { return QStringLiteral("SampleMode=%1").arg(InstallLibrettoFiscaleForm::SampleMode); },
               [this](QWidget *w) {
                   auto *booklet = static_cast<InstallLibrettoFiscaleForm *>(w);
                   bookletFields = QStringList{booklet->lblIndFisc->text(), booklet->lblFirma->text(),
                                               booklet->lblAzzera->text(), booklet->lblDataInst->text()};
                   booklet->btnOK->click();
               });
        onStep("PrintFoglioForm", [] { return QStringLiteral("PrintMode=%1").arg(PrintFoglioForm::PrintMode); },
               [](QWidget *w) {
                   auto *form = static_cast<PrintFoglioForm *>(w);
                   if (form->btnOK->text() == QLatin1String("Messa in servizio terminata") && form->txtNCopie->text() == "1")
                       form->btnOK->click();
                   else
                       form->close(); // the check below tells which
               });
    }

    void checkTheEnd(int from)
    {
        QStringList order;
        for (const Seen &s : seen.mid(from)) {
            order << (s.form + " " + s.modes).trimmed();
            QVERIFY2(s.alsoShown.isEmpty(), qPrintable(s.form + " came before " + s.alsoShown.join(',') + " had gone"));
        }
        QCOMPARE(order, QStringList({"InstallExtraModForm", "InstallLibrettoFiscaleForm SampleMode=0", "PrintFoglioForm PrintMode=1"}));
        // Kept in the printer's file (the lines of the office whole), and shared.
        const QByteArray file = TestFiles::contentOf(env->folder.filePath("KX90ProgQN41000123.xml"));
        QVERIFY2(file.endsWith("<InstallExtra SedeLeg=\"Via Po 3&#13;&#10;Torino\" Nome=\"Anna Bianchi\" Qual=\"socia\"/></settings>"),
                 file.constData());
        QCOMPARE(gSede, QStringList({"Via Po 3", "Torino"}));
        QCOMPARE(gNome + "|" + gQual, QStringLiteral("Anna Bianchi|socia"));
        QCOMPARE(gCdf, BlankCustomerLine()); // left empty: still the underscores
        QCOMPARE(bookletFields, QStringList({"VIA PO 3 TORINO", "Anna Bianchi", "4", "05/03/26"}));
    }

private Q_SLOTS:
    void init()
    {
        env.emplace(FormTestEnv::Options{.fileDialogs = true, .printers = QList<SystemPrinters::Printer>()});
        seen.clear();
        env->fake.setMatricola("QN", "41", "123");
        env->fake.setProperty("ClosureState", "1");
        env->fake.setProperty("DateTime", "2026-03-05T10:00:00");
        env->fake.setProperty("Azzeramenti", "4");
        InstallLibrettoFiscaleForm::SampleMode = false;
        // As the flag step leaves the customer's data.
        gNome = gCdf = gQual = BlankCustomerLine();
        gSede = QStringList{BlankCustomerLine(), BlankCustomerLine()};
        gRagioneSociale = QStringList{"Bar Sport"};
        gIndirizzo = QStringList{"Via Roma 1"};
        gPartitaIva = "IT01234567890";
    }
    void cleanup() { env.reset(); }

    void wholeChainFromTheMainForm()
    {
        // Inside the chain the forward buttons read "AVANTI" (the table
        // editor's is its own test's).
        InstallHeaderForm::StandaloneMode = InstallLogoForm::StandaloneMode = InstallFlagForm::StandaloneMode = false;
        QCOMPARE(InstallHeaderForm().btnNext->text() + InstallLogoForm().btnNext->text() + InstallFlagForm().btnNext->text(),
                 QStringLiteral("AVANTIAVANTIAVANTI"));
        MsgBox::clearShown();
        // Modes set the other way round, so that each step must set its own.
        InstallHeaderForm::StandaloneMode = InstallLogoForm::StandaloneMode = InstallFlagForm::StandaloneMode = true;
        ProgForm::WizardMode = false;
        ProgForm::TableKind = 1;
        DataOraForm::WizardMode = false;
        PrintFoglioForm::PrintMode = 3;

        onStep("DataOraForm", [] { return QStringLiteral("WizardMode=%1").arg(DataOraForm::WizardMode); },
               [](QWidget *w) {
                   auto *form = static_cast<DataOraForm *>(w);
                   form->btnSet->click(); // the question answered yes
                   form->btnOk->click();
               });
        onStep("InstallHeaderForm", [] { return QStringLiteral("StandaloneMode=%1").arg(InstallHeaderForm::StandaloneMode); },
               [](QWidget *w) {
                   const QStringList texts = {"BAR SPORT", "VIA ROMA 1", "P.IVA 01234567890"};
                   for (int row = 1; row <= 3; ++row) {
                       if (auto *kind = w->findChild<QComboBox *>(QStringLiteral("ComboContR%1").arg(row)))
                           kind->setCurrentIndex(row - 1);
                       if (auto *text = w->findChild<QLineEdit *>(QStringLiteral("txtR%1").arg(row)))
                           text->setText(texts[row - 1]);
                   }
                   button(w, "btnNext")->click();
               });
        onStep("InstallLogoForm",
               [this] {
                   // The header's rows are in the printer's file before the logos come up.
                   const bool saved = TestFiles::contentOf(env->folder.filePath("KX90ProgQN41000123.xml")).contains("<InstallInt ");
                   return QStringLiteral("StandaloneMode=%1%2").arg(InstallLogoForm::StandaloneMode).arg(saved ? "" : " unsaved");
               },
               [](QWidget *w) { button(w, "btnNext")->click(); });
        onStep("ProgForm",
               [] { return QStringLiteral("WizardMode=%1 TableKind=%2").arg(ProgForm::WizardMode).arg(ProgForm::TableKind); },
               [](QWidget *w) { button(w, "btnOK")->click(); });
        onStep("InstallFlagForm", [] { return QStringLiteral("StandaloneMode=%1").arg(InstallFlagForm::StandaloneMode); },
               [](QWidget *w) { button(w, "btnNext")->click(); });
        finishTheChainAsATechnician();

        // A step that does not go forward is closed, with what is above it,
        // so that the order below tells where the chain stopped.
        QTimer rescue;
        rescue.setSingleShot(true);
        connect(&rescue, &QTimer::timeout, [] {
            for (int i = 0; i < 20; ++i)
                if (QWidget *modal = QApplication::activeModalWidget())
                    modal->close();
        });
        rescue.start(30000);
        FiscordaForm mainForm(&env->fake);
        mainForm.show();
        mainForm.btnInstall->click();
        rescue.stop();

        QStringList order;
        for (const Seen &s : seen.mid(0, 5))
            order << s.form + " " + s.modes + s.alsoShown.join(' ');
        QCOMPARE(order, QStringList({"DataOraForm WizardMode=1", "InstallHeaderForm StandaloneMode=0",
                                               "InstallLogoForm StandaloneMode=0", "ProgForm WizardMode=1 TableKind=4",
                                               "InstallFlagForm StandaloneMode=0"}));
        checkTheEnd(5);
        // The header's rows reached the booklet through the shared data.
        QCOMPARE(gPartitaIva.trimmed(), QStringLiteral("P.IVA 01234567890"));
    }
};

QTEST_MAIN(TestCommissioningChain)
#include "tst_commissioningchain.moc"
