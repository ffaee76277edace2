// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ProgrammingGrid.h"

#include <cstdint>

// The programming of one printer as the programming screen holds it: the
// nine grids and the two logo numbers. A reading from the printer fills it,
// a file keeps it, a restore writes it back.
struct XmlViewTables
{
    ProgrammingGrid gridRigaInt;      // header lines, 6 fixed rows
    ProgrammingGrid gridIva;
    ProgrammingGrid gridRep;
    ProgrammingGrid gridCarteCredito;
    ProgrammingGrid gridTicket;
    ProgrammingGrid gridFlag;         // sections 14 and 15 in one grid
    ProgrammingGrid gridPS2;
    ProgrammingGrid gridPromoTable;
    ProgrammingGrid gridContantiDesc;

    int16_t logoTesta = 0; // parameter 9
    int16_t logoCoda = 0;  // parameter 10
    int16_t flagRow = 1;   // next row of gridFlag to fill

    // Columns, headers, widths and alignments of every grid; only the
    // header rows are left, and the six blank header lines.
    void SetupGrids();
};
