// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QVariant>
#include <cstdint>

// Turns a result of the control into a message box; 0 shows nothing. The
// caller has already decided to report and goes on by itself afterwards.
void ReportResult(int16_t &result, const QVariant &reserved = {}, const QString &extraText = QString());
// For callers that report a literal or a temporary.
void ReportResult(int16_t &&result);
