#include "property/Program.h"

#include <stdexcept>

namespace property {

Program::Program(Where where, const Connect& connect) : database_(where) {
    connection = std::make_shared<FaultyConnection>(connect(database_));
    host->user = "UTENTE";
    host->group = "GRUPPO";
    host->connectionString = connection->ConnectionString();
    host->makeConnection = [this] { return connection; };
    auto& context = component->plugin();
    context.ClsGlobal(std::make_shared<platform::headless::HostGlobal>(host));
    context.Caption("Manutenzione distinte");
    component->ShowForm();
    if (!component->form() || !host->errors.empty())
        throw std::runtime_error("the form did not start: " +
                                 (host->errors.empty() ? std::string() : host->errors.front().text));
    state().oggi = [] { return *contract::Date::parse("15/06/2024"); };
}

Program::~Program() {
    component.reset();
    connection.reset();
}

bool Program::focus(const model::Move& move) {
    auto& state = this->state();
    component->form()->CaricaDistintaOrig(std::to_string(move.origin));
    component->form()->CaricaDistintaDest(std::to_string(move.destination));
    for (const auto& [side, id] : {std::pair{&state.origine, move.node}, {&state.destinazione, move.target}}) {
        const auto node = side->albero->byKey(id);
        if (!node)
            return false;
        side->albero->setFocused(node);
    }
    return true;
}

void Program::press(const model::Move& move, std::vector<int> errorAnswers) {
    host->messages.clear();
    host->errors.clear();
    host->answers = {contract::message::answerYes};
    host->answers.insert(host->answers.end(), errorAnswers.begin(), errorAnswers.end());
    auto& form = *host->controls->form("FRMQZ_COPIADISTINTA");
    if (move.withValidity) {
        host->controls->whenModal("FRMQZ_DATAFINELEGAME", [&](platform::headless::HeadlessForm& dialog) {
            dialog.control<platform::headless::HeadlessDateField>("TXT_DATACHIUSURALEGAME")
                .setText(move.closing.text());
            dialog.control<platform::headless::HeadlessButton>("CMD_ESEGUI").ButtonClick();
        });
        state().parametri.TipoCaricaDATA = move.fixedEnd ? 1 : 0;
        state().parametri.DataFissaFINE = move.fixedEnd;
        form.control<platform::headless::HeadlessButton>("CMD_SPOSTAVALID").ButtonClick();
    } else {
        form.control<platform::headless::HeadlessButton>("CMD_SPOSTASTRU").ButtonClick();
    }
    host->answers.clear();
}

bool Program::edit(std::int64_t node, std::string_view column, std::string_view text, std::vector<int> errorAnswers) {
    host->messages.clear();
    host->errors.clear();
    host->answers.assign(errorAnswers.begin(), errorAnswers.end());
    auto& tree = dynamic_cast<platform::headless::HeadlessTree&>(*state().destinazione.albero);
    const bool typed = tree.editCell(tree.byKey(node), column, text);
    host->answers.clear();
    return typed;
}

std::string Program::cell(std::int64_t node, std::string_view column) {
    const auto& tree = *state().destinazione.albero;
    return tree.value(tree.byKey(node), column).text();
}

void Program::reload() {
    component->form()->CaricaDistintaOrig(state().origine.IdDistinta);
    component->form()->CaricaDistintaDest(state().destinazione.IdDistinta);
}

std::string Program::message() const {
    for (auto at = host->messages.rbegin(); at != host->messages.rend(); ++at)
        if (at->style != contract::message::yesNo)
            return at->text;
    return {};
}

} // namespace property
