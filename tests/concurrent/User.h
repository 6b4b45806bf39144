#pragma once

#include "component/form/FRMQZ_COPIADISTINTA.h"
#include "component/plugin/CLSQZ_COPIADISTINTA.h"
#include "platform/headless/HeadlessForm.h"
#include "platform/headless/HostServices.h"
#include "property/MoveModel.h"

#include <functional>
#include <memory>
#include <string>

namespace concurrent {

/// A person with a program of their own on a shared database: the whole component with headless controls. Company 1,
/// today 15/06/2024.
class User {
public:
    /// connection: what the host hands out, opened.
    User(std::string connectionString, std::shared_ptr<contract::Connection> connection);
    User(const User&) = delete;
    User& operator=(const User&) = delete;

    /// Clicks a type on a side; the other side stays as it stands, however old.
    void load(bool destination, std::int64_t distinta);
    /// Focuses a node and lets the focus rest. False when it is none of the tree on that side.
    bool focus(bool destination, std::int64_t node);
    /// Presses a move button, types the closing date and answers "Sì"; error displays are answered "Interrompi".
    void press(const model::Move& move);
    /// Types a date into a cell of the focused node of the destination. False where the cell can not be edited.
    bool edit(bool end, contract::Date date);

    qz::StatoForm& state() { return component_->form()->stato(); }
    contract::TreeList& tree(bool destination) {
        return destination ? *state().destinazione.albero : *state().origine.albero;
    }

    std::shared_ptr<platform::headless::HostState> host = std::make_shared<platform::headless::HostState>();

private:
    void answerAll();

    std::unique_ptr<qz::CLSQZ_COPIADISTINTA> component_ = std::make_unique<qz::CLSQZ_COPIADISTINTA>();
};

} // namespace concurrent
