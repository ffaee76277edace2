// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "CommandTable.h"
#include "DeviceCommands.h"
#include "HeaderCommands.h"
#include "JournalCommands.h"
#include "LogoCommands.h"
#include "PrinterContext.h"
#include "ProgrammingCommands.h"
#include "ReportCommands.h"
#include "SaleCommands.h"

#include <QJsonObject>

// The simulated fiscal printer: pure logic, no transport. execute() takes a
// request as it comes off the wire (the member's name and its argument
// fields) and gives the answer (result and Name=value properties).
class PrinterModel
{
public:
    explicit PrinterModel(const EmulatorConfig &config);
    PrinterModel(const PrinterModel &) = delete;
    PrinterModel &operator=(const PrinterModel &) = delete;

    Reply execute(const QByteArray &name, const QList<QByteArray> &args);
    bool knows(const QByteArray &name) const { return m_commands.contains(name); }

    PrinterContext &context() { return m_ctx; }
    const PrinterContext &context() const { return m_ctx; }
    const EmulatorConfig &config() const { return m_ctx.config; }
    PrinterMemory &memory() { return m_ctx.memory; }

    // True once after each command that changed the memory.
    bool takeChanged() { return m_ctx.takeDirty(); }

    // The memory for the state file, and back.
    QJsonObject saveMemory() const;
    void loadMemory(const QJsonObject &json);

    // Switches of the printer's condition.
    void setPaperOut(bool on) { m_ctx.paperOut = on; }
    void setOffline(bool on) { m_ctx.offline = on; }
    void setJournalCondition(ElectronicJournal::Condition c);
    void powerLost() { m_ctx.powerLost(); }
    void powerBack() { m_ctx.powerBack(); }

    // A short human description for the console.
    QString describe() const;

private:
    PrinterContext m_ctx;
    CommandTable m_commands;
    DeviceCommands m_device;
    ProgrammingCommands m_programming;
    HeaderCommands m_header;
    LogoCommands m_logos;
    SaleCommands m_sales;
    ReportCommands m_reports;
    JournalCommands m_journal;
};
