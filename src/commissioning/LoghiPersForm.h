// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>
#include <cstdint>

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;

// "Impostazione loghi personali": a logo file of the technician's own, sent
// for the head, the foot or both, with the number it gets in the printer.
class LoghiPersForm : public QDialog
{
    Q_OBJECT
public:
    explicit LoghiPersForm(QWidget *parent = nullptr);

    QLabel *Label3;
    QLineEdit *txtFileName;
    QPushButton *btnImg;
    QLabel *Label1;
    QLineEdit *txtIndexImg;
    QLabel *Label2;
    QComboBox *comboPos;
    QPushButton *btnSave;
    QPushButton *btnOK;

    void btnImg_Click();
    void btnSave_Click();

private:
    void SaveOne(int16_t parameter, const QString &done);
    bool m_saving = false;
};
