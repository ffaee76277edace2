#include "PtyPort.h"

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
    return true;
}

void PtyPort::close()
{
    delete m_reader;
    m_reader = nullptr;
    delete m_writer;
    m_writer = nullptr;
    m_pending.clear();
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
        Q_EMIT received(got);
    else
        Q_EMIT ignored(got, settings ? settings->text() : QStringLiteral("unknown"));
}

void PtyPort::write(const QByteArray &bytes)
{
    if (m_master < 0)
        return;
    m_pending += bytes;
    onWritable();
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
