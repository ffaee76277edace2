// SPDX-License-Identifier: GPL-3.0-or-later
#include "Main.h"

#include "FiscordaForm.h"
#include "SingleInstance.h"
#include "ui/MsgBox.h"

#include <QLabel>

FiscordaForm *Main(KelvoFPControl *control)
{
    if (!SingleInstance::acquire()) {
        MsgBox::show(QStringLiteral("Programma ") + MsgBox::applicationTitle() + QStringLiteral(" già in esecuzione"));
        return nullptr;
    }
    auto *form = new FiscordaForm(control);
    form->setAttribute(Qt::WA_DeleteOnClose, false);
    QString modelText;
    form->InizializzaOCX(modelText);
    form->LabelModelloCassa->setText(modelText);
    form->show();
    return form;
}
