// SPDX-License-Identifier: GPL-3.0-or-later
#include "GiornaleDGFEForm.h"

#include "DGFEForm.h"
#include "GiornaleStepForm.h"

#include "ui/Named.h"

#include <QPushButton>
#include <QVBoxLayout>

GiornaleDGFEForm::GiornaleDGFEForm(QWidget *parent)
    : QDialog(parent)
{
    setObjectName(QStringLiteral("GiornaleDGFEForm"));
    setWindowTitle(QStringLiteral("Giornale di Fondo"));

    btnRead = named(new QPushButton(QStringLiteral("Lettura DGFE"), this), "btnRead");
    btnChange = named(new QPushButton(QStringLiteral("Cambio DGFE"), this), "btnChange");
    btnOK = named(new QPushButton(QStringLiteral("ESCI"), this), "btnOK");
    for (QPushButton *b : {btnRead, btnChange, btnOK})
        b->setMinimumHeight(40);

    auto *layout = new QVBoxLayout(this);
    layout->addWidget(btnRead);
    layout->addWidget(btnChange);
    layout->addSpacing(12);
    layout->addWidget(btnOK);
    setMinimumWidth(280);

    connect(btnRead, &QPushButton::clicked, this, &GiornaleDGFEForm::btnRead_Click);
    connect(btnChange, &QPushButton::clicked, this, &GiornaleDGFEForm::btnChange_Click);
    connect(btnOK, &QPushButton::clicked, this, &QDialog::accept);
}

void GiornaleDGFEForm::btnRead_Click()
{
    DGFEForm form(this);
    form.exec();
}

void GiornaleDGFEForm::btnChange_Click()
{
    GiornaleStepForm form(this);
    form.exec();
}
