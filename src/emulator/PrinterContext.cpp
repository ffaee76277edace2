// SPDX-License-Identifier: GPL-3.0-or-later
#include "PrinterContext.h"

#include "TextLayout.h"

PrinterContext::PrinterContext(const EmulatorConfig &config)
    : config(config), memory(PrinterMemory::fresh(config))
{
}

int PrinterContext::closureState() const
{
    int activity = memory.day.receipts + memory.day.cancelled;
    if (receipt && receipt->fiscal)
        ++activity;
    return 1 + activity;
}

QString PrinterContext::printerStatus() const
{
    const int paper = offline ? 3 : paperOut ? 2 : 0;
    const int journal = memory.journal.statusDigit();
    const int drawer = drawerOpen() ? 0 : 1;
    int doc = 1;
    if (receipt)
        doc = !receipt->fiscal ? 2 : receipt->phase == Receipt::Phase::Paying ? 3 : 0;
    else if (escPosError)
        doc = 4;
    return QStringLiteral("%1%2%3%4").arg(paper).arg(journal).arg(drawer).arg(doc);
}

std::optional<Reply> PrinterContext::cannotPrint() const
{
    if (offline)
        return Reply::refuse(PrinterError::Offline);
    if (paperOut)
        return Reply::refuse(PrinterError::PaperEnd);
    return std::nullopt;
}

std::optional<Reply> PrinterContext::cannotRecord() const
{
    if (auto r = cannotPrint())
        return r;
    if (!memory.journal.writable())
        return Reply::refuse(PrinterError::JournalEnd);
    return std::nullopt;
}

std::optional<Reply> PrinterContext::receiptOpen() const
{
    if (receipt)
        return Reply::refuse(PrinterError::CloseReceipt);
    return std::nullopt;
}

QStringList PrinterContext::headerBlock() const
{
    const int w = lineWidth();
    QStringList out;
    if (param(9) != 0 && !memory.logos.isEmpty())
        out << TextLayout::centred(QStringLiteral("[ LOGO %1 ]").arg(param(9)), w);
    for (const HeaderLine &h : memory.header) {
        if (h.text.trimmed().isEmpty())
            continue;
        QString t = h.text;
        if (h.style >= 3)
            t = TextLayout::centred(TextLayout::widened(t), w);
        out << t.left(w);
    }
    return out;
}

QStringList PrinterContext::fiscalFooter(int number) const
{
    const int w = lineWidth();
    QStringList out;
    out << TextLayout::row(TextLayout::stamp(now()), QStringLiteral("SC. N. %1").arg(number, 4, 10, QLatin1Char('0')), w);
    out << TextLayout::centred(QStringLiteral("MF ") + memory.serial, w);
    if (param(10) != 0 && !memory.logos.isEmpty())
        out << TextLayout::centred(QStringLiteral("[ LOGO %1 ]").arg(param(10)), w);
    return out;
}

void PrinterContext::printLines(const QStringList &lines)
{
    roll.print(lines);
    if (receipt)
        receipt->lines += lines;
}

void PrinterContext::printDocument(const QString &kind, int number, const QStringList &lines, bool journaled)
{
    roll.print(lines);
    finishDocument(kind, number, lines, journaled);
}

void PrinterContext::finishDocument(const QString &kind, int number, const QStringList &lines, bool journaled)
{
    roll.cut(lineWidth());
    if (journaled) {
        memory.journal.record({now(), kind, number, lines});
        changed();
    }
}

void PrinterContext::powerLost()
{
    m_receiptLost = receipt.has_value() || m_receiptLost;
    raw = {};
    journalRead = {};
    headerClosing = false;
    drawerOpenUntil = {};
}

void PrinterContext::powerBack()
{
    escPosError = false;
    if (!m_receiptLost)
        return;
    m_receiptLost = false;
    if (!receipt)
        return;
    const int w = lineWidth();
    QStringList tail{QString(), TextLayout::centred(QStringLiteral("*** SCONTRINO ANNULLATO ***"), w),
                     TextLayout::centred(QStringLiteral("MANCANZA DI ALIMENTAZIONE"), w),
                     TextLayout::stamp(now())};
    const bool fiscal = receipt->fiscal;
    QStringList all = receipt->lines + tail;
    roll.print(tail);
    roll.cut(w);
    receipt.reset();
    if (fiscal) {
        ++memory.day.cancelled;
        ++memory.period.cancelled;
    }
    memory.journal.record({now(), QStringLiteral("ANNULLATO"), 0, all});
    changed();
}
