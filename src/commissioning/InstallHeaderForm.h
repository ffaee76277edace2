// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>
#include <QStringList>
#include <array>
#include <cstdint>
#include <memory>

class PreviewForm;
class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class XmlSettings;

// "Intestazione": the six receipt header lines, read back from the printer,
// composed with their styles and centring, marked with what they hold,
// previewed, and programmed into the printer and the per-printer file. The
// rows marked as company, address and VAT number go on to the paperwork.
class InstallHeaderForm : public QDialog
{
    Q_OBJECT
public:
    // Set by the opener before the form is created: false inside the
    // commissioning, true from the simulator's menu.
    static bool StandaloneMode;

    explicit InstallHeaderForm(QWidget *parent = nullptr);
    ~InstallHeaderForm() override;

    // The line sent for a centred header line of text s on a printer of m
    // characters per line. The blanks on each side are one fewer than true
    // centring would give, and a text one short of m asks for -1 blanks,
    // which ends the run; both are settled behaviour.
    static QString CentredLine(const QString &s, int16_t m);

    // The screen; index 0 is row 1.
    std::array<QLineEdit *, 6> txtR{};
    std::array<QComboBox *, 6> ComboContR{};  // what the row holds
    std::array<QComboBox *, 6> comboTipoR{};  // print style
    std::array<QCheckBox *, 6> checkCentraR{};
    QLabel *Label1;
    QLabel *lblStileR;
    QLabel *lblCampiObb;
    QLabel *lblR3;
    QLabel *lblMaxCar;
    QPushButton *btnSample;
    QPushButton *btnPrev;
    QPushButton *btnNext;

    // The rows as collected from the screen before a preview or programming.
    std::array<QString, 6> lineText;
    std::array<int16_t, 6> lineStyle{};   // list index of comboTipoR, -1 none
    std::array<int16_t, 6> linePos{};     // nothing sets it; saved as it is
    std::array<int16_t, 6> lineCentred{}; // 0 or 1
    int16_t maxChars = 27;

    // Texts of the rows marked as company and as address. They grow at every
    // check, also at a preview and at a check that failed, and are emptied
    // only when the header has been programmed: the shared arrays then hold
    // a marked row once per check. Kept so.
    QStringList ragioneSocialeLines;
    QStringList indirizzoLines;

    bool CheckHeaderRows();
    void CollectFields();
    void ShowPreviewLine(int index, const QString &text, int16_t style, int16_t centred);
    PreviewForm *preview(); // the preview, created at its first use

    void btnSample_Click();
    void btnPrev_Click();
    void btnNext_Click();

private:
    void readBack();
    void showPreview();

    std::unique_ptr<XmlSettings> settings;
    std::unique_ptr<PreviewForm> previewForm;
};
