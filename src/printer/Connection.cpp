// SPDX-License-Identifier: GPL-3.0-or-later
#include "Connection.h"

#include "KelvoFPControl.h"

int16_t OpenPort()
{
    if (gFPControl->UseTcp() != 1) {
        gFPControl->OpenComPort();
        return IsPortOpen() ? 0 : -1;
    }
    return gFPControl->OpenTcp() != 0 ? -1 : 0;
}

int16_t ClosePort()
{
    if (gFPControl->UseTcp() != 1)
        gFPControl->CloseComPort();
    else
        gFPControl->CloseTcp();
    return 0;
}

bool IsPortOpen()
{
    if (gFPControl->UseTcp() != 1)
        return gFPControl->IsComPortOpen();
    int32_t state = 0; // the control writes it; nobody looks at it
    return gFPControl->IsTcpOpen(state);
}
