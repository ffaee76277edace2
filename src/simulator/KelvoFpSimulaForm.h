#pragma once

#include <QDialog>
#include <QString>
#include <cstdint>
#include <optional>

#include "settings/Currency.h"

class QAction;
class QComboBox;
class QLabel;
class QLineEdit;
class QMenu;
class QMenuBar;
class QPushButton;

// "KelvoFpDemo": the on-screen cash-register keypad. Each key sends one
// operation to the printer; the form keeps only the entry being keyed, and
// the printer keeps the receipt, its totals and its rules. The menus open the
// printer's programming screens, switch the learning mode and reset the PLU
// and promotion totals.
class KelvoFpSimulaForm : public QDialog
{
    Q_OBJECT
public:
    explicit KelvoFpSimulaForm(QWidget *parent = nullptr);

    // --- Keypad state --------------------------------------------------------
    QString Entry;           // keyed and not yet used: "", p, or q " x " p
    double Quantity = 1.0;   // the multiplier
    double Price = 0;        // unit price of the sale under way
    bool DecimalKeyed = false;
    int16_t DecimalDigits = 0;
    bool EntryPosted = false; // sent as a sale: the next digit starts afresh
    int16_t Operator = 1;
    // A part was paid or the subtotal adjusted: the sale keys are shut. It
    // outlives the form, as the receipt outlives it in the printer.
    static bool PaymentOpen;
    QString DecimalSeparator;

    // --- Screen ------------------------------------------------------------------
    QMenuBar *menuBar;
    QMenu *mSetup;
    QMenu *mProg;
    QAction *mCarte;
    QAction *mCont;
    QAction *mnuContantiPredefiniti;
    QAction *mIva;
    QAction *mReparti;
    QAction *mTicket;
    QAction *mOperat;
    QAction *mFlag;
    QAction *mLoghi;
    QAction *mHeader;
    QAction *mApprend;
    QMenu *mnuOpzioni;
    QMenu *mnuReset;
    QAction *mnuResetTotPromoTable;
    QAction *mnuResetTotPLU;

    QLabel *txtDisplay;
    QLabel *lblDescProd;
    QLineEdit *txtDescProd;
    QLabel *lblOper;
    QComboBox *comboOperatore;

    QPushButton *btnTastiera[11]; // 0..8 the digits 1..9, 9 the 0, 10 the 00
    QPushButton *btnDecimali;
    QPushButton *btnMoltiplicatoreProd;
    QPushButton *btnCanc;
    QPushButton *btnRep[4];
    QPushButton *btnStorno[4];
    QPushButton *btnSubTot;
    QPushButton *btnContante;
    QPushButton *btnAssegno;
    QPushButton *btnTicket;
    QPushButton *btnCartaCredito;
    QPushButton *btnContanteDesc;
    QLabel *lblRep;
    QLabel *lblTot;
    // Index 0 the last sale, index 1 the subtotal.
    QPushButton *btnAbbuonoPiuVal[2];
    QPushButton *btnAbbuonoMenoVal[2];
    QPushButton *btnScontoPercPiu[2];
    QPushButton *btnScontoPercMeno[2];
    QPushButton *btnApriCassetto;
    QPushButton *btnAvanzaScontrino;
    QPushButton *btnBloccaTasti;
    QPushButton *btnSbloccaTasti;
    QPushButton *btnChiusuraGiorno;
    QPushButton *btnXRep;
    QPushButton *btnDGFE;
    QPushButton *btnDataOra;
    QPushButton *btnMonitor;
    QPushButton *btnEsci;

    // --- Keys ----------------------------------------------------------------------
    void ResetKeypad();
    void SetKeysEnabled(bool enabled);

    void comboOperatore_Click();
    void btnTastiera_Click(int index);
    void btnDecimali_Click();
    void btnMoltiplicatoreProd_Click();
    void btnRep_Click(int index);
    void btnStorno_Click(int index);
    void btnAbbuonoPiuVal_Click(int index);
    void btnAbbuonoMenoVal_Click(int index);
    void btnScontoPercPiu_Click(int index);
    void btnScontoPercMeno_Click(int index);
    void btnContante_Click();
    void btnAssegno_Click();
    void btnCartaCredito_Click();
    void btnTicket_Click();
    void btnContanteDesc_Click();
    void btnSubTot_Click();
    void btnApriCassetto_Click();
    void btnAvanzaScontrino_Click();
    void btnChiusuraGiorno_Click();
    void btnBloccaTasti_Click();
    void btnSbloccaTasti_Click();
    void btnXRep_Click();
    void btnDGFE_Click();
    void btnDataOra_Click();
    void btnMonitor_Click();

    // --- Menus ---------------------------------------------------------------------
    void mSetup_Click(); // the menu "Strumenti" opens
    void mApprend_Click();
    void OpenTable(int16_t tableKind);
    void mFlag_Click();
    void mLoghi_Click();
    void mHeader_Click();
    void mnuResetTotPLU_Click();
    void mnuResetTotPromoTable_Click();

protected:
    void keyPressEvent(QKeyEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    enum class Adjustment { Amount, Percent };
    void adjust(int index, bool surcharge, Adjustment kind, const QString &missingWord);
    // Sale and void share their conditions and their first step; false when
    // the key does nothing.
    bool takeSaleEntry();
    // After a payment: PaymentOpen follows what is left to pay.
    void afterPayment(int16_t result, const Currency &amountSent);
    void payReceipt(const QString &description, const Currency &amount, int32_t type, int16_t tickets);
    bool holdsX() const { return Entry.contains(QLatin1Char('x')); }
    QString beforeX() const;
    QString afterX() const;
    void buildScreen();
    void buildMenus();
};
