// SPDX-License-Identifier: GPL-3.0-or-later
#include "KelvoFPControlBase.h"

KelvoFPControl *gFPControl = nullptr;

int16_t KelvoFPControlBase::ErrorCode() const
{
    return int16_t(WireValue::toInteger(property(QStringLiteral("ErrorCode"))));
}

int16_t KelvoFPControlBase::InfoCode() const
{
    return int16_t(WireValue::toInteger(property(QStringLiteral("InfoCode"))));
}

int16_t KelvoFPControlBase::ReadDateTime()
{
    return command("ReadDateTime");
}

QDateTime KelvoFPControlBase::DateTime() const
{
    return WireValue::toDate(property(QStringLiteral("DateTime")));
}

int16_t KelvoFPControlBase::DateDay() const
{
    if (m_properties.contains(QStringLiteral("DateDay")))
        return int16_t(WireValue::toInteger(property(QStringLiteral("DateDay"))));
    return int16_t(DateTime().date().day());
}

int16_t KelvoFPControlBase::DateMonth() const
{
    if (m_properties.contains(QStringLiteral("DateMonth")))
        return int16_t(WireValue::toInteger(property(QStringLiteral("DateMonth"))));
    return int16_t(DateTime().date().month());
}

int16_t KelvoFPControlBase::DateYear() const
{
    if (m_properties.contains(QStringLiteral("DateYear")))
        return int16_t(WireValue::toInteger(property(QStringLiteral("DateYear"))));
    return int16_t(DateTime().date().year() % 100);
}

int16_t KelvoFPControlBase::SetDateTime(int16_t day, int16_t month, int16_t year, int16_t hour, int16_t minute)
{
    return command("SetDateTime", day, month, year, hour, minute);
}

int16_t KelvoFPControlBase::FiscalClosure(int16_t &op)
{
    return command("FiscalClosure", op);
}

int16_t KelvoFPControlBase::ReadClosureState(int16_t mode)
{
    return command("ReadClosureState", mode);
}

int32_t KelvoFPControlBase::ClosureState() const
{
    return int32_t(WireValue::toInteger(property(QStringLiteral("ClosureState"))));
}

int16_t KelvoFPControlBase::ReadPrinterInfo(int16_t mode)
{
    return command("ReadPrinterInfo", mode);
}

QString KelvoFPControlBase::PrinterStatus() const
{
    return property(QStringLiteral("PrinterStatus"));
}

QString KelvoFPControlBase::FirmwareVersion() const
{
    return property(QStringLiteral("FirmwareVersion"));
}

QString KelvoFPControlBase::FiscalMemoryVersion() const
{
    return property(QStringLiteral("FiscalMemoryVersion"));
}

int16_t KelvoFPControlBase::ReadMatricola(int16_t mode)
{
    return command("ReadMatricola", mode);
}

QString KelvoFPControlBase::MatricolaPrefix() const
{
    return property(QStringLiteral("MatricolaPrefix"));
}

QString KelvoFPControlBase::MatricolaModel() const
{
    return property(QStringLiteral("MatricolaModel"));
}

int32_t KelvoFPControlBase::MatricolaNumber() const
{
    return int32_t(WireValue::toInteger(property(QStringLiteral("MatricolaNumber"))));
}

int16_t KelvoFPControlBase::ReadDgfeStatus(int16_t mode)
{
    return command("ReadDgfeStatus", mode);
}

int16_t KelvoFPControlBase::DgfeState() const
{
    return int16_t(WireValue::toInteger(property(QStringLiteral("DgfeState"))));
}

int16_t KelvoFPControlBase::DgfePercent() const
{
    return int16_t(WireValue::toInteger(property(QStringLiteral("DgfePercent"))));
}

int16_t KelvoFPControlBase::DgfeNumber() const
{
    return int16_t(WireValue::toInteger(property(QStringLiteral("DgfeNumber"))));
}

void KelvoFPControlBase::ReadAzzeramenti()
{
    command("ReadAzzeramenti");
}

int32_t KelvoFPControlBase::Azzeramenti() const
{
    return int32_t(WireValue::toInteger(property(QStringLiteral("Azzeramenti"))));
}

int16_t KelvoFPControlBase::WriteHeaderLine(int16_t index, const QString &text)
{
    return command("WriteHeaderLine", index, text);
}

int16_t KelvoFPControlBase::WriteHeaderStyle(int16_t index, int16_t style)
{
    return command("WriteHeaderStyle", index, style);
}

int16_t KelvoFPControlBase::ReadHeaderLine(int16_t &index)
{
    return command("ReadHeaderLine", index);
}

QString KelvoFPControlBase::HeaderLineText() const
{
    return property(QStringLiteral("HeaderLineText"));
}

int16_t KelvoFPControlBase::ReadHeaderStyle(int16_t &index)
{
    return command("ReadHeaderStyle", index);
}

int16_t KelvoFPControlBase::HeaderStyle() const
{
    return int16_t(WireValue::toInteger(property(QStringLiteral("HeaderStyle"))));
}

int16_t KelvoFPControlBase::OpenRawChannel(int16_t channel)
{
    // The channel goes with the name of the job it opens.
    return command("OpenRawChannel", channel, m_rawChannelName);
}

int16_t KelvoFPControlBase::BeginRawTransfer(int16_t channel, int32_t &size, bool flag, const QString &name)
{
    return command("BeginRawTransfer", channel, size, flag, name);
}

int16_t KelvoFPControlBase::SendRawData(QByteArray &data)
{
    return command("SendRawData", data);
}

int16_t KelvoFPControlBase::CloseRawChannel(int16_t channel)
{
    return command("CloseRawChannel", channel);
}

int16_t KelvoFPControlBase::LoadLogoFile(QString &path)
{
    return command("LoadLogoFile", path);
}

int16_t KelvoFPControlBase::ReadFlag(int16_t &number)
{
    return command("ReadFlag", number);
}

int16_t KelvoFPControlBase::FlagValue() const
{
    return int16_t(WireValue::toInteger(property(QStringLiteral("FlagValue"))));
}

int16_t KelvoFPControlBase::WriteFlag(int16_t &number, int16_t value)
{
    return command("WriteFlag", number, value);
}

int16_t KelvoFPControlBase::ReadParam(int16_t &number)
{
    return command("ReadParam", number);
}

int16_t KelvoFPControlBase::ParamNumber() const
{
    return int16_t(WireValue::toInteger(property(QStringLiteral("ParamNumber"))));
}

int16_t KelvoFPControlBase::ParamValue() const
{
    return int16_t(WireValue::toInteger(property(QStringLiteral("ParamValue"))));
}

int16_t KelvoFPControlBase::WriteParam(int16_t &number, int16_t value)
{
    return command("WriteParam", number, value);
}

int16_t KelvoFPControlBase::ReadReparto(int16_t &index)
{
    return command("ReadReparto", index);
}

int16_t KelvoFPControlBase::RepartoNumber() const
{
    return int16_t(WireValue::toInteger(property(QStringLiteral("RepartoNumber"))));
}

QString KelvoFPControlBase::RepartoDescrizione() const
{
    return property(QStringLiteral("RepartoDescrizione"));
}

Currency KelvoFPControlBase::RepartoLimite() const
{
    return WireValue::toCurrency(property(QStringLiteral("RepartoLimite")));
}

int16_t KelvoFPControlBase::RepartoIva() const
{
    return int16_t(WireValue::toInteger(property(QStringLiteral("RepartoIva"))));
}

int16_t KelvoFPControlBase::RepartoScontRiass() const
{
    return int16_t(WireValue::toInteger(property(QStringLiteral("RepartoScontRiass"))));
}

int16_t KelvoFPControlBase::RepartoGrpMerc() const
{
    return int16_t(WireValue::toInteger(property(QStringLiteral("RepartoGrpMerc"))));
}

int16_t KelvoFPControlBase::WriteReparto(int16_t index, const QString &descrizione, Currency prezzo1, Currency prezzo2, Currency prezzo3, int16_t reserved, int16_t iva, Currency limite, int16_t scontRiass, int16_t grpMerc, const QString &reservedText)
{
    return command("WriteReparto", index, descrizione, prezzo1, prezzo2, prezzo3, reserved, iva, limite, scontRiass, grpMerc, reservedText);
}

int16_t KelvoFPControlBase::ReadIva(int16_t &index)
{
    return command("ReadIva", index);
}

int16_t KelvoFPControlBase::IvaNumber() const
{
    return int16_t(WireValue::toInteger(property(QStringLiteral("IvaNumber"))));
}

float KelvoFPControlBase::IvaAliquota() const
{
    return WireValue::toSingle(property(QStringLiteral("IvaAliquota")));
}

int16_t KelvoFPControlBase::WriteIva(int16_t index, float aliquota)
{
    return command("WriteIva", index, aliquota);
}

int16_t KelvoFPControlBase::ReadTicket(int16_t &index)
{
    return command("ReadTicket", index);
}

int16_t KelvoFPControlBase::TicketNumber() const
{
    return int16_t(WireValue::toInteger(property(QStringLiteral("TicketNumber"))));
}

QString KelvoFPControlBase::TicketDescrizione() const
{
    return property(QStringLiteral("TicketDescrizione"));
}

Currency KelvoFPControlBase::TicketValore() const
{
    return WireValue::toCurrency(property(QStringLiteral("TicketValore")));
}

int16_t KelvoFPControlBase::WriteTicket(int16_t index, const QString &descrizione, Currency valore)
{
    return command("WriteTicket", index, descrizione, valore);
}

int16_t KelvoFPControlBase::ReadCarta(int16_t &index)
{
    return command("ReadCarta", index);
}

int16_t KelvoFPControlBase::CartaNumber() const
{
    return int16_t(WireValue::toInteger(property(QStringLiteral("CartaNumber"))));
}

QString KelvoFPControlBase::CartaDescrizione() const
{
    return property(QStringLiteral("CartaDescrizione"));
}

int16_t KelvoFPControlBase::WriteCarta(int16_t index, const QString &descrizione)
{
    return command("WriteCarta", index, descrizione);
}

int16_t KelvoFPControlBase::ReadOperatore(int16_t &index)
{
    return command("ReadOperatore", index);
}

int16_t KelvoFPControlBase::OperatoreNumber() const
{
    return int16_t(WireValue::toInteger(property(QStringLiteral("OperatoreNumber"))));
}

QString KelvoFPControlBase::OperatoreDescrizione() const
{
    return property(QStringLiteral("OperatoreDescrizione"));
}

int16_t KelvoFPControlBase::OperatorePassword() const
{
    return int16_t(WireValue::toInteger(property(QStringLiteral("OperatorePassword"))));
}

float KelvoFPControlBase::OperatorePercentuale() const
{
    return WireValue::toSingle(property(QStringLiteral("OperatorePercentuale")));
}

int16_t KelvoFPControlBase::WriteOperatore(int16_t index, const QString &descrizione, int16_t password, float percentuale)
{
    return command("WriteOperatore", index, descrizione, password, percentuale);
}

int16_t KelvoFPControlBase::ReadContante(int16_t &index)
{
    return command("ReadContante", index);
}

int16_t KelvoFPControlBase::ContanteNumber() const
{
    return int16_t(WireValue::toInteger(property(QStringLiteral("ContanteNumber"))));
}

QString KelvoFPControlBase::ContanteDescrizione() const
{
    return property(QStringLiteral("ContanteDescrizione"));
}

int16_t KelvoFPControlBase::WriteContante(int16_t index, const QString &descrizione)
{
    return command("WriteContante", index, descrizione);
}

int16_t KelvoFPControlBase::ReadContantePredefinito(int16_t &index)
{
    return command("ReadContantePredefinito", index);
}

Currency KelvoFPControlBase::ContanteImporto() const
{
    return WireValue::toCurrency(property(QStringLiteral("ContanteImporto")));
}

int16_t KelvoFPControlBase::WriteContantePredefinito(int16_t index, Currency importo)
{
    return command("WriteContantePredefinito", index, importo);
}

int16_t KelvoFPControlBase::ReadPS2(int16_t &index)
{
    return command("ReadPS2", index);
}

int16_t KelvoFPControlBase::PS2Funzione() const
{
    return int16_t(WireValue::toInteger(property(QStringLiteral("PS2Funzione"))));
}

int16_t KelvoFPControlBase::WritePS2(int16_t index, int16_t funzione)
{
    return command("WritePS2", index, funzione);
}

int16_t KelvoFPControlBase::ReadPromo(int16_t &index)
{
    return command("ReadPromo", index);
}

int16_t KelvoFPControlBase::PromoNumber() const
{
    return int16_t(WireValue::toInteger(property(QStringLiteral("PromoNumber"))));
}

QString KelvoFPControlBase::PromoDescrizione() const
{
    return property(QStringLiteral("PromoDescrizione"));
}

int32_t KelvoFPControlBase::PromoTipo() const
{
    return int32_t(WireValue::toInteger(property(QStringLiteral("PromoTipo"))));
}

QString KelvoFPControlBase::PromoBarcode() const
{
    return property(QStringLiteral("PromoBarcode"));
}

int16_t KelvoFPControlBase::PromoRichiamo() const
{
    return int16_t(WireValue::toInteger(property(QStringLiteral("PromoRichiamo"))));
}

Currency KelvoFPControlBase::PromoValore() const
{
    return WireValue::toCurrency(property(QStringLiteral("PromoValore")));
}

int16_t KelvoFPControlBase::WritePromo(int16_t index, int32_t tipo, int16_t richiamo, const QString &barcode, const QString &descrizione, Currency valore, int16_t reserved1, int16_t reserved2, const QString &reservedText)
{
    return command("WritePromo", index, tipo, richiamo, barcode, descrizione, valore, reserved1, reserved2, reservedText);
}

int16_t KelvoFPControlBase::PrintDgfeByDate(int16_t op, int16_t fromDay, int16_t fromMonth, int16_t fromYear, int16_t toDay, int16_t toMonth, int16_t toYear)
{
    return command("PrintDgfeByDate", op, fromDay, fromMonth, fromYear, toDay, toMonth, toYear);
}

int16_t KelvoFPControlBase::PrintDgfeByNumber(int16_t op, int16_t day, int16_t month, int16_t year, int16_t firstReceipt, int16_t lastReceipt)
{
    return command("PrintDgfeByNumber", op, day, month, year, firstReceipt, lastReceipt);
}

int16_t KelvoFPControlBase::ReadDgfeByDate(int16_t op, int16_t fromDay, int16_t fromMonth, int16_t fromYear, int16_t toDay, int16_t toMonth, int16_t toYear, bool first)
{
    return command("ReadDgfeByDate", op, fromDay, fromMonth, fromYear, toDay, toMonth, toYear, first);
}

int16_t KelvoFPControlBase::ReadDgfeByNumber(int16_t op, int16_t day, int16_t month, int16_t year, int16_t firstReceipt, int16_t lastReceipt, bool first)
{
    return command("ReadDgfeByNumber", op, day, month, year, firstReceipt, lastReceipt, first);
}

QString KelvoFPControlBase::DgfeLine() const
{
    return property(QStringLiteral("DgfeLine"));
}

int16_t KelvoFPControlBase::FormatDgfe(int16_t op)
{
    return command("FormatDgfe", op);
}

int16_t KelvoFPControlBase::PrintFiscalMemory(int16_t op)
{
    return command("PrintFiscalMemory", op);
}

int16_t KelvoFPControlBase::SellReparto(int16_t &op, float quantity, const QString &description, Currency price, int16_t department, int32_t one)
{
    return command("SellReparto", op, quantity, description, price, department, one);
}

int16_t KelvoFPControlBase::StornoReparto(int16_t &op, const QString &description, float quantity, Currency price, int16_t department, int16_t one)
{
    return command("StornoReparto", op, description, quantity, price, department, one);
}

int16_t KelvoFPControlBase::PayReceipt(int16_t &op, const QString &description, Currency amount, int32_t paymentType, int16_t ticketCount, int16_t one)
{
    return command("PayReceipt", op, description, amount, paymentType, ticketCount, one);
}

int16_t KelvoFPControlBase::PayContanteDesc(int16_t &op, int16_t &number, Currency &amount)
{
    return command("PayContanteDesc", op, number, amount);
}

Currency KelvoFPControlBase::PaymentResidue() const
{
    return WireValue::toCurrency(property(QStringLiteral("PaymentResidue")));
}

int16_t KelvoFPControlBase::PrintSubtotal(int16_t &op)
{
    return command("PrintSubtotal", op);
}

int16_t KelvoFPControlBase::AbbuonoReparto(int16_t &op, Currency amount)
{
    return command("AbbuonoReparto", op, amount);
}

int16_t KelvoFPControlBase::AbbuonoTotale(int16_t &op, Currency amount)
{
    return command("AbbuonoTotale", op, amount);
}

int16_t KelvoFPControlBase::AumentoReparto(int16_t &op, Currency amount)
{
    return command("AumentoReparto", op, amount);
}

int16_t KelvoFPControlBase::AumentoTotale(int16_t &op, Currency amount)
{
    return command("AumentoTotale", op, amount);
}

int16_t KelvoFPControlBase::ScontoPercReparto(int16_t &op, float percentage)
{
    return command("ScontoPercReparto", op, percentage);
}

int16_t KelvoFPControlBase::ScontoPercTotale(int16_t &op, float percentage)
{
    return command("ScontoPercTotale", op, percentage);
}

int16_t KelvoFPControlBase::AumentoPercReparto(int16_t &op, float percentage)
{
    return command("AumentoPercReparto", op, percentage);
}

int16_t KelvoFPControlBase::AumentoPercTotale(int16_t &op, float percentage)
{
    return command("AumentoPercTotale", op, percentage);
}

int16_t KelvoFPControlBase::OpenDrawer(int16_t &op)
{
    return command("OpenDrawer", op);
}

int16_t KelvoFPControlBase::FeedPaper(int16_t &op, int32_t lines)
{
    return command("FeedPaper", op, lines);
}

int16_t KelvoFPControlBase::LockKeys(int16_t &op)
{
    return command("LockKeys", op);
}

int16_t KelvoFPControlBase::UnlockKeys(int16_t &op)
{
    return command("UnlockKeys", op);
}

int16_t KelvoFPControlBase::PrintXFinanziarioGiorno(int16_t op)
{
    return command("PrintXFinanziarioGiorno", op);
}

int16_t KelvoFPControlBase::PrintXFinanziarioPeriodo(int16_t op)
{
    return command("PrintXFinanziarioPeriodo", op);
}

int16_t KelvoFPControlBase::PrintXOperatoreGiorno(int16_t op, int16_t operatore)
{
    return command("PrintXOperatoreGiorno", op, operatore);
}

int16_t KelvoFPControlBase::PrintXOperatorePeriodo(int16_t op, int16_t operatore)
{
    return command("PrintXOperatorePeriodo", op, operatore);
}

int16_t KelvoFPControlBase::PrintXOrarioGiorno(int16_t op)
{
    return command("PrintXOrarioGiorno", op);
}

int16_t KelvoFPControlBase::PrintXOrarioPeriodo(int16_t op)
{
    return command("PrintXOrarioPeriodo", op);
}

int16_t KelvoFPControlBase::PrintXRepartoGiorno(int16_t op, int16_t reparto)
{
    return command("PrintXRepartoGiorno", op, reparto);
}

int16_t KelvoFPControlBase::PrintXRepartoPeriodo(int16_t op, int16_t reparto)
{
    return command("PrintXRepartoPeriodo", op, reparto);
}

int16_t KelvoFPControlBase::ResetTotalePlu(int16_t &plu)
{
    return command("ResetTotalePlu", plu);
}

int16_t KelvoFPControlBase::ResetTotalePromo(int32_t table, int16_t zero)
{
    return command("ResetTotalePromo", table, zero);
}
