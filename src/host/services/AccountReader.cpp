#include "host/services/AccountReader.h"

#include "contract/Snapshot.h"
#include "host/database/DatabaseAccess.h"
#include "host/services/Text.h"

#include <QLocale>

#include <optional>

namespace host {

using contract::Fragment;
using contract::Snapshot;
using contract::Statement;

namespace {

/// A text as a card can show it: one that no card has room for is cut, and says so.
QString shown(const std::string& text) {
    constexpr qsizetype longest = 400;
    const QString all = toQt(text).trimmed();
    if (all.size() <= longest)
        return all;
    // Not within a pair of surrogates.
    const qsizetype end = all.at(longest).isLowSurrogate() ? longest - 1 : longest;
    return QStringLiteral("%1… (testo tagliato: in tutto %2 caratteri)")
        .arg(all.first(end), QLocale(QLocale::Italian).toString(all.size()));
}

/// Rows of one table by its keys; small single reads, since a card is opened once and again and needs no speed.
class Reader {
public:
    Reader(contract::Connection& connection, const AccountKey& key) : connection_(connection), key_(key) {}

    AccountSheet read() {
        Statement statement("SELECT * FROM CG44_CLIFOR WHERE CG44_DITTA_CG18 = ");
        account(statement, " AND CG44_TIPOCF = ", " AND CG44_CLIFOR = ");
        readAgainWhenLost(connection_, statement, account_);
        sheet_.found = account_.rowCount() > 0;
        if (sheet_.found) {
            readRegistry();
            readConditions();
            readAgent();
            readSales();
        }
        readLinks();
        return sheet_;
    }

private:
    Statement& account(Statement& statement, Fragment kind, Fragment code) const {
        return (statement.number(key_.company) << kind).number(key_.kind).operator<<(code).number(key_.code);
    }

    /// Text of a field of the first row; empty without rows.
    static QString text(const Snapshot& rows, std::string_view field) {
        const auto at = rows.find(field);
        return at && rows.rowCount() > 0 ? shown(rows.column(*at).value(0).text()) : QString();
    }
    static std::optional<std::int64_t> number(const Snapshot& rows, std::string_view field) {
        const auto at = rows.find(field);
        return at && rows.rowCount() > 0 ? rows.column(*at).integer(0) : std::nullopt;
    }

    Snapshot rowsOf(const Statement& statement) const {
        Snapshot rows;
        readAgainWhenLost(connection_, statement, rows);
        return rows;
    }

    static void put(AccountSheet::Group& group, const QString& name, const QString& text) {
        if (!text.isEmpty())
            group.values.emplace_back(name, text);
    }
    static QString described(const QString& code, const QString& description) {
        return description.isEmpty() ? code : code + QLatin1Char(' ') + description;
    }

    void readRegistry() {
        AccountSheet::Group group{QStringLiteral("Anagrafica"), {}};
        if (const auto entry = number(account_, "CG44_CODICE_CG16")) {
            Statement statement("SELECT * FROM CG16_ANAGGEN WHERE CG16_CODICE = ");
            statement.number(*entry);
            const Snapshot rows = rowsOf(statement);
            sheet_.name = text(rows, "CG16_RAGSOANAG");
            put(group, QStringLiteral("Ragione sociale"), sheet_.name);
            put(group, QStringLiteral("Indirizzo"), text(rows, "CG16_INDIRIZZO"));
            const QString province = text(rows, "CG16_PROV");
            put(group, QStringLiteral("Città"),
                text(rows, "CG16_CITTA") + (province.isEmpty() ? QString() : QStringLiteral(" (%1)").arg(province)));
            put(group, QStringLiteral("Telefono"), text(rows, "CG16_TEL1NUM"));
            put(group, QStringLiteral("Fax"), text(rows, "CG16_FAXNUM"));
        }
        if (group.values.empty())
            group.values.emplace_back(QString(), QStringLiteral("Il conto non è collegato all'anagrafica generale."));
        sheet_.groups.push_back(group);
    }

    void readConditions() {
        AccountSheet::Group group{QStringLiteral("Condizioni di vendita"), {}};
        const QString payment = text(account_, "CG44_CODPAG_CG62");
        // A server refuses to compare an empty text with codes that are numbers.
        if (!payment.isEmpty()) {
            Statement terms("SELECT CG62_DESCPAG FROM CG62_CONDPAGDES WHERE CG62_CODPAG = '");
            terms.text(payment.toStdString()) << "'";
            put(group, QStringLiteral("Pagamento"), described(payment, text(rowsOf(terms), "CG62_DESCPAG")));
        }
        put(group, QStringLiteral("Valuta"), text(account_, "CG44_CODICE_CG08"));
        put(group, QStringLiteral("Aliquota IVA"), text(account_, "CG44_CODICE_CG28"));
        if (const auto bank = number(account_, "CG44_CODABI_CG12")) {
            Statement statement("SELECT CG12_DESCR FROM CG12_BANCHE WHERE CG12_BANCA = ");
            statement.number(*bank);
            put(group, QStringLiteral("Banca (ABI)"),
                described(QString::number(*bank), text(rowsOf(statement), "CG12_DESCR")));
            if (const auto branch = number(account_, "CG44_CODCAB_CG13")) {
                Statement agency("SELECT CG13_DESCR FROM CG13_AGENZIE WHERE CG13_BANCA_CG12 = ");
                agency.number(*bank) << " AND CG13_CODCAB = ";
                agency.number(*branch);
                put(group, QStringLiteral("Agenzia (CAB)"),
                    described(QString::number(*branch), text(rowsOf(agency), "CG13_DESCR")));
            }
        }
        addIfAny(group);
    }

    void readAgent() {
        const auto agent = number(account_, "CG44_IDAGENTE_MG17");
        if (!agent)
            return;
        AccountSheet::Group group{QStringLiteral("Provvigioni"), {}};
        Statement statement("SELECT * FROM MG17_AGENTI WHERE MG17_DITTA_CG18 = ");
        statement.number(key_.company) << " AND MG17_IDAGENTE = ";
        statement.number(*agent);
        const Snapshot rows = rowsOf(statement);
        QString name;
        if (const auto entry = number(rows, "MG17_ANAGEN_CG16")) {
            Statement registry("SELECT CG16_RAGSOANAG FROM CG16_ANAGGEN WHERE CG16_CODICE = ");
            registry.number(*entry);
            name = text(rowsOf(registry), "CG16_RAGSOANAG");
        }
        put(group, QStringLiteral("Agente"), described(text(rows, "MG17_AGENTE"), name));
        addIfAny(group);
    }

    void readSales() {
        Statement statement("SELECT * FROM MG19_CLIFORVA WHERE MG19_DITTA_CG18 = ");
        account(statement, " AND MG19_TIPOCF_CG44 = ", " AND MG19_CLIFOR_CG44 = ");
        const Snapshot rows = rowsOf(statement);
        AccountSheet::Group group{QStringLiteral("Classificazioni"), {}};
        put(group, QStringLiteral("Listino"), text(rows, "MG19_LISTMAG"));
        constexpr std::pair<const char*, const char*> fields[] = {
            {"Macro area", "MG19_MACROAREA"},
            {"Area", "MG19_AREA"},
            {"Zona", "MG19_ZONA"},
            {"Macro categoria", "MG19_MACROCAT"},
            {"Categoria", "MG19_CATEG"},
            {"Sottocategoria", "MG19_SOTTOCAT"},
            {"Raggruppamento 1", "MG19_RAGGRCF1"},
            {"Raggruppamento 2", "MG19_RAGGRCF2"},
            {"Raggruppamento 3", "MG19_RAGGCRF3"},
        };
        for (const auto& [name, field] : fields)
            put(group, QString::fromUtf8(name), text(rows, field));
        addIfAny(group);
    }

    void readLinks() {
        Statement statement("SELECT QZ01_CODICE, QZ01_DESCR, QZ02_DATAINIZIOVAL, QZ02_DATAFINEVAL, QZ02_IDPARENT_QZ02 "
                            "FROM QZ02_DISTINTA LEFT OUTER JOIN QZ01_TIPODISTINTA ON QZ02_ID_QZ01 = QZ01_ID "
                            "WHERE QZ02_DITTA_CG18 = ");
        account(statement, " AND QZ02_TIPOCF_CG44 = ", " AND QZ02_CLIFOR_CG44 = ")
            << " ORDER BY QZ01_CODICE, QZ02_DATAINIZIOVAL";
        const Snapshot rows = rowsOf(statement);
        for (std::size_t row = 0; row < rows.rowCount(); ++row) {
            const auto cell = [&](std::size_t column) { return shown(rows.column(column).value(row).text()); };
            sheet_.links.push_back(QStringList{cell(0) + QLatin1Char('-') + cell(1),
                                               parentOf(rows.column(4).integer(row)), cell(2), cell(3)});
        }
    }

    QString parentOf(const std::optional<std::int64_t>& node) const {
        if (!node)
            return QStringLiteral("(capostipite)");
        Statement statement("SELECT QZ02_CLIFOR_CG44, CG16_RAGSOANAG FROM QZ02_DISTINTA "
                            "LEFT OUTER JOIN CG44_CLIFOR ON QZ02_DITTA_CG18 = CG44_DITTA_CG18 "
                            "AND QZ02_TIPOCF_CG44 = CG44_TIPOCF AND QZ02_CLIFOR_CG44 = CG44_CLIFOR "
                            "LEFT OUTER JOIN CG16_ANAGGEN ON CG44_CODICE_CG16 = CG16_CODICE WHERE QZ02_ID = ");
        statement.number(*node);
        const Snapshot rows = rowsOf(statement);
        return described(text(rows, "QZ02_CLIFOR_CG44"), text(rows, "CG16_RAGSOANAG"));
    }

    void addIfAny(const AccountSheet::Group& group) {
        if (!group.values.empty())
            sheet_.groups.push_back(group);
    }

    contract::Connection& connection_;
    AccountKey key_;
    Snapshot account_;
    AccountSheet sheet_;
};

} // namespace

AccountSheet readAccount(contract::Connection& connection, const AccountKey& key) {
    return Reader(connection, key).read();
}

} // namespace host
