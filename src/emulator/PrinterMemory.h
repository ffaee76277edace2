// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ElectronicJournal.h"
#include "EmulatorConfig.h"
#include "Totals.h"

#include <QByteArray>
#include <QDateTime>
#include <QList>
#include <QMap>
#include <QString>

struct Department
{
    QString description;
    Currency price1, price2, price3;
    int iva = 0; // VAT row 1..4; 0: not programmed
    Currency limit; // highest unit price; 0: none
    int scontRiass = 0;
    int grpMerc = 0;
    bool operator==(const Department &) const = default;
};

struct TicketRow
{
    QString description;
    Currency value;
    bool operator==(const TicketRow &) const = default;
};

struct CashRow
{
    QString description;
    Currency preset;
    bool operator==(const CashRow &) const = default;
};

struct OperatorRow
{
    QString description;
    int password = 0;
    float percent = 0;
    bool operator==(const OperatorRow &) const = default;
};

struct PromoRow
{
    QString description;
    int32_t type = 0; // also the promotion table (1..3) its total belongs to
    QString barcode;
    int recall = 0;
    Currency value;
    Currency total;
    bool operator==(const PromoRow &) const = default;
};

struct HeaderLine
{
    QString text;
    int style = 1; // 1 normal, 2 evidenziata, 3 doppia, 4 doppia evidenziata
    bool operator==(const HeaderLine &) const = default;
};

struct LogoImage
{
    QByteArray data;
    QDateTime loaded;
};

// One daily closure as the fiscal memory keeps it.
struct ClosureRecord
{
    int number = 0;
    QDateTime when;
    int receipts = 0;
    Currency total;
    QMap<int, Currency> vat; // by VAT row
};

// Everything the printer keeps across a power cycle: what the state file holds.
struct PrinterMemory
{
    QString serial;          // the printer that wrote it
    qint64 clockOffsetMs = 0; // the printer's clock less the PC's

    QList<float> iva;                // 4 rows
    QList<Department> departments;   // the configured count
    QList<QString> cards;            // 10
    QList<TicketRow> tickets;        // 10
    QList<CashRow> cash;             // 5
    QList<OperatorRow> operators;    // 12
    QList<int> ps2;                  // 256 keys, 0..255
    QList<PromoRow> promos;          // 100
    QList<int> flags;                // section 14, flag n at n - 1
    QList<int> params;               // section 15, parameter n at n - 1
    QList<HeaderLine> header;        // 6

    QList<LogoImage> logos;
    QList<ClosureRecord> fiscalMemory;
    ElectronicJournal journal;

    Totals day, period;
    QMap<int, Currency> pluTotals;   // PLU 1..1000
    int receiptNumber = 0;           // last fiscal receipt since the closure
    int documentNumber = 0;          // last non-fiscal document
    QDateTime lastClosure;

    static constexpr int IvaRows = 4, CardRows = 10, TicketRows = 10, CashRows = 5, OperatorRows = 12,
                         Ps2Keys = 256, PromoRows = 100, HeaderLines = 6, PluCount = 1000;

    // A printer as it leaves the shop: VAT rates, some departments, cards,
    // tickets and cash descriptions, flags and parameters at their defaults.
    static PrinterMemory fresh(const EmulatorConfig &config);
    // Brings the table sizes to the configuration (new rows empty, surplus dropped).
    void fit(const EmulatorConfig &config);
};
