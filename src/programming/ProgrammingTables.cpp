// SPDX-License-Identifier: GPL-3.0-or-later
#include "ProgrammingTables.h"

#include "ProgrammingGrid.h"

#include "printer/KelvoFPControl.h"
#include "printer/SharedState.h"
#include "settings/Conversions.h"
#include "settings/RunTimeError.h"

namespace {

using K = KelvoFPControl;

QString cell(const QStringList &cells, int col)
{
    return col < cells.size() ? cells[col] : QString();
}
void put(QStringList &cells, int col, const QString &text)
{
    if (col < cells.size())
        cells[col] = text;
}
// The writes take a cell that is no number, or does not fit, as 0: the
// callers have already tested the cells that must be numbers.
int16_t integerOr0(const QStringList &cells, int col) { return CellInteger(cell(cells, col)).value_or(0); }
float singleOr0(const QStringList &cells, int col) { return CellSingle(cell(cells, col)).value_or(0.0f); }
Currency moneyOr0(const QStringList &cells, int col) { return CellMoney(cell(cells, col)).value_or(Currency()); }

TableColumn number(const char *header, int width, const char *fileWord = "")
{
    return {QString::fromUtf8(header), width, CellType::Integer, QString::fromUtf8(fileWord)};
}
TableColumn column(const char *header, int width, CellType type, const char *fileWord = "")
{
    return {QString::fromUtf8(header), width, type, QString::fromUtf8(fileWord)};
}

// --- Read and write pairs of the control ----------------------------------------

const RowAccess kIva{
    "ReadIva", "WriteIva",
    [](K &c, int16_t n) { return c.ReadIva(n); },
    [](const K &c, int16_t, QStringList &v) {
        put(v, 0, CellText(c.IvaNumber()));
        put(v, 1, CellText(c.IvaAliquota()));
    },
    [](K &c, int16_t n, const QStringList &v) { return c.WriteIva(n, singleOr0(v, 1)); }};

const RowAccess kReparto{
    "ReadReparto", "WriteReparto",
    [](K &c, int16_t n) { return c.ReadReparto(n); },
    [](const K &c, int16_t, QStringList &v) {
        put(v, 0, CellText(c.RepartoNumber()));
        put(v, 1, c.RepartoDescrizione());
        put(v, 2, CellText(c.RepartoLimite()));
        put(v, 3, CellText(c.RepartoIva()));
        put(v, 4, CellText(c.RepartoScontRiass()));
        put(v, 5, CellText(c.RepartoGrpMerc()));
    },
    // Prices are never read, so writing a department sets its three prices
    // to 0; the reserved arguments stay 0 and "".
    [](K &c, int16_t n, const QStringList &v) {
        return c.WriteReparto(n, cell(v, 1), Currency(), Currency(), Currency(), 0, integerOr0(v, 3), moneyOr0(v, 2),
                              integerOr0(v, 4), integerOr0(v, 5), QString());
    }};

const RowAccess kCarta{
    "ReadCarta", "WriteCarta",
    [](K &c, int16_t n) { return c.ReadCarta(n); },
    [](const K &c, int16_t, QStringList &v) {
        put(v, 0, CellText(c.CartaNumber()));
        put(v, 1, c.CartaDescrizione());
    },
    [](K &c, int16_t n, const QStringList &v) { return c.WriteCarta(n, cell(v, 1)); }};

const RowAccess kTicket{
    "ReadTicket", "WriteTicket",
    [](K &c, int16_t n) { return c.ReadTicket(n); },
    [](const K &c, int16_t, QStringList &v) {
        put(v, 0, CellText(c.TicketNumber()));
        put(v, 1, c.TicketDescrizione());
        put(v, 2, CellText(c.TicketValore()));
    },
    [](K &c, int16_t n, const QStringList &v) { return c.WriteTicket(n, cell(v, 1), moneyOr0(v, 2)); }};

// Cash rows come from two reads: the description, then the preset amount.
const RowAccess kContante{
    "ReadContante", "WriteContante",
    [](K &c, int16_t n) { return c.ReadContante(n); },
    [](const K &c, int16_t, QStringList &v) {
        put(v, 0, CellText(c.ContanteNumber()));
        put(v, 1, c.ContanteDescrizione().trimmed());
    },
    [](K &c, int16_t n, const QStringList &v) { return c.WriteContante(n, cell(v, 1)); }};

const RowAccess kContantePredefinito{
    "ReadContantePredefinito", "WriteContantePredefinito",
    [](K &c, int16_t n) { return c.ReadContantePredefinito(n); },
    [](const K &c, int16_t, QStringList &v) {
        put(v, 0, CellText(c.ContanteNumber()));
        put(v, 2, CellText(c.ContanteImporto()));
    },
    [](K &c, int16_t n, const QStringList &v) { return c.WriteContantePredefinito(n, moneyOr0(v, 2)); }};

const RowAccess kOperatore{
    "ReadOperatore", "WriteOperatore",
    [](K &c, int16_t n) { return c.ReadOperatore(n); },
    [](const K &c, int16_t, QStringList &v) {
        put(v, 0, CellText(c.OperatoreNumber()));
        put(v, 1, c.OperatoreDescrizione());
        put(v, 2, CellText(c.OperatorePassword()));
        put(v, 3, CellText(c.OperatorePercentuale()));
    },
    [](K &c, int16_t n, const QStringList &v) {
        return c.WriteOperatore(n, cell(v, 1), integerOr0(v, 2), singleOr0(v, 3));
    }};

// A key has no number property: the key code is the row's own.
const RowAccess kPS2{
    "ReadPS2", "WritePS2",
    [](K &c, int16_t n) { return c.ReadPS2(n); },
    [](const K &c, int16_t n, QStringList &v) {
        put(v, 0, CellText(n));
        put(v, 1, CellText(c.PS2Funzione()));
    },
    [](K &c, int16_t n, const QStringList &v) { return c.WritePS2(n, integerOr0(v, 1)); }};

// The type is read as a Long but always goes back out through an Integer;
// the last three arguments are always 1, 1 and "".
const RowAccess kPromo{
    "ReadPromo", "WritePromo",
    [](K &c, int16_t n) { return c.ReadPromo(n); },
    [](const K &c, int16_t, QStringList &v) {
        put(v, 0, CellText(c.PromoNumber()));
        put(v, 1, c.PromoDescrizione());
        put(v, 2, CellText(c.PromoTipo()));
        put(v, 3, c.PromoBarcode());
        put(v, 4, CellText(c.PromoRichiamo()));
        put(v, 5, CellText(c.PromoValore()));
    },
    [](K &c, int16_t n, const QStringList &v) {
        return c.WritePromo(n, int32_t(integerOr0(v, 2)), integerOr0(v, 4), cell(v, 3), cell(v, 1), moneyOr0(v, 5), 1,
                            1, QString());
    }};

ProgrammingTable make(TableId id, const QString &title)
{
    ProgrammingTable t;
    t.id = id;
    t.title = title;
    return t;
}

QList<ProgrammingTable> buildTables()
{
    using T = CellType;
    QList<ProgrammingTable> t;

    ProgrammingTable iva = make(TableId::Iva, QStringLiteral("IVA"));
    iva.lastRow = 4;
    iva.fileLastRow = 4;
    iva.fileElement = QStringLiteral("InstallIva");
    iva.fileKeyWord = QStringLiteral("Iva");
    iva.gridName = QStringLiteral("gridIva");
    iva.editorKinds = {3};
    iva.columns = {number("n°", 500), column("valore", 2000, T::Single, "Iva")};
    iva.access = {kIva};
    iva.saveWhenNumeric = {0};
    iva.restoreWhenNumeric = {0, 1};
    t.append(iva);

    ProgrammingTable rep = make(TableId::Reparti, QStringLiteral("Reparti"));
    rep.lastRow = ProgrammingTable::kByDepartmentCount;
    rep.fileLastRow = kDepartmentsInFile;
    rep.fileElement = QStringLiteral("InstallRep");
    rep.fileKeyWord = QStringLiteral("Desc");
    rep.gridName = QStringLiteral("gridRep");
    rep.editorKinds = {4};
    rep.columns = {number("n°", 500),
                   column("descrizione", 1400, T::Text, "Desc"),
                   column("limite", 600, T::Money, "Lim"),
                   number("iva", 600, "Iva"),
                   number("scr. rias.", 600, "ScRias"),
                   number("grp. merc.", 600, "GrpMerc")};
    rep.access = {kReparto};
    rep.saveWhenNumeric = {0};
    rep.restoreWhenNumeric = {0};
    t.append(rep);

    ProgrammingTable carte = make(TableId::CarteCredito, QStringLiteral("Carte di Credito"));
    carte.lastRow = 10;
    carte.fileLastRow = 10;
    carte.fileElement = QStringLiteral("InstallCarteCredito");
    carte.fileKeyWord = QStringLiteral("Desc");
    carte.gridName = QStringLiteral("gridCarteCredito");
    carte.editorKinds = {0};
    carte.columns = {number("n°", 500), column("descrizione", 1900, T::Text, "Desc")};
    carte.access = {kCarta};
    carte.saveWhenNumeric = {0};
    carte.restoreWhenNumeric = {0};
    t.append(carte);

    ProgrammingTable ticket = make(TableId::Ticket, QStringLiteral("Ticket"));
    ticket.lastRow = 10;
    ticket.fileLastRow = 10;
    ticket.fileElement = QStringLiteral("InstallTicket");
    ticket.fileKeyWord = QStringLiteral("Desc");
    ticket.gridName = QStringLiteral("gridTicket");
    ticket.editorKinds = {2};
    ticket.columns = {number("n°", 500), column("descrizione", 2500, T::Text, "Desc"),
                      column("importo", 1000, T::Money, "Imp")};
    ticket.access = {kTicket};
    ticket.saveWhenNumeric = {0};
    ticket.restoreWhenNumeric = {0, 2};
    t.append(ticket);

    ProgrammingTable flag = make(TableId::Flag, QStringLiteral("Flag"));
    flag.lastRow = kFlagLastNumber;
    flag.fileLastRow = kFlagLastNumber;
    flag.fileElement = QStringLiteral("InstallFlagS14"); // and InstallFlagS15: see FlagSections()
    flag.fileKeyWord = kFlagFileWord;
    flag.gridName = QStringLiteral("gridFlag");
    flag.columns = {number("n° flag", 800), number("posizione", 800), number("valore", 800, "f")};
    flag.saveWhenNumeric = {0, 1};
    flag.restoreWhenNumeric = {0, 1, 2};
    t.append(flag);

    ProgrammingTable header = make(TableId::Intestazione, QStringLiteral("Intestazione"));
    header.lastRow = kHeaderLines;
    header.fileLastRow = kHeaderLines;
    header.fileElement = QStringLiteral("InstallInt");
    header.fileKeyWord = QStringLiteral("R");
    header.gridName = QStringLiteral("gridRigaInt");
    header.columns = {number("n° riga", 600), column("contenuto", 2800, T::Text, "R"), column("tipo", 800, T::Text),
                      number("", 0, "TipoR")};
    t.append(header);

    ProgrammingTable logo = make(TableId::Logo, QStringLiteral("Logo"));
    logo.fileElement = QStringLiteral("InstallLogo"); // two values, see kLogoSlots
    t.append(logo);

    ProgrammingTable ps2 = make(TableId::PS2, QStringLiteral("Tastiera PS2"));
    ps2.firstRow = 0;
    ps2.lastRow = 255;
    ps2.fileLastRow = 255;
    ps2.fileElement = QStringLiteral("InstallPS2");
    ps2.fileKeyWord = QStringLiteral("N");
    ps2.gridName = QStringLiteral("gridPS2");
    ps2.columns = {number("n° ", 600), column("funzione", 1800, T::Integer, "N")};
    ps2.access = {kPS2};
    ps2.saveWhenNumeric = {0, 1};
    ps2.restoreWhenNumeric = {0, 1};
    t.append(ps2);

    ProgrammingTable promo = make(TableId::PromoTable, QStringLiteral("PromoTable"));
    promo.lastRow = 100;
    promo.fileLastRow = 100;
    promo.fileElement = QStringLiteral("InstallPromoTable");
    promo.fileKeyWord = QStringLiteral("N");
    promo.fileKeyIsRowNumber = true;
    promo.numberedByPosition = true;
    promo.gridName = QStringLiteral("gridPromoTable");
    promo.columns = {number("n° ", 500),
                     column("descrizione", 2300, T::Text, "Desc"),
                     column("tipo ", 500, T::Long, "Tipo"),
                     column("barcode", 1500, T::Text, "Barcode"),
                     number("richiamo", 800, "Richiamo"),
                     column("valore", 1000, T::Money, "Valore")};
    promo.access = {kPromo};
    promo.numberFromPrinter = true;
    promo.saveWhenNumeric = {2, 4, 5};
    promo.restoreWhenNumeric = {2, 5};
    t.append(promo);

    ProgrammingTable cash = make(TableId::ContantiDesc, QStringLiteral("Contanti con Descrizione"));
    cash.lastRow = 5;
    cash.fileLastRow = 5;
    cash.fileElement = QStringLiteral("InstallContantiDesc");
    cash.fileKeyWord = QStringLiteral("N");
    cash.fileKeyIsRowNumber = true;
    cash.gridName = QStringLiteral("gridContantiDesc");
    cash.editorKinds = {1, 6};
    cash.columns = {number("n°", 500), column("descrizione", 1500, T::Text, "Desc"),
                    column("importo predefinito", 2000, T::Money, "ImportoPredefinito")};
    cash.access = {kContante, kContantePredefinito};
    cash.numberFromPrinter = true;
    cash.rowOnlyWhenComplete = true;
    cash.saveWhenNumeric = {0, 2};
    cash.restoreWhenNumeric = {0, 2};
    t.append(cash);

    // Only the table editor knows the operators: they are not read with the
    // rest of the programming, not saved and not restored.
    ProgrammingTable opr = make(TableId::Operatori, QStringLiteral("Operatori"));
    opr.lastRow = 12;
    opr.editorKinds = {5};
    opr.columns = {number("n°", 400), column("descrizione", 2100, T::Text), number("pwd opr.", 700),
                   column("% opr.", 600, T::Single)};
    opr.access = {kOperatore};
    t.append(opr);

    return t;
}

QList<EditorView> buildEditorViews()
{
    return {
        {0, QStringLiteral("Carte di Credito"), TableId::CarteCredito, 0,
         {{0, QStringLiteral("n°"), 400}, {1, QStringLiteral("descrizione"), 3500, true}}},
        {1, QStringLiteral("Contanti con Descrizione"), TableId::ContantiDesc, 0,
         {{0, QStringLiteral("n°"), 400}, {1, QStringLiteral("descrizione"), 3500, true}}},
        {2, QStringLiteral("Ticket"), TableId::Ticket, 0,
         {{0, QStringLiteral("n°"), 400}, {1, QStringLiteral("descrizione"), 2800, true},
          {2, QStringLiteral("valore"), 700}}},
        {3, QStringLiteral("IVA"), TableId::Iva, 0,
         {{0, QStringLiteral("n°"), 400}, {1, QStringLiteral("valore"), 3500}}},
        {4, QStringLiteral("Reparti"), TableId::Reparti, 0,
         {{0, QStringLiteral("n°"), 400}, {1, QStringLiteral("descrizione"), 2000}, {2, QStringLiteral("limite"), 500},
          {3, QStringLiteral("iva"), 500}, {4, QStringLiteral("riass."), 500}, {5, QStringLiteral("merc."), 500}}},
        {5, QStringLiteral("Operatori"), TableId::Operatori, 0,
         {{0, QStringLiteral("n°"), 400}, {1, QStringLiteral("descrizione"), 2100}, {2, QStringLiteral("pwd opr."), 700},
          {3, QStringLiteral("% opr."), 600}}},
        {6, QStringLiteral("Contanti con Descrizione Predefiniti"), TableId::ContantiDesc, 1,
         {{0, QStringLiteral("n°"), 400}, {2, QStringLiteral("importo"), 3500}}},
    };
}

} // namespace

Qt::Alignment TableColumn::alignment() const
{
    // Numbers to the right, texts to the left.
    return (type == CellType::Text ? Qt::AlignLeft : Qt::AlignRight) | Qt::AlignVCenter;
}

int16_t ProgrammingTable::lastPrinterRow() const
{
    return lastRow == kByDepartmentCount ? DepartmentsOnPrinter() : lastRow;
}

QStringList ProgrammingTable::headers() const
{
    QStringList h;
    for (const TableColumn &c : columns)
        h.append(c.header);
    return h;
}

int ProgrammingTable::columnOf(const QString &fileWord) const
{
    for (int i = 0; i < columns.size(); ++i)
        if (!fileWord.isEmpty() && columns[i].fileWord == fileWord)
            return i;
    return -1;
}

const QList<ProgrammingTable> &ProgrammingTables()
{
    static const QList<ProgrammingTable> tables = buildTables();
    return tables;
}

const ProgrammingTable &Table(TableId id)
{
    for (const ProgrammingTable &t : ProgrammingTables())
        if (t.id == id)
            return t;
    Q_UNREACHABLE(); // every TableId has its entry
}

const EditorView *EditorViewOf(int16_t kind)
{
    static const QList<EditorView> views = buildEditorViews();
    return kind >= 0 && kind < views.size() ? &views[kind] : nullptr;
}

void SetupGrid(ProgrammingGrid &grid, const ProgrammingTable &table)
{
    grid.setCols(int(table.columns.size()));
    grid.clearRows();
    for (int c = 0; c < table.columns.size(); ++c) {
        grid.setText(0, c, table.columns[c].header);
        grid.setColumnWidth(c, table.columns[c].width);
        grid.setColumnAlignment(c, table.columns[c].alignment());
    }
}

void SetupGrid(ProgrammingGrid &grid, const EditorView &view)
{
    const ProgrammingTable &table = view.source();
    grid.setCols(int(view.columns.size()));
    grid.clearRows();
    for (int c = 0; c < view.columns.size(); ++c) {
        grid.setText(0, c, view.columns[c].header);
        grid.setColumnWidth(c, view.columns[c].width);
        grid.setColumnAlignment(c, table.columns[view.columns[c].source].alignment());
    }
}

int16_t ReadRow(KelvoFPControl &control, const ProgrammingTable &table, int16_t n, QStringList &cells)
{
    cells.resize(table.columns.size());
    int16_t result = 0;
    for (const RowAccess &a : table.access) {
        result = a.read(control, n);
        if (result != 0)
            break;
        a.fetch(control, n, cells);
    }
    return result;
}

int16_t WriteRow(KelvoFPControl &control, const ProgrammingTable &table, int16_t n, const QStringList &cells)
{
    int16_t result = 0;
    for (const RowAccess &a : table.access)
        result = a.write(control, n, cells);
    return result;
}

void ReadTableIntoGrid(KelvoFPControl &control, const ProgrammingTable &table, ProgrammingGrid &grid)
{
    SetupGrid(grid, table);
    if (table.access.isEmpty())
        return; // flags, header and logos are read by their own rules
    const int16_t last = table.lastPrinterRow();
    for (int n = table.firstRow; n <= last; ++n) {
        if (control.Busy())
            return;
        QStringList cells(table.columns.size());
        const int16_t result = ReadRow(control, table, int16_t(n), cells);
        if (result != 0 && table.rowOnlyWhenComplete)
            continue;
        const int row = grid.addRow();
        if (result != 0)
            continue; // the row stays blank
        if (!table.numberFromPrinter)
            cells[0] = CellText(int64_t(n));
        grid.setRow(row, cells);
    }
}

int16_t WriteGridToPrinter(KelvoFPControl &control, const ProgrammingTable &table, const ProgrammingGrid &grid)
{
    int16_t result = 0;
    if (table.access.isEmpty())
        return result; // flags, header and logos are written by their own rules
    for (int row = 1; row < grid.rows(); ++row) {
        if (control.Busy())
            break;
        bool qualifies = true;
        for (int c : table.restoreWhenNumeric)
            qualifies = qualifies && grid.isNumeric(row, c);
        if (!qualifies)
            continue;
        const std::optional<int16_t> n =
            table.numberedByPosition ? std::optional<int16_t>(int16_t(row)) : CellInteger(grid.text(row, 0));
        if (!n)
            continue; // a row number beyond any table: no row of the printer
        result = WriteRow(control, table, *n, grid.row(row));
    }
    return result;
}

int16_t DepartmentsOnPrinter()
{
    return qMax<int16_t>(0, gMaxNReparti);
}

int16_t RoundRate(double rate)
{
    try {
        return Conv::ToInteger(rate);
    } catch (const RunTimeError &) {
        return rate < 0 ? std::numeric_limits<int16_t>::min() : std::numeric_limits<int16_t>::max();
    }
}

namespace {
const QList<FlagSection> kFlagSections = {
    {14, QStringLiteral("InstallFlagS14"), [](K &c, int16_t n) { return c.ReadFlag(n); },
     [](const K &c) { return c.FlagValue(); }, [](K &c, int16_t n, int16_t v) { return c.WriteFlag(n, v); }},
    {15, QStringLiteral("InstallFlagS15"), [](K &c, int16_t n) { return c.ReadParam(n); },
     [](const K &c) { return c.ParamValue(); }, [](K &c, int16_t n, int16_t v) { return c.WriteParam(n, v); }},
};
}

const QList<FlagSection> &FlagSections()
{
    return kFlagSections;
}

const FlagSection *FlagSectionOf(int16_t section)
{
    for (const FlagSection &s : kFlagSections)
        if (s.section == section)
            return &s;
    return nullptr;
}

bool EndsFlagSection(int16_t result, int16_t errorCode)
{
    return result == -1 && errorCode == kNotProvided;
}

QString CentreMark(const QString &line)
{
    qsizetype leading = 0;
    while (leading < line.size() && line[leading] == QLatin1Char(' '))
        ++leading;
    if (leading == line.size())
        return QStringLiteral(" centrata"); // all blanks: as many on each side
    qsizetype trailing = 0;
    while (trailing < line.size() && line[line.size() - 1 - trailing] == QLatin1Char(' '))
        ++trailing;
    return qAbs(leading - trailing) < 3 ? QStringLiteral(" centrata") : QString();
}

std::optional<QString> HeaderStyleWord(int styleNumber, const QString &mark)
{
    switch (styleNumber) {
    case 0:
    case 4:
        return QStringLiteral("normale") + mark;
    case 1:
        return QStringLiteral("evidenziata");
    case 2:
        return QStringLiteral("doppia");
    case 3:
        return QStringLiteral("doppia evidenziata");
    default:
        return std::nullopt;
    }
}

bool IsStandardLogo(int value)
{
    return value >= 2 && value <= 9;
}

QString CellText(int64_t value)
{
    return Conv::Text(value);
}

QString CellText(float value)
{
    return Conv::Text(value);
}

QString CellText(Currency value)
{
    return Conv::Text(value);
}

namespace {
template <typename F>
auto tryConvert(const QString &text, F convert) -> std::optional<decltype(convert(text))>
{
    if (!Conv::IsNumeric(text))
        return std::nullopt;
    try {
        return convert(text);
    } catch (const RunTimeError &) {
        return std::nullopt; // a number, but beyond the type
    }
}
}

std::optional<int16_t> CellInteger(const QString &text)
{
    return tryConvert(text, [](const QString &t) { return Conv::ToInteger(t); });
}

std::optional<int32_t> CellLong(const QString &text)
{
    return tryConvert(text, [](const QString &t) { return Conv::ToLong(t); });
}

std::optional<float> CellSingle(const QString &text)
{
    return tryConvert(text, [](const QString &t) { return Conv::ToSingle(t); });
}

std::optional<Currency> CellMoney(const QString &text)
{
    return tryConvert(text, [](const QString &t) { return Conv::ToCurrency(t); });
}
