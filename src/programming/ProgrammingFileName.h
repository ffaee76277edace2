// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

// Names of programming files: the one offered, and how a chosen path becomes
// the name and folder that XmlSettings opens (it adds ".xml" itself).
namespace ProgrammingFileName {

// The per-printer file, beside the program: "KX90Prog" + serial number + ".xml".
QString offered(const QString &matricola);
// What the open dialog offers: every programming file.
QString openPattern(); // "KX90*.xml"
QString filter();      // "*.xml", in both directions

struct Location
{
    QString name;   // without folder and without its last four characters
    QString folder; // without a closing separator; empty: the program's folder
};

// A path as the open dialog gave it: split at the last separator; the name
// loses its last four characters (the extension XmlSettings puts back).
Location forOpen(const QString &path);

// A path as the save dialog gave it: ".xml" is appended when it stands
// nowhere in the path (case-sensitive: "a.XML" becomes "a.XML.xml"), then it
// is split as an opened one. A name that holds ".xml" elsewhere ("a.xml.bak")
// gets nothing appended and loses ".bak": it is written as "a.xml.xml".
Location forSave(const QString &path);

} // namespace ProgrammingFileName
