#pragma once

#include "component/maintenance/FattiNoti.h"
#include "component/maintenance/IstruzioniBlocchi.h"
#include "component/maintenance/LettureSingole.h"
#include "component/maintenance/Scritture.h"
#include "component/maintenance/ScrittureSingole.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace qz {

/// Facts read and changes written in blocks of many rows, for one move under its serialisable transaction.
///
/// The facts of a level are fetched before its nodes are looked at and answered from memory, exactly as a database
/// would answer through the move's own changes. Changes are written at the end of a level; workflow states are carried
/// over at once, in the order of the walk. A block that touches another number of rows than planned throws RuntimeError
/// 5: the data changed under the move, and nothing of it may be kept.
///
/// Without a workflow of states nothing is ever written: the changes are only supposed, and new links keep provisional
/// ids. Such moves may follow one another, each finding what those before it would have left.
class Blocchi : public Letture, public Scritture {
public:
    /// Connection and request must outlive the object, or the next request.
    Blocchi(contract::Connection& database, const Richiesta& richiesta, FlussoStati flusso);
    /// Supposes the changes only.
    Blocchi(contract::Connection& database, const Richiesta& richiesta);

    /// The next move, where changes are only supposed.
    void prossima(const Richiesta& richiesta);
    /// Whether changes were stated since the move began that are not written.
    bool inSospeso() const { return !daSpostare_.empty() || !daChiudere_.empty() || !daInserire_.empty(); }
    /// Reads the links of these accounts ahead, in few statements.
    void prepara(std::vector<Soggetto> soggetti);
    /// The links of an account in a distinta, in the order of their ids.
    std::vector<NodoLetto> nodiDi(const Soggetto& soggetto, DistintaId distinta);

    std::int64_t righe(DistintaId distinta) override;
    std::int64_t righe(std::int64_t ditta, DistintaId distinta) override;
    std::optional<NodoLetto> nodo(std::int64_t ditta, NodoId id) override;
    std::vector<NodoLetto> figli(NodoId padre, DistintaId distinta) override;
    std::span<const std::optional<CodiceAccount>> padri(const Soggetto& soggetto, DistintaId distinta) override;
    std::optional<PadreDecodificato> sostituto(NodoId nodo, std::optional<contract::Date> inizio) override;
    std::optional<LegameSovrapposto> sovrapposto(const Soggetto& soggetto, const Periodo& periodo,
                                                 std::optional<NodoId> escluso) override;
    bool premioDefinitivo(std::int64_t ditta, NodoId nodo, std::optional<std::string_view> scadenzaDopo) override;
    void preparaFigli(std::span<const NodoId> padri) override;

    void cambiaDistinta(NodoId nodo, DistintaId da, DistintaId a) override;
    void sposta(NodoId nodo, NodoId sotto, DistintaId da, DistintaId a) override;
    void chiudi(NodoId nodo, DistintaId distinta, contract::Date fine) override;
    std::string inserisci(const NodoDaCopiare& nodo, const NuovoLegame& legame, std::string_view statoDi) override;
    void concludi() override;

private:
    struct Inserita {
        RigaNuova riga;
        NodoId provvisorio;
    };

    const NodoLetto* conosciuto(NodoId id);
    void leggiNodi(std::span<const NodoId> nodi);
    void leggiRighe(const contract::Statement& istruzione, std::vector<NodoLetto>* lette);
    /// Makes the children of these nodes known.
    void leggiFigli(std::span<const NodoId> padri);
    /// A link with what stands of its parent by now.
    FattiNoti::LegameNoto attuale(FattiNoti::LegameNoto legame);
    /// Counts the rows of both distinte before a supposed change of theirs.
    void contaPrima(std::optional<std::int64_t> ditta, DistintaId da, DistintaId a);
    /// Reads the links of accounts that are not known yet, and upward in the destination those of their parents.
    void conosci(std::vector<Soggetto> soggetti);
    void leggiLegami(std::int64_t ditta, TipoCF tipo, std::span<const CodiceAccount> account,
                     std::vector<Soggetto>& sopra);
    std::optional<std::string> codiceDistinta(DistintaId distinta);
    std::string nome(const Soggetto& soggetto);

    void scrivi();
    void scriviDistinte();
    void scriviChiusure();
    void scriviNuovi();
    void leggiIdNuovi();

    contract::Connection& database_;
    LettureSingole singole_;
    FattiNoti fatti_;
    const Richiesta* richiesta_;
    FlussoStati flusso_; ///< nothing where changes are only supposed

    std::map<DistintaId, std::int64_t> righe_;
    std::map<std::pair<std::int64_t, DistintaId>, std::int64_t> righeDitta_;
    std::map<DistintaId, std::optional<std::string>> codici_;
    std::unordered_map<Soggetto, std::string> nomi_;
    std::vector<std::optional<CodiceAccount>> padri_;

    std::vector<NodoId> daSpostare_;
    std::vector<NodoId> daChiudere_;
    std::vector<Inserita> daInserire_;
    std::optional<NuovoLegame> nuovo_;
    std::string fineNuovi_;
    std::int64_t prossimoProvvisorio_ = FattiNoti::primoProvvisorio;
};

} // namespace qz
