// SPDX-License-Identifier: GPL-3.0-or-later
// The programming screen against the emulator over loopback TCP, offscreen:
//   - a whole read into the grids, beside the control-only read of the same
//     rows in the same run (the screen's own cost on top of the exchanges);
//   - opening a file of 999 departments;
//   - saving that programming, with its 198 flag rounds of the whole file;
//   - restoring the default programming to the printer.
//
//   bench_xmlview [rounds]      (default 5)

#include "ProgrammingRead.h"
#include "BenchLink.h"
#include "emulator/EmulatorServer.h"
#include "printer/KelvoProtocolControl.h"
#include "printer/SharedState.h"
#include "programming/XmlViewForm.h"
#include "settings/ProgramFolder.h"
#include "ui/FileDialog.h"
#include "ui/MsgBox.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QPushButton>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <functional>

namespace {

// The reads of "Lettura dati da stampante", straight on the control.
double seconds(const std::function<void()> &f)
{
    QElapsedTimer t;
    t.start();
    f();
    return t.nsecsElapsed() / 1e9;
}

double median(QList<double> v)
{
    std::sort(v.begin(), v.end());
    return v[v.size() / 2];
}

const char *verdict(bool met)
{
    return met ? "met" : "NOT MET";
}

} // namespace

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    const int rounds = argc > 1 ? qMax(1, atoi(argv[1])) : 5;
    QTemporaryDir folder;
    SetProgramFolderForTests(folder.path());
    MsgBox::startRecording();
    FileDialog::startRecording();

    EmulatorServer emu{EmulatorConfig()};
    QString error;
    if (!emu.start(&error)) {
        fprintf(stderr, "emulator: %s\n", qPrintable(error));
        return 1;
    }
    KelvoProtocolControl control;
    if (!OpenControl(control, ListenForControl(emu))) {
        fprintf(stderr, "the control could not connect\n");
        return 1;
    }
    gFPControl = &control;
    gMaxNReparti = 40;

    QFile loadavg(QStringLiteral("/proc/loadavg"));
    if (loadavg.open(QIODevice::ReadOnly))
        printf("load average: %s", loadavg.readAll().constData());

    // 0. The screen alone: an empty file, no printer.
    QList<double> alone;
    for (int r = 0; r < rounds; ++r) {
        XmlViewForm::FormMode = 2;
        XmlViewForm::XmlFile = folder.filePath(QStringLiteral("empty.xml"));
        alone << seconds([] { XmlViewForm form; });
    }
    printf("the screen alone (an empty file): %.3f s\n", median(alone));

    // 1. The whole read, through the screen and straight on the control.
    int calls = 0;
    QList<double> viaForm, viaControl;
    for (int r = 0; r < rounds; ++r) {
        XmlViewForm::FormMode = 1;
        viaForm << seconds([] { XmlViewForm form; });
        viaControl << seconds([&] { calls = programmingRead(control, gMaxNReparti); });
    }
    const double form = median(viaForm), plain = median(viaControl);
    printf("whole read into the grids: %d exchanges, %d rounds (median)\n", calls, rounds);
    printf("  screen (XmlViewForm)  : %.3f s (target under 1 s) %s\n", form, verdict(form < 1.0));
    printf("  control only          : %.3f s\n", plain);
    printf("  ratio                 : %.2f (target at most 1.30) %s\n", form / plain, verdict(form / plain <= 1.3));

    // 2. A programming with 999 departments and every flag, saved.
    XmlViewForm::FormMode = 1;
    XmlViewForm reading;
    XmlViewTables &t = reading.data;
    t.gridRep.clearRows();
    for (int n = 1; n <= 999; ++n)
        t.gridRep.setRow(t.gridRep.addRow(), {QString::number(n), QStringLiteral("REPARTO %1").arg(n), QStringLiteral("12,5"),
                                              QStringLiteral("1"), QStringLiteral("0"), QStringLiteral("0")});
    t.gridFlag.clearRows();
    for (int section : {14, 15})
        for (int n = 1; n <= 99; ++n)
            t.gridFlag.setRow(t.gridFlag.addRow(), {QString::number(section), QString::number(n), QStringLiteral("0")});
    const QString path = folder.filePath(QStringLiteral("KX90Prog999.xml"));
    QList<double> saves;
    for (int r = 0; r < rounds; ++r) {
        QFile::remove(path);
        FileDialog::queueAnswer(path);
        saves << seconds([&] { reading.btnPrgSave->click(); });
    }
    const double save = median(saves);
    printf("saving 999 departments with 198 flag rounds: %.3f s (target under 1 s) %s, %lld bytes\n", save,
           verdict(save < 1.0), qlonglong(QFileInfo(path).size()));

    // 3. Opening it.
    QList<double> opens;
    for (int r = 0; r < rounds; ++r) {
        XmlViewForm::FormMode = 2;
        XmlViewForm::XmlFile = path;
        opens << seconds([] { XmlViewForm form; });
    }
    const double open = median(opens);
    printf("opening a file of 999 departments: %.3f s (target under 0.3 s) %s\n", open, verdict(open < 0.3));

    // 4. The default programming read, saved, opened and written back.
    gMaxNReparti = 40;
    const QString defaults = folder.filePath(QStringLiteral("default.xml"));
    {
        XmlViewForm::FormMode = 1;
        XmlViewForm read;
        FileDialog::queueAnswer(defaults);
        read.btnPrgSave->click();
    }
    XmlViewForm::FormMode = 2;
    XmlViewForm::XmlFile = defaults;
    XmlViewForm restoring;
    QList<double> restores;
    for (int r = 0; r < rounds; ++r)
        restores << seconds([&] { restoring.btnPrgSave->click(); });
    const double restore = median(restores);
    printf("restoring the default programming: %.3f s (target under 2 s) %s\n", restore, verdict(restore < 2.0));
    const QStringList shown = MsgBox::shownTexts();
    printf("messages: %lld, last \"%s\"\n", qlonglong(shown.size()), qPrintable(shown.value(shown.size() - 1)));
    return 0;
}
