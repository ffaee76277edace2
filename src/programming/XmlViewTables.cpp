// SPDX-License-Identifier: GPL-3.0-or-later
#include "XmlViewTables.h"

#include "ProgrammingTables.h"

void XmlViewTables::SetupGrids()
{
    SetupGrid(gridRigaInt, Table(TableId::Intestazione));
    gridRigaInt.setRows(1 + kHeaderLines);
    SetupGrid(gridIva, Table(TableId::Iva));
    SetupGrid(gridRep, Table(TableId::Reparti));
    SetupGrid(gridCarteCredito, Table(TableId::CarteCredito));
    SetupGrid(gridTicket, Table(TableId::Ticket));
    SetupGrid(gridFlag, Table(TableId::Flag));
    SetupGrid(gridPS2, Table(TableId::PS2));
    SetupGrid(gridPromoTable, Table(TableId::PromoTable));
    SetupGrid(gridContantiDesc, Table(TableId::ContantiDesc));
}
