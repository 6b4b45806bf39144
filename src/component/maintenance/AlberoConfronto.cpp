#include "component/maintenance/AlberoConfronto.h"

#include "component/maintenance/IstruzioniConfronto.h"

#include <algorithm>
#include <unordered_map>

namespace qz {

namespace {

enum Colonna : std::uint8_t { id, padre, account, inizio, fine, nomeConto };

std::int32_t giornoLetto(const contract::Column& colonna, std::size_t riga) {
    const auto data = colonna.value(riga).date();
    return data ? data->days() : LegameVerifica::giornoManca;
}

contract::Date giorno(std::int32_t giorni) {
    return contract::Date::fromDays(giorni).value_or(contract::Date());
}

} // namespace

AlberoConfronto::AlberoConfronto(contract::Connection& database, std::int64_t ditta,
                                 const contract::ComparedDistinta& distinta) {
    database.Read(istruzioneLegamiDistinta(ditta, distinta.kind, distinta.id), lette_);
    righe_.resize(lette_.rowCount());
    std::unordered_map<std::int64_t, std::uint32_t> posizioni;
    posizioni.reserve(righe_.size());
    for (std::size_t i = 0; i < righe_.size(); ++i) {
        LegameVerifica& riga = righe_[i];
        riga.id = lette_.column(id).integer(i).value_or(LegameVerifica::manca);
        riga.padre = lette_.column(padre).integer(i).value_or(LegameVerifica::manca);
        riga.account = lette_.column(account).integer(i).value_or(LegameVerifica::manca);
        riga.inizio = giornoLetto(lette_.column(inizio), i);
        riga.fine = giornoLetto(lette_.column(fine), i);
        posizioni.emplace(riga.id, static_cast<std::uint32_t>(i));
    }
    for (LegameVerifica& riga : righe_)
        if (const auto trovata = posizioni.find(riga.padre); trovata != posizioni.end())
            riga.posizionePadre = trovata->second;
    percorsi_ = percorsiDi(righe_);
}

std::vector<std::uint32_t> AlberoConfronto::valide(contract::Date giorno) const {
    std::vector<std::uint32_t> valide;
    for (std::size_t i = 0; i < righe_.size(); ++i)
        if (righe_[i].giorniLeggibili() && righe_[i].inizio <= giorno.days() && giorno.days() <= righe_[i].fine)
            valide.push_back(static_cast<std::uint32_t>(i));
    return valide;
}

std::vector<std::uint32_t> AlberoConfronto::valideNellAlbero(contract::Date giorno) const {
    // The children of a row, one after the other in the order in which they were read.
    std::vector<std::uint32_t> primo(righe_.size(), LegameVerifica::nessuno);
    std::vector<std::uint32_t> prossimo(righe_.size(), LegameVerifica::nessuno);
    std::vector<std::uint32_t> daVisitare;
    for (std::size_t i = righe_.size(); i-- > 0;) {
        const auto sopra = righe_[i].posizionePadre;
        if (sopra == LegameVerifica::nessuno) {
            daVisitare.push_back(static_cast<std::uint32_t>(i));
            continue;
        }
        prossimo[i] = primo[sopra];
        primo[sopra] = static_cast<std::uint32_t>(i);
    }
    std::vector<std::uint32_t> posto(righe_.size(), LegameVerifica::nessuno);
    std::vector<std::uint32_t> figli;
    for (std::uint32_t visitate = 0; !daVisitare.empty();) {
        const auto riga = daVisitare.back();
        daVisitare.pop_back();
        posto[riga] = visitate++;
        figli.clear();
        for (auto figlio = primo[riga]; figlio != LegameVerifica::nessuno; figlio = prossimo[figlio])
            figli.push_back(figlio);
        daVisitare.insert(daVisitare.end(), figli.rbegin(), figli.rend());
    }
    auto ordinate = valide(giorno);
    std::stable_sort(ordinate.begin(), ordinate.end(),
                     [&](std::uint32_t a, std::uint32_t b) { return posto[a] < posto[b]; });
    return ordinate;
}

std::int64_t AlberoConfronto::accountPadre(std::uint32_t riga) const {
    const auto sopra = righe_[riga].posizionePadre;
    return sopra == LegameVerifica::nessuno ? LegameVerifica::manca : righe_[sopra].account;
}

std::string AlberoConfronto::nome(std::uint32_t riga) const {
    return std::string(lette_.column(nomeConto).text(riga));
}

contract::ComparisonSide AlberoConfronto::lato(std::uint32_t riga) const {
    contract::ComparisonSide lato;
    lato.node = righe_[riga].id;
    if (const auto sopra = accountPadre(riga); sopra != LegameVerifica::manca)
        lato.parentAccount = sopra;
    lato.start = giorno(righe_[riga].inizio);
    lato.end = giorno(righe_[riga].fine);
    // A cycle has no root: its first link stands in the place of one.
    for (auto qui = riga; qui != LegameVerifica::nessuno; qui = righe_[qui].posizionePadre) {
        lato.path.push_back(righe_[qui].account);
        if (percorsi_[qui] == Percorso::anello)
            break;
    }
    std::reverse(lato.path.begin(), lato.path.end());
    return lato;
}

std::vector<contract::ComparedDistinta> distinteDaConfrontare(contract::Connection& database, std::int64_t ditta) {
    contract::Snapshot lette;
    database.Read(istruzioneDistinteDellaDitta(ditta), lette);
    std::vector<contract::ComparedDistinta> distinte;
    for (std::size_t i = 0; i < lette.rowCount(); ++i)
        distinte.push_back({lette.column(0).integer(i).value_or(0), lette.column(1).integer(i).value_or(0),
                            lette.column(2).value(i).text(), lette.column(3).value(i).text()});
    std::sort(distinte.begin(), distinte.end(), [](const auto& a, const auto& b) { return a.id < b.id; });
    return distinte;
}

} // namespace qz
