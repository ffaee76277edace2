// SPDX-License-Identifier: GPL-3.0-or-later
#include "KelvoProtocolControl.h"

#include "settings/Cp1252.h"
#include "LocalFile.h"
#include "SerialLine.h"
#include "WireResponse.h"

#include <QEventLoop>
#include <QFile>
#include <QSerialPort>
#include <QTcpSocket>
#include <QTimer>

namespace {

// Results of the control beside the printer's own 0 and -1.
enum Result : int16_t {
    NotConnected = 1,
    PortNotOpen = 2,
    ResponseCut = 3,
    BadResponse = 4,
    WrongEuroSettings = 5,
    LogoFileMissing = 6,
    NoAck = 7,
    NoResponse = 8,
    CallUnderWay = 9,
};

constexpr int MaxSends = 3; // the first and two more after NAKs

int milliseconds(int16_t seconds, int defaultSeconds)
{
    return (seconds > 0 ? int(seconds) : defaultSeconds) * 1000;
}

class BusyScope
{
public:
    explicit BusyScope(bool &busy) : m_busy(busy) { m_busy = true; }
    ~BusyScope() { m_busy = false; }
    BusyScope(const BusyScope &) = delete;
    BusyScope &operator=(const BusyScope &) = delete;

private:
    bool &m_busy;
};

}

KelvoProtocolControl::KelvoProtocolControl() = default;

KelvoProtocolControl::~KelvoProtocolControl()
{
    m_closing = true; // no signal of the sockets may reach a half-destroyed control
    if (m_tcp)
        m_tcp->disconnect();
    if (m_serial)
        m_serial->disconnect();
}

// --- Port --------------------------------------------------------------------

void KelvoProtocolControl::OpenComPort()
{
    if (m_busy)
        return;
    shutSerial();
    m_serialLost = false;
    const std::optional<SerialLine::Settings> settings = SerialLine::parse(ComSettings());
    if (!settings)
        return;
    if (!m_serial) {
        m_serial = std::make_unique<QSerialPort>();
        QObject::connect(m_serial.get(), &QSerialPort::errorOccurred, m_serial.get(),
                         [this](QSerialPort::SerialPortError error) {
                             // A line hung up or a device gone: the port closes (which also
                             // wakes a command waiting on it).
                             if (error != QSerialPort::ResourceError || m_closing)
                                 return;
                             m_serialLost = true;
                             shutSerial();
                         });
        watchLine(m_serial.get());
    }
    m_serial->setPortName(SerialLine::devicePath(ComPort()));
    if (!m_serial->open(QIODevice::ReadWrite))
        return;
    if (!SerialLine::apply(*m_serial, *settings)) {
        shutSerial();
        return;
    }
    startConnection();
}

void KelvoProtocolControl::CloseComPort()
{
    shutSerial();
    m_serialLost = false;
    endWaitingCall(m_serial.get());
}

bool KelvoProtocolControl::IsComPortOpen()
{
    return m_serial && m_serial->isOpen();
}

int32_t KelvoProtocolControl::OpenTcp()
{
    if (m_busy)
        return CallUnderWay;
    shutTcp();
    m_tcpLost = false;
    if (!m_tcp) {
        m_tcp = std::make_unique<QTcpSocket>();
        QObject::connect(m_tcp.get(), &QAbstractSocket::disconnected, m_tcp.get(), [this] {
            if (m_closing)
                return;
            m_tcpLost = true; // the printer closed the connection
        });
        watchLine(m_tcp.get());
    }

    BusyScope busy(m_busy);
    m_tcp->connectToHost(IpAddress(), quint16(uint16_t(TcpPort())));
    if (m_tcp->state() != QAbstractSocket::ConnectedState && m_tcp->state() != QAbstractSocket::UnconnectedState) {
        QEventLoop loop;
        QTimer timer;
        timer.setSingleShot(true);
        QObject::connect(&timer, &QTimer::timeout, &loop, &QEventLoop::quit);
        QObject::connect(m_tcp.get(), &QAbstractSocket::stateChanged, &loop,
                         [&loop](QAbstractSocket::SocketState state) {
                             if (state == QAbstractSocket::ConnectedState || state == QAbstractSocket::UnconnectedState)
                                 loop.quit();
                         });
        timer.start(milliseconds(TimeoutAck(), DefaultAckSeconds));
        loop.exec();
    }
    if (m_tcp->state() != QAbstractSocket::ConnectedState) {
        shutTcp();
        m_tcpLost = true;
        return NotConnected;
    }
    m_tcp->setSocketOption(QAbstractSocket::LowDelayOption, 1);
    startConnection();
    return 0;
}

void KelvoProtocolControl::CloseTcp()
{
    shutTcp();
    m_tcpLost = false;
    endWaitingCall(m_tcp.get());
}

bool KelvoProtocolControl::IsTcpOpen(int32_t &state)
{
    state = m_tcp ? int32_t(m_tcp->state()) : 0;
    return m_tcp && m_tcp->state() == QAbstractSocket::ConnectedState;
}

void KelvoProtocolControl::startConnection()
{
    m_seq = '0';
    m_decoder.reset();
}

void KelvoProtocolControl::shutTcp()
{
    if (!m_tcp)
        return;
    m_closing = true;
    m_tcp->abort();
    m_closing = false;
}

void KelvoProtocolControl::shutSerial()
{
    if (!m_serial || !m_serial->isOpen())
        return;
    m_closing = true;
    m_serial->close();
    m_closing = false;
}

void KelvoProtocolControl::endWaitingCall(QIODevice *closedLine)
{
    if (!m_callLine || m_callLine != closedLine)
        return;
    m_cancelled = true;
    wakeWaiter();
}

QIODevice *KelvoProtocolControl::reopenLostLine()
{
    // A printer switched off and on again, a cable pulled and put back: the
    // line went away without the program closing it. One attempt on the same
    // settings; a printer still off refuses it at once (or within TimeoutAck
    // on TCP), and the command then tells "not connected" as before.
    const bool tcp = UseTcp() == 1;
    if (tcp)
        OpenTcp();
    else
        OpenComPort();
    QIODevice *line = openLine();
    if (!line)
        lostFlag(tcp) = true; // the next command tries again
    return line;
}

QIODevice *KelvoProtocolControl::openLine() const
{
    if (UseTcp() == 1)
        return m_tcp && m_tcp->state() == QAbstractSocket::ConnectedState ? m_tcp.get() : nullptr;
    return m_serial && m_serial->isOpen() ? m_serial.get() : nullptr;
}

bool KelvoProtocolControl::lineUp(QIODevice *line) const
{
    if (line == m_tcp.get())
        return m_tcp->state() == QAbstractSocket::ConnectedState;
    return line->isOpen();
}

// --- Commands ------------------------------------------------------------------

int16_t KelvoProtocolControl::LoadLogoFile(QString &path)
{
    if (m_busy)
        return CallUnderWay;
    if (EuroSettings() != 2)
        return WrongEuroSettings;
    QFile file(LocalFile::find(path));
    if (!file.open(QIODevice::ReadOnly))
        return LogoFileMissing;
    return execute("LoadLogoFile", {file.readAll()});
}

int16_t KelvoProtocolControl::execute(const QByteArray &name, const QList<QByteArray> &args)
{
    if (m_busy)
        return CallUnderWay;
    if (EuroSettings() != 2)
        return WrongEuroSettings;
    QIODevice *line = openLine();
    if (!line && lostFlag(UseTcp() == 1))
        line = reopenLostLine();
    if (!line)
        return lostFlag(UseTcp() == 1) ? NotConnected : PortNotOpen;

    QList<QByteArray> fields;
    fields.reserve(args.size() + 1);
    fields.append(name);
    fields.append(args);
    const QByteArray frame = Wire::encodeFrame(m_seq, fields);
    if (frame.size() - 5 > Wire::MaxFrameBody) // STX and CHK are outside the limit
        return NoAck;
    const char seq = m_seq;
    m_seq = Wire::nextSeq(m_seq);

    BusyScope busy(m_busy);
    m_callLine = line;
    m_cancelled = false;
    const int16_t result = exchange(line, seq, frame);
    m_callLine = nullptr;
    return result;
}

int16_t KelvoProtocolControl::exchange(QIODevice *line, char seq, const QByteArray &frame)
{
    // Whatever is left from earlier exchanges (a late answer, half a frame) goes.
    takeInput(line);
    m_decoder.reset();

    const int ackMs = milliseconds(TimeoutAck(), DefaultAckSeconds);
    const int opMs = milliseconds(TimeoutOp(), DefaultOpSeconds);
    enum class Phase { AwaitAck, AwaitResponse, InResponse } phase = Phase::AwaitAck;
    int sends = 1;
    send(line, frame);
    QDeadlineTimer deadline(ackMs, Qt::PreciseTimer);

    for (;;) {
        takeInput(line); // also what came just before the line dropped
        while (const std::optional<Wire::FrameDecoder::Event> event = m_decoder.next()) {
            switch (event->kind) {
            case Wire::FrameDecoder::Kind::Ack:
                if (phase == Phase::AwaitAck) {
                    phase = Phase::AwaitResponse;
                    deadline.setRemainingTime(opMs, Qt::PreciseTimer);
                }
                break;
            case Wire::FrameDecoder::Kind::Nak:
                if (phase == Phase::AwaitAck) {
                    if (sends == MaxSends)
                        return NoAck;
                    ++sends;
                    send(line, frame);
                    deadline.setRemainingTime(ackMs, Qt::PreciseTimer);
                }
                break;
            case Wire::FrameDecoder::Kind::Frame:
                if (event->seq == seq)
                    return applyResponse(event->fields);
                break; // the late answer to an earlier request
            case Wire::FrameDecoder::Kind::BadFrame:
                if (event->seq == 0 || event->seq == seq)
                    return BadResponse;
                break;
            }
        }
        if (phase == Phase::AwaitResponse && m_decoder.inFrame()) {
            phase = Phase::InResponse; // the answer has begun: it has TimeoutOp to end
            deadline.setRemainingTime(opMs, Qt::PreciseTimer);
        } else if (phase == Phase::InResponse && !m_decoder.inFrame()) {
            phase = Phase::AwaitResponse; // that was a stale frame
        }
        if (m_cancelled || !lineUp(line))
            return lineDropped(line);
        if (deadline.hasExpired())
            return phase == Phase::AwaitAck ? NoAck : phase == Phase::AwaitResponse ? NoResponse : ResponseCut;
        waitForLine(line, deadline);
    }
}

int16_t KelvoProtocolControl::lineDropped(QIODevice *line)
{
    if (!m_cancelled)
        lostFlag(line == m_tcp.get()) = true;
    if (line == m_tcp.get())
        shutTcp();
    else
        shutSerial();
    return NotConnected;
}

void KelvoProtocolControl::send(QIODevice *line, const QByteArray &bytes)
{
    if (m_traffic)
        m_traffic(Direction::Sent, bytes);
    line->write(bytes);
    if (line == m_tcp.get())
        m_tcp->flush();
    else
        m_serial->flush();
}

void KelvoProtocolControl::takeInput(QIODevice *line)
{
    const qint64 available = line->bytesAvailable();
    if (available <= 0)
        return;
    m_input.resize(available); // the buffer keeps its room between reads
    const qint64 got = line->read(m_input.data(), available);
    if (got <= 0)
        return;
    if (m_traffic)
        m_traffic(Direction::Received, m_input.first(got));
    m_decoder.feed(m_input.constData(), got);
}

// Whatever may end a wait (bytes in, the line closing or dropping) wakes it.
void KelvoProtocolControl::watchLine(QIODevice *line)
{
    QObject::connect(line, &QIODevice::readyRead, line, [this] { wakeWaiter(); });
    QObject::connect(line, &QIODevice::aboutToClose, line, [this] { wakeWaiter(); });
    if (auto *socket = qobject_cast<QAbstractSocket *>(line))
        QObject::connect(socket, &QAbstractSocket::disconnected, line, [this] { wakeWaiter(); });
}

void KelvoProtocolControl::wakeWaiter()
{
    if (m_loop)
        m_loop->quit();
}

void KelvoProtocolControl::waitForLine(QIODevice *line, QDeadlineTimer deadline)
{
    if (line->bytesAvailable() > 0)
        return;
    if (!m_waitLoop) {
        m_waitLoop = std::make_unique<QEventLoop>();
        m_waitTimer = std::make_unique<QTimer>();
        m_waitTimer->setSingleShot(true);
        m_waitTimer->setTimerType(Qt::PreciseTimer);
        QObject::connect(m_waitTimer.get(), &QTimer::timeout, m_waitTimer.get(), [this] { wakeWaiter(); });
    }
    m_waitTimer->start(int(qMax<qint64>(0, deadline.remainingTime())));
    m_loop = m_waitLoop.get();
    m_waitLoop->exec();
    m_loop = nullptr;
    m_waitTimer->stop();
}

int16_t KelvoProtocolControl::applyResponse(const QList<QByteArray> &fields)
{
    const std::optional<Wire::Response> response = Wire::parseResponse(fields);
    if (!response)
        return BadResponse;
    setProperty(QStringLiteral("ErrorCode"), QStringLiteral("0"));
    setProperty(QStringLiteral("InfoCode"), QStringLiteral("0"));
    for (const auto &[name, value] : response->properties)
        setProperty(name, value);
    return response->result;
}
