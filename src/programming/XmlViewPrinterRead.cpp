// SPDX-License-Identifier: GPL-3.0-or-later
#include "XmlViewPrinterRead.h"

#include "ProgrammingTables.h"
#include "XmlViewTables.h"
#include "printer/KelvoFPControl.h"
#include "ui/ReportResult.h"

namespace XmlViewPrinterRead {

namespace {

KelvoFPControl &fp()
{
    return *gFPControl;
}

QString text(int64_t v)
{
    return CellText(v);
}

} // namespace

void LoadIvaFromPrinter(XmlViewTables &t)
{
    ReadTableIntoGrid(fp(), Table(TableId::Iva), t.gridIva);
}

void LoadRepFromPrinter(XmlViewTables &t)
{
    ReadTableIntoGrid(fp(), Table(TableId::Reparti), t.gridRep);
}

void LoadCarteFromPrinter(XmlViewTables &t)
{
    ReadTableIntoGrid(fp(), Table(TableId::CarteCredito), t.gridCarteCredito);
}

void LoadTicketFromPrinter(XmlViewTables &t)
{
    ReadTableIntoGrid(fp(), Table(TableId::Ticket), t.gridTicket);
}

void LoadPS2FromPrinter(XmlViewTables &t)
{
    ReadTableIntoGrid(fp(), Table(TableId::PS2), t.gridPS2);
}

void LoadPromoFromPrinter(XmlViewTables &t)
{
    ReadTableIntoGrid(fp(), Table(TableId::PromoTable), t.gridPromoTable);
}

void LoadContantiFromPrinter(XmlViewTables &t)
{
    // Only complete entries: a cash row whose preset amount cannot be read
    // gets no row at all.
    ReadTableIntoGrid(fp(), Table(TableId::ContantiDesc), t.gridContantiDesc);
}

FlagRead ReadOneFlag(XmlViewTables &t, int16_t section, int16_t n)
{
    FlagRead read;
    if (fp().Busy()) {
        read.result = 9;
        return read;
    }
    ProgrammingGrid &g = t.gridFlag;
    int16_t number = n;
    if (section == 14) {
        g.addRow();
        read.result = fp().ReadFlag(number);
    } else {
        read.result = fp().ReadParam(number);
        g.addRow();
    }
    if (read.result != 0) {
        if (read.result == -1)
            read.errorCode = fp().ErrorCode();
        return read;
    }
    const int row = g.rows() - 1;
    g.setRow(row, {text(section), text(n), text(section == 14 ? fp().FlagValue() : fp().ParamValue())});
    ++t.flagRow;
    return read;
}

void LoadFlagFromPrinter(XmlViewTables &t)
{
    t.gridFlag.clearRows();
    t.flagRow = 1;
    for (int16_t section : {int16_t(14), int16_t(15)}) {
        // " NON PREVISTO." ends a section: the printer has no more numbers.
        for (int16_t n = 1; n <= 99; ++n) {
            const FlagRead read = ReadOneFlag(t, section, n);
            if (EndsFlagSection(read.result, read.errorCode))
                break;
        }
    }
}

void LoadIntFromPrinter(XmlViewTables &t)
{
    ProgrammingGrid &g = t.gridRigaInt;
    int16_t result = 0;
    for (int16_t n = 1; n <= 6 && result == 0 && !fp().Busy(); ++n) {
        int16_t index = n;
        result = fp().ReadHeaderLine(index);
        if (result != 0)
            break;
        const QString line = fp().HeaderLineText();
        if (!line.trimmed().isEmpty()) {
            g.setText(n, 0, text(n));
            g.setText(n, 1, line);
        }
        if (fp().Busy())
            continue;
        index = n;
        // A style that cannot be read leaves the row's style cells blank.
        if (fp().ReadHeaderStyle(index) != 0 || g.isBlank(n, 1))
            continue;
        const QString content = g.text(n, 1);
        const QString mark = CentreMark(content);
        const int style = fp().HeaderStyle() - 1;
        g.setText(n, 3, text(style == 0 && !mark.isEmpty() ? 4 : style));
        if (style >= 0 && style <= 3)
            g.setText(n, 2, HeaderStyleWord(style, mark).value_or(QString()));
    }
}

void LoadLogoFromPrinter(XmlViewTables &t)
{
    t.logoTesta = 0;
    t.logoCoda = 0;
    if (fp().Busy())
        return;
    for (int16_t parameter : {int16_t(9), int16_t(10)}) {
        int16_t number = parameter;
        int16_t result = fp().ReadParam(number);
        if (result == 0)
            (parameter == 9 ? t.logoTesta : t.logoCoda) = fp().ParamValue();
        else
            ReportResult(result);
    }
}

} // namespace XmlViewPrinterRead
