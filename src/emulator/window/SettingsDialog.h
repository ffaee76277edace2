// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "WindowSettings.h"

#include <QDialog>

class QCheckBox;
class QComboBox;
class QLineEdit;
class QSpinBox;

// The training printer's settings: model, serial number, TCP port or
// pseudo-terminal and line speed, state file.
class SettingsDialog : public QDialog
{
    Q_OBJECT
public:
    SettingsDialog(const WindowSettings &current, QWidget *parent = nullptr);
    WindowSettings settings() const;

private:
    WindowSettings m_base;
    QComboBox *m_model;
    QLineEdit *m_serial;
    QCheckBox *m_tcp;
    QSpinBox *m_port;
    QCheckBox *m_pty;
    QSpinBox *m_com;
    QComboBox *m_speed;
    QCheckBox *m_keep;
    QLineEdit *m_state;
};
