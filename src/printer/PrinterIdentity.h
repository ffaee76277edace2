// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <cstdint>

// Who the printer is. Each call asks the printer again; nothing keeps the
// answer.

// Prefix + model + the number padded to six digits; empty when the read
// failed. A busy control composes it from what the properties still hold.
QString GetMatricola();
// 0 KX90 (also for an unknown or missing serial number), 1 KX90 II, 2 KX81.
int32_t GetPrinterModel();
// "KELVO KX90", "KELVO KX90 II", "KELVO KX81"; any other index the first.
QString PrinterModelText(int32_t model);
// The firmware version text, and gFwMajor/gFwMinor from it; empty when it
// could not be read.
QString ReadFirmwareInfo();
