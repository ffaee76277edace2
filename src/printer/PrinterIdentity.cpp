// SPDX-License-Identifier: GPL-3.0-or-later
#include "PrinterIdentity.h"

#include "KelvoFPControl.h"
#include "SharedState.h"
#include "settings/Conversions.h"
#include "settings/RunTimeError.h"

namespace {
// The serial number names the per-printer file and the journal and
// declaration files. A number with a path separator or another character
// that cannot stand in a file name would write outside the program's folder
// or fail half-way, so such a number counts as no number at all.
bool fitsInFileName(const QString &matricola)
{
    static const QString forbidden = QStringLiteral("/\\:*?\"<>|");
    for (QChar c : matricola) {
        // Control characters include DEL and the C1 range (0x80-0x9F),
        // which the printer's code page gives for some bytes.
        if (c.category() == QChar::Other_Control || forbidden.contains(c))
            return false;
    }
    return matricola != QLatin1String(".") && matricola != QLatin1String("..");
}
}

QString GetMatricola()
{
    int16_t result = 0;
    if (!gFPControl->Busy())
        result = gFPControl->ReadMatricola(1);
    if (result != 0)
        return QString();
    const QString number = QString::number(gFPControl->MatricolaNumber());
    const qsizetype zeros = 6 - number.size();
    if (zeros < 0)
        throw RunTimeError::invalidArgument(); // more than six digits: left as it fails
    const QString matricola = gFPControl->MatricolaPrefix() + gFPControl->MatricolaModel()
                              + QString(zeros, QLatin1Char('0')) + number;
    return fitsInFileName(matricola) ? matricola : QString();
}

int32_t GetPrinterModel()
{
    const QString prefix = GetMatricola().left(2);
    if (prefix == QLatin1String("QM"))
        return 1;
    if (prefix == QLatin1String("QO"))
        return 2;
    return 0;
}

QString PrinterModelText(int32_t model)
{
    switch (model) {
    case 1: return QStringLiteral("KELVO KX90 II");
    case 2: return QStringLiteral("KELVO KX81");
    default: return QStringLiteral("KELVO KX90");
    }
}

QString ReadFirmwareInfo()
{
    if (gFPControl->ReadPrinterInfo(1) != 0)
        return QString();
    const QString version = gFPControl->FirmwareVersion();
    if (version.isEmpty())
        return QString();
    const qsizetype point = version.indexOf(QLatin1Char('.'));
    if (point >= 0) {
        gFwMajor = Conv::ToInteger(version.left(point));
        gFwMinor = Conv::ToInteger(version.mid(point + 1));
    } else {
        gFwMajor = Conv::ToInteger(version);
        gFwMinor = 0;
    }
    return version;
}
