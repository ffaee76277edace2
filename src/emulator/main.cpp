// SPDX-License-Identifier: GPL-3.0-or-later
#include "ConsoleCommands.h"
#include "EmulatorConsole.h"
#include "EmulatorOptions.h"
#include "EmulatorServer.h"

#include <QCoreApplication>
#include <QSocketNotifier>

#include <csignal>
#include <cstdio>
#include <sys/socket.h>
#include <unistd.h>

namespace {

int signalPipe[2] = {-1, -1};

void onSignal(int)
{
    const char c = 1;
    [[maybe_unused]] const auto n = ::write(signalPipe[1], &c, 1);
}

void say(const QString &text)
{
    const QByteArray out = (text.endsWith(QLatin1Char('\n')) ? text : text + QLatin1Char('\n')).toLocal8Bit();
    fwrite(out.constData(), 1, size_t(out.size()), stdout);
    fflush(stdout);
}

void complain(const QString &text)
{
    const QByteArray out = (QStringLiteral("fiscorda-emulator: ") + text + QLatin1Char('\n')).toLocal8Bit();
    fwrite(out.constData(), 1, size_t(out.size()), stderr);
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("fiscorda-emulator"));
    QCoreApplication::setApplicationVersion(QStringLiteral("%1.%2.%3").arg(FISCORDA_VERSION_MAJOR).arg(FISCORDA_VERSION_MINOR).arg(FISCORDA_VERSION_REVISION));

    EmulatorOptions options;
    const QString invalid = options.parse(QCoreApplication::arguments());
    if (options.helpRequested) {
        say(options.helpText);
        return 0;
    }
    if (options.versionRequested) {
        say(QStringLiteral("fiscorda-emulator ") + QCoreApplication::applicationVersion());
        return 0;
    }
    if (!invalid.isEmpty()) {
        complain(invalid);
        return 2;
    }

    const EmulatorConfig &c = options.config;
    EmulatorServer server(c);
    ConsoleCommands commands(server);
    QString error;
    const bool started = server.start(&error);
    for (const QString &note : server.notes())
        say(note);
    if (!started)
        return 1;
    if (c.tcp && !server.listenTcp(c.tcpAddress, c.tcpPort, &error)) {
        complain(error);
        return 1;
    }
    if (!c.ptyFolder.isEmpty() && !server.openPty(c.ptyFolder, c.comNumber, c.lineSettings, &error)) {
        complain(error);
        return 1;
    }

    say(QStringLiteral("KELVO %1, matricola %2, firmware %3, fiscal memory %4")
            .arg(EmulatorConfig::modelName(c.model), c.effectiveSerial(), c.effectiveFirmware(), c.fiscalMemoryVersion));
    if (c.tcp) {
        say(QStringLiteral("listening on %1:%2").arg(server.tcpAddress().toString()).arg(server.tcpPort()));
        if (!server.tcpAddress().isLoopback())
            say(QStringLiteral("note: this address is reachable from the network"));
    }
    if (!c.ptyFolder.isEmpty())
        say(QStringLiteral("serial: %1 -> %2 at %3").arg(server.ptyLink(), server.ptyDevice(), c.lineSettings));
    say(QStringLiteral("state %1; paper %2%3")
            .arg(c.statePath.isEmpty() ? QStringLiteral("(none)") : c.statePath,
                 c.paperPath.isEmpty() ? QStringLiteral("(none)") : c.paperPath,
                 c.trafficPath.isEmpty() ? QString() : QStringLiteral("; traffic ") + c.trafficPath));
    for (const QString &cmd : options.startCommands)
        say(commands.run(cmd));
    say(QStringLiteral("type 'help' for the commands"));

    QObject::connect(&server, &EmulatorServer::notice, &server, [](const QString &text) { say(text); });
    if (options.verbose)
        QObject::connect(&server, &EmulatorServer::requestHandled, &server,
                         [](const QString &peer, const QByteArray &name, const Reply &reply) {
                             say(QStringLiteral("%1: %2 -> %3%4")
                                     .arg(peer, QString::fromLatin1(name))
                                     .arg(reply.result)
                                     .arg(reply.result == 0 ? QString() : QStringLiteral(" ErrorCode ") + reply.property("ErrorCode")));
                         });

    EmulatorConsole console(commands);
    QObject::connect(&console, &EmulatorConsole::quitRequested, &app, &QCoreApplication::quit);

    if (::socketpair(AF_UNIX, SOCK_STREAM, 0, signalPipe) == 0) {
        auto *notifier = new QSocketNotifier(signalPipe[0], QSocketNotifier::Read, &app);
        QObject::connect(notifier, &QSocketNotifier::activated, &app, &QCoreApplication::quit);
        std::signal(SIGINT, onSignal);
        std::signal(SIGTERM, onSignal);
        std::signal(SIGHUP, onSignal);
    }
    std::signal(SIGPIPE, SIG_IGN);
    return app.exec();
}
