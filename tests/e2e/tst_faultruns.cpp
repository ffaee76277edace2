// SPDX-License-Identifier: GPL-3.0-or-later
// Each screen's main road walked against the emulated printer while one
// fault of the printer or of the line is on: the screen has to tell the
// technician, end within the time-outs, and work again once the fault is
// gone. Every screen meets every fault (data-driven).
//
// With FAULT_MATRIX=<path> the run also writes what it saw as Markdown
// tables below that file's own text: screen × fault, the messages shown, whether the printer answered
// again and whether the road then went as it does without a fault.
#include "EmulatorTestEnv.h"
#include "app/DataOraForm.h"
#include "app/FiscordaForm.h"
#include "app/FpMonitorForm.h"
#include "commissioning/InstallFlagForm.h"
#include "commissioning/InstallHeaderForm.h"
#include "commissioning/LoghiForm.h"
#include "emulator/EmulatorServer.h"
#include "printer/KelvoProtocolControl.h"
#include "settings/RunTimeError.h"
#include "programming/ProgForm.h"
#include "programming/ProgrammingGridModel.h"
#include "programming/XmlViewForm.h"
#include "simulator/KelvoFpSimulaForm.h"
#include "journal/DGFECrtForm.h"

#include <QCheckBox>
#include <QRegularExpression>
#include <QDateEdit>
#include <QTableView>
#include <QComboBox>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QScopeGuard>
#include <QtTest>
#include <iterator>

namespace {

// Short time-outs: a silent line costs seconds, not minutes (the fault
// matrix document states them).
constexpr int AckSeconds = 1;
constexpr int OpSeconds = 1;

// What stands behind one walk: a program folder, the emulated printer on a
// free loopback port, and the real control pointed at it.
struct Rig : EmulatorTestEnv
{
    int sent = 0;                    // frames the control sent
    std::function<void(int)> onSend; // told before each frame goes out

    bool start()
    {
        linkShippedFiles();
        if (!startOnTcp())
            return false;
        control->setTimeoutAck(AckSeconds);
        control->setTimeoutOp(OpSeconds);
        writeSettings(QStringLiteral("<mode>TCP</mode><comnumber>1</comnumber><comsettings>9600,n,8,1</comsettings>"
                                     "<tcpport>%1</tcpport><ipaddress>127.0.0.1</ipaddress><timeoutack>%2"
                                     "</timeoutack><timeoutop>%3</timeoutop><maxnreparti>40</maxnreparti>")
                          .arg(emu->tcpPort()).arg(AckSeconds).arg(OpSeconds));
        control->setTrafficObserver([this](KelvoProtocolControl::Direction d, const QByteArray &) {
            if (d != KelvoProtocolControl::Direction::Sent)
                return;
            ++sent;
            if (onSend)
                onSend(sent);
        });
        return true;
    }
    // Leaves onSend alone: it may be the caller.
    void clearFaults()
    {
        emu->faults().clear();
        emu->model().setPaperOut(false);
        emu->model().setOffline(false);
        emu->model().setJournalCondition(ElectronicJournal::Condition::Ok);
        emu->setPower(true);
    }
};

Rig *rig = nullptr;

// --- The roads -------------------------------------------------------------------

void startUp()
{
    FiscordaForm form(&*rig->control);
    QString modelText;
    form.InizializzaOCX(modelText); // a failed probe opens the setup, which the watcher closes
}

void readDate()
{
    DataOraForm::WizardMode = false;
    DataOraForm form;
}

void setDate()
{
    DataOraForm::WizardMode = false;
    DataOraForm form;
    form.btnSet->click(); // yes to the question
}

void monitor()
{
    FpMonitorForm form;
    form.show();
    QTest::qWait(50);
}

void header()
{
    InstallHeaderForm::StandaloneMode = true;
    InstallHeaderForm form;
    for (int i = 0; i < 3; ++i)
        form.ComboContR[i]->setCurrentIndex(i);
    form.txtR[0]->setText(QStringLiteral("BAR SPORT"));
    form.btnNext_Click();
}

void flags()
{
    InstallFlagForm::StandaloneMode = true;
    InstallFlagForm form;
    form.Check1[7]->setChecked(!form.Check1[7]->isChecked());
    form.btnNext->click();
}

void logo()
{
    LoghiForm form;
    form.show();
    form.chkHeader->setChecked(true);
    QListWidget *list = form.ListViewHeader;
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(list->item(2)).center());
    form.btnSave->click();
}

void departmentRow()
{
    ProgForm::WizardMode = false;
    ProgForm::TableKind = 4;
    ProgForm form;
    if (form.gridModel->rowCount() < 3)
        return;
    form.gridProg->setCurrentIndex(form.gridModel->index(2, 0)); // reads the row
    form.txtDesc->setText(QStringLiteral("DOLCI"));
    form.btnAdd->click();
}

void programmingRead()
{
    XmlViewForm::FormMode = 0; // from the printer
    XmlViewForm form;
}

void journalRead()
{
    QDateEdit from(QDate::currentDate());
    QDateEdit to(QDate::currentDate());
    DGFECrtForm::ByNumber = false;
    DGFECrtForm::FromDate = &from;
    DGFECrtForm::ToDate = &to;
    DGFECrtForm form;
    form.Command1->click();
}

void sale()
{
    KelvoFpSimulaForm form;
    form.btnTastiera[1]->click(); // 2
    form.btnRep[0]->click();
    form.btnContante->click();
}

struct Road
{
    const char *name;
    void (*walk)();
    // Faults that this road is not walked under: the road sets a long
    // time-out of its own, and they would only wait it out.
    QStringList notUnder = {};
    // The run may end on this road: a value the printer did not give leaves
    // a field empty that the screen then converts without a test, as its
    // rule is.
    bool mayEndRun = false;
};

// The journal's reading waits up to 30 s for each answer.
const QStringList longAnswerWait{QStringLiteral("ACK senza risposta"), QStringLiteral("risposta tagliata")};

const Road roads[] = {
    {"Avvio (prova del registratore)", startUp},
    {"DataOraForm lettura", readDate},
    {"DataOraForm impostazione", setDate},
    {"FpMonitorForm", monitor},
    {"InstallHeaderForm lettura e scrittura", header},
    {"InstallFlagForm lettura e scrittura", flags, {}, true},
    {"LoghiForm invio logo", logo},
    {"ProgForm reparto letto e scritto", departmentRow},
    {"XmlViewForm lettura dal registratore", programmingRead},
    {"DGFECrtForm lettura per data", journalRead, longAnswerWait},
    {"KelvoFpSimulaForm vendita", sale},
};

// --- The faults ------------------------------------------------------------------

// A fault on the line that costs a time-out per command is on for a few
// requests from the one half-way along the road, so that a long road does
// not wait a time-out per command; the others stay on for the whole walk.
constexpr int TimedBudget = 2;

struct Fault
{
    const char *name;
    void (*apply)(Rig &, int middle); // middle: the request half-way along the road
    int budget; // 0: the whole walk; n: the first n requests
};

void wire(Rig &r, FaultSwitches::Wire w) { r.emu->faults().set(w, FaultSwitches::Always); }

const Fault faults[] = {
    {"nessuno", [](Rig &, int) {}, 0},
    {"carta esaurita", [](Rig &r, int) { r.emu->model().setPaperOut(true); }, 0},
    {"fuori linea", [](Rig &r, int) { r.emu->model().setOffline(true); }, 0},
    {"giornale pieno", [](Rig &r, int) { r.emu->model().setJournalCondition(ElectronicJournal::Condition::Full); }, 0},
    {"spento", [](Rig &r, int) { r.emu->setPower(false); }, 0},
    // Off as the request half-way along goes out (on a road of one request,
    // while that one waits), until the road ends.
    {"spento a metà",
     [](Rig &r, int middle) {
         r.onSend = [&r, middle](int n) {
             if (n == middle)
                 r.emu->setPower(false);
         };
     },
     0},
    {"NAK", [](Rig &r, int) { wire(r, FaultSwitches::Wire::Nak); }, 0},
    {"checksum errato", [](Rig &r, int) { wire(r, FaultSwitches::Wire::BadChecksum); }, 0},
    {"risposte vecchie", [](Rig &r, int) { wire(r, FaultSwitches::Wire::Stale); }, 0},
    {"nessun ACK", [](Rig &r, int) { wire(r, FaultSwitches::Wire::NoAck); }, TimedBudget},
    {"ACK senza risposta", [](Rig &r, int) { wire(r, FaultSwitches::Wire::AckOnly); }, TimedBudget},
    {"risposta tagliata", [](Rig &r, int) { wire(r, FaultSwitches::Wire::CutAnswer); }, TimedBudget},
    {"risposta lenta", [](Rig &r, int) { r.emu->faults().slowMs = 1500; }, TimedBudget},
};

// --- What a walk shows -------------------------------------------------------------

struct Walk
{
    QStringList messages;
    QStringList modals; // windows the road opened modally
    QString runEnded;   // the failure that ended the run, if one did
    qint64 ms = 0;
    int sent = 0;
};

QStringList modalsSeen;

// The messages with their dates and times of day masked: the date screen
// shows the PC's clock, which moves on between two walks (a minute may turn,
// or the day), and that is no difference of the walk.
QStringList withoutClock(QStringList messages)
{
    static const QRegularExpression date(QStringLiteral("\\b\\d{1,2}/\\d{1,2}/\\d{2,4}\\b"));
    static const QRegularExpression time(QStringLiteral("\\b\\d{1,2}:\\d{1,2}(:\\d{1,2})?\\b"));
    for (QString &m : messages)
        m.replace(date, QStringLiteral("gg/mm/aaaa")).replace(time, QStringLiteral("hh:mm"));
    return messages;
}

Walk walk(const Road &road)
{
    MsgBox::clearShown();
    modalsSeen.clear();
    const int before = rig->sent;
    QElapsedTimer clock;
    clock.start();
    Walk w;
    try {
        road.walk();
    } catch (const RunTimeError &e) {
        w.runEnded = e.description();
    }
    w.ms = clock.elapsed();
    w.sent = rig->sent - before;
    w.messages = withoutClock(MsgBox::shownTexts());
    w.modals = modalsSeen;
    return w;
}

QString oneLine(QString text)
{
    return text.replace(QStringLiteral("\r\n"), QStringLiteral(" ")).replace(QLatin1Char('\n'), QLatin1Char(' ')).trimmed();
}

// "text" or "text (×3)", in the order first shown.
QString summary(const QStringList &messages)
{
    QStringList distinct;
    QHash<QString, int> count;
    for (const QString &m : messages) {
        const QString line = oneLine(m);
        if (count[line]++ == 0)
            distinct << line;
    }
    QStringList parts;
    for (const QString &d : distinct)
        parts << (count[d] > 1 ? QStringLiteral("%1 (×%2)").arg(d).arg(count[d]) : d);
    return parts.isEmpty() ? QStringLiteral("—") : parts.join(QStringLiteral(" / "));
}

struct MatrixRow
{
    QString road, fault, shown, recovered, again;
    qint64 ms;
    QString mark; // for the overview
};

// "=" the road went as without the fault; "M" a message told of it; "S" it
// went otherwise without a new message; "X" the run ended; "+r" the
// connection had to be opened again afterwards.
QString markOf(const Walk &under, const Walk &clean, bool reopened)
{
    if (!under.runEnded.isEmpty())
        return QStringLiteral("X");
    QString mark = QStringLiteral("=");
    if (under.messages != clean.messages) {
        bool told = false;
        for (const QString &m : under.messages)
            told = told || !clean.messages.contains(m);
        mark = told ? QStringLiteral("M") : QStringLiteral("S");
    }
    return reopened ? mark + QStringLiteral("+r") : mark;
}
QList<MatrixRow> matrix;

} // namespace

class TestFaultRuns : public QObject
{
    Q_OBJECT
    QTimer watcher; // closes a window that a road opens modally
    QHash<QString, Walk> clean; // each road without a fault
    QElapsedTimer total;

    Walk cleanWalk(int r)
    {
        const QString name = QString::fromUtf8(roads[r].name);
        if (!clean.contains(name)) {
            Rig fresh;
            rig = &fresh;
            if (fresh.start())
                clean.insert(name, walk(roads[r]));
            rig = nullptr;
        }
        return clean.value(name);
    }

private Q_SLOTS:
    void initTestCase()
    {
        total.start();
        connect(&watcher, &QTimer::timeout, this, [] {
            if (QWidget *modal = QApplication::activeModalWidget()) {
                modalsSeen << modal->objectName();
                modal->close();
            }
        });
        watcher.start(20);
    }
    void cleanupTestCase()
    {
        qInfo("fault runs: %lld ms", total.elapsed());
        const QString path = qEnvironmentVariable("FAULT_MATRIX");
        if (path.isEmpty())
            return;
        // The document's own text above the first table (what the columns
        // and marks mean, the time-outs above) stays as it is.
        QFile file(path);
        QByteArray head;
        if (file.open(QIODevice::ReadOnly))
            head = file.readAll();
        head.truncate(std::max<qsizetype>(0, head.indexOf("| Schermata")));
        file.close();
        QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        QTextStream out(&file);
        out << head;
        QStringList roadNames, faultNames;
        QHash<QString, QString> marks;
        for (const MatrixRow &row : matrix) {
            if (!roadNames.contains(row.road))
                roadNames << row.road;
            if (!faultNames.contains(row.fault))
                faultNames << row.fault;
            marks.insert(row.road + '\t' + row.fault, row.mark);
        }
        out << "| Schermata | " << faultNames.join(QStringLiteral(" | ")) << " |\n|---|"
            << QStringLiteral("---|").repeated(faultNames.size()) << "\n";
        for (const QString &road : roadNames) {
            out << "| " << road;
            for (const QString &fault : faultNames)
                out << " | " << marks.value(road + '\t' + fault);
            out << " |\n";
        }
        out << "\n## Detail\n\n"
               "| Schermata | Guasto | Messaggi | Di nuovo in linea | Strada di nuovo | ms |\n"
               "|---|---|---|---|---|---|\n";
        for (const MatrixRow &row : matrix)
            out << "| " << row.road << " | " << row.fault << " | " << QString(row.shown).replace('|', "\\|") << " | "
                << row.recovered << " | " << row.again << " | " << row.ms << " |\n";
    }

    void roadUnderFault_data()
    {
        QTest::addColumn<int>("road");
        QTest::addColumn<int>("fault");
        for (int r = 0; r < int(std::size(roads)); ++r)
            for (int f = 0; f < int(std::size(faults)); ++f)
                QTest::addRow("%s / %s", roads[r].name, faults[f].name) << r << f;
    }
    void roadUnderFault()
    {
        QFETCH(int, road);
        QFETCH(int, fault);
        const Fault &f = faults[fault];
        if (roads[road].notUnder.contains(QString::fromUtf8(f.name)))
            QSKIP("the road's own time-out is long");
        const Walk cleanRun = cleanWalk(road);

        Rig r;
        rig = &r;
        auto done = qScopeGuard([] { rig = nullptr; });
        QVERIFY(r.start());
        const int middle = std::max(1, (cleanRun.sent + 1) / 2);
        if (f.budget > 0) {
            r.onSend = [&r, &f, middle](int n) {
                if (n == middle)
                    f.apply(r, middle);
                else if (n == middle + f.budget)
                    r.clearFaults(); // this request goes out on a sound line
            };
        } else {
            f.apply(r, middle);
        }
        const Walk under = walk(roads[road]);
        r.onSend = nullptr;
        r.clearFaults();

        // Within the time-outs: at worst each request waited for its ACK and its answer.
        const qint64 bound = qint64(under.sent) * (AckSeconds + OpSeconds) * 1000 + 3000;
        QVERIFY2(under.ms <= bound, qPrintable(QStringLiteral("%1 ms for %2 requests").arg(under.ms).arg(under.sent)));

        // The printer answers again; a connection the printer dropped is
        // opened again as the setup's save would.
        QString recovered = QStringLiteral("sì");
        if (r.control->ReadDateTime() != 0) {
            r.control->OpenTcp();
            recovered = r.control->ReadDateTime() == 0 ? QStringLiteral("sì, riaprendo la connessione")
                                                      : QStringLiteral("no");
        }
        const Walk again = walk(roads[road]);
        const bool sameAsClean = again.messages == cleanRun.messages;

        QString shown = summary(under.messages);
        if (!under.runEnded.isEmpty())
            shown += QStringLiteral("; il programma termina: \"%1\"").arg(under.runEnded);
        if (!under.modals.isEmpty())
            shown += QStringLiteral("; apre ") + under.modals.join(QStringLiteral(", "));
        matrix.append({QString::fromUtf8(roads[road].name), QString::fromUtf8(f.name), shown, recovered,
                       sameAsClean ? QStringLiteral("sì") : QStringLiteral("no: ") + summary(again.messages), under.ms,
                       markOf(under, cleanRun, recovered.startsWith(QStringLiteral("sì, ")))});

        QVERIFY2(under.runEnded.isEmpty() || roads[road].mayEndRun, qPrintable(under.runEnded));
        QVERIFY2(recovered != QLatin1String("no"), "the printer does not answer once the fault is gone");
        QVERIFY2(sameAsClean, qPrintable(summary(again.messages)));
    }
};

QTEST_MAIN(TestFaultRuns)
#include "tst_faultruns.moc"
