// SPDX-License-Identifier: GPL-3.0-or-later
#include "WireValue.h"

#include "settings/Cp1252.h"

#include <charconv>

namespace WireValue {

QByteArray from(int16_t v) { return QByteArray::number(v); }
QByteArray from(int32_t v) { return QByteArray::number(v); }
QByteArray from(Currency v) { return QByteArray::number(qint64(v.scaled())); }
QByteArray from(bool v) { return v ? QByteArrayLiteral("1") : QByteArrayLiteral("0"); }
QByteArray from(const QString &v) { return Cp1252::encode(v); }
QByteArray from(const QDateTime &v) { return v.toString(QStringLiteral("yyyy-MM-ddTHH:mm:ss")).toLatin1(); }

QString singleText(float v)
{
    char buf[64];
    const auto res = std::to_chars(buf, buf + sizeof buf, v);
    return QString::fromLatin1(buf, int(res.ptr - buf));
}

QByteArray from(float v) { return singleText(v).toLatin1(); }

int64_t toInteger(const QString &text)
{
    bool ok = false;
    const qlonglong n = text.trimmed().toLongLong(&ok);
    return ok ? n : 0;
}

float toSingle(const QString &text)
{
    const QByteArray latin = text.trimmed().toLatin1();
    float v = 0;
    const auto res = std::from_chars(latin.constData(), latin.constData() + latin.size(), v);
    return res.ec == std::errc() ? v : 0.0f;
}

Currency toCurrency(const QString &text) { return Currency::fromScaled(toInteger(text)); }

QDateTime toDate(const QString &text)
{
    return QDateTime::fromString(text.trimmed(), QStringLiteral("yyyy-MM-ddTHH:mm:ss"));
}

} // namespace WireValue
