// SPDX-License-Identifier: GPL-3.0-or-later
#include "LineTimer.h"

#include <QSocketNotifier>

#include <sys/prctl.h>
#include <sys/timerfd.h>
#include <unistd.h>

LineTimer::LineTimer(QObject *parent) : QObject(parent)
{
    m_fd = ::timerfd_create(CLOCK_MONOTONIC, TFD_NONBLOCK | TFD_CLOEXEC);
    // The kernel may otherwise defer a wake-up by 50 µs to group it with
    // others: two of those a request are half a character at 115200 baud.
    // This is the thread's setting, so its other timers go to the point too.
    ::prctl(PR_SET_TIMERSLACK, 1UL, 0, 0, 0);
    if (m_fd >= 0) {
        m_notifier = new QSocketNotifier(m_fd, QSocketNotifier::Read, this);
        connect(m_notifier, &QSocketNotifier::activated, this, &LineTimer::onFired);
    }
}

LineTimer::~LineTimer()
{
    delete m_notifier;
    if (m_fd >= 0)
        ::close(m_fd);
}

void LineTimer::startIn(qint64 ns)
{
    m_active = true;
    if (m_fd < 0) {
        // No timerfd: the next turn of the event loop, early rather than never.
        QMetaObject::invokeMethod(this, &LineTimer::onFired, Qt::QueuedConnection);
        return;
    }
    ns = qMax<qint64>(ns, 1); // zero would disarm it
    itimerspec when{};
    when.it_value.tv_sec = time_t(ns / 1'000'000'000);
    when.it_value.tv_nsec = long(ns % 1'000'000'000);
    ::timerfd_settime(m_fd, 0, &when, nullptr);
}

void LineTimer::stop()
{
    m_active = false;
    if (m_fd >= 0) {
        itimerspec when{};
        ::timerfd_settime(m_fd, 0, &when, nullptr);
        uint64_t expirations = 0;
        [[maybe_unused]] const auto n = ::read(m_fd, &expirations, sizeof expirations);
    }
}

void LineTimer::onFired()
{
    if (m_fd >= 0) {
        uint64_t expirations = 0;
        if (::read(m_fd, &expirations, sizeof expirations) != sizeof expirations)
            return; // disarmed or re-armed since
    }
    if (!m_active)
        return;
    m_active = false;
    Q_EMIT timeout();
}
