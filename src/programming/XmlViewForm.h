// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "XmlViewTables.h"

#include <QDialog>
#include <QElapsedTimer>
#include <QString>
#include <array>
#include <cstdint>
#include <optional>

class ProgrammingGridModel;
class QLabel;
class QProgressBar;
class QPushButton;
class QTabWidget;
class QTableView;

// "Dati Programmazione": the printer's whole programming in grids. Read
// from the printer it can be saved to a file ("Salva File"); read from a
// file it can be written back to a printer ("Riprogramma KX90"). The form
// shows itself while the data come in, the bar rising per tab.
class XmlViewForm : public QDialog
{
    Q_OBJECT
public:
    // Set by the opener before the form is created: 2 shows the file
    // XmlFile; any other value reads the printer.
    static int16_t FormMode;
    static QString XmlFile;

    explicit XmlViewForm(QWidget *parent = nullptr);
    ~XmlViewForm() override;

    // The open dialog of "Ripristino dati da file": the path chosen, or
    // nothing when the technician cancelled.
    static std::optional<QString> ChooseFileToOpen(QWidget *parent);

    QLabel *lblRigaInt;
    QTableView *gridRigaInt;
    QTabWidget *SSTab1;
    QTableView *gridIva;
    QTableView *gridRep;
    QTableView *gridCarteCredito;
    QTableView *gridTicket;
    QTableView *gridFlag;
    QTableView *gridPS2;
    QTableView *gridPromoTable;
    QTableView *gridContantiDesc;
    QProgressBar *ProgressBar1;
    QPushButton *btnPrgSave;
    QPushButton *btnOk;

    QString xmlName;   // programming file without folder and extension
    QString xmlFolder; // its folder; empty: the program's folder
    XmlViewTables data; // what the grids show, with flagRow, logoTesta, logoCoda

    void SetupGrids();
    void InitData();
    void btnPrgSave_Click();
    void btnOk_Click();

protected:
    void closeEvent(QCloseEvent *event) override;
    void reject() override;

private:
    std::array<const ProgrammingGrid *, 9> grids() const; // in the order of m_models
    void fillData();   // InitData without the screen
    void showTables(); // the grids on screen as data holds them
    void restartBar();          // the bar back to 0, drawn at once
    void advance(int progress); // the bar, and one turn of the events to show it when due
    void saveToFile();
    void restoreToPrinter();
    void setWorking(bool working);

    std::array<ProgrammingGridModel *, 9> m_models{};
    QElapsedTimer m_barDrawn;  // since the bar was last drawn
    bool m_working = false;    // loading, saving or restoring: no way out until the end
    bool m_closeAsked = false; // CHIUDI pressed meanwhile: closes at the end
};
