// SPDX-License-Identifier: GPL-3.0-or-later
// Any bytes as a programming file, loaded as the programming screen loads
// one: nothing crashes or ends the run; a file that is not ours (broken, or
// another root) is told once and left as it was; what loads, saved and
// loaded again, gives the same grids less what the file's rules leave out
// of a save; and what has been saved once comes back the same, a second
// save byte for byte the first.
#include "FuzzFiles.h"
#include "programming/ProgrammingFile.h"
#include "programming/ProgrammingTables.h"
#include "programming/XmlViewTables.h"
#include "settings/Conversions.h"
#include "settings/RunTimeError.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <cstdint>

namespace {

XmlViewTables load(const QString &name, QString *problem)
{
    XmlViewTables t;
    t.SetupGrids();
    ProgrammingFile file(name, fuzzFolder("fuzzprog"));
    try {
        file.LoadIvaFromFile(t);
        file.LoadRepFromFile(t);
        file.LoadCarteFromFile(t);
        file.LoadTicketFromFile(t);
        file.LoadFlagFromFile(t);
        file.LoadIntFromFile(t);
        file.LoadLogoFromFile(t);
        file.LoadPS2FromFile(t);
        file.LoadPromoFromFile(t);
        file.LoadContantiFromFile(t);
    } catch (const RunTimeError &) {
        FUZZ_CHECK(!"loading a programming file ended the run");
    }
    *problem = file.problem();
    return t;
}

void save(const XmlViewTables &t, const QString &name)
{
    QFile::remove(fuzzFolder("fuzzprog") + QLatin1Char('/') + name + QStringLiteral(".xml"));
    ProgrammingFile file(name, fuzzFolder("fuzzprog"));
    file.beginSave();
    // Not SaveVersionToFile: it asks the printer for its firmware, and the
    // version is in no grid.
    file.SaveIvaToFile(t);
    file.SaveRepToFile(t);
    file.SaveCarteToFile(t);
    file.SaveTicketToFile(t);
    file.SaveFlagToFile(t);
    file.SaveLogoToFile(t);
    file.SaveIntToFile(t);
    file.SavePS2ToFile(t);
    file.SavePromoToFile(t);
    file.SaveContantiToFile(t);
    FUZZ_CHECK(!file.saveFailed());
    FUZZ_CHECK(file.problem().isEmpty());
}

// Only the rows of the grid for which `kept` holds, in their order.
template <typename Keep>
void keepRows(ProgrammingGrid &g, Keep kept)
{
    QList<QStringList> rows;
    for (int r = 1; r < g.rows(); ++r)
        if (kept(g, r))
            rows.append(g.row(r));
    g.clearRows();
    for (const QStringList &cells : rows)
        g.setRow(g.addRow(), cells);
}

// What a save writes of the grids, as the next load shows it. The savers
// write a row only when its numbers are numbers: a key without a 16-bit
// function, a cash line whose preset amount is no number, a promotion whose
// type, recall or value is no number stay out of the file. A promotion is
// written under its place in the grid, and loaded under that number. The
// header ends at its first blank line. The numbers that travel as 16-bit
// integers or as money are written as the program writes such a number.
XmlViewTables keptBySave(const XmlViewTables &t)
{
    const auto integer = [](ProgrammingGrid &g, int r, int c) {
        if (const auto v = CellInteger(g.text(r, c)))
            g.setText(r, c, Conv::Text(int(*v)));
    };
    XmlViewTables k = t;
    keepRows(k.gridPS2, [](const ProgrammingGrid &g, int r) { return CellInteger(g.text(r, 1)).has_value(); });
    for (int r = 1; r < k.gridPS2.rows(); ++r)
        integer(k.gridPS2, r, 1);
    keepRows(k.gridContantiDesc, [](const ProgrammingGrid &g, int r) { return g.isNumeric(r, 2); });
    ProgrammingGrid &promo = k.gridPromoTable;
    for (int r = 1; r < promo.rows(); ++r) {
        promo.setText(r, 0, QString::number(r));
        integer(promo, r, 2);
        integer(promo, r, 4);
        if (const auto v = CellMoney(promo.text(r, 5)))
            promo.setText(r, 5, Conv::Text(*v));
    }
    keepRows(promo, [](const ProgrammingGrid &g, int r) {
        return g.isNumeric(r, 2) && g.isNumeric(r, 4) && g.isNumeric(r, 5);
    });
    XmlViewTables fresh;
    fresh.SetupGrids();
    for (int n = 1, end = 7; n <= 6; ++n) {
        if (end == 7 && k.gridRigaInt.isBlank(n, 1))
            end = n;
        if (n < end)
            continue;
        k.gridRigaInt.setRow(n, fresh.gridRigaInt.row(n));
        if (n == end)
            k.gridRigaInt.setText(n, 0, QString::number(n)); // numbered, then the loading stops
    }
    return k;
}

bool sameGrids(const XmlViewTables &a, const XmlViewTables &b)
{
    const ProgrammingGrid XmlViewTables::*grids[] = {
        &XmlViewTables::gridRigaInt, &XmlViewTables::gridIva, &XmlViewTables::gridRep,
        &XmlViewTables::gridCarteCredito, &XmlViewTables::gridTicket, &XmlViewTables::gridFlag,
        &XmlViewTables::gridPS2, &XmlViewTables::gridPromoTable, &XmlViewTables::gridContantiDesc};
    for (int i = 0; i < int(std::size(grids)); ++i) {
        const ProgrammingGrid &x = a.*grids[i], &y = b.*grids[i];
        if (x.rows() != y.rows() || x.cols() != y.cols()) {
            if (qEnvironmentVariableIsSet("FUZZ_SHOW"))
                std::fprintf(stderr, "grid %d: %d x %d then %d x %d\n", i, x.rows(), x.cols(), y.rows(), y.cols());
            return false;
        }
        for (int r = 0; r < x.rows(); ++r)
            if (x.row(r) != y.row(r)) {
                // FUZZ_SHOW=1 replay_progfile <input>: where a finding differs.
                if (qEnvironmentVariableIsSet("FUZZ_SHOW"))
                    std::fprintf(stderr, "grid %d row %d: [%s] then [%s]\n", i, r, qPrintable(x.row(r).join('|')),
                                 qPrintable(y.row(r).join('|')));
                return false;
            }
    }
    if (qEnvironmentVariableIsSet("FUZZ_SHOW") && (a.logoTesta != b.logoTesta || a.logoCoda != b.logoCoda))
        std::fprintf(stderr, "logos: %d %d then %d %d\n", a.logoTesta, a.logoCoda, b.logoTesta, b.logoCoda);
    return a.logoTesta == b.logoTesta && a.logoCoda == b.logoCoda;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static int argc = 1;
    static char arg0[] = "fuzz_progfile";
    static char *argv[] = {arg0, nullptr};
    static QCoreApplication *app = QCoreApplication::instance() ? nullptr : new QCoreApplication(argc, argv);
    (void)app;
    silenceQtMessages();

    const QByteArray bytes(reinterpret_cast<const char *>(data), qsizetype(size));
    const QString in = fuzzFolder("fuzzprog") + QStringLiteral("/in.xml");
    fuzzWrite(in, bytes);
    QString problem;
    const XmlViewTables first = load(QStringLiteral("in"), &problem);
    if (!problem.isEmpty()) {
        FUZZ_CHECK(fuzzRead(in) == bytes); // not ours: never rewritten
        return 0;
    }
    save(first, QStringLiteral("out"));
    const XmlViewTables second = load(QStringLiteral("out"), &problem);
    FUZZ_CHECK(problem.isEmpty());
    FUZZ_CHECK(sameGrids(keptBySave(first), second));
    // Saved once, the grids are what a save keeps, save for promotions that
    // had a gap before them: they move up to their new place once more.
    save(second, QStringLiteral("again"));
    const XmlViewTables third = load(QStringLiteral("again"), &problem);
    FUZZ_CHECK(problem.isEmpty());
    FUZZ_CHECK(sameGrids(keptBySave(second), third));
    const QByteArray saved = fuzzRead(fuzzFolder("fuzzprog") + QStringLiteral("/again.xml"));
    save(third, QStringLiteral("last"));
    FUZZ_CHECK(fuzzRead(fuzzFolder("fuzzprog") + QStringLiteral("/last.xml")) == saved);
    return 0;
}
