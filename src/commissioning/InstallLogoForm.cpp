// SPDX-License-Identifier: GPL-3.0-or-later
#include "InstallLogoForm.h"

#include "LoghiForm.h"
#include "LoghiPersForm.h"
#include "LogoTransfer.h"
#include "printer/PrinterIdentity.h"
#include "programming/ProgForm.h"
#include "ui/DialogKeys.h"
#include "ui/MsgBox.h"
#include "ui/Named.h"

#include <QApplication>
#include <QCheckBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

bool InstallLogoForm::StandaloneMode = false;

InstallLogoForm::InstallLogoForm(QWidget *parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("InstallLogoForm"));
    DialogKeys::ignoreEscape(this, !StandaloneMode);
    setWindowTitle(QStringLiteral("Logo"));

    chkLogo = named(new QCheckBox(QStringLiteral("impostare il logo"), this), "chkLogo");
    btnLogoStd = named(new QPushButton(QStringLiteral("Standard"), this), "btnLogoStd");
    btnLogoPers = named(new QPushButton(QStringLiteral("Personale"), this), "btnLogoPers");
    btnDelLoghi = named(new QPushButton(QStringLiteral("Cancella memoria loghi"), this), "btnDelLoghi");
    btnNext = named(new QPushButton(QStringLiteral("AVANTI"), this), "btnNext");

    auto *choice = new QHBoxLayout;
    choice->addWidget(btnLogoStd);
    choice->addWidget(btnLogoPers);
    auto *bottom = new QHBoxLayout;
    bottom->addWidget(btnDelLoghi);
    bottom->addStretch();
    bottom->addWidget(btnNext);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(chkLogo);
    layout->addLayout(choice);
    layout->addSpacing(12);
    layout->addLayout(bottom);
    setMinimumWidth(380);

    connect(chkLogo, &QCheckBox::toggled, this, &InstallLogoForm::chkLogo_Click);
    connect(btnLogoStd, &QPushButton::clicked, this, &InstallLogoForm::btnLogoStd_Click);
    connect(btnLogoPers, &QPushButton::clicked, this, &InstallLogoForm::btnLogoPers_Click);
    connect(btnDelLoghi, &QPushButton::clicked, this, &InstallLogoForm::btnDelLoghi_Click);
    connect(btnNext, &QPushButton::clicked, this, &InstallLogoForm::btnNext_Click);

    // Load
    if (StandaloneMode)
        btnNext->setText(QStringLiteral("ESCI"));
    // The memory clear is not offered for the KX81.
    btnDelLoghi->setVisible(GetPrinterModel() != 2);
    chkLogo_Click();
}

void InstallLogoForm::chkLogo_Click()
{
    btnLogoStd->setEnabled(chkLogo->isChecked());
    btnLogoPers->setEnabled(chkLogo->isChecked());
}

void InstallLogoForm::btnLogoStd_Click()
{
    LoghiForm form(this);
    form.exec();
}

void InstallLogoForm::btnLogoPers_Click()
{
    LoghiPersForm form(this);
    form.exec();
}

void InstallLogoForm::btnDelLoghi_Click()
{
    const auto answer = MsgBox::show(QStringLiteral("Questa operazione elimina TUTTI i loghi presenti nella memoria "
                                                    "della stampante, continuare?"),
                                     QMessageBox::Yes | QMessageBox::No, QMessageBox::NoIcon,
                                     MsgBox::applicationTitle());
    if (answer != QMessageBox::Yes)
        return;
    QApplication::setOverrideCursor(Qt::WaitCursor);
    LogoTransfer::DeleteLogoMemory();
    QApplication::restoreOverrideCursor();
    MsgBox::show(QStringLiteral("Pulizia memoria loghi grafici completata!"), QMessageBox::Ok,
                 QMessageBox::Information, MsgBox::applicationTitle());
}

void InstallLogoForm::btnNext_Click()
{
    // The logos went to the printer from their own screens; nothing to send
    // or save here.
    accept();
    if (StandaloneMode)
        return;
    ProgForm::WizardMode = true;
    ProgForm::TableKind = 4;
    ProgForm next(parentWidget());
    next.exec();
}
