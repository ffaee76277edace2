#pragma once

#include <QString>

// The folder of the running executable: where Settings.xml, the per-printer
// files, img/ and LoghiStandard/ live. Tests may point it elsewhere.
QString ProgramFolder();
void SetProgramFolderForTests(const QString &folder); // empty restores the default
