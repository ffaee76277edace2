// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Reply.h"

#include <QList>
#include <optional>

// Reads the argument fields of a request in order, each as its type. The
// first field that is missing or does not read as its type is remembered:
// a missing one makes the command fail with DATI INESISTENTI PC, a malformed
// one with VALORE ERRATO. Fields beyond those read are ignored.
class ArgReader
{
public:
    explicit ArgReader(const QList<QByteArray> &args) : m_args(args) {}

    int16_t integer();
    int32_t longInt();
    float single();
    Currency currency();
    bool boolean();
    QString text();      // Windows-1252
    QByteArray bytes();  // as they came

    bool ok() const { return !m_error; }
    Reply failure() const { return Reply::refuse(m_error.value_or(PrinterError::BadValue)); }

private:
    const QByteArray *take();
    int64_t number(int64_t min, int64_t max);
    void fail(PrinterError e);

    const QList<QByteArray> &m_args;
    qsizetype m_next = 0;
    std::optional<PrinterError> m_error;
};
