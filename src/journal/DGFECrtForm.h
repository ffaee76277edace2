// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDateEdit> // complete: QPointer needs the whole class where it is assigned
#include <QDialog>
#include <QElapsedTimer>
#include <QPointer>
#include <QStringList>
#include <QString>
#include <cstdint>
#include <functional>

class QLabel;
class QListWidget;
class QPushButton;

// "DGFE": the journal on the screen. The selection fetched line by line into
// a list that can be paused, stopped and saved to a text file.
class DGFECrtForm : public QDialog
{
    Q_OBJECT
public:
    // The selection, set by the opener before the form is created. An opener
    // sets only what its kind of selection uses; the rest keeps its value.
    static bool ByNumber;
    static QString FirstReceipt;         // as typed; converted at each read call
    static QString LastReceipt;
    static QPointer<QDateEdit> ReceiptDate; // pickers read again at each call
    static QPointer<QDateEdit> FromDate;
    static QPointer<QDateEdit> ToDate;

    static constexpr int16_t EndOfSelection = 3102; // InfoCode of the last line
    static constexpr int ListRefreshMs = 100;      // how often a growing list is painted

    explicit DGFECrtForm(QWidget *parent = nullptr);

    int16_t ReadResult = 0;
    bool ReadEnded = false;  // nothing is being read; also the stop request
    bool ReadPaused = false;
    QString CmdPausaTag;     // the pause button's state word, beside its caption

    QLabel *lblDataIni;
    QLabel *lblDataIni2;
    QLabel *lblDataFin;
    QLabel *lblDataFin2;
    QLabel *lblScontFin;
    QLabel *lblScontFin2;
    QListWidget *ListDGFE;
    QPushButton *Command1;
    QPushButton *CmdPausa;
    QPushButton *CmdStop;
    QPushButton *btnSalvaSuFile;
    QPushButton *btnOk;

    void Command1_Click();
    void CmdPausa_Click();
    void CmdStop_Click();
    void btnSalvaSuFile_Click();

    // Every line read so far, those still on their way into the list included.
    int lineCount() const;
    QStringList lines() const;

    // For the tests and the benchmark: called at every turn the read gives
    // the event queue, before the turn.
    std::function<void()> onReadTurn;

    // The word for a receipt number that is no number or beyond 32767.
    static void ReportBadReceiptNumber(const QString &first, const QString &last);

protected:
    void closeEvent(QCloseEvent *event) override;
    void reject() override; // Esc: a close request like the others

private:
    QElapsedTimer m_listShown; // since the list was last shown with its latest line
    QStringList m_pending;     // lines read and not yet handed to the list
    bool closeRequest(); // true: the form may close
    void ReadSelection(bool pauseHolds); // the read by date or by number, to its end
    int16_t readCall(bool first);
    void addLine(const QString &line);
    void showLatestLines();
    void giveEventTurn();
};
