// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "settings/Currency.h"

#include <QLocale>
#include <QString>
#include <cstdint>

// Text to number and back, by the number rules of the user's locale.
//
// The numeric test says whether a text would convert; the conversions take
// text the caller did not test and end the run (RunTimeError) when it is no
// number or does not fit. Integers round halves to even (2,5 -> 2, 3,5 -> 4).
namespace Conv {

// The locale all conversions use; the user's own unless a test sets another.
QLocale locale();
void setLocaleForTests(const QLocale &locale); // QLocale::system() restores

bool IsNumeric(const QString &text);

double ToDouble(const QString &text);    // TypeMismatch when no number
int16_t ToInteger(const QString &text);  // Integer: TypeMismatch, Overflow
int32_t ToLong(const QString &text);     // Long: TypeMismatch, Overflow
float ToSingle(const QString &text);     // Single: TypeMismatch, Overflow
Currency ToCurrency(const QString &text);// Currency: TypeMismatch, Overflow

int16_t ToInteger(double value);         // halves to even; Overflow
int32_t ToLong(double value);

// Number to text as the program shows it: no thousands separators, the
// locale's decimal separator, as many decimals as the value needs at the
// type's precision (15 significant digits for double, 7 for float, all four
// for Currency); very large or small doubles and floats as 1E+20, 1E-05.
QString Text(int64_t value);
inline QString Text(int value) { return Text(int64_t(value)); } // else int is ambiguous
QString Text(double value);
QString Text(float value);
QString Text(Currency value);

} // namespace Conv
