#include "interaction/Livelli.h"

#include "data/CaricaDistinta.h"
#include "form/shared/MODQZ_DISTINTA.h"

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

void impostaLivello(Lato& lato, int livello, bool aperto) {
    const CursoreSulFuoco cursore(lato);
    const SospensioneAlbero sospensione(*lato.albero);
    lato.dati->MoveFirst();
    auto nodo = lato.albero->firstNode();
    for (auto visite = lato.dati->RecordCount(); visite > 0 && nodo; --visite) {
        if (lato.albero->level(nodo) == livello)
            lato.albero->setExpanded(nodo, aperto);
        nodo = lato.albero->next(nodo);
    }
}

void scriviDidascalia(Lato& lato, bool modo) {
    if (modo)
        scriviDidascaliaLivello(lato, lato.LivelloCorrente >= 1);
    else
        scriviDidascaliaLivello(lato, lato.LivelloCorrente >= lato.LivelloMax);
}

void unPasso(Lato& lato, bool modo) {
    if (modo)
        ComprimiLivello(lato);
    else
        EspandiLivello(lato);
    scriviDidascalia(lato, modo);
}

} // namespace

void EspandiLivello(Lato& lato) {
    if (lato.vuoto())
        return;
    impostaLivello(lato, lato.LivelloCorrente, true);
    ++lato.LivelloCorrente;
}

void ComprimiLivello(Lato& lato) {
    if (lato.vuoto())
        return;
    impostaLivello(lato, lato.LivelloCorrente - 1, false);
    --lato.LivelloCorrente;
}

void AggiornaDidascaliaLivello(Lato& lato) {
    scriviDidascalia(lato, modoComprimi(lato));
}

void AggiornaLivello(Lato& lato) {
    if (lato.vuoto())
        return;
    unPasso(lato, modoComprimi(lato));
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
        passo([&] { unPasso(lato, modo); });
    });
}

} // namespace qz
