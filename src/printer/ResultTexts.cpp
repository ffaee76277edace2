// SPDX-License-Identifier: GPL-3.0-or-later
#include "ResultTexts.h"

namespace ResultTexts {

QString resultMessage(int16_t result)
{
    switch (result) {
    case 1: return QStringLiteral("Registratore non collegato.");
    case 2: return QStringLiteral("Porta COM non aperta.");
    case 3: return QStringLiteral("Scaduto il timeout per avere la risposta completa dalla stampante (ricevuti sia ACK che STX...ETX mai arrivato).");
    case 4: return QStringLiteral("Ricevuta risposta con checksum errato.");
    case 5: return QStringLiteral("Non è stata impostata correttamente la proprietà EuroSettings.");
    case 6: return QStringLiteral("Il file grafico per la programmazione grafica non esiste.");
    case 7: return QStringLiteral("La stampante entro il timeout non ha inviato l'ACK di conferma dell'avvenuta ricezione della richiesta.");
    case 8: return QStringLiteral("La stampante ha risposto ACK, ma entro il timeout non ha cominciato ad inviare la risposta.");
    case 9: return QStringLiteral("E' stato richiesto alla stampante l'esecuzione di un metodo prima che la stampante termini di soddisfare un'altra richiesta.");
    default: return QString();
    }
}

QString errorDetail(int16_t errorCode)
{
    static const char *const details[] = {
        " FINE CARTA GIORNALE DI FONDO.", " FINE CARTA SCONTRINO.", " STAMPANTE OFFLINE.",
        " ERRORE 04.", " ERRORE 05.", " ERRORE 06.", " SLIP KO.", " TASTO ERRATO.",
        " DATA INFERIORE.", " DATA ERRATA.", " SEQUENZA ERRATA.", " DATI INESISTENTI.",
        " VALORE ERRATO.", " PROGRAMMAZIONE MATRICOLA.", " GIA ESISTENTE.", " NON PREVISTO.",
        " IMPOSSIBILE ORA.", " NON POSSIBILE.", " SCRITTA INVALIDA.", " SUPERA VALORE.",
        " SUPERA LIMITE.", " NON PROGRAMMATO.", " CHIUDERE LO SCONTRINO.", " CHIUDERE IL PAGAMENTO.",
        " MANCA L'OPERATORE.", " CASSA INFERIORE.", " OLTRE PROGRAMMAZIONE.", " NON COLLEGATO.",
        " MANCA MODULO.", " CHECKSUM ERRATO.", " DATI INESISTENTI PC.",
    };
    if (errorCode < 1 || errorCode > 31)
        return QString();
    return QString::fromUtf8(details[errorCode - 1]);
}

QString printerRefusal(int16_t errorCode)
{
    return QStringLiteral("Errore del registratore di cassa:") + errorDetail(errorCode);
}

StateText printerStatusDigit(int group, int digit)
{
    const StateText unknown{QStringLiteral("Indeterminato"), StateColour::Blue};
    auto black = [](const char *t) { return StateText{QString::fromUtf8(t), StateColour::Black}; };
    auto red = [](const char *t) { return StateText{QString::fromUtf8(t), StateColour::Red}; };
    switch (group) {
    case 0: // paper; 1 has no entry of its own
        switch (digit) {
        case 0: return black("Carta presente");
        case 2: return red("Carta scontrino");
        case 3: return red("Stampante offline");
        }
        break;
    case 1: // electronic journal
        switch (digit) {
        case 0: return black("Funzionante");
        case 1: return red("In esaurimento");
        case 2: return red("da formattare");
        case 3: return red("Precedente");
        case 4: return red("di altro MF");
        case 5: return red("ESAURITO");
        }
        break;
    case 2: // drawer
        switch (digit) {
        case 0: return black("Cassetto aperto");
        case 1: return black("Cassetto chiuso");
        }
        break;
    case 3: // receipt
        switch (digit) {
        case 0: return black("Sc. Fisc. Aperto");
        case 1: return black("Scontrino chiuso");
        case 2: return black("Sc. Non Fisc. Aperto");
        case 3: return black("Pagamento in corso");
        case 4: return black("ERRORE ESC/POS");
        }
        break;
    }
    return unknown;
}

std::optional<StateText> dgfeState(int state)
{
    switch (state) {
    case 0: return StateText{QStringLiteral("OK"), StateColour::Black};
    case 1: return StateText{QStringLiteral("In esaurimento"), StateColour::Red};
    case 2: return StateText{QStringLiteral("Da formattare"), StateColour::Red};
    case 3: return StateText{QStringLiteral("Di un'altra stampante"), StateColour::Red};
    case 4: return StateText{QStringLiteral("DGFE pieno"), StateColour::Red};
    default: return std::nullopt;
    }
}

}
