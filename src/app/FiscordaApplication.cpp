#include "FiscordaApplication.h"

#include "FiscordaForm.h"
#include "settings/RunTimeError.h"
#include "ui/MsgBox.h"

#include <QMessageBox>
#include <cstdio>
#include <cstdlib>

FiscordaApplication::FiscordaApplication(int &argc, char **argv) : QApplication(argc, argv)
{
    setApplicationName(QStringLiteral("Fiscorda"));
    setApplicationVersion(ProgramVersionText());
}

bool FiscordaApplication::notify(QObject *receiver, QEvent *event)
{
    try {
        return QApplication::notify(receiver, event);
    } catch (const RunTimeError &error) {
        endRun(error);
    }
}

QString FiscordaApplication::runTimeErrorText(const RunTimeError &error)
{
    return QStringLiteral("Errore di run-time '%1':\n\n%2").arg(int(error.code())).arg(error.description());
}

void FiscordaApplication::endRun(const RunTimeError &error)
{
    const QString text = runTimeErrorText(error);
    std::fprintf(stderr, "%s\n", qPrintable(text));
    MsgBox::show(text, QMessageBox::Ok, QMessageBox::Critical);
    // Leave at once: unwinding through the open modal forms would let their
    // handlers go on after a failure. Every file is saved atomically, so
    // nothing is left half-written.
    std::fflush(nullptr);
    std::_Exit(EXIT_FAILURE);
}
