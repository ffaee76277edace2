// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "settings/Currency.h"

#include <QByteArray>
#include <QDateTime>
#include <QString>
#include <cstdint>

// How values are written in the fields of the wire protocol: integers in
// decimal, Single in shortest decimal with '.', Currency as its scaled
// integer, Boolean 1 or 0, text in Windows-1252, dates as
// yyyy-MM-ddTHH:mm:ss.
namespace WireValue {
QByteArray from(int16_t v);
QByteArray from(int32_t v);
QByteArray from(float v);
QByteArray from(Currency v);
QByteArray from(bool v);
QByteArray from(const QString &v);
QByteArray from(const QDateTime &v);

// Text as carried in a Name=value field, already decoded from Windows-1252.
// A value that does not read as its type gives 0 (empty, invalid date).
int64_t toInteger(const QString &text);
float toSingle(const QString &text);
Currency toCurrency(const QString &text);
QDateTime toDate(const QString &text);
QString singleText(float v); // shortest text that reads back as the same float
}
