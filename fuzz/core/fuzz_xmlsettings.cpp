// SPDX-License-Identifier: GPL-3.0-or-later
// XmlSettings reading any file that may lie in the program's folder, then
// writing a key into it: what it writes must load again and hold the key.
#include "FuzzFiles.h"
#include "settings/XmlSettings.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), qsizetype(size));
    if (bytes.contains("fuzzkey"))
        return 0; // the key written below must be new to the document
    // The value to store: the input's first line, as text; a NUL cannot be typed.
    QString value = QString::fromUtf8(bytes.left(bytes.indexOf('\n') < 0 ? 64 : bytes.indexOf('\n')));
    value.remove(QChar(0));

    const QString dir = fuzzFolder("fuzzxml");
    fuzzWrite(dir + QStringLiteral("/in.xml"), bytes);

    XmlSettings in;
    in.OpenSettings(QStringLiteral("in"), dir, QStringLiteral("settings"));
    FUZZ_CHECK(in.Loaded != in.Created);
    QString any;
    (void)in.GetValue(QStringLiteral("mode"), any);
    (void)in.GetValueAtt(QStringLiteral("mode"), QStringLiteral("a"), any);
    in.SetValue(QStringLiteral("fuzzkey"), value);
    in.SetValueAtt(QStringLiteral("fuzzkey"), QStringLiteral("v"), value);
    in.CloseSettings(dir + QStringLiteral("/out.xml"));

    XmlSettings out;
    out.OpenSettings(QStringLiteral("out"), dir, QStringLiteral("settings"));
    FUZZ_CHECK(out.Loaded);
    QString text, attribute;
    FUZZ_CHECK(out.GetValue(QStringLiteral("fuzzkey"), text) && text == value);
    FUZZ_CHECK(out.GetValueAtt(QStringLiteral("fuzzkey"), QStringLiteral("v"), attribute) && attribute == value);

    // A file written once is written again byte for byte.
    const QByteArray first = fuzzRead(dir + QStringLiteral("/out.xml"));
    out.CloseSettings(dir + QStringLiteral("/again.xml"));
    FUZZ_CHECK(fuzzRead(dir + QStringLiteral("/again.xml")) == first);
    return 0;
}
