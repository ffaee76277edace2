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
#include "settings/LocaleValue.h"
#include "settings/RunTimeError.h"
#include "ui/MsgBox.h"
#include "ui/Named.h"
#include "ui/ReportResult.h"

#include <QApplication>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QVBoxLayout>

bool KelvoFpSimulaForm::PaymentOpen = false;

namespace {

const QString kLocked = QStringLiteral("-TASTIERA BLOCCATA-");
const QString kNoSurcharge = QStringLiteral("Impostare il valore dell'aumento!");
const QString kNoDiscount = QStringLiteral("Impostare il valore del'abbuono!");
const QString kNoPercentDiscount = QStringLiteral("Impostare il valore dello sconto!");
const QString kNoCheque = QStringLiteral("Impostare il valore dell'assegno!");
// A figure of the twenty the display takes, but beyond what the control
// can carry: told here instead of ending the run.
const QString kTooLarge = QStringLiteral("Valore troppo grande: la cifra impostata non può essere inviata alla stampante.");
const QString kDone = QStringLiteral("Operazione completata!");

void tooLarge()
{
    MsgBox::show(kTooLarge, QMessageBox::Ok, QMessageBox::Warning);
}

// Text that is no number at all stays a run-ending failure; only a figure
// too large for its type is caught and told.
template <typename T, typename F>
std::optional<T> fitting(F convert)
{
    try {
        return convert();
    } catch (const RunTimeError &e) {
        if (e.code() != RunTimeError::Overflow)
            throw;
    }
    tooLarge();
    return std::nullopt;
}

std::optional<Currency> amountOf(const QString &text)
{
    return fitting<Currency>([&] { return Conv::ToCurrency(text); });
}

std::optional<Currency> amountOf(double value)
{
    const std::optional<Currency> amount = Currency::fromDouble(value);
    if (!amount)
        tooLarge();
    return amount;
}

std::optional<int16_t> countOf(const QString &text)
{
    return fitting<int16_t>([&] { return Conv::ToInteger(text); });
}

// The hourglass over the whole program while a loop holds the thread.
struct WaitCursor
{
    WaitCursor() { QApplication::setOverrideCursor(Qt::WaitCursor); }
    ~WaitCursor() { QApplication::restoreOverrideCursor(); }
    WaitCursor(const WaitCursor &) = delete;
    WaitCursor &operator=(const WaitCursor &) = delete;
};

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

} // namespace

KelvoFpSimulaForm::KelvoFpSimulaForm(QWidget *parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("KelvoFpSimulaForm"));
    setWindowTitle(QStringLiteral("KelvoFpDemo"));
    buildScreen();
    buildMenus();

    // Load
    comboOperatore->setCurrentText(QStringLiteral("1"));
    Operator = Conv::ToInteger(comboOperatore->currentText());
    ResetKeypad();
    DecimalSeparator = GetLocaleValue(LOCALE_SMONDECIMALSEP);
    if (DecimalSeparator.isEmpty())
        DecimalSeparator = QStringLiteral(",");
    btnDecimali->setIcon(KeyFaces::glyph(DecimalSeparator));

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
        btnTastiera[i] = pictureKey(this, indexed("btnTastiera", i), KeyFaces::glyph(face), face);
        if (i < 9)
            digits->addWidget(btnTastiera[i], 2 - i / 3, i % 3);
    }
    digits->addWidget(btnTastiera[9], 3, 0);
    digits->addWidget(btnTastiera[10], 3, 1);
    btnDecimali = pictureKey(this, QStringLiteral("btnDecimali"), KeyFaces::glyph(QStringLiteral(",")),
                             QStringLiteral("Decimali"));
    digits->addWidget(btnDecimali, 3, 2);
    btnCanc = pictureKey(this, QStringLiteral("btnCanc"),
                         KeyFaces::glyph(QStringLiteral("CL"), QColor(0xf0, 0xc0, 0x40)), QStringLiteral("Cancella"));
    digits->addWidget(btnCanc, 0, 3);
    btnMoltiplicatoreProd = pictureKey(this, QStringLiteral("btnMoltiplicatoreProd"),
                                       KeyFaces::glyph(QStringLiteral("×")), QStringLiteral("Moltiplicatore"));
    digits->addWidget(btnMoltiplicatoreProd, 1, 3);

    auto *departments = new QGridLayout;
    for (int n = 0; n < 4; ++n) {
        btnRep[n] = key(this, indexed("btnRep", n), QStringLiteral("REP %1").arg(n + 1));
        btnStorno[n] = key(this, indexed("btnStorno", n), QStringLiteral("STORNO REP %1").arg(n + 1));
        btnRep[n]->setMinimumWidth(110);
        btnStorno[n]->setMinimumWidth(130);
        departments->addWidget(btnRep[n], n, 0);
        departments->addWidget(btnStorno[n], n, 1);
    }

    btnSubTot = key(this, QStringLiteral("btnSubTot"), QStringLiteral("SUBTOT"));
    btnContante = key(this, QStringLiteral("btnContante"), QStringLiteral("Contante"));
    btnAssegno = key(this, QStringLiteral("btnAssegno"), QStringLiteral("Assegno"));
    btnTicket = key(this, QStringLiteral("btnTicket"), QStringLiteral("Ticket"));
    btnCartaCredito = key(this, QStringLiteral("btnCartaCredito"), QStringLiteral("Carta Credito"));
    btnContanteDesc = key(this, QStringLiteral("btnContanteDesc"), QStringLiteral("Contante descrizione"));
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
        btnAbbuonoPiuVal[index] = pictureKey(this, indexed("btnAbbuonoPiuVal", index),
                                             KeyFaces::glyph(QStringLiteral("+€"), plus), QStringLiteral("Aumento"));
        btnAbbuonoMenoVal[index] = pictureKey(this, indexed("btnAbbuonoMenoVal", index),
                                              KeyFaces::glyph(QStringLiteral("-€"), minus), QStringLiteral("Abbuono"));
        btnScontoPercPiu[index] = pictureKey(this, indexed("btnScontoPercPiu", index),
                                             KeyFaces::glyph(QStringLiteral("+%"), plus), QStringLiteral("Aumento %"));
        btnScontoPercMeno[index] = pictureKey(this, indexed("btnScontoPercMeno", index),
                                              KeyFaces::glyph(QStringLiteral("-%"), minus), QStringLiteral("Sconto %"));
        row->addWidget(btnAbbuonoPiuVal[index]);
        row->addWidget(btnAbbuonoMenoVal[index]);
        row->addWidget(btnScontoPercPiu[index]);
        row->addWidget(btnScontoPercMeno[index]);
        row->addStretch();
        return row;
    };
    lblRep = named(new QLabel(QStringLiteral("REPARTO"), this), "lblRep");
    lblTot = named(new QLabel(QStringLiteral("TOTALE"), this), "lblTot");
    auto *adjust = new QVBoxLayout;
    adjust->addLayout(adjustments(0, lblRep));
    adjust->addLayout(adjustments(1, lblTot));

    btnApriCassetto = pictureKey(this, QStringLiteral("btnApriCassetto"), KeyFaces::symbol(KeyFaces::Symbol::Drawer),
                                 QStringLiteral("Apri cassetto"));
    btnAvanzaScontrino = pictureKey(this, QStringLiteral("btnAvanzaScontrino"), KeyFaces::symbol(KeyFaces::Symbol::Feed),
                                    QStringLiteral("Avanza scontrino"));
    btnBloccaTasti = pictureKey(this, QStringLiteral("btnBloccaTasti"), KeyFaces::symbol(KeyFaces::Symbol::Lock),
                                QStringLiteral("Blocca tasti"));
    btnSbloccaTasti = pictureKey(this, QStringLiteral("btnSbloccaTasti"), KeyFaces::symbol(KeyFaces::Symbol::Unlock),
                                 QStringLiteral("Sblocca tasti"));
    auto *device = new QGridLayout;
    device->addWidget(btnApriCassetto, 0, 0);
    device->addWidget(btnAvanzaScontrino, 0, 1);
    device->addWidget(btnBloccaTasti, 1, 0);
    device->addWidget(btnSbloccaTasti, 1, 1);

    btnChiusuraGiorno = key(this, QStringLiteral("btnChiusuraGiorno"), QStringLiteral("Chiusura giornaliera"));
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
    for (int i = 0; i < 11; ++i)
        connect(btnTastiera[i], &QPushButton::clicked, this, [this, i] { btnTastiera_Click(i); });
    connect(btnDecimali, &QPushButton::clicked, this, &KelvoFpSimulaForm::btnDecimali_Click);
    connect(btnMoltiplicatoreProd, &QPushButton::clicked, this, &KelvoFpSimulaForm::btnMoltiplicatoreProd_Click);
    connect(btnCanc, &QPushButton::clicked, this, &KelvoFpSimulaForm::ResetKeypad);
    for (int n = 0; n < 4; ++n) {
        connect(btnRep[n], &QPushButton::clicked, this, [this, n] { btnRep_Click(n); });
        connect(btnStorno[n], &QPushButton::clicked, this, [this, n] { btnStorno_Click(n); });
    }
    for (int i = 0; i < 2; ++i) {
        connect(btnAbbuonoPiuVal[i], &QPushButton::clicked, this, [this, i] { btnAbbuonoPiuVal_Click(i); });
        connect(btnAbbuonoMenoVal[i], &QPushButton::clicked, this, [this, i] { btnAbbuonoMenoVal_Click(i); });
        connect(btnScontoPercPiu[i], &QPushButton::clicked, this, [this, i] { btnScontoPercPiu_Click(i); });
        connect(btnScontoPercMeno[i], &QPushButton::clicked, this, [this, i] { btnScontoPercMeno_Click(i); });
    }
    connect(btnContante, &QPushButton::clicked, this, &KelvoFpSimulaForm::btnContante_Click);
    connect(btnAssegno, &QPushButton::clicked, this, &KelvoFpSimulaForm::btnAssegno_Click);
    connect(btnCartaCredito, &QPushButton::clicked, this, &KelvoFpSimulaForm::btnCartaCredito_Click);
    connect(btnTicket, &QPushButton::clicked, this, &KelvoFpSimulaForm::btnTicket_Click);
    connect(btnContanteDesc, &QPushButton::clicked, this, &KelvoFpSimulaForm::btnContanteDesc_Click);
    connect(btnSubTot, &QPushButton::clicked, this, &KelvoFpSimulaForm::btnSubTot_Click);
    connect(btnApriCassetto, &QPushButton::clicked, this, &KelvoFpSimulaForm::btnApriCassetto_Click);
    connect(btnAvanzaScontrino, &QPushButton::clicked, this, &KelvoFpSimulaForm::btnAvanzaScontrino_Click);
    connect(btnChiusuraGiorno, &QPushButton::clicked, this, &KelvoFpSimulaForm::btnChiusuraGiorno_Click);
    connect(btnBloccaTasti, &QPushButton::clicked, this, &KelvoFpSimulaForm::btnBloccaTasti_Click);
    connect(btnSbloccaTasti, &QPushButton::clicked, this, &KelvoFpSimulaForm::btnSbloccaTasti_Click);
    connect(btnXRep, &QPushButton::clicked, this, &KelvoFpSimulaForm::btnXRep_Click);
    connect(btnDGFE, &QPushButton::clicked, this, &KelvoFpSimulaForm::btnDGFE_Click);
    connect(btnDataOra, &QPushButton::clicked, this, &KelvoFpSimulaForm::btnDataOra_Click);
    connect(btnMonitor, &QPushButton::clicked, this, &KelvoFpSimulaForm::btnMonitor_Click);
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
    connect(mFlag, &QAction::triggered, this, &KelvoFpSimulaForm::mFlag_Click);
    connect(mLoghi, &QAction::triggered, this, &KelvoFpSimulaForm::mLoghi_Click);
    connect(mHeader, &QAction::triggered, this, &KelvoFpSimulaForm::mHeader_Click);
    connect(mnuResetTotPLU, &QAction::triggered, this, &KelvoFpSimulaForm::mnuResetTotPLU_Click);
    connect(mnuResetTotPromoTable, &QAction::triggered, this, &KelvoFpSimulaForm::mnuResetTotPromoTable_Click);
}

// --- Entry -----------------------------------------------------------------------

void KelvoFpSimulaForm::ResetKeypad()
{
    txtDisplay->setText(QStringLiteral("0"));
    txtDescProd->clear();
    Entry.clear();
    Quantity = 1.0;
    Price = 0;
    DecimalKeyed = false;
    DecimalDigits = 0;
    EntryPosted = false;
    // PaymentOpen stays: only a payment ends it.
}

QString KelvoFpSimulaForm::beforeX() const
{
    return Entry.left(Entry.indexOf(QLatin1Char('x')));
}

QString KelvoFpSimulaForm::afterX() const
{
    return Entry.mid(Entry.indexOf(QLatin1Char('x')) + 1);
}

void KelvoFpSimulaForm::comboOperatore_Click()
{
    Operator = Conv::ToInteger(comboOperatore->currentText());
}

void KelvoFpSimulaForm::btnTastiera_Click(int index)
{
    const QString digits = index < 9 ? QString::number(index + 1) : index == 9 ? QStringLiteral("0") : QStringLiteral("00");
    if (EntryPosted)
        ResetKeypad();
    if (txtDisplay->text() == QStringLiteral("0"))
        txtDisplay->clear();
    if (DecimalKeyed && DecimalDigits < 4)
        DecimalDigits += int16_t(digits.size());
    // The length is that of the entry before the key: 00 may reach 21.
    if (Entry.size() < 20 && DecimalDigits < 4)
        txtDisplay->setText(txtDisplay->text() + digits);
    Entry = txtDisplay->text();
}

void KelvoFpSimulaForm::btnDecimali_Click()
{
    if (Entry.isEmpty() || DecimalKeyed)
        return;
    Entry += DecimalSeparator;
    txtDisplay->setText(Entry);
    DecimalKeyed = true;
}

void KelvoFpSimulaForm::btnMoltiplicatoreProd_Click()
{
    if (Entry.isEmpty() || holdsX())
        return;
    Quantity = Conv::ToDouble(Entry);
    Entry.clear();
    txtDisplay->setText(txtDisplay->text() + QStringLiteral(" x "));
    DecimalKeyed = false;
    DecimalDigits = 0;
}

// --- Sales and voids -----------------------------------------------------------------

bool KelvoFpSimulaForm::takeSaleEntry()
{
    if (Entry.isEmpty() || EntryPosted || PaymentOpen)
        return false;
    if (!holdsX()) {
        Price = Conv::ToDouble(Entry);
        Entry = QStringLiteral("1 x ") + Entry;
        txtDisplay->setText(Entry);
    } else {
        Price = Conv::ToDouble(afterX());
    }
    return true;
}

void KelvoFpSimulaForm::btnRep_Click(int index)
{
    if (!takeSaleEntry())
        return;
    if (txtDescProd->text().isEmpty())
        txtDescProd->setText(btnRep[index]->text());
    txtDescProd->setText(txtDescProd->text().left(25).trimmed());
    if (!gFPControl->Busy()) {
        if (const auto price = amountOf(Price)) {
            int16_t result = gFPControl->SellReparto(Operator, float(Quantity), txtDescProd->text(), *price,
                                                     int16_t(index + 1), 1);
            ReportResult(result);
        }
    }
    Quantity = 1.0;
    Price = 0;
    EntryPosted = true;
    setFocus(); // the description was used: the keypad takes the keys again
}

void KelvoFpSimulaForm::btnStorno_Click(int index)
{
    if (!takeSaleEntry())
        return;
    txtDisplay->setText(QStringLiteral("STORNO ") + txtDisplay->text() + QStringLiteral("  REP %1").arg(index + 1));
    // Unlike a sale, a void without a description goes out without one.
    txtDescProd->setText(txtDescProd->text().left(25).trimmed());
    if (!gFPControl->Busy()) {
        if (const auto price = amountOf(Price)) {
            int16_t result = gFPControl->StornoReparto(Operator, txtDescProd->text(), float(Quantity), *price,
                                                       int16_t(index + 1), 1);
            ReportResult(result);
        }
    }
    Quantity = 1.0;
    Price = 0;
    EntryPosted = true;
    setFocus();
}

// --- Discounts and surcharges -------------------------------------------------------

void KelvoFpSimulaForm::adjust(int index, bool surcharge, Adjustment kind, const QString &missingWord)
{
    if (Entry.isEmpty() || holdsX()) {
        MsgBox::show(missingWord);
        return;
    }
    if (!gFPControl->Busy()) {
        std::optional<int16_t> result;
        KelvoFPControl &c = *gFPControl;
        if (kind == Adjustment::Amount) {
            if (const auto amount = amountOf(Entry)) {
                if (index == 0)
                    result = surcharge ? c.AumentoReparto(Operator, *amount) : c.AbbuonoReparto(Operator, *amount);
                else
                    result = surcharge ? c.AumentoTotale(Operator, *amount) : c.AbbuonoTotale(Operator, *amount);
            }
        } else {
            const float percent = Conv::ToSingle(Entry); // twenty digits always fit a Single
            if (index == 0)
                result = surcharge ? c.AumentoPercReparto(Operator, percent) : c.ScontoPercReparto(Operator, percent);
            else
                result = surcharge ? c.AumentoPercTotale(Operator, percent) : c.ScontoPercTotale(Operator, percent);
        }
        if (result) {
            ReportResult(*result);
            // Whatever the printer said: after a try on the subtotal the
            // sale keys stay shut until a payment.
            if (index == 1)
                PaymentOpen = true;
        }
    }
    ResetKeypad();
}

void KelvoFpSimulaForm::btnAbbuonoPiuVal_Click(int index)
{
    adjust(index, true, Adjustment::Amount, kNoSurcharge);
}

void KelvoFpSimulaForm::btnAbbuonoMenoVal_Click(int index)
{
    adjust(index, false, Adjustment::Amount, kNoDiscount);
}

void KelvoFpSimulaForm::btnScontoPercPiu_Click(int index)
{
    adjust(index, true, Adjustment::Percent, kNoSurcharge);
}

void KelvoFpSimulaForm::btnScontoPercMeno_Click(int index)
{
    adjust(index, false, Adjustment::Percent, kNoPercentDiscount);
}

// --- Payments ---------------------------------------------------------------------------

void KelvoFpSimulaForm::afterPayment(int16_t result, const Currency &amountSent)
{
    if (result != 0) {
        ReportResult(result);
        return;
    }
    // A payment of the whole closes the receipt without a look at the residue.
    PaymentOpen = amountSent.scaled() != 0 && gFPControl->PaymentResidue().scaled() > 0;
}

void KelvoFpSimulaForm::payReceipt(const QString &description, const Currency &amount, int32_t type, int16_t tickets)
{
    if (gFPControl->Busy())
        return;
    afterPayment(gFPControl->PayReceipt(Operator, description, amount, type, tickets, 1), amount);
}

void KelvoFpSimulaForm::btnContante_Click()
{
    if (!Entry.isEmpty() && !holdsX()) {
        if (!gFPControl->Busy()) {
            if (const auto amount = amountOf(Entry))
                payReceipt(QStringLiteral("Contante"), *amount, 0, 0);
        }
    } else {
        payReceipt(QStringLiteral("Contante"), Currency(), 0, 0);
    }
    ResetKeypad();
}

void KelvoFpSimulaForm::btnAssegno_Click()
{
    if (Entry.isEmpty() || holdsX()) {
        MsgBox::show(kNoCheque);
        return;
    }
    if (!gFPControl->Busy()) {
        if (const auto amount = amountOf(Entry))
            payReceipt(QStringLiteral("Assegno"), *amount, 1, 0);
    }
    ResetKeypad();
}

void KelvoFpSimulaForm::btnCartaCredito_Click()
{
    if (Entry.isEmpty())
        return;
    // The keyed figure only arms the key: the card pays the whole.
    if (!holdsX())
        payReceipt(QStringLiteral("Carta Credito"), Currency(), 2, 0);
    ResetKeypad();
}

void KelvoFpSimulaForm::btnTicket_Click()
{
    if (Entry.isEmpty())
        return;
    if (!gFPControl->Busy()) {
        // n x v: n tickets of v each; a bare figure is one ticket.
        const std::optional<int16_t> count = holdsX() ? countOf(beforeX()) : std::optional<int16_t>(1);
        if (count) {
            if (const auto value = amountOf(holdsX() ? afterX() : Entry))
                payReceipt(QStringLiteral("Ticket"), *value, 3, *count);
        }
    }
    ResetKeypad();
}

void KelvoFpSimulaForm::btnContanteDesc_Click()
{
    if (!holdsX())
        return;
    if (!gFPControl->Busy()) {
        std::optional<int16_t> number = countOf(beforeX());
        std::optional<Currency> amount = number ? amountOf(afterX()) : std::nullopt;
        if (number && amount) {
            int16_t result = gFPControl->PayContanteDesc(Operator, *number, *amount);
            if (result == 0)
                PaymentOpen = gFPControl->PaymentResidue().scaled() > 0;
            else
                ReportResult(result);
        }
    }
    ResetKeypad();
}

// --- Other keys ---------------------------------------------------------------------------

void KelvoFpSimulaForm::btnSubTot_Click()
{
    if (gFPControl->Busy())
        return;
    int16_t result = gFPControl->PrintSubtotal(Operator);
    ReportResult(result);
}

void KelvoFpSimulaForm::btnApriCassetto_Click()
{
    if (gFPControl->Busy())
        return;
    int16_t result = gFPControl->OpenDrawer(Operator);
    ReportResult(result);
}

void KelvoFpSimulaForm::btnAvanzaScontrino_Click()
{
    if (gFPControl->Busy())
        return;
    int16_t result = gFPControl->FeedPaper(Operator, 1);
    ReportResult(result);
}

void KelvoFpSimulaForm::btnChiusuraGiorno_Click()
{
    if (gFPControl->Busy())
        return;
    // The closure prints the whole day: give it time to answer.
    gFPControl->setTimeoutOp(30);
    int16_t result = gFPControl->FiscalClosure(Operator);
    ReportResult(result);
}

void KelvoFpSimulaForm::btnBloccaTasti_Click()
{
    if (gFPControl->Busy())
        return;
    int16_t result = gFPControl->LockKeys(Operator);
    ReportResult(result);
    SetKeysEnabled(false); // locked on the screen even if the printer refused
}

void KelvoFpSimulaForm::btnSbloccaTasti_Click()
{
    if (gFPControl->Busy())
        return;
    int16_t result = gFPControl->UnlockKeys(Operator);
    ReportResult(result);
    SetKeysEnabled(true);
}

void KelvoFpSimulaForm::SetKeysEnabled(bool enabled)
{
    if (!gFPControl->Busy()) {
        if (enabled)
            ResetKeypad();
        else
            txtDisplay->setText(kLocked);
        // The printer hears the lock twice at each press; it takes no harm.
        int16_t result = enabled ? gFPControl->UnlockKeys(Operator) : gFPControl->LockKeys(Operator);
        ReportResult(result);
    }
    for (QPushButton *b : btnTastiera)
        b->setEnabled(enabled);
    for (QPushButton *b : btnRep)
        b->setEnabled(enabled);
    for (QPushButton *b : btnStorno)
        b->setEnabled(enabled);
    for (QPushButton *b : {btnDecimali, btnMoltiplicatoreProd, btnCanc, btnSubTot, btnContante, btnAssegno,
                           btnTicket, btnCartaCredito})
        b->setEnabled(enabled);
    for (int i = 0; i < 2; ++i) {
        btnAbbuonoMenoVal[i]->setEnabled(enabled);
        btnAbbuonoPiuVal[i]->setEnabled(enabled);
        btnScontoPercMeno[i]->setEnabled(enabled);
        btnScontoPercPiu[i]->setEnabled(enabled);
    }
    for (QPushButton *b : {btnApriCassetto, btnAvanzaScontrino, btnChiusuraGiorno, btnXRep, btnDGFE, btnDataOra})
        b->setEnabled(enabled);
}

void KelvoFpSimulaForm::btnXRep_Click()
{
    XRepForm form(this);
    form.exec();
}

void KelvoFpSimulaForm::btnDGFE_Click()
{
    DGFEForm form(this);
    form.exec();
}

void KelvoFpSimulaForm::btnDataOra_Click()
{
    DataOraForm::WizardMode = false;
    DataOraForm form(this);
    form.exec();
}

void KelvoFpSimulaForm::btnMonitor_Click()
{
    FpMonitorForm form(this);
    form.exec();
}

// --- Physical keyboard ---------------------------------------------------------------------

void KelvoFpSimulaForm::keyPressEvent(QKeyEvent *event)
{
    // Each key stands for an on-screen key and clicks it: a disabled
    // (locked) key stays dead from the keyboard too.
    QPushButton *target = nullptr;
    const int k = event->key();
    const bool plain = !(event->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier));
    if (plain && k >= Qt::Key_1 && k <= Qt::Key_9)
        target = btnTastiera[k - Qt::Key_1];
    else if (plain && k == Qt::Key_0)
        target = btnTastiera[9];
    else if (plain && (k == Qt::Key_Comma || k == Qt::Key_Period))
        target = btnDecimali;
    else if (plain && (k == Qt::Key_Asterisk || k == Qt::Key_X))
        target = btnMoltiplicatoreProd;
    else if (plain && k == Qt::Key_Delete)
        target = btnCanc;
    else if (plain && k >= Qt::Key_F1 && k <= Qt::Key_F4)
        target = (event->modifiers() & Qt::ShiftModifier) ? btnStorno[k - Qt::Key_F1] : btnRep[k - Qt::Key_F1];
    else if (plain && (k == Qt::Key_Return || k == Qt::Key_Enter))
        target = btnContante; // the till's total key
    if (!target) {
        QDialog::keyPressEvent(event); // Esc still closes the form
        return;
    }
    target->click();
    event->accept();
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
    if (gFPControl->Busy())
        return;
    int16_t flag = 1;
    if (gFPControl->ReadFlag(flag) == 0)
        mApprend->setChecked(gFPControl->FlagValue() == 1);
}

void KelvoFpSimulaForm::mApprend_Click()
{
    // The action has already flipped its own mark: the printer decides.
    mApprend->setChecked(!mApprend->isChecked());
    if (gFPControl->Busy())
        return;
    int16_t flag = 1;
    int16_t result = gFPControl->WriteFlag(flag, mApprend->isChecked() ? 0 : 1);
    if (result != 0) {
        ReportResult(result);
        return;
    }
    mApprend->setChecked(!mApprend->isChecked());
    MsgBox::show(mApprend->isChecked() ? QStringLiteral("Modalità apprendimento") : QStringLiteral("Modalità fiscale"));
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

void KelvoFpSimulaForm::mFlag_Click()
{
    InstallFlagForm::StandaloneMode = true;
    InstallFlagForm form(this);
    form.exec();
}

void KelvoFpSimulaForm::mLoghi_Click()
{
    InstallLogoForm::StandaloneMode = true;
    InstallLogoForm form(this);
    form.exec();
}

void KelvoFpSimulaForm::mHeader_Click()
{
    InstallHeaderForm::StandaloneMode = true;
    InstallHeaderForm form(this);
    form.exec();
}

void KelvoFpSimulaForm::mnuResetTotPLU_Click()
{
    if (MsgBox::show(QStringLiteral("Si proprio sicuro di voler resettare il totale dei PLU"),
                     QMessageBox::Yes | QMessageBox::No) != QMessageBox::Yes)
        return;
    {
        WaitCursor wait;
        // No test of Busy and no look at the results: the reset runs through.
        for (int16_t plu = 1; plu <= 1000; ++plu) {
            int16_t number = plu;
            gFPControl->ResetTotalePlu(number);
        }
    }
    MsgBox::show(kDone, QMessageBox::Ok, QMessageBox::Information);
}

void KelvoFpSimulaForm::mnuResetTotPromoTable_Click()
{
    if (MsgBox::show(QStringLiteral("Sei proprio sicuro di voler resettare il totale della tabella delle promozioni"),
                     QMessageBox::Yes | QMessageBox::No) != QMessageBox::Yes)
        return;
    {
        WaitCursor wait;
        for (int32_t table = 1; table <= 3; ++table)
            gFPControl->ResetTotalePromo(table, 0);
    }
    MsgBox::show(kDone, QMessageBox::Ok, QMessageBox::Information);
}
