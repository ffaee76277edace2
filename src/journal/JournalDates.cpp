// SPDX-License-Identifier: GPL-3.0-or-later
#include "JournalDates.h"

#include <QDateEdit>

namespace JournalDates {

static QDate dateOf(const QDateEdit *picker)
{
    return picker ? picker->date() : QDate::currentDate();
}

Parts parts(const QDateEdit *picker)
{
    const QDate d = dateOf(picker);
    return {int16_t(d.day()), int16_t(d.month()), int16_t(d.year())};
}

QString text(const QDateEdit *picker)
{
    const QDate d = dateOf(picker);
    return QStringLiteral("%1/%2/%3").arg(d.day()).arg(d.month()).arg(d.year());
}

}
