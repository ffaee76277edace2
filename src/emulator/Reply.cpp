// SPDX-License-Identifier: GPL-3.0-or-later
#include "Reply.h"

#include "settings/Cp1252.h"
#include "printer/WireValue.h"

Reply Reply::refuse(PrinterError e)
{
    Reply r;
    r.result = -1;
    r.with("ErrorCode", int(e));
    return r;
}

Reply &Reply::with(const char *name, int value)
{
    properties.append({QByteArray(name), QByteArray::number(value)});
    return *this;
}

Reply &Reply::with(const char *name, float value)
{
    properties.append({QByteArray(name), WireValue::from(value)});
    return *this;
}

Reply &Reply::with(const char *name, Currency value)
{
    properties.append({QByteArray(name), WireValue::from(value)});
    return *this;
}

Reply &Reply::with(const char *name, const QString &text)
{
    properties.append({QByteArray(name), Cp1252::encode(text)});
    return *this;
}

Reply &Reply::with(const char *name, const QDateTime &value)
{
    properties.append({QByteArray(name), WireValue::from(value)});
    return *this;
}

QString Reply::property(const char *name) const
{
    for (const auto &p : properties)
        if (p.first == name)
            return Cp1252::decode(p.second);
    return {};
}

bool Reply::has(const char *name) const
{
    for (const auto &p : properties)
        if (p.first == name)
            return true;
    return false;
}

QList<QByteArray> Reply::fields() const
{
    QList<QByteArray> out;
    out.reserve(properties.size() + 1);
    out.append(QByteArray::number(result));
    for (const auto &p : properties) {
        QByteArray field;
        field.reserve(p.first.size() + 1 + p.second.size());
        field.append(p.first).append('=').append(p.second);
        out.append(std::move(field));
    }
    return out;
}
