#include "component/Guasti.h"

#include "component/FormGuasto.h"

namespace prove {

namespace {

Guasti* registratore = nullptr;

/// A connection that tells of every operation.
class ConnessioneGuasta : public platform::headless::ScriptedConnection {
public:
    using ScriptedConnection::ScriptedConnection;

    std::int64_t Execute(const contract::Statement& statement) override {
        annuncia(statement.text());
        return ScriptedConnection::Execute(statement);
    }
    void Read(const contract::Statement& statement, contract::Snapshot& rows) override {
        rows.clear();
        annuncia(statement.text());
        ScriptedConnection::Read(statement, rows);
    }
    void BeginTrans() override {
        annuncia("BeginTrans");
        ScriptedConnection::BeginTrans();
    }
    void CommitTrans() override {
        annuncia("CommitTrans");
        ScriptedConnection::CommitTrans();
    }
    void RollbackTrans() override {
        // One that fails has ended the transaction all the same: the server did.
        ScriptedConnection::RollbackTrans();
        annuncia("RollbackTrans");
    }

private:
    static void annuncia(const std::string& istruzione) {
        if (registratore != nullptr)
            registratore->chiamata(istruzione);
    }
};

} // namespace

Guasti::Guasti() {
    registratore = this;
}

Guasti::~Guasti() {
    registratore = nullptr;
}

Guasti* Guasti::corrente() {
    return registratore;
}

void Guasti::registra(std::optional<std::size_t> guasto) {
    traccia_.clear();
    madri_.clear();
    madre_.reset();
    guasto_ = guasto;
    registrando_ = true;
}

void Guasti::chiamata(const std::string& nome) {
    if (!registrando_ || !delComponente_ || inCostruzione_)
        return;
    traccia_.push_back(nome);
    madri_.push_back(madre_);
    if (guasto_ && traccia_.size() == *guasto_ + 1)
        throw contract::RuntimeError(contract::RuntimeError::invalidCall, "guasto");
}

Guasti::Tratto::Tratto(bool delComponente) {
    if (registratore != nullptr) {
        prima_ = std::exchange(registratore->delComponente_, delComponente);
        madre_ = registratore->madre_;
        // A control's call has just been noted.
        if (!delComponente && prima_ && !registratore->traccia_.empty())
            registratore->madre_ = registratore->traccia_.size() - 1;
    }
}

Guasti::Tratto::~Tratto() {
    if (registratore != nullptr) {
        registratore->delComponente_ = prima_;
        registratore->madre_ = madre_;
    }
}

ProgrammaConGuasti::ProgrammaConGuasti() {
    host->controls = std::make_shared<FabbricaGuasta>(host->journal);
    db = std::make_shared<ConnessioneGuasta>(host->journal);
    tabelle.collega(*db);
    host->journal->onCall = [](std::string_view riga) {
        // What shows an error is not what a procedure calls.
        for (const auto* operazione : {"LogClass.vbError", "LogClass.ADOError", "LogClass.ShowError"})
            if (riga.starts_with(operazione))
                return;
        if (registratore != nullptr)
            registratore->chiamata(std::string(riga));
    };
}

void ProgrammaConGuasti::rispondi(int risposta) {
    host->errorAnswer = [risposta, prima = true]() mutable {
        const bool ancora = risposta == contract::message::answerRetry && !std::exchange(prima, false);
        return ancora ? contract::message::answerAbort : risposta;
    };
}

} // namespace prove
