// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "PrinterMemory.h"

#include <QJsonObject>

// The printer's memory as JSON, for the state file. Reading is forgiving
// field by field: a missing or mistyped value keeps the value of the memory
// it reads into, so that an older or hand-edited file still loads.
namespace MemoryCodec {
QJsonObject toJson(const PrinterMemory &memory);
// All but the journal's documents (its number and condition stay), and one
// document: the parts the state file's log writes separately.
// Every member but the journal's documents; without the fiscal memory's
// closures when `withClosures` is false (the state log keeps those apart).
QJsonObject fieldsJson(const PrinterMemory &memory, bool withClosures = true);
QJsonObject closureJson(const ClosureRecord &closure);
QJsonObject entryJson(const JournalEntry &entry);
void fromJson(const QJsonObject &json, PrinterMemory &memory);
constexpr int FormatVersion = 1;
}
