#include "host/start/CommandLine.h"

#include "host/start/StartFailure.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <initializer_list>
#include <set>
#include <string_view>

namespace host {

namespace {

[[noreturn]] void refuse(const std::string& reason) {
    throw StartFailure(ExitStatus::usage, "riga di comando: " + reason + " (--help elenca le opzioni)");
}

std::int64_t wholeNumber(const std::string& option, const std::string& text, std::int64_t least, std::int64_t most) {
    std::int64_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    const bool tooLarge = error == std::errc::result_out_of_range;
    if ((error != std::errc() && !tooLarge) || end != text.data() + text.size() || text.empty())
        refuse(option + " vuole un numero intero, non \"" + text + "\"");
    if (tooLarge || number < least || number > most)
        refuse(option + " va da " + std::to_string(least) + " a " + std::to_string(most) + ", non " + text);
    return number;
}

constexpr std::array<std::string_view, 14> withValue = {
    "--database", "--odbc",   "--demo-size", "--company", "--user",    "--group", "--trace",
    "--log",      "--script", "--severity",  "--format",  "--compare", "--date",  "--moves"};
constexpr std::array<std::string_view, 7> withoutValue = {"--create", "--create-demo", "--version", "--help",
                                                          "--check",  "--dry-run",     "--apply"};

contract::AuditSeverity severityOf(const std::string& text) {
    if (text == "error")
        return contract::AuditSeverity::error;
    if (text == "warning")
        return contract::AuditSeverity::warning;
    if (text != "hint")
        refuse("--severity vuole error, warning o hint, non \"" + text + "\"");
    return contract::AuditSeverity::hint;
}

CommandLine::Format formatOf(const std::string& text) {
    if (text == "text")
        return CommandLine::Format::text;
    if (text == "csv")
        return CommandLine::Format::csv;
    if (text != "json")
        refuse("--format vuole text, csv o json, non \"" + text + "\"");
    return CommandLine::Format::json;
}

contract::Date dayOf(const std::string& text) {
    const auto day = contract::Date::parse(text);
    if (!day)
        refuse("--date vuole un giorno gg/mm/aaaa, non \"" + text + "\"");
    return *day;
}

template <std::size_t N> bool contains(const std::array<std::string_view, N>& names, std::string_view name) {
    return std::find(names.begin(), names.end(), name) != names.end();
}

/// Walks over the arguments, an option with its value at a time.
class Reader {
public:
    explicit Reader(const std::vector<std::string>& arguments) : arguments_(arguments) {}

    CommandLine read() {
        for (at_ = 0; at_ < arguments_.size(); ++at_)
            readOption(arguments_[at_]);
        check();
        return line_;
    }

private:
    void readOption(const std::string& argument) {
        const auto equals = argument.find('=');
        const std::string name = argument.substr(0, equals);
        if (contains(withoutValue, name) && equals != std::string::npos)
            refuse(name + " non vuole un valore");
        if (!contains(withValue, name) && !contains(withoutValue, name))
            refuse((argument.starts_with("-") ? "opzione sconosciuta \"" : "argomento di troppo \"") + argument + "\"");
        if (!seen_.insert(name).second)
            refuse(name + " è ripetuta");
        if (contains(withoutValue, name))
            return take(name);
        if (equals != std::string::npos)
            return take(name, argument.substr(equals + 1));
        if (at_ + 1 >= arguments_.size())
            refuse(name + " vuole un valore");
        take(name, arguments_[++at_]);
    }

    void take(const std::string& name) {
        if (name == "--create")
            line_.action = CommandLine::Action::create;
        else if (name == "--create-demo")
            line_.action = CommandLine::Action::createDemo;
        else if (name == "--check")
            line_.action = CommandLine::Action::check;
    }

    void take(const std::string& name, const std::string& value) {
        if (value.empty())
            refuse(name + " vuole un valore");
        if (name == "--database")
            line_.database = value;
        else if (name == "--odbc")
            line_.odbc = value;
        else if (name == "--demo-size")
            line_.demoSize = wholeNumber(name, value, 1, CommandLine::largestDemoSize);
        else if (name == "--company")
            line_.company = wholeNumber(name, value, 0, 999'999'999);
        else if (name == "--user")
            line_.user = value;
        else if (name == "--group")
            line_.group = value;
        else if (name == "--trace")
            line_.trace = value;
        else if (name == "--log")
            line_.log = value;
        else
            takeOfTask(name, value);
    }

    void takeOfTask(const std::string& name, const std::string& value) {
        if (name == "--severity")
            line_.severity = severityOf(value);
        else if (name == "--format")
            line_.format = formatOf(value);
        else if (name == "--date")
            line_.date = dayOf(value);
        else if (name == "--compare")
            takeCompared(value);
        else if (name == "--moves")
            line_.moves = value;
        else
            line_.script = value;
    }

    /// The second distinta is an argument of its own.
    void takeCompared(const std::string& first) {
        if (at_ + 1 >= arguments_.size() || arguments_[at_ + 1].empty() || arguments_[at_ + 1].starts_with("--"))
            refuse("--compare vuole due distinte");
        line_.compared = {first, arguments_[++at_]};
    }

    bool seen(const char* name) const { return seen_.contains(name); }

    void check() {
        // Who asks for help gets it, whatever else stands there.
        if (seen("--help")) {
            line_.action = CommandLine::Action::help;
            return;
        }
        if (seen("--version")) {
            line_.action = CommandLine::Action::version;
            return;
        }
        exclude("--database", "--odbc");
        exclude("--create", "--create-demo");
        exclude("--script", "--create");
        exclude("--script", "--create-demo");
        exclude("--dry-run", "--apply");
        needs("--dry-run", {"--moves"});
        needs("--apply", {"--moves"});
        if (seen("--moves") && !seen("--dry-run") && !seen("--apply"))
            refuse("--moves vuole --dry-run, che mostra, oppure --apply, che sposta");
        if (seen("--demo-size") && !seen("--create-demo"))
            refuse("--demo-size serve solo con --create-demo");
        for (const char* task : {"--check", "--compare", "--moves"})
            for (const char* other : {"--script", "--create", "--create-demo"})
                exclude(task, other);
        exclude("--check", "--compare");
        exclude("--check", "--moves");
        exclude("--compare", "--moves");
        needs("--severity", {"--check"});
        needs("--format", {"--check", "--compare", "--moves"});
        needs("--date", {"--compare"});
        for (const char* task : {"--compare", "--moves"})
            if (seen(task) && line_.format == CommandLine::Format::text)
                refuse(std::string(task) + " scrive csv o json");
        if (seen("--script"))
            line_.action = CommandLine::Action::script;
        else if (seen("--compare"))
            line_.action = CommandLine::Action::compare;
        else if (seen("--moves"))
            line_.action = CommandLine::Action::moves;
        line_.apply = seen("--apply");
    }

    void needs(const char* option, std::initializer_list<const char*> tasks) const {
        std::string names;
        for (const char* task : tasks) {
            if (seen(task))
                return;
            names += (names.empty() ? "" : " o ") + std::string(task);
        }
        if (seen(option))
            refuse(std::string(option) + " serve solo con " + names);
    }

    void exclude(const char* one, const char* other) const {
        if (seen(one) && seen(other))
            refuse(std::string(one) + " e " + other + " si escludono a vicenda");
    }

    const std::vector<std::string>& arguments_;
    std::size_t at_ = 0;
    std::set<std::string, std::less<>> seen_;
    CommandLine line_;
};

} // namespace

CommandLine readCommandLine(const std::vector<std::string>& arguments) {
    return Reader(arguments).read();
}

std::string helpText() {
    return R"(Manutenzione delle distinte di clienti e fornitori.

distinte [CONNESSIONE] [CONTESTO]                 apre il programma in una finestra
distinte [CONNESSIONE] [CONTESTO] --script FILE   esegue uno script; - legge lo standard input
distinte [CONNESSIONE] [CONTESTO] --check         verifica le distinte dell'azienda
distinte [CONNESSIONE] [CONTESTO] --compare A B   confronta due distinte, ognuna per identificativo o codice
distinte [CONNESSIONE] [CONTESTO] --moves FILE (--dry-run | --apply)
                                                  mostra o esegue un elenco di spostamenti
distinte [CONNESSIONE] --create                   crea le tabelle in un database vuoto
distinte [CONNESSIONE] --create-demo              lo stesso, con le aziende dimostrative

Connessione
  --database FILE    database incorporato
  --odbc STRINGA     SQL Server con una stringa di connessione ODBC; esclude --database
                     Senza le due: la variabile DISTINTE_ODBC, poi la connessione salvata nel programma, poi un file
                     nella cartella dei dati dell'utente, creato al primo avvio con i dati dimostrativi
  --demo-size N      con --create-demo: nodi della distinta più grande (2000)

Contesto
  --company N        azienda di lavoro (la più bassa del database)
  --user CODICE      utente corrente (ADMIN)
  --group CODICE     gruppo corrente (ADMIN)
  --trace FILE       accoda ogni istruzione mandata al database, una stringa JSON per riga
  --log FILE         registro degli errori (un file nella cartella dei dati dell'utente)

Verifica, confronto ed elenchi
  --severity G       con --check: error, warning o hint, la gravità da cui scrivere (warning)
  --date GIORNO      con --compare: gg/mm/aaaa (oggi)
  --format F         text, csv o json (--check: text; --compare e --moves, senza text: csv)

  --version          scrive la versione
  --help             scrive questo aiuto

Stato di uscita: 0 tutto bene, nessun rilievo, nessuna differenza; 1 una riga dello script o uno spostamento dell'elenco
rifiutati, --create con tabelle già presenti, rilievi, differenze; 2 riga di comando, script o elenco inutilizzabili;
3 database che non si apre, non è un database, non ha le tabelle o non esiste.
)";
}

} // namespace host
