// SPDX-License-Identifier: GPL-3.0-or-later
#include "SettingsDialog.h"

#include "ui/FileDialog.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>

SettingsDialog::SettingsDialog(const WindowSettings &current, QWidget *parent) : QDialog(parent), m_base(current)
{
    setObjectName(QStringLiteral("SettingsDialog"));
    setWindowTitle(QStringLiteral("Impostazioni della stampante di prova"));
    auto *form = new QFormLayout(this);

    m_model = new QComboBox;
    m_model->setObjectName(QStringLiteral("cmbModello"));
    for (auto m : {EmulatorConfig::Model::KX90, EmulatorConfig::Model::KX90II, EmulatorConfig::Model::KX81})
        m_model->addItem(QStringLiteral("KELVO ") + EmulatorConfig::modelName(m), int(m));
    m_model->setCurrentIndex(int(current.model));
    form->addRow(QStringLiteral("Modello:"), m_model);

    m_serial = new QLineEdit(current.serial);
    m_serial->setObjectName(QStringLiteral("txtMatricola"));
    m_serial->setMaxLength(10);
    m_serial->setPlaceholderText(QStringLiteral("quella del modello"));
    m_serial->setToolTip(QStringLiteral("Dieci caratteri: le due lettere del modello (QN, QM, QO), due lettere o cifre, sei cifre."));
    form->addRow(QStringLiteral("Matricola:"), m_serial);

    auto *tcpRow = new QHBoxLayout;
    m_tcp = new QCheckBox(QStringLiteral("TCP su 127.0.0.1, porta"));
    m_tcp->setObjectName(QStringLiteral("chkTcp"));
    m_tcp->setChecked(current.useTcp);
    m_port = new QSpinBox;
    m_port->setObjectName(QStringLiteral("spnPorta"));
    m_port->setRange(1, 65535);
    m_port->setValue(current.tcpPort);
    tcpRow->addWidget(m_tcp);
    tcpRow->addWidget(m_port, 1);
    form->addRow(QStringLiteral("Rete:"), tcpRow);

    auto *ptyRow = new QHBoxLayout;
    m_pty = new QCheckBox(QStringLiteral("Porta seriale virtuale COM"));
    m_pty->setObjectName(QStringLiteral("chkSeriale"));
    m_pty->setChecked(current.usePty);
    m_com = new QSpinBox;
    m_com->setObjectName(QStringLiteral("spnCom"));
    m_com->setRange(1, 99);
    m_com->setValue(current.comNumber);
    m_speed = new QComboBox;
    m_speed->setObjectName(QStringLiteral("cmbVelocita"));
    for (const char *speed : {"1200", "2400", "4800", "9600", "19200", "38400", "57600", "115200"})
        m_speed->addItem(QLatin1String(speed));
    const QString speed = current.lineSettings.section(QLatin1Char(','), 0, 0);
    m_speed->setCurrentIndex(qMax(0, m_speed->findText(speed)));
    ptyRow->addWidget(m_pty);
    ptyRow->addWidget(m_com);
    ptyRow->addWidget(m_speed, 1);
    form->addRow(QStringLiteral("Seriale:"), ptyRow);

    m_keep = new QCheckBox(QStringLiteral("Conserva la memoria della stampante nel file di stato"));
    m_keep->setObjectName(QStringLiteral("chkConserva"));
    m_keep->setChecked(current.keepMemory);
    m_keep->setToolTip(QStringLiteral("Senza: la stampante riparte nuova a ogni avvio e il file di stato non è toccato."));
    form->addRow(QString(), m_keep);
    auto *stateRow = new QHBoxLayout;
    m_state = new QLineEdit(current.statePath);
    m_state->setObjectName(QStringLiteral("txtFileStato"));
    m_state->setPlaceholderText(current.effectiveStatePath());
    auto *browse = new QPushButton(QStringLiteral("..."));
    browse->setObjectName(QStringLiteral("btnSfoglia"));
    connect(browse, &QPushButton::clicked, this, [this] {
        if (const auto path = FileDialog::save(this, QStringLiteral("File di stato della stampante"),
                                               m_state->text().isEmpty() ? m_state->placeholderText() : m_state->text(),
                                               QStringLiteral("Stato (*.json)")))
            m_state->setText(*path);
    });
    stateRow->addWidget(m_state, 1);
    stateRow->addWidget(browse);
    form->addRow(QStringLiteral("File di stato:"), stateRow);

    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    buttons->button(QDialogButtonBox::Ok)->setText(QStringLiteral("Riaccendi con queste impostazioni"));
    buttons->button(QDialogButtonBox::Cancel)->setText(QStringLiteral("Annulla"));
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    form->addRow(buttons);
}

WindowSettings SettingsDialog::settings() const
{
    WindowSettings s = m_base;
    s.model = EmulatorConfig::Model(m_model->currentData().toInt());
    s.serial = m_serial->text().trimmed().toUpper();
    s.useTcp = m_tcp->isChecked();
    s.tcpPort = quint16(m_port->value());
    s.usePty = m_pty->isChecked();
    s.comNumber = m_com->value();
    QStringList line = s.lineSettings.split(QLatin1Char(','));
    if (line.size() == 4)
        line[0] = m_speed->currentText();
    else
        line = {m_speed->currentText(), QStringLiteral("n"), QStringLiteral("8"), QStringLiteral("1")};
    s.lineSettings = line.join(QLatin1Char(','));
    s.keepMemory = m_keep->isChecked();
    s.statePath = m_state->text().trimmed();
    return s;
}
