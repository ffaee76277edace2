// SPDX-License-Identifier: GPL-3.0-or-later
// Any bytes as the emulator's state: the part before the first 0x1E byte as
// the snapshot, the rest (when there is a 0x1E) as its log. The emulator
// starts all the same: a state it cannot read is refused with a message and
// set aside unchanged; one it loads, it writes, and loading that again gives
// the same memory.
#include "FuzzFiles.h"
#include "emulator/EmulatorServer.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    silenceQtMessages();
    const QByteArray bytes(reinterpret_cast<const char *>(data), qsizetype(size));
    const qsizetype cut = bytes.indexOf('\x1e');
    const QByteArray snapshot = cut < 0 ? bytes : bytes.left(cut);
    QDir dir(fuzzFolder("fuzzstate"));
    for (const QString &f : dir.entryList(QDir::Files))
        dir.remove(f);
    EmulatorConfig config;
    config.statePath = dir.filePath(QStringLiteral("state.json"));
    fuzzWrite(config.statePath, snapshot);
    if (cut >= 0)
        fuzzWrite(config.statePath + QStringLiteral(".log"), bytes.mid(cut + 1));

    QJsonObject memory;
    {
        EmulatorServer emu(config);
        FUZZ_CHECK(emu.start());
        const QString notes = emu.notes().join(QLatin1Char('\n'));
        const QStringList aside = dir.entryList({QStringLiteral("state.json.damaged-*")});
        if (!aside.isEmpty()) {
            // Refused: said so, and the file kept as it was.
            FUZZ_CHECK(notes.contains(QStringLiteral("damaged")));
            QFile kept(dir.filePath(aside.first()));
            FUZZ_CHECK(kept.open(QIODevice::ReadOnly) && kept.readAll() == snapshot);
        }
        memory = emu.model().saveMemory();
        // A command after the load goes through the log as any other.
        emu.execute("WriteCarta", {"9", "FUZZ"});
        memory = emu.model().saveMemory();
    }
    for (int round = 0; round < 2; ++round) {
        EmulatorServer again(config);
        FUZZ_CHECK(again.start());
        FUZZ_CHECK(again.notes().isEmpty());
        FUZZ_CHECK(again.model().saveMemory() == memory);
        if (round == 0)
            FUZZ_CHECK(again.compactNow()); // the second round reads it from a snapshot alone
    }
    return 0;
}
