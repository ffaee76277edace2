// SPDX-License-Identifier: GPL-3.0-or-later
#include "FiscordaApplication.h"

#include "AppIcons.h"
#include "FiscordaForm.h"
#include "settings/RunTimeError.h"
#include "ui/DialogKeys.h"
#include "ui/MsgBox.h"

#include <QLibraryInfo>
#include <QLocale>
#include <QMessageBox>
#include <QTranslator>
#include <cstdio>
#include <cstdlib>

FiscordaApplication::FiscordaApplication(int &argc, char **argv) : QApplication(argc, argv)
{
    setApplicationName(QStringLiteral("Fiscorda"));
    setApplicationVersion(ProgramVersionText());
    DialogKeys::install();
    // Every window's title bar and the task switcher show the program's icon.
    setWindowIcon(AppIcon("fiscorda"));
    // Qt's own texts (file dialogs, date pickers, context menus) in Italian,
    // like the rest of the interface, when the translations are installed.
    auto *translator = new QTranslator(this);
    if (translator->load(QLocale(QLocale::Italian, QLocale::Italy), QStringLiteral("qtbase"), QStringLiteral("_"),
                         QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        installTranslator(translator);
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
