#include "component/data/DettaglioAnagrafica.h"

#include "component/data/Formattazione.h"
#include "component/data/IstruzioniDettaglio.h"
#include "component/shared/BloccoRidisegno.h"

#include <string>

namespace qz {

namespace {

// Measures for 8 points; the resize control scales them.
constexpr contract::Twips altezzaRiga = 260;
constexpr contract::Twips larghezzaNomi = 1900;

contract::Statement componi(const StatoForm& stato, const contract::Value& codice, std::string_view divisione) {
    const SoggettoDettaglio soggetto{stato.ditta(), stato.origine.TipoCF, codice};
    const std::string applicata = FormBase::ValoreODefault(contract::Value(divisione), "").text();
    return applicata.empty() ? istruzioneDettaglio(stato.parametri, soggetto)
                             : istruzioneDettaglioDivisione(stato.parametri, soggetto, applicata);
}

std::string testoDelCampo(StatoForm& stato, const contract::Field& campo) {
    std::string testo;
    stato.procedura("CaricaDatiAnagrafici", [&](auto& passo) {
        passo([&] { testo = formattaValore(campo.Type(), campo.NumericScale(), campo.Value()); });
    });
    return testo;
}

} // namespace

void CaricaDatiAnagrafici(StatoForm& stato, const contract::Value& codice, contract::DetailGrid& griglia,
                          std::string_view divisione) {
    // The report's name is shared with the load of the form.
    stato.procedura("Form_Load", [&](auto& passo) {
        contract::Recordset dati;
        contract::Statement istruzione;
        passo([&] { istruzione = componi(stato, codice, divisione); });
        passo([&] { dati.Open(istruzione, stato.database()); });
        passo([&] { griglia.setColumnWidth(0, stato.ridimensionamento->scaled(larghezzaNomi)); });
        if (dati.Empty()) {
            passo([&] { griglia.setRowCount(0); });
            return;
        }
        passo([&] { griglia.setRowCount(dati.FieldCount()); });
        for (std::size_t riga = 0; riga < dati.FieldCount(); ++riga) {
            const auto campo = dati.Fields(riga);
            passo([&] { griglia.setRowHeight(riga, stato.ridimensionamento->scaled(altezzaRiga)); });
            passo([&] { griglia.setCell(riga, 0, campo.Name()); });
            passo([&] { griglia.setCell(riga, 1, testoDelCampo(stato, campo)); });
        }
        passo([&] { dati.Close(); });
    });
}

void SvuotaFlex(StatoForm& stato, contract::DetailGrid& griglia) {
    stato.procedura("SvuotaFlex", [&](auto& passo) {
        BloccoRidisegno blocco(*stato.form);
        passo([&] { blocco.blocca(); });
        passo([&] { griglia.clear(); });
        passo([&] { blocco.sblocca(); });
    });
}

} // namespace qz
