// SPDX-License-Identifier: GPL-3.0-or-later
#include "PrinterModel.h"

#include "MemoryCodec.h"
#include "TextLayout.h"

PrinterModel::PrinterModel(const EmulatorConfig &config)
    : m_ctx(config), m_device(m_ctx), m_programming(m_ctx), m_header(m_ctx), m_logos(m_ctx), m_sales(m_ctx),
      m_reports(m_ctx), m_journal(m_ctx)
{
    m_device.install(m_commands);
    m_programming.install(m_commands);
    m_header.install(m_commands);
    m_logos.install(m_commands);
    m_sales.install(m_commands);
    m_reports.install(m_commands);
    m_journal.install(m_commands);
}

Reply PrinterModel::execute(const QByteArray &name, const QList<QByteArray> &args)
{
    const auto it = m_commands.constFind(name);
    if (it == m_commands.constEnd())
        return Reply::refuse(PrinterError::NotProvided);
    ArgReader reader(args);
    return it.value()(reader);
}

QJsonObject PrinterModel::saveMemory() const
{
    return MemoryCodec::toJson(m_ctx.memory);
}

void PrinterModel::loadMemory(const QJsonObject &json)
{
    PrinterMemory m = PrinterMemory::fresh(m_ctx.config);
    MemoryCodec::fromJson(json, m);
    m.fit(m_ctx.config);
    m_ctx.memory = m;
}

void PrinterModel::setJournalCondition(ElectronicJournal::Condition c)
{
    if (m_ctx.memory.journal.forced != c) {
        m_ctx.memory.journal.forced = c;
        m_ctx.journalRead = {};
        m_ctx.changed();
    }
}

QString PrinterModel::describe() const
{
    const PrinterContext &c = m_ctx;
    const PrinterMemory &m = c.memory;
    QString receipt = QStringLiteral("none");
    if (c.receipt)
        receipt = QStringLiteral("%1, operator %2, total %3, due %4")
                      .arg(c.receipt->fiscal ? QStringLiteral("fiscal") : QStringLiteral("non-fiscal"))
                      .arg(c.receipt->op)
                      .arg(TextLayout::money(c.receipt->total()), TextLayout::money(c.receipt->due()));
    return QStringLiteral(
               "printer   %1 %2, firmware %3, fiscal memory %4\n"
               "clock     %5 (offset %6 s)\n"
               "status    %7 (paper, journal, drawer, receipt); closure state %8; learning mode %9\n"
               "receipt   %10\n"
               "day       %11 receipts, total %12; last closure %13; closures %14\n"
               "journal   DGFE %15, %16, %17% used, %18 documents\n"
               "logos     %19 in memory\n")
        .arg(EmulatorConfig::modelName(c.config.model), c.config.effectiveSerial(), c.config.effectiveFirmware(),
             c.config.fiscalMemoryVersion)
        .arg(c.now().toString(QStringLiteral("dd-MM-yyyy HH:mm:ss")))
        .arg(m.clockOffsetMs / 1000)
        .arg(c.printerStatus())
        .arg(c.closureState())
        .arg(c.learningMode() ? QStringLiteral("on") : QStringLiteral("off"))
        .arg(receipt)
        .arg(m.day.receipts)
        .arg(TextLayout::money(m.day.net()))
        .arg(m.lastClosure.isValid() ? m.lastClosure.toString(QStringLiteral("dd-MM-yyyy HH:mm")) : QStringLiteral("none"))
        .arg(c.config.resets + m.fiscalMemory.size())
        .arg(m.journal.number)
        .arg(ElectronicJournal::conditionName(m.journal.condition()))
        .arg(m.journal.percent())
        .arg(m.journal.entries().size())
        .arg(m.logos.size());
}
