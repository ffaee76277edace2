// SPDX-License-Identifier: GPL-3.0-or-later
#include "DeviceCommands.h"

#include "PrinterContext.h"

void DeviceCommands::install(CommandTable &t)
{
    t.insert("ReadDateTime", [this](ArgReader &) { return readDateTime(); });
    t.insert("SetDateTime", [this](ArgReader &a) { return setDateTime(a); });
    t.insert("ReadClosureState", [this](ArgReader &a) {
        a.integer();
        if (!a.ok())
            return a.failure();
        return Reply::ok().with("ClosureState", m_ctx.closureState());
    });
    t.insert("ReadPrinterInfo", [this](ArgReader &a) { return readPrinterInfo(a); });
    t.insert("ReadMatricola", [this](ArgReader &a) { return readMatricola(a); });
    t.insert("ReadDgfeStatus", [this](ArgReader &a) { return readDgfeStatus(a); });
    t.insert("ReadAzzeramenti", [this](ArgReader &) {
        return Reply::ok().with("Azzeramenti", m_ctx.config.resets + int(m_ctx.memory.fiscalMemory.size()));
    });
    t.insert("OpenDrawer", [this](ArgReader &a) {
        a.integer();
        if (!a.ok())
            return a.failure();
        m_ctx.drawerOpenUntil = m_ctx.systemClock().addSecs(5);
        return Reply::ok();
    });
    t.insert("FeedPaper", [this](ArgReader &a) { return feedPaper(a); });
    t.insert("LockKeys", [this](ArgReader &a) {
        a.integer();
        if (!a.ok())
            return a.failure();
        m_ctx.keysLocked = true;
        return Reply::ok();
    });
    t.insert("UnlockKeys", [this](ArgReader &a) {
        a.integer();
        if (!a.ok())
            return a.failure();
        m_ctx.keysLocked = false;
        return Reply::ok();
    });
}

Reply DeviceCommands::readDateTime()
{
    const QDateTime now = m_ctx.now();
    // Seconds as the printer shows them: whole.
    const QDateTime shown(now.date(), QTime(now.time().hour(), now.time().minute(), now.time().second()));
    return Reply::ok()
        .with("DateTime", shown)
        .with("DateDay", now.date().day())
        .with("DateMonth", now.date().month())
        .with("DateYear", now.date().year() % 100);
}

Reply DeviceCommands::setDateTime(ArgReader &a)
{
    const int day = a.integer(), month = a.integer();
    int year = a.integer();
    const int hour = a.integer(), minute = a.integer();
    if (!a.ok())
        return a.failure();
    if (year >= 0 && year < 100)
        year += 2000;
    const QDate date(year, month, day);
    const QTime time(hour, minute);
    if (!date.isValid() || !time.isValid() || year < 2000 || year > 2099)
        return Reply::refuse(PrinterError::DateWrong);
    if (auto r = m_ctx.receiptOpen())
        return *r;
    if (m_ctx.closureState() > 1)
        return Reply::refuse(PrinterError::NotNow);
    const QDateTime target(date, time);
    const QDateTime last = m_ctx.memory.lastClosure;
    if (last.isValid()) {
        const QDateTime lastMinute(last.date(), QTime(last.time().hour(), last.time().minute()));
        if (target < lastMinute)
            return Reply::refuse(PrinterError::DateBefore);
    }
    m_ctx.memory.clockOffsetMs = m_ctx.systemClock().msecsTo(target);
    m_ctx.changed();
    return Reply::ok();
}

Reply DeviceCommands::readPrinterInfo(ArgReader &a)
{
    a.integer();
    if (!a.ok())
        return a.failure();
    return Reply::ok()
        .with("PrinterStatus", m_ctx.printerStatus())
        .with("FirmwareVersion", m_ctx.config.effectiveFirmware())
        .with("FiscalMemoryVersion", m_ctx.config.fiscalMemoryVersion);
}

Reply DeviceCommands::readMatricola(ArgReader &a)
{
    a.integer();
    if (!a.ok())
        return a.failure();
    const QString s = m_ctx.config.effectiveSerial();
    return Reply::ok()
        .with("MatricolaPrefix", s.left(2))
        .with("MatricolaModel", s.mid(2, 2))
        .with("MatricolaNumber", s.mid(4).toInt());
}

Reply DeviceCommands::readDgfeStatus(ArgReader &a)
{
    a.integer();
    if (!a.ok())
        return a.failure();
    const ElectronicJournal &j = m_ctx.memory.journal;
    return Reply::ok().with("DgfeState", j.dgfeState()).with("DgfePercent", j.percent()).with("DgfeNumber", j.number);
}

Reply DeviceCommands::feedPaper(ArgReader &a)
{
    a.integer();
    const int lines = a.longInt();
    if (!a.ok())
        return a.failure();
    if (lines < 1 || lines > 99)
        return Reply::refuse(PrinterError::BadValue);
    if (auto r = m_ctx.cannotPrint())
        return *r;
    for (int i = 0; i < lines; ++i)
        m_ctx.printLines({QString()});
    return Reply::ok();
}
