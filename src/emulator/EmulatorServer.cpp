// SPDX-License-Identifier: GPL-3.0-or-later
#include "EmulatorServer.h"

#include "MemoryCodec.h"
#include "PtyPort.h"
#include "WireSession.h"

#include <QTcpServer>
#include <QTcpSocket>

EmulatorServer::EmulatorServer(const EmulatorConfig &config, QObject *parent)
    : QObject(parent), m_config(config), m_model(config)
{
    if (!config.statePath.isEmpty())
        m_state = std::make_unique<StateFile>(config.statePath);
}

EmulatorServer::~EmulatorServer()
{
    for (const auto &s : std::as_const(m_sockets))
        if (s)
            s->abort();
}

bool EmulatorServer::start(QString *error)
{
    m_notes.clear();
    if (m_state) {
        const StateFile::Loaded loaded = m_state->load();
        if (!loaded.message.isEmpty())
            m_notes << loaded.message;
        bool fold = loaded.outcome != StateFile::Outcome::Loaded || m_state->logBytes() > 0;
        if (loaded.outcome == StateFile::Outcome::Loaded) {
            m_model.loadMemory(loaded.json);
            const QString serial = m_model.memory().serial;
            if (serial != m_config.effectiveSerial()) {
                m_notes << QStringLiteral("the state file was written by printer %1; it now serves as %2")
                               .arg(serial, m_config.effectiveSerial());
                fold = true;
            }
            m_model.memory().serial = m_config.effectiveSerial();
        }
        // A new memory goes to disk at once, so that the file is there; a
        // replayed log is folded into a new snapshot, which also drops a
        // record cut short at its end.
        m_delta.reset(m_model.memory());
        if (fold) {
            QString why;
            if (!writeSnapshot(&why))
                m_notes << QStringLiteral("cannot save the state to %1: %2").arg(m_state->path(), why);
        }
    }
    QString why;
    if (!m_model.context().roll.open(m_config.paperPath, &why) || !m_traffic.open(m_config.trafficPath, &why)) {
        m_notes << why;
        if (error)
            *error = why;
        return false;
    }
    return true;
}

bool EmulatorServer::listenTcp(const QHostAddress &address, quint16 port, QString *error)
{
    m_tcpWanted = true;
    m_tcpAddress = address;
    m_tcpPort = port;
    if (!m_tcp) {
        m_tcp = new QTcpServer(this);
        connect(m_tcp, &QTcpServer::newConnection, this, &EmulatorServer::onNewConnection);
    }
    m_tcp->close();
    if (!m_powered)
        return true;
    if (!m_tcp->listen(address, port)) {
        if (error)
            *error = QStringLiteral("cannot listen on %1:%2: %3").arg(address.toString()).arg(port).arg(m_tcp->errorString());
        return false;
    }
    m_tcpPort = m_tcp->serverPort();
    return true;
}

bool EmulatorServer::openPty(const QString &folder, int comNumber, const QString &lineSettings, QString *error)
{
    const auto settings = LineSettings::parse(lineSettings);
    if (!settings) {
        if (error)
            *error = QStringLiteral("line settings %1: expected speed,parity,data bits,stop bits, e.g. 9600,n,8,1")
                         .arg(lineSettings);
        return false;
    }
    m_ptyFolder = folder;
    m_ptyNumber = comNumber;
    m_ptySettings = *settings;
    if (!m_pty) {
        m_pty = new PtyPort(this);
        connect(m_pty, &PtyPort::received, this, [this](const QByteArray &bytes) {
            if (m_ptySession)
                m_ptySession->receive(bytes);
        });
        connect(m_pty, &PtyPort::ignored, this, [this](const QByteArray &bytes, const QString &theirs) {
            m_traffic.bytes(QStringLiteral("pty"), TrafficLog::Direction::In, bytes,
                            QStringLiteral("ignored: the line is at %1, the printer at %2").arg(theirs, m_ptySettings.text()));
            if (m_ptySession)
                m_ptySession->resetInput();
        });
    }
    if (!m_powered)
        return true;
    m_pty->setPaced(m_config.realLineSpeed);
    if (!m_pty->open(folder, comNumber, *settings, error))
        return false;
    delete m_ptySession;
    m_ptySession = makeSession(QStringLiteral("pty"));
    connect(m_ptySession, &WireSession::output, m_pty, &PtyPort::write);
    m_traffic.event(QStringLiteral("pty"), QStringLiteral("%1 -> %2 at %3").arg(m_pty->linkPath(), m_pty->devicePath(),
                                                                                 m_ptySettings.text()));
    return true;
}

QString EmulatorServer::ptyLink() const
{
    return m_pty ? m_pty->linkPath() : QString();
}

QString EmulatorServer::ptyDevice() const
{
    return m_pty && m_pty->isOpen() ? m_pty->devicePath() : QString();
}

WireSession *EmulatorServer::makeSession(const QString &peer)
{
    auto *session = new WireSession(
        peer,
        [this, peer](const QByteArray &name, const QList<QByteArray> &args) {
            const Reply reply = execute(name, args);
            Q_EMIT requestHandled(peer, name, reply);
            return reply;
        },
        m_faults, m_traffic, this);
    return session;
}

void EmulatorServer::onNewConnection()
{
    while (QTcpSocket *socket = m_tcp->nextPendingConnection()) {
        socket->setSocketOption(QAbstractSocket::LowDelayOption, 1);
        const QString peer = QStringLiteral("tcp %1:%2").arg(socket->peerAddress().toString()).arg(socket->peerPort());
        if (connectionCount() >= MaxConnections) {
            m_traffic.event(peer, QStringLiteral("refused: already %1 connections").arg(MaxConnections));
            socket->abort();
            socket->deleteLater();
            continue;
        }
        WireSession *session = makeSession(peer);
        session->setParent(socket);
        connect(socket, &QTcpSocket::readyRead, session, [socket, session] { session->receive(socket->readAll()); });
        connect(session, &WireSession::output, socket, [this, socket, peer](const QByteArray &bytes) {
            // A client that sends and never reads would have the answers pile
            // up here without end: past a limit it is dropped.
            if (socket->bytesToWrite() > MaxUnreadBytes) {
                if (socket->state() != QAbstractSocket::UnconnectedState)
                    m_traffic.event(peer, QStringLiteral("dropped: the client reads none of its answers"));
                socket->abort();
                return;
            }
            socket->write(bytes);
            socket->flush(); // out now, not on the next turn of the event loop
        });
        connect(socket, &QTcpSocket::disconnected, this, [this, socket, peer] {
            m_traffic.event(peer, QStringLiteral("closed"));
            m_sockets.removeAll(socket);
            socket->deleteLater();
            Q_EMIT lineChanged();
        });
        m_sockets.append(socket);
        m_traffic.event(peer, QStringLiteral("connected"));
        Q_EMIT notice(QStringLiteral("connection from %1").arg(peer.mid(4)));
        Q_EMIT lineChanged();
    }
}

int EmulatorServer::connectionCount() const
{
    int n = 0;
    for (const auto &s : m_sockets)
        n += s && s->state() == QAbstractSocket::ConnectedState;
    return n;
}

void EmulatorServer::setPower(bool on)
{
    if (on == m_powered)
        return;
    m_powered = on;
    if (!on) {
        m_model.powerLost();
        if (m_tcp)
            m_tcp->close();
        const auto sockets = m_sockets;
        m_sockets.clear();
        for (const auto &s : sockets)
            if (s) {
                s->abort();
                s->deleteLater();
            }
        delete m_ptySession;
        m_ptySession = nullptr;
        if (m_pty)
            m_pty->close();
        m_traffic.event(QStringLiteral("power"), QStringLiteral("off"));
        Q_EMIT notice(QStringLiteral("power off"));
        Q_EMIT lineChanged();
        return;
    }
    m_model.powerBack();
    if (m_model.takeChanged())
        saveNow();
    m_traffic.event(QStringLiteral("power"), QStringLiteral("on"));
    reopenTransports();
    Q_EMIT notice(QStringLiteral("power on"));
    Q_EMIT lineChanged();
}

bool EmulatorServer::reopenTransports()
{
    bool ok = true;
    QString why;
    if (m_tcpWanted && !listenTcp(m_tcpAddress, m_tcpPort, &why)) {
        Q_EMIT notice(why);
        ok = false;
    }
    if (m_pty && !openPty(m_ptyFolder, m_ptyNumber, m_ptySettings.text(), &why)) {
        Q_EMIT notice(why);
        ok = false;
    }
    return ok;
}

Reply EmulatorServer::execute(const QByteArray &name, const QList<QByteArray> &args)
{
    const Reply reply = m_model.execute(name, args);
    if (m_model.takeChanged())
        saveNow();
    return reply;
}

bool EmulatorServer::saveNow(QString *error)
{
    if (!m_state)
        return true;
    QString why;
    bool ok = true;
    const QJsonObject record = m_delta.take(m_model.memory());
    if (m_snapshotDue || (!record.isEmpty() && !m_state->append(record, &why))) {
        // The log cannot take the change (or could not before): the whole
        // memory goes into a new snapshot instead.
        ok = writeSnapshot(&why);
        m_snapshotDue = !ok;
    } else if (m_state->logBytes() > qMax(MinLogBytes, 2 * m_state->snapshotBytes())) {
        // Folding the log in once it outgrows the snapshot keeps the cost
        // of a command, averaged, independent of the journal's size.
        ok = writeSnapshot(&why);
        m_snapshotDue = !ok;
    }
    if (ok)
        return true;
    Q_EMIT notice(QStringLiteral("cannot save the state to %1: %2").arg(m_state->path(), why));
    if (error)
        *error = why;
    return false;
}

bool EmulatorServer::writeSnapshot(QString *error)
{
    const PrinterMemory &m = m_model.memory();
    const auto &entries = m.journal.entries();
    return m_state->save(MemoryCodec::fieldsJson(m), entries.size(),
                         [&entries](qsizetype i) { return MemoryCodec::entryJson(entries[i]); }, error);
}

bool EmulatorServer::compactNow(QString *error)
{
    if (!m_state)
        return true;
    QString why;
    m_delta.reset(m_model.memory());
    m_snapshotDue = !writeSnapshot(&why);
    if (!m_snapshotDue)
        return true;
    Q_EMIT notice(QStringLiteral("cannot save the state to %1: %2").arg(m_state->path(), why));
    if (error)
        *error = why;
    return false;
}
