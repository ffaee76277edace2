// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

// Header only: it needs the journal forms, which only GUI tests link.
#include "journal/DGFECrtForm.h"
#include "journal/DGFEForm.h"

#include <QDateEdit>
#include <QListWidget>

// The journal screen's selection as the selection form hands it over: its
// own pickers, then the kind of selection set on DGFECrtForm.
struct DgfeSelection
{
    DGFEForm form;

    void byDate(QDate from, QDate to)
    {
        form.dtInizio->setDate(from);
        form.dtFine->setDate(to);
        DGFECrtForm::ByNumber = false;
        DGFECrtForm::FromDate = form.dtInizio;
        DGFECrtForm::ToDate = form.dtFine;
    }
    void byNumber(QDate day, const QString &first, const QString &last)
    {
        form.dtScontr->setDate(day);
        DGFECrtForm::ByNumber = true;
        DGFECrtForm::ReceiptDate = form.dtScontr;
        DGFECrtForm::FirstReceipt = first;
        DGFECrtForm::LastReceipt = last;
    }
};

// What the journal screen's list shows.
inline QStringList listOf(const DGFECrtForm &screen)
{
    QStringList out;
    for (int i = 0; i < screen.ListDGFE->count(); ++i)
        out << screen.ListDGFE->item(i)->text();
    return out;
}
