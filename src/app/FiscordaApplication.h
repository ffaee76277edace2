// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QApplication>

class RunTimeError;

// The program's QApplication. A run-ending failure that escapes an event
// handler is caught here: "Errore di run-time" with its description, then
// the process ends with a non-zero status, before anything else runs.
class FiscordaApplication : public QApplication
{
public:
    FiscordaApplication(int &argc, char **argv);
    bool notify(QObject *receiver, QEvent *event) override;

    [[noreturn]] static void endRun(const RunTimeError &error);
    static QString runTimeErrorText(const RunTimeError &error);
};
