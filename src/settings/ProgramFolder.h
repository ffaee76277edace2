// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

// "The program's folder": where Settings.xml, the per-printer files and the
// COMn links live, with img/ and LoghiStandard/ in it. Tests may point it
// elsewhere.
//
// A copy that runs from a folder of its own (the build, a portable copy)
// keeps everything beside its executable. An installed copy (the executable
// in <prefix>/bin beside <prefix>/share/fiscorda) cannot write there, so
// each user gets a folder of his own, $XDG_DATA_HOME/fiscorda (by default
// ~/.local/share/fiscorda), made on first use, in which img/ and
// LoghiStandard/ are links to the installed share folder.
QString ProgramFolder();
void SetProgramFolderForTests(const QString &folder); // empty restores the default

// The choice above for an executable in binaryFolder, with the user's data
// home (XDG_DATA_HOME or ~/.local/share) given; the folder is made and linked
// when it is the user's. Empty when the user's folder cannot be made.
QString ChooseProgramFolder(const QString &binaryFolder, const QString &userDataHome);
