// SPDX-License-Identifier: GPL-3.0-or-later
#include "PtyPort.h"

#include "LineTimer.h"

#include <QDir>
#include <QFileInfo>
#include <QSocketNotifier>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <termios.h>
#include <unistd.h>

PtyPort::~PtyPort()
{
    close();
    if (!m_link.isEmpty() && QFileInfo(m_link).isSymLink() && QFileInfo(m_link).symLinkTarget() == m_device)
        QFile::remove(m_link);
}

bool PtyPort::open(const QString &folder, int comNumber, const LineSettings &own, QString *error)
{
    close();
    auto fail = [&](const QString &why) {
        if (error)
            *error = why;
        close();
        return false;
    };
    m_own = own;
    m_master = posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK);
    if (m_master < 0 || grantpt(m_master) != 0 || unlockpt(m_master) != 0)
        return fail(QStringLiteral("cannot create a pseudo-terminal: %1").arg(QString::fromLocal8Bit(strerror(errno))));
    const char *name = ptsname(m_master);
    if (!name)
        return fail(QStringLiteral("cannot name the pseudo-terminal"));
    m_device = QString::fromLocal8Bit(name);
    m_slave = ::open(name, O_RDWR | O_NOCTTY | O_NONBLOCK);
    if (m_slave < 0)
        return fail(QStringLiteral("cannot open %1: %2").arg(m_device, QString::fromLocal8Bit(strerror(errno))));
    termios t{};
    if (tcgetattr(m_slave, &t) != 0 || !own.applyTo(t) || tcsetattr(m_slave, TCSANOW, &t) != 0)
        return fail(QStringLiteral("cannot set %1 on %2").arg(own.text(), m_device));

    const QString link = QDir(folder).absoluteFilePath(QStringLiteral("COM%1").arg(comNumber));
    const QFileInfo existing(link);
    if (existing.exists() || existing.isSymLink()) {
        if (!existing.isSymLink())
            return fail(QStringLiteral("%1 exists and is not a link; it is left alone").arg(link));
        QFile::remove(link);
    }
    if (!QFile::link(m_device, link))
        return fail(QStringLiteral("cannot create the link %1 to %2").arg(link, m_device));
    m_link = link;

    m_reader = new QSocketNotifier(m_master, QSocketNotifier::Read, this);
    connect(m_reader, &QSocketNotifier::activated, this, &PtyPort::onReadable);
    m_writer = new QSocketNotifier(m_master, QSocketNotifier::Write, this);
    m_writer->setEnabled(false);
    connect(m_writer, &QSocketNotifier::activated, this, &PtyPort::onWritable);

    const qint64 charNs = m_paced ? own.characterTimeNs() : 0;
    m_in.setCharacterTime(charNs);
    m_out.setCharacterTime(charNs);
    if (m_paced && !m_inTimer) {
        m_inTimer = new LineTimer(this);
        m_outTimer = new LineTimer(this);
        connect(m_inTimer, &LineTimer::timeout, this, &PtyPort::deliverIn);
        connect(m_outTimer, &LineTimer::timeout, this, &PtyPort::deliverOut);
    }
    m_clock.start();
    return true;
}

void PtyPort::close()
{
    delete m_reader;
    m_reader = nullptr;
    delete m_writer;
    m_writer = nullptr;
    m_pending.clear();
    m_in.clear();
    m_out.clear();
    if (m_inTimer) {
        m_inTimer->stop();
        m_outTimer->stop();
    }
    if (m_slave >= 0)
        ::close(m_slave);
    if (m_master >= 0)
        ::close(m_master);
    m_slave = m_master = -1;
}

std::optional<LineSettings> PtyPort::terminalSettings() const
{
    termios t{};
    if (m_slave < 0 || tcgetattr(m_slave, &t) != 0)
        return std::nullopt;
    return LineSettings::fromTermios(t);
}

void PtyPort::onReadable()
{
    char buf[4096];
    QByteArray got;
    for (;;) {
        const ssize_t n = ::read(m_master, buf, sizeof buf);
        if (n > 0) {
            got.append(buf, n);
            continue;
        }
        if (n < 0 && errno == EINTR)
            continue;
        break;
    }
    if (got.isEmpty())
        return;
    const auto settings = terminalSettings();
    if (settings && m_own.hears(*settings))
        hear(got);
    else
        Q_EMIT ignored(got, settings ? settings->text() : QStringLiteral("unknown"));
}

void PtyPort::hear(const QByteArray &bytes)
{
    if (!m_paced) {
        Q_EMIT received(bytes);
        return;
    }
    m_in.push(bytes, m_clock.nsecsElapsed());
    schedule(m_inTimer, m_in);
}

void PtyPort::write(const QByteArray &bytes)
{
    if (m_master < 0)
        return;
    if (m_paced) {
        m_out.push(bytes, m_clock.nsecsElapsed());
        schedule(m_outTimer, m_out);
        return;
    }
    m_pending += bytes;
    onWritable();
}

void PtyPort::deliverIn()
{
    const QByteArray bytes = m_in.take(m_clock.nsecsElapsed());
    schedule(m_inTimer, m_in);
    if (!bytes.isEmpty())
        Q_EMIT received(bytes);
}

void PtyPort::deliverOut()
{
    const QByteArray bytes = m_out.take(m_clock.nsecsElapsed());
    schedule(m_outTimer, m_out);
    if (bytes.isEmpty() || m_master < 0)
        return;
    m_pending += bytes;
    onWritable();
}

void PtyPort::schedule(LineTimer *timer, const LinePacer &pacer)
{
    const qint64 now = m_clock.nsecsElapsed();
    const qint64 wake = pacer.nextWake(now);
    if (wake < 0) {
        timer->stop();
        return;
    }
    // To the nanosecond: a byte is never handed on early, and at 115200
    // baud not a millisecond late either.
    timer->startIn(wake - now);
}

void PtyPort::onWritable()
{
    while (!m_pending.isEmpty()) {
        const ssize_t n = ::write(m_master, m_pending.constData(), size_t(m_pending.size()));
        if (n > 0) {
            m_pending.remove(0, n);
            continue;
        }
        if (n < 0 && errno == EINTR)
            continue;
        break;
    }
    if (m_writer)
        m_writer->setEnabled(!m_pending.isEmpty());
}
