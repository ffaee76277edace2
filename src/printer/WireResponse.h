// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QList>
#include <QPair>
#include <QString>
#include <cstdint>
#include <optional>

namespace Wire {

// A response's fields: field 0 the printer's result ("0" or "-1"), then
// Name=value pairs in Windows-1252. A field without '=' or with an empty
// name carries nothing and is skipped.
struct Response
{
    int16_t result = 0;
    QList<QPair<QString, QString>> properties;
};

// Nothing when field 0 is not a result the printer gives.
std::optional<Response> parseResponse(const QList<QByteArray> &fields);

} // namespace Wire
