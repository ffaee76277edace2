// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPointer>
#include <QString>
#include <cstdint>

class QDateEdit;

// The dates of a journal selection as the printer takes them and as the
// screens show them. A picker that is gone (its screen closed) reads as
// today, the value every picker starts with.
namespace JournalDates {

struct Parts
{
    int16_t day;
    int16_t month;
    int16_t year; // four digits
};

Parts parts(const QDateEdit *picker);
// Day/month/year without leading zeros: 4/7/2006.
QString text(const QDateEdit *picker);

}
