#pragma once

#include <QApplication>
#include <QElapsedTimer>
#include <QTimer>
#include <QWidget>
#include <functional>
#include <memory>

// For a modal form that a click or a start-up opens: acts on it as soon as
// it is the active modal window. Gives up after timeoutMs, so that a form
// that never comes makes the test fail on its own checks instead of waiting.
inline void whenModal(const QString &objectName, std::function<void(QWidget *)> action, int timeoutMs = 10000)
{
    auto *timer = new QTimer;
    auto clock = std::make_shared<QElapsedTimer>();
    clock->start();
    timer->setInterval(10);
    QObject::connect(timer, &QTimer::timeout, [=] {
        QWidget *modal = QApplication::activeModalWidget();
        const bool found = modal && modal->objectName() == objectName;
        if (found || clock->hasExpired(timeoutMs)) {
            timer->stop();
            timer->deleteLater();
        }
        if (found)
            action(modal);
    });
    timer->start();
}
