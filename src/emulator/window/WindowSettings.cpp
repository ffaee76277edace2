// SPDX-License-Identifier: GPL-3.0-or-later
#include "WindowSettings.h"

#include "settings/ProgramFolder.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSettings>
#include <pugixml.hpp>

WindowSettings WindowSettings::load()
{
    const QSettings s(QStringLiteral("fiscorda"),
                      QStringLiteral("fiscorda-printer"));
    WindowSettings w;
    const int m = s.value(QStringLiteral("model"), 0).toInt();
    w.model = m >= 0 && m <= 2 ? EmulatorConfig::Model(m) : EmulatorConfig::Model::KX90;
    w.serial = s.value(QStringLiteral("serial")).toString();
    w.useTcp = s.value(QStringLiteral("tcp"), true).toBool();
    const int port = s.value(QStringLiteral("tcpPort"), 4660).toInt();
    w.tcpPort = port > 0 && port < 65536 ? quint16(port) : 4660;
    w.usePty = s.value(QStringLiteral("pty"), false).toBool();
    w.comNumber = qBound(1, s.value(QStringLiteral("com"), 1).toInt(), 99);
    w.lineSettings = s.value(QStringLiteral("line"), w.lineSettings).toString();
    w.keepMemory = s.value(QStringLiteral("keepMemory"), true).toBool();
    w.statePath = s.value(QStringLiteral("state")).toString();
    w.paperPath = s.value(QStringLiteral("paper")).toString();
    return w;
}

void WindowSettings::save() const
{
    QSettings s(QStringLiteral("fiscorda"),
                QStringLiteral("fiscorda-printer"));
    s.setValue(QStringLiteral("model"), int(model));
    s.setValue(QStringLiteral("serial"), serial);
    s.setValue(QStringLiteral("tcp"), useTcp);
    s.setValue(QStringLiteral("tcpPort"), int(tcpPort));
    s.setValue(QStringLiteral("pty"), usePty);
    s.setValue(QStringLiteral("com"), comNumber);
    s.setValue(QStringLiteral("line"), lineSettings);
    s.setValue(QStringLiteral("keepMemory"), keepMemory);
    s.setValue(QStringLiteral("state"), statePath);
    s.setValue(QStringLiteral("paper"), paperPath);
}

QString WindowSettings::effectiveStatePath() const
{
    return statePath.isEmpty() ? QDir(ProgramFolder()).filePath(QStringLiteral("emulator-state.json")) : statePath;
}

QString WindowSettings::effectivePaperPath() const
{
    if (!paperPath.isEmpty())
        return paperPath;
    return QDir(QFileInfo(effectiveStatePath()).absolutePath()).filePath(QStringLiteral("emulator-paper.txt"));
}

EmulatorConfig WindowSettings::config() const
{
    EmulatorConfig c;
    c.model = model;
    c.serial = serial.trimmed().toUpper();
    c.tcp = useTcp;
    c.tcpAddress = QHostAddress(QHostAddress::LocalHost);
    c.tcpPort = tcpPort;
    c.ptyFolder = usePty ? ProgramFolder() : QString();
    c.comNumber = comNumber;
    c.lineSettings = lineSettings;
    c.statePath = keepMemory ? effectiveStatePath() : QString();
    c.paperPath = effectivePaperPath();
    return c;
}

bool SeedFiscordaSettings(const QString &folder, quint16 port)
{
    const QString path = QDir(folder).filePath(QStringLiteral("Settings.xml"));
    if (QFile::exists(path))
        return false;
    pugi::xml_document doc;
    pugi::xml_node s = doc.append_child("settings");
    const auto add = [&s](const char *name, const QString &value) {
        s.append_child(name).text().set(value.toUtf8().constData());
    };
    add("mode", QStringLiteral("TCP"));
    add("comnumber", QStringLiteral("1"));
    add("comsettings", QStringLiteral("9600,n,8,1"));
    add("tcpport", QString::number(port));
    add("ipaddress", QStringLiteral("127.0.0.1"));
    add("timeoutack", QStringLiteral("-1"));
    add("timeoutop", QStringLiteral("-1"));
    add("maxnreparti", QStringLiteral("40"));
    QDir().mkpath(folder);
    return doc.save_file(QFile::encodeName(path).constData(), "", pugi::format_raw | pugi::format_no_declaration);
}
