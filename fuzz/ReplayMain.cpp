// SPDX-License-Identifier: GPL-3.0-or-later
// Feeds files to a fuzz target's entry function without libFuzzer: every
// argument is a file or a folder of files (not recursive). Any crash or
// sanitizer report ends the run; reaching the end means every input passed.
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cstdint>
#include <cstdio>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);
extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv) __attribute__((weak));

int main(int argc, char **argv)
{
    if (LLVMFuzzerInitialize)
        LLVMFuzzerInitialize(&argc, &argv);
    QStringList files;
    for (int i = 1; i < argc; ++i) {
        const QString arg = QString::fromLocal8Bit(argv[i]);
        if (QFileInfo(arg).isDir()) {
            const QDir dir(arg);
            for (const QString &name : dir.entryList(QDir::Files, QDir::Name))
                files << dir.filePath(name);
        } else {
            files << arg;
        }
    }
    if (files.isEmpty()) {
        std::fprintf(stderr, "no inputs\n");
        return 1;
    }
    for (const QString &path : files) {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly)) {
            std::fprintf(stderr, "cannot read %s\n", qPrintable(path));
            return 1;
        }
        const QByteArray bytes = file.readAll();
        LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t *>(bytes.constData()), size_t(bytes.size()));
    }
    std::printf("%lld inputs replayed\n", static_cast<long long>(files.size()));
    return 0;
}
