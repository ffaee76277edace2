// SPDX-License-Identifier: GPL-3.0-or-later
#include "RestoreProgramming.h"

#include "ProgrammingTables.h"
#include "XmlViewTables.h"
#include "commissioning/LoghiForm.h"
#include "printer/KelvoFPControl.h"
#include "ui/MsgBox.h"
#include "ui/ReportResult.h"

#include <optional>

namespace RestoreProgramming {

namespace {

KelvoFPControl &fp()
{
    return *gFPControl;
}

std::optional<int16_t> int16At(const ProgrammingGrid &g, int row, int col)
{
    return CellInteger(g.text(row, col));
}

} // namespace

int16_t RestoreIva(const XmlViewTables &t)
{
    return WriteGridToPrinter(fp(), Table(TableId::Iva), t.gridIva);
}

int16_t RestoreRep(const XmlViewTables &t)
{
    return WriteGridToPrinter(fp(), Table(TableId::Reparti), t.gridRep);
}

int16_t RestoreCarte(const XmlViewTables &t)
{
    return WriteGridToPrinter(fp(), Table(TableId::CarteCredito), t.gridCarteCredito);
}

int16_t RestoreTicket(const XmlViewTables &t)
{
    return WriteGridToPrinter(fp(), Table(TableId::Ticket), t.gridTicket);
}

int16_t RestorePS2(const XmlViewTables &t)
{
    return WriteGridToPrinter(fp(), Table(TableId::PS2), t.gridPS2);
}

int16_t RestorePromo(const XmlViewTables &t)
{
    const ProgrammingGrid &g = t.gridPromoTable;
    int16_t last = 0;
    for (int row = 1; row < g.rows(); ++row) {
        if (fp().Busy())
            break;
        if (!g.isNumeric(row, 2) || !g.isNumeric(row, 5))
            continue;
        // The type goes out through a 16-bit number and the recall is not
        // tested by the qualifying rule. A recall that is blank or no number
        // (a file without Richiamo shows the bar code there), or a type or
        // recall beyond 16 bits, is not made up: the row is not written and
        // the printer keeps its own.
        const auto tipo = int16At(g, row, 2);
        const auto richiamo = int16At(g, row, 4);
        const auto valore = CellMoney(g.text(row, 5));
        if (!tipo || !richiamo || !valore)
            continue;
        // The promotion is the row's place in the grid, whatever column 0 says.
        last = fp().WritePromo(int16_t(row), int32_t(*tipo), *richiamo, g.text(row, 3), g.text(row, 1), *valore, 1, 1,
                               QString());
    }
    return last;
}

int16_t RestoreContanti(const XmlViewTables &t)
{
    return WriteGridToPrinter(fp(), Table(TableId::ContantiDesc), t.gridContantiDesc);
}

int16_t RestoreOneFlag(int16_t section, int16_t n, int16_t value)
{
    if (fp().Busy())
        return 0;
    int16_t number = n;
    if (section == 14) {
        int16_t result = fp().ReadFlag(number);
        if (result != 0 || fp().Busy())
            return result;
        if (fp().FlagValue() == value)
            return 0;
        number = n;
        return fp().WriteFlag(number, value);
    }
    int16_t result = fp().ReadParam(number);
    if (result != 0 || fp().Busy())
        return result;
    if (fp().ParamValue() == value)
        return 0;
    number = n;
    return fp().WriteParam(number, value);
}

int16_t RestoreFlag(const XmlViewTables &t)
{
    // Not ended by a busy control: each flag tests it for itself.
    const ProgrammingGrid &g = t.gridFlag;
    int16_t last = 0;
    for (int row = 1; row < g.rows(); ++row) {
        const auto section = int16At(g, row, 0);
        const auto n = int16At(g, row, 1);
        const auto value = int16At(g, row, 2);
        if (section && n && value)
            last = RestoreOneFlag(*section, *n, *value);
    }
    return last;
}

int16_t RestoreLogo(const XmlViewTables &t)
{
    int16_t last = 0;
    for (const auto &[logo, parameter] : {std::pair{t.logoTesta, int16_t(9)}, std::pair{t.logoCoda, int16_t(10)}}) {
        int16_t number = parameter;
        if (IsStandardLogo(logo)) {
            QString file = StandardLogoFile(logo);
            int16_t result = 0;
            LoghiForm::SaveLogo(file, result);
            if (result == 0) {
                MsgBox::show(QStringLiteral("Programmazione intestazione scontrino ok!"));
            } else {
                MsgBox::show(QStringLiteral("Programmazione logo non riuscita!"));
                if (!fp().Busy())
                    fp().CloseRawChannel(1);
            }
            last = result;
            int16_t value = logo;
            LoghiForm::ProgFlag(number, value);
        } else {
            // Only the standard logos travel in a file: any other is cleared.
            int16_t none = 0;
            LoghiForm::ProgFlag(number, none);
        }
    }
    return last;
}

int16_t RestoreInt(const XmlViewTables &t)
{
    const ProgrammingGrid &g = t.gridRigaInt;
    int16_t result = 0;
    for (int16_t n = 1; n <= 6 && result == 0 && !fp().Busy(); ++n) {
        // An empty cell goes out too, and empties the line on the printer.
        result = fp().WriteHeaderLine(n, g.text(n, 1));
        if (result != 0) {
            ReportResult(result);
            continue;
        }
        const auto style = int16At(g, n, 3);
        if (!style)
            continue; // a style that was never read is not sent
        if (fp().Busy())
            break;
        result = fp().WriteHeaderStyle(n, *style == 4 ? int16_t(1) : int16_t(*style + 1));
    }
    if (result == 0 && !fp().Busy()) {
        result = fp().WriteHeaderLine(98, QString());
        if (!fp().Busy())
            result = fp().WriteHeaderLine(99, QString());
    }
    return result;
}

} // namespace RestoreProgramming
