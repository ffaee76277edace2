// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QHostAddress>
#include <QString>

// What a printer is and how the emulator offers it: identity, table sizes,
// transports and files. Filled from the command line (EmulatorOptions) or by
// a test; every field has a working default.
struct EmulatorConfig
{
    enum class Model { KX90 = 0, KX90II = 1, KX81 = 2 };

    Model model = Model::KX90;
    QString serial;              // ten characters; empty: the model's default
    QString firmware;            // "major.minor"; empty: the model's default
    QString fiscalMemoryVersion = QStringLiteral("0012");
    int resets = 0;              // closures made before this fiscal memory's first record
    int departments = 40;        // 1..999
    int flags = 90;              // section 14: 1..99
    int params = 90;             // section 15: 1..99
    int journalKb = 1024;        // capacity of the electronic journal

    bool tcp = true;
    QHostAddress tcpAddress = QHostAddress(QHostAddress::LocalHost);
    quint16 tcpPort = 4660;

    QString ptyFolder;           // empty: no pseudo-terminal
    int comNumber = 1;
    QString lineSettings = QStringLiteral("9600,n,8,1");
    bool realLineSpeed = false;  // the pseudo-terminal paced at the line speed

    QString statePath;           // empty: the memory lives only as long as the process
    QString paperPath;           // empty: nothing is written
    QString trafficPath;         // empty: no traffic log

    // Derived identity.
    static QString modelName(Model m);             // "KX90", "KX90 II", "KX81"
    static QString serialPrefix(Model m);          // "QN", "QM", "QO"
    QString effectiveSerial() const;
    QString effectiveFirmware() const;
    int firmwareMajor() const;
    // A KX90 below firmware 2 prints 27-character header lines and loads
    // logos only through LoadLogoFile.
    bool oldFirmware() const;
    int headerWidth() const { return oldFirmware() ? 27 : 40; }

    // Empty when the configuration can be used, else why not.
    QString validate() const;
};
