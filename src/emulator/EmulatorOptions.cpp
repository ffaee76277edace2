// SPDX-License-Identifier: GPL-3.0-or-later
#include "EmulatorOptions.h"

#include "ConsoleCommands.h"
#include "ElectronicJournal.h"
#include "LineSettings.h"

#include <QCommandLineParser>

namespace {

bool parseTcp(const QString &text, EmulatorConfig &c)
{
    if (text == QLatin1String("off")) {
        c.tcp = false;
        return true;
    }
    QString host = QStringLiteral("127.0.0.1");
    QString port = text;
    const qsizetype colon = text.lastIndexOf(QLatin1Char(':'));
    if (colon >= 0) {
        host = text.left(colon);
        port = text.mid(colon + 1);
        if (host.startsWith(QLatin1Char('[')) && host.endsWith(QLatin1Char(']')))
            host = host.mid(1, host.size() - 2);
    }
    bool ok = false;
    const int p = port.toInt(&ok);
    QHostAddress address;
    if (host == QLatin1String("localhost"))
        address = QHostAddress(QHostAddress::LocalHost);
    else if (host == QLatin1String("*") || host.isEmpty())
        address = QHostAddress(QHostAddress::Any);
    else if (!address.setAddress(host))
        return false;
    if (!ok || p < 0 || p > 65535)
        return false;
    c.tcp = true;
    c.tcpAddress = address;
    c.tcpPort = quint16(p);
    return true;
}

bool parseModel(const QString &text, EmulatorConfig::Model &m)
{
    QString t = text.toUpper();
    t.remove(QLatin1Char(' ')).remove(QLatin1Char('-')).remove(QLatin1Char('_'));
    if (t == QLatin1String("KX90") || t == QLatin1String("0"))
        m = EmulatorConfig::Model::KX90;
    else if (t == QLatin1String("KX90II") || t == QLatin1String("KX902") || t == QLatin1String("1"))
        m = EmulatorConfig::Model::KX90II;
    else if (t == QLatin1String("KX81") || t == QLatin1String("2"))
        m = EmulatorConfig::Model::KX81;
    else
        return false;
    return true;
}

} // namespace

QString EmulatorOptions::parse(const QStringList &arguments)
{
    QCommandLineParser p;
    p.setApplicationDescription(QStringLiteral(
        "A simulated KELVO fiscal printer (KX90, KX90 II, KX81) that speaks Fiscorda's wire protocol\n"
        "over TCP and, on request, over a pseudo-terminal linked as a COM port.\n"
        "While it runs, type commands on its standard input ('help' lists them):\n\n")
        + ConsoleCommands::help());
    const QCommandLineOption help({QStringLiteral("h"), QStringLiteral("help")}, QStringLiteral("Show this help."));
    const QCommandLineOption version(QStringLiteral("version"), QStringLiteral("Show the version."));
    const QCommandLineOption model(QStringLiteral("model"), QStringLiteral("Printer model: KX90, KX90II or KX81 (default KX90)."), QStringLiteral("model"), QStringLiteral("KX90"));
    const QCommandLineOption serial(QStringLiteral("serial"), QStringLiteral("Serial number (matricola), ten characters beginning with QN, QM or QO by model (default QN41100123, QM41100123, QO41100123)."), QStringLiteral("matricola"));
    const QCommandLineOption firmware(QStringLiteral("firmware"), QStringLiteral("Firmware version major.minor (default 2.10, 3.02, 1.20 by model). A KX90 below 2 has 27-character header lines and loads logos with LoadLogoFile only."), QStringLiteral("version"));
    const QCommandLineOption fm(QStringLiteral("fm-version"), QStringLiteral("Fiscal memory version (default 0012)."), QStringLiteral("version"), QStringLiteral("0012"));
    const QCommandLineOption resets(QStringLiteral("resets"), QStringLiteral("Closures (azzeramenti) made before this fiscal memory's first record (default 0)."), QStringLiteral("n"), QStringLiteral("0"));
    const QCommandLineOption deps(QStringLiteral("departments"), QStringLiteral("Number of departments, 1..999 (default 40)."), QStringLiteral("n"), QStringLiteral("40"));
    const QCommandLineOption flags(QStringLiteral("flags"), QStringLiteral("Number of flags of section 14, 1..99 (default 90); beyond: NON PREVISTO."), QStringLiteral("n"), QStringLiteral("90"));
    const QCommandLineOption params(QStringLiteral("params"), QStringLiteral("Number of parameters of section 15, 1..99 (default 90); beyond: NON PREVISTO."), QStringLiteral("n"), QStringLiteral("90"));
    const QCommandLineOption journalSize(QStringLiteral("journal-size"), QStringLiteral("Capacity of the electronic journal in kB (default 1024)."), QStringLiteral("kB"), QStringLiteral("1024"));
    const QCommandLineOption tcp(QStringLiteral("tcp"), QStringLiteral("TCP address and port to listen on, or 'off' (default 127.0.0.1:4660; a port alone means loopback; 0.0.0.0:port opens it to the network)."), QStringLiteral("address:port"), QStringLiteral("127.0.0.1:4660"));
    const QCommandLineOption pty(QStringLiteral("pty"), QStringLiteral("Also offer a pseudo-terminal, linked as COM<n> in this folder (Fiscorda looks for COM<n> in its own folder)."), QStringLiteral("folder"));
    const QCommandLineOption com(QStringLiteral("com"), QStringLiteral("The n of the COM link (default 1)."), QStringLiteral("n"), QStringLiteral("1"));
    const QCommandLineOption line(QStringLiteral("line"), QStringLiteral("The printer's own line settings on the pseudo-terminal: speed,parity,data bits,stop bits (default 9600,n,8,1). It answers only a program that set the same."), QStringLiteral("settings"), QStringLiteral("9600,n,8,1"));
    const QCommandLineOption realSpeed(QStringLiteral("real-speed"), QStringLiteral("On the pseudo-terminal, move bytes no faster than the line speed, both ways, as a real serial port does (by default they go at once)."));
    const QCommandLineOption state(QStringLiteral("state"), QStringLiteral("State file: the printer's memory, saved after every change (default emulator-state.json)."), QStringLiteral("file"), QStringLiteral("emulator-state.json"));
    const QCommandLineOption noState(QStringLiteral("no-state"), QStringLiteral("Keep the memory only while the emulator runs."));
    const QCommandLineOption paper(QStringLiteral("paper"), QStringLiteral("Paper roll: the text file everything printed goes to (default emulator-paper.txt)."), QStringLiteral("file"), QStringLiteral("emulator-paper.txt"));
    const QCommandLineOption traffic(QStringLiteral("traffic"), QStringLiteral("Traffic log: one line per frame and per control byte."), QStringLiteral("file"));
    const QCommandLineOption verboseOption(QStringLiteral("verbose"), QStringLiteral("Show every command and its result on the console."));
    const QCommandLineOption paperOut(QStringLiteral("paper-out"), QStringLiteral("Start with the receipt paper out."));
    const QCommandLineOption offline(QStringLiteral("offline"), QStringLiteral("Start offline."));
    const QCommandLineOption journal(QStringLiteral("journal"), QStringLiteral("Start with the journal ok, nearfull, full, toformat or othermf."), QStringLiteral("condition"));
    const QCommandLineOption powerOff(QStringLiteral("power-off"), QStringLiteral("Start switched off ('power on' on the console)."));
    const QCommandLineOption slow(QStringLiteral("slow"), QStringLiteral("Wait this long before every answer."), QStringLiteral("ms"));
    const QCommandLineOption nak(QStringLiteral("nak"), QStringLiteral("Answer every request with NAK."));
    const QCommandLineOption noAck(QStringLiteral("no-ack"), QStringLiteral("Ignore every request."));
    const QCommandLineOption ackOnly(QStringLiteral("ack-only"), QStringLiteral("ACK every request and never answer."));
    const QCommandLineOption cut(QStringLiteral("cut-answer"), QStringLiteral("Stop every answer in the middle."));
    const QCommandLineOption badSum(QStringLiteral("bad-checksum"), QStringLiteral("Send every answer with a wrong checksum."));
    const QCommandLineOption stale(QStringLiteral("stale-answer"), QStringLiteral("Send an old answer of another SEQ before every answer."));
    p.addOptions({help, version, model, serial, firmware, fm, resets, deps, flags, params, journalSize, tcp, pty, com,
                  line, realSpeed, state, noState, paper, traffic, verboseOption, paperOut, offline, journal, powerOff, slow, nak, noAck,
                  ackOnly, cut, badSum, stale});
    helpText = p.helpText();
    if (!p.parse(arguments))
        return p.errorText();
    if (!p.positionalArguments().isEmpty())
        return QStringLiteral("unexpected argument '%1' (--help lists the options)").arg(p.positionalArguments().first());
    helpRequested = p.isSet(help);
    versionRequested = p.isSet(version);
    verbose = p.isSet(verboseOption);

    EmulatorConfig &c = config;
    if (!parseModel(p.value(model), c.model))
        return QStringLiteral("--model %1: expected KX90, KX90II or KX81").arg(p.value(model));
    c.serial = p.value(serial);
    c.firmware = p.value(firmware);
    c.fiscalMemoryVersion = p.value(fm);
    auto number = [&p](const QCommandLineOption &o, int &out) {
        bool ok = false;
        out = p.value(o).toInt(&ok);
        return ok;
    };
    if (!number(resets, c.resets))
        return QStringLiteral("--resets: expected a number");
    if (!number(deps, c.departments))
        return QStringLiteral("--departments: expected a number");
    if (!number(flags, c.flags))
        return QStringLiteral("--flags: expected a number");
    if (!number(params, c.params))
        return QStringLiteral("--params: expected a number");
    if (!number(journalSize, c.journalKb))
        return QStringLiteral("--journal-size: expected a number of kB");
    if (!number(com, c.comNumber))
        return QStringLiteral("--com: expected a number");
    if (!parseTcp(p.value(tcp), c))
        return QStringLiteral("--tcp %1: expected address:port, a port, or off").arg(p.value(tcp));
    c.ptyFolder = p.value(pty);
    c.lineSettings = p.value(line);
    c.realLineSpeed = p.isSet(realSpeed);
    if (!LineSettings::parse(c.lineSettings))
        return QStringLiteral("--line %1: expected speed,parity,data bits,stop bits, e.g. 9600,n,8,1").arg(c.lineSettings);
    c.statePath = p.isSet(noState) ? QString() : p.value(state);
    c.paperPath = p.value(paper);
    c.trafficPath = p.value(traffic);
    if (!c.tcp && c.ptyFolder.isEmpty())
        return QStringLiteral("with --tcp off, --pty is needed: the printer must be reachable somehow");
    const QString invalid = c.validate();
    if (!invalid.isEmpty())
        return invalid;

    startCommands.clear();
    if (p.isSet(paperOut))
        startCommands << QStringLiteral("paper out");
    if (p.isSet(offline))
        startCommands << QStringLiteral("offline on");
    if (p.isSet(journal)) {
        if (!ElectronicJournal::conditionFromName(p.value(journal)))
            return QStringLiteral("--journal %1: expected ok, nearfull, full, toformat or othermf").arg(p.value(journal));
        startCommands << QStringLiteral("journal ") + p.value(journal);
    }
    if (p.isSet(slow)) {
        bool ok = false;
        const int ms = p.value(slow).toInt(&ok);
        if (!ok || ms < 0)
            return QStringLiteral("--slow: expected milliseconds");
        startCommands << QStringLiteral("slow %1").arg(ms);
    }
    const std::pair<const QCommandLineOption *, const char *> wire[] = {
        {&nak, "nak"}, {&noAck, "noack"}, {&ackOnly, "ackonly"}, {&cut, "cut"}, {&badSum, "badsum"}, {&stale, "stale"}};
    for (const auto &[option, name] : wire)
        if (p.isSet(*option))
            startCommands << QString::fromLatin1(name) + QStringLiteral(" on");
    if (p.isSet(powerOff))
        startCommands << QStringLiteral("power off");
    return {};
}
