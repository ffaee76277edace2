// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <cstdint>
#include <optional>

// The texts in which the program speaks of the control's results and of the
// printer's state.
namespace ResultTexts {

// Message for a control result 1..9; empty for any other value.
QString resultMessage(int16_t result);
// Detail text of ErrorCode 1..31 with its leading blank; empty otherwise.
QString errorDetail(int16_t errorCode);
// "Errore del registratore di cassa:" followed by the detail (alone when unknown).
QString printerRefusal(int16_t errorCode);

enum class StateColour { Black, Red, Blue };
struct StateText
{
    QString text;
    StateColour colour;
};

// One digit of PrinterStatus: group 0 paper, 1 journal, 2 drawer, 3 receipt.
StateText printerStatusDigit(int group, int digit);
// DgfeState of ReadDgfeStatus; nothing for a value outside the table.
std::optional<StateText> dgfeState(int state);

}
