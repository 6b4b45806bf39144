#include "component/Programma.h"

namespace prove {

Programma::Programma() {
    host->user = "UTENTE";
    host->group = "GRUPPO";
    host->makeConnection = [this] { return db; };
    host->workflow->states = {{3, "Bozza"}, {5, "Attivo"}, {9, "Chiuso"}};
    tabelle.collega(*db);
    tabelle.tipi = {{10, "A", "ORIGINE"}, {20, "B", "DESTINAZIONE"}, {30, "C", "FORNITORI", 1}};
    tabelle.nodi = {{1, 10, {}, 101}, {2, 10, 1, 102}, {3, 10, 2, 103}, {11, 20, {}, 201}, {12, 20, 11, 202}};

    interfaccia().ClsGlobal(std::make_shared<platform::headless::HostGlobal>(host));
    interfaccia().StatusBar(platform::headless::newStatusBar(host));
    interfaccia().ActiveFrame(platform::headless::newActiveFrame(host));
    interfaccia().ActiveNavigator(platform::headless::newNavigator(host));
    interfaccia().ClsVoceMenu(platform::headless::newHostObject(host, "ClsVoceMenu"));
    interfaccia().Caption("Manutenzione distinte");
    interfaccia().IsActive(true);
}

void Programma::apri() {
    classe->ShowForm();
    if (classe->form())
        stato().oggi = [] { return giorno("15/06/2024"); };
}

void Programma::mostra() {
    apri();
    db->take();
    host->journal->take();
}

contract::Value Programma::valore(std::string_view nome) const {
    for (const auto& [chiave, valore] : classe->state())
        if (chiave == nome)
            return valore;
    return "?";
}

std::vector<std::string> Programma::messaggi() const {
    std::vector<std::string> testi;
    for (const auto& messaggio : host->messages)
        testi.push_back(messaggio.text);
    return testi;
}

std::vector<std::string> Programma::errori() const {
    std::vector<std::string> nomi;
    for (const auto& errore : host->errors)
        nomi.push_back(errore.procedure);
    return nomi;
}

std::vector<std::string> soloQueste(const std::vector<std::string>& righe, const std::vector<std::string>& cercate) {
    std::vector<std::string> trovate;
    for (const auto& riga : righe)
        for (const auto& cercata : cercate)
            if (cercata.starts_with('~') ? riga == cercata : riga.starts_with(cercata))
                trovate.push_back(cercata);
    return trovate;
}

} // namespace prove
