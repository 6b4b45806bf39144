#include "component/maintenance/Verifica.h"

#include "component/maintenance/GruppiVerifica.h"
#include "component/maintenance/IstruzioniVerifica.h"
#include "component/maintenance/PercorsiVerifica.h"
#include "contract/TypedDate.h"

#include <algorithm>
#include <tuple>
#include <utility>

namespace qz {

namespace {

/// Tells how far the audit is, and gives the user a chance to end it: not more often than every so many rows.
class Passi {
public:
    Passi(contract::Progress& avanzamento, std::size_t righe) : avanzamento_(avanzamento), righe_(righe) {}
    void inizia(std::string_view passo) {
        passo_ = passo;
        avanzamento_.reached(passo_, 0, righe_);
    }
    void fatta(std::size_t riga) {
        constexpr std::size_t ogni = 65536;
        if (riga % ogni == ogni - 1)
            avanzamento_.reached(passo_, riga + 1, righe_);
    }

private:
    contract::Progress& avanzamento_;
    std::size_t righe_;
    std::string_view passo_;
};

class Verifica {
public:
    Verifica(contract::Connection& database, std::int64_t ditta, contract::Progress& avanzamento)
        : database_(database), ditta_(ditta), avanzamento_(avanzamento) {}

    EsitoVerifica esegui() {
        avanzamento_.reached("Lettura dei legami", 0, std::nullopt);
        auto legami = leggiLegami(database_);
        esito_.righe = std::move(legami.righe);
        leggiDistinte();
        avanzamento_.reached("Lettura delle anagrafiche", 0, std::nullopt);
        contract::Snapshot nomi;
        database_.Read(istruzioneAnagrafiche(ditta_), nomi);
        esito_.anagrafiche = Anagrafiche(std::move(nomi));

        percorsi_ = percorsiDi(esito_.righe);
        cercaPerRiga();
        cercaPerConto();
        cercaGuidDoppi(legami.guid);
        cercaStato();
        ordina();
        return std::move(esito_);
    }

private:
    void leggiDistinte() {
        contract::Snapshot lette;
        database_.Read(istruzioneTutteLeDistinte(), lette);
        for (std::size_t i = 0; i < lette.rowCount(); ++i) {
            const auto id = lette.column(0).integer(i);
            if (!id)
                continue;
            DistintaVerifica distinta;
            distinta.ditta = lette.column(1).integer(i).value_or(LegameVerifica::manca);
            if (!lette.column(2).isNull(i))
                distinta.codice = lette.column(2).value(i).text();
            distinta.tipo = lette.column(3).integer(i).value_or(LegameVerifica::manca);
            esito_.distinte.emplace(*id, std::move(distinta));
        }
    }

    const LegameVerifica& riga(std::uint32_t posizione) const { return esito_.righe[posizione]; }
    bool suAnello(std::uint32_t posizione) const { return percorsi_[posizione] == Percorso::anello; }

    /// The cycle alone is reported of its links.
    void trovato(Regola regola, std::uint32_t legame, std::int64_t altro = 0) {
        if (!suAnello(legame) || regola == Regola::anello)
            esito_.rilievi.push_back({regola, legame, altro});
    }

    // What a row, its parent and its distinta say.
    void cercaPerRiga() {
        Passi passi(avanzamento_, esito_.righe.size());
        passi.inizia("Controllo dei legami");
        for (std::size_t i = 0; i < esito_.righe.size(); ++i) {
            passi.fatta(i);
            if (esito_.righe[i].ditta != ditta_)
                continue;
            const auto posizione = static_cast<std::uint32_t>(i);
            cercaPercorso(posizione);
            cercaDate(posizione);
            cercaTipo(posizione);
            const LegameVerifica& legame = esito_.righe[i];
            if (legame.account != LegameVerifica::manca && !conAnagrafica(legame))
                trovato(Regola::senzaAnagrafica, posizione);
            if (legame.senzaGuid)
                trovato(Regola::guidMancante, posizione);
        }
    }

    bool conAnagrafica(const LegameVerifica& legame) const {
        return esito_.anagrafiche.contiene(legame.tipo, legame.account);
    }

    void cercaPercorso(std::uint32_t posizione) {
        if (percorsi_[posizione] == Percorso::anello)
            trovato(Regola::anello, posizione);
        else if (percorsi_[posizione] == Percorso::orfano)
            trovato(Regola::padreInesistente, posizione);
        else if (percorsi_[posizione] == Percorso::senzaRadice)
            trovato(Regola::irraggiungibile, posizione);
        const LegameVerifica& legame = riga(posizione);
        if (legame.posizionePadre == LegameVerifica::nessuno)
            return;
        const LegameVerifica& padre = riga(legame.posizionePadre);
        if (padre.distinta != legame.distinta || padre.ditta != legame.ditta)
            trovato(Regola::padreAltrove, posizione, legame.posizionePadre);
        else if (legame.haPeriodo() && padre.haPeriodo() && (legame.inizio < padre.inizio || legame.fine > padre.fine))
            trovato(Regola::fuoriDalPadre, posizione, legame.posizionePadre);
    }

    void cercaDate(std::uint32_t posizione) {
        const LegameVerifica& legame = riga(posizione);
        const std::int32_t primo = contract::Date().days(); // the first day that may be typed
        if (legame.inizio < primo || legame.fine < primo)
            trovato(Regola::dataErrata, posizione);
        if (legame.giorniLeggibili() && legame.fine < legame.inizio)
            trovato(Regola::periodoRovesciato, posizione);
    }

    void cercaTipo(std::uint32_t posizione) {
        const LegameVerifica& legame = riga(posizione);
        const auto distinta = esito_.distinte.find(legame.distinta);
        if (distinta == esito_.distinte.end() || distinta->second.ditta != legame.ditta ||
            distinta->second.tipo != legame.tipo)
            trovato(Regola::tipoErrato, posizione);
    }

    /// Whether a move's own check takes notice of a link: it hangs under a parent in a distinta that has a code.
    bool sottoUnPadre(std::uint32_t posizione) const {
        const auto padre = riga(posizione).posizionePadre;
        if (padre == LegameVerifica::nessuno)
            return false;
        const auto distinta = esito_.distinte.find(riga(padre).distinta);
        return distinta != esito_.distinte.end() && distinta->second.codice.has_value();
    }

    // What the links of one account say of each other.
    void cercaPerConto() {
        avanzamento_.reached("Controllo dei conti", 0, esito_.righe.size());
        const auto qui = [&](Regola regola) {
            return [this, regola](std::uint32_t legame, std::uint32_t altro) { trovato(regola, legame, altro); };
        };
        GruppiVerifica gruppi(esito_.righe, ditta_);
        gruppi.perOgnuno([&](std::span<const std::uint32_t> gruppo) {
            cercaSovrapposti(
                esito_.righe, gruppo, [this](std::uint32_t legame) { return sottoUnPadre(legame); },
                qui(Regola::sovrapposizione));
            cercaDoppi(esito_.righe, gruppo, qui(Regola::legameDoppio));
            cercaIntervalli(esito_.righe, gruppo, qui(Regola::intervallo));
        });
    }

    void cercaGuidDoppi(std::vector<ChiaveGuid>& guid) {
        avanzamento_.reached("Controllo dei GUID", 0, guid.size());
        std::sort(guid.begin(), guid.end(), [](const ChiaveGuid& a, const ChiaveGuid& b) {
            return std::tie(a.alta, a.bassa, a.posizione) < std::tie(b.alta, b.bassa, b.posizione);
        });
        for (std::size_t i = 0; i < guid.size(); ++i) {
            if (riga(guid[i].posizione).ditta != ditta_)
                continue;
            if (i > 0 && guid[i - 1].stessoGuid(guid[i]))
                trovato(Regola::guidDoppio, guid[i].posizione, guid[i - 1].posizione);
            else if (i + 1 < guid.size() && guid[i + 1].stessoGuid(guid[i]))
                trovato(Regola::guidDoppio, guid[i].posizione, guid[i + 1].posizione);
        }
    }

    // Number 0 names no state: new links bear it where none is wanted.
    void cercaStato() {
        contract::Snapshot parametri;
        database_.Read(istruzioneStatoNeiParametri(ditta_), parametri);
        for (std::size_t i = 0; i < parametri.rowCount(); ++i) {
            const auto stato = parametri.column(0).integer(i);
            if (stato && *stato != 0 && parametri.column(1).isNull(i))
                esito_.rilievi.push_back({Regola::statoSconosciuto, LegameVerifica::nessuno, *stato});
        }
    }

    void ordina() {
        // The rows stand by id, so that a row's position orders as its id does.
        std::stable_sort(esito_.rilievi.begin(), esito_.rilievi.end(), [this](const Rilievo& a, const Rilievo& b) {
            if (a.regola != b.regola)
                return a.regola < b.regola;
            if (a.legame == LegameVerifica::nessuno || b.legame == LegameVerifica::nessuno)
                return a.legame < b.legame;
            return std::tie(riga(a.legame).distinta, a.legame) < std::tie(riga(b.legame).distinta, b.legame);
        });
    }

    contract::Connection& database_;
    std::int64_t ditta_;
    contract::Progress& avanzamento_;
    EsitoVerifica esito_;
    std::vector<Percorso> percorsi_;
};

} // namespace

Anagrafiche::Anagrafiche(contract::Snapshot righe) : righe_(std::move(righe)) {
    chiavi_.reserve(righe_.rowCount());
    for (std::size_t i = 0; i < righe_.rowCount(); ++i) {
        const auto tipo = righe_.column(0).integer(i);
        const auto account = righe_.column(1).integer(i);
        if (tipo && account)
            chiavi_.push_back({*tipo, *account, static_cast<std::uint32_t>(i)});
    }
    if (!std::is_sorted(chiavi_.begin(), chiavi_.end()))
        std::sort(chiavi_.begin(), chiavi_.end());
}

std::optional<std::size_t> Anagrafiche::trova(std::int64_t tipo, std::int64_t account) const {
    const auto trovata = std::lower_bound(chiavi_.begin(), chiavi_.end(), Chiave{tipo, account, 0});
    if (trovata == chiavi_.end() || trovata->tipo != tipo || trovata->account != account)
        return std::nullopt;
    return trovata->riga;
}

std::string_view Anagrafiche::nome(std::int64_t tipo, std::int64_t account) const {
    const auto riga = trova(tipo, account);
    return riga ? righe_.column(2).text(*riga) : std::string_view();
}

EsitoVerifica verificaDistinte(contract::Connection& database, std::int64_t ditta, contract::Progress& avanzamento) {
    return Verifica(database, ditta, avanzamento).esegui();
}

} // namespace qz
