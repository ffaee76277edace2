// SPDX-License-Identifier: GPL-3.0-or-later
#include "FakeFPControl.h"

#include "settings/Cp1252.h"

void FakeFPControl::record(const QString &name, const QStringList &args)
{
    calls.append({name, args});
}

QStringList FakeFPControl::callNames() const
{
    QStringList names;
    for (const Call &c : calls)
        names.append(c.name);
    return names;
}

QStringList FakeFPControl::sent(QChar separator, const QString &namePrefix) const
{
    QStringList out;
    for (const Call &c : calls)
        if (c.name.startsWith(namePrefix))
            out.append(c.name + '(' + c.args.join(separator) + ')');
    return out;
}

int FakeFPControl::count(const QString &name) const
{
    int n = 0;
    for (const Call &c : calls)
        n += c.name == name ? 1 : 0;
    return n;
}

QList<FakeFPControl::Call> FakeFPControl::callsOf(const QString &name) const
{
    QList<Call> out;
    for (const Call &c : calls)
        if (c.name == name)
            out.append(c);
    return out;
}

void FakeFPControl::OpenComPort()
{
    record(QStringLiteral("OpenComPort"));
    comOpen = comPortOpens;
}

void FakeFPControl::CloseComPort()
{
    record(QStringLiteral("CloseComPort"));
    comOpen = false;
}

bool FakeFPControl::IsComPortOpen()
{
    record(QStringLiteral("IsComPortOpen"));
    return comOpen;
}

int32_t FakeFPControl::OpenTcp()
{
    record(QStringLiteral("OpenTcp"));
    tcpOpen = openTcpResult == 0;
    return openTcpResult;
}

void FakeFPControl::CloseTcp()
{
    record(QStringLiteral("CloseTcp"));
    tcpOpen = false;
}

bool FakeFPControl::IsTcpOpen(int32_t &)
{
    record(QStringLiteral("IsTcpOpen"));
    return tcpOpen;
}

int16_t FakeFPControl::execute(const QByteArray &name, const QList<QByteArray> &args)
{
    QStringList text;
    for (const QByteArray &a : args)
        text.append(Cp1252::decode(a));
    const QString n = QString::fromLatin1(name);
    record(n, text);
    auto queued = m_queued.find(n);
    if (queued != m_queued.end() && !queued->isEmpty())
        return queued->takeFirst();
    if (handler) {
        if (const auto r = handler(calls.last(), *this))
            return *r;
    }
    return m_defaults.value(n, 0);
}
