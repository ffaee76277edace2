// SPDX-License-Identifier: GPL-3.0-or-later
#include "ArgReader.h"

#include "settings/Cp1252.h"

#include <charconv>
#include <cmath>
#include <limits>

void ArgReader::fail(PrinterError e)
{
    if (!m_error)
        m_error = e;
}

const QByteArray *ArgReader::take()
{
    if (m_next >= m_args.size()) {
        fail(PrinterError::MissingPcData);
        return nullptr;
    }
    return &m_args[m_next++];
}

int64_t ArgReader::number(int64_t min, int64_t max)
{
    const QByteArray *f = take();
    if (!f)
        return 0;
    bool ok = false;
    const qlonglong v = f->trimmed().toLongLong(&ok);
    if (!ok || v < min || v > max) {
        fail(PrinterError::BadValue);
        return 0;
    }
    return v;
}

int16_t ArgReader::integer()
{
    return int16_t(number(std::numeric_limits<int16_t>::min(), std::numeric_limits<int16_t>::max()));
}

int32_t ArgReader::longInt()
{
    return int32_t(number(std::numeric_limits<int32_t>::min(), std::numeric_limits<int32_t>::max()));
}

Currency ArgReader::currency()
{
    return Currency::fromScaled(number(std::numeric_limits<int64_t>::min(), std::numeric_limits<int64_t>::max()));
}

bool ArgReader::boolean()
{
    return number(0, 1) == 1;
}

float ArgReader::single()
{
    const QByteArray *f = take();
    if (!f)
        return 0;
    const QByteArray t = f->trimmed();
    float v = 0;
    const auto res = std::from_chars(t.constData(), t.constData() + t.size(), v);
    if (t.isEmpty() || res.ec != std::errc() || res.ptr != t.constData() + t.size() || !std::isfinite(v)) {
        fail(PrinterError::BadValue);
        return 0;
    }
    return v;
}

QString ArgReader::text()
{
    const QByteArray *f = take();
    return f ? Cp1252::decode(*f) : QString();
}

QByteArray ArgReader::bytes()
{
    const QByteArray *f = take();
    return f ? *f : QByteArray();
}
