// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "LogoFileList.h"

#include <QDialog>
#include <QList>
#include <QPixmap>
#include <QString>
#include <QStringList>
#include <cstdint>

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QPlainTextEdit;
class QPushButton;

// "Scelta loghi": the standard logos as pictures, for the head and the foot
// of the receipt. It also owns the sending of a logo and of a logo number,
// which every sender uses (the restoring of a programming file as well).
class LoghiForm : public QDialog
{
    Q_OBJECT
public:
    explicit LoghiForm(QWidget *parent = nullptr);

    // Sends a logo file; result 0 when done, anything else a failure.
    static void SaveLogo(QString &fileName, int16_t &result);
    // Writes a logo parameter when the control is free; reports a refusal
    // itself and tells the caller nothing.
    static void ProgFlag(int16_t &number, int16_t &value);

    // The chosen logos: paths of the pictures, then of the files sent.
    // Empty while none is chosen.
    QString headerFile;
    QString footerFile;

    // The pictures in the order of File1, each with the logo number (the
    // first two characters of its file name) as its tag.
    struct ImageList
    {
        QList<QPixmap> images;
        QStringList tags;
    } ImageList1;
    LogoFileList File1;

    QLineEdit *txtPath;
    QCheckBox *chkHeader;
    QCheckBox *chkFooter;
    QListWidget *ListViewHeader;
    QListWidget *ListViewFooter;
    QLabel *PictureHeader;
    QLabel *PictureFooter;
    QLabel *lblPrev;
    QPlainTextEdit *Text1;
    QLabel *lblLarg;
    QComboBox *ComboLarg;
    QPushButton *btnSave;
    QPushButton *btnOK;

    void chkHeader_Click();
    void chkFooter_Click();
    void LogoClick(QListWidget *list);
    void btnSave_Click();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void LoadPictures();
    void SaveOne(QCheckBox *box, QListWidget *list, QString &file, int16_t parameter, const QString &done,
                 int32_t model);
    bool m_saving = false;
};

// The standard logo file of a number (2..9) for the receipt width that the
// printer's parameter 12 holds.
QString StandardLogoFile(int16_t number);
