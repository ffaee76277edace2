// SPDX-License-Identifier: GPL-3.0-or-later
#include "PreviewForm.h"

#include "ui/Named.h"

#include <QHeaderView>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

PreviewForm::PreviewForm(QWidget *parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("PreviewForm"));
    setWindowTitle(QStringLiteral("Anteprima Intestazione"));

    gridPreview = named(new QTableWidget(6, 1, this), "gridPreview");
    QFont courier(QStringLiteral("Courier New"));
    courier.setStyleHint(QFont::TypeWriter); // a fixed pitch where Courier New is missing
    gridPreview->setFont(courier);
    gridPreview->horizontalHeader()->hide();
    gridPreview->verticalHeader()->hide();
    gridPreview->setEditTriggers(QAbstractItemView::NoEditTriggers);
    gridPreview->setSelectionMode(QAbstractItemView::NoSelection);
    // 5000 twips, at the screen's own resolution.
    gridPreview->setColumnWidth(0, logicalDpiX() * 5000 / 1440);
    for (int row = 0; row < 6; ++row) {
        gridPreview->setItem(row, 0, new QTableWidgetItem);
        gridPreview->setRowHeight(row, 32); // room for the double lines
    }

    btnOk = named(new QPushButton(QStringLiteral("CHIUDI"), this), "btnOk");

    auto *layout = new QVBoxLayout(this);
    layout->addWidget(gridPreview);
    layout->addWidget(btnOk, 0, Qt::AlignRight);
    resize(gridPreview->columnWidth(0) + 40, 6 * 32 + 80);

    connect(btnOk, &QPushButton::clicked, this, &PreviewForm::btnOk_Click);
}

void PreviewForm::btnOk_Click()
{
    accept();
}
