// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

struct XmlViewTables;

// Writing the tables of the programming screen back to the printer, through
// gFPControl. Each restorer walks its grid from the first row to the last,
// skips the rows that do not qualify, ends in silence when the control is
// busy and hands back the result of its last write. A refused row is not
// reported and does not end the table.
namespace RestoreProgramming {

int16_t RestoreIva(const XmlViewTables &t);
int16_t RestoreRep(const XmlViewTables &t);   // the three prices go to 0
int16_t RestoreCarte(const XmlViewTables &t);
int16_t RestoreTicket(const XmlViewTables &t);
int16_t RestoreFlag(const XmlViewTables &t);  // only what differs is written
int16_t RestoreLogo(const XmlViewTables &t);  // the standard logos 2 to 9
int16_t RestorePS2(const XmlViewTables &t);
int16_t RestorePromo(const XmlViewTables &t); // by place in the grid
int16_t RestoreContanti(const XmlViewTables &t);
// The six header lines, then lines 98 and 99 that close the header's
// programming; a refused line is reported and ends it.
int16_t RestoreInt(const XmlViewTables &t);

// Writes a flag (section 14) or parameter (any other section) only when the
// printer holds another value.
int16_t RestoreOneFlag(int16_t section, int16_t n, int16_t value);

} // namespace RestoreProgramming
