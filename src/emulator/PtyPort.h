// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "LinePacer.h"
#include "LineSettings.h"

#include <QElapsedTimer>
#include <QObject>

class QSocketNotifier;
class LineTimer;

// The printer's serial port: a pseudo-terminal whose terminal side is linked
// as COMn in a folder, so that a program opens it as it would a real port.
// The printer hears only what comes at its own line settings: before each
// read it looks at the settings the program put on the terminal, and bytes
// that came at other settings are ignored (a printer at another speed would
// only see noise). Of the settings a pseudo-terminal keeps the speed and the
// stop bits (see LineSettings::hears). close() hangs the line up, as a
// printer switched off.
//
// Paced, the port moves bytes no faster than its own line speed, both ways,
// as a real serial line does; otherwise a pseudo-terminal's bytes go at once.
class PtyPort : public QObject
{
    Q_OBJECT
public:
    explicit PtyPort(QObject *parent = nullptr) : QObject(parent) {}
    ~PtyPort() override;

    bool open(const QString &folder, int comNumber, const LineSettings &own, QString *error);
    void close();
    bool isOpen() const { return m_master >= 0; }
    QString linkPath() const { return m_link; }
    QString devicePath() const { return m_device; }
    LineSettings ownSettings() const { return m_own; }
    void setPaced(bool paced) { m_paced = paced; }
    bool isPaced() const { return m_paced; }

    void write(const QByteArray &bytes);
    // The settings the program put on the terminal, when they can be read.
    std::optional<LineSettings> terminalSettings() const;

Q_SIGNALS:
    void received(const QByteArray &bytes);
    void ignored(const QByteArray &bytes, const QString &terminalSettings);

private:
    void onReadable();
    void onWritable();
    void hear(const QByteArray &bytes);
    void deliverIn();
    void deliverOut();
    void schedule(LineTimer *timer, const LinePacer &pacer);

    int m_master = -1;
    int m_slave = -1; // held open so that the line stays up between programs
    QSocketNotifier *m_reader = nullptr;
    QSocketNotifier *m_writer = nullptr;
    QByteArray m_pending;
    LineSettings m_own;
    bool m_paced = false;
    LinePacer m_in;  // from the program to the printer
    LinePacer m_out; // from the printer to the program
    LineTimer *m_inTimer = nullptr;
    LineTimer *m_outTimer = nullptr;
    QElapsedTimer m_clock;
    QString m_link;
    QString m_device;
};
