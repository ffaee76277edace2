// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtGlobal>

#include <cstdio>
#include <cstdlib>

// A property of the code under test that must hold for every input. A
// breach aborts, which both libFuzzer and the corpus replay report.
#define FUZZ_CHECK(cond)                                                                  \
    do {                                                                                  \
        if (!(cond)) {                                                                    \
            std::fprintf(stderr, "%s:%d: property broken: %s\n", __FILE__, __LINE__, #cond); \
            std::abort();                                                                 \
        }                                                                                 \
    } while (0)

// Qt's warnings (a log opened on /dev/null cannot seek, and such) would
// flood the fuzzer's output; they say nothing about a fault.
inline void silenceQtMessages()
{
    static const bool done = (qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {}),
                              true);
    (void)done;
}
