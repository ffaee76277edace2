// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QMessageBox>
#include <QString>

class QWidget;

// Every message box of the program goes through here: a real QMessageBox
// with the exact text, buttons and icon, under the application's title
// unless another is given. Tests switch on recording and queue the answers
// in advance; while recording no box is shown, each one is recorded and
// answered from the queue (or with OK, else Yes, when nothing is queued).
class MsgBox
{
public:
    struct Shown
    {
        QString title;
        QString text;
        QMessageBox::StandardButtons buttons;
        QMessageBox::Icon icon;
    };

    static QMessageBox::StandardButton show(const QString &text,
                                            QMessageBox::StandardButtons buttons = QMessageBox::Ok,
                                            QMessageBox::Icon icon = QMessageBox::NoIcon,
                                            const QString &title = QString());

    static QString applicationTitle(); // "Fiscorda"

    // Tests
    static void startRecording();
    static void stopRecording();
    static bool recording();
    static void queueAnswer(QMessageBox::StandardButton answer);
    static QList<Shown> shown();
    static QStringList shownTexts();
    static void clearShown();
};
