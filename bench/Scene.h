#pragma once

#include "BenchDatabase.h"

#include "component/data/IstruzioniDistinta.h"
#include "component/shared/StatoForm.h"
#include "platform/headless/HeadlessForm.h"
#include "platform/headless/HostInterface.h"
#include "platform/headless/HostServices.h"

#include <memory>
#include <string_view>
#include <utility>

namespace bench {

/// The main form's state over a real database, with headless controls: the moved node focused on the left, the one
/// that takes it on the right.
class Scene {
public:
    /// Works through another connection than one of its own where that is given.
    explicit Scene(const Database& database, std::shared_ptr<contract::Connection> through = nullptr) {
        host->company = 1;
        state.ospite = &interface;
        interface.ClsGlobal(std::make_shared<platform::headless::HostGlobal>(host));
        state.dittaDiLavoro = std::int64_t{1};
        connection = through ? std::move(through) : database.open();
        state.connessione = connection;
        state.form = host->controls->newDocumentForm("FRMQZ_COPIADISTINTA");
        state.classeLog = state.globale().newLogClass();
        for (auto* side : {&state.origine, &state.destinazione})
            side->albero = &state.form->addTreeList(side == &state.origine ? "ORIG" : "DEST", nullptr);
        state.campoStato = &state.form->addWorkflowStateField("TXT_QZ02_STATO", nullptr);
        state.campoStato->setObject(state.globale().newWorkflowState());
        focus(state.origine, originId, database.movedNode());
        focus(state.destinazione, destinationId, database.targetNode());
    }

    std::shared_ptr<platform::headless::HostState> host = std::make_shared<platform::headless::HostState>();
    platform::headless::HostInterface interface;
    std::shared_ptr<contract::Connection> connection;
    qz::StatoForm state;

private:
    void focus(qz::Lato& side, std::string_view id, std::int64_t node) {
        side.IdDistinta = id;
        side.dati = std::make_shared<contract::Recordset>();
        side.dati->Open(qz::istruzioneNodi(side.descrizione, 1, 0, id), *connection);
        side.albero->bind(side.dati, "QZ02_ID", "QZ02_IDPARENT_QZ02", node);
    }
};

} // namespace bench
