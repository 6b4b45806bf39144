#include "concurrent/User.h"

#include "platform/headless/HeadlessTree.h"

#include <stdexcept>

namespace concurrent {

namespace {

using platform::headless::HeadlessButton;
using platform::headless::HeadlessDateField;
using platform::headless::HeadlessForm;
using platform::headless::HeadlessTree;

} // namespace

User::User(std::string connectionString, std::shared_ptr<contract::Connection> connection) {
    host->user = "UTENTE";
    host->group = "GRUPPO";
    host->connectionString = std::move(connectionString);
    host->makeConnection = [connection] { return connection; };
    auto& context = component_->plugin();
    context.ClsGlobal(std::make_shared<platform::headless::HostGlobal>(host));
    context.Caption("Manutenzione distinte");
    component_->ShowForm();
    if (!component_->form() || !host->errors.empty())
        throw std::runtime_error("the form did not start: " +
                                 (host->errors.empty() ? std::string() : host->errors.front().text));
    state().oggi = [] { return contract::Date::of(2024, 6, 15).value_or(contract::Date()); };
}

void User::load(bool destination, std::int64_t distinta) {
    answerAll();
    if (destination)
        component_->form()->CaricaDistintaDest(std::to_string(distinta));
    else
        component_->form()->CaricaDistintaOrig(std::to_string(distinta));
}

bool User::focus(bool destination, std::int64_t node) {
    answerAll();
    auto& albero = static_cast<HeadlessTree&>(tree(destination));
    if (!albero.focusKey(node))
        return false;
    albero.settle();
    return true;
}

void User::answerAll() {
    using namespace contract::message;
    host->messages.clear();
    host->errors.clear();
    host->answers.assign(8, answerAbort);
}

void User::press(const model::Move& move) {
    answerAll();
    host->answers.push_front(contract::message::answerYes);
    auto& form = *host->controls->form("FRMQZ_COPIADISTINTA");
    if (!move.withValidity) {
        form.control<HeadlessButton>("CMD_SPOSTASTRU").ButtonClick();
        return;
    }
    host->controls->whenModal("FRMQZ_DATAFINELEGAME", [&](HeadlessForm& dialog) {
        dialog.control<HeadlessDateField>("TXT_DATACHIUSURALEGAME").setText(move.closing.text());
        dialog.control<HeadlessButton>("CMD_ESEGUI").ButtonClick();
    });
    state().parametri.TipoCaricaDATA = move.fixedEnd ? 1 : 0;
    state().parametri.DataFissaFINE = move.fixedEnd;
    form.control<HeadlessButton>("CMD_SPOSTAVALID").ButtonClick();
}

bool User::edit(bool end, contract::Date date) {
    answerAll();
    auto& albero = static_cast<HeadlessTree&>(tree(true));
    return albero.editCell(albero.focused(), end ? "trQZ02_DATAFINEVAL" : "trQZ02_DATAINIZIOVAL", date.text());
}

} // namespace concurrent
