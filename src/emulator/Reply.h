// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "settings/Currency.h"

#include <QByteArray>
#include <QDateTime>
#include <QList>
#include <QPair>
#include <QString>

// The printer's own refusal codes, sent as ErrorCode with result -1.
enum class PrinterError : int16_t {
    JournalEnd = 1,        // FINE CARTA GIORNALE DI FONDO
    PaperEnd = 2,          // FINE CARTA SCONTRINO
    Offline = 3,           // STAMPANTE OFFLINE
    DateBefore = 9,        // DATA INFERIORE
    DateWrong = 10,        // DATA ERRATA
    Sequence = 11,         // SEQUENZA ERRATA
    NoData = 12,           // DATI INESISTENTI
    BadValue = 13,         // VALORE ERRATO
    NotProvided = 16,      // NON PREVISTO
    NotNow = 17,           // IMPOSSIBILE ORA
    NotPossible = 18,      // NON POSSIBILE
    BadText = 19,          // SCRITTA INVALIDA
    OverValue = 20,        // SUPERA VALORE
    OverLimit = 21,        // SUPERA LIMITE
    NotProgrammed = 22,    // NON PROGRAMMATO
    CloseReceipt = 23,     // CHIUDERE LO SCONTRINO
    ClosePayment = 24,     // CHIUDERE IL PAGAMENTO
    NoOperator = 25,       // MANCA L'OPERATORE
    MissingPcData = 31,    // DATI INESISTENTI PC
};

// The answer to one command: result 0 or -1 and the properties it sets, as
// Name=value with the value in its wire form.
struct Reply
{
    int16_t result = 0;
    QList<QPair<QByteArray, QByteArray>> properties;

    static Reply ok() { return {}; }
    static Reply refuse(PrinterError e);

    Reply &with(const char *name, int value);
    Reply &with(const char *name, float value);
    Reply &with(const char *name, Currency value);
    Reply &with(const char *name, const QString &text);
    Reply &with(const char *name, const QDateTime &value);

    // Test helpers: the value of a property as text (decoded), empty when absent.
    QString property(const char *name) const;
    bool has(const char *name) const;
    int errorCode() const { return property("ErrorCode").toInt(); }
    bool isOk() const { return result == 0; }

    // The response's fields after SEQ: the result, then Name=value.
    QList<QByteArray> fields() const;
};
