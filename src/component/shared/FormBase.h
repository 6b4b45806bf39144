#pragma once

#include "contract/Host.h"
#include "contract/Progress.h"
#include "contract/RuntimeError.h"
#include "contract/Value.h"

#include <exception>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace qz {

/// The object that is there. Throws RuntimeError 91 when it is not.
template <class Oggetto> Oggetto& presente(const std::shared_ptr<Oggetto>& oggetto) {
    if (!oggetto)
        throw contract::RuntimeError(contract::RuntimeError::objectNotSet, "Variabile oggetto non impostata.");
    return *oggetto;
}

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

    /// Shows a message box, with what it is about below its text; the code of the button pressed. Throws RuntimeError
    /// 91 without a log class.
    int messaggio(std::string_view testo, int stile, std::string_view dettaglio = {});

    /// The form's connection. Throws RuntimeError 91 when it could not be made.
    contract::Connection& database() const;

    class Passo;
    class Comando;

    /// Makes the form's own log class and gives it the host interface: what every form does first when it loads.
    void creaClasseLog(Passo& passo, contract::Cinterface* ospite);

    /// Runs a procedure under the trap: a body of steps, each handed to the argument. A step that fails is reported
    /// under the procedure's name, and the answer leaves the procedure, runs that step again or goes on with the next.
    ///
    /// A step is one statement or one call, so that the answers mean just that; what a step does before it fails must
    /// be what may be done twice. A procedure called inside a step reports its own steps itself.
    ///
    /// A step whose work the user gives up leaves every procedure of the command at once, with nothing reported; the
    /// command then says so by annullato().
    template <class Corpo> void procedura(std::string_view nome, Corpo&& corpo);

    /// The same for what the host raises as a consequence of the command before it: both count as one command.
    template <class Corpo> void proceduraCheSegue(std::string_view nome, Corpo&& corpo);

    /// Several procedures as one command of the user.
    template <class Corpo> void unComando(Corpo&& corpo, bool segue = false);

    std::shared_ptr<contract::LogClass> classeLog;
    std::shared_ptr<contract::Connection> connessione;

    /// The answer to the display of a connection that was lost in the command under way; a dialog shares its caller's.
    using RispostaPerdita = std::shared_ptr<std::optional<int>>;
    RispostaPerdita rispostaPerdita = std::make_shared<std::optional<int>>();

protected:
    /// The user has given the command up: nothing of it was kept.
    virtual void annullato() noexcept {}

private:
    struct Uscita {}; // thrown by a step, caught by its procedure
    /// The answer to an error of a step. A loss of the connection is shown once in a command: what else the command
    /// then asks of the server is answered as the first time, unless that was to try again.
    int risposta(std::string_view procedura, const contract::RuntimeError& errore) noexcept;
    bool connessionePersa(const contract::RuntimeError& errore) const;
    void mostra(std::string_view procedura, const contract::RuntimeError& errore, int& risposta);

    int procedureAperte_ = 0;
};

/// One command of the user, with all the procedures that run in it: the outermost one begins it.
class FormBase::Comando {
public:
    explicit Comando(FormBase& form, bool segue = false) : form_(form) {
        if (form_.procedureAperte_++ == 0 && !segue)
            form_.rispostaPerdita->reset();
    }
    Comando(const Comando&) = delete;
    Comando& operator=(const Comando&) = delete;
    ~Comando() { --form_.procedureAperte_; }

private:
    FormBase& form_;
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
            } catch (const contract::Cancelled&) {
                throw;
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
        switch (form_.risposta(procedura_, errore)) {
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

template <class Corpo> void FormBase::unComando(Corpo&& corpo, bool segue) {
    const Comando comando(*this, segue);
    try {
        corpo();
    } catch (const contract::Cancelled&) {
        if (procedureAperte_ > 1)
            throw;
        annullato();
    }
}

template <class Corpo> void FormBase::procedura(std::string_view nome, Corpo&& corpo) {
    unComando([&] {
        Passo passo(*this, nome);
        try {
            corpo(passo);
        } catch (const Uscita&) {
            return;
        }
    });
}

template <class Corpo> void FormBase::proceduraCheSegue(std::string_view nome, Corpo&& corpo) {
    unComando([&] { procedura(nome, std::forward<Corpo>(corpo)); }, true);
}

} // namespace qz
