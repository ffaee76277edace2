// SPDX-License-Identifier: GPL-3.0-or-later
// Enter and Esc in every field of every form: Enter presses nothing; Esc
// does what the form's close box does, except on the steps of the
// commissioning and of the two wizards, where it does nothing.
#include "FormTestEnv.h"
#include "app/DataOraForm.h"
#include "app/FpMonitorForm.h"
#include "app/SetupPrnForm.h"
#include "commissioning/InstallFlagForm.h"
#include "commissioning/InstallHeaderForm.h"
#include "commissioning/InstallLogoForm.h"
#include "commissioning/LoghiForm.h"
#include "commissioning/LoghiPersForm.h"
#include "commissioning/PreviewForm.h"
#include "decommissioning/RemoveStepForm.h"
#include "journal/DGFECrtForm.h"
#include "journal/DGFEForm.h"
#include "journal/GiornaleDGFEForm.h"
#include "journal/GiornaleStepForm.h"
#include "paperwork/InstallExtraModForm.h"
#include "paperwork/InstallLibrettoFiscaleForm.h"
#include "paperwork/PrintFoglioForm.h"
#include "printer/SharedState.h"
#include "programming/ProgForm.h"
#include "programming/XmlViewForm.h"
#include "ui/FileDialog.h"

#include <QtTest>
#include <functional>
#include <memory>

using MakeForm = std::function<QDialog *()>;
Q_DECLARE_METATYPE(MakeForm)

class TestDialogKeys : public QObject
{
    Q_OBJECT
    std::optional<FormTestEnv> env;

    // What takes the keyboard on the form, in the order Tab visits it.
    static QList<QWidget *> fieldsOf(QDialog *form)
    {
        QList<QWidget *> fields;
        for (QWidget *w : form->findChildren<QWidget *>())
            if (w->isVisibleTo(form) && w->isEnabled() && (w->focusPolicy() & Qt::TabFocus) && !w->focusProxy())
                fields << w;
        return fields;
    }

private Q_SLOTS:
    void init()
    {
        env.emplace(FormTestEnv::Options{.fileDialogs = true});
        env->fake.setMatricola("QN");
        env->fake.setProperty("FirmwareVersion", "2.10");
        gMaxNReparti = 3;
    }
    void cleanup() { env.reset(); }

    void keys_data()
    {
        QTest::addColumn<MakeForm>("make");
        QTest::addColumn<bool>("escCloses");
        auto row = [](const char *name, bool escCloses, MakeForm make) {
            QTest::newRow(name) << make << escCloses;
        };
        row("DataOraForm alone", true, [] { DataOraForm::WizardMode = false; return new DataOraForm; });
        row("DataOraForm in the chain", false, [] { DataOraForm::WizardMode = true; return new DataOraForm; });
        row("SetupPrnForm", true, [] { return new SetupPrnForm; });
        row("FpMonitorForm", true, [] { return new FpMonitorForm; });
        row("InstallHeaderForm alone", true, [] { InstallHeaderForm::StandaloneMode = true; return new InstallHeaderForm; });
        row("InstallHeaderForm in the chain", false,
            [] { InstallHeaderForm::StandaloneMode = false; return new InstallHeaderForm; });
        row("InstallLogoForm alone", true, [] { InstallLogoForm::StandaloneMode = true; return new InstallLogoForm; });
        row("InstallLogoForm in the chain", false,
            [] { InstallLogoForm::StandaloneMode = false; return new InstallLogoForm; });
        row("LoghiForm", true, [] { return new LoghiForm; });
        row("LoghiPersForm", true, [] { return new LoghiPersForm; });
        row("PreviewForm", true, [] { return new PreviewForm; });
        row("ProgForm alone", true, [] {
            ProgForm::WizardMode = false;
            ProgForm::TableKind = 0;
            return new ProgForm;
        });
        row("ProgForm in the chain", false, [] {
            ProgForm::WizardMode = true;
            ProgForm::TableKind = 4;
            return new ProgForm;
        });
        row("InstallFlagForm alone", true, [] { InstallFlagForm::StandaloneMode = true; return new InstallFlagForm; });
        row("InstallFlagForm in the chain", false,
            [] { InstallFlagForm::StandaloneMode = false; return new InstallFlagForm; });
        row("InstallExtraModForm", false, [] { return new InstallExtraModForm; });
        row("InstallLibrettoFiscaleForm", false, [] { return new InstallLibrettoFiscaleForm; });
        row("PrintFoglioForm declaration", false, [] { PrintFoglioForm::PrintMode = 1; return new PrintFoglioForm; });
        row("PrintFoglioForm printer choice", true, [] { PrintFoglioForm::PrintMode = 3; return new PrintFoglioForm; });
        row("DGFEForm", true, [] { return new DGFEForm; });
        row("GiornaleDGFEForm", true, [] { return new GiornaleDGFEForm; });
        row("DGFECrtForm", true, [] { return new DGFECrtForm; });
        row("GiornaleStepForm", false, [] { return new GiornaleStepForm; });
        row("RemoveStepForm", false, [] { return new RemoveStepForm; });
        row("XmlViewForm", true, [] {
            XmlViewForm::FormMode = 1;
            XmlViewForm::XmlFile.clear();
            return new XmlViewForm;
        });
    }
    void keys()
    {
        QFETCH(MakeForm, make);
        QFETCH(bool, escCloses);
        std::unique_ptr<QDialog> form(make());
        form->show();
        QVERIFY(QTest::qWaitForWindowExposed(form.get()));
        QCoreApplication::processEvents();
        const QList<QWidget *> fields = fieldsOf(form.get());
        QVERIFY(!fields.isEmpty());
        env->fake.clearCalls();

        QList<int> keys = {Qt::Key_Return, Qt::Key_Enter};
        if (!escCloses)
            keys << Qt::Key_Escape;
        for (QWidget *field : fields) {
            if (!field->isVisible() || !field->isEnabled())
                continue;
            field->setFocus(Qt::TabFocusReason);
            for (int key : keys) {
                QTest::keyClick(field, Qt::Key(key), key == Qt::Key_Enter ? Qt::KeypadModifier : Qt::NoModifier);
                const QString where = QString("%1 in %2").arg(QKeySequence(key).toString(), field->objectName());
                QVERIFY2(env->fake.calls.isEmpty(),
                         qPrintable(where + ": " + env->fake.callNames().join(' ')));
                QVERIFY2(form->isVisible(), qPrintable(where + " closed the form"));
            }
        }
        if (!escCloses)
            return;
        // Esc does what the close box of the same form does.
        auto outcome = [&](QDialog *f) {
            return QStringList{f->isVisible() ? "shown" : "closed"} + env->fake.callNames() + MsgBox::shownTexts();
        };
        std::unique_ptr<QDialog> twin(make());
        twin->show();
        QVERIFY(QTest::qWaitForWindowExposed(twin.get()));
        env->fake.clearCalls();
        MsgBox::clearShown();
        twin->close();
        const QStringList byCloseBox = outcome(twin.get());
        env->fake.clearCalls();
        MsgBox::clearShown();
        form->activateWindow();
        fields.first()->setFocus(Qt::TabFocusReason);
        QTest::keyClick(fields.first(), Qt::Key_Escape);
        QCOMPARE(outcome(form.get()), byCloseBox);
    }
};

QTEST_MAIN(TestDialogKeys)
#include "tst_dialogkeys.moc"
