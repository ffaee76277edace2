// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "settings/Currency.h"

#include <QDateTime>
#include <QString>

// How the printer lays out its printed lines: fixed width, amounts in the
// Italian way (1.234,50), labels left and amounts right.
namespace TextLayout {
QString money(Currency amount);             // "1.234,50", "-0,50"; more decimals only when there are any
QString quantity(double q);                 // "3", "1,5"
QString percent(double p);                  // "22", "5,5"
QString row(const QString &left, const QString &right, int width);
QString centred(const QString &text, int width);
QString rule(int width, QChar c = QLatin1Char('-'));
QString stamp(const QDateTime &when);       // "15-01-2026 10:05"
QString date(const QDate &d);               // "15-01-2026"
QString widened(const QString &text);       // double-width print: "C A F F E"
}
