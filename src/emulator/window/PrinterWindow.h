// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "CustomerDisplay.h"
#include "WindowSettings.h"
#include "emulator/FaultSwitches.h"

#include "PaperRollView.h"
#include "emulator/PrinterMemory.h"

#include <QMainWindow>
#include <QMutex>
#include <QStringList>
#include <QThread>
#include <atomic>
#include <functional>
#include <memory>

class EmulatorServer;
class QAbstractButton;
class FaultPanel;
class QDockWidget;
class QLabel;
class QPlainTextEdit;
class QTimer;

// The training printer: the emulator's printer in a window. It runs the same
// EmulatorServer as fiscorda-emulator, in this process, and only looks at
// its model and turns its switches: the paper roll, the customer display,
// the state at a glance, every fault switch of the console, the traffic.
//
// The printer runs in a thread of its own, as a printer is a machine of its
// own: a long print does not stop the window, and drawing the paper does not
// slow the answers. The window touches the printer only through its thread
// (withPrinter), and the printer hands its lines over under a lock.
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

    // Runs fn on the printer's thread and waits for it; without a printer
    // (settings that cannot start one) fn is not called.
    void withPrinter(const std::function<void(EmulatorServer &)> &fn);
    bool isRunning();
    PaperRollView *roll() const { return m_roll; }
    QString message() const;

    // Shows pending lines now (else they come within 40 ms); a long backlog
    // comes in pieces.
    void flush();

private:
    void buildUi();
    QWidget *buildStatePanel();
    bool startPrinter();
    void stopPrinter();
    void say(const QString &text, bool trouble);
    struct Snapshot;
    void onPrinter(const std::function<void()> &fn);
    void refreshState();
    void applySnapshot(const Snapshot &s);
    void lineOnPaper(const QString &line);
    void setTrafficShown(bool shown);
    void editSettings();
    void saveRollAs();
    void powerOffMidCommand();

    WindowSettings m_settings;
    QThread m_thread;
    QObject *m_anchor = nullptr;             // lives on the printer's thread
    std::unique_ptr<EmulatorServer> m_server; // made, used and ended on the printer's thread
    std::atomic<bool> m_powerOffArmed = false;
    bool m_snapshotAsked = false;
    int m_generation = 0;
    static constexpr int ChunkLines = 150; // a turn of 40 ms: 3750 lines a second, more than anyone reads
    // The printer's thread only: the header's print styles as last seen.
    QList<HeaderLine> m_headerSeen;
    QHash<QString, int> m_styles;
    // Handed over from the printer's thread.
    QMutex m_mutex;
    QList<PaperRollView::Line> m_pendingRoll;
    QStringList m_pendingTraffic;
    QList<QByteArray> m_logos;

    CustomerDisplay m_display;

    PaperRollView *m_roll = nullptr;
    QLabel *m_message = nullptr;
    QLabel *m_visore = nullptr;
    QHash<QString, QLabel *> m_state;
    FaultPanel *m_faults = nullptr;
    QDockWidget *m_trafficDock = nullptr;
    QPlainTextEdit *m_traffic = nullptr;
};
