// Texts without regard to case, and the table of the letters that are one.

#include "component/data/Lettere.h"

#include "component/data/BloccoRicerca.h"
#include "component/data/TabellaLettere.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace {

using qz::senzaMaiuscole;

TEST(SenzaMaiuscole, KeepsAccents) {
    EXPECT_EQ(senzaMaiuscole("È CITTÀ ŠKODA ÀÉÌÒÙ"), "è città škoda àéìòù");
    EXPECT_NE(senzaMaiuscole("È"), "e");
    EXPECT_EQ(senzaMaiuscole("ß123 ÷×"), "ß123 ÷×");
}

TEST(SenzaMaiuscole, TakesLettersOfEveryAlphabetForOne) {
    const std::vector<std::pair<std::string, std::string>> uguali = {
        {"ȘTEFAN ȚEPEȘ", "ștefan țepeș"},     // Romanian
        {"ҐУДЗИК", "ґудзик"},                 // Ukrainian
        {"NGUYỄN ẼƯƠ", "nguyễn ẽươ"},         // Vietnamese
        {"ΟΔΟΣ", "οδοσ"},                     // Greek
        {"οδος", "οδοσ"},                     // its other small sigma
        {"ԵՐԵՎԱՆ", "երեվան"},                 // Armenian
        {"ᲗᲑᲘᲚᲘᲡᲘ", "თბილისი"}, // Georgian
        {"𐐔𐐇𐐝", "𐐼𐐯𐑅"},                       // Deseret, of four bytes
        {"ＲＯＭＡ", "ｒｏｍａ"},             // of full width
        {"Ⅻ", "ⅻ"},
        {"ẞ", "ß"}, // three bytes, two bytes
        {"Ⱥ", "ⱥ"}, // two bytes, three bytes
        {"ſ", "s"},
        {"\u212A", "k"}, // kelvin
    };
    for (const auto& [grande, piccolo] : uguali) {
        EXPECT_EQ(senzaMaiuscole(grande), piccolo);
        EXPECT_EQ(senzaMaiuscole(piccolo), piccolo);
    }
}

TEST(SenzaMaiuscole, LeavesWhatFoldsToSeveralLettersOrToNone) {
    for (const auto* testo : {"ß", "İ", "ı", "ŉ", "漢字", "שלום", "👍"})
        EXPECT_EQ(senzaMaiuscole(testo), testo);
}

TEST(SenzaMaiuscole, LeavesWhatIsNoUtf8) {
    const std::string rotto = "A\xC3";
    EXPECT_EQ(senzaMaiuscole(rotto), std::string("a\xC3"));
    EXPECT_EQ(senzaMaiuscole(std::string("\xFF\xFE Z")), std::string("\xFF\xFE z"));
    // Too long for what it says, cut short, and bytes that follow nothing.
    for (const auto* testo : {"\xC1\x81", "\xE0\x83\x80", "\xF0\x80\x83\x80", "\xE1\xBA", "\xF0\x90\x90", "\x80\xBF",
                              "\xE1\xBA\x41", "\xF8\x90\x90\x90"}) {
        const std::string intatto(testo);
        const auto letto = senzaMaiuscole(intatto);
        EXPECT_EQ(letto.size(), intatto.size());
        EXPECT_EQ(letto, intatto.back() == 'A' ? intatto.substr(0, 2) + "a" : intatto);
    }
}

TEST(TabellaLettere, IsAscendingAndFoldsNothingTwice) {
    std::uint32_t ultima = 0;
    for (const auto& tratto : qz::trattiLettere) {
        EXPECT_GT(tratto.prima, ultima);
        EXPECT_GE(tratto.ultima, tratto.prima);
        EXPECT_EQ((tratto.ultima - tratto.prima) % tratto.passo, 0U);
        ultima = tratto.ultima;
    }
    const auto piegata = [](std::int64_t lettera) {
        for (const auto& tratto : qz::trattiLettere)
            if (lettera >= tratto.prima && lettera <= tratto.ultima && (lettera - tratto.prima) % tratto.passo == 0)
                return true;
        return false;
    };
    for (const auto& tratto : qz::trattiLettere)
        for (std::int64_t lettera = tratto.prima; lettera <= tratto.ultima; lettera += tratto.passo)
            EXPECT_FALSE(piegata(lettera + tratto.distanza)) << lettera;
}

TEST(BloccoRicerca, FindsANameInLettersOfAnotherLength) {
    qz::BloccoRicerca blocco;
    blocco.aggiungi("Ⱥcme Ⱥ");
    blocco.aggiungi("ȚIRIAC ẞ");
    blocco.aggiungi("Ultimo");
    EXPECT_EQ(blocco.trova(senzaMaiuscole("țiriac"), 0, 3), 1U);
    EXPECT_EQ(blocco.trova(senzaMaiuscole("ß"), 0, 3), 1U);
    EXPECT_EQ(blocco.trova(senzaMaiuscole("ULTIMO"), 0, 3), 2U);
    EXPECT_EQ(blocco.trova(senzaMaiuscole("me ⱥ"), 0, 3), 0U);
}

} // namespace
