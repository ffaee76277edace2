// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>
#include <memory>

class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;
class XmlSettings;

// "Dati cliente": the customer's data for the paperwork, all optional. A
// field that is filled goes to the shared data that the declaration and the
// booklet print, and to the element InstallExtra of the printer's file.
// The step of the commissioning between the flags and the booklet.
class InstallExtraModForm : public QDialog
{
    Q_OBJECT
public:
    explicit InstallExtraModForm(QWidget *parent = nullptr);
    ~InstallExtraModForm() override;

    QLabel *lblFacolt;
    QLabel *lblNomCogn;
    QLineEdit *txtNome;
    QLabel *lblCdf;
    QLineEdit *txtCdf;
    QLabel *lblSedeLeg;
    QPlainTextEdit *txtSede;
    QLabel *lblQualif;
    QLineEdit *txtQual;
    QPushButton *btnNext;

    void btnNext_Click();

private:
    std::unique_ptr<XmlSettings> m_settings; // the printer's file, open while the form is
};
