#include "LocaleValue.h"

#include "Conversions.h"

QString GetLocaleValue(int lcType)
{
    switch (lcType) {
    case LOCALE_SMONDECIMALSEP:
        // QLocale knows no separate separator for money. The keypad builds
        // amounts that the number conversions then read, so the separator
        // they expect is the right one to give.
        return Conv::locale().decimalPoint();
    default:
        return QString();
    }
}
