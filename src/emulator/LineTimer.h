// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>

class QSocketNotifier;

// A one-shot timer of nanosecond resolution for pacing a serial line. A
// QTimer counts whole milliseconds, longer than ten characters at 115200
// baud; this one is a Linux timerfd watched by the event loop, so it wakes
// the thread at the moment asked (give or take the system's wake-up
// latency) without spinning.
class LineTimer : public QObject
{
    Q_OBJECT
public:
    explicit LineTimer(QObject *parent = nullptr);
    ~LineTimer() override;

    // Fires once, ns nanoseconds from now (at once for 0 or less).
    void startIn(qint64 ns);
    void stop();
    bool isActive() const { return m_active; }

Q_SIGNALS:
    void timeout();

private:
    void onFired();

    int m_fd = -1;
    QSocketNotifier *m_notifier = nullptr;
    bool m_active = false;
};
