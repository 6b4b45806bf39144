#include "component/maintenance/LettureSingole.h"

#include "component/maintenance/IstruzioniControlli.h"
#include "component/maintenance/IstruzioniSpostamento.h"
#include "component/shared/FormBase.h"

namespace qz {

namespace {

std::int64_t conta(const contract::Statement& istruzione, contract::Connection& database) {
    contract::Recordset conta;
    conta.Open(istruzione, database);
    return numeroObbligatorio(conta, "Conta");
}

} // namespace

std::shared_ptr<const Facoltativi> facoltativiDelLegame(const contract::Recordset& record) {
    Facoltativi valori;
    bool presenti = false;
    static constexpr std::array<std::string_view, 5> campi{"QZ02_CLIFORFATT_CG44", "QZ02_TIPOANAGFATT",
                                                           "QZ02_IDSTRUTTURA_LP09", "QZ02_IDLOCALIZZATA_LP09",
                                                           "QZ02_INDEREPROMO"};
    for (std::size_t i = 0; i < campi.size(); ++i) {
        valori[i] = FormBase::ValoreODefault(record[campi[i]], contract::Value());
        presenti = presenti || !valori[i].isMissing();
    }
    return presenti ? std::make_shared<const Facoltativi>(std::move(valori)) : nullptr;
}

NodoLetto nodoLetto(const contract::Recordset& record) {
    return {obbligatorio<NodoId>(record, "QZ02_ID"),
            numeroFacoltativo(record, "QZ02_DITTA_CG18"),
            facoltativo<TipoCF>(record, "QZ02_TIPOCF_CG44"),
            facoltativo<CodiceAccount>(record, "QZ02_CLIFOR_CG44"),
            {facoltativo<DistintaId>(record, "QZ02_ID_QZ01"), facoltativo<NodoId>(record, "QZ02_IDPARENT_QZ02"),
             record["QZ02_DATAINIZIOVAL"].date(), record["QZ02_DATAFINEVAL"].date()},
            facoltativiDelLegame(record)};
}

std::int64_t LettureSingole::righe(DistintaId distinta) {
    return conta(istruzioneContaNodi(distinta), database_);
}

std::int64_t LettureSingole::righe(std::int64_t ditta, DistintaId distinta) {
    return conta(istruzioneContaDitta(ditta, distinta), database_);
}

std::optional<NodoLetto> LettureSingole::nodo(std::int64_t ditta, NodoId id) {
    contract::Recordset riga;
    riga.Open(istruzioneNodo(ditta, id), database_);
    return riga.Empty() ? std::nullopt : std::optional(nodoLetto(riga));
}

std::vector<NodoLetto> LettureSingole::figli(NodoId padre, DistintaId distinta) {
    contract::Recordset righe;
    righe.Open(istruzioneFigli(padre, distinta), database_);
    std::vector<NodoLetto> figli;
    figli.reserve(righe.RecordCount());
    for (; !righe.Eof(); righe.MoveNext())
        figli.push_back(nodoLetto(righe));
    return figli;
}

std::span<const std::optional<CodiceAccount>> LettureSingole::padri(const Soggetto& soggetto, DistintaId distinta) {
    contract::Recordset righe;
    righe.Open(istruzionePadri(soggetto, distinta), database_);
    padri_.clear();
    for (; !righe.Eof(); righe.MoveNext())
        padri_.push_back(facoltativo<CodiceAccount>(righe, "Anagrafica"));
    return padri_;
}

std::optional<PadreDecodificato> LettureSingole::sostituto(NodoId nodo, std::optional<contract::Date> inizio) {
    contract::Recordset riga;
    riga.Open(istruzioneDecodificaPadre(nodo, inizio), database_);
    if (riga.Eof() || riga.Bof())
        return std::nullopt;
    return PadreDecodificato{obbligatorio<NodoId>(riga, "ID"), facoltativo<CodiceAccount>(riga, "CODICE")};
}

std::optional<LegameSovrapposto> LettureSingole::sovrapposto(const Soggetto& soggetto, const Periodo& periodo,
                                                             std::optional<NodoId> escluso) {
    contract::Recordset righe;
    righe.Open(istruzioneSovrapposti(soggetto, periodo, escluso), database_);
    if (righe.Empty())
        return std::nullopt;
    return LegameSovrapposto{!righe["CodDistinta"].isNull(), righe["CodDistinta"].text(), righe["Anagrafica"].text(),
                             righe["RAGSOC"].text(),         righe["DataI"].text(),       righe["DataF"].text()};
}

bool LettureSingole::premioDefinitivo(std::int64_t ditta, NodoId nodo, std::optional<std::string_view> scadenzaDopo) {
    contract::Recordset premio;
    premio.Open(istruzionePremio(ditta, nodo, scadenzaDopo), database_);
    return !premio.Empty();
}

} // namespace qz
