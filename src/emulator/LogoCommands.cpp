// SPDX-License-Identifier: GPL-3.0-or-later
#include "LogoCommands.h"

#include "PrinterContext.h"
#include "TextLayout.h"

const QByteArray LogoCommands::ChannelName = QByteArrayLiteral("FPEXTENDEDGRAPHIC");
const QByteArray LogoCommands::LoadOpening = QByteArrayLiteral("AGGIORNAMENTO LOGO GRAFICO....\n\r");
const QByteArray LogoCommands::LoadClosing = QByteArrayLiteral("AGGIORNAMENTO LOGO GRAFICO TERMINATO\n\r");
const QByteArray LogoCommands::ClearOpening = QByteArrayLiteral("CANCELLAZIONE AREA LOGHI...\n\r");
const QByteArray LogoCommands::ClearCommands = QByteArray::fromHex(
    "1D28450300" "01494E"     // enter the user setting mode
    "1D28450400" "05020200"   // set customised values
    "1D28450400" "05020700"
    "1D28450400" "024F5554"); // leave the user setting mode

void LogoCommands::install(CommandTable &t)
{
    t.insert("OpenRawChannel", [this](ArgReader &a) { return open(a); });
    t.insert("BeginRawTransfer", [this](ArgReader &a) { return begin(a); });
    t.insert("SendRawData", [this](ArgReader &a) { return send(a); });
    t.insert("CloseRawChannel", [this](ArgReader &a) { return close(a); });
    t.insert("LoadLogoFile", [this](ArgReader &a) { return loadFile(a); });
}

Reply LogoCommands::open(ArgReader &a)
{
    const int channel = a.integer();
    const QByteArray name = a.bytes();
    if (!a.ok())
        return a.failure();
    if (m_ctx.config.oldFirmware() || name != ChannelName)
        return Reply::refuse(PrinterError::NotProvided);
    if (channel != 1)
        return Reply::refuse(PrinterError::BadValue);
    if (auto r = m_ctx.receiptOpen())
        return *r;
    if (auto r = m_ctx.cannotPrint())
        return *r;
    m_ctx.raw = {};
    m_ctx.raw.open = true;
    return Reply::ok();
}

Reply LogoCommands::begin(ArgReader &a)
{
    a.integer();
    const qint64 size = a.longInt();
    a.boolean();
    a.text();
    if (!a.ok())
        return a.failure();
    if (!m_ctx.raw.open)
        return Reply::refuse(PrinterError::Sequence);
    if (size < 0 || size > 4 * MemoryBytes)
        return Reply::refuse(PrinterError::BadValue);
    m_ctx.raw.begun = true;
    m_ctx.raw.announced = size;
    m_ctx.raw.data.clear();
    return Reply::ok();
}

Reply LogoCommands::send(ArgReader &a)
{
    const QByteArray piece = a.bytes();
    if (!a.ok())
        return a.failure();
    if (!m_ctx.raw.open || !m_ctx.raw.begun)
        return Reply::refuse(PrinterError::Sequence);
    m_ctx.raw.data += piece;
    if (m_ctx.raw.data.size() > m_ctx.raw.announced)
        return Reply::refuse(PrinterError::OverValue);
    return Reply::ok();
}

Reply LogoCommands::close(ArgReader &a)
{
    a.integer();
    if (!a.ok())
        return a.failure();
    // Closing a channel that is not open is harmless: programs close once
    // more after a failed job.
    if (!m_ctx.raw.open)
        return Reply::ok();
    const PrinterContext::RawJob job = m_ctx.raw;
    m_ctx.raw = {};
    if (!job.begun || job.data.size() != job.announced)
        fail(QStringLiteral("TRASFERIMENTO INCOMPLETO"));
    else
        runJob(job.data);
    return Reply::ok();
}

void LogoCommands::runJob(const QByteArray &job)
{
    if (job.startsWith(ClearOpening)) {
        if (!job.mid(ClearOpening.size()).startsWith(ClearCommands.left(8)) || !job.endsWith(ClearCommands.right(9))) {
            fail(QStringLiteral("COMANDI NON VALIDI"));
            return;
        }
        m_ctx.printDocument(QStringLiteral("LOGHI"), 0,
                            {QString::fromLatin1(ClearOpening.trimmed()), QStringLiteral("AREA LOGHI CANCELLATA")}, false);
        if (!m_ctx.memory.logos.isEmpty()) {
            m_ctx.memory.logos.clear();
            m_ctx.changed();
        }
        m_ctx.escPosError = false;
        return;
    }
    if (job.startsWith(LoadOpening) && job.endsWith(LoadClosing)
        && job.size() >= LoadOpening.size() + LoadClosing.size()) {
        store(job.mid(LoadOpening.size(), job.size() - LoadOpening.size() - LoadClosing.size()));
        return;
    }
    fail(QStringLiteral("LAVORO SCONOSCIUTO"));
}

Reply LogoCommands::loadFile(ArgReader &a)
{
    const QByteArray content = a.bytes();
    if (!a.ok())
        return a.failure();
    if (auto r = m_ctx.receiptOpen())
        return *r;
    if (auto r = m_ctx.cannotPrint())
        return *r;
    store(content);
    return m_ctx.escPosError ? Reply::refuse(PrinterError::BadValue) : Reply::ok();
}

void LogoCommands::store(const QByteArray &image)
{
    if (image.isEmpty()) {
        fail(QStringLiteral("LOGO VUOTO"));
        return;
    }
    qint64 used = 0;
    for (const auto &l : m_ctx.memory.logos)
        used += l.data.size();
    if (used + image.size() > MemoryBytes) {
        fail(QStringLiteral("MEMORIA LOGHI PIENA"));
        return;
    }
    m_ctx.memory.logos.append({image, m_ctx.now()});
    m_ctx.changed();
    m_ctx.escPosError = false;
    m_ctx.printDocument(QStringLiteral("LOGHI"), 0,
                        {QString::fromLatin1(LoadOpening.trimmed()),
                         QStringLiteral("LOGO %1: %2 BYTE").arg(m_ctx.memory.logos.size()).arg(image.size()),
                         QString::fromLatin1(LoadClosing.trimmed())},
                        false);
}

void LogoCommands::fail(const QString &why)
{
    m_ctx.escPosError = true;
    m_ctx.printDocument(QStringLiteral("LOGHI"), 0, {QStringLiteral("ERRORE ESC/POS"), why}, false);
}
