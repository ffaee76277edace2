// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <memory>

class QLockFile;

// Tells a second running copy of the same program (the same executable) by
// a lock file in the temporary folder. The lock is held until the process
// ends; a lock left by a process that died is taken over.
class SingleInstance
{
public:
    static bool acquire();        // false: another instance runs
    static QString lockPath();
    static void releaseForTests();

private:
    static std::unique_ptr<QLockFile> &lock();
};
