#include "host/start/ToolkitTexts.h"

#include <QHash>
#include <QString>

namespace host {

namespace {

struct Text {
    const char* source;
    const char* italian;
};

// Whatever its context: none of them means different things in different places.
constexpr Text texts[] = {
    // fields
    {"&Undo", "&Annulla"},
    {"&Redo", "&Ripeti"},
    {"Cu&t", "&Taglia"},
    {"&Copy", "&Copia"},
    {"&Paste", "&Incolla"},
    {"Delete", "Elimina"},
    {"Select All", "Seleziona tutto"},
    {"&Select All", "&Seleziona tutto"},
    {"&Step up", "A&umenta"},
    {"Step &down", "&Diminuisci"},
    // boxes
    {"Show Details...", "Mostra dettagli"},
    {"Hide Details...", "Nascondi dettagli"},
    {"OK", "OK"},
    {"Cancel", "Annulla"},
    {"&Cancel", "&Annulla"},
    {"&Yes", "&Sì"},
    {"&No", "&No"},
    // window menu
    {"&Restore", "&Ripristina"},
    {"&Move", "&Sposta"},
    {"&Size", "&Dimensione"},
    {"Mi&nimize", "Ri&duci a icona"},
    {"Ma&ximize", "In&grandisci"},
    {"Stay on &Top", "Sempre in &primo piano"},
    {"&Close", "&Chiudi"},
    {"Minimize", "Riduci a icona"},
    {"Maximize", "Ingrandisci"},
    {"Restore", "Ripristina"},
    {"Restore Down", "Ripristina"},
    {"Close", "Chiudi"},
    {"Menu", "Menu"},
    // choice of a file
    {"Look in:", "Cerca in:"},
    {"File &name:", "&Nome file:"},
    {"Files of type:", "Tipo di file:"},
    {"&Open", "&Apri"},
    {"&Choose", "&Scegli"},
    {"Back", "Indietro"},
    {"Go back", "Torna alla cartella precedente"},
    {"Forward", "Avanti"},
    {"Go forward", "Vai alla cartella successiva"},
    {"Parent Directory", "Cartella superiore"},
    {"Go to the parent directory", "Vai alla cartella superiore"},
    {"Create New Folder", "Nuova cartella"},
    {"Create a New Folder", "Crea una nuova cartella"},
    {"List View", "Elenco"},
    {"Change to list view mode", "Mostra come elenco"},
    {"Detail View", "Dettagli"},
    {"Change to detail view mode", "Mostra i dettagli"},
    {"Sidebar", "Luoghi"},
    {"List of places and bookmarks", "Luoghi e preferiti"},
    {"Files", "File"},
    {"&Rename", "&Rinomina"},
    {"&Delete", "&Elimina"},
    {"Show &hidden files", "Mostra i file &nascosti"},
    {"&New Folder", "&Nuova cartella"},
    {"Computer", "Computer"},
    {"Name", "Nome"},
    {"Size", "Dimensione"},
    {"Type", "Tipo"},
    {"Kind", "Tipo"},
    {"Date Modified", "Ultima modifica"},
    // choice of a printer
    {"Printer", "Stampante"},
    {"&Name:", "&Nome:"},
    {"P&roperties", "P&roprietà"},
    {"Location:", "Luogo:"},
    {"Type:", "Tipo:"},
    {"Output &file:", "&File:"},
    {"Print to File (PDF)", "Su file (PDF)"},
    {"Local file", "File di questo computer"},
    {"Write PDF file", "Scrive un file PDF"},
    {"&Options >>", "&Opzioni >>"},
    {"&Options <<", "&Opzioni <<"},
    {"&Print", "&Stampa"},
    {"Print", "Stampa"},
    {"Copies", "Copie"},
    {"Copies:", "Copie:"},
    {"Options", "Opzioni"},
    {"Reverse", "Ordine inverso"},
    {"Print range", "Pagine"},
    {"Print all", "Tutte"},
    {"Output Settings", "Impostazioni"},
    {"Page Set:", "Insieme di pagine:"},
    {"All Pages", "Tutte le pagine"},
    {"Odd Pages", "Pagine dispari"},
    {"Even Pages", "Pagine pari"},
    {"Color Mode", "Colori"},
    {"Color", "A colori"},
    {"Grayscale", "Toni di grigio"},
    {"Duplex Printing", "Fronte e retro"},
    {"None", "Nessuno"},
    {"Long side", "Lato lungo"},
    {"Short side", "Lato corto"},
    {"%1\nFile not found.\nPlease verify the correct file name was given.", "Il file «%1» non esiste."},
};

QHash<QByteArray, QString> tableOf() {
    QHash<QByteArray, QString> table;
    for (const auto& text : texts)
        table.insert(text.source, QString::fromUtf8(text.italian));
    return table;
}

} // namespace

QString ToolkitTexts::translate(const char*, const char* source, const char*, int) const {
    static const QHash<QByteArray, QString> table = tableOf();
    return table.value(QByteArray(source));
}

} // namespace host
