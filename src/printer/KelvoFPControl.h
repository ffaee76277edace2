// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "settings/Currency.h"

#include <QByteArray>
#include <QDateTime>
#include <QString>
#include <cstdint>

// The printer control: every member the program uses, typed as the control
// types them (Integer int16_t, Long int32_t, Single float, Currency, Date
// QDateTime, String QString, Boolean bool). Commands return an Integer
// result, 0 for success (codes in ReportResult). Read commands fill
// properties that the caller fetches afterwards. Arguments the control may
// write are taken by reference.
//
// Properties are getters named as the property; settable ones have a setter
// named set + property (setUseTcp), which keeps them apart from commands
// such as SetDateTime.
class KelvoFPControl
{
public:
    virtual ~KelvoFPControl() = default;

    // --- Local to the control: configuration and transport -------------
    virtual bool Busy() const = 0;
    virtual int32_t EuroSettings() const = 0;
    virtual void setEuroSettings(int32_t value) = 0;
    virtual int32_t UseTcp() const = 0;
    virtual void setUseTcp(int32_t value) = 0;
    virtual int16_t ComPort() const = 0;
    virtual void setComPort(int16_t value) = 0;
    virtual QString ComSettings() const = 0;
    virtual void setComSettings(const QString &value) = 0;
    virtual int16_t TcpPort() const = 0;
    virtual void setTcpPort(int16_t value) = 0;
    virtual QString IpAddress() const = 0;
    virtual void setIpAddress(const QString &value) = 0;
    virtual int16_t TimeoutAck() const = 0;
    virtual void setTimeoutAck(int16_t value) = 0;
    virtual int16_t TimeoutOp() const = 0;
    virtual void setTimeoutOp(int16_t value) = 0;
    virtual QString RawChannelName() const = 0;
    virtual void setRawChannelName(const QString &value) = 0;

    virtual void OpenComPort() = 0;
    virtual void CloseComPort() = 0;
    virtual bool IsComPortOpen() = 0;
    virtual int32_t OpenTcp() = 0;
    virtual void CloseTcp() = 0;
    virtual bool IsTcpOpen(int32_t &state) = 0;

    // --- Detail codes -----------------------------------------------------
    virtual int16_t ErrorCode() const = 0;
    virtual int16_t InfoCode() const = 0;

    // --- Clock ----------------------------------------------------------------
    virtual int16_t ReadDateTime() = 0;
    virtual QDateTime DateTime() const = 0;
    virtual int16_t DateDay() const = 0;
    virtual int16_t DateMonth() const = 0;
    virtual int16_t DateYear() const = 0; // two digits
    virtual int16_t SetDateTime(int16_t day, int16_t month, int16_t year, int16_t hour, int16_t minute) = 0;
    virtual int16_t FiscalClosure(int16_t &op) = 0;
    virtual int16_t ReadClosureState(int16_t mode) = 0;
    virtual int32_t ClosureState() const = 0;

    // --- Identity and state ---------------------------------------------------
    virtual int16_t ReadPrinterInfo(int16_t mode) = 0;
    virtual QString PrinterStatus() const = 0;
    virtual QString FirmwareVersion() const = 0;
    virtual QString FiscalMemoryVersion() const = 0;
    virtual int16_t ReadMatricola(int16_t mode) = 0;
    virtual QString MatricolaPrefix() const = 0;
    virtual QString MatricolaModel() const = 0;
    virtual int32_t MatricolaNumber() const = 0;
    virtual int16_t ReadDgfeStatus(int16_t mode) = 0;
    virtual int16_t DgfeState() const = 0;
    virtual int16_t DgfePercent() const = 0;
    virtual int16_t DgfeNumber() const = 0;
    virtual void ReadAzzeramenti() = 0;
    virtual int32_t Azzeramenti() const = 0;

    // --- Receipt header -------------------------------------------------------
    virtual int16_t WriteHeaderLine(int16_t index, const QString &text) = 0;
    virtual int16_t WriteHeaderStyle(int16_t index, int16_t style) = 0;
    virtual int16_t ReadHeaderLine(int16_t &index) = 0;
    virtual QString HeaderLineText() const = 0;
    virtual int16_t ReadHeaderStyle(int16_t &index) = 0;
    virtual int16_t HeaderStyle() const = 0;

    // --- Logos through the raw channel, and the older file road -------------
    virtual int16_t OpenRawChannel(int16_t channel) = 0;
    virtual int16_t BeginRawTransfer(int16_t channel, int32_t &size, bool flag, const QString &name) = 0;
    // One byte per character: the piece goes on the wire byte for byte.
    virtual int16_t SendRawData(QByteArray &data) = 0;
    virtual int16_t CloseRawChannel(int16_t channel) = 0;
    virtual int16_t LoadLogoFile(QString &path) = 0;

    // --- Flags (section 14) and parameters (section 15) -----------------------
    virtual int16_t ReadFlag(int16_t &number) = 0;
    virtual int16_t FlagValue() const = 0;
    virtual int16_t WriteFlag(int16_t &number, int16_t value) = 0;
    virtual int16_t ReadParam(int16_t &number) = 0;
    virtual int16_t ParamNumber() const = 0;
    virtual int16_t ParamValue() const = 0;
    virtual int16_t WriteParam(int16_t &number, int16_t value) = 0;

    // --- Programming tables ---------------------------------------------------
    virtual int16_t ReadReparto(int16_t &index) = 0;
    virtual int16_t RepartoNumber() const = 0;
    virtual QString RepartoDescrizione() const = 0;
    virtual Currency RepartoLimite() const = 0;
    virtual int16_t RepartoIva() const = 0;
    virtual int16_t RepartoScontRiass() const = 0;
    virtual int16_t RepartoGrpMerc() const = 0;
    virtual int16_t WriteReparto(int16_t index, const QString &descrizione, Currency prezzo1, Currency prezzo2,
                                 Currency prezzo3, int16_t reserved, int16_t iva, Currency limite,
                                 int16_t scontRiass, int16_t grpMerc, const QString &reservedText) = 0;

    virtual int16_t ReadIva(int16_t &index) = 0;
    virtual int16_t IvaNumber() const = 0;
    virtual float IvaAliquota() const = 0;
    virtual int16_t WriteIva(int16_t index, float aliquota) = 0;

    virtual int16_t ReadTicket(int16_t &index) = 0;
    virtual int16_t TicketNumber() const = 0;
    virtual QString TicketDescrizione() const = 0;
    virtual Currency TicketValore() const = 0;
    virtual int16_t WriteTicket(int16_t index, const QString &descrizione, Currency valore) = 0;

    virtual int16_t ReadCarta(int16_t &index) = 0;
    virtual int16_t CartaNumber() const = 0;
    virtual QString CartaDescrizione() const = 0;
    virtual int16_t WriteCarta(int16_t index, const QString &descrizione) = 0;

    virtual int16_t ReadOperatore(int16_t &index) = 0;
    virtual int16_t OperatoreNumber() const = 0;
    virtual QString OperatoreDescrizione() const = 0;
    virtual int16_t OperatorePassword() const = 0;
    virtual float OperatorePercentuale() const = 0;
    virtual int16_t WriteOperatore(int16_t index, const QString &descrizione, int16_t password, float percentuale) = 0;

    virtual int16_t ReadContante(int16_t &index) = 0;
    virtual int16_t ContanteNumber() const = 0;
    virtual QString ContanteDescrizione() const = 0;
    virtual int16_t WriteContante(int16_t index, const QString &descrizione) = 0;
    virtual int16_t ReadContantePredefinito(int16_t &index) = 0;
    virtual Currency ContanteImporto() const = 0;
    virtual int16_t WriteContantePredefinito(int16_t index, Currency importo) = 0;

    virtual int16_t ReadPS2(int16_t &index) = 0;
    virtual int16_t PS2Funzione() const = 0;
    virtual int16_t WritePS2(int16_t index, int16_t funzione) = 0;

    virtual int16_t ReadPromo(int16_t &index) = 0;
    virtual int16_t PromoNumber() const = 0;
    virtual QString PromoDescrizione() const = 0;
    virtual int32_t PromoTipo() const = 0;
    virtual QString PromoBarcode() const = 0;
    virtual int16_t PromoRichiamo() const = 0;
    virtual Currency PromoValore() const = 0;
    virtual int16_t WritePromo(int16_t index, int32_t tipo, int16_t richiamo, const QString &barcode,
                               const QString &descrizione, Currency valore, int16_t reserved1, int16_t reserved2,
                               const QString &reservedText) = 0;

    // --- Electronic journal (DGFE) ----------------------------------------------
    virtual int16_t PrintDgfeByDate(int16_t op, int16_t fromDay, int16_t fromMonth, int16_t fromYear,
                                    int16_t toDay, int16_t toMonth, int16_t toYear) = 0;
    virtual int16_t PrintDgfeByNumber(int16_t op, int16_t day, int16_t month, int16_t year,
                                      int16_t firstReceipt, int16_t lastReceipt) = 0;
    virtual int16_t ReadDgfeByDate(int16_t op, int16_t fromDay, int16_t fromMonth, int16_t fromYear,
                                   int16_t toDay, int16_t toMonth, int16_t toYear, bool first) = 0;
    virtual int16_t ReadDgfeByNumber(int16_t op, int16_t day, int16_t month, int16_t year,
                                     int16_t firstReceipt, int16_t lastReceipt, bool first) = 0;
    virtual QString DgfeLine() const = 0;
    virtual int16_t FormatDgfe(int16_t op) = 0;
    virtual int16_t PrintFiscalMemory(int16_t op) = 0;

    // --- Sales (the operator always first, by reference) --------------------
    virtual int16_t SellReparto(int16_t &op, float quantity, const QString &description, Currency price,
                                int16_t department, int32_t one) = 0;
    virtual int16_t StornoReparto(int16_t &op, const QString &description, float quantity, Currency price,
                                  int16_t department, int16_t one) = 0;
    virtual int16_t PayReceipt(int16_t &op, const QString &description, Currency amount, int32_t paymentType,
                               int16_t ticketCount, int16_t one) = 0;
    virtual int16_t PayContanteDesc(int16_t &op, int16_t &number, Currency &amount) = 0;
    virtual Currency PaymentResidue() const = 0;
    virtual int16_t PrintSubtotal(int16_t &op) = 0;
    virtual int16_t AbbuonoReparto(int16_t &op, Currency amount) = 0;
    virtual int16_t AbbuonoTotale(int16_t &op, Currency amount) = 0;
    virtual int16_t AumentoReparto(int16_t &op, Currency amount) = 0;
    virtual int16_t AumentoTotale(int16_t &op, Currency amount) = 0;
    virtual int16_t ScontoPercReparto(int16_t &op, float percentage) = 0;
    virtual int16_t ScontoPercTotale(int16_t &op, float percentage) = 0;
    virtual int16_t AumentoPercReparto(int16_t &op, float percentage) = 0;
    virtual int16_t AumentoPercTotale(int16_t &op, float percentage) = 0;
    virtual int16_t OpenDrawer(int16_t &op) = 0;
    virtual int16_t FeedPaper(int16_t &op, int32_t lines) = 0;
    virtual int16_t LockKeys(int16_t &op) = 0;
    virtual int16_t UnlockKeys(int16_t &op) = 0;

    // --- X reports (operator first, by value) --------------------------------------
    virtual int16_t PrintXFinanziarioGiorno(int16_t op) = 0;
    virtual int16_t PrintXFinanziarioPeriodo(int16_t op) = 0;
    virtual int16_t PrintXOperatoreGiorno(int16_t op, int16_t operatore) = 0;
    virtual int16_t PrintXOperatorePeriodo(int16_t op, int16_t operatore) = 0;
    virtual int16_t PrintXOrarioGiorno(int16_t op) = 0;
    virtual int16_t PrintXOrarioPeriodo(int16_t op) = 0;
    virtual int16_t PrintXRepartoGiorno(int16_t op, int16_t reparto) = 0;
    virtual int16_t PrintXRepartoPeriodo(int16_t op, int16_t reparto) = 0;

    // --- Totals ---------------------------------------------------------------------
    virtual int16_t ResetTotalePlu(int16_t &plu) = 0;
    virtual int16_t ResetTotalePromo(int32_t table, int16_t zero) = 0;
};

// The one control of the process, bound at start-up to the main form's control.
extern KelvoFPControl *gFPControl;
