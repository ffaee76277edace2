// SPDX-License-Identifier: GPL-3.0-or-later
// The department grid: filling 999 rows into the grid model shown in a table
// view (offscreen), and one row of the departments read from the emulator and
// written back over loopback TCP, with times printed. The fill should stay
// well under 50 ms.
//
//   bench_grid [rounds]      (default 20)

#include "BenchLink.h"
#include "emulator/EmulatorServer.h"
#include "printer/KelvoProtocolControl.h"
#include "programming/GridView.h"
#include "programming/ProgrammingGridModel.h"
#include "programming/ProgrammingTables.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QTableView>

#include <algorithm>
#include <cstdio>

namespace {

double median(QList<double> v)
{
    std::sort(v.begin(), v.end());
    return v.isEmpty() ? 0 : v[v.size() / 2];
}

// 999 departments as a reading of the printer would leave them.
ProgrammingGrid departments()
{
    ProgrammingGrid grid;
    SetupGrid(grid, Table(TableId::Reparti));
    for (int n = 1; n <= kDepartmentsInFile; ++n)
        grid.setRow(grid.addRow(), {QString::number(n), QStringLiteral("REPARTO %1").arg(n), QStringLiteral("150"),
                                    QString::number(n % 5), QStringLiteral("0"), QString::number(n % 11)});
    return grid;
}

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    const int rounds = argc > 1 ? std::max(1, atoi(argv[1])) : 20;

    ProgrammingGridModel model;
    QTableView *view = MakeGridView("gridRep", &model, nullptr);
    view->resize(800, 600);
    view->show();
    QApplication::processEvents();

    const ProgrammingGrid source = departments();
    QList<double> fills;
    for (int i = 0; i < rounds; ++i) {
        QElapsedTimer t;
        t.start();
        // Row by row into the model, as a reader fills it, then drawn once.
        model.fill([&source](ProgrammingGrid &g) {
            g = ProgrammingGrid();
            SetupGrid(g, Table(TableId::Reparti));
            for (int r = 1; r < source.rows(); ++r)
                g.setRow(g.addRow(), source.row(r));
        });
        view->repaint();
        fills << t.nsecsElapsed() / 1e6;
    }
    std::printf("fill 999 departments into the grid and draw: median %.2f ms, worst %.2f ms over %d rounds (target < 50 ms)\n",
                median(fills), *std::max_element(fills.begin(), fills.end()), rounds);

    EmulatorConfig config;
    config.departments = kDepartmentsInFile;
    EmulatorServer emu(config);
    if (!emu.start()) {
        std::fprintf(stderr, "emulator did not start\n");
        return 1;
    }
    KelvoProtocolControl control;
    if (!OpenControl(control, ListenForControl(emu))) {
        std::fprintf(stderr, "no connection to the emulator\n");
        return 1;
    }
    const ProgrammingTable &rep = Table(TableId::Reparti);
    QList<double> rows;
    int failures = 0;
    for (int i = 0; i < rounds; ++i) {
        QElapsedTimer t;
        t.start();
        QStringList cells;
        const int16_t n = int16_t(1 + i % 8);
        const int16_t read = ReadRow(control, rep, n, cells);
        const int16_t written = read == 0 ? WriteRow(control, rep, n, cells) : read;
        if (read != 0 || written != 0) {
            ++failures;
            std::fprintf(stderr, "department %d: read %d, write %d\n", n, read, written);
        }
        rows << t.nsecsElapsed() / 1e6;
    }
    std::printf("read one department and write it back: median %.2f ms, worst %.2f ms over %d rounds, %d failures\n",
                median(rows), *std::max_element(rows.begin(), rows.end()), rounds, failures);
    delete view;
    return failures == 0 ? 0 : 1;
}
