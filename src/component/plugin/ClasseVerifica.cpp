#include "component/plugin/ClasseVerifica.h"

#include "component/maintenance/Verifica.h"

#include <utility>

namespace qz {

namespace {

class Rapporto : public contract::AuditReport {
public:
    explicit Rapporto(EsitoVerifica esito) : esito_(std::move(esito)) {}
    std::size_t size() const override { return esito_.rilievi.size(); }
    std::size_t rule(std::size_t index) const override {
        return static_cast<std::size_t>(esito_.rilievi[index].regola);
    }
    contract::AuditFinding finding(std::size_t index) const override { return composto(esito_, esito_.rilievi[index]); }

private:
    EsitoVerifica esito_;
};

} // namespace

std::span<const contract::AuditRule> ClasseVerifica::auditRules() const {
    return regoleVerifica();
}

std::unique_ptr<contract::AuditReport> ClasseVerifica::audit(contract::Connection& connection, std::int64_t company,
                                                             contract::Progress& progress) {
    return std::make_unique<Rapporto>(verificaDistinte(connection, company, progress));
}

} // namespace qz
