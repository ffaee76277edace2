// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QApplication>
#include <QByteArray>
#include <QString>
#include <cstdint>

// The logo jobs that go to the printer's logo memory. The newer firmware
// takes them through the raw channel "FPEXTENDEDGRAPHIC", the logo's bytes
// between an opening and a closing text; a KX90 with firmware 1 gets the
// file through LoadLogoFile. The screens reach these through LoghiForm's
// SaveLogo and InstallLogoForm's memory clear.
namespace LogoTransfer {

inline constexpr int PieceBytes = 100;

QByteArray LoadOpening();  // "AGGIORNAMENTO LOGO GRAFICO....", LF, CR
QByteArray LoadClosing();  // "AGGIORNAMENTO LOGO GRAFICO TERMINATO", LF, CR
QByteArray ClearOpening(); // "CANCELLAZIONE AREA LOGHI...", LF, CR
QByteArray ClearCommands(); // the four GS ( E commands that empty the memory

// Sends a logo file by the road the printer's model and firmware call for.
// 0 when the printer is fine afterwards; -1 when it is left in the ESC/POS
// error (the job failed); another code when its state could not be read.
int16_t SendLogo(const QString &fileName);

// Empties the printer's logo memory. The results are not looked at: the
// printer has nothing to say about this job beyond its state.
void DeleteLogoMemory();

// The file of a standard logo by number (2..9), for a 60 mm receipt when
// narrow is true. A number outside the set has no name prefix.
QString StandardLogoPath(int16_t number, bool narrow);

// The hourglass, and the mark that a transfer is under way, for as long as
// it lives. A transfer gives the screen its turns: the mark lets a second
// press of the same button wait for the first instead of nesting a second
// job inside it.
class SavingScope
{
public:
    explicit SavingScope(bool &flag) : m_flag(flag)
    {
        m_flag = true;
        QApplication::setOverrideCursor(Qt::WaitCursor);
    }
    ~SavingScope()
    {
        QApplication::restoreOverrideCursor();
        m_flag = false;
    }
    SavingScope(const SavingScope &) = delete;
    SavingScope &operator=(const SavingScope &) = delete;

private:
    bool &m_flag;
};

} // namespace LogoTransfer
