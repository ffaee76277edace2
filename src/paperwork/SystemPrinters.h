// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QList>
#include <QRectF>
#include <QString>
#include <QStringList>
#include <functional>

class QPainter;
class QWidget;

// The printers of the system (through CUPS), the printer the process prints
// on, and the printing of pages, on a printer or into a PDF file. "PDF" is
// one more device beside the system's: a file that the technician names at
// printing time, so that the papers can be produced without any printer.
//
// Tests put fake printers in place of the system's: a job sent to one of
// them is recorded, drawn into a PDF in memory, and never reaches a spooler.
namespace SystemPrinters {

inline const QString kPdfDevice = QStringLiteral("PDF");

struct Printer
{
    QString name;
    bool a4 = true;     // its current paper size is A4
    bool fails = false; // tests: the job breaks off after the first page
};

// The system's printers, in the system's order (none when CUPS is not
// running).
QList<Printer> printers();
// The device names offered for A4 pages: the A4 printers, then "PDF".
QStringList a4Devices();
// Whether the system has a printer at all. "PDF" counts as one.
bool anyPrinter();

// The device the process prints on; the first of a4Devices until chosen.
QString current();
void setCurrent(const QString &device);

// Draws pages: paints on the painter inside page (the printable area, in
// the device's own units) and calls newPage() before each page after the
// first; newPage() false means the device gave up, and drawing stops.
using Drawer = std::function<void(QPainter &painter, const QRectF &page, const std::function<bool()> &newPage)>;

struct Outcome
{
    enum class Status { Sent, Cancelled, Failed };
    Status status = Status::Sent;
    QString message; // why, when Failed: a text for the technician
};

// A4, portrait, on the device by name. copies below 1: the printer's own
// number. A PDF holds the page once per copy; its file is asked for with
// proposedPdfName and written whole or not at all.
Outcome print(QWidget *parent, const QString &device, int copies, const QString &proposedPdfName, const Drawer &draw);

// Tests
struct Job
{
    QString device;
    int copies = 0;
    QByteArray pdf; // what would have been printed
};
void useForTests(const QList<Printer> &fakes);
void stopUsingTestPrinters();
QList<Job> jobs();

}
