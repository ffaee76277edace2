// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

class XmlSettings;

// The per-printer file, "KX90Prog" + serial number + ".xml" beside the
// program, as the header and flag steps keep it: opened at load, saved when
// the step is done.
namespace HeaderPrinterFile {

// "KX90Prog" followed by the serial number, without extension.
QString BaseName(const QString &matricola);

// Reads the serial number from the printer and opens that printer's file.
void Open(XmlSettings &settings);

// Saves and closes the file. A file that was there but could not be read is
// first copied aside, so that the save does not lose it. A file that cannot
// be written is told to the technician, who goes on: the printer has
// already been programmed, the file is only the record of it. Answers
// whether the file was saved.
bool Close(XmlSettings &settings);

} // namespace HeaderPrinterFile
