// SPDX-License-Identifier: GPL-3.0-or-later
// fiscorda-printer: the training printer in a window, listening on
// 127.0.0.1:4660 unless its settings say otherwise.
#include "PrinterWindow.h"
#include "WindowSettings.h"

#include "settings/ProgramFolder.h"

#include <QApplication>
#include <QIcon>

#include <csignal>

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("fiscorda-printer"));
    QApplication::setOrganizationName(QStringLiteral("fiscorda"));
    QApplication::setApplicationDisplayName(QStringLiteral("Stampante di prova Fiscorda"));
    QApplication::setDesktopFileName(QStringLiteral("fiscorda-printer"));
    QApplication::setWindowIcon(QIcon::fromTheme(QStringLiteral("fiscorda-printer")));
    std::signal(SIGPIPE, SIG_IGN);

    const WindowSettings settings = WindowSettings::load();
    // Fiscorda started from the menu afterwards finds this printer at once.
    if (settings.useTcp)
        SeedFiscordaSettings(ProgramFolder(), settings.tcpPort);

    PrinterWindow window(settings);
    window.resize(1100, 760);
    window.show();
    return app.exec();
}
