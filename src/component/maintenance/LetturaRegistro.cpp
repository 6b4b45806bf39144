#include "component/maintenance/LetturaRegistro.h"

#include "component/maintenance/IstruzioniRegistro.h"
#include "component/maintenance/ValoriRegistro.h"
#include "component/shared/MODQZ_DISTINTA.h"
#include "contract/Recordset.h"
#include "contract/RuntimeError.h"

namespace qz {

namespace {

std::string testo(const contract::Recordset& record, std::string_view campo) {
    return std::string(senzaBlanks(record[campo].text()));
}

contract::Operation operazioneDelRecord(const contract::Recordset& record) {
    contract::Operation operazione;
    operazione.id = numeroObbligatorio(record, "QZ90_ID");
    if (const auto giorno = record["QZ90_DATA"].date())
        operazione.day = *giorno;
    operazione.time = testo(record, "QZ90_ORA");
    operazione.user = testo(record, "QZ90_UTENTE");
    operazione.group = testo(record, "QZ90_GRUPPO");
    operazione.kind = tipoDelTesto(testo(record, "QZ90_TIPO"));
    operazione.description = testo(record, "QZ90_DESCR");
    operazione.rows = numeroFacoltativo(record, "QZ90_RIGHE").value_or(0);
    operazione.undoes = numeroFacoltativo(record, "QZ90_ID_QZ90");
    operazione.undoneBy = numeroFacoltativo(record, "ANNULLATADA");
    return operazione;
}

} // namespace

std::vector<contract::Operation> leggiOperazioni(contract::Connection& database, std::int64_t ditta,
                                                 const contract::OperationFilter& filtro) {
    contract::Recordset righe;
    righe.Open(istruzioneOperazioni(ditta, filtro), database);
    std::vector<contract::Operation> operazioni;
    operazioni.reserve(righe.RecordCount());
    for (; !righe.Eof(); righe.MoveNext())
        operazioni.push_back(operazioneDelRecord(righe));
    return operazioni;
}

contract::Operation leggiOperazione(contract::Connection& database, std::int64_t ditta, std::int64_t operazione) {
    contract::Recordset riga;
    riga.Open(istruzioneOperazione(ditta, operazione), database);
    if (riga.Empty())
        throw contract::RuntimeError(contract::RuntimeError::invalidCall,
                                     "Il registro degli spostamenti non contiene l'operazione " +
                                         std::to_string(operazione) + ".");
    return operazioneDelRecord(riga);
}

std::vector<RigaRegistrata> leggiRigheOperazione(contract::Connection& database, std::int64_t operazione) {
    contract::Recordset record;
    record.Open(istruzioneRigheOperazione(operazione), database);
    std::vector<RigaRegistrata> righe;
    righe.reserve(record.RecordCount());
    for (; !record.Eof(); record.MoveNext()) {
        RigaRegistrata letta;
        letta.riga.row = numeroObbligatorio(record, "QZ91_RIGA");
        letta.riga.id = numeroObbligatorio(record, "QZ91_ID_QZ02");
        letta.riga.account = numeroFacoltativo(record, "QZ91_CLIFOR_CG44");
        letta.riga.outcome = esitoDelTesto(testo(record, "QZ91_ESITO"));
        letta.riga.reason = testo(record, "QZ91_MOTIVO");
        letta.riga.before = valoriDelTesto(record["QZ91_PRIMA"].text());
        letta.riga.after = valoriDelTesto(record["QZ91_DOPO"].text());
        letta.ostacoli = numeroFacoltativo(record, "QZ91_OSTACOLI").value_or(0);
        righe.push_back(std::move(letta));
    }
    return righe;
}

} // namespace qz
