// SPDX-License-Identifier: GPL-3.0-or-later
#include "SharedState.h"

int16_t gMaxNReparti = 0;
int16_t gFwMajor = 0;
int16_t gFwMinor = 0;

QStringList gRagioneSociale;
QStringList gIndirizzo;
QString gPartitaIva;
QString gNome;
QString gCdf;
QString gQual;
QStringList gSede;

QString BlankCustomerLine()
{
    return QString(52, QLatin1Char('_'));
}
