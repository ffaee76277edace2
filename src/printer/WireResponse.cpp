// SPDX-License-Identifier: GPL-3.0-or-later
#include "WireResponse.h"

#include "settings/Cp1252.h"

namespace Wire {

std::optional<Response> parseResponse(const QList<QByteArray> &fields)
{
    const QByteArray result = fields.isEmpty() ? QByteArray() : fields.first().trimmed();
    if (result != "0" && result != "-1")
        return std::nullopt;
    Response response;
    response.result = result == "0" ? 0 : -1;
    response.properties.reserve(fields.size() - 1);
    for (qsizetype i = 1; i < fields.size(); ++i) {
        const QByteArray &field = fields[i];
        const qsizetype eq = field.indexOf('=');
        if (eq <= 0)
            continue;
        response.properties.append({Cp1252::decode(field.constData(), eq),
                                    Cp1252::decode(field.constData() + eq + 1, field.size() - eq - 1)});
    }
    return response;
}

} // namespace Wire
