// SPDX-License-Identifier: GPL-3.0-or-later
#include "LineSettings.h"

#include <QStringList>
#include <termios.h>

namespace {

struct Speed
{
    int bps;
    speed_t code;
};

constexpr Speed Speeds[] = {
    {1200, B1200},     {2400, B2400},     {4800, B4800},     {9600, B9600},     {19200, B19200},
    {38400, B38400},   {57600, B57600},   {115200, B115200}, {230400, B230400},
};

} // namespace

std::optional<LineSettings> LineSettings::parse(const QString &text)
{
    const QStringList parts = text.trimmed().split(QLatin1Char(','));
    if (parts.size() != 4)
        return std::nullopt;
    LineSettings s;
    bool ok = false;
    s.speed = parts[0].trimmed().toInt(&ok);
    if (!ok)
        return std::nullopt;
    bool known = false;
    for (const Speed &sp : Speeds)
        known = known || sp.bps == s.speed;
    if (!known)
        return std::nullopt;
    const QString parity = parts[1].trimmed().toLower();
    if (parity.size() != 1 || !QStringLiteral("neoms").contains(parity))
        return std::nullopt;
    s.parity = parity[0];
    s.dataBits = parts[2].trimmed().toInt(&ok);
    if (!ok || s.dataBits < 5 || s.dataBits > 8)
        return std::nullopt;
    s.stopBits = parts[3].trimmed();
    if (s.stopBits != QLatin1String("1") && s.stopBits != QLatin1String("1.5") && s.stopBits != QLatin1String("2"))
        return std::nullopt;
    return s;
}

double LineSettings::bitsPerCharacter() const
{
    const double stop = stopBits == QLatin1String("1.5") ? 1.5 : stopBits == QLatin1String("2") ? 2.0 : 1.0;
    return 1 + dataBits + (parity == QLatin1Char('n') ? 0 : 1) + stop;
}

qint64 LineSettings::characterTimeNs() const
{
    return speed > 0 ? qint64(bitsPerCharacter() * 1e9 / speed + 0.5) : 0;
}

QString LineSettings::text() const
{
    return QStringLiteral("%1,%2,%3,%4").arg(speed).arg(parity).arg(dataBits).arg(stopBits);
}

std::optional<LineSettings> LineSettings::fromTermios(const termios &t)
{
    LineSettings s;
    const speed_t code = cfgetospeed(&t);
    s.speed = 0;
    for (const Speed &sp : Speeds)
        if (sp.code == code)
            s.speed = sp.bps;
    if (s.speed == 0)
        return std::nullopt;
    if (!(t.c_cflag & PARENB))
        s.parity = QLatin1Char('n');
#ifdef CMSPAR
    else if (t.c_cflag & CMSPAR)
        s.parity = (t.c_cflag & PARODD) ? QLatin1Char('m') : QLatin1Char('s');
#endif
    else
        s.parity = (t.c_cflag & PARODD) ? QLatin1Char('o') : QLatin1Char('e');
    switch (t.c_cflag & CSIZE) {
    case CS5:
        s.dataBits = 5;
        break;
    case CS6:
        s.dataBits = 6;
        break;
    case CS7:
        s.dataBits = 7;
        break;
    default:
        s.dataBits = 8;
        break;
    }
    if (t.c_cflag & CSTOPB)
        s.stopBits = s.dataBits == 5 ? QStringLiteral("1.5") : QStringLiteral("2");
    else
        s.stopBits = QStringLiteral("1");
    return s;
}

bool LineSettings::applyTo(termios &t) const
{
    cfmakeraw(&t);
    speed_t code = B0;
    for (const Speed &sp : Speeds)
        if (sp.bps == speed)
            code = sp.code;
    if (code == B0 || cfsetispeed(&t, code) != 0 || cfsetospeed(&t, code) != 0)
        return false;
    t.c_cflag &= ~(CSIZE | PARENB | PARODD | CSTOPB);
#ifdef CMSPAR
    t.c_cflag &= ~CMSPAR;
#endif
    t.c_cflag |= CREAD | CLOCAL;
    t.c_cflag |= dataBits == 5 ? CS5 : dataBits == 6 ? CS6 : dataBits == 7 ? CS7 : CS8;
    const char p = parity.toLatin1();
    if (p != 'n')
        t.c_cflag |= PARENB;
    if (p == 'o' || p == 'm')
        t.c_cflag |= PARODD;
#ifdef CMSPAR
    if (p == 'm' || p == 's')
        t.c_cflag |= CMSPAR;
#endif
    if (stopBits != QLatin1String("1"))
        t.c_cflag |= CSTOPB;
    t.c_cc[VMIN] = 1;
    t.c_cc[VTIME] = 0;
    return true;
}

bool LineSettings::hears(const LineSettings &terminal) const
{
    return speed == terminal.speed && (stopBits == QLatin1String("1")) == (terminal.stopBits == QLatin1String("1"));
}
