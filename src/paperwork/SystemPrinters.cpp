// SPDX-License-Identifier: GPL-3.0-or-later
#include "SystemPrinters.h"

#include "ui/FileDialog.h"

#include <QBuffer>
#include <QDir>
#include <QFileInfo>
#include <QPageLayout>
#include <QPainter>
#include <QPdfWriter>
#include <QPrinter>
#include <QPrinterInfo>
#include <QSaveFile>
#include <optional>

namespace {

struct State
{
    QString current;
    std::optional<QList<SystemPrinters::Printer>> fakes;
    QList<SystemPrinters::Job> jobs;
};

State &state()
{
    static State s;
    return s;
}

// The printable area of a PDF page: the margins a laser printer keeps.
constexpr double kPdfMarginMm = 5.0;
constexpr int kPdfResolution = 600;

void setUpPdf(QPdfWriter &writer)
{
    writer.setResolution(kPdfResolution);
    writer.setCreator(QStringLiteral("Fiscorda"));
    writer.setPageLayout(QPageLayout(QPageSize(QPageSize::A4), QPageLayout::Portrait,
                                     QMarginsF(kPdfMarginMm, kPdfMarginMm, kPdfMarginMm, kPdfMarginMm),
                                     QPageLayout::Millimeter));
}

QRectF printableArea(const QPagedPaintDevice &device, const QPageLayout &layout)
{
    return QRectF(QPointF(0, 0), QSizeF(layout.paintRectPixels(device.logicalDpiX()).size()));
}

// Draws copies times into a PDF writer; false when a page could not be added.
bool drawPdf(QPdfWriter &writer, int copies, const SystemPrinters::Drawer &draw)
{
    QPainter painter;
    if (!painter.begin(&writer))
        return false;
    const QRectF page = printableArea(writer, writer.pageLayout());
    bool ok = true;
    auto newPage = [&] { return ok = ok && writer.newPage(); };
    for (int copy = 0; copy < std::max(copies, 1) && ok; ++copy) {
        if (copy > 0 && !newPage())
            break;
        draw(painter, page, newPage);
    }
    return painter.end() && ok;
}

SystemPrinters::Outcome failed(const QString &message)
{
    return {SystemPrinters::Outcome::Status::Failed, message};
}

SystemPrinters::Outcome printPdf(QWidget *parent, int copies, const QString &proposed, const SystemPrinters::Drawer &draw)
{
    const std::optional<QString> chosen = FileDialog::save(parent, QStringLiteral("Salva in PDF"), proposed,
                                                           QStringLiteral("Documenti PDF (*.pdf)"));
    if (!chosen)
        return {SystemPrinters::Outcome::Status::Cancelled, {}};
    QString path = *chosen;
    if (QFileInfo(path).suffix().isEmpty())
        path += QStringLiteral(".pdf");
    const QString shown = QDir::toNativeSeparators(path);
    // The file appears only once it is whole: an old one stays as it was if
    // anything goes wrong.
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return failed(QStringLiteral("Impossibile scrivere il file %1: %2").arg(shown, file.errorString()));
    bool drawn = false;
    {
        QPdfWriter writer(&file);
        setUpPdf(writer);
        drawn = drawPdf(writer, copies, draw);
    }
    if (!drawn) {
        file.cancelWriting();
        return failed(QStringLiteral("Impossibile scrivere il file %1.").arg(shown));
    }
    if (!file.commit())
        return failed(QStringLiteral("Impossibile scrivere il file %1: %2").arg(shown, file.errorString()));
    return {};
}

SystemPrinters::Outcome printFake(const SystemPrinters::Printer &fake, int copies, const SystemPrinters::Drawer &draw)
{
    SystemPrinters::Job job{fake.name, copies, {}};
    QBuffer buffer(&job.pdf);
    buffer.open(QIODevice::WriteOnly);
    {
        QPdfWriter writer(&buffer);
        setUpPdf(writer);
        QPainter painter(&writer);
        auto newPage = [&] { return !fake.fails && writer.newPage(); };
        draw(painter, printableArea(writer, writer.pageLayout()), newPage);
    }
    state().jobs.append(job);
    if (fake.fails)
        return failed(QStringLiteral("La stampa su %1 si è interrotta.").arg(fake.name));
    return {};
}

SystemPrinters::Outcome printOnPrinter(const QString &device, int copies, const SystemPrinters::Drawer &draw)
{
    const QPrinterInfo info = QPrinterInfo::printerInfo(device);
    if (info.isNull())
        return failed(QStringLiteral("La stampante %1 non è disponibile.").arg(device));
    QPrinter printer(info, QPrinter::HighResolution);
    printer.setDocName(QStringLiteral("Fiscorda"));
    // Size, orientation and copies that the printer does not take are let
    // go: it prints with its own.
    printer.setPageSize(QPageSize(QPageSize::A4));
    printer.setPageOrientation(QPageLayout::Portrait);
    if (copies > 0)
        printer.setCopyCount(copies);
    QPainter painter;
    if (!painter.begin(&printer))
        return failed(QStringLiteral("Impossibile stampare su %1.").arg(device));
    bool ok = true;
    auto newPage = [&] { return ok = ok && printer.newPage(); };
    draw(painter, QRectF(QPointF(0, 0), printer.pageRect(QPrinter::DevicePixel).size()), newPage);
    if (!painter.end() || !ok || printer.printerState() == QPrinter::Error) {
        printer.abort();
        return failed(QStringLiteral("La stampa su %1 si è interrotta.").arg(device));
    }
    return {};
}

}

QList<SystemPrinters::Printer> SystemPrinters::printers()
{
    if (state().fakes)
        return *state().fakes;
    QList<Printer> list;
    for (const QPrinterInfo &info : QPrinterInfo::availablePrinters())
        list.append({info.printerName(), info.defaultPageSize().id() == QPageSize::A4, false});
    return list;
}

QStringList SystemPrinters::a4Devices()
{
    QStringList names;
    // A system queue that is itself called "PDF" (a PDF printer) makes the
    // same thing as the file: the one entry stands for both.
    for (const Printer &p : printers())
        if (p.a4 && p.name != kPdfDevice)
            names.append(p.name);
    names.append(kPdfDevice);
    return names;
}

bool SystemPrinters::anyPrinter()
{
    return true; // "PDF" is always there
}

QString SystemPrinters::current()
{
    if (state().current.isEmpty())
        return a4Devices().constFirst();
    return state().current;
}

void SystemPrinters::setCurrent(const QString &device)
{
    state().current = device;
}

SystemPrinters::Outcome SystemPrinters::print(QWidget *parent, const QString &device, int copies,
                                              const QString &proposedPdfName, const Drawer &draw)
{
    if (device == kPdfDevice)
        return printPdf(parent, copies, proposedPdfName, draw);
    if (state().fakes) {
        for (const Printer &fake : *state().fakes)
            if (fake.name == device)
                return printFake(fake, copies, draw);
        return failed(QStringLiteral("La stampante %1 non è disponibile.").arg(device));
    }
    return printOnPrinter(device, copies, draw);
}

void SystemPrinters::useForTests(const QList<Printer> &fakes)
{
    state() = State{};
    state().fakes = fakes;
}

void SystemPrinters::stopUsingTestPrinters()
{
    state() = State{};
}

QList<SystemPrinters::Job> SystemPrinters::jobs()
{
    return state().jobs;
}
