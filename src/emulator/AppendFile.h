// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QFile>
#include <QString>

// Opens (or closes, for an empty path) a text file that the emulator only
// ever appends to: the paper roll, the traffic log. On failure says why in
// *error, naming the file as `what`.
bool openForAppend(QFile &file, const QString &path, const QString &what, QString *error);
