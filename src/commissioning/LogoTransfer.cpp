// SPDX-License-Identifier: GPL-3.0-or-later
#include "LogoTransfer.h"

#include "printer/KelvoFPControl.h"
#include "printer/LocalFile.h"
#include "printer/PrinterIdentity.h"
#include "printer/SharedState.h"
#include "settings/ProgramFolder.h"
#include "ui/MsgBox.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <limits>

namespace LogoTransfer {

namespace {
const QString kRawChannel = QStringLiteral("FPEXTENDEDGRAPHIC");

// After a job the fourth status digit tells whether the printer's graphic
// part is in error: 4 (the ESC/POS error a failed job leaves) or 6.
int16_t StateAfterJob()
{
    int16_t result = gFPControl->ReadPrinterInfo(1);
    if (result != 0)
        return result;
    const QString status = gFPControl->PrinterStatus();
    if (status.size() >= 4 && (status.at(3) == QLatin1Char('6') || status.at(3) == QLatin1Char('4')))
        return -1;
    return 0;
}

// One piece on the channel; the event queue gets a turn afterwards so that
// the screen stays alive through a long transfer.
void SendPiece(QByteArray piece)
{
    gFPControl->SendRawData(piece);
    QCoreApplication::processEvents();
}

void SendOverRawChannel(const QString &fileName, const QByteArray &opening, const QByteArray &closing)
{
    // The file is opened as for writing too, so a missing one comes into
    // being, empty, and goes as an empty logo: the printer refuses the empty
    // job and says so in its state. An existing file is found whatever the
    // case of its name, so it is never doubled by one in other capitals.
    QString path = LocalFile::find(fileName);
    if (!QFileInfo(path).isFile())
        path.replace(QLatin1Char('\\'), QLatin1Char('/'));
    QFile file(path);
    const bool readable =
        QFileInfo(path).isFile() ? file.open(QIODevice::ReadOnly) : file.open(QIODevice::ReadWrite);
    const qint64 length = readable ? file.size() : 0;
    // A file too large to be announced cannot be loaded; announcing the
    // largest size lets the printer refuse it at once.
    const qint64 wanted = qint64(opening.size()) + closing.size() + length;
    int32_t total = wanted > std::numeric_limits<int32_t>::max() ? std::numeric_limits<int32_t>::max()
                                                                  : int32_t(wanted);

    gFPControl->setRawChannelName(kRawChannel);
    gFPControl->OpenRawChannel(1);
    gFPControl->BeginRawTransfer(1, total, false, QString());
    QByteArray first = opening;
    // The answers to the pieces are not looked at: a refused piece does not
    // stop the rest, and only the printer's state after the job decides.
    gFPControl->SendRawData(first);
    const qint64 pieces = length / PieceBytes;
    for (qint64 i = 0; i < pieces; ++i)
        SendPiece(file.read(PieceBytes));
    QByteArray rest = readable ? file.read(length % PieceBytes) : QByteArray();
    gFPControl->SendRawData(rest); // empty when the length is a multiple of a piece
    file.close();

    gFPControl->setTimeoutAck(10);
    QByteArray last = closing;
    gFPControl->SendRawData(last);
    // The longer wait stays in force after the logo, also for what follows.
    gFPControl->setTimeoutAck(60);
    gFPControl->CloseRawChannel(1);
}
}

QByteArray LoadOpening() { return QByteArrayLiteral("AGGIORNAMENTO LOGO GRAFICO....\n\r"); }
QByteArray LoadClosing() { return QByteArrayLiteral("AGGIORNAMENTO LOGO GRAFICO TERMINATO\n\r"); }
QByteArray ClearOpening() { return QByteArrayLiteral("CANCELLAZIONE AREA LOGHI...\n\r"); }

QByteArray ClearCommands()
{
    return QByteArray::fromHex("1D28450300" "01494E"
                               "1D28450400" "05020200"
                               "1D28450400" "05020700"
                               "1D28450400" "024F5554");
}

int16_t SendLogo(const QString &fileName)
{
    ReadFirmwareInfo();
    const int32_t model = GetPrinterModel();
    const QByteArray opening = LoadOpening();
    const QByteArray closing = LoadClosing();

    if (model == 1 || model == 2 || (model == 0 && gFwMajor >= 2)) {
        if (!gFPControl->Busy())
            SendOverRawChannel(fileName, opening, closing);
    } else if (model == 0 && gFwMajor == 1) {
        if (!gFPControl->Busy()) {
            QString path = fileName;
            gFPControl->LoadLogoFile(path);
        }
    } else {
        // The printer's state below decides the result all the same.
        MsgBox::show(QStringLiteral("Versione del firmware non supportata per i loghi!"));
    }
    return StateAfterJob();
}

void DeleteLogoMemory()
{
    QByteArray text = ClearOpening();
    QByteArray commands = ClearCommands();
    int32_t total = int32_t(text.size() + commands.size());
    gFPControl->setRawChannelName(kRawChannel);
    gFPControl->OpenRawChannel(1);
    gFPControl->BeginRawTransfer(1, total, false, QString());
    gFPControl->SendRawData(text);
    gFPControl->SendRawData(commands);
    gFPControl->CloseRawChannel(1);
}

QString StandardLogoPath(int16_t number, bool narrow)
{
    // The small "n" of nataleA against NataleB and the capital endings are
    // the names as they have always been; the control finds the files
    // whatever their case on disk.
    static const char *const prefixes[] = {"02_pasqua_", "03_halloween_", "04_nataleA_", "05_NataleB_",
                                           "06_valentino_", "07_palloncini_", "08_vacanze_", "09_torta_"};
    QString prefix;
    if (number >= 2 && number <= 9)
        prefix = QLatin1String(prefixes[number - 2]);
    const QString ending = narrow ? QStringLiteral("60.BIN") : QStringLiteral("80.BIN");
    return QDir(ProgramFolder()).filePath(QStringLiteral("LoghiStandard/") + prefix + ending);
}

} // namespace LogoTransfer
