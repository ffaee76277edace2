// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>

// Text on the printer's wire is Windows-1252. Bytes that code page leaves
// undefined (81 8D 8F 90 9D) map to the code points of the same value, so
// that every byte string survives a round trip through QString.
namespace Cp1252 {
QByteArray encode(const QString &text); // characters outside the page become '?'
QString decode(const QByteArray &bytes);
QString decode(const char *bytes, qsizetype size);
}
