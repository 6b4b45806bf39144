#include "component/data/Parametri.h"

#include <optional>
#include <string>
#include <utility>

namespace qz {

namespace {

// The end of a missing row, and the one of a row whose end is null ('01/01/2099' in the statement), differ on purpose.
constexpr std::string_view inizioSenzaRiga = "01/01/2000";
constexpr std::string_view fineSenzaRiga = "31/12/2099";

[[noreturn]] void nonCorrisponde(const contract::Value& valore, std::string_view cosa) {
    throw contract::RuntimeError(contract::RuntimeError::typeMismatch,
                                 "Tipo non corrispondente: \"" + valore.text() + "\" non è " + std::string(cosa) + ".");
}

contract::Date dataDi(const contract::Value& valore) {
    const auto data = valore.date();
    if (!data)
        nonCorrisponde(valore, "una data");
    return *data;
}

} // namespace

bool valoreFlag(const contract::Value& valore) {
    if (const auto intero = valore.integer())
        return *intero != 0;
    if (!valore.isNumber())
        nonCorrisponde(valore, "un numero");
    return true; // a number that is not whole is not zero
}

std::int16_t interoBreve(const contract::Value& valore) {
    const auto intero = valore.integer();
    if (!intero)
        nonCorrisponde(valore, "un numero intero");
    if (!std::in_range<std::int16_t>(*intero))
        throw contract::RuntimeError(contract::RuntimeError::overflow, "Overflow: " + valore.text() + ".");
    return static_cast<std::int16_t>(*intero);
}

contract::Statement istruzioneParametri(std::int64_t ditta) {
    contract::Statement s;
    s << " SELECT   QZ03_ID_WF02 AS StatoLegame, "
      << " ISNULL(QZ03_TIPOCARICODATA,0) AS TipoCaricaDATA, "
      << " ISNULL(QZ03_DATAINIZIOVAL,'01/01/2000') AS DataFissaINIZIO, "
      << " ISNULL(QZ03_DATAFINEVAL,'01/01/2099') AS DataFissaFINE, "
      << " ISNULL(QZ03_FLG_ANAG,0) AS flg_Anagrafica, "
      << " ISNULL(QZ03_FLG_CONDVEND,0) AS flg_CondVendita, "
      << " ISNULL(QZ03_FLG_CLAS,0) AS flg_Classificazioni, "
      << " ISNULL(QZ03_FLG_PROV,0) AS flg_Provvigioni,"
      << " ISNULL(QZ03_TIPOANAGFATT,0) AS TipoCaricaFatt"
      << " FROM  QZ03_PARAMETRI"
      << " WHERE QZ03_DITTA_CG18 = ";
    return s.number(ditta);
}

void CaricaParametri(StatoForm& stato) {
    stato.procedura("CaricaParametri", [&](auto& passo) {
        contract::Recordset riga;
        bool letta = false;
        passo([&] {
            riga.Open(istruzioneParametri(stato.ditta()), stato.database());
            letta = true;
        });
        if (!letta)
            return;
        // Kept at the end, so that a procedure left on the way leaves the parameters as they were.
        LinkParameters nuovi = stato.parametri;
        if (riga.Empty()) {
            nuovi.StatoLegame = 0;
            nuovi.TipoCaricaDATA = 0;
            nuovi.DataFissaINIZIO = contract::Date::parse(inizioSenzaRiga);
            nuovi.DataFissaFINE = contract::Date::parse(fineSenzaRiga);
            nuovi.flg_Anagrafica = true;
            nuovi.flg_CondVendita = true;
            nuovi.flg_Classificazioni = true;
            nuovi.flg_Provvigioni = true;
        } else {
            // The state of new links is selected and not read: it keeps the value it had.
            passo([&] { nuovi.TipoCaricaDATA = interoBreve(riga["TipoCaricaDATA"]); });
            passo([&] { nuovi.DataFissaINIZIO = dataDi(riga["DataFissaINIZIO"]); });
            passo([&] { nuovi.DataFissaFINE = dataDi(riga["DataFissaFINE"]); });
            passo([&] { nuovi.flg_Anagrafica = valoreFlag(riga["flg_Anagrafica"]); });
            passo([&] { nuovi.flg_CondVendita = valoreFlag(riga["flg_CondVendita"]); });
            passo([&] { nuovi.flg_Classificazioni = valoreFlag(riga["flg_Classificazioni"]); });
            passo([&] { nuovi.flg_Provvigioni = valoreFlag(riga["flg_Provvigioni"]); });
        }
        stato.parametri = nuovi;
        riga.Close();
    });
}

} // namespace qz
