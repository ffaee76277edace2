// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>
#include <cstdint>

class QLabel;
class QPushButton;
class QTabWidget;

// "Cambio Giornale di fondo": the six steps of changing the journal memory
// card. The technician moves with the buttons or by clicking the tabs, so
// every rule sits in the tab-change handler: one step at a time, the printer
// off before the card is touched, the new card formatted before the end.
class GiornaleStepForm : public QDialog
{
    Q_OBJECT
public:
    explicit GiornaleStepForm(QWidget *parent = nullptr);

    bool PrinterOffChecked = false; // found off when leaving the first step
    bool DgfeFormatted = false;
    bool TabClickIgnored = false;   // the next tab change is swallowed
    bool StepRefused = false;       // the handler is moving the strip back itself

    QPushButton *btnBack;
    QPushButton *btnFwd;
    QTabWidget *SSTab1;

    QLabel *lblPrnOff;

    QLabel *lblPag2;
    QLabel *lblPag2_rem;
    QLabel *lblPag2_rot;
    QLabel *lblPag2_pull;
    QLabel *PictureEstrazioneDGFE;

    QLabel *lblPag3;
    QLabel *lblPag3_rem;
    QLabel *lblPag3_prep;
    QLabel *lblPag3_NDGFE;
    QLabel *lblDGFE;
    QLabel *PictureCambioDGFE;

    QLabel *lblPag4;
    QLabel *lblPag4_ins;
    QLabel *PictureInserimentoDGFE;

    QLabel *lblPag5;
    QLabel *lblPag5_NoSpegni;
    QLabel *lblPag5_OnPrn;
    QLabel *lblPag5_Wait;
    QLabel *Label1;

    QLabel *lblPag6;
    QLabel *lblPag6_Format;
    QPushButton *btnFormat;
    QLabel *Label2;
    QLabel *lblNewDgfe;

    void btnBack_Click();
    void btnFwd_Click();
    void btnFormat_Click();
    // The strip's change event: previous is the tab that was left.
    void SSTab1_Click(int previous);

private:
    void setStepTexts(int32_t model);
    void loadPictures(int32_t model);
    void onCurrentChanged(int tab);

    int m_shownTab = 0;
};
