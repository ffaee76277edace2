// SPDX-License-Identifier: GPL-3.0-or-later
#include "SetupPrnForm.h"

#include "FiscordaForm.h"
#include "printer/Connection.h"
#include "printer/KelvoFPControl.h"
#include "printer/PrinterIdentity.h"
#include "printer/SharedState.h"
#include "settings/Conversions.h"
#include "settings/RunTimeError.h"
#include "settings/XmlSettings.h"
#include "ui/MsgBox.h"
#include "ui/Named.h"
#include "ui/ReportResult.h"

#include <QApplication>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>
#include <limits>

namespace {
// One spelling for the one settings file, the same as at start-up, so that a
// file the setup creates is Settings.xml.
const QString kSettingsName = QStringLiteral("Settings");
const QString kParametersNote = QStringLiteral(
    "I parametri di comunicazione devono coincidere con quelli impostati sulla Stampante, collegare una tastiera "
    "alla stampante fiscale e  verificare i parametri mediante il menù: 7171 + Chiave + funzione 17");
const QString kFlagNote = QStringLiteral("Impostare la flag S14-27 (7171 + C + 14) al valore NO ACK TX/RX P.C.");
}

SetupPrnForm::SetupPrnForm(QWidget *parent) : QDialog(parent)
{
    buildForm();
    loadSettings();
}

void SetupPrnForm::buildForm()
{
    setObjectName(QStringLiteral("SetupPrnForm"));
    setWindowTitle(QStringLiteral("Impostazione parametri comunicazione"));

    frmParCom = named(new QGroupBox(QStringLiteral("Parametri di comunicazione"), this), "frmParCom");
    radioCOM = named(new QRadioButton(QStringLiteral("COM"), frmParCom), "radioCOM");
    radioTCP = named(new QRadioButton(QStringLiteral("TCP"), frmParCom), "radioTCP");
    lblIpAdr = named(new QLabel(QStringLiteral("IP Addrss:"), frmParCom), "lblIpAdr");
    txtIpAddress = named(new QLineEdit(QStringLiteral("192.168.0.100"), frmParCom), "txtIpAddress");
    lblTcpPort = named(new QLabel(QStringLiteral("TCP Port:"), frmParCom), "lblTcpPort");
    txtTcpPort = named(new QLineEdit(QStringLiteral("4660"), frmParCom), "txtTcpPort");
    lblComPort = named(new QLabel(QStringLiteral("N° COM:"), frmParCom), "lblComPort");
    txtCOM = named(new QLineEdit(QStringLiteral("1"), frmParCom), "txtCOM");
    lblSpeed = named(new QLabel(QStringLiteral("Velocità:"), frmParCom), "lblSpeed");
    comboSpeed = named(new QComboBox(frmParCom), "comboSpeed");
    comboSpeed->addItems({QStringLiteral("9600"), QStringLiteral("19200"), QStringLiteral("38400"), QStringLiteral("57600")});
    lblPar = named(new QLabel(QStringLiteral("Parità:"), frmParCom), "lblPar");
    txtParita = named(new QLineEdit(QStringLiteral("n"), frmParCom), "txtParita");
    lblBitDati = named(new QLabel(QStringLiteral("Bit di dati:"), frmParCom), "lblBitDati");
    txtBitDati = named(new QLineEdit(QStringLiteral("8"), frmParCom), "txtBitDati");
    lblBitStop = named(new QLabel(QStringLiteral("Bit di stop:"), frmParCom), "lblBitStop");
    txtBitStop = named(new QLineEdit(QStringLiteral("1"), frmParCom), "txtBitStop");
    btnTest = named(new QPushButton(QStringLiteral("Prova Parametri"), frmParCom), "btnTest");
    btnAutoSet = named(new QPushButton(QStringLiteral("Auto Imposta Parametri"), frmParCom), "btnAutoSet");
    btnAnnulla = named(new QPushButton(QStringLiteral("ANNULLA"), frmParCom), "btnAnnulla");
    btnAnnulla->hide();
    lblAutoSettings = named(new QLabel(frmParCom), "lblAutoSettings");
    lblAutoSettings->setWordWrap(true);
    lblAutoSettings->setAutoFillBackground(true);
    lblAutoSettings->hide();

    auto *par = new QGridLayout(frmParCom);
    par->addWidget(radioCOM, 0, 0);
    par->addWidget(radioTCP, 0, 2);
    par->addWidget(lblComPort, 1, 0);
    par->addWidget(txtCOM, 1, 1);
    par->addWidget(lblIpAdr, 1, 2);
    par->addWidget(txtIpAddress, 1, 3);
    par->addWidget(lblSpeed, 2, 0);
    par->addWidget(comboSpeed, 2, 1);
    par->addWidget(lblTcpPort, 2, 2);
    par->addWidget(txtTcpPort, 2, 3);
    par->addWidget(lblPar, 3, 0);
    par->addWidget(txtParita, 3, 1);
    par->addWidget(lblBitDati, 4, 0);
    par->addWidget(txtBitDati, 4, 1);
    par->addWidget(lblBitStop, 5, 0);
    par->addWidget(txtBitStop, 5, 1);
    // The progress text takes the place of the data and stop bits.
    par->addWidget(lblAutoSettings, 4, 1, 2, 3);
    auto *tests = new QHBoxLayout;
    tests->addWidget(btnTest);
    tests->addWidget(btnAutoSet);
    tests->addWidget(btnAnnulla);
    par->addLayout(tests, 6, 0, 1, 4);

    Frame1 = named(new QGroupBox(QStringLiteral("Timeout di controllo"), this), "Frame1");
    lblAck = named(new QLabel(QStringLiteral("Timeout ACK:"), Frame1), "lblAck");
    txtAck = named(new QLineEdit(QStringLiteral("-1"), Frame1), "txtAck");
    lblOp = named(new QLabel(QStringLiteral("Timeout OP:"), Frame1), "lblOp");
    txtOp = named(new QLineEdit(QStringLiteral("-1"), Frame1), "txtOp");
    auto *timeouts = new QGridLayout(Frame1);
    timeouts->addWidget(lblAck, 0, 0);
    timeouts->addWidget(txtAck, 0, 1);
    timeouts->addWidget(lblOp, 1, 0);
    timeouts->addWidget(txtOp, 1, 1);

    Frame2 = named(new QGroupBox(QStringLiteral("Parametri lettura dati"), this), "Frame2");
    Label1 = named(new QLabel(QStringLiteral("Num max reparti"), Frame2), "Label1");
    TxtMaxNReparti = named(new QLineEdit(QStringLiteral("40"), Frame2), "TxtMaxNReparti");
    auto *reading = new QGridLayout(Frame2);
    reading->addWidget(Label1, 0, 0);
    reading->addWidget(TxtMaxNReparti, 0, 1);
    reading->setRowStretch(1, 1);

    lblControlloPar = named(new QLabel(this), "lblControlloPar");
    lblControlloPar->setWordWrap(true);
    btnSave = named(new QPushButton(QStringLiteral("APPLICA"), this), "btnSave");
    btnEsci = named(new QPushButton(QStringLiteral("ESCI"), this), "btnEsci");

    auto *lower = new QHBoxLayout;
    lower->addWidget(Frame1);
    lower->addWidget(Frame2);
    auto *buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(btnSave);
    buttons->addWidget(btnEsci);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(frmParCom);
    layout->addLayout(lower);
    layout->addWidget(lblControlloPar);
    layout->addLayout(buttons);
    setMinimumWidth(560);

    connect(radioCOM, &QRadioButton::clicked, this, &SetupPrnForm::radioCOM_Click);
    connect(radioTCP, &QRadioButton::clicked, this, &SetupPrnForm::radioTCP_Click);
    connect(btnTest, &QPushButton::clicked, this, &SetupPrnForm::btnTest_Click);
    connect(btnAutoSet, &QPushButton::clicked, this, &SetupPrnForm::btnAutoSet_Click);
    connect(btnAnnulla, &QPushButton::clicked, this, &SetupPrnForm::btnAnnulla_Click);
    connect(btnSave, &QPushButton::clicked, this, &SetupPrnForm::btnSave_Click);
    connect(btnEsci, &QPushButton::clicked, this, &SetupPrnForm::btnEsci_Click);
}

void SetupPrnForm::loadSettings()
{
    AutoRunning = false;
    AutoCancel = false;

    XmlSettings settings;
    settings.OpenSettings(kSettingsName, QString(), QString());
    QString value;
    // Selecting a transport runs its click handler, so a form that opens on
    // TCP shows the flag message at once.
    if (settings.GetValue(QStringLiteral("mode"), value) && value == QLatin1String("TCP")) {
        radioTCP->setChecked(true);
        radioTCP_Click();
    } else {
        radioCOM->setChecked(true);
        radioCOM_Click();
    }
    txtCOM->setText(settings.GetValue(QStringLiteral("comnumber"), value) ? value : QStringLiteral("1"));
    if (settings.GetValue(QStringLiteral("comsettings"), value)) {
        const QStringList fields = value.split(QLatin1Char(','));
        // Only a file edited by hand lacks a field; that ends the run.
        if (fields.size() < 4)
            throw RunTimeError::invalidArgument();
        SelectSpeed(fields.at(0));
        txtParita->setText(fields.at(1));
        txtBitDati->setText(fields.at(2));
        txtBitStop->setText(fields.at(3));
    } else {
        SelectSpeed(QStringLiteral("9600"));
        txtParita->setText(QStringLiteral("n"));
        txtBitDati->setText(QStringLiteral("8"));
        txtBitStop->setText(QStringLiteral("1"));
    }
    txtTcpPort->setText(settings.GetValue(QStringLiteral("tcpport"), value) ? value : QStringLiteral("4660"));
    txtIpAddress->setText(settings.GetValue(QStringLiteral("ipaddress"), value) ? value : QStringLiteral("192.168.0.100"));
    txtAck->setText(settings.GetValue(QStringLiteral("timeoutack"), value) ? value : QStringLiteral("-1"));
    txtOp->setText(settings.GetValue(QStringLiteral("timeoutop"), value) ? value : QStringLiteral("-1"));
    if (settings.GetValue(QStringLiteral("maxnreparti"), value) && Conv::IsNumeric(value))
        TxtMaxNReparti->setText(value);
    // The settings object is dropped without saving.
}

void SetupPrnForm::SelectSpeed(const QString &speed)
{
    for (int16_t index = 0;; ++index) {
        const QString item = index < comboSpeed->count() ? comboSpeed->itemText(index) : QString();
        if (item == speed) {
            // An empty speed "matches" past the list, where there is nothing to select.
            if (index >= comboSpeed->count())
                throw RunTimeError::invalidArgument();
            comboSpeed->setCurrentIndex(index);
            return;
        }
        if (index == std::numeric_limits<int16_t>::max())
            throw RunTimeError::overflow();
    }
}

void SetupPrnForm::EnableFields(bool tcp)
{
    txtIpAddress->setEnabled(tcp);
    txtTcpPort->setEnabled(tcp);
    txtCOM->setEnabled(!tcp);
    comboSpeed->setEnabled(!tcp);
    txtParita->setEnabled(!tcp);
    txtBitDati->setEnabled(!tcp);
    txtBitStop->setEnabled(!tcp);
    btnAnnulla->setEnabled(!tcp);
    btnAutoSet->setEnabled(!tcp);
}

void SetupPrnForm::radioCOM_Click()
{
    lblControlloPar->setText(kParametersNote);
    EnableFields(false);
}

void SetupPrnForm::radioTCP_Click()
{
    // Unlike the serial note, the sentence ends in a point here.
    lblControlloPar->setText(kParametersNote + QStringLiteral(".\r\n") + kFlagNote);
    MsgBox::show(kFlagNote, QMessageBox::Ok, QMessageBox::Information);
    EnableFields(true);
}

QString SetupPrnForm::serialSettings() const
{
    return comboSpeed->currentText() + QLatin1Char(',') + txtParita->text() + QLatin1Char(',') + txtBitDati->text()
           + QLatin1Char(',') + txtBitStop->text();
}

// All connection properties, whatever the transport. Text that is no
// Integer in the numeric fields ends the run here.
void SetupPrnForm::applyToControl()
{
    gFPControl->setUseTcp(radioCOM->isChecked() ? 0 : 1);
    gFPControl->setComPort(Conv::ToInteger(txtCOM->text()));
    gFPControl->setComSettings(serialSettings());
    gFPControl->setIpAddress(txtIpAddress->text());
    gFPControl->setTcpPort(Conv::ToInteger(txtTcpPort->text()));
    gFPControl->setTimeoutAck(Conv::ToInteger(txtAck->text()));
    gFPControl->setTimeoutOp(Conv::ToInteger(txtOp->text()));
}

namespace {
// Marks a command to the printer under way on the form. The control waits
// for the printer with the window alive, so a second press of a button can
// come in meanwhile; it does nothing, instead of closing the port under the
// command that waits.
class CommandScope
{
public:
    explicit CommandScope(bool &flag) : m_flag(flag) { m_flag = true; }
    ~CommandScope() { m_flag = false; }
    CommandScope(const CommandScope &) = delete;
    CommandScope &operator=(const CommandScope &) = delete;

private:
    bool &m_flag;
};
}

void SetupPrnForm::btnTest_Click()
{
    if (m_commandUnderWay)
        return;
    CommandScope command(m_commandUnderWay);
    btnSave->setEnabled(false);
    btnEsci->setEnabled(false);
    btnTest->setEnabled(false);
    btnAutoSet->setEnabled(false);
    if (IsPortOpen())
        ClosePort();
    applyToControl();
    if (!IsPortOpen())
        OpenPort();
    // A busy control is not asked, and the test passes all the same.
    int16_t result = 0;
    if (!gFPControl->Busy())
        result = gFPControl->ReadDateTime();
    if (result == 0)
        MsgBox::show(QStringLiteral("Test OK!"));
    else
        ReportResult(result);
    btnSave->setEnabled(true);
    btnEsci->setEnabled(true);
    btnTest->setEnabled(true);
    btnAutoSet->setEnabled(radioCOM->isChecked());
}

void SetupPrnForm::btnAutoSet_Click()
{
    // The window stays alive during the search; a second press is not a
    // second search.
    if (AutoRunning || m_commandUnderWay)
        return;
    CommandScope command(m_commandUnderWay);
    setCursor(Qt::WaitCursor);
    btnEsci->setEnabled(false);
    btnSave->setEnabled(false);
    txtBitDati->hide();
    txtBitStop->hide();
    btnTest->setEnabled(false);
    lblAutoSettings->show();
    lblAutoSettings->raise();
    btnAnnulla->show();

    AutoRunning = true;
    comboSpeed->setCurrentText(QStringLiteral("9600"));
    if (IsPortOpen())
        ClosePort();
    // The search runs on the transport the control has: the button is only
    // enabled for serial.
    gFPControl->setComPort(Conv::ToInteger(txtCOM->text()));
    gFPControl->setTimeoutAck(2);
    gFPControl->setTimeoutOp(2);

    bool found = false;
    for (int index = 0; index < comboSpeed->count(); ++index) {
        // Between attempts the window gets its turn: this is where a press
        // of ANNULLA comes in.
        QApplication::processEvents();
        if (AutoCancel)
            break;
        if (TryOneSpeed(comboSpeed->itemText(index), txtParita->text(), txtBitDati->text(), txtBitStop->text())) {
            comboSpeed->setCurrentIndex(index);
            found = true;
            break;
        }
    }

    // Back to the control's defaults, not to the typed time-outs: these come
    // back with the next save or start.
    gFPControl->setTimeoutAck(-1);
    gFPControl->setTimeoutOp(-1);
    if (AutoCancel) {
        MsgBox::show(QStringLiteral("Autoimpostazione annullata!"));
        AutoCancel = false;
    }
    if (!found)
        MsgBox::show(QStringLiteral("Nessuna velocità impostata!"));

    lblAutoSettings->lower();
    lblAutoSettings->hide();
    txtBitDati->show();
    txtBitStop->show();
    btnEsci->setEnabled(true);
    btnSave->setEnabled(true);
    btnTest->setEnabled(true);
    btnAnnulla->hide();
    unsetCursor();
    AutoRunning = false;
}

bool SetupPrnForm::TryOneSpeed(const QString &speed, const QString &parity, const QString &dataBits,
                               const QString &stopBits)
{
    gFPControl->setComSettings(speed + QLatin1Char(',') + parity + QLatin1Char(',') + dataBits + QLatin1Char(',')
                               + stopBits);
    lblAutoSettings->setText(QStringLiteral("Autoconfigurazione in corso... sto provando la velocità ") + speed
                             + QStringLiteral(" ..."));
    lblAutoSettings->repaint();
    if (IsPortOpen())
        ClosePort();
    OpenPort();
    if (gFPControl->ReadPrinterInfo(1) != 0)
        return false;
    MsgBox::show(QStringLiteral("Velocità impostata a ") + speed);
    return true;
}

void SetupPrnForm::btnAnnulla_Click()
{
    AutoCancel = true;
}

void SetupPrnForm::btnSave_Click()
{
    if (m_commandUnderWay)
        return;
    CommandScope command(m_commandUnderWay);
    {
        XmlSettings settings;
        settings.OpenSettings(kSettingsName, QString(), QString());
        settings.SetValue(QStringLiteral("mode"), radioCOM->isChecked() ? QStringLiteral("COM") : QStringLiteral("TCP"));
        settings.SetValue(QStringLiteral("comnumber"), txtCOM->text());
        settings.SetValue(QStringLiteral("comsettings"), serialSettings());
        settings.SetValue(QStringLiteral("tcpport"), txtTcpPort->text());
        settings.SetValue(QStringLiteral("ipaddress"), txtIpAddress->text());
        settings.SetValue(QStringLiteral("timeoutack"), txtAck->text());
        settings.SetValue(QStringLiteral("timeoutop"), txtOp->text());
        // A maximum that is no number is dropped without a word.
        if (Conv::IsNumeric(TxtMaxNReparti->text())) {
            settings.SetValue(QStringLiteral("maxnreparti"), TxtMaxNReparti->text());
            gMaxNReparti = Conv::ToInteger(TxtMaxNReparti->text());
        }
        settings.CloseSettings(QString());
    }

    gFPControl->setEuroSettings(2);
    if (IsPortOpen())
        ClosePort();
    applyToControl();
    MsgBox::show(QStringLiteral("Parametri impostati!"));
    if (!IsPortOpen())
        OpenPort();
    const QString model = PrinterModelText(GetPrinterModel());
    if (FiscordaForm *mainForm = FiscordaForm::instance())
        mainForm->LabelModelloCassa->setText(model);
    // The form stays open.
}

void SetupPrnForm::btnEsci_Click()
{
    close();
}

void SetupPrnForm::StartAutoConfig()
{
    if (!isVisible())
        show();
    btnAutoSet_Click();
    btnSave_Click();
    hide();
}

// The close box and Esc both come here.
void SetupPrnForm::reject()
{
    if (AutoRunning)
        return;
    QDialog::reject();
}
