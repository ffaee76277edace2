// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "EmulatorConfig.h"

#include <QStringList>

// The emulator's command line: what printer, which transports and files,
// and which faults are on from the start (as console commands).
class EmulatorOptions
{
public:
    // Empty when the arguments (argv, program name first) are usable, else why not.
    QString parse(const QStringList &arguments);

    EmulatorConfig config;
    QStringList startCommands; // console commands of the fault options, in order
    bool verbose = false;
    bool helpRequested = false;
    bool versionRequested = false;
    QString helpText;
};
