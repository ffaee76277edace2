// SPDX-License-Identifier: GPL-3.0-or-later
#include "InstallExtraModForm.h"

#include "InstallLibrettoFiscaleForm.h"

#include "printer/PrinterIdentity.h"
#include "printer/SharedState.h"
#include "settings/XmlSettings.h"
#include "ui/DialogKeys.h"
#include "ui/Named.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

InstallExtraModForm::InstallExtraModForm(QWidget *parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("InstallExtraModForm"));
    DialogKeys::ignoreEscape(this);
    setWindowTitle(QStringLiteral("Dati cliente"));

    lblFacolt = named(new QLabel(QStringLiteral("Inserimento, facoltativo, dei dati del cliente per precompilazione del "
                                                "modulo da inviare all'AGENZIA DELLE ENTRATE e del LIBRETTO FISCALE."),
                                 this),
                      "lblFacolt");
    lblFacolt->setWordWrap(true);
    lblNomCogn = named(new QLabel(QStringLiteral("Nome e Cognome"), this), "lblNomCogn");
    txtNome = named(new QLineEdit(this), "txtNome");
    lblCdf = named(new QLabel(QStringLiteral("Codice Fiscale"), this), "lblCdf");
    txtCdf = named(new QLineEdit(this), "txtCdf");
    lblSedeLeg = named(new QLabel(QStringLiteral("Indirizzo sede legale"), this), "lblSedeLeg");
    txtSede = named(new QPlainTextEdit(this), "txtSede");
    txtSede->setTabChangesFocus(true);
    txtSede->setFixedHeight(txtSede->fontMetrics().lineSpacing() * 4);
    lblQualif = named(new QLabel(QStringLiteral("Qualifica (proprietario, socio...)"), this), "lblQualif");
    txtQual = named(new QLineEdit(this), "txtQual");
    btnNext = named(new QPushButton(QStringLiteral("AVANTI"), this), "btnNext");

    auto *fields = new QGridLayout;
    fields->addWidget(lblNomCogn, 0, 0);
    fields->addWidget(txtNome, 0, 1);
    fields->addWidget(lblCdf, 1, 0);
    fields->addWidget(txtCdf, 1, 1);
    fields->addWidget(lblSedeLeg, 2, 0, Qt::AlignTop);
    fields->addWidget(txtSede, 2, 1);
    fields->addWidget(lblQualif, 3, 0);
    fields->addWidget(txtQual, 3, 1);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(lblFacolt);
    layout->addLayout(fields);
    layout->addWidget(btnNext, 0, Qt::AlignRight);
    setMinimumWidth(520);

    connect(btnNext, &QPushButton::clicked, this, &InstallExtraModForm::btnNext_Click);

    // Load: the printer's own file.
    m_settings = std::make_unique<XmlSettings>();
    m_settings->OpenSettings(QStringLiteral("KX90Prog") + GetMatricola(), QString(), QString());
}

// Left by the close box, the form drops the file unsaved.
InstallExtraModForm::~InstallExtraModForm() = default;

void InstallExtraModForm::btnNext_Click()
{
    if (!m_settings)
        return; // already gone forward
    const QString tag = QStringLiteral("InstallExtra");
    // The registered office is kept whole, its lines joined by CR-LF as a
    // multi-line box gives them, and shared line by line.
    const QString sede = txtSede->toPlainText().split(QLatin1Char('\n')).join(QStringLiteral("\r\n"));
    if (!txtCdf->text().isEmpty()) {
        gCdf = txtCdf->text();
        m_settings->SetValueAtt(tag, QStringLiteral("Cdf"), gCdf);
    }
    if (!sede.isEmpty()) {
        gSede = sede.split(QStringLiteral("\r\n"));
        m_settings->SetValueAtt(tag, QStringLiteral("SedeLeg"), sede);
    }
    if (!txtNome->text().isEmpty()) {
        gNome = txtNome->text();
        m_settings->SetValueAtt(tag, QStringLiteral("Nome"), gNome);
    }
    if (!txtQual->text().isEmpty()) {
        gQual = txtQual->text();
        m_settings->SetValueAtt(tag, QStringLiteral("Qual"), gQual);
    }
    m_settings->CloseSettings();
    m_settings.reset();

    accept();
    InstallLibrettoFiscaleForm next(parentWidget());
    next.exec();
}
