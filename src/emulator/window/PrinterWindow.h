// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "CustomerDisplay.h"
#include "WindowSettings.h"
#include "emulator/FaultSwitches.h"

#include <QMainWindow>
#include <QStringList>
#include <memory>

class EmulatorServer;
class PaperRollView;
class QAbstractButton;
class QCheckBox;
class QComboBox;
class QDockWidget;
class QLabel;
class QPlainTextEdit;
class QSpinBox;
class QTimer;

// The training printer: the emulator's printer in a window. It runs the same
// EmulatorServer as fiscorda-emulator, in this process, and only looks at
// its model and turns its switches: the paper roll, the customer display,
// the state at a glance, every fault switch of the console, the traffic.
class PrinterWindow : public QMainWindow
{
    Q_OBJECT
public:
    explicit PrinterWindow(const WindowSettings &settings, QWidget *parent = nullptr);
    ~PrinterWindow() override;

    // Stops the printer and starts it again as the settings say. False when
    // it could not start as asked (the message says why).
    bool applySettings(const WindowSettings &settings);
    const WindowSettings &settings() const { return m_settings; }

    EmulatorServer *server() const { return m_server.get(); }
    PaperRollView *roll() const { return m_roll; }
    QString message() const;

    // Shows pending lines and the state now (else they come within 40 ms).
    void flush();

private:
    void buildUi();
    QWidget *buildStatePanel();
    QWidget *buildFaultPanel();
    bool startPrinter();
    void stopPrinter();
    void say(const QString &text, bool trouble);
    void refreshState();
    void refreshSwitches();
    void setTrafficShown(bool shown);
    void editSettings();
    void saveRollAs();
    void powerOffMidCommand();

    WindowSettings m_settings;
    std::unique_ptr<EmulatorServer> m_server;
    CustomerDisplay m_display;
    QStringList m_pendingRoll;
    QStringList m_pendingTraffic;
    bool m_displayChanged = true;
    bool m_powerOffArmed = false;

    PaperRollView *m_roll = nullptr;
    QLabel *m_message = nullptr;
    QLabel *m_visore = nullptr;
    QHash<QString, QLabel *> m_state;
    QCheckBox *m_paperOut = nullptr;
    QCheckBox *m_offline = nullptr;
    QCheckBox *m_powerOff = nullptr;
    QComboBox *m_journal = nullptr;
    QSpinBox *m_slow = nullptr;
    QList<QPair<FaultSwitches::Wire, QCheckBox *>> m_wire;
    QDockWidget *m_trafficDock = nullptr;
    QPlainTextEdit *m_traffic = nullptr;
    QTimer *m_flushTimer = nullptr;
};
