#include "component/shared/FormBase.h"

#include "component/shared/MODQZ_DISTINTA.h"

#include <algorithm>

namespace qz {

int FormBase::VisualizzaErrore(std::string_view procedura, const contract::RuntimeError& errore) noexcept {
    int risposta = contract::message::answerAbort;
    try {
        mostra(procedura, errore, risposta);
    } catch (const std::exception&) {
        // Showing failed as well, which is so when there is no log class: the answer stays what it was.
        return risposta;
    }
    return risposta;
}

bool FormBase::connessionePersa(const contract::RuntimeError& errore) const {
    if (!connessione || errore.number() != contract::RuntimeError::database)
        return false;
    const auto& errori = connessione->Errors();
    return std::any_of(errori.begin(), errori.end(), [](const contract::DatabaseErrorRecord& record) {
        return record.category == contract::ErrorCategory::lostConnection;
    });
}

int FormBase::risposta(std::string_view procedura, const contract::RuntimeError& errore) noexcept {
    const bool persa = connessionePersa(errore);
    if (persa && *rispostaPerdita)
        return **rispostaPerdita;
    const int data = VisualizzaErrore(procedura, errore);
    if (persa && data != contract::message::answerRetry)
        *rispostaPerdita = data;
    return data;
}

void FormBase::mostra(std::string_view procedura, const contract::RuntimeError& errore, int& risposta) {
    if (!classeLog) {
        risposta = contract::message::answerAbort;
        messaggio("Classe Log non settata", contract::message::ok);
        return;
    }
    classeLog->vbError(errore);
    if (connessione)
        classeLog->ADOError(connessione->Errors());
    risposta = classeLog->ShowError(nomeApplicazione, didascalia(), procedura, contract::message::errorDisplay);
}

contract::Value FormBase::ValoreODefault(const contract::Value& valore, const contract::Value& predefinito) {
    if (valore.isMissing())
        return predefinito;
    if (const auto* testo = valore.as<std::string>(); testo && senzaBlanks(*testo).empty())
        return predefinito;
    return valore;
}

contract::Connection& FormBase::database() const {
    if (!connessione)
        throw contract::RuntimeError(contract::RuntimeError::objectNotSet, "Connessione non impostata.");
    return *connessione;
}

void FormBase::creaClasseLog(Passo& passo, contract::Cinterface* ospite) {
    passo([&] {
        if (ospite == nullptr)
            throw contract::RuntimeError(contract::RuntimeError::objectNotSet,
                                         "Interfaccia dell'ospite non impostata.");
        classeLog = presente(ospite->ClsGlobal()).newLogClass();
    });
    passo([&] { presente(classeLog).setInterface(ospite); });
}

int FormBase::messaggio(std::string_view testo, int stile, std::string_view dettaglio) {
    auto& log = presente(classeLog);
    if (!dettaglio.empty())
        log.setDetail(dettaglio);
    return log.ShowMessage(didascalia(), testo, stile);
}

} // namespace qz
