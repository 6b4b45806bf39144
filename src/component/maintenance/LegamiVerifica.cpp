#include "component/maintenance/LegamiVerifica.h"

#include "component/maintenance/IstruzioniVerifica.h"
#include "component/shared/MODQZ_DISTINTA.h"
#include "contract/Snapshot.h"

#include <algorithm>
#include <string_view>

namespace qz {

namespace {

using contract::Column;

std::int32_t giorno(const Column& colonna, std::size_t riga) {
    const contract::Value valore = colonna.value(riga);
    if (valore.isMissing())
        return LegameVerifica::giornoManca;
    const auto data = valore.date();
    return data ? data->days() : LegameVerifica::giornoIlleggibile;
}

int cifra(char c) {
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    return c >= 'A' && c <= 'F' ? c - 'A' + 10 : -1;
}

char maiuscola(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

/// For what only stands where a GUID should.
void chiaveDiTesto(std::string_view testo, ChiaveGuid& chiave) {
    chiave.alta = 14695981039346656037ULL;
    chiave.bassa = 1099511628211ULL;
    for (const char c : testo) {
        const auto lettera = static_cast<unsigned char>(maiuscola(c));
        chiave.alta = (chiave.alta ^ lettera) * 1099511628211ULL;
        chiave.bassa = (chiave.bassa + lettera) * 6364136223846793005ULL + 1442695040888963407ULL;
    }
}

ChiaveGuid chiaveDi(std::string_view testo, std::size_t posizione) {
    ChiaveGuid chiave;
    chiave.posizione = static_cast<std::uint32_t>(posizione);
    if (testo.size() > 2 && testo.front() == '{' && testo.back() == '}')
        testo = testo.substr(1, testo.size() - 2);
    int cifre = 0;
    for (const char c : testo) {
        const int valore = cifra(c);
        if (valore < 0 && c != '-')
            cifre = 100;
        if (valore < 0)
            continue;
        chiave.alta = chiave.alta << 4 | chiave.bassa >> 60;
        chiave.bassa = chiave.bassa << 4 | static_cast<std::uint64_t>(valore);
        ++cifre;
    }
    if (cifre != 32)
        chiaveDiTesto(testo, chiave);
    return chiave;
}

/// Positions of rows by their ids: a table where the ids lie close together, else a search among sorted ones.
class PosizioniPerId {
public:
    explicit PosizioniPerId(const std::vector<LegameVerifica>& righe) : righe_(righe) {
        if (righe.empty())
            return;
        primo_ = righe.front().id;
        const auto ampiezza = static_cast<std::uint64_t>(righe.back().id) - static_cast<std::uint64_t>(primo_);
        if (ampiezza / 4 > righe.size())
            return;
        tavola_.assign(ampiezza + 1, LegameVerifica::nessuno);
        for (std::size_t i = 0; i < righe.size(); ++i)
            tavola_[static_cast<std::size_t>(righe[i].id - primo_)] = static_cast<std::uint32_t>(i);
    }

    std::uint32_t di(std::int64_t id) const {
        if (!tavola_.empty()) {
            const auto posto = static_cast<std::uint64_t>(id) - static_cast<std::uint64_t>(primo_);
            return id >= primo_ && posto < tavola_.size() ? tavola_[posto] : LegameVerifica::nessuno;
        }
        const auto trovata = std::lower_bound(righe_.begin(), righe_.end(), id,
                                              [](const LegameVerifica& riga, std::int64_t i) { return riga.id < i; });
        return trovata != righe_.end() && trovata->id == id ? static_cast<std::uint32_t>(trovata - righe_.begin())
                                                            : LegameVerifica::nessuno;
    }

private:
    const std::vector<LegameVerifica>& righe_;
    std::vector<std::uint32_t> tavola_;
    std::int64_t primo_ = 0;
};

void leggiNumeri(const contract::Snapshot& letti, std::vector<LegameVerifica>& righe) {
    const auto numero = [&](colonna::Numero quale, std::size_t riga) {
        return letti.column(quale).integer(riga).value_or(LegameVerifica::manca);
    };
    for (std::size_t i = 0; i < righe.size(); ++i) {
        LegameVerifica& riga = righe[i];
        riga.id = numero(colonna::id, i);
        riga.distinta = numero(colonna::distinta, i);
        riga.padre = numero(colonna::padre, i);
        riga.ditta = numero(colonna::ditta, i);
        riga.tipo = numero(colonna::tipo, i);
        riga.account = numero(colonna::account, i);
        riga.inizio = giorno(letti.column(colonna::inizio), i);
        riga.fine = giorno(letti.column(colonna::fine), i);
        riga.posizionePadre = static_cast<std::uint32_t>(i); // where it was read, until the rows are in order
    }
}

} // namespace

LegamiVerifica leggiLegami(contract::Connection& database) {
    contract::Snapshot letti;
    database.Read(istruzioneTuttiILegami(), letti);
    LegamiVerifica legami;
    legami.righe.resize(letti.rowCount());
    leggiNumeri(letti, legami.righe);
    const auto perId = [](const LegameVerifica& a, const LegameVerifica& b) { return a.id < b.id; };
    // A database gives them by id, as a rule.
    if (!std::is_sorted(legami.righe.begin(), legami.righe.end(), perId))
        std::sort(legami.righe.begin(), legami.righe.end(), perId);
    legami.guid.reserve(legami.righe.size());
    const PosizioniPerId posizioni(legami.righe);
    for (std::size_t i = 0; i < legami.righe.size(); ++i) {
        LegameVerifica& riga = legami.righe[i];
        const auto guid = senzaBlanks(letti.column(colonna::guid).text(riga.posizionePadre));
        riga.senzaGuid = guid.empty();
        if (!guid.empty())
            legami.guid.push_back(chiaveDi(guid, i));
        riga.posizionePadre = riga.radice() ? LegameVerifica::nessuno : posizioni.di(riga.padre);
    }
    return legami;
}

} // namespace qz
