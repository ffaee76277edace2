// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>
#include <QString>
#include <cstdint>
#include <optional>

#include "KeypadModel.h"

#include <utility>
#include <vector>

class QAction;
class QComboBox;
class QLabel;
class QLineEdit;
class QMenu;
class QMenuBar;
class QPushButton;

// "KelvoFpDemo": the on-screen cash-register keypad. The form lays out the
// keys and hands each press to its KeypadModel, which keeps the entry and
// talks to the printer; the form shows the display it leaves. The menus open
// the printer's programming screens, switch the learning mode and reset the
// PLU and promotion totals.
class KelvoFpSimulaForm : public QDialog
{
    Q_OBJECT
public:
    explicit KelvoFpSimulaForm(QWidget *parent = nullptr);

    // The keypad itself: its entry, its rules and its display.
    KeypadModel keypad;

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
    // A key of the keypad pressed, by mouse or keyboard: the typed
    // description goes with it, and the display shows what it left.
    void press(KeypadModel::Key key);
    void comboOperatore_Click();

    // --- Menus ---------------------------------------------------------------------
    void mSetup_Click(); // the menu "Strumenti" opens
    void mApprend_Click();
    void OpenTable(int16_t tableKind);
    // Asks first; the hourglass while the printer resets.
    void resetTotals(const QString &question, void (KeypadModel::*reset)());

protected:
    void keyPressEvent(QKeyEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QPushButton *bound(QPushButton *button, KeypadModel::Key key);
    void showKeypad();
    void buildScreen();
    void buildMenus();
    std::vector<std::pair<QPushButton *, KeypadModel::Key>> m_keys;
};
