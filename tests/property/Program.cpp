#include "property/Program.h"

#include "data/Schema.h"
#include "platform/sqlite/BulkWriter.h"
#include "platform/sqlite/DatabaseFile.h"

#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <stdexcept>

namespace property {

namespace {

contract::Value orNull(std::optional<std::int64_t> number) {
    return number ? contract::Value(*number) : contract::Value::null();
}

std::optional<std::int64_t> number(const contract::Recordset& rows, std::string_view field) {
    return rows[field].integer();
}

} // namespace

Program::Program() {
    std::string name = (std::filesystem::temp_directory_path() / "distinte-property-XXXXXX").string();
    const int file = mkstemp(name.data());
    if (file < 0)
        throw std::runtime_error("no temporary file");
    close(file);
    path_ = name;
    std::filesystem::remove(path_);
    platform::sqlite::createDatabase(path_, qz::schema());
    const auto string = std::string(platform::sqlite::Connection::scheme) + path_;
    direct_ = std::make_unique<platform::sqlite::Connection>(string);
    direct_->Open();
    direct_->runNative("PRAGMA synchronous=OFF");

    connection = std::make_shared<FaultyConnection>(string);
    host->user = "UTENTE";
    host->group = "GRUPPO";
    host->connectionString = string;
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
    direct_.reset();
    std::filesystem::remove(path_);
}

void Program::write(const model::World& world) {
    direct_->BeginTrans();
    for (const auto* table : {"QZ01_TIPODISTINTA", "QZ02_DISTINTA", "CG16_ANAGGEN", "CG44_CLIFOR"})
        direct_->runNative("DELETE FROM " + std::string(table));
    platform::sqlite::BulkWriter types(*direct_, "QZ01_TIPODISTINTA",
                                       {"QZ01_ID", "QZ01_DITTA_CG18", "QZ01_CODICE", "QZ01_DESCR", "QZ01_INDTIPOSOGG"});
    for (const auto id : world.namedDistinte)
        types.append({id, std::int64_t{1}, "D" + std::to_string(id), "Distinta", std::int64_t{0}});
    platform::sqlite::BulkWriter registry(*direct_, "CG16_ANAGGEN", {"CG16_CODICE", "CG16_RAGSOANAG"});
    platform::sqlite::BulkWriter accounts(*direct_, "CG44_CLIFOR",
                                          {"CG44_DITTA_CG18", "CG44_TIPOCF", "CG44_CLIFOR", "CG44_CODICE_CG16"});
    for (const auto account : world.registered) {
        registry.append({account, "Nome " + std::to_string(account)});
        accounts.append({std::int64_t{1}, std::int64_t{0}, account, account});
    }
    platform::sqlite::BulkWriter nodes(*direct_, "QZ02_DISTINTA",
                                       {"QZ02_ID", "QZ02_ID_QZ01", "QZ02_IDPARENT_QZ02", "QZ02_DITTA_CG18",
                                        "QZ02_TIPOCF_CG44", "QZ02_CLIFOR_CG44", "QZ02_DATAINIZIOVAL",
                                        "QZ02_DATAFINEVAL", "QZ02_GUID"});
    for (const auto& row : world.rows)
        nodes.append({row.id, row.distinta, orNull(row.parent), std::int64_t{1}, std::int64_t{0}, orNull(row.account),
                      row.start, row.end, "guid " + std::to_string(row.id)});
    // New rows are numbered from here on.
    direct_->runNative("DELETE FROM sqlite_sequence WHERE name = 'QZ02_DISTINTA'");
    direct_->runNative("INSERT INTO sqlite_sequence (name, seq) VALUES ('QZ02_DISTINTA', " +
                       std::to_string(world.nextId - 1) + ")");
    direct_->CommitTrans();
}

std::vector<model::Row> Program::rows() {
    contract::Recordset records;
    records.Open(contract::Statement("SELECT * FROM QZ02_DISTINTA ORDER BY QZ02_ID"), *direct_);
    std::vector<model::Row> all;
    for (; !records.Eof(); records.MoveNext()) {
        model::Row row;
        row.id = number(records, "QZ02_ID").value_or(0);
        row.distinta = number(records, "QZ02_ID_QZ01").value_or(0);
        row.parent = number(records, "QZ02_IDPARENT_QZ02");
        row.account = number(records, "QZ02_CLIFOR_CG44");
        row.start = records["QZ02_DATAINIZIOVAL"].date().value_or(contract::Date());
        row.end = records["QZ02_DATAFINEVAL"].date().value_or(contract::Date());
        const bool audited = records["QZ02_UTENTEVAR"].text() == "UTENTE";
        const bool inserted = records["QZ02_UTENTECRE"].text() == "UTENTE";
        const bool dated = !records["QZ02_DATAVAR"].isNull();
        row.moved = audited && dated && !inserted;
        row.closed = audited && !dated && !inserted;
        all.push_back(row);
    }
    return all;
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

void Program::changeEnd(std::int64_t node, contract::Date end) {
    direct_->runNative("UPDATE QZ02_DISTINTA SET QZ02_DATAFINEVAL = '" + end.iso() +
                       "' WHERE QZ02_ID = " + std::to_string(node));
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
