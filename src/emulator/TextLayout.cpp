// SPDX-License-Identifier: GPL-3.0-or-later
#include "TextLayout.h"

namespace TextLayout {

QString money(Currency amount)
{
    const bool negative = amount.scaled() < 0;
    const uint64_t magnitude = negative ? uint64_t(0) - uint64_t(amount.scaled()) : uint64_t(amount.scaled());
    const uint64_t units = magnitude / uint64_t(Currency::Scale);
    uint64_t fraction = magnitude % uint64_t(Currency::Scale);
    QString digits = QString::number(units);
    QString grouped;
    for (qsizetype i = 0; i < digits.size(); ++i) {
        if (i > 0 && (digits.size() - i) % 3 == 0)
            grouped += QLatin1Char('.');
        grouped += digits[i];
    }
    QString frac = QString::number(fraction).rightJustified(4, QLatin1Char('0'));
    while (frac.size() > 2 && frac.endsWith(QLatin1Char('0')))
        frac.chop(1);
    return (negative ? QStringLiteral("-") : QString()) + grouped + QLatin1Char(',') + frac;
}

static QString decimal(double v)
{
    QString t = QString::number(v, 'f', 3);
    while (t.endsWith(QLatin1Char('0')))
        t.chop(1);
    if (t.endsWith(QLatin1Char('.')))
        t.chop(1);
    return t.replace(QLatin1Char('.'), QLatin1Char(','));
}

QString quantity(double q) { return decimal(q); }
QString percent(double p) { return decimal(p); }

QString row(const QString &left, const QString &right, int width)
{
    const int room = width - int(right.size()) - 1;
    if (room <= 0)
        return right.right(width);
    const QString l = left.left(room);
    return l + QString(width - l.size() - right.size(), QLatin1Char(' ')) + right;
}

QString centred(const QString &text, int width)
{
    const QString t = text.trimmed().left(width);
    const int pad = (width - int(t.size())) / 2;
    return QString(pad, QLatin1Char(' ')) + t;
}

QString rule(int width, QChar c) { return QString(width, c); }

QString stamp(const QDateTime &when) { return when.toString(QStringLiteral("dd-MM-yyyy HH:mm")); }

QString date(const QDate &d) { return d.toString(QStringLiteral("dd-MM-yyyy")); }

QString widened(const QString &text)
{
    QString out;
    for (QChar c : text.trimmed()) {
        if (!out.isEmpty())
            out += QLatin1Char(' ');
        out += c;
    }
    return out;
}

} // namespace TextLayout
