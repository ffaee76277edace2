// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>

class QLabel;
class QProgressBar;
class QTimer;

// "Ricerca stampante...": a sign of life while the printer is searched for.
// A full bar stands for 20 seconds.
class SplashForm : public QDialog
{
    Q_OBJECT
public:
    explicit SplashForm(QWidget *parent = nullptr);

    QLabel *lblMessaggio;
    QProgressBar *ProgressBar1;
    QTimer *Timer1;

private:
    void Timer1_Timer();
    int counter = 0;
};
