#include "component/interaction/Livelli.h"

#include "component/data/CaricaDistinta.h"
#include "component/shared/MODQZ_DISTINTA.h"

#include <string>

namespace qz {

namespace {

constexpr std::string_view comprimi = "COMPRIMI";

bool modoComprimi(const Lato& lato) {
    std::string didascalia(senzaBlanksFinali(lato.livelli->caption()));
    didascalia.resize(std::min(didascalia.size(), comprimi.size()));
    for (char& c : didascalia)
        if (c >= 'a' && c <= 'z')
            c = static_cast<char>(c - 'a' + 'A');
    return didascalia == comprimi;
}

/// Steps of a caller that traps no errors: they just run.
constexpr auto senzaTrappola = [](auto&& azione) { azione(); };

template <class Passo> void impostaLivello(Passo& passo, Lato& lato, int livello, bool aperto) {
    const CursoreSulFuoco cursore(lato);
    SospensioneAlbero sospensione(*lato.albero);
    passo([&] { sospensione.sospendi(); });
    lato.dati->MoveFirst();
    auto nodo = lato.albero->firstNode();
    for (auto visite = lato.dati->RecordCount(); visite > 0 && nodo; --visite) {
        if (lato.albero->level(nodo) == livello)
            passo([&] { lato.albero->setExpanded(nodo, aperto); });
        nodo = lato.albero->next(nodo);
    }
    passo([&] { sospensione.riprendi(); });
}

template <class Passo> void espandi(Passo& passo, Lato& lato) {
    if (lato.vuoto())
        return;
    impostaLivello(passo, lato, lato.LivelloCorrente, true);
    ++lato.LivelloCorrente;
}

template <class Passo> void comprimiLivello(Passo& passo, Lato& lato) {
    if (lato.vuoto())
        return;
    impostaLivello(passo, lato, lato.LivelloCorrente - 1, false);
    --lato.LivelloCorrente;
}

void scriviDidascalia(Lato& lato, bool modo) {
    if (modo)
        scriviDidascaliaLivello(lato, lato.LivelloCorrente >= 1);
    else
        scriviDidascaliaLivello(lato, lato.LivelloCorrente >= lato.LivelloMax);
}

template <class Passo> void unLivello(Passo& passo, Lato& lato, bool modo) {
    if (modo)
        comprimiLivello(passo, lato);
    else
        espandi(passo, lato);
    passo([&] { scriviDidascalia(lato, modo); });
}

} // namespace

void EspandiLivello(Lato& lato) {
    espandi(senzaTrappola, lato);
}

void ComprimiLivello(Lato& lato) {
    comprimiLivello(senzaTrappola, lato);
}

void AggiornaDidascaliaLivello(Lato& lato) {
    scriviDidascalia(lato, modoComprimi(lato));
}

void AggiornaLivello(Lato& lato) {
    if (lato.vuoto())
        return;
    unLivello(senzaTrappola, lato, modoComprimi(lato));
}

void CMD_ESPANDICOLLASSA_ButtonClick(StatoForm& stato, Lato& lato) {
    const auto* nome =
        lato.descrizione.destinazione ? "CMD_ESPANDICOLLASSADEST_ButtonClick" : "CMD_ESPANDICOLLASSAORIG_ButtonClick";
    stato.procedura(nome, [&](auto& passo) {
        if (lato.vuoto())
            return;
        bool modo = false;
        passo([&] { modo = modoComprimi(lato); });
        passo([&] { stato.form->processEvents(); });
        unLivello(passo, lato, modo);
    });
}

} // namespace qz
