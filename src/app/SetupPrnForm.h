// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>

class QComboBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;

// "Impostazione parametri comunicazione": how the printer is connected, the
// time-outs and the highest department number to read. The fields are the
// state; they are loaded from Settings.xml and saved back by btnSave.
class SetupPrnForm : public QDialog
{
    Q_OBJECT
public:
    explicit SetupPrnForm(QWidget *parent = nullptr);

    // Searches the line speed and saves what it found, with the form shown
    // for the time of it.
    void StartAutoConfig();

    // Selects the item of comboSpeed equal to speed. The walk has no upper
    // bound: past the list every item reads as empty, so a speed that is not
    // in the list ends in an overflow of the index.
    void SelectSpeed(const QString &speed);
    // Tries one serial setting; true when the printer answered.
    bool TryOneSpeed(const QString &speed, const QString &parity, const QString &dataBits, const QString &stopBits);
    // Enables the fields of the TCP transport (tcp) or of the serial one.
    void EnableFields(bool tcp);

    bool AutoRunning = false; // while the speed search runs
    bool AutoCancel = false;  // asked for by btnAnnulla, seen at the next pass

    QGroupBox *frmParCom;
    QRadioButton *radioCOM;
    QRadioButton *radioTCP;
    QLabel *lblIpAdr;
    QLineEdit *txtIpAddress;
    QLabel *lblTcpPort;
    QLineEdit *txtTcpPort;
    QLabel *lblComPort;
    QLineEdit *txtCOM;
    QLabel *lblSpeed;
    QComboBox *comboSpeed;
    QLabel *lblPar;
    QLineEdit *txtParita;
    QLabel *lblBitDati;
    QLineEdit *txtBitDati;
    QLabel *lblBitStop;
    QLineEdit *txtBitStop;
    QPushButton *btnTest;
    QPushButton *btnAutoSet;
    QPushButton *btnAnnulla;
    QLabel *lblAutoSettings;

    QGroupBox *Frame1;
    QLabel *lblAck;
    QLineEdit *txtAck;
    QLabel *lblOp;
    QLineEdit *txtOp;

    QGroupBox *Frame2;
    QLabel *Label1;
    QLineEdit *TxtMaxNReparti;

    QLabel *lblControlloPar;
    QPushButton *btnSave;
    QPushButton *btnEsci;

    void radioCOM_Click();
    void radioTCP_Click();
    void btnTest_Click();
    void btnAutoSet_Click();
    void btnAnnulla_Click();
    void btnSave_Click();
    void btnEsci_Click();

public Q_SLOTS:
    void reject() override; // refused while the speed search runs

private:
    void buildForm();
    void loadSettings();
    QString serialSettings() const;
    void applyToControl();

    bool m_commandUnderWay = false; // a button's command to the printer waits
};
