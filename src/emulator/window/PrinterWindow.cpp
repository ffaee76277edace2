// SPDX-License-Identifier: GPL-3.0-or-later
#include "PrinterWindow.h"

#include "FaultPanel.h"
#include "PaperRollView.h"
#include "SettingsDialog.h"
#include "emulator/EmulatorServer.h"
#include "emulator/TextLayout.h"
#include "ui/FileDialog.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QDockWidget>
#include <QFile>
#include <QFontDatabase>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSaveFile>
#include <QSpinBox>
#include <QSplitter>
#include <QTimer>
#include <QVBoxLayout>

namespace {

QLabel *stateLabel(const QString &name)
{
    auto *l = new QLabel;
    l->setObjectName(name);
    l->setTextInteractionFlags(Qt::TextSelectableByMouse);
    return l;
}

} // namespace

struct PrinterWindow::Snapshot
{
    bool running = false;
    QHash<QString, QString> labels;
    FaultPanel::State faults;
};

PrinterWindow::PrinterWindow(const WindowSettings &settings, QWidget *parent)
    : QMainWindow(parent), m_settings(settings)
{
    setObjectName(QStringLiteral("PrinterWindow"));
    m_thread.setObjectName(QStringLiteral("printer"));
    m_thread.start();
    m_anchor = new QObject;
    m_anchor->moveToThread(&m_thread);
    buildUi();
    m_roll->setColumns(m_settings.config().headerWidth());
    auto *flushTimer = new QTimer(this);
    flushTimer->setInterval(40);
    connect(flushTimer, &QTimer::timeout, this, &PrinterWindow::flush);
    flushTimer->start();
    auto *clock = new QTimer(this);
    clock->setInterval(500);
    connect(clock, &QTimer::timeout, this, &PrinterWindow::refreshState);
    clock->start();
    startPrinter();
}

PrinterWindow::~PrinterWindow()
{
    stopPrinter();
    QMetaObject::invokeMethod(m_anchor, [this] { delete m_anchor; }, Qt::BlockingQueuedConnection);
    m_thread.quit();
    m_thread.wait();
}

void PrinterWindow::onPrinter(const std::function<void()> &fn)
{
    QMetaObject::invokeMethod(m_anchor, fn, Qt::BlockingQueuedConnection);
}

void PrinterWindow::withPrinter(const std::function<void(EmulatorServer &)> &fn)
{
    ++m_generation; // a state asked for before this is stale
    onPrinter([this, &fn] {
        if (m_server)
            fn(*m_server);
    });
}

bool PrinterWindow::isRunning()
{
    bool running = false;
    onPrinter([this, &running] { running = bool(m_server); });
    return running;
}

void PrinterWindow::stopPrinter()
{
    onPrinter([this] {
        if (!m_server)
            return;
        disconnect(m_server.get(), nullptr, this, nullptr);
        m_server->model().context().roll.onLine = nullptr;
        m_server->traffic().onLine = nullptr;
        m_server.reset(); // frees the port and the link before a new printer takes them
    });
}

void PrinterWindow::buildUi()
{
    setWindowTitle(QStringLiteral("Stampante di prova Fiscorda"));
    setWindowIcon(QIcon::fromTheme(QStringLiteral("fiscorda-printer")));

    QMenu *printer = menuBar()->addMenu(QStringLiteral("&Stampante"));
    QAction *settings = printer->addAction(QStringLiteral("&Impostazioni..."), this, &PrinterWindow::editSettings);
    settings->setObjectName(QStringLiteral("actImpostazioni"));
    printer->addSeparator();
    printer->addAction(QStringLiteral("&Esci"), this, &QWidget::close);
    QMenu *view = menuBar()->addMenu(QStringLiteral("&Visualizza"));

    auto *central = new QWidget;
    auto *outer = new QVBoxLayout(central);
    m_message = new QLabel;
    m_message->setObjectName(QStringLiteral("lblMessaggio"));
    m_message->setWordWrap(true);
    m_message->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_message->hide();
    outer->addWidget(m_message);

    auto *split = new QSplitter(Qt::Horizontal);
    auto *rollBox = new QWidget;
    auto *rollLayout = new QVBoxLayout(rollBox);
    rollLayout->setContentsMargins(0, 0, 0, 0);
    m_roll = new PaperRollView;
    m_roll->setToolTip(QStringLiteral("Il rotolo di carta: mostra le ultime %1 righe; il file della carta le tiene tutte.")
                           .arg(PaperRollView::MaxLines));
    m_roll->logoPicture = [this](int n) {
        const QMutexLocker lock(&m_mutex);
        return LogoPicture(m_logos, n);
    };
    rollLayout->addWidget(m_roll, 1);
    auto *rollButtons = new QHBoxLayout;
    const auto button = [&rollButtons](const char *name, const QString &text, const QString &tip) {
        auto *b = new QPushButton(text);
        b->setObjectName(QLatin1String(name));
        b->setToolTip(tip);
        rollButtons->addWidget(b);
        return b;
    };
    connect(button("btnPulisci", QStringLiteral("Pulisci"), QStringLiteral("Toglie la carta dalla finestra (il file della carta resta intero).")),
            &QPushButton::clicked, m_roll, &PaperRollView::clearRoll);
    connect(button("btnSalva", QStringLiteral("Salva come testo..."), QStringLiteral("Salva in un file di testo le righe che la finestra mostra.")),
            &QPushButton::clicked, this, &PrinterWindow::saveRollAs);
    connect(button("btnCopia", QStringLiteral("Copia"), QStringLiteral("Copia negli appunti le righe che la finestra mostra.")),
            &QPushButton::clicked, this, [this] { QApplication::clipboard()->setText(m_roll->text()); });
    rollLayout->addLayout(rollButtons);
    split->addWidget(rollBox);

    auto *side = new QWidget;
    auto *sideLayout = new QVBoxLayout(side);
    sideLayout->setContentsMargins(0, 0, 0, 0);
    m_visore = new QLabel;
    m_visore->setObjectName(QStringLiteral("lblVisore"));
    QFont lcd = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    lcd.setPointSize(14);
    lcd.setBold(true);
    m_visore->setFont(lcd);
    m_visore->setStyleSheet(QStringLiteral("QLabel#lblVisore { background: #0b1d0b; color: #7dff7a; padding: 6px; "
                                           "border: 3px solid #333; }"));
    m_visore->setToolTip(QStringLiteral("Il visore cliente della stampante"));
    sideLayout->addWidget(m_visore);
    sideLayout->addWidget(buildStatePanel());
    m_faults = new FaultPanel([this](const std::function<void(EmulatorServer &)> &fn) { withPrinter(fn); },
                              [this] { powerOffMidCommand(); });
    connect(m_faults, &FaultPanel::changed, this, &PrinterWindow::refreshState);
    sideLayout->addWidget(m_faults);
    sideLayout->addStretch(1);
    split->addWidget(side);
    split->setStretchFactor(0, 1);
    outer->addWidget(split, 1);
    setCentralWidget(central);

    m_trafficDock = new QDockWidget(QStringLiteral("Traffico"), this);
    m_trafficDock->setObjectName(QStringLiteral("dockTraffico"));
    m_traffic = new QPlainTextEdit;
    m_traffic->setObjectName(QStringLiteral("txtTraffico"));
    m_traffic->setReadOnly(true);
    m_traffic->setLineWrapMode(QPlainTextEdit::NoWrap);
    m_traffic->setMaximumBlockCount(2000);
    m_traffic->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    m_trafficDock->setWidget(m_traffic);
    addDockWidget(Qt::BottomDockWidgetArea, m_trafficDock);
    QAction *trafficAction = m_trafficDock->toggleViewAction();
    trafficAction->setObjectName(QStringLiteral("actTraffico"));
    trafficAction->setText(QStringLiteral("&Traffico (esadecimale e testo)"));
    view->addAction(trafficAction);
    connect(m_trafficDock, &QDockWidget::visibilityChanged, this, [this](bool) { setTrafficShown(m_trafficDock->isVisible()); });
    m_trafficDock->hide();
}

QWidget *PrinterWindow::buildStatePanel()
{
    auto *box = new QGroupBox(QStringLiteral("Stato della stampante"));
    auto *form = new QFormLayout(box);
    const std::pair<const char *, const char *> rows[] = {
        {"lblModello", "Modello"},           {"lblMatricola", "Matricola"},
        {"lblFiscale", "Stato fiscale"},     {"lblDgfe", "DGFE"},
        {"lblUltimaChiusura", "Ultima chiusura"}, {"lblOrologio", "Orologio"},
        {"lblApprendimento", "Modalità apprendimento"}, {"lblLinea", "Linea"},
        {"lblConnessione", "Collegamento"},
    };
    for (const auto &[name, label] : rows) {
        QLabel *l = stateLabel(QLatin1String(name));
        m_state.insert(QLatin1String(name), l);
        form->addRow(QString::fromUtf8(label) + QLatin1Char(':'), l);
    }
    return box;
}

bool PrinterWindow::startPrinter()
{
    stopPrinter();
    flush();
    m_message->hide();
    const EmulatorConfig config = m_settings.config();
    const QString invalid = config.validate();
    if (!invalid.isEmpty()) {
        say(QStringLiteral("La stampante non è accesa: le impostazioni non vanno bene (%1). Correggerle in "
                           "Stampante > Impostazioni.").arg(invalid), true);
        refreshState();
        return false;
    }
    bool ok = false;
    QStringList trouble;
    const bool traffic = !m_trafficDock->isHidden();
    onPrinter([&] {
        m_server = std::make_unique<EmulatorServer>(config);
        m_headerSeen.clear();
        m_server->model().context().roll.onLine = [this](const QString &line) { lineOnPaper(line); };
        connect(m_server.get(), &EmulatorServer::lineChanged, this, &PrinterWindow::refreshState);
        connect(m_server.get(), &EmulatorServer::requestHandled, m_anchor, [this] {
            if (!m_powerOffArmed.exchange(false))
                return;
            // The command has run; half of its answer leaves, then the power goes.
            m_server->faults().set(FaultSwitches::Wire::CutAnswer, 1);
            QTimer::singleShot(0, m_anchor, [this] {
                if (m_server)
                    m_server->setPower(false);
            });
        }, Qt::DirectConnection);

        QString error;
        ok = m_server->start(&error);
        for (const QString &note : m_server->notes())
            if (!note.startsWith(QLatin1String("no state file")))
                trouble << QStringLiteral("Avviso della stampante: ") + note;
        if (!ok)
            trouble << QStringLiteral("I file della stampante non si aprono: %1").arg(error);
        if (ok && config.tcp && !m_server->listenTcp(config.tcpAddress, config.tcpPort, &error)) {
            trouble << QStringLiteral("La porta TCP %1 non è disponibile (%2): forse un'altra stampante di prova è già "
                                      "accesa. Scegliere un'altra porta in Stampante > Impostazioni.")
                           .arg(config.tcpPort).arg(error);
            ok = false;
        }
        if (ok && !config.ptyFolder.isEmpty()
            && !m_server->openPty(config.ptyFolder, config.comNumber, config.lineSettings, &error)) {
            trouble << QStringLiteral("La porta seriale COM%1 non si può creare (%2).").arg(config.comNumber).arg(error);
            ok = false;
        }
    });
    setTrafficShown(traffic);
    if (!trouble.isEmpty())
        say(trouble.join(QLatin1Char('\n')), true);
    refreshState();
    return ok;
}

// On the printer's thread: every printed line, with its style, handed over.
void PrinterWindow::lineOnPaper(const QString &line)
{
    const PrinterContext &ctx = m_server->model().context();
    if (ctx.memory.header != m_headerSeen) {
        m_headerSeen = ctx.memory.header;
        m_styles.clear();
        const int w = ctx.lineWidth();
        for (const HeaderLine &h : m_headerSeen) {
            if (h.text.trimmed().isEmpty() || h.style <= 1)
                continue;
            const QString printed = h.style >= 3 ? TextLayout::centred(TextLayout::widened(h.text), w) : h.text;
            m_styles.insert(printed.left(w), h.style);
        }
    }
    const int style = m_styles.isEmpty() ? 1 : m_styles.value(line, 1);
    const bool logo = line.contains(QLatin1String("[ LOGO "));
    QList<QByteArray> logos;
    if (logo)
        for (const auto &l : ctx.memory.logos)
            logos << l.data;
    const QMutexLocker lock(&m_mutex);
    m_pendingRoll.append({line, style});
    // Only the newest lines can stay on screen: a long print keeps no more.
    // (lines pushed off the bounded roll by newer ones would never be seen).
    if (m_pendingRoll.size() > 2 * PaperRollView::MaxLines)
        m_pendingRoll.remove(0, m_pendingRoll.size() - PaperRollView::MaxLines);
    if (logo)
        m_logos = logos;
}

bool PrinterWindow::applySettings(const WindowSettings &settings)
{
    m_settings = settings;
    m_settings.save();
    m_roll->setColumns(m_settings.config().headerWidth());
    return startPrinter();
}

void PrinterWindow::say(const QString &text, bool trouble)
{
    m_message->setText(text);
    m_message->setStyleSheet(trouble ? QStringLiteral("QLabel { background: #fde8e6; color: #7a1410; padding: 6px; }")
                                     : QStringLiteral("QLabel { background: #e8f1fd; color: #10327a; padding: 6px; }"));
    m_message->setVisible(!text.isEmpty());
}

QString PrinterWindow::message() const
{
    return m_message->isHidden() ? QString() : m_message->text();
}

void PrinterWindow::flush()
{
    QList<PaperRollView::Line> lines;
    QStringList traffic;
    {
        // Each turn of the timer takes a bounded share, so that a long print
        // never holds the window and a flood of receipts does not take the
        // printer's time: lines that a flood pushes past the roll's bound
        // are dropped here (they would be pushed off the roll anyway), and
        // at rest the roll ends as the paper file does.
        const QMutexLocker lock(&m_mutex);
        if (m_pendingRoll.size() <= ChunkLines) {
            lines.swap(m_pendingRoll);
        } else {
            lines = m_pendingRoll.mid(0, ChunkLines);
            m_pendingRoll.remove(0, ChunkLines);
        }
        traffic.swap(m_pendingTraffic);
    }
    if (!lines.isEmpty()) {
        for (const auto &l : std::as_const(lines))
            m_display.printed(l.text);
        m_roll->appendLines(lines);
        m_visore->setText(m_display.top().leftJustified(CustomerDisplay::Width) + QLatin1Char('\n')
                          + m_display.bottom().leftJustified(CustomerDisplay::Width));
    }
    if (!traffic.isEmpty())
        m_traffic->appendPlainText(traffic.join(QLatin1Char('\n')));
}

void PrinterWindow::setTrafficShown(bool shown)
{
    // Only a shown pane listens: the printer answers as fast without it.
    withPrinter([this, shown](EmulatorServer &p) {
        if (!shown) {
            p.traffic().onLine = nullptr;
            return;
        }
        p.traffic().onLine = [this](const QString &line) {
            const QMutexLocker lock(&m_mutex);
            m_pendingTraffic.append(line);
            if (m_pendingTraffic.size() > 4000)
                m_pendingTraffic.remove(0, m_pendingTraffic.size() - 2000);
        };
    });
}

// Asks the printer's thread for what the window shows, without waiting for
// it (a long print may hold it); the answer comes back as an event.
void PrinterWindow::refreshState()
{
    if (m_snapshotAsked)
        return;
    m_snapshotAsked = true;
    const EmulatorConfig config = m_settings.config();
    const int generation = m_generation;
    QMetaObject::invokeMethod(m_anchor, [this, config, generation] {
        Snapshot s;
        QHash<QString, QString> &l = s.labels;
        l[QStringLiteral("lblModello")] = QStringLiteral("KELVO ") + EmulatorConfig::modelName(config.model);
        QString line;
        if (config.tcp)
            line = QStringLiteral("TCP %1:%2").arg(config.tcpAddress.toString()).arg(m_server ? m_server->tcpPort() : config.tcpPort);
        if (!config.ptyFolder.isEmpty()) {
            const QString dev = m_server ? m_server->ptyDevice() : QString();
            line += (line.isEmpty() ? QString() : QStringLiteral("; "))
                    + QStringLiteral("COM%1 (%2) a %3").arg(config.comNumber).arg(dev.isEmpty() ? QStringLiteral("chiusa") : dev, config.lineSettings);
        }
        l[QStringLiteral("lblLinea")] = line;
        if (!m_server) {
            l[QStringLiteral("lblMatricola")] = config.effectiveSerial();
            for (const char *n : {"lblFiscale", "lblDgfe", "lblUltimaChiusura", "lblOrologio", "lblApprendimento"})
                l[QLatin1String(n)] = QStringLiteral("-");
            l[QStringLiteral("lblConnessione")] = QStringLiteral("stampante non accesa");
        } else {
            s.running = true;
            const PrinterContext &c = m_server->model().context();
            const PrinterMemory &m = c.memory;
            l[QStringLiteral("lblMatricola")] = m.serial;
            l[QStringLiteral("lblFiscale")] = m.fiscalMemory.isEmpty() && c.config.resets == 0
                                                  ? QStringLiteral("non in servizio (nessuna chiusura)")
                                                  : QStringLiteral("in servizio");
            static const char *const dgfe[] = {"regolare", "quasi pieno", "da formattare", "di altra stampante", "pieno"};
            const int ds = m.journal.dgfeState();
            l[QStringLiteral("lblDgfe")] = QStringLiteral("n. %1, %2, %3 % usato").arg(m.journal.number)
                                               .arg(QLatin1String(ds >= 0 && ds <= 4 ? dgfe[ds] : "?")).arg(m.journal.percent());
            l[QStringLiteral("lblUltimaChiusura")] =
                m.lastClosure.isValid() ? QStringLiteral("Z n. %1 del %2").arg(c.config.resets + m.fiscalMemory.size())
                                              .arg(m.lastClosure.toString(QStringLiteral("dd-MM-yyyy HH:mm")))
                                        : QStringLiteral("nessuna");
            l[QStringLiteral("lblOrologio")] = c.now().toString(QStringLiteral("dd-MM-yyyy HH:mm:ss"));
            l[QStringLiteral("lblApprendimento")] = c.learningMode() ? QStringLiteral("sì") : QStringLiteral("no");
            const int n = m_server->connectionCount();
            l[QStringLiteral("lblConnessione")] = !m_server->isPowered() ? QStringLiteral("spenta")
                                                  : n > 0 ? QStringLiteral("collegata (%1)").arg(n)
                                                          : QStringLiteral("in attesa del PC");
            s.faults = m_faults->read(*m_server);
        }
        QMetaObject::invokeMethod(this, [this, s, generation] {
            m_snapshotAsked = false;
            if (generation == m_generation)
                applySnapshot(s);
            else
                refreshState();
        }, Qt::QueuedConnection);
    }, Qt::QueuedConnection);
}

void PrinterWindow::applySnapshot(const Snapshot &s)
{
    for (auto it = s.labels.begin(); it != s.labels.end(); ++it)
        if (QLabel *l = m_state.value(it.key()))
            l->setText(it.value());
    if (!s.running)
        return;
    m_faults->show(s.faults);
}

void PrinterWindow::powerOffMidCommand()
{
    m_powerOffArmed = true;
    say(QStringLiteral("La stampante si spegnerà durante il prossimo comando."), false);
}

void PrinterWindow::editSettings()
{
    SettingsDialog dialog(m_settings, this);
    if (dialog.exec() == QDialog::Accepted)
        applySettings(dialog.settings());
}

void PrinterWindow::saveRollAs()
{
    const auto path = FileDialog::save(this, QStringLiteral("Salva la carta"), QStringLiteral("carta.txt"),
                                       QStringLiteral("Testo (*.txt)"));
    if (!path)
        return;
    QSaveFile file(*path);
    const QByteArray bytes = m_roll->text().toUtf8();
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit())
        say(QStringLiteral("La carta non è stata salvata in %1: %2").arg(*path, file.errorString()), true);
}
