#pragma once

#include "component/DistinteFinte.h"
#include "component/shared/StatoForm.h"
#include "platform/headless/HeadlessForm.h"
#include "platform/headless/HostInterface.h"
#include "platform/headless/HostServices.h"
#include "platform/headless/ScriptedConnection.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace prove {

/// The main form's state with headless controls, a scripted connection and a host, without the form's own procedures:
/// what its collaborators work on. Today is 15/06/2024, company 1, user "UTENTE", group "GRUPPO".
class Scena {
public:
    Scena();
    Scena(const Scena&) = delete;
    Scena& operator=(const Scena&) = delete;
    ~Scena() = default;

    std::shared_ptr<platform::headless::HostState> host = std::make_shared<platform::headless::HostState>();
    std::shared_ptr<platform::headless::ScriptedConnection> db =
        std::make_shared<platform::headless::ScriptedConnection>(host->journal);
    platform::headless::HostInterface interfaccia;
    std::shared_ptr<contract::WorkflowState> flusso;
    DistinteFinte tabelle;
    qz::StatoForm stato;

    platform::headless::HeadlessForm& form() { return dynamic_cast<platform::headless::HeadlessForm&>(*stato.form); }
    platform::headless::HeadlessTree& albero(qz::Lato& lato) {
        return dynamic_cast<platform::headless::HeadlessTree&>(*lato.albero);
    }
    platform::headless::HeadlessTypeList& tipi(qz::Lato& lato) {
        return dynamic_cast<platform::headless::HeadlessTypeList&>(*lato.tipi);
    }
    platform::headless::HeadlessTree& alberoOrig() { return albero(stato.origine); }
    platform::headless::HeadlessTree& alberoDest() { return albero(stato.destinazione); }

    /// Loads a distinta into a side and puts the focus on a node.
    void carica(qz::Lato& lato, std::string_view id, std::int64_t nodo = 0);

    /// The texts of the message boxes shown, in order.
    std::vector<std::string> messaggi() const;
    /// The procedures named in the error displays shown, in order.
    std::vector<std::string> errori() const;

private:
    void creaLato(qz::Lato& lato, std::string_view suffisso);
};

/// The ids of a tree's nodes in display order.
std::vector<std::int64_t> nodiDi(const contract::TreeList& albero);

} // namespace prove
