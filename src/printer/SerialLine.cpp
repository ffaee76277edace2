// SPDX-License-Identifier: GPL-3.0-or-later
#include "SerialLine.h"

#include "settings/ProgramFolder.h"

#include <QDir>
#include <QFileInfo>
#include <QStringList>

namespace SerialLine {

std::optional<Settings> parse(const QString &text)
{
    const QStringList parts = text.split(QLatin1Char(','));
    if (parts.size() != 4)
        return std::nullopt;

    Settings s;
    bool ok = false;
    s.speed = parts[0].trimmed().toInt(&ok);
    if (!ok || s.speed <= 0)
        return std::nullopt;

    const QString parity = parts[1].trimmed().toLower();
    if (parity == QLatin1String("n"))
        s.parity = QSerialPort::NoParity;
    else if (parity == QLatin1String("e"))
        s.parity = QSerialPort::EvenParity;
    else if (parity == QLatin1String("o"))
        s.parity = QSerialPort::OddParity;
    else if (parity == QLatin1String("m"))
        s.parity = QSerialPort::MarkParity;
    else if (parity == QLatin1String("s"))
        s.parity = QSerialPort::SpaceParity;
    else
        return std::nullopt;

    const int dataBits = parts[2].trimmed().toInt(&ok);
    if (!ok || dataBits < 5 || dataBits > 8)
        return std::nullopt;
    s.dataBits = QSerialPort::DataBits(dataBits);

    const QString stop = parts[3].trimmed();
    if (stop == QLatin1String("1"))
        s.stopBits = QSerialPort::OneStop;
    else if (stop == QLatin1String("1.5"))
        s.stopBits = QSerialPort::OneAndHalfStop;
    else if (stop == QLatin1String("2"))
        s.stopBits = QSerialPort::TwoStop;
    else
        return std::nullopt;
    return s;
}

QString devicePath(int comPort)
{
    const QString local = QDir(ProgramFolder()).filePath(QStringLiteral("COM%1").arg(comPort));
    // A link called COMn is the technician's choice and always wins, even
    // when its target is gone: then the port fails to open, as it should.
    const QFileInfo info(local);
    if (info.isSymLink() || info.exists())
        return local;
    return QStringLiteral("/dev/ttyS%1").arg(comPort - 1);
}

bool apply(QSerialPort &port, const Settings &settings)
{
    return port.setBaudRate(settings.speed) && port.setParity(settings.parity)
        && port.setDataBits(settings.dataBits) && port.setStopBits(settings.stopBits)
        && port.setFlowControl(QSerialPort::NoFlowControl);
}

}
