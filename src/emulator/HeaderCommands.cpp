// SPDX-License-Identifier: GPL-3.0-or-later
#include "HeaderCommands.h"

#include "PrinterContext.h"
#include "TextLayout.h"

void HeaderCommands::install(CommandTable &t)
{
    t.insert("WriteHeaderLine", [this](ArgReader &a) { return writeLine(a); });
    t.insert("WriteHeaderStyle", [this](ArgReader &a) { return writeStyle(a); });
    t.insert("ReadHeaderLine", [this](ArgReader &a) { return readLine(a); });
    t.insert("ReadHeaderStyle", [this](ArgReader &a) { return readStyle(a); });
}

std::optional<Reply> HeaderCommands::cannotChange() const
{
    if (auto r = m_ctx.receiptOpen())
        return r;
    if (m_ctx.closureState() > 1)
        return Reply::refuse(PrinterError::NotNow);
    return std::nullopt;
}

Reply HeaderCommands::writeLine(ArgReader &a)
{
    const int n = a.integer();
    const QString text = a.text();
    if (!a.ok())
        return a.failure();
    if (n == 98 || n == 99)
        return closeProgramming(n, text);
    if (n < 1 || n > PrinterMemory::HeaderLines)
        return Reply::refuse(PrinterError::NotProvided);
    if (auto r = cannotChange())
        return *r;
    if (text.size() > m_ctx.config.headerWidth())
        return Reply::refuse(PrinterError::BadText);
    HeaderLine &line = m_ctx.memory.header[n - 1];
    if (line.text != text) {
        line.text = text;
        m_ctx.changed();
    }
    return Reply::ok();
}

Reply HeaderCommands::closeProgramming(int pseudoLine, const QString &text)
{
    if (!text.trimmed().isEmpty())
        return Reply::refuse(PrinterError::BadValue);
    if (auto r = cannotChange())
        return *r;
    if (pseudoLine == 98) {
        m_ctx.headerClosing = true;
        return Reply::ok();
    }
    if (!m_ctx.headerClosing)
        return Reply::refuse(PrinterError::Sequence);
    if (auto r = m_ctx.cannotPrint())
        return *r;
    m_ctx.headerClosing = false;
    const int w = m_ctx.lineWidth();
    QStringList lines = m_ctx.headerBlock();
    lines << QString() << TextLayout::centred(QStringLiteral("PROGRAMMAZIONE INTESTAZIONE"), w)
          << TextLayout::stamp(m_ctx.now());
    m_ctx.printDocument(QStringLiteral("INTESTAZIONE"), 0, lines, false);
    return Reply::ok();
}

Reply HeaderCommands::writeStyle(ArgReader &a)
{
    const int n = a.integer();
    const int style = a.integer();
    if (!a.ok())
        return a.failure();
    if (n < 1 || n > PrinterMemory::HeaderLines)
        return Reply::refuse(PrinterError::NotProvided);
    if (style < 1 || style > 4)
        return Reply::refuse(PrinterError::BadValue);
    if (auto r = cannotChange())
        return *r;
    HeaderLine &line = m_ctx.memory.header[n - 1];
    if (line.style != style) {
        line.style = style;
        m_ctx.changed();
    }
    return Reply::ok();
}

Reply HeaderCommands::readLine(ArgReader &a)
{
    const int n = a.integer();
    if (!a.ok())
        return a.failure();
    if (n < 1 || n > PrinterMemory::HeaderLines)
        return Reply::refuse(PrinterError::NotProvided);
    const QString text = m_ctx.memory.header[n - 1].text.leftJustified(m_ctx.config.headerWidth(), QLatin1Char(' '));
    return Reply::ok().with("HeaderLineText", text);
}

Reply HeaderCommands::readStyle(ArgReader &a)
{
    const int n = a.integer();
    if (!a.ok())
        return a.failure();
    if (n < 1 || n > PrinterMemory::HeaderLines)
        return Reply::refuse(PrinterError::NotProvided);
    return Reply::ok().with("HeaderStyle", m_ctx.memory.header[n - 1].style);
}
