// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ArgReader.h"

#include <QByteArray>
#include <QHash>
#include <functional>

// The printer's command set: the member's name as it comes in field 0 of a
// request, and what executes it. Each command group installs its own.
using CommandHandler = std::function<Reply(ArgReader &)>;
using CommandTable = QHash<QByteArray, CommandHandler>;
