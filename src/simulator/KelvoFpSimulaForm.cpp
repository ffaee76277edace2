// SPDX-License-Identifier: GPL-3.0-or-later
#include "KelvoFpSimulaForm.h"

#include "KeyFaces.h"
#include "XRepForm.h"

#include "app/DataOraForm.h"
#include "app/FpMonitorForm.h"
#include "commissioning/InstallFlagForm.h"
#include "commissioning/InstallHeaderForm.h"
#include "commissioning/InstallLogoForm.h"
#include "journal/DGFEForm.h"
#include "printer/KelvoFPControl.h"
#include "programming/ProgForm.h"
#include "settings/Conversions.h"
#include "ui/MsgBox.h"
#include "ui/Named.h"
#include "ui/ReportResult.h"

#include <QApplication>
#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QVBoxLayout>

using Key = KeypadModel::Key;

namespace {

const QString kDone = QStringLiteral("Operazione completata!");

// Every key of the keypad: it never takes the focus, so that the typing
// keys keep reaching the form, and never acts as the dialog's default.
QPushButton *key(QWidget *parent, const QString &name, const QString &caption = QString())
{
    auto *b = new QPushButton(caption, parent);
    b->setObjectName(name);
    b->setFocusPolicy(Qt::NoFocus);
    b->setAutoDefault(false);
    b->setMinimumHeight(40);
    return b;
}

QPushButton *pictureKey(QWidget *parent, const QString &name, const QIcon &face, const QString &meaning)
{
    QPushButton *b = key(parent, name);
    b->setIcon(face);
    b->setIconSize(QSize(KeyFaces::Size, KeyFaces::Size));
    b->setFixedSize(KeyFaces::Size + 10, KeyFaces::Size + 10);
    b->setToolTip(meaning);
    b->setAccessibleName(meaning);
    return b;
}

QString indexed(const char *name, int index)
{
    return QStringLiteral("%1_%2").arg(QLatin1String(name)).arg(index);
}

template <class Screen>
void openScreen(QWidget *parent)
{
    Screen form(parent);
    form.exec();
}

} // namespace

KelvoFpSimulaForm::KelvoFpSimulaForm(QWidget *parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("KelvoFpSimulaForm"));
    setWindowTitle(QStringLiteral("KelvoFpDemo"));
    buildScreen();
    buildMenus();

    keypad.report = [](int16_t result) { ReportResult(result); };
    keypad.tell = [](const QString &text, bool warning) {
        MsgBox::show(text, QMessageBox::Ok, warning ? QMessageBox::Warning : QMessageBox::NoIcon);
    };
    comboOperatore->setCurrentText(QStringLiteral("1"));
    comboOperatore_Click();
    showKeypad();
    btnDecimali->setIcon(KeyFaces::glyph(keypad.DecimalSeparator));

    // The keypad takes the typing keys until the description is clicked.
    setFocusPolicy(Qt::StrongFocus);
    setFocus();
}

void KelvoFpSimulaForm::buildScreen()
{
    txtDisplay = named(new QLabel(this), "txtDisplay");
    txtDisplay->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    txtDisplay->setMinimumHeight(56);
    txtDisplay->setStyleSheet(QStringLiteral(
        "QLabel { background: #0000a0; color: white; font-family: monospace; font-size: 20pt; font-weight: bold; padding: 6px; }"));

    lblDescProd = named(new QLabel(QStringLiteral("DESCRIZIONE PRODOTTO"), this), "lblDescProd");
    txtDescProd = named(new QLineEdit(this), "txtDescProd");
    txtDescProd->installEventFilter(this);
    lblOper = named(new QLabel(QStringLiteral("OPERATORE"), this), "lblOper");
    comboOperatore = named(new QComboBox(this), "comboOperatore");
    for (int op = 1; op <= 12; ++op)
        comboOperatore->addItem(QString::number(op));
    comboOperatore->setFocusPolicy(Qt::NoFocus); // typed digits are for the keypad

    // Digits in the order of a till's keypad: 7 8 9 / 4 5 6 / 1 2 3 / 0 00 ,
    auto *digits = new QGridLayout;
    for (int i = 0; i < 11; ++i) {
        const QString face = i < 9 ? QString::number(i + 1) : i == 9 ? QStringLiteral("0") : QStringLiteral("00");
        btnTastiera[i] = bound(pictureKey(this, indexed("btnTastiera", i), KeyFaces::glyph(face), face), Key(i));
        if (i < 9)
            digits->addWidget(btnTastiera[i], 2 - i / 3, i % 3);
    }
    digits->addWidget(btnTastiera[9], 3, 0);
    digits->addWidget(btnTastiera[10], 3, 1);
    btnDecimali = bound(pictureKey(this, QStringLiteral("btnDecimali"), KeyFaces::glyph(QStringLiteral(",")),
                                   QStringLiteral("Decimali")), Key::Decimal);
    digits->addWidget(btnDecimali, 3, 2);
    btnCanc = bound(pictureKey(this, QStringLiteral("btnCanc"), KeyFaces::glyph(QStringLiteral("CL"), QColor(0xf0, 0xc0, 0x40)),
                               QStringLiteral("Cancella")), Key::Clear);
    digits->addWidget(btnCanc, 0, 3);
    btnMoltiplicatoreProd = bound(pictureKey(this, QStringLiteral("btnMoltiplicatoreProd"), KeyFaces::glyph(QStringLiteral("×")),
                                             QStringLiteral("Moltiplicatore")), Key::Multiply);
    digits->addWidget(btnMoltiplicatoreProd, 1, 3);

    auto *departments = new QGridLayout;
    for (int n = 0; n < 4; ++n) {
        btnRep[n] = bound(key(this, indexed("btnRep", n), KeypadModel::departmentCaption(n)), Key(int(Key::Sale1) + n));
        btnStorno[n] = bound(key(this, indexed("btnStorno", n), QStringLiteral("STORNO REP %1").arg(n + 1)),
                             Key(int(Key::Void1) + n));
        btnRep[n]->setMinimumWidth(110);
        btnStorno[n]->setMinimumWidth(130);
        departments->addWidget(btnRep[n], n, 0);
        departments->addWidget(btnStorno[n], n, 1);
    }

    btnSubTot = bound(key(this, QStringLiteral("btnSubTot"), QStringLiteral("SUBTOT")), Key::Subtotal);
    btnContante = bound(key(this, QStringLiteral("btnContante"), QStringLiteral("Contante")), Key::Cash);
    btnAssegno = bound(key(this, QStringLiteral("btnAssegno"), QStringLiteral("Assegno")), Key::Cheque);
    btnTicket = bound(key(this, QStringLiteral("btnTicket"), QStringLiteral("Ticket")), Key::Ticket);
    btnCartaCredito = bound(key(this, QStringLiteral("btnCartaCredito"), QStringLiteral("Carta Credito")), Key::Card);
    btnContanteDesc = bound(key(this, QStringLiteral("btnContanteDesc"), QStringLiteral("Contante descrizione")),
                            Key::CashDescription);
    auto *payments = new QGridLayout;
    payments->addWidget(btnSubTot, 0, 0, 1, 2);
    payments->addWidget(btnContante, 1, 0);
    payments->addWidget(btnAssegno, 1, 1);
    payments->addWidget(btnTicket, 2, 0);
    payments->addWidget(btnCartaCredito, 2, 1);
    payments->addWidget(btnContanteDesc, 3, 0, 1, 2);

    auto adjustments = [this](int index, QLabel *label) {
        auto *row = new QHBoxLayout;
        label->setMinimumWidth(70);
        row->addWidget(label);
        const QColor plus(0xc8, 0xe8, 0xc8), minus(0xf0, 0xc8, 0xc8);
        const int first = int(index == 0 ? Key::ItemSurcharge : Key::TotalSurcharge);
        auto adjustKey = [&](const char *name, int offset, const QString &face, const QColor &colour, const QString &meaning) {
            QPushButton *b = pictureKey(this, indexed(name, index), KeyFaces::glyph(face, colour), meaning);
            row->addWidget(b);
            return bound(b, Key(first + offset));
        };
        btnAbbuonoPiuVal[index] = adjustKey("btnAbbuonoPiuVal", 0, QStringLiteral("+€"), plus, QStringLiteral("Aumento"));
        btnAbbuonoMenoVal[index] = adjustKey("btnAbbuonoMenoVal", 1, QStringLiteral("-€"), minus, QStringLiteral("Abbuono"));
        btnScontoPercPiu[index] = adjustKey("btnScontoPercPiu", 2, QStringLiteral("+%"), plus, QStringLiteral("Aumento %"));
        btnScontoPercMeno[index] = adjustKey("btnScontoPercMeno", 3, QStringLiteral("-%"), minus, QStringLiteral("Sconto %"));
        row->addStretch();
        return row;
    };
    lblRep = named(new QLabel(QStringLiteral("REPARTO"), this), "lblRep");
    lblTot = named(new QLabel(QStringLiteral("TOTALE"), this), "lblTot");
    auto *adjust = new QVBoxLayout;
    adjust->addLayout(adjustments(0, lblRep));
    adjust->addLayout(adjustments(1, lblTot));

    auto *device = new QGridLayout;
    auto deviceKey = [&](const char *name, KeyFaces::Symbol face, const QString &meaning, Key k) {
        QPushButton *b = bound(pictureKey(this, QLatin1String(name), KeyFaces::symbol(face), meaning), k);
        device->addWidget(b, device->count() / 2, device->count() % 2);
        return b;
    };
    btnApriCassetto = deviceKey("btnApriCassetto", KeyFaces::Symbol::Drawer, QStringLiteral("Apri cassetto"), Key::Drawer);
    btnAvanzaScontrino = deviceKey("btnAvanzaScontrino", KeyFaces::Symbol::Feed, QStringLiteral("Avanza scontrino"), Key::Feed);
    btnBloccaTasti = deviceKey("btnBloccaTasti", KeyFaces::Symbol::Lock, QStringLiteral("Blocca tasti"), Key::Lock);
    btnSbloccaTasti = deviceKey("btnSbloccaTasti", KeyFaces::Symbol::Unlock, QStringLiteral("Sblocca tasti"), Key::Unlock);

    btnChiusuraGiorno = bound(key(this, QStringLiteral("btnChiusuraGiorno"), QStringLiteral("Chiusura giornaliera")), Key::Closure);
    btnXRep = key(this, QStringLiteral("btnXRep"), QStringLiteral("X Report"));
    btnDGFE = key(this, QStringLiteral("btnDGFE"), QStringLiteral("Giornale di Fondo"));
    btnDataOra = key(this, QStringLiteral("btnDataOra"), QStringLiteral("Modifica data/ora"));
    btnMonitor = key(this, QStringLiteral("btnMonitor"), QStringLiteral("Controllo Diagnostico"));
    btnEsci = key(this, QStringLiteral("btnEsci"), QStringLiteral("ESCI"));
    auto *tools = new QHBoxLayout;
    for (QPushButton *b : {btnChiusuraGiorno, btnXRep, btnDGFE, btnDataOra, btnMonitor})
        tools->addWidget(b);
    tools->addStretch();
    tools->addWidget(btnEsci);

    auto *fields = new QGridLayout;
    fields->addWidget(lblDescProd, 0, 0);
    fields->addWidget(lblOper, 0, 1);
    fields->addWidget(txtDescProd, 1, 0);
    fields->addWidget(comboOperatore, 1, 1);
    fields->setColumnStretch(0, 1);

    auto *keys = new QHBoxLayout;
    keys->addLayout(digits);
    keys->addSpacing(12);
    keys->addLayout(departments);
    keys->addSpacing(12);
    keys->addLayout(payments);

    auto *lower = new QHBoxLayout;
    lower->addLayout(adjust);
    lower->addStretch();
    lower->addLayout(device);

    auto *layout = new QVBoxLayout(this);
    layout->addWidget(txtDisplay);
    layout->addLayout(fields);
    layout->addLayout(keys);
    layout->addLayout(lower);
    layout->addLayout(tools);

    connect(comboOperatore, &QComboBox::activated, this, [this] { comboOperatore_Click(); });
    connect(btnXRep, &QPushButton::clicked, this, [this] { openScreen<XRepForm>(this); });
    connect(btnDGFE, &QPushButton::clicked, this, [this] { openScreen<DGFEForm>(this); });
    connect(btnDataOra, &QPushButton::clicked, this, [this] {
        DataOraForm::WizardMode = false;
        openScreen<DataOraForm>(this);
    });
    connect(btnMonitor, &QPushButton::clicked, this, [this] { openScreen<FpMonitorForm>(this); });
    connect(btnEsci, &QPushButton::clicked, this, &QDialog::accept);
}

void KelvoFpSimulaForm::buildMenus()
{
    menuBar = named(new QMenuBar(this), "menuBar");
    layout()->setMenuBar(menuBar);

    mSetup = named(menuBar->addMenu(QStringLiteral("Strumenti")), "mSetup");
    mProg = named(mSetup->addMenu(QStringLiteral("Programmazione")), "mProg");
    auto table = [this](const char *name, const QString &caption, int16_t kind) {
        QAction *a = named(mProg->addAction(caption), name);
        connect(a, &QAction::triggered, this, [this, kind] { OpenTable(kind); });
        return a;
    };
    mCarte = table("mCarte", QStringLiteral("CarteCredito"), 0);
    mCont = table("mCont", QStringLiteral("ContantiDesc"), 1);
    mnuContantiPredefiniti = table("mnuContantiPredefiniti", QStringLiteral("Contanti predefiniti"), 6);
    mIva = table("mIva", QStringLiteral("IVA"), 3);
    mReparti = table("mReparti", QStringLiteral("Reparti"), 4);
    mTicket = table("mTicket", QStringLiteral("Ticket"), 2);
    mOperat = table("mOperat", QStringLiteral("Operatori"), 5);
    mFlag = named(mProg->addAction(QStringLiteral("Flag")), "mFlag");
    mLoghi = named(mProg->addAction(QStringLiteral("Loghi")), "mLoghi");
    mHeader = named(mProg->addAction(QStringLiteral("Intestazione")), "mHeader");
    mApprend = named(mSetup->addAction(QStringLiteral("Apprendimento")), "mApprend");
    mApprend->setCheckable(true);

    mnuOpzioni = named(menuBar->addMenu(QStringLiteral("Opzioni")), "mnuOpzioni");
    mnuReset = named(mnuOpzioni->addMenu(QStringLiteral("Reset")), "mnuReset");
    mnuResetTotPromoTable = named(mnuReset->addAction(QStringLiteral("Reset totalizzatori promo table")),
                                  "mnuResetTotPromoTable");
    mnuResetTotPLU = named(mnuReset->addAction(QStringLiteral("Reset totalizzatori PLU")), "mnuResetTotPLU");

    connect(mSetup, &QMenu::aboutToShow, this, &KelvoFpSimulaForm::mSetup_Click);
    connect(mApprend, &QAction::triggered, this, &KelvoFpSimulaForm::mApprend_Click);
    connect(mFlag, &QAction::triggered, this, [this] {
        InstallFlagForm::StandaloneMode = true;
        openScreen<InstallFlagForm>(this);
    });
    connect(mLoghi, &QAction::triggered, this, [this] {
        InstallLogoForm::StandaloneMode = true;
        openScreen<InstallLogoForm>(this);
    });
    connect(mHeader, &QAction::triggered, this, [this] {
        InstallHeaderForm::StandaloneMode = true;
        openScreen<InstallHeaderForm>(this);
    });
    connect(mnuResetTotPLU, &QAction::triggered, this, [this] {
        resetTotals(QStringLiteral("Si proprio sicuro di voler resettare il totale dei PLU"), &KeypadModel::resetPluTotals);
    });
    connect(mnuResetTotPromoTable, &QAction::triggered, this, [this] {
        resetTotals(QStringLiteral("Sei proprio sicuro di voler resettare il totale della tabella delle promozioni"),
                    &KeypadModel::resetPromoTotals);
    });
}

// --- Keys ----------------------------------------------------------------------

QPushButton *KelvoFpSimulaForm::bound(QPushButton *button, Key key)
{
    m_keys.emplace_back(button, key);
    connect(button, &QPushButton::clicked, this, [this, key] { press(key); });
    return button;
}

void KelvoFpSimulaForm::comboOperatore_Click()
{
    keypad.Operator = Conv::ToInteger(comboOperatore->currentText());
}

void KelvoFpSimulaForm::press(Key key)
{
    const bool posted = keypad.EntryPosted;
    keypad.Description = txtDescProd->text();
    keypad.press(key);
    showKeypad();
    if (!posted && keypad.EntryPosted)
        setFocus(); // the description was used: the keypad takes the keys again
}

void KelvoFpSimulaForm::showKeypad()
{
    txtDisplay->setText(keypad.Display);
    if (txtDescProd->text() != keypad.Description)
        txtDescProd->setText(keypad.Description);
    for (auto [button, key] : m_keys)
        button->setEnabled(!keypad.Locked || !KeypadModel::shutByLock(key));
    for (QPushButton *b : {btnXRep, btnDGFE, btnDataOra})
        b->setEnabled(!keypad.Locked);
}

// --- Physical keyboard ---------------------------------------------------------------------

void KelvoFpSimulaForm::keyPressEvent(QKeyEvent *event)
{
    // A typing key clicks the on-screen key it stands for: a disabled
    // (locked) key stays dead from the keyboard too.
    if (const auto k = KeypadModel::keyForTyping(event->key(), event->modifiers())) {
        for (auto [button, key] : m_keys)
            if (key == *k)
                button->click();
        event->accept();
        return;
    }
    QDialog::keyPressEvent(event); // Esc still closes the form
}

bool KelvoFpSimulaForm::eventFilter(QObject *watched, QEvent *event)
{
    // Enter in the description only ends the typing: it gives the keys back
    // to the keypad and pays nothing.
    if (watched == txtDescProd && event->type() == QEvent::KeyPress) {
        const int k = static_cast<QKeyEvent *>(event)->key();
        if (k == Qt::Key_Return || k == Qt::Key_Enter) {
            setFocus();
            return true;
        }
    }
    return QDialog::eventFilter(watched, event);
}

// --- Menus --------------------------------------------------------------------------------

void KelvoFpSimulaForm::mSetup_Click()
{
    if (const std::optional<bool> learning = keypad.learningMode())
        mApprend->setChecked(*learning);
}

void KelvoFpSimulaForm::mApprend_Click()
{
    // The action has already flipped its own mark: the printer decides.
    const bool learning = mApprend->isChecked();
    mApprend->setChecked(!learning);
    if (keypad.setLearningMode(learning))
        mApprend->setChecked(learning);
}

void KelvoFpSimulaForm::OpenTable(int16_t tableKind)
{
    ProgForm::WizardMode = false;
    ProgForm::TableKind = tableKind;
    setCursor(Qt::WaitCursor);
    ProgForm form(this);
    form.exec();
    unsetCursor();
}

void KelvoFpSimulaForm::resetTotals(const QString &question, void (KeypadModel::*reset)())
{
    if (MsgBox::show(question, QMessageBox::Yes | QMessageBox::No) != QMessageBox::Yes)
        return;
    // The hourglass over the whole program while the loop holds the thread;
    // a failure there ends the run.
    QApplication::setOverrideCursor(Qt::WaitCursor);
    (keypad.*reset)();
    QApplication::restoreOverrideCursor();
    MsgBox::show(kDone, QMessageBox::Ok, QMessageBox::Information);
}
