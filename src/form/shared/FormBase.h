#pragma once

#include "plugin/contract/Host.h"
#include "plugin/contract/RuntimeError.h"
#include "plugin/contract/Value.h"

#include <exception>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

namespace qz {

/// Name of the component as error reports give it.
inline constexpr std::string_view nomeApplicazione = "QZUO_COPIADISTINTA";

/// What every form carries: its log class, its connection, its way of reporting errors, and the trap in which all its
/// procedures run.
class FormBase {
public:
    FormBase() = default;
    FormBase(const FormBase&) = delete;
    FormBase& operator=(const FormBase&) = delete;
    virtual ~FormBase() = default;

    /// Caption of the form, the title of every message box it shows.
    virtual std::string didascalia() const = 0;

    /// Reports an error of a procedure and gives the button pressed: 3 leave the procedure, 4 run the failing step
    /// again, 5 go on with the next one. 3 when there is no log class. Never throws.
    int VisualizzaErrore(std::string_view procedura, const contract::RuntimeError& errore) noexcept;

    /// The value unless it is empty, null or blank, in which case the default; not trimmed.
    static contract::Value ValoreODefault(const contract::Value& valore, const contract::Value& predefinito);

    /// Makes the form's own log class and gives it the host interface: what every form does first when it loads.
    void creaClasseLog(contract::ClsGlobal& globale, contract::Cinterface* ospite);

    /// Shows a message box; the code of the button pressed. Throws RuntimeError 91 without a log class.
    int messaggio(std::string_view testo, int stile);

    /// The form's connection. Throws RuntimeError 91 when it could not be made.
    contract::Connection& database() const;

    class Passo;

    /// Runs a procedure under the trap: a body of steps, each handed to the argument. A step that fails is reported
    /// under the procedure's name, and the answer leaves the procedure, runs that step again or goes on with the next.
    template <class Corpo> void procedura(std::string_view nome, Corpo&& corpo);

    std::shared_ptr<contract::LogClass> classeLog;
    std::shared_ptr<contract::Connection> connessione;

private:
    struct Uscita {}; // thrown by a step, caught by its procedure
    void mostra(std::string_view procedura, const contract::RuntimeError& errore, int& risposta);
};

/// The step runner of one procedure.
class FormBase::Passo {
public:
    Passo(FormBase& form, std::string_view procedura) : form_(form), procedura_(procedura) {}

    template <class Azione> void operator()(Azione&& azione) {
        for (;;) {
            try {
                azione();
                return;
            } catch (const contract::RuntimeError& errore) {
                if (!ripetere(errore))
                    return;
            } catch (const std::exception& errore) {
                if (!ripetere(contract::RuntimeError(contract::RuntimeError::invalidCall, errore.what())))
                    return;
            }
        }
    }

private:
    bool ripetere(const contract::RuntimeError& errore) {
        switch (form_.VisualizzaErrore(procedura_, errore)) {
        case contract::message::answerRetry:
            return true;
        case contract::message::answerIgnore:
            return false;
        default:
            throw Uscita{};
        }
    }

    FormBase& form_;
    std::string_view procedura_;
};

template <class Corpo> void FormBase::procedura(std::string_view nome, Corpo&& corpo) {
    Passo passo(*this, nome);
    try {
        corpo(passo);
    } catch (const Uscita&) {
        return;
    }
}

} // namespace qz
