#pragma once

#include "PrinterMemory.h"

#include <QJsonObject>

// The printer's memory as JSON, for the state file. Reading is forgiving
// field by field: a missing or mistyped value keeps the value of the memory
// it reads into, so that an older or hand-edited file still loads.
namespace MemoryCodec {
QJsonObject toJson(const PrinterMemory &memory);
void fromJson(const QJsonObject &json, PrinterMemory &memory);
constexpr int FormatVersion = 1;
}
