#pragma once

#include "contract/Date.h"
#include "platform/headless/ScriptedConnection.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace prove {

inline contract::Date giorno(std::string_view testo) {
    return contract::Date::parse(testo).value();
}

struct NodoFinto {
    std::int64_t id = 0;
    std::int64_t distinta = 0;
    std::optional<std::int64_t> padre{};
    std::optional<std::int64_t> account{};
    std::string inizio = "01/01/2020"; ///< empty: null
    std::string fine = "31/12/2099";   ///< empty: null
    std::optional<std::string> guid{};
    std::map<std::string, std::int64_t> facoltativi{}; ///< column and value; missing ones are null
    std::int64_t stato = 0;
    std::string dataVar{};
    std::string gruppoVar{};
    std::string utenteVar{};
    std::string dataCre{};
    std::string gruppoCre{};
    std::string utenteCre{};

    friend bool operator==(const NodoFinto&, const NodoFinto&) = default;
};

struct TipoFinto {
    std::int64_t id = 0;
    std::string codice;
    std::string descrizione;
    int tipoCF = 0;
    std::optional<std::string> divisione{};
    std::optional<std::string> guid{};
};

struct PremioFinto {
    std::int64_t nodo = 0;
    std::string scadenza;
    int stato = 2;
};

/// Tables in memory, of company 1, that answer the component's statements as a database would: so much of one as the
/// tests of the moves need. Accounts up to 999 stand in the registry as "SOGGETTO n".
class DistinteFinte {
public:
    std::vector<TipoFinto> tipi;
    std::vector<NodoFinto> nodi;
    std::vector<PremioFinto> premi;

    /// Gives the connection its rules; it must not outlive this.
    void collega(platform::headless::ScriptedConnection& db);

    const NodoFinto* nodo(std::int64_t id) const;
    NodoFinto* nodo(std::int64_t id);
    /// The node of that id; throws std::out_of_range when there is none.
    NodoFinto& il(std::int64_t id);

private:
    using Righe = platform::headless::ScriptedRows;

    const TipoFinto* tipo(std::int64_t id) const;
    int tipoCF(const NodoFinto& nodo) const;
    Righe nodiDellaDistinta(const std::string& testo) const;
    Righe padri(const std::string& testo) const;
    Righe sovrapposti(const std::string& testo) const;
    Righe decodifica(const std::string& testo) const;
    Righe riletti(const std::string& testo) const;
    Righe premio(const std::string& testo) const;
    Righe intere(const std::vector<const NodoFinto*>& trovati) const;
    std::int64_t sposta(const std::string& testo);
    std::int64_t chiudi(const std::string& testo);
    std::int64_t inserisci(const std::string& testo);

    std::vector<NodoFinto> primaDellaTransazione_;
};

/// The columns of a node that a move looks at, for rows that a test makes up.
inline const std::vector<std::string> colonneNodo{"QZ02_ID",
                                                  "QZ02_ID_QZ01",
                                                  "QZ02_IDPARENT_QZ02",
                                                  "QZ02_DITTA_CG18",
                                                  "QZ02_TIPOCF_CG44",
                                                  "QZ02_CLIFOR_CG44",
                                                  "QZ02_DATAINIZIOVAL",
                                                  "QZ02_DATAFINEVAL",
                                                  "QZ02_CLIFORFATT_CG44",
                                                  "QZ02_TIPOANAGFATT",
                                                  "QZ02_IDSTRUTTURA_LP09",
                                                  "QZ02_IDLOCALIZZATA_LP09",
                                                  "QZ02_INDEREPROMO"};

} // namespace prove
