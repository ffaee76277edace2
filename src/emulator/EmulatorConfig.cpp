// SPDX-License-Identifier: GPL-3.0-or-later
#include "EmulatorConfig.h"

#include <QRegularExpression>

QString EmulatorConfig::modelName(Model m)
{
    switch (m) {
    case Model::KX90II:
        return QStringLiteral("KX90 II");
    case Model::KX81:
        return QStringLiteral("KX81");
    case Model::KX90:
        break;
    }
    return QStringLiteral("KX90");
}

QString EmulatorConfig::serialPrefix(Model m)
{
    switch (m) {
    case Model::KX90II:
        return QStringLiteral("QM");
    case Model::KX81:
        return QStringLiteral("QO");
    case Model::KX90:
        break;
    }
    return QStringLiteral("QN");
}

QString EmulatorConfig::effectiveSerial() const
{
    if (!serial.isEmpty())
        return serial.toUpper();
    return serialPrefix(model) + QStringLiteral("41") + QStringLiteral("100123");
}

QString EmulatorConfig::effectiveFirmware() const
{
    if (!firmware.isEmpty())
        return firmware;
    switch (model) {
    case Model::KX90II:
        return QStringLiteral("3.02");
    case Model::KX81:
        return QStringLiteral("1.20");
    case Model::KX90:
        break;
    }
    return QStringLiteral("2.10");
}

int EmulatorConfig::firmwareMajor() const
{
    return effectiveFirmware().section(QLatin1Char('.'), 0, 0).toInt();
}

bool EmulatorConfig::oldFirmware() const
{
    return model == Model::KX90 && firmwareMajor() < 2;
}

QString EmulatorConfig::validate() const
{
    static const QRegularExpression serialForm(QStringLiteral("^[A-Z]{2}[A-Z0-9]{2}[0-9]{6}$"));
    const QString s = effectiveSerial();
    if (!serialForm.match(s).hasMatch())
        return QStringLiteral("serial number %1: expected two letters, two letters or digits, six digits (e.g. %2)")
            .arg(s, serialPrefix(model) + QStringLiteral("41100123"));
    if (!s.startsWith(serialPrefix(model)))
        return QStringLiteral("serial number %1 does not fit the %2: it must begin with %3")
            .arg(s, modelName(model), serialPrefix(model));
    static const QRegularExpression fwForm(QStringLiteral("^[0-9]{1,3}(\\.[0-9]{1,3})?$"));
    if (!fwForm.match(effectiveFirmware()).hasMatch())
        return QStringLiteral("firmware version %1: expected major.minor, e.g. 1.10").arg(effectiveFirmware());
    if (fiscalMemoryVersion.isEmpty())
        return QStringLiteral("the fiscal memory version may not be empty");
    if (resets < 0 || resets > 9999)
        return QStringLiteral("resets count %1: expected 0..9999").arg(resets);
    if (departments < 1 || departments > 999)
        return QStringLiteral("department count %1: expected 1..999").arg(departments);
    if (flags < 1 || flags > 99)
        return QStringLiteral("flag count %1: expected 1..99").arg(flags);
    if (params < 1 || params > 99)
        return QStringLiteral("parameter count %1: expected 1..99").arg(params);
    if (journalKb < 1 || journalKb > 1024 * 1024)
        return QStringLiteral("journal size %1 kB: expected 1..1048576").arg(journalKb);
    if (comNumber < 1 || comNumber > 255)
        return QStringLiteral("COM number %1: expected 1..255").arg(comNumber);
    return {};
}
