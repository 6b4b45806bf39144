#pragma once

#include "component/Scena.h"
#include "component/interaction/Comandi.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

namespace prove {

/// Origin 10: 1 (101) with 2 (102) with 3 (103) and 4 (104); 5 (105) stands apart. Destination 20: 11 (201) with 12
/// (202). The moved node is 2, its new parent 12.
class SpostaStrutturaTest : public testing::Test {
protected:
    SpostaStrutturaTest() {
        scena.tabelle.tipi = {{10, "A", "ORIGINE"}, {20, "B", "DESTINAZIONE"}, {30, "C", "VUOTA"}};
        scena.tabelle.nodi = {{1, 10, {}, 101}, {2, 10, 1, 102},   {3, 10, 2, 103},  {4, 10, 3, 104},
                              {5, 10, {}, 105}, {11, 20, {}, 201}, {12, 20, 11, 202}};
        prepara();
    }

    void prepara(std::int64_t origine = 2, std::int64_t destinazione = 12) {
        scena.carica(scena.stato.origine, "10", origine);
        scena.carica(scena.stato.destinazione, "20", destinazione);
        scena.host->answers = {6};
        prima = scena.tabelle.nodi;
    }
    NodoFinto atteso(std::int64_t id) const {
        for (const auto& nodo : prima)
            if (nodo.id == id)
                return nodo;
        return {};
    }
    void spostato(std::int64_t id, std::int64_t padre) {
        auto nodo = atteso(id);
        nodo.padre = padre;
        nodo.distinta = 20;
        nodo.dataVar = "15/06/2024";
        nodo.gruppoVar = "GRUPPO";
        nodo.utenteVar = "UTENTE";
        EXPECT_EQ(scena.tabelle.il(id), nodo);
    }
    void seguito(std::int64_t id) {
        auto nodo = atteso(id);
        nodo.distinta = 20;
        EXPECT_EQ(scena.tabelle.il(id), nodo);
    }
    void comePrima() {
        EXPECT_EQ(scena.tabelle.nodi, prima);
        EXPECT_FALSE(scena.db->InTransaction());
    }
    void premi() { comandi.CMD_SPOSTASTRU_ButtonClick(); }

    Scena scena;
    qz::Comandi comandi{scena.stato};
    std::vector<NodoFinto> prima;
};

} // namespace prove
