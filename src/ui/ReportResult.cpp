// SPDX-License-Identifier: GPL-3.0-or-later
#include "ReportResult.h"

#include "MsgBox.h"
#include "printer/KelvoFPControl.h"
#include "printer/ResultTexts.h"

void ReportResult(int16_t &result, const QVariant &, const QString &extraText)
{
    QString message;
    if (result == -1) {
        message = ResultTexts::printerRefusal(gFPControl->ErrorCode());
    } else if (result >= 1 && result <= 9) {
        message = ResultTexts::resultMessage(result);
    } else if (result == 0) {
        // Some InfoCode values (1171 ... 1183) were once told apart here; all
        // of them end the same way: nothing is shown. The read stays, since it
        // is a real call into the control.
        (void)gFPControl->InfoCode();
        return;
    }
    // An unknown result shows a box with an empty line: kept on purpose.
    MsgBox::show(message + QStringLiteral("\r\n") + extraText);
}

void ReportResult(int16_t &&result)
{
    int16_t r = result;
    ReportResult(r);
}
