// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "emulator/EmulatorConfig.h"

#include <QString>

// What the training printer window remembers for its user between runs, in
// a settings file of its own (QSettings: ~/.config/fiscorda/fiscorda-printer.conf),
// apart from Fiscorda's Settings.xml.
struct WindowSettings
{
    EmulatorConfig::Model model = EmulatorConfig::Model::KX90;
    QString serial;                  // empty: the model's own
    bool useTcp = true;
    quint16 tcpPort = 4660;          // on 127.0.0.1
    bool usePty = false;
    int comNumber = 1;
    QString lineSettings = QStringLiteral("9600,n,8,1");
    bool keepMemory = true;          // false: the memory lives only while the window runs
    QString statePath;               // empty: beside Fiscorda, in its folder
    QString paperPath;               // empty: beside the state file

    static WindowSettings load();
    void save() const;

    // The emulator's configuration: TCP on loopback, the pseudo-terminal
    // linked as COMn in Fiscorda's folder (where Fiscorda looks for it).
    EmulatorConfig config() const;
    QString effectiveStatePath() const;
    QString effectivePaperPath() const;
};

// Writes into folder the Settings.xml that points Fiscorda at this printer
// over TCP, the one tools/run.sh writes, unless a Settings.xml is there
// already (the user's own is never touched). True when it wrote one.
bool SeedFiscordaSettings(const QString &folder, quint16 port);
