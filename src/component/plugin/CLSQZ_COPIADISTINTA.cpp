#include "component/plugin/CLSQZ_COPIADISTINTA.h"

#include "component/form/FRMQZ_COPIADISTINTA.h"

#include <atomic>

namespace qz {

namespace {

constexpr std::string_view nomeModello = "Distinta";

std::atomic<int> vivi = 0;

/// Runs a member's body; an error leaves the member with its default.
template <class Corpo> void senzaErrori(Corpo&& corpo) noexcept {
    try {
        corpo();
    } catch (...) { // NOLINT(bugprone-empty-catch): a member of the class never tells its host of an error
    }
}

} // namespace

int oggettiVivi() {
    return vivi;
}

std::string testoErroreFinale(const std::exception& errore, std::string_view luogo) {
    const auto* runTime = dynamic_cast<const contract::RuntimeError*>(&errore);
    const int numero = runTime ? runTime->number() : contract::RuntimeError::invalidCall;
    return "Errore VB n." + std::to_string(numero) + " - " + errore.what() + std::string(luogo);
}

CLSQZ_COPIADISTINTA::CLSQZ_COPIADISTINTA() : activeDll_(this) {
    ++vivi;
}

CLSQZ_COPIADISTINTA::~CLSQZ_COPIADISTINTA() {
    Class_Terminate();
    --vivi;
}

void CLSQZ_COPIADISTINTA::Class_Terminate() noexcept {
    senzaErrori([&] {
        try {
            rilascia();
        } catch (const std::exception& errore) {
            mostraErrore(errore, luogoTerminate);
        }
    });
}

void CLSQZ_COPIADISTINTA::NodiPerBlocchi(std::int32_t value) {
    nodiPerBlocchi_ = value;
    if (form_)
        form_->stato().nodiPerBlocchi = value;
}

void CLSQZ_COPIADISTINTA::registroCambiato() {
    if (form_)
        form_->stato().tieneRegistro = KeepsRegistry();
}

contract::Value CLSQZ_COPIADISTINTA::ShowForm() {
    senzaErrori([&] {
        form_ = std::make_unique<FRMQZ_COPIADISTINTA>();
        form_->ActiveDll(activeDll_);
        form_->Classe(this);
        form_->stato().nodiPerBlocchi = nodiPerBlocchi_;
        form_->stato().tieneRegistro = KeepsRegistry();
        form_->Caption(caption_.text());
        form_->Show(windowModal_);
    });
    return {};
}

contract::Value CLSQZ_COPIADISTINTA::CloseForm() {
    bool chiusa = false;
    senzaErrori([&] {
        if (!form_)
            return;
        form_->Unload();
        chiusa = form_->ActiveDll() == nullptr;
    });
    return chiusa;
}

contract::Value CLSQZ_COPIADISTINTA::TransferData(const contract::Value& data) {
    senzaErrori([&] {
        // The listener keeps its own, whatever the host does with its value meanwhile.
        const contract::Value copia = data; // NOLINT(performance-unnecessary-copy-initialization)
        if (DataTransfer)
            DataTransfer(copia);
    });
    return {};
}

bool CLSQZ_COPIADISTINTA::attivo() const {
    return activeDll_ != nullptr && activeDll_->IsActive();
}

void CLSQZ_COPIADISTINTA::BeforeExportToOffice(std::shared_ptr<contract::HostObject>) {
    // Whether active or not, there is nothing to prepare.
}

void CLSQZ_COPIADISTINTA::InitializeLayoutObjectModel(std::shared_ptr<contract::LayoutObjectModel> model) {
    senzaErrori([&] {
        if (attivo() && form_ && model)
            model->registerForm(nomeModello, form_->finestra());
    });
}

void CLSQZ_COPIADISTINTA::InitializeScriptObjectModel(std::shared_ptr<contract::ScriptObjectModel> model) {
    senzaErrori([&] {
        if (!attivo() || !form_ || !model)
            return;
        model->registerForm(nomeModello, form_->finestra());
        if (const auto frame = activeDll_->ActiveFrame())
            model->registerObject(frame->Name(), frame);
    });
}

void CLSQZ_COPIADISTINTA::DestroyClass() {
    senzaErrori([&] { rilascia(); });
}

/// Throws only when the error that it met could not be shown either.
void CLSQZ_COPIADISTINTA::rilascia() {
    try {
        statusBar_.reset();
        activeFrame_.reset();
        activeDll_ = nullptr;
        clsVoceMenu_.reset();
        clsGlobal_.reset();
        finestra(nullptr);
        navigatore(nullptr);
        connection_.reset();
        form_.reset();
    } catch (const std::exception& errore) {
        mostraErrore(errore, luogoDestroyClass);
    }
}

void CLSQZ_COPIADISTINTA::mostraErrore(const std::exception& errore, std::string_view luogo) const {
    const auto log = form_ ? form_->classeLog() : nullptr;
    if (!log)
        throw contract::RuntimeError(contract::RuntimeError::objectNotSet, "Variabile oggetto non impostata.");
    log->ShowMessage(caption_.text(), testoErroreFinale(errore, luogo), contract::message::ok);
}

std::vector<std::pair<std::string, contract::Value>> CLSQZ_COPIADISTINTA::state() const {
    std::vector<std::pair<std::string, contract::Value>> valori;
    senzaErrori([&] {
        if (form_)
            valori = form_->valoriStato();
    });
    return valori;
}

bool CLSQZ_COPIADISTINTA::menuCommand(std::string_view name) {
    bool eseguito = false;
    senzaErrori([&] { eseguito = form_ && form_->comandoMenu(name); });
    return eseguito;
}

void CLSQZ_COPIADISTINTA::companyChanged() {
    senzaErrori([&] {
        if (form_)
            form_->EsciForm();
    });
}

} // namespace qz
