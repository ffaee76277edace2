// SPDX-License-Identifier: GPL-3.0-or-later
#include "HeaderPrinterFile.h"

#include "printer/PrinterIdentity.h"
#include "settings/RunTimeError.h"
#include "settings/XmlSettings.h"
#include "ui/MsgBox.h"

#include <QDateTime>
#include <QDir>
#include <QFile>

namespace HeaderPrinterFile {

QString BaseName(const QString &matricola)
{
    return QStringLiteral("KX90Prog") + matricola;
}

void Open(XmlSettings &settings)
{
    settings.OpenSettings(BaseName(GetMatricola()), QString(), QString());
}

bool Close(XmlSettings &settings)
{
    const QString path = settings.filePath();
    if (settings.Created && QFile::exists(path)) {
        // There, but not readable as XML: the save would write over it.
        const QString aside =
            path + QStringLiteral(".danneggiato-") + QDateTime::currentDateTime().toString(QStringLiteral("yyyyMMdd-HHmmss"));
        QFile::copy(path, aside);
    }
    try {
        settings.CloseSettings();
        return true;
    } catch (const RunTimeError &error) {
        MsgBox::show(QStringLiteral("Impossibile salvare le impostazioni della stampante.\r\n") + error.description(),
                     QMessageBox::Ok, QMessageBox::Warning);
        return false;
    }
}

} // namespace HeaderPrinterFile
