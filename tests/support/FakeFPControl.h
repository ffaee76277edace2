// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "printer/KelvoFPControlBase.h"

#include <QHash>
#include <QList>
#include <QStringList>
#include <functional>
#include <optional>

// A scriptable control for tests. Every member call is recorded with its
// arguments (as the text of their wire form); commands answer with a queued
// result for their name, else the handler's, else the default for the name,
// else 0. Properties are set with setProperty or by the handler.
class FakeFPControl : public KelvoFPControlBase
{
public:
    struct Call
    {
        QString name;
        QStringList args;
    };

    // Script
    void queueResult(const QString &name, int16_t result) { m_queued[name].append(result); }
    void setDefaultResult(const QString &name, int16_t result) { m_defaults[name] = result; }
    // Runs for each command that has no queued result; may set properties.
    // Returning nothing falls through to the default result.
    std::function<std::optional<int16_t>(const Call &, FakeFPControl &)> handler;

    // What ReadMatricola answers.
    void setMatricola(const QString &prefix, const QString &model = "41", const QString &number = "100123")
    {
        setProperty("MatricolaPrefix", prefix);
        setProperty("MatricolaModel", model);
        setProperty("MatricolaNumber", number);
    }

    bool busy = false;
    bool comPortOpens = true;   // what OpenComPort achieves
    int32_t openTcpResult = 0;  // what OpenTcp returns; 0 also opens

    // Record
    QList<Call> calls;
    QStringList callNames() const;
    // "Name(arg,arg)" per call, of the calls whose name starts with namePrefix
    QStringList sent(QChar separator = u',', const QString &namePrefix = QString()) const;
    int count(const QString &name) const;
    QList<Call> callsOf(const QString &name) const;
    void clearCalls() { calls.clear(); }

    // KelvoFPControl
    bool Busy() const override { return busy; }
    void OpenComPort() override;
    void CloseComPort() override;
    bool IsComPortOpen() override;
    int32_t OpenTcp() override;
    void CloseTcp() override;
    bool IsTcpOpen(int32_t &state) override;

    bool comOpen = false;
    bool tcpOpen = false;

protected:
    int16_t execute(const QByteArray &name, const QList<QByteArray> &args) override;

private:
    void record(const QString &name, const QStringList &args = {});
    QHash<QString, QList<int16_t>> m_queued;
    QHash<QString, int16_t> m_defaults;
};
