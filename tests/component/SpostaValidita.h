#pragma once

#include "component/Scena.h"
#include "component/interaction/Comandi.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace prove {

/// Origin 10: 1 (101) with 2 (102) with 3 (103) with 4 (104). Destination 20: 11 (201). The moved node is 2, its new
/// parent 11, the end of the old links 30/06/2024.
class SpostaValiditaTest : public testing::Test {
protected:
    SpostaValiditaTest() {
        scena.tabelle.tipi = {{10, "A", "ORIGINE"}, {20, "B", "DESTINAZIONE"}, {30, "C", "VUOTA"}};
        scena.tabelle.nodi = {{1, 10, {}, 101}, {2, 10, 1, 102}, {3, 10, 2, 103}, {4, 10, 3, 104}, {11, 20, {}, 201}};
        comandi.chiediDataFine = [this] {
            ++dialoghi;
            if (dataScelta)
                scena.stato.DataFineLegame = *dataScelta;
        };
        prepara();
    }

    void prepara(std::int64_t origine = 2, std::int64_t destinazione = 11) {
        scena.carica(scena.stato.origine, "10", origine);
        scena.carica(scena.stato.destinazione, "20", destinazione);
        scena.host->answers = {6};
        scena.host->journal->take();
        prima = scena.tabelle.nodi;
    }
    void premi() { comandi.CMD_SPOSTAVALID_ButtonClick(); }
    void comePrima() {
        EXPECT_EQ(scena.tabelle.nodi, prima);
        EXPECT_FALSE(scena.db->InTransaction());
    }
    /// The new link of an account, which is the one with that start.
    const NodoFinto* copia(std::int64_t account, std::string_view inizio = "01/07/2024") const {
        for (const auto& nodo : scena.tabelle.nodi)
            if (nodo.account == account && nodo.inizio == inizio)
                return &nodo;
        return nullptr;
    }
    std::string fineDi(std::int64_t id) { return scena.tabelle.il(id).fine; }
    std::vector<std::string> operazioni() const {
        std::vector<std::string> righe;
        for (const auto& riga : scena.host->journal->take())
            if (riga.starts_with("WorkflowState."))
                righe.push_back(riga);
        return righe;
    }

    Scena scena;
    qz::Comandi comandi{scena.stato};
    std::optional<std::string> dataScelta = "30/06/2024";
    int dialoghi = 0;
    std::vector<NodoFinto> prima;
};

} // namespace prove
