// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>
#include <array>
#include <cstdint>
#include <memory>

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class XmlSettings;

// "Flag": the printer's on/off flags (section 14) and numeric parameters
// (section 15), shown as the printer holds them, changed when "Impostazioni
// flag" is ticked, programmed, and recorded in the per-printer file.
class InstallFlagForm : public QDialog
{
    Q_OBJECT
public:
    // false inside the commissioning, true from the simulator's menu.
    static bool StandaloneMode;

    explicit InstallFlagForm(QWidget *parent = nullptr);
    ~InstallFlagForm() override;

    // One flag: its box, the printer's number, the default of "Ripristina".
    struct FlagDef
    {
        int index;
        int16_t number;
        const char *caption;
        int defaultValue;
    };
    // In the order they are read and written.
    static const std::array<FlagDef, 13> Flags;
    static constexpr std::array<int16_t, 5> ParamNumbers{7, 8, 11, 12, 13};

    std::array<QCheckBox *, 14> Check1{}; // by index; index 12 does not exist
    QLineEdit *txtIntensPrn;    // parameter 7
    QLineEdit *txtContrasto;    // parameter 8
    QLineEdit *txtNCassa;       // parameter 11
    QComboBox *comboLarg;       // parameter 12, the list index
    QLineEdit *txtSpegniVisore; // parameter 13
    QLabel *lblIntensPrn;
    QLabel *lblContrasto;
    QLabel *lblNCassa;
    QLabel *lblLarg;
    QLabel *lblSpegniVisore;
    QCheckBox *chkImposta;
    QPushButton *btnDefault;
    QPushButton *btnNext;

    bool programOk = true;      // false from the first refused write on
    bool firstReadDone = false; // a reading pass has run in this instance

    void chkImposta_Click(); // the reading pass
    void ReadFlagField(const FlagDef &flag);
    void ReadFlagField(int16_t paramNumber);
    void ResetFlagDefaults();
    void btnDefault_Click();
    void btnNext_Click();
    void ProgramFlags(const FlagDef &flag);
    void ProgramFlags(int16_t paramNumber);
    // The range check on leaving txtIntensPrn, txtContrasto, txtSpegniVisore:
    // false after "Valore fuori scala!", with the focus back in the field.
    bool ValidateField(QLineEdit *field);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QWidget *paramField(int16_t number) const;

    std::unique_ptr<XmlSettings> settings;
};
