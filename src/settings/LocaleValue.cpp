// SPDX-License-Identifier: GPL-3.0-or-later
#include "LocaleValue.h"

#include "Conversions.h"

#include <langinfo.h>
#include <locale.h>

namespace {
// The monetary decimal separator of the C library's locale of that name ("" is
// the user's own, from the environment); empty when the locale is not
// installed or has none (the C locale).
QString MonetaryDecimalPoint(const QByteArray &name)
{
    locale_t loc = newlocale(LC_MONETARY_MASK, name.constData(), locale_t(nullptr));
    if (loc == locale_t(nullptr))
        return QString();
    const QString point = QString::fromLocal8Bit(nl_langinfo_l(MON_DECIMAL_POINT, loc));
    freelocale(loc);
    return point;
}
}

QString GetLocaleValue(int lcType)
{
    switch (lcType) {
    case LOCALE_SMONDECIMALSEP: {
        // QLocale knows no separator of its own for money; the C library's
        // locale does. The user's locale, or the one a test put in force.
        const QLocale locale = Conv::locale();
        const QByteArray name =
            locale == QLocale::system() ? QByteArray() : (locale.name() + QStringLiteral(".UTF-8")).toLatin1();
        const QString point = MonetaryDecimalPoint(name);
        // Without one (the C locale has none), the numbers' own separator.
        return point.isEmpty() ? locale.decimalPoint() : point;
    }
    default:
        return QString();
    }
}
