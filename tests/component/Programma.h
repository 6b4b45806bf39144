#pragma once

#include "component/DistinteFinte.h"
#include "component/form/FRMQZ_COPIADISTINTA.h"
#include "component/plugin/CLSQZ_COPIADISTINTA.h"
#include "platform/headless/HeadlessForm.h"
#include "platform/headless/HostServices.h"
#include "platform/headless/ScriptedConnection.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace prove {

/// The whole component as a host holds it, without a screen: the public class with its context set, over a scripted
/// connection. Today is 15/06/2024 once the form is shown.
class Programma {
public:
    Programma();
    Programma(const Programma&) = delete;
    Programma& operator=(const Programma&) = delete;
    ~Programma() = default;

    std::shared_ptr<platform::headless::HostState> host = std::make_shared<platform::headless::HostState>();
    std::shared_ptr<platform::headless::ScriptedConnection> db =
        std::make_shared<platform::headless::ScriptedConnection>(host->journal);
    DistinteFinte tabelle;
    std::unique_ptr<qz::CLSQZ_COPIADISTINTA> classe = std::make_unique<qz::CLSQZ_COPIADISTINTA>();

    contract::Cinterface& interfaccia() { return *classe; }
    /// Shows the form and forgets what was noted until then.
    void mostra();
    /// Shows it and keeps the notes.
    void apri();

    platform::headless::HeadlessForm& form() { return *host->controls->form("FRMQZ_COPIADISTINTA"); }
    template <class Tipo> Tipo& controllo(std::string_view nome) { return form().control<Tipo>(nome); }
    platform::headless::HeadlessTree& albero(std::string_view nome) {
        return controllo<platform::headless::HeadlessTree>(nome);
    }
    platform::headless::HeadlessButton& pulsante(std::string_view nome) {
        return controllo<platform::headless::HeadlessButton>(nome);
    }
    qz::StatoForm& stato() { return classe->form()->stato(); }
    contract::Value valore(std::string_view nome) const;

    std::vector<std::string> messaggi() const;
    std::vector<std::string> errori() const;
};

/// Those of the lines that begin with one of the list's, or for an end ("~Name") are one, in their order.
std::vector<std::string> soloQueste(const std::vector<std::string>& righe, const std::vector<std::string>& cercate);

} // namespace prove
