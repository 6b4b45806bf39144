#include "component/plugin/ClasseConfronto.h"

#include "component/maintenance/Confronto.h"
#include "contract/RuntimeError.h"

#include <algorithm>
#include <utility>

namespace qz {

namespace {

class Rapporto : public contract::ComparisonReport {
public:
    Rapporto(std::unique_ptr<AlberoConfronto> sinistra, std::unique_ptr<AlberoConfronto> destra,
             std::vector<Differenza> differenze)
        : sinistra_(std::move(sinistra)), destra_(std::move(destra)), differenze_(std::move(differenze)) {}

    std::size_t size() const override { return differenze_.size(); }
    contract::ComparisonOutcome outcome(std::size_t index) const override { return differenze_[index].esito; }
    contract::ComparisonRow row(std::size_t index) const override {
        const Differenza& differenza = differenze_[index];
        contract::ComparisonRow riga;
        riga.outcome = differenza.esito;
        // The right side's name is the same account's.
        if (differenza.destra != LegameVerifica::nessuno)
            riga.right = descrivi(*destra_, differenza.destra, riga);
        if (differenza.sinistra != LegameVerifica::nessuno)
            riga.left = descrivi(*sinistra_, differenza.sinistra, riga);
        return riga;
    }

private:
    static contract::ComparisonSide descrivi(const AlberoConfronto& albero, std::uint32_t posizione,
                                             contract::ComparisonRow& riga) {
        riga.account = albero.righe()[posizione].account;
        riga.name = albero.nome(posizione);
        return albero.lato(posizione);
    }

    std::unique_ptr<AlberoConfronto> sinistra_;
    std::unique_ptr<AlberoConfronto> destra_;
    std::vector<Differenza> differenze_;
};

contract::ComparedDistinta trovata(contract::Connection& database, std::int64_t ditta, std::int64_t distinta) {
    const auto tutte = distinteDaConfrontare(database, ditta);
    const auto una = std::find_if(tutte.begin(), tutte.end(), [&](const auto& altra) { return altra.id == distinta; });
    if (una == tutte.end())
        throw contract::RuntimeError(contract::RuntimeError::invalidCall, "L'azienda " + std::to_string(ditta) +
                                                                              " non ha la distinta " +
                                                                              std::to_string(distinta) + ".");
    return *una;
}

} // namespace

std::vector<contract::ComparedDistinta> ClasseConfronto::comparedDistinte(contract::Connection& connection,
                                                                          std::int64_t company) {
    return distinteDaConfrontare(connection, company);
}

std::unique_ptr<contract::ComparisonReport> ClasseConfronto::compare(contract::Connection& connection,
                                                                     std::int64_t company, std::int64_t left,
                                                                     std::int64_t right, contract::Date day,
                                                                     contract::Progress& progress) {
    const auto unaDistinta = trovata(connection, company, left);
    const auto altraDistinta = trovata(connection, company, right);
    progress.reached("Lettura della distinta di sinistra", 0, 3);
    auto sinistra = std::make_unique<AlberoConfronto>(connection, company, unaDistinta);
    progress.reached("Lettura della distinta di destra", 1, 3);
    auto destra = std::make_unique<AlberoConfronto>(connection, company, altraDistinta);
    progress.reached("Confronto delle distinte", 2, 3);
    auto differenze = confronta(*sinistra, *destra, unaDistinta.kind == altraDistinta.kind, day);
    return std::make_unique<Rapporto>(std::move(sinistra), std::move(destra), std::move(differenze));
}

std::unique_ptr<contract::ComparisonReport> ClasseConfronto::treeOn(contract::Connection& connection,
                                                                    std::int64_t company, std::int64_t type,
                                                                    contract::Date day, contract::Progress& progress) {
    progress.reached("Lettura della distinta", 0, std::nullopt);
    auto albero = std::make_unique<AlberoConfronto>(connection, company, trovata(connection, company, type));
    std::vector<Differenza> tutte;
    for (const auto riga : albero->valideNellAlbero(day))
        tutte.push_back({contract::ComparisonOutcome::left, riga, LegameVerifica::nessuno});
    return std::make_unique<Rapporto>(std::move(albero), nullptr, std::move(tutte));
}

} // namespace qz
