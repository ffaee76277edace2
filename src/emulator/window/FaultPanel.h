// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "emulator/FaultSwitches.h"

#include <QGroupBox>
#include <QList>
#include <QPair>
#include <functional>

class EmulatorServer;
class QCheckBox;
class QComboBox;
class QSpinBox;

// Every fault switch of the emulator's console, as toggles and one-shot
// buttons, each with a tooltip that says what the PC will see. The switches
// are thrown through apply, which runs them on the printer's thread.
class FaultPanel : public QGroupBox
{
    Q_OBJECT
public:
    using Apply = std::function<void(const std::function<void(EmulatorServer &)> &)>;
    FaultPanel(Apply apply, std::function<void()> armPowerOff, QWidget *parent = nullptr);

    // The switches as the printer has them (read on the printer's thread),
    // and shown.
    struct State
    {
        bool paperOut = false, offline = false, powered = true;
        QString journal;
        QList<int> wire;
        int slowMs = 0;
    };
    State read(EmulatorServer &printer) const;
    void show(const State &state);

Q_SIGNALS:
    void changed();

private:
    Apply m_apply;
    QCheckBox *m_paperOut = nullptr;
    QCheckBox *m_offline = nullptr;
    QCheckBox *m_powerOff = nullptr;
    QComboBox *m_journal = nullptr;
    QSpinBox *m_slow = nullptr;
    QList<QPair<FaultSwitches::Wire, QCheckBox *>> m_wire; // made once, read on both threads
};
