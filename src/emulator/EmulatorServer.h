// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "EmulatorConfig.h"
#include "FaultSwitches.h"
#include "LineSettings.h"
#include "MemoryDelta.h"
#include "PrinterModel.h"
#include "StateFile.h"
#include "TrafficLog.h"

#include <QHostAddress>
#include <QObject>
#include <QPointer>
#include <memory>

class PtyPort;
class QTcpServer;
class QTcpSocket;
class WireSession;

// The emulator as a whole: the printer model, its memory in the state file,
// the paper roll, the fault switches, and the transports (TCP and a
// pseudo-terminal) with one WireSession per connection. It runs in the
// thread that owns it, driven by that thread's event loop alone (no blocking
// waits), so that a test or a program can run it in-process beside the
// control that talks to it.
//
//     EmulatorServer emu(config);          // config.statePath etc.
//     emu.start();                         // memory, paper, traffic log
//     emu.listenTcp(QHostAddress::LocalHost, 0);  // 0: any free port
//     control.setTcpPort(emu.tcpPort());
//     emu.faults().set(FaultSwitches::Wire::Nak, FaultSwitches::Always);
//     emu.model().setPaperOut(true);
class EmulatorServer : public QObject
{
    Q_OBJECT
public:
    // TCP clients served at once; more are closed as they come.
    static constexpr int MaxConnections = 8;
    // Answers a client may leave unread before it is dropped.
    static constexpr qint64 MaxUnreadBytes = 4 * 1024 * 1024;

    explicit EmulatorServer(const EmulatorConfig &config, QObject *parent = nullptr);
    ~EmulatorServer() override;

    // Loads the memory from the state file (a damaged one is set aside and
    // the printer starts new) and opens the paper roll and the traffic log.
    // False when a file cannot be opened; notes() tells what happened.
    bool start(QString *error = nullptr);
    QStringList notes() const { return m_notes; }

    bool listenTcp(const QHostAddress &address = QHostAddress(QHostAddress::LocalHost), quint16 port = 0,
                   QString *error = nullptr);
    quint16 tcpPort() const { return m_tcpPort; }
    QHostAddress tcpAddress() const { return m_tcpAddress; }

    // A pseudo-terminal linked as folder/COMn, answering at lineSettings only.
    bool openPty(const QString &folder, int comNumber, const QString &lineSettings = QStringLiteral("9600,n,8,1"),
                 QString *error = nullptr);
    QString ptyLink() const;
    QString ptyDevice() const;

    PrinterModel &model() { return m_model; }
    FaultSwitches &faults() { return m_faults; }
    const EmulatorConfig &config() const { return m_config; }
    TrafficLog &traffic() { return m_traffic; }

    // Power off drops every connection, stops listening (new connections
    // are refused) and hangs the pseudo-terminal up; power on brings them
    // back on the same address, port and link.
    void setPower(bool on);
    bool isPowered() const { return m_powered; }
    int connectionCount() const;

    // Runs one request as if it came off the wire, and saves the memory when
    // it changed: the change is on disk before the answer is returned.
    Reply execute(const QByteArray &name, const QList<QByteArray> &args);
    // Writes what changed since the last save (a record in the state's log;
    // now and then the whole memory as a new snapshot).
    bool saveNow(QString *error = nullptr);
    // Writes the whole memory as a new snapshot and empties the log.
    bool compactNow(QString *error = nullptr);
    // The log is folded into a new snapshot once it is larger than this and
    // than twice the snapshot: each byte a command logs then costs at most
    // half a byte of snapshot later, however large the journal.
    static constexpr qint64 MinLogBytes = 4 * 1024 * 1024;

Q_SIGNALS:
    void requestHandled(const QString &peer, const QByteArray &name, const Reply &reply);
    void notice(const QString &text);
    // Power switched, a connection came or went: what a window shows changed.
    void lineChanged();

private:
    void onNewConnection();
    WireSession *makeSession(const QString &peer);
    bool reopenTransports();
    bool writeSnapshot(QString *error);

    EmulatorConfig m_config;
    PrinterModel m_model;
    FaultSwitches m_faults;
    TrafficLog m_traffic;
    std::unique_ptr<StateFile> m_state;
    MemoryDelta m_delta;
    bool m_snapshotDue = false;
    QStringList m_notes;
    bool m_powered = true;

    QTcpServer *m_tcp = nullptr;
    bool m_tcpWanted = false;
    QHostAddress m_tcpAddress;
    quint16 m_tcpPort = 0;
    QList<QPointer<QTcpSocket>> m_sockets;

    PtyPort *m_pty = nullptr;
    WireSession *m_ptySession = nullptr;
    QString m_ptyFolder;
    int m_ptyNumber = 0;
    LineSettings m_ptySettings;
};
