// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QSerialPort>
#include <QString>
#include <optional>

// The serial line as the control's ComPort and ComSettings describe it.
namespace SerialLine {

struct Settings
{
    qint32 speed = 9600;
    QSerialPort::Parity parity = QSerialPort::NoParity;
    QSerialPort::DataBits dataBits = QSerialPort::Data8;
    QSerialPort::StopBits stopBits = QSerialPort::OneStop;
};

// "speed,parity,data bits,stop bits", e.g. "9600,n,8,1": speed a positive
// integer, parity one of n e o m s, data bits 5..8, stop bits 1, 1.5 or 2.
// Anything else gives nothing.
std::optional<Settings> parse(const QString &text);

// The device of port n: a link or device named COMn in the program's folder
// when there is one, else /dev/ttyS(n-1).
QString devicePath(int comPort);

// Puts the settings on an open port; false when the line refuses one.
bool apply(QSerialPort &port, const Settings &settings);

}
