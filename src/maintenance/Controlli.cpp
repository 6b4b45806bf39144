#include "maintenance/Controlli.h"

#include "form/shared/MODQZ_DISTINTA.h"

#include <set>

namespace qz {

namespace {

constexpr std::string_view legameInUnPadre = ": legame presente in un nodo padre nella struttura.\n";

/// Same account; a missing one equals nothing, not even another missing one.
bool stessoAccount(const contract::Value& a, const contract::Value& b) {
    const auto codiceA = a.integer();
    return codiceA && codiceA == b.integer();
}

} // namespace

std::string Controlli::etichetta(const contract::Value& account) const {
    return (stato_.origine.TipoCF == 0 ? "Cliente " : "Fornitore ") + account.text();
}

std::int64_t Controlli::ContaNodiDitta() {
    contract::Recordset conta;
    // Counted on the origin, although the walk that it bounds runs in the destination.
    conta.Open(istruzioneContaDitta(stato_.ditta(), stato_.origine.IdDistinta), stato_.database());
    return conta["Conta"].integer().value_or(0) + 1;
}

void Controlli::AccodaPadri(const contract::Recordset& padri, CodaLimitata<contract::Value>& coda) const {
    const auto campo = padri.FieldIndex("Anagrafica");
    for (std::size_t riga = 0; riga < padri.RecordCount(); ++riga)
        coda.accoda(padri.rows().column(campo).value(riga));
}

void Controlli::ControllaRicorsione(const contract::Value& a, const contract::Value& b) {
    if (stessoAccount(a, b)) {
        stato_.MessaggioSpostamento += etichetta(a) + " coincide con la destinazione. Spostamento annullato.\n";
        return;
    }
    const auto limite = ContaNodiDitta();
    CodaLimitata<contract::Value> coda(limite);
    contract::Value corrente = b;
    while (coda.testa <= coda.coda()) {
        if (coda.testa >= limite)
            return;
        // A root link among an account's links yields a missing account, which has no links of its own.
        if (const auto account = corrente.integer()) {
            contract::Recordset padri;
            padri.Open(
                istruzionePadri(stato_.ditta(), *account, stato_.destinazione.TipoCF, stato_.destinazione.IdDistinta),
                stato_.database());
            if (!padri.Empty()) {
                // Only the first row is compared; the others are looked at when their turn comes.
                const auto padre = padri["Anagrafica"];
                if (stessoAccount(padre, a)) {
                    stato_.MessaggioSpostamento += etichetta(a) + std::string(legameInUnPadre);
                    return;
                }
                if (!padre.isMissing())
                    AccodaPadri(padri, coda);
            }
        }
        ++coda.testa;
        if (const auto* prossimo = coda.inTesta())
            corrente = *prossimo;
    }
}

void Controlli::ControllaDiscendenza(std::int64_t idNodo, const contract::Value& account, std::int64_t idDestinazione) {
    std::set<std::int64_t> visti;
    for (std::int64_t corrente = idDestinazione; visti.insert(corrente).second;) {
        if (corrente == idNodo) {
            stato_.MessaggioSpostamento += etichetta(account) + std::string(legameInUnPadre);
            return;
        }
        contract::Recordset nodo;
        nodo.Open(istruzioneNodo(stato_.ditta(), corrente), stato_.database());
        const auto padre = nodo.Empty() ? std::nullopt : nodo["QZ02_IDPARENT_QZ02"].integer();
        if (!padre)
            return;
        corrente = *padre;
    }
}

PadreDecodificato Controlli::DecodificaPadre(std::int64_t idNodo, std::optional<contract::Date> inizio) {
    contract::Recordset nodo;
    nodo.Open(istruzioneDecodificaPadre(idNodo, inizio), stato_.database());
    if (nodo.Eof() || nodo.Bof())
        return {};
    return {nodo["ID"].integer().value_or(0), nodo["CODICE"]};
}

bool Controlli::ControllaLegami(const LegameDaControllare& legame) {
    contract::Recordset padre;
    padre.Open(istruzioneNodo(stato_.ditta(), legame.idPadre.integer().value_or(0)), stato_.database());
    const auto accountPadre = padre.Empty() ? contract::Value::null() : padre["QZ02_CLIFOR_CG44"];

    contract::Recordset sovrapposti;
    sovrapposti.Open(
        istruzioneSovrapposti({legame.ditta, legame.tipoCF, legame.account, legame.inizio, legame.fine, legame.nodo}),
        stato_.database());
    // An overlapping root link hangs under no parent, so it has no distinta here, and is not reported.
    if (!sovrapposti.Empty() && !sovrapposti["CodDistinta"].isNull()) {
        stato_.MessaggioSpostamento += etichetta(legame.account) + " già legato alla distinta " +
                                       sovrapposti["CodDistinta"].text() + ": Nodo padre " +
                                       std::string(senzaBlanks(sovrapposti["Anagrafica"].text())) + " - " +
                                       sovrapposti["RAGSOC"].text() + " nel periodo dal " +
                                       sovrapposti["DataI"].text() + " al " + sovrapposti["DataF"].text() + "\n";
        return false;
    }
    if (stessoAccount(accountPadre, legame.account)) {
        stato_.MessaggioSpostamento +=
            etichetta(legame.account) + " uguale al nodo padre, non è possibile salvare la struttura.\n";
        return false;
    }
    return !legame.nodo || !PremioDefinitivo(*legame.nodo, true, legame.fine);
}

bool Controlli::PremioDefinitivo(std::int64_t idNodo, bool dataFine, std::string_view data) {
    contract::Recordset premio;
    premio.Open(istruzionePremio(stato_.ditta(), idNodo, dataFine ? std::optional(data) : std::nullopt),
                stato_.database());
    if (premio.Empty())
        return false;
    stato_.MessaggioSpostamento =
        dataFine ? std::string_view("La data fine è inferiore alla data scadenza di un premio definitivo")
                 : dataInizioBloccata;
    return true;
}

} // namespace qz
