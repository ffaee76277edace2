// SPDX-License-Identifier: GPL-3.0-or-later
#include "FaultPanel.h"

#include "emulator/EmulatorServer.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QVBoxLayout>

namespace {

struct WireSwitch
{
    FaultSwitches::Wire fault;
    const char *name;
    const char *label;
    const char *tip;
};

const WireSwitch WireSwitches[] = {
    {FaultSwitches::Wire::Nak, "Nak", "NAK a ogni richiesta",
     "La stampante risponde NAK: il PC ripete la richiesta due volte, poi rinuncia (risultato 7)."},
    {FaultSwitches::Wire::NoAck, "NoAck", "Nessun ACK",
     "La stampante ignora le richieste: il PC attende l'ACK fino a TimeoutAck (risultato 7)."},
    {FaultSwitches::Wire::AckOnly, "AckOnly", "ACK senza risposta",
     "La stampante conferma con ACK ma non risponde: il PC attende fino a TimeoutOp (risultato 8)."},
    {FaultSwitches::Wire::CutAnswer, "Cut", "Risposta tronca",
     "La risposta si interrompe a metà: il PC la scarta (risultato 3)."},
    {FaultSwitches::Wire::BadChecksum, "BadSum", "Checksum errato",
     "La risposta arriva con un checksum sbagliato: il PC la rifiuta (risultato 4)."},
    {FaultSwitches::Wire::Stale, "Stale", "Risposta vecchia",
     "Prima della risposta giusta arriva una risposta vecchia (altro SEQ): il PC deve scartarla "
     "e leggere quella giusta (risultato 0)."},
};

} // namespace

FaultPanel::FaultPanel(Apply apply, std::function<void()> armPowerOff, QWidget *parent)
    : QGroupBox(QStringLiteral("Guasti"), parent), m_apply(std::move(apply))
{
    setObjectName(QStringLiteral("grpGuasti"));
    auto *grid = new QVBoxLayout(this);
    const auto check = [&grid](const char *name, const QString &text, const QString &tip) {
        auto *c = new QCheckBox(text);
        c->setObjectName(QLatin1String(name));
        c->setToolTip(tip);
        grid->addWidget(c);
        return c;
    };
    m_paperOut = check("chkCartaEsaurita", QStringLiteral("Carta esaurita"),
                       QStringLiteral("Il PC riceve il rifiuto 2 (FINE CARTA) su ogni comando che stampa; le letture funzionano."));
    connect(m_paperOut, &QCheckBox::toggled, this, [this](bool on) { m_apply([on](EmulatorServer &p) { p.model().setPaperOut(on); }); });
    m_offline = check("chkFuoriLinea", QStringLiteral("Fuori linea"),
                      QStringLiteral("Il PC riceve il rifiuto 3 (STAMPANTE OFF LINE) su ogni comando che stampa."));
    connect(m_offline, &QCheckBox::toggled, this, [this](bool on) { m_apply([on](EmulatorServer &p) { p.model().setOffline(on); }); });
    m_powerOff = check("chkSpenta", QStringLiteral("Spenta"),
                       QStringLiteral("La connessione cade e nuove connessioni sono rifiutate, la porta seriale si chiude: "
                                      "il PC vede il risultato 1. Uno scontrino in corso va perso e alla riaccensione "
                                      "esce come SCONTRINO ANNULLATO."));
    connect(m_powerOff, &QCheckBox::toggled, this, [this](bool off) {
        m_apply([off](EmulatorServer &p) { p.setPower(!off); });
        Q_EMIT changed();
    });
    auto *midCommand = new QPushButton(QStringLiteral("Spegni durante il prossimo comando"));
    midCommand->setObjectName(QStringLiteral("btnSpegniDurante"));
    midCommand->setToolTip(QStringLiteral("Il prossimo comando è eseguito, metà della risposta parte e la stampante si spegne: "
                                          "il PC vede una risposta tronca (risultato 3), poi la connessione cade (risultato 1); "
                                          "uno scontrino aperto va perso."));
    connect(midCommand, &QPushButton::clicked, this, std::move(armPowerOff));
    grid->addWidget(midCommand);

    auto *journalRow = new QHBoxLayout;
    journalRow->addWidget(new QLabel(QStringLiteral("Giornale (DGFE):")));
    m_journal = new QComboBox;
    m_journal->setObjectName(QStringLiteral("cmbGiornale"));
    m_journal->addItem(QStringLiteral("regolare"), QStringLiteral("ok"));
    m_journal->addItem(QStringLiteral("quasi pieno"), QStringLiteral("nearfull"));
    m_journal->addItem(QStringLiteral("pieno"), QStringLiteral("full"));
    m_journal->addItem(QStringLiteral("da formattare"), QStringLiteral("toformat"));
    m_journal->addItem(QStringLiteral("di altra memoria fiscale"), QStringLiteral("othermf"));
    m_journal->setToolTip(QStringLiteral("Quasi pieno: il PC legge DgfeState 1. Pieno, da formattare, di altra memoria: "
                                         "ogni comando che registra è rifiutato con 1 (FINE CARTA GIORNALE DI FONDO)."));
    connect(m_journal, &QComboBox::activated, this, [this](int i) {
        if (const auto c = ElectronicJournal::conditionFromName(m_journal->itemData(i).toString()))
            m_apply([c](EmulatorServer &p) {
                p.model().setJournalCondition(*c);
                if (p.model().takeChanged())
                    p.saveNow();
            });
        Q_EMIT changed();
    });
    journalRow->addWidget(m_journal, 1);
    grid->addLayout(journalRow);

    auto *slowRow = new QHBoxLayout;
    slowRow->addWidget(new QLabel(QStringLiteral("Risposta lenta (ms):")));
    m_slow = new QSpinBox;
    m_slow->setObjectName(QStringLiteral("spnLenta"));
    m_slow->setRange(0, 120000);
    m_slow->setSingleStep(100);
    m_slow->setSpecialValueText(QStringLiteral("no"));
    m_slow->setToolTip(QStringLiteral("Attesa prima di ogni risposta, dopo l'ACK. Oltre TimeoutOp il PC rinuncia (risultato 8); "
                                      "una chiamata fatta mentre un'altra attende ha il risultato 9."));
    connect(m_slow, &QSpinBox::valueChanged, this, [this](int ms) { m_apply([ms](EmulatorServer &p) { p.faults().slowMs = ms; }); });
    slowRow->addWidget(m_slow, 1);
    grid->addLayout(slowRow);

    auto *lineBox = new QGroupBox(QStringLiteral("Guasti di linea"));
    auto *lineGrid = new QGridLayout(lineBox);
    int row = 0;
    for (const WireSwitch &w : WireSwitches) {
        auto *c = new QCheckBox(QString::fromUtf8(w.label));
        c->setObjectName(QStringLiteral("chk") + QLatin1String(w.name));
        c->setToolTip(QStringLiteral("Sempre: ") + QString::fromUtf8(w.tip));
        auto *once = new QPushButton(QStringLiteral("una volta"));
        once->setObjectName(QStringLiteral("btn") + QLatin1String(w.name) + QStringLiteral("UnaVolta"));
        once->setToolTip(QStringLiteral("Solo alla prossima richiesta: ") + QString::fromUtf8(w.tip));
        const auto fault = w.fault;
        connect(c, &QCheckBox::clicked, this, [this, fault](bool on) {
            m_apply([fault, on](EmulatorServer &p) { p.faults().set(fault, on ? FaultSwitches::Always : 0); });
        });
        connect(once, &QPushButton::clicked, this, [this, fault] {
            m_apply([fault](EmulatorServer &p) { p.faults().set(fault, 1); });
            Q_EMIT changed();
        });
        lineGrid->addWidget(c, row, 0);
        lineGrid->addWidget(once, row, 1);
        m_wire.append({fault, c});
        ++row;
    }
    auto *clear = new QPushButton(QStringLiteral("Togli tutti i guasti di linea"));
    clear->setObjectName(QStringLiteral("btnTogliGuasti"));
    clear->setToolTip(QStringLiteral("I guasti di linea e la risposta lenta tornano spenti: il PC riceve di nuovo risposte regolari."));
    connect(clear, &QPushButton::clicked, this, [this] {
        m_apply([](EmulatorServer &p) { p.faults().clear(); });
        m_slow->setValue(0);
        Q_EMIT changed();
    });
    lineGrid->addWidget(clear, row, 0, 1, 2);
    grid->addWidget(lineBox);
}

FaultPanel::State FaultPanel::read(EmulatorServer &printer) const
{
    State s;
    const PrinterContext &c = printer.model().context();
    s.paperOut = c.paperOut;
    s.offline = c.offline;
    s.powered = printer.isPowered();
    s.journal = ElectronicJournal::conditionName(c.memory.journal.forced);
    for (const auto &w : m_wire)
        s.wire << printer.faults().remaining(w.first);
    s.slowMs = printer.faults().slowMs;
    return s;
}

void FaultPanel::show(const State &s)
{
    const QSignalBlocker b1(m_paperOut), b2(m_offline), b3(m_powerOff), b4(m_journal), b5(m_slow);
    m_paperOut->setChecked(s.paperOut);
    m_offline->setChecked(s.offline);
    m_powerOff->setChecked(!s.powered);
    m_journal->setCurrentIndex(qMax(0, m_journal->findData(s.journal)));
    m_slow->setValue(s.slowMs);
    for (qsizetype i = 0; i < m_wire.size() && i < s.wire.size(); ++i)
        m_wire[i].second->setChecked(s.wire[i] == FaultSwitches::Always);
}
