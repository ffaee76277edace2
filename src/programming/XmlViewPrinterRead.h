// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

struct XmlViewTables;

// The readers of "Lettura dati da stampante": one exchange with the printer
// per row, through gFPControl. A failed read leaves its row blank and is not
// reported; a busy control ends the table at once, in silence. Only the logo
// parameters report their failures.
namespace XmlViewPrinterRead {

void LoadIvaFromPrinter(XmlViewTables &t);
void LoadRepFromPrinter(XmlViewTables &t);     // 1 to gMaxNReparti
void LoadCarteFromPrinter(XmlViewTables &t);
void LoadTicketFromPrinter(XmlViewTables &t);
void LoadFlagFromPrinter(XmlViewTables &t);    // each section up to " NON PREVISTO."
void LoadIntFromPrinter(XmlViewTables &t);
void LoadLogoFromPrinter(XmlViewTables &t);
void LoadPS2FromPrinter(XmlViewTables &t);
void LoadPromoFromPrinter(XmlViewTables &t);
void LoadContantiFromPrinter(XmlViewTables &t); // complete rows only

// One flag (section 14) or parameter (15) into a new row of gridFlag;
// the result, and the printer's ErrorCode when it refused (-1).
struct FlagRead
{
    int16_t result = 0;
    int16_t errorCode = 0;
};
FlagRead ReadOneFlag(XmlViewTables &t, int16_t section, int16_t n);

} // namespace XmlViewPrinterRead
