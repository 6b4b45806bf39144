#include "component/maintenance/Verifica.h"

#include "contract/Date.h"

#include <string>

namespace qz {

namespace {

constexpr std::int64_t clienti = 0;

std::string giorno(std::int32_t giorni) {
    const auto data = contract::Date::fromDays(giorni);
    return data ? data->text() : std::string();
}

std::string periodo(const LegameVerifica& legame) {
    return "dal " + giorno(legame.inizio) + " al " + giorno(legame.fine);
}

/// The sentences of the findings, one function a group of rules.
class Testi {
public:
    Testi(const EsitoVerifica& esito, const Rilievo& rilievo)
        : esito_(esito), rilievo_(rilievo), legame_(esito.righe[rilievo.legame]) {}

    std::string testo() const {
        switch (rilievo_.regola) {
        case Regola::padreInesistente:
            return "Il padre, nodo " + std::to_string(legame_.padre) + ", non esiste.";
        case Regola::padreAltrove:
            return "Il padre, nodo " + std::to_string(altro().id) + ", sta " + luogo(altro()) + ".";
        case Regola::anello:
            return "Risalendo di padre in padre si torna al nodo stesso.";
        case Regola::irraggiungibile:
            return "Nessun capostipite arriva al nodo: più in alto c'è un anello o un padre inesistente.";
        case Regola::legameDoppio:
            return "Il conto sta due volte sotto lo stesso padre: " + periodo(legame_) + ", e " + periodo(altro()) +
                   " con il nodo " + std::to_string(altro().id) + ".";
        case Regola::sovrapposizione:
            return "Il periodo " + periodo(legame_) + " si sovrappone a quello del nodo " + std::to_string(altro().id) +
                   " nella " + nomeDistinta(altro().distinta) + ", " + periodo(altro()) + ".";
        case Regola::periodoRovesciato:
            return "Il periodo finisce il " + giorno(legame_.fine) + ", prima di cominciare il " +
                   giorno(legame_.inizio) + ".";
        case Regola::dataErrata:
            return testoDate();
        case Regola::tipoErrato:
            return testoTipo();
        case Regola::guidDoppio:
            return "Lo stesso GUID ha anche il nodo " + std::to_string(altro().id) +
                   (altro().ditta == legame_.ditta ? std::string() : " dell'azienda " + numero(altro().ditta)) + ".";
        case Regola::fuoriDalPadre:
            return "Il periodo " + periodo(legame_) + " esce da quello del padre, " + periodo(altro()) + ".";
        case Regola::senzaAnagrafica:
            return "Il conto " + std::to_string(legame_.account) + " non ha un'anagrafica.";
        case Regola::guidMancante:
            return "Il nodo non ha un GUID.";
        case Regola::intervallo:
            return "Il conto non ha legami dal " + giorno(altro().fine + 1) + " al " + giorno(legame_.inizio - 1) + ".";
        case Regola::statoSconosciuto:
            break; // about no link
        }
        return {};
    }

private:
    const LegameVerifica& altro() const { return esito_.righe[static_cast<std::size_t>(rilievo_.altro)]; }

    static std::string numero(std::int64_t valore) {
        return valore == LegameVerifica::manca ? "senza numero" : std::to_string(valore);
    }

    std::string nomeDistinta(std::int64_t distinta) const {
        const auto trovata = esito_.distinte.find(distinta);
        if (trovata != esito_.distinte.end() && trovata->second.codice)
            return "distinta " + *trovata->second.codice;
        return "distinta " + numero(distinta);
    }

    std::string luogo(const LegameVerifica& padre) const {
        if (padre.ditta != legame_.ditta)
            return "nell'azienda " + numero(padre.ditta);
        return "nella " + nomeDistinta(padre.distinta);
    }

    static std::string testoData(std::string_view quale, std::int32_t giorni) {
        const std::string data(quale);
        if (giorni == LegameVerifica::giornoManca)
            return "manca la data di " + data;
        if (giorni == LegameVerifica::giornoIlleggibile)
            return "la data di " + data + " non è un giorno del calendario";
        if (giorni < contract::Date().days())
            return "la data di " + data + ", " + giorno(giorni) + ", è prima del " + contract::Date().text();
        return {};
    }

    std::string testoDate() const {
        std::string testo = testoData("inizio", legame_.inizio);
        const std::string fine = testoData("fine", legame_.fine);
        if (!testo.empty() && !fine.empty())
            testo += ", ";
        testo += fine + ".";
        testo.front() = testo.front() == 'm' ? 'M' : 'L';
        return testo;
    }

    std::string testoTipo() const {
        if (legame_.distinta == LegameVerifica::manca)
            return "Il nodo non sta in nessuna distinta.";
        const auto trovata = esito_.distinte.find(legame_.distinta);
        if (trovata == esito_.distinte.end())
            return "La distinta " + std::to_string(legame_.distinta) + " del nodo non esiste.";
        if (trovata->second.ditta != legame_.ditta)
            return "La " + nomeDistinta(legame_.distinta) + " del nodo è dell'azienda " +
                   numero(trovata->second.ditta) + ".";
        const bool cliente = legame_.tipo == clienti;
        return std::string(cliente ? "Un cliente" : "Un fornitore") + " sta nella " + nomeDistinta(legame_.distinta) +
               (cliente ? ", che è di fornitori." : ", che è di clienti.");
    }

    const EsitoVerifica& esito_;
    const Rilievo& rilievo_;
    const LegameVerifica& legame_;
};

std::optional<std::int64_t> facoltativo(std::int64_t valore) {
    return valore == LegameVerifica::manca ? std::nullopt : std::optional(valore);
}

} // namespace

contract::AuditFinding composto(const EsitoVerifica& esito, const Rilievo& rilievo) {
    contract::AuditFinding composto;
    composto.rule = static_cast<std::size_t>(rilievo.regola);
    if (rilievo.legame == LegameVerifica::nessuno) {
        composto.text =
            "I parametri dei legami indicano lo stato " + std::to_string(rilievo.altro) + ", che non esiste.";
        return composto;
    }
    const LegameVerifica& legame = esito.righe[rilievo.legame];
    composto.type = facoltativo(legame.distinta);
    if (const auto distinta = esito.distinte.find(legame.distinta); distinta != esito.distinte.end())
        composto.typeCode = distinta->second.codice.value_or("");
    composto.node = legame.id;
    composto.account = facoltativo(legame.account);
    composto.name = esito.anagrafiche.nome(legame.tipo, legame.account);
    composto.text = Testi(esito, rilievo).testo();
    return composto;
}

} // namespace qz
