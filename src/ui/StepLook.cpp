// SPDX-License-Identifier: GPL-3.0-or-later
#include "StepLook.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

void MakeStepHeading(QLabel *label)
{
    QFont f = label->font();
    f.setBold(true);
    f.setPointSizeF(f.pointSizeF() * 1.3);
    label->setFont(f);
}

QHBoxLayout *StepButtons(QPushButton *back, QPushButton *forward)
{
    auto *buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(back);
    buttons->addWidget(forward);
    return buttons;
}
