// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "KelvoFPControlBase.h"
#include "WireFrame.h"

#include <QByteArray>
#include <QDeadlineTimer>
#include <functional>
#include <memory>

class QEventLoop;
class QIODevice;
class QSerialPort;
class QTcpSocket;
class QTimer;

// The printer control that speaks the wire protocol of docs/protocol.md over
// a serial line (UseTcp 0) or a TCP connection (UseTcp 1).
//
// A command blocks its caller until the printer has answered or a time-out
// ran out, but it waits in a local event loop: the user interface keeps
// painting and taking clicks, and a printer that lives in the same thread
// keeps answering. A command that arrives meanwhile (from that event loop)
// gets result 9 at once and nothing is sent; closing the port meanwhile ends
// the waiting command with result 1. A line lost without the program closing
// it (the printer switched off, the cable pulled) is opened again by the next
// command, once, before that command is sent.
class KelvoProtocolControl : public KelvoFPControlBase
{
public:
    // Default time-outs, in seconds, in force while TimeoutAck / TimeoutOp are -1.
    static constexpr int DefaultAckSeconds = 2;
    static constexpr int DefaultOpSeconds = 10;

    KelvoProtocolControl();
    ~KelvoProtocolControl() override;

    bool Busy() const override { return m_busy; }
    void OpenComPort() override;
    void CloseComPort() override;
    bool IsComPortOpen() override;
    int32_t OpenTcp() override;
    void CloseTcp() override;
    bool IsTcpOpen(int32_t &state) override;
    int16_t LoadLogoFile(QString &path) override;

    // Sees every byte on the line: each frame the control sends, each chunk
    // it receives (line noise included).
    enum class Direction { Sent, Received };
    using TrafficObserver = std::function<void(Direction, const QByteArray &)>;
    void setTrafficObserver(TrafficObserver observer) { m_traffic = std::move(observer); }

protected:
    int16_t execute(const QByteArray &name, const QList<QByteArray> &args) override;

private:
    QIODevice *openLine() const; // the line UseTcp chooses, when it is open
    QIODevice *reopenLostLine(); // one attempt to bring a lost line back
    bool lineUp(QIODevice *line) const;
    void startConnection();
    void shutTcp();
    void shutSerial();
    void endWaitingCall(QIODevice *closedLine);
    bool &lostFlag(bool tcp) { return tcp ? m_tcpLost : m_serialLost; }

    int16_t exchange(QIODevice *line, char seq, const QByteArray &frame);
    int16_t lineDropped(QIODevice *line);
    void send(QIODevice *line, const QByteArray &bytes);
    void takeInput(QIODevice *line);
    void waitForLine(QIODevice *line, QDeadlineTimer deadline);
    void watchLine(QIODevice *line);
    void wakeWaiter();
    int16_t applyResponse(const QList<QByteArray> &fields);

    std::unique_ptr<QTcpSocket> m_tcp;
    std::unique_ptr<QSerialPort> m_serial;
    Wire::FrameDecoder m_decoder;
    char m_seq = '0';
    bool m_busy = false;
    // The connection was refused or dropped since the port was last opened or
    // closed: commands then tell "not connected" rather than "port not open".
    bool m_tcpLost = false;
    bool m_serialLost = false;
    bool m_closing = false;    // the program is closing a line right now
    QIODevice *m_callLine = nullptr; // the line of the command under way
    bool m_cancelled = false;  // the program closed that line while the command waited
    QEventLoop *m_loop = nullptr;    // the wait under way, if any
    // Kept from one command to the next: a command is a few tens of
    // microseconds on a fast line, and building these each time cost a
    // good part of that.
    std::unique_ptr<QEventLoop> m_waitLoop;
    std::unique_ptr<QTimer> m_waitTimer;
    QByteArray m_input;
    TrafficObserver m_traffic;
};
