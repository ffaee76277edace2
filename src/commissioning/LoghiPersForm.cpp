// SPDX-License-Identifier: GPL-3.0-or-later
#include "LoghiPersForm.h"

#include "LoghiForm.h"
#include "LogoTransfer.h"
#include "printer/KelvoFPControl.h"
#include "printer/PrinterIdentity.h"
#include "settings/Conversions.h"
#include "settings/ProgramFolder.h"
#include "ui/FileDialog.h"
#include "ui/MsgBox.h"
#include "ui/Named.h"

#include <QApplication>
#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace {
enum Position { Testa = 0, Coda = 1, Entrambe = 2 };

// The choices of the file dialog, in this order: all files, the .bin files
// of the KX90, the .tlg files.
const QStringList kFilters = {QStringLiteral("Tutti i file (*.*)"), QStringLiteral("File di immagine KX90 (*.bin)"),
                              QStringLiteral("File di immagine KX90II, KX81 (*.tlg)")};

// The choice in force when the dialog opens: the one that suits the printer.
// Model 1 gets the .tlg files here although the standard logos send it .bin
// files: the two screens differ on purpose.
QString PreselectedFilter(int32_t model)
{
    return kFilters.at(model == 0 ? 1 : (model == 1 || model == 2) ? 2 : 0);
}
}

LoghiPersForm::LoghiPersForm(QWidget *parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("LoghiPersForm"));
    setWindowTitle(QStringLiteral("Impostazione loghi personali"));

    Label3 = named(new QLabel(QStringLiteral("File grafico da caricare"), this), "Label3");
    txtFileName = named(new QLineEdit(this), "txtFileName");
    txtFileName->setMinimumWidth(320);
    btnImg = named(new QPushButton(QStringLiteral("..."), this), "btnImg");
    Label1 = named(new QLabel(QStringLiteral("Indice immagine"), this), "Label1");
    txtIndexImg = named(new QLineEdit(QStringLiteral("0"), this), "txtIndexImg");
    Label2 = named(new QLabel(QStringLiteral("Posizione immagine"), this), "Label2");
    comboPos = named(new QComboBox(this), "comboPos");
    comboPos->addItems({QStringLiteral("Testa"), QStringLiteral("Coda"), QStringLiteral("Entrambe")});
    btnSave = named(new QPushButton(QStringLiteral("APPLICA"), this), "btnSave");
    btnOK = named(new QPushButton(QStringLiteral("ESCI"), this), "btnOK");

    auto *grid = new QGridLayout;
    grid->addWidget(Label3, 0, 0);
    grid->addWidget(txtFileName, 0, 1);
    grid->addWidget(btnImg, 0, 2);
    grid->addWidget(Label1, 1, 0);
    grid->addWidget(txtIndexImg, 1, 1);
    grid->addWidget(Label2, 2, 0);
    grid->addWidget(comboPos, 2, 1);
    auto *buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(btnSave);
    buttons->addWidget(btnOK);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(grid);
    layout->addLayout(buttons);

    connect(btnImg, &QPushButton::clicked, this, &LoghiPersForm::btnImg_Click);
    connect(btnSave, &QPushButton::clicked, this, &LoghiPersForm::btnSave_Click);
    connect(btnOK, &QPushButton::clicked, this, &QWidget::hide);

    // Load
    comboPos->setCurrentIndex(Testa);
}

void LoghiPersForm::btnImg_Click()
{
    const auto chosen = FileDialog::open(this, Label3->text(), ProgramFolder(), kFilters.join(QStringLiteral(";;")),
                                         PreselectedFilter(GetPrinterModel()));
    if (chosen)
        txtFileName->setText(*chosen);
}

void LoghiPersForm::btnSave_Click()
{
    if (m_saving) // a press while the transfer gives the screen its turns
        return;
    LogoTransfer::SavingScope saving(m_saving);
    const int position = comboPos->currentIndex();
    if (position == Testa || position == Entrambe)
        SaveOne(9, QStringLiteral("Programmazione intestazione scontrino ok!"));
    if (position == Coda || position == Entrambe)
        SaveOne(10, QStringLiteral("Programmazione fine scontrino ok!"));
}

void LoghiPersForm::SaveOne(int16_t parameter, const QString &done)
{
    if (txtFileName->text().isEmpty())
        return;
    QString path = txtFileName->text();
    int16_t result = 0;
    LoghiForm::SaveLogo(path, result);
    if (result == 0) {
        MsgBox::show(done);
        // Written only when the logo went: a failed one leaves the number.
        int16_t number = parameter;
        int16_t value = Conv::ToInteger(txtIndexImg->text());
        LoghiForm::ProgFlag(number, value);
    } else {
        MsgBox::show(QStringLiteral("Programmazione logo non riuscita!"));
        gFPControl->CloseRawChannel(1);
    }
}
