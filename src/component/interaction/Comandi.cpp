#include "component/interaction/Comandi.h"

#include "component/data/CaricaDistinta.h"
#include "component/interaction/DescrizioneSpostamento.h"
#include "component/interaction/EseguiSpostamento.h"

#include <string>

namespace qz {

namespace {

namespace message = contract::message;

} // namespace

bool Comandi::confermato(bool validita) {
    const auto account = (*stato_.origine.dati)["QZ02_CLIFOR_CG44"].text();
    return stato_.messaggio("Spostare il nodo " + account + " e tutti i suoi figli?", message::yesNo,
                            dettaglioSpostamento(stato_, validita)) == message::answerYes;
}

void Comandi::rifiuta(FormBase::Passo& passo, std::string_view testo, bool validita) {
    passo([&] { stato_.messaggio(testo, message::exclamation, dettaglioSpostamento(stato_, validita)); });
    passo([&] { annunciaEsito(stato_, nessunaModifica); });
}

template <class Corpo> void Comandi::comando(std::string_view nome, Corpo&& corpo) {
    spostamentoFallito_ = false;
    stato_.unComando([&] {
        stato_.procedura(nome, corpo);
        // Whatever the answer to the error was, the screen shows the database as it stands.
        if (spostamentoFallito_)
            RicaricaAlberi(stato_);
    });
}

void Comandi::sposta(bool validita) {
    spostamentoFallito_ = true;
    EseguiSpostamento(stato_, validita);
    spostamentoFallito_ = false;
}

void Comandi::CMD_SPOSTASTRU_ButtonClick() {
    comando("CMD_SPOSTASTRU_ButtonClick", [&](auto& passo) {
        if (stato_.origine.senzaRecord())
            return;
        if (stato_.origine.TipoCF != stato_.destinazione.TipoCF) {
            rifiuta(passo,
                    "Non è consentito effettuare la manutenzione tra distinte di tipologia "
                    "diversa(cliente/fornitore).",
                    false);
            return;
        }
        bool si = false;
        passo([&] { si = confermato(false); });
        if (si)
            passo([&] { sposta(false); });
    });
}

void Comandi::CMD_SPOSTAVALID_ButtonClick() {
    comando("CMD_SPOSTAVALID_ButtonClick", [&](auto& passo) {
        passo([&] { chiediDataFine(); });
        if (FormBase::ValoreODefault(contract::Value(stato_.DataFineLegame), contract::Value()).isEmpty()) {
            rifiuta(passo, "Data fine legame non impostata!", true);
            return;
        }
        bool prima = false;
        passo([&] {
            const auto fine = contract::Date::parse(stato_.DataFineLegame);
            const auto inizio =
                stato_.origine.senzaRecord() ? std::nullopt : (*stato_.origine.dati)["QZ02_DATAINIZIOVAL"].date();
            prima = fine && inizio && *fine < *inizio;
        });
        if (prima) {
            rifiuta(passo,
                    "Attenzione la data di fine legame inserita è minore della data inizio legame del "
                    "nodo di origine.",
                    true);
            return;
        }
        // Differing kinds end this command without a message, unlike the structural move.
        if (stato_.origine.senzaRecord() || stato_.destinazione.senzaRecord() ||
            stato_.origine.TipoCF != stato_.destinazione.TipoCF)
            return;
        bool si = false;
        passo([&] { si = confermato(true); });
        if (!si)
            return;
        // A move that is run again after an error closes the links at the date typed, which the first run replaced.
        const auto digitata = stato_.DataFineLegame;
        passo([&] {
            stato_.DataFineLegame = digitata;
            sposta(true);
        });
    });
}

} // namespace qz
