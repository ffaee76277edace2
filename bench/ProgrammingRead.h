// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "printer/KelvoFPControl.h"

// The reads of the program's "Lettura dati da stampante", as the benchmarks
// time them: the probe, VAT, departments, cards, tickets, flags and
// parameters up to NON PREVISTO, the header, the logo parameters, the PS2
// keyboard, the promotions, the cash rows with their preset amounts.
// Returns the number of calls made.
inline int programmingRead(KelvoFPControl &c, int16_t departments = 40)
{
    int calls = 0;
    auto call = [&calls](int16_t result) {
        ++calls;
        return result;
    };
    call(c.ReadDateTime());
    for (int16_t i = 1; i <= 4; ++i)
        call(c.ReadIva(i));
    for (int16_t i = 1; i <= departments; ++i)
        call(c.ReadReparto(i));
    for (int16_t i = 1; i <= 10; ++i)
        call(c.ReadCarta(i));
    for (int16_t i = 1; i <= 10; ++i)
        call(c.ReadTicket(i));
    for (int16_t i = 1; i <= 99; ++i)
        if (call(c.ReadFlag(i)) == -1 && c.ErrorCode() == 16)
            break;
    for (int16_t i = 1; i <= 99; ++i)
        if (call(c.ReadParam(i)) == -1 && c.ErrorCode() == 16)
            break;
    for (int16_t i = 1; i <= 6; ++i) {
        call(c.ReadHeaderLine(i));
        call(c.ReadHeaderStyle(i));
    }
    for (int16_t p : {int16_t(9), int16_t(10)})
        call(c.ReadParam(p));
    for (int16_t i = 0; i <= 255; ++i)
        call(c.ReadPS2(i));
    for (int16_t i = 1; i <= 100; ++i)
        call(c.ReadPromo(i));
    for (int16_t i = 1; i <= 5; ++i)
        if (call(c.ReadContante(i)) == 0)
            call(c.ReadContantePredefinito(i));
    return calls;
}
