// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "KelvoFPControl.h"
#include "WireValue.h"

#include <QHash>
#include <QList>

// What every control shares: the local configuration properties, the
// marshalling of each command into a name and its argument fields, and the
// store of the properties that the printer's answers set. A concrete control
// supplies the transport (execute) and its own Busy and port members.
class KelvoFPControlBase : public KelvoFPControl
{
public:
    int32_t EuroSettings() const override { return m_euroSettings; }
    void setEuroSettings(int32_t value) override { m_euroSettings = value; }
    int32_t UseTcp() const override { return m_useTcp; }
    void setUseTcp(int32_t value) override { m_useTcp = value; }
    int16_t ComPort() const override { return m_comPort; }
    void setComPort(int16_t value) override { m_comPort = value; }
    QString ComSettings() const override { return m_comSettings; }
    void setComSettings(const QString &value) override { m_comSettings = value; }
    int16_t TcpPort() const override { return m_tcpPort; }
    void setTcpPort(int16_t value) override { m_tcpPort = value; }
    QString IpAddress() const override { return m_ipAddress; }
    void setIpAddress(const QString &value) override { m_ipAddress = value; }
    int16_t TimeoutAck() const override { return m_timeoutAck; }
    void setTimeoutAck(int16_t value) override { m_timeoutAck = value; }
    int16_t TimeoutOp() const override { return m_timeoutOp; }
    void setTimeoutOp(int16_t value) override { m_timeoutOp = value; }
    QString RawChannelName() const override { return m_rawChannelName; }
    void setRawChannelName(const QString &value) override { m_rawChannelName = value; }

    int16_t ErrorCode() const override;
    int16_t InfoCode() const override;
    int16_t ReadDateTime() override;
    QDateTime DateTime() const override;
    int16_t DateDay() const override;
    int16_t DateMonth() const override;
    int16_t DateYear() const override;
    int16_t SetDateTime(int16_t day, int16_t month, int16_t year, int16_t hour, int16_t minute) override;
    int16_t FiscalClosure(int16_t &op) override;
    int16_t ReadClosureState(int16_t mode) override;
    int32_t ClosureState() const override;
    int16_t ReadPrinterInfo(int16_t mode) override;
    QString PrinterStatus() const override;
    QString FirmwareVersion() const override;
    QString FiscalMemoryVersion() const override;
    int16_t ReadMatricola(int16_t mode) override;
    QString MatricolaPrefix() const override;
    QString MatricolaModel() const override;
    int32_t MatricolaNumber() const override;
    int16_t ReadDgfeStatus(int16_t mode) override;
    int16_t DgfeState() const override;
    int16_t DgfePercent() const override;
    int16_t DgfeNumber() const override;
    void ReadAzzeramenti() override;
    int32_t Azzeramenti() const override;
    int16_t WriteHeaderLine(int16_t index, const QString &text) override;
    int16_t WriteHeaderStyle(int16_t index, int16_t style) override;
    int16_t ReadHeaderLine(int16_t &index) override;
    QString HeaderLineText() const override;
    int16_t ReadHeaderStyle(int16_t &index) override;
    int16_t HeaderStyle() const override;
    int16_t OpenRawChannel(int16_t channel) override;
    int16_t BeginRawTransfer(int16_t channel, int32_t &size, bool flag, const QString &name) override;
    int16_t SendRawData(QByteArray &data) override;
    int16_t CloseRawChannel(int16_t channel) override;
    int16_t LoadLogoFile(QString &path) override;
    int16_t ReadFlag(int16_t &number) override;
    int16_t FlagValue() const override;
    int16_t WriteFlag(int16_t &number, int16_t value) override;
    int16_t ReadParam(int16_t &number) override;
    int16_t ParamNumber() const override;
    int16_t ParamValue() const override;
    int16_t WriteParam(int16_t &number, int16_t value) override;
    int16_t ReadReparto(int16_t &index) override;
    int16_t RepartoNumber() const override;
    QString RepartoDescrizione() const override;
    Currency RepartoLimite() const override;
    int16_t RepartoIva() const override;
    int16_t RepartoScontRiass() const override;
    int16_t RepartoGrpMerc() const override;
    int16_t WriteReparto(int16_t index, const QString &descrizione, Currency prezzo1, Currency prezzo2, Currency prezzo3, int16_t reserved, int16_t iva, Currency limite, int16_t scontRiass, int16_t grpMerc, const QString &reservedText) override;
    int16_t ReadIva(int16_t &index) override;
    int16_t IvaNumber() const override;
    float IvaAliquota() const override;
    int16_t WriteIva(int16_t index, float aliquota) override;
    int16_t ReadTicket(int16_t &index) override;
    int16_t TicketNumber() const override;
    QString TicketDescrizione() const override;
    Currency TicketValore() const override;
    int16_t WriteTicket(int16_t index, const QString &descrizione, Currency valore) override;
    int16_t ReadCarta(int16_t &index) override;
    int16_t CartaNumber() const override;
    QString CartaDescrizione() const override;
    int16_t WriteCarta(int16_t index, const QString &descrizione) override;
    int16_t ReadOperatore(int16_t &index) override;
    int16_t OperatoreNumber() const override;
    QString OperatoreDescrizione() const override;
    int16_t OperatorePassword() const override;
    float OperatorePercentuale() const override;
    int16_t WriteOperatore(int16_t index, const QString &descrizione, int16_t password, float percentuale) override;
    int16_t ReadContante(int16_t &index) override;
    int16_t ContanteNumber() const override;
    QString ContanteDescrizione() const override;
    int16_t WriteContante(int16_t index, const QString &descrizione) override;
    int16_t ReadContantePredefinito(int16_t &index) override;
    Currency ContanteImporto() const override;
    int16_t WriteContantePredefinito(int16_t index, Currency importo) override;
    int16_t ReadPS2(int16_t &index) override;
    int16_t PS2Funzione() const override;
    int16_t WritePS2(int16_t index, int16_t funzione) override;
    int16_t ReadPromo(int16_t &index) override;
    int16_t PromoNumber() const override;
    QString PromoDescrizione() const override;
    int32_t PromoTipo() const override;
    QString PromoBarcode() const override;
    int16_t PromoRichiamo() const override;
    Currency PromoValore() const override;
    int16_t WritePromo(int16_t index, int32_t tipo, int16_t richiamo, const QString &barcode, const QString &descrizione, Currency valore, int16_t reserved1, int16_t reserved2, const QString &reservedText) override;
    int16_t PrintDgfeByDate(int16_t op, int16_t fromDay, int16_t fromMonth, int16_t fromYear, int16_t toDay, int16_t toMonth, int16_t toYear) override;
    int16_t PrintDgfeByNumber(int16_t op, int16_t day, int16_t month, int16_t year, int16_t firstReceipt, int16_t lastReceipt) override;
    int16_t ReadDgfeByDate(int16_t op, int16_t fromDay, int16_t fromMonth, int16_t fromYear, int16_t toDay, int16_t toMonth, int16_t toYear, bool first) override;
    int16_t ReadDgfeByNumber(int16_t op, int16_t day, int16_t month, int16_t year, int16_t firstReceipt, int16_t lastReceipt, bool first) override;
    QString DgfeLine() const override;
    int16_t FormatDgfe(int16_t op) override;
    int16_t PrintFiscalMemory(int16_t op) override;
    int16_t SellReparto(int16_t &op, float quantity, const QString &description, Currency price, int16_t department, int32_t one) override;
    int16_t StornoReparto(int16_t &op, const QString &description, float quantity, Currency price, int16_t department, int16_t one) override;
    int16_t PayReceipt(int16_t &op, const QString &description, Currency amount, int32_t paymentType, int16_t ticketCount, int16_t one) override;
    int16_t PayContanteDesc(int16_t &op, int16_t &number, Currency &amount) override;
    Currency PaymentResidue() const override;
    int16_t PrintSubtotal(int16_t &op) override;
    int16_t AbbuonoReparto(int16_t &op, Currency amount) override;
    int16_t AbbuonoTotale(int16_t &op, Currency amount) override;
    int16_t AumentoReparto(int16_t &op, Currency amount) override;
    int16_t AumentoTotale(int16_t &op, Currency amount) override;
    int16_t ScontoPercReparto(int16_t &op, float percentage) override;
    int16_t ScontoPercTotale(int16_t &op, float percentage) override;
    int16_t AumentoPercReparto(int16_t &op, float percentage) override;
    int16_t AumentoPercTotale(int16_t &op, float percentage) override;
    int16_t OpenDrawer(int16_t &op) override;
    int16_t FeedPaper(int16_t &op, int32_t lines) override;
    int16_t LockKeys(int16_t &op) override;
    int16_t UnlockKeys(int16_t &op) override;
    int16_t PrintXFinanziarioGiorno(int16_t op) override;
    int16_t PrintXFinanziarioPeriodo(int16_t op) override;
    int16_t PrintXOperatoreGiorno(int16_t op, int16_t operatore) override;
    int16_t PrintXOperatorePeriodo(int16_t op, int16_t operatore) override;
    int16_t PrintXOrarioGiorno(int16_t op) override;
    int16_t PrintXOrarioPeriodo(int16_t op) override;
    int16_t PrintXRepartoGiorno(int16_t op, int16_t reparto) override;
    int16_t PrintXRepartoPeriodo(int16_t op, int16_t reparto) override;
    int16_t ResetTotalePlu(int16_t &plu) override;
    int16_t ResetTotalePromo(int32_t table, int16_t zero) override;
    // The property store: names as the control's properties, values as the
    // text of their wire form (see WireValue).
    QString property(const QString &name) const { return m_properties.value(name); }
    void setProperty(const QString &name, const QString &value) { m_properties.insert(name, value); }
    void clearProperties() { m_properties.clear(); }

protected:
    // Sends one command: field 0 the member's name, then its arguments.
    // Returns the control's result code.
    virtual int16_t execute(const QByteArray &name, const QList<QByteArray> &args) = 0;

    template <typename... Args>
    int16_t command(const char *name, const Args &...args)
    {
        return execute(QByteArray(name), QList<QByteArray>{toField(args)...});
    }

private:
    static QByteArray toField(int16_t v) { return WireValue::from(v); }
    static QByteArray toField(int32_t v) { return WireValue::from(v); }
    static QByteArray toField(float v) { return WireValue::from(v); }
    static QByteArray toField(Currency v) { return WireValue::from(v); }
    static QByteArray toField(bool v) { return WireValue::from(v); }
    static QByteArray toField(const QString &v) { return WireValue::from(v); }
    static QByteArray toField(const QByteArray &v) { return v; } // raw bytes go as they are

    int32_t m_euroSettings = 0;
    int32_t m_useTcp = 0;
    int16_t m_comPort = 1;
    QString m_comSettings = QStringLiteral("9600,n,8,1");
    int16_t m_tcpPort = 4660;
    QString m_ipAddress = QStringLiteral("192.168.0.100");
    int16_t m_timeoutAck = -1;
    int16_t m_timeoutOp = -1;
    QString m_rawChannelName;
    QHash<QString, QString> m_properties;
};
