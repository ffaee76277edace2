// SPDX-License-Identifier: GPL-3.0-or-later
// Any bytes as a programming file, loaded as the programming screen loads
// one: nothing crashes or ends the run; a file that is not ours (broken, or
// another root) is told once and left as it was; what loads, saved and
// loaded again, gives the same grids, and a second save is byte for byte
// the first.
#include "FuzzFiles.h"
#include "programming/ProgrammingFile.h"
#include "programming/XmlViewTables.h"
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
    FUZZ_CHECK(sameGrids(first, second));
    const QByteArray saved = fuzzRead(fuzzFolder("fuzzprog") + QStringLiteral("/out.xml"));
    save(second, QStringLiteral("again"));
    FUZZ_CHECK(fuzzRead(fuzzFolder("fuzzprog") + QStringLiteral("/again.xml")) == saved);
    return 0;
}
