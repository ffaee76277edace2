// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

class QLabel;

// The page of the fiscal booklet as the technician fills it in: its printed
// captions and blanks, the fields the program already knows laid over the
// blanks in light yellow, and beside it six numbered notes, each joined by a
// line to the row it explains. The drawing is the same on the screen and on
// paper (render it), at any scale.
class LibrettoSheet : public QWidget
{
    Q_OBJECT
public:
    explicit LibrettoSheet(QWidget *parent = nullptr);

    QWidget *Image1; // the booklet's page

    QLabel *lblRagSocUte;
    QLabel *lblIndFisc;
    QLabel *lblPIva;
    QLabel *lblDataInst;
    QLabel *lblAzzera;
    QLabel *lblQualif;
    QLabel *lblRagSoc2;
    QLabel *lblFirma;

    QLabel *Label1;
    QLabel *Label2;
    QLabel *Label3;
    QLabel *Label4;
    QLabel *Label5;
    QLabel *Label6;

protected:
    void paintEvent(QPaintEvent *event) override;
};
