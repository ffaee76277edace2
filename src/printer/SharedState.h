// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>
#include <cstdint>

// State shared by the whole process, one copy.
extern int16_t gMaxNReparti; // highest department number reading and editing reach
extern int16_t gFwMajor;     // firmware version, filled by ReadFirmwareInfo
extern int16_t gFwMinor;

// Customer and shop data for the paperwork. The strings hold 52 underscores
// while no value was given, and the paperwork prints them as blank lines.
extern QStringList gRagioneSociale;
extern QStringList gIndirizzo;
extern QString gPartitaIva;
extern QString gNome;
extern QString gCdf;
extern QString gQual;
extern QStringList gSede;

QString BlankCustomerLine(); // the 52 underscores
