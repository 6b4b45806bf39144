#include "component/maintenance/PercorsiVerifica.h"

namespace qz {

namespace {

/// The way of a link whose parent's way is known.
Percorso sotto(Percorso padre) {
    return padre == Percorso::radice ? Percorso::radice : Percorso::senzaRadice;
}

} // namespace

std::vector<Percorso> percorsiDi(const std::vector<LegameVerifica>& righe) {
    std::vector<Percorso> percorsi(righe.size(), Percorso::ignoto);
    std::vector<std::uint32_t> salita;
    for (std::uint32_t partenza = 0; partenza < righe.size(); ++partenza) {
        salita.clear();
        std::uint32_t qui = partenza;
        while (percorsi[qui] == Percorso::ignoto) {
            if (righe[qui].radice())
                percorsi[qui] = Percorso::radice;
            else if (righe[qui].orfano())
                percorsi[qui] = Percorso::orfano;
            else {
                percorsi[qui] = Percorso::inCorso;
                salita.push_back(qui);
                qui = righe[qui].posizionePadre;
            }
        }
        // Back on the way itself: what was passed since then is a cycle.
        if (percorsi[qui] == Percorso::inCorso)
            while (percorsi[qui] == Percorso::inCorso) {
                percorsi[salita.back()] = Percorso::anello;
                salita.pop_back();
            }
        Percorso padre = percorsi[qui];
        for (; !salita.empty(); salita.pop_back()) {
            padre = sotto(padre);
            percorsi[salita.back()] = padre;
        }
    }
    return percorsi;
}

} // namespace qz
