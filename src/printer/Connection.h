// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

// The three connection operations; each picks the serial or the TCP members
// of the control by UseTcp. Callers close before the connection parameters
// change and open again afterwards; success is judged later, by IsPortOpen
// or by a command's result.
int16_t OpenPort();
int16_t ClosePort();
bool IsPortOpen();
