// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "settings/Currency.h"

#include <QList>
#include <QString>
#include <QStringList>
#include <QtCore/qnamespace.h>
#include <cstdint>
#include <optional>

class KelvoFPControl;
class ProgrammingGrid;

// The printer's programmable tables: how many rows each has, what a row
// holds, how it is named on the printer, on the screen and in the file.
// Reading, file, restoring and the editor all move rows through these
// descriptions; a table or a column is added here and nowhere else.

enum class TableId {
    Iva,
    Reparti,
    CarteCredito,
    Ticket,
    ContantiDesc,
    Operatori,
    Flag,
    Intestazione,
    Logo,
    PS2,
    PromoTable,
};

// How a cell's text converts to the printer's value and back.
enum class CellType { Integer, Long, Single, Money, Text };

struct TableColumn
{
    QString header;
    int width = 0;          // twips; 0 hides the column
    CellType type = CellType::Text;
    QString fileWord;       // attribute word in the file ("Desc" for Desc12); empty: not in the file
    Qt::Alignment alignment() const;
};

// One read member of the control with the write that goes with it. read
// calls the printer; fetch copies the properties the read filled into the
// table's cells (only the columns this pair carries), and may run while the
// control is busy, taking whatever the properties hold; write sends the
// cells, taking a cell that is no number as 0.
struct RowAccess
{
    const char *readMember;
    const char *writeMember;
    int16_t (*read)(KelvoFPControl &control, int16_t n);
    void (*fetch)(const KelvoFPControl &control, int16_t n, QStringList &cells);
    int16_t (*write)(KelvoFPControl &control, int16_t n, const QStringList &cells);
};

struct ProgrammingTable
{
    TableId id = TableId::Iva;
    QString title;               // "Reparti"
    int16_t firstRow = 1;        // row numbers on the printer
    int16_t lastRow = 0;         // kByDepartmentCount: the settings' department count
    int16_t fileLastRow = 0;     // highest row number a file may hold
    QString fileElement;         // "InstallRep"; empty: never in a file
    QString fileKeyWord;         // the attribute whose presence makes a row of the file
    bool fileKeyIsRowNumber = false; // N<n> holds n itself
    bool numberedByPosition = false; // file and restore number a row by its place in the grid
    QString gridName;            // grid of the programming screen; empty: not shown there
    QList<int16_t> editorKinds;  // TableKind values of the table editor
    QList<TableColumn> columns;
    QList<RowAccess> access;     // empty: the table has its own rules (flags, header, logo)
    bool numberFromPrinter = false;   // reading takes column 0 from the printer, not from the loop
    bool rowOnlyWhenComplete = false; // reading adds a row only when every read of it succeeded
    QList<int> saveWhenNumeric;       // a row is saved to a file when these cells are numeric
    QList<int> restoreWhenNumeric;    // a row is written back to a printer when these are numeric

    static constexpr int16_t kByDepartmentCount = -1;

    int16_t lastPrinterRow() const; // departments: gMaxNReparti
    QStringList headers() const;
    int columnOf(const QString &fileWord) const; // -1 when no column has it
    bool inFile() const { return !fileElement.isEmpty(); }
};

// Every table, in the order of the reading.
const QList<ProgrammingTable> &ProgrammingTables();
const ProgrammingTable &Table(TableId id);

// Columns, widths and headers of the table's grid; only the header row left.
void SetupGrid(ProgrammingGrid &grid, const ProgrammingTable &table);

// Reads row n through every read of the table, stopping at the first that
// fails; cells (resized to the table's columns) get what the successful
// reads gave. The result is that of the last read made.
int16_t ReadRow(KelvoFPControl &control, const ProgrammingTable &table, int16_t n, QStringList &cells);
// Writes row n through every write of the table, also after one failed; the
// result is that of the last.
int16_t WriteRow(KelvoFPControl &control, const ProgrammingTable &table, int16_t n, const QStringList &cells);

// The whole table from the printer into the grid (set up anew), row after row up to the
// table's last: a row is added before its read and stays blank when the read
// fails; a busy control ends the table at once. Nothing is reported.
// Tables with their own rules (no access) are only set up.
void ReadTableIntoGrid(KelvoFPControl &control, const ProgrammingTable &table, ProgrammingGrid &grid);
// Every qualifying row of the grid back to the printer; a busy control ends
// the table at once; failures are not reported. The result of the last write.
int16_t WriteGridToPrinter(KelvoFPControl &control, const ProgrammingTable &table, const ProgrammingGrid &grid);

// --- The table editor ------------------------------------------------------------
// What the editor shows of a table for one TableKind: its own caption,
// columns and widths, and which read/write pair of the table it uses.
struct EditorColumn
{
    int source = 0;   // column of the table
    QString header;
    int width = 0;    // twips
    bool trimmed = false;
};
struct EditorView
{
    int16_t kind = 0;
    QString caption;  // lblProg
    TableId table = TableId::Iva;
    int access = 0;   // index into the table's access
    QList<EditorColumn> columns;

    const ProgrammingTable &source() const { return Table(table); }
    const RowAccess &rowAccess() const { return source().access[access]; }
    int16_t lastRow() const { return source().lastPrinterRow(); }
};
inline constexpr int16_t kEditorKinds = 7; // 0 to 6
const EditorView *EditorViewOf(int16_t kind); // nullptr outside 0..6
void SetupGrid(ProgrammingGrid &grid, const EditorView &view);

// --- Departments ------------------------------------------------------------
// On the printer the department table runs up to the settings' count; a file
// may hold more, up to this.
inline constexpr int16_t kDepartmentsInFile = 999;
int16_t DepartmentsOnPrinter(); // gMaxNReparti, never below 0

// --- VAT ----------------------------------------------------------------------
// Rates as whole numbers: halves to even, as the control rounds.
int16_t RoundRate(double rate);
// A printer whose four rates add up to 0 (the running total rounded at each
// step) counts as unprogrammed and gets these, row 4 left alone.
struct VatDefault
{
    int16_t row;
    float rate;
};
inline constexpr VatDefault kVatDefaults[] = {{1, 4.0f}, {2, 10.0f}, {3, 20.0f}};
inline constexpr int16_t kVatRows = 4;

// --- Flags and parameters -------------------------------------------------------
// Section 14 holds the on/off flags, section 15 the numeric parameters; a
// section is read up to 99 and ends early at the printer's " NON PREVISTO.".
struct FlagSection
{
    int16_t section;
    QString fileElement;
    int16_t (*read)(KelvoFPControl &control, int16_t n);
    int16_t (*value)(const KelvoFPControl &control);
    int16_t (*write)(KelvoFPControl &control, int16_t n, int16_t value);
};
const QList<FlagSection> &FlagSections();
const FlagSection *FlagSectionOf(int16_t section); // nullptr for another number
inline constexpr int16_t kFlagLastNumber = 99;
inline const QString kFlagFileWord = QStringLiteral("f");
inline constexpr int16_t kNotProvided = 16; // ErrorCode " NON PREVISTO.": no such row on this printer
bool EndsFlagSection(int16_t result, int16_t errorCode);

// --- Receipt header ---------------------------------------------------------------
inline constexpr int16_t kHeaderLines = 6;
// " centrata" when the leading and trailing blanks differ by less than 3.
QString CentreMark(const QString &line);
// Column 2 of a header row for a style number (0 and 4 normal, with the
// mark); nothing for a number it does not know.
std::optional<QString> HeaderStyleWord(int styleNumber, const QString &mark);

// --- Logos ----------------------------------------------------------------------------
// The logos at the top and the bottom of the receipt are the printer's
// parameters 9 and 10; 2 to 9 name the eight standard logos.
struct LogoSlot
{
    QString fileWord;
    int16_t param;
};
inline const LogoSlot kLogoSlots[] = {{QStringLiteral("Testa"), 9}, {QStringLiteral("Coda"), 10}};
bool IsStandardLogo(int value);

// --- Cells --------------------------------------------------------------------------------
// Value to cell text, in the user's locale.
QString CellText(int64_t value);
inline QString CellText(int value) { return CellText(int64_t(value)); } // Integer and Long
QString CellText(float value);
QString CellText(Currency value);
// Cell text to value; nothing when the text is no number or does not fit.
std::optional<int16_t> CellInteger(const QString &text);
std::optional<int32_t> CellLong(const QString &text);
std::optional<float> CellSingle(const QString &text);
std::optional<Currency> CellMoney(const QString &text);
