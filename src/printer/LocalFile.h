// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

// Paths of files the program hands to the control (logo files) may be
// written with backslashes and in another case than the file on disk.
namespace LocalFile {
// The existing regular file that the path names, found with '\' read as '/'
// and, where the name does not match exactly, without regard to case.
// The path as given when there is none.
QString find(const QString &path);
}
