#include "host/windows/ConnectionDialog.h"

#include "host/database/DatabaseAccess.h"
#include "host/services/Text.h"
#include "host/windows/DialogButtons.h"
#include "host/windows/Prompts.h"
#include "platform/odbc/ConnectionString.h"
#include "platform/odbc/DataSource.h"
#include "platform/odbc/Drivers.h"

#include <QAbstractButton>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QFormLayout>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QIntValidator>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace host {

namespace {

using platform::odbc::ConnectionString;
using platform::odbc::DriverKind;
using platform::odbc::Protection;
using platform::odbc::protectionOf;
using platform::odbc::Target;
using platform::odbc::targetOf;

constexpr int longestWait = 999'999; ///< of a statement, in seconds: eleven days
constexpr int highestPort = 65535;

/// Keywords that have a field of their own.
constexpr const char* ownKeywords[] = {"Driver", "Server", "Port", "Database", "Trusted_Connection", "UID"};

/// How a driver is asked for encryption.
struct EncryptionWord {
    const char* keyword;
    const char* value;
    const char* opposite;
};

const EncryptionWord* encryptionOf(DriverKind driver) {
    static constexpr EncryptionWord freeTds{"Encryption", "require", "off"};
    static constexpr EncryptionWord microsoft{"Encrypt", "yes", "no"};
    switch (driver) {
    case DriverKind::freeTds:
        return &freeTds;
    case DriverKind::microsoft:
        return &microsoft;
    default:
        return nullptr;
    }
}

/// Whether the connection is encrypted, wherever it goes.
bool asksForEncryption(Target target) {
    for (const char* keyword : {"Server", "Servername", "Address", "Addr"})
        target.string.remove(keyword);
    target.string.set("Server", "altrove");
    return protectionOf(target) == Protection::encrypted;
}

} // namespace

ConnectionDialog::ConnectionDialog(const std::string& connectionString, Trial trial, QWidget* parent)
    : QDialog(parent), trial_(std::move(trial)),
      embedded_(new QRadioButton(QStringLiteral("&File sul computer"), this)),
      server_(new QRadioButton(QStringLiteral("&Server SQL (ODBC)"), this)) {
    setWindowTitle(QStringLiteral("Connessione"));
    auto* column = new QVBoxLayout(this);
    column->addWidget(embedded_);
    column->addWidget(fileFields_ = makeFileFields());
    column->addWidget(server_);
    column->addWidget(serverFields_ = makeServerFields());
    result_ = new QLabel(this);
    result_->setObjectName(QStringLiteral("esito"));
    result_->setTextFormat(Qt::PlainText);
    result_->setWordWrap(true);
    result_->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    result_->setAccessibleName(QStringLiteral("Esito della prova"));
    result_->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    column->addWidget(result_, 1); // takes what room there is: the fields keep their places

    auto* buttons = new QDialogButtonBox(this);
    try_ = dialogButton(QStringLiteral("&Prova"), buttons);
    try_->setObjectName(QStringLiteral("prova"));
    buttons->addButton(try_, QDialogButtonBox::ResetRole); // apart from the two that close
    accept_ = dialogButton(QStringLiteral("&Conferma"), buttons, true);
    buttons->addButton(accept_, QDialogButtonBox::AcceptRole);
    buttons->addButton(dialogButton(QStringLiteral("&Annulla"), buttons), QDialogButtonBox::RejectRole);
    accept_->setObjectName(QStringLiteral("conferma"));
    accept_->setDefault(true);
    column->addWidget(buttons);
    connect(buttons, &QDialogButtonBox::accepted, this, &ConnectionDialog::confirm);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(try_, &QPushButton::clicked, this, &ConnectionDialog::tryIt);

    show(connectionString);
    connect(embedded_, &QRadioButton::toggled, this, &ConnectionDialog::update);
    connect(integrated_, &QCheckBox::toggled, this, &ConnectionDialog::update);
    connect(encrypted_, &QCheckBox::toggled, this, &ConnectionDialog::update);
    connect(driver_, &QComboBox::currentTextChanged, this, &ConnectionDialog::update);
    for (auto* field : {file_, address_, others_})
        connect(field, &QLineEdit::textChanged, this, &ConnectionDialog::update);
    forgetResultOnChange();
    update();
    (server_->isChecked() ? static_cast<QWidget*>(address_) : file_)->setFocus();
}

QWidget* ConnectionDialog::makeFileFields() {
    auto* box = new QWidget(this);
    auto* row = new QHBoxLayout(box);
    row->setContentsMargins(24, 0, 0, 8);
    file_ = new QLineEdit(box);
    file_->setObjectName(QStringLiteral("file"));
    file_->setAccessibleName(QStringLiteral("File del database"));
    file_->setMinimumWidth(380);
    auto* browse = dialogButton(QStringLiteral("S&foglia…"), box);
    connect(browse, &QPushButton::clicked, this, &ConnectionDialog::browse);
    row->addWidget(file_, 1);
    row->addWidget(browse);
    return box;
}

QWidget* ConnectionDialog::makeServerFields() {
    auto* box = new QWidget(this);
    auto* form = new QFormLayout(box);
    form->setContentsMargins(24, 0, 0, 8);
    const auto field = [&](const QString& label, const char* name) {
        auto* edit = new QLineEdit(box);
        edit->setObjectName(QLatin1String(name));
        form->addRow(label, edit);
        return edit;
    };
    driver_ = new QComboBox(box);
    driver_->setObjectName(QStringLiteral("driver"));
    driver_->setEditable(true);
    for (const auto& driver : platform::odbc::installedDrivers())
        driver_->addItem(toQt(driver));
    form->addRow(QStringLiteral("&Driver ODBC"), driver_);
    address_ = field(QStringLiteral("S&erver"), "server");
    port_ = field(QStringLiteral("P&orta"), "porta");
    port_->setValidator(new QIntValidator(1, highestPort, port_));
    port_->setPlaceholderText(QStringLiteral("quella del driver"));
    database_ = field(QStringLiteral("Data&base"), "database");
    integrated_ = new QCheckBox(QStringLiteral("Autenticazione &integrata"), box);
    integrated_->setObjectName(QStringLiteral("integrata"));
    form->addRow(QString(), integrated_);
    user_ = field(QStringLiteral("&Utente"), "utente");
    password_ = field(QStringLiteral("Pass&word"), "password");
    password_->setEchoMode(QLineEdit::Password);
    password_->setToolTip(QStringLiteral("Non viene salvata: il programma la chiede all'avvio"));
    timeout_ = new QSpinBox(box);
    timeout_->setObjectName(QStringLiteral("attesa"));
    timeout_->setRange(0, longestWait);
    timeout_->setSuffix(QStringLiteral(" s"));
    timeout_->setSpecialValueText(QStringLiteral("senza limite"));
    form->addRow(QStringLiteral("Attesa &massima per istruzione"), timeout_);
    makeEncryption(*form);
    others_ = field(QStringLiteral("A&ltre opzioni"), "altre");
    others_->setToolTip(QStringLiteral("Password e altri segreti scritti qui non vengono salvati"));
    others_->setPlaceholderText(QStringLiteral("es. TDS_Version=7.4"));
    return box;
}

void ConnectionDialog::makeEncryption(QFormLayout& form) {
    encrypted_ = new QCheckBox(QStringLiteral("Collegamento cifra&to"), form.parentWidget());
    encrypted_->setObjectName(QStringLiteral("cifrato"));
    encrypted_->setChecked(true);
    encryptionHint_ = new QLabel(form.parentWidget());
    encryptionHint_->setObjectName(QStringLiteral("cifratura"));
    encryptionHint_->setTextFormat(Qt::PlainText);
    encryptionHint_->setWordWrap(true);
    // The fields keep their places whatever it says.
    encryptionHint_->setMinimumHeight(3 * encryptionHint_->fontMetrics().lineSpacing());
    encryptionHint_->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    form.addRow(QString(), encrypted_);
    form.addRow(QString(), encryptionHint_);
}

void ConnectionDialog::show(const std::string& connectionString) {
    const bool odbc = !connectionString.empty() && !isEmbedded(connectionString);
    (odbc ? server_ : embedded_)->setChecked(true);
    if (!odbc) {
        file_->setText(toQt(embeddedPath(connectionString)));
        return;
    }
    ConnectionString string(connectionString);
    const auto text = [&](const char* keyword) { return toQt(string.value(keyword).value_or("")); };
    driver_->setCurrentText(text("Driver"));
    address_->setText(text("Server"));
    port_->setText(text("Port"));
    database_->setText(text("Database"));
    user_->setText(text("UID"));
    const QString trusted = text("Trusted_Connection").toLower();
    integrated_->setChecked(trusted == QLatin1String("yes") || trusted == QLatin1String("true"));
    if (const auto passwords = string.passwords(); !passwords.empty())
        password_->setText(toQt(passwords.front()));
    timeout_->setValue(text(std::string(ConnectionString::statementTimeout).c_str()).toInt());
    for (const char* keyword : ownKeywords)
        string.remove(keyword);
    string.remove(ConnectionString::statementTimeout);
    string.removeSecrets();
    const auto target = targetOf(ConnectionString(connectionString));
    const bool encrypted = protectionOf(target) == Protection::encrypted || asksForEncryption(target);
    // What the box writes by itself need not stand a second time.
    if (const auto* word = encryptionOf(target.driver); word != nullptr && string.value(word->keyword) == word->value)
        string.remove(word->keyword);
    encrypted_->setChecked(encrypted);
    others_->setText(toQt(string.text()));
}

std::string ConnectionDialog::connectionString() const {
    if (embedded_->isChecked())
        return embeddedDatabase(file_->text().trimmed().toStdString());
    // Said where the driver would not do by itself, or by the other options, what the box says.
    return textWithout(encrypted_->isChecked() == asksForEncryption(targetOf(ConnectionString(textWithout(true)))));
}

/// encryption: without what the box for it writes.
std::string ConnectionDialog::textWithout(bool encryption) const {
    ConnectionString string;
    const auto put = [&](const char* keyword, const QString& text) {
        if (!text.isEmpty())
            string.set(keyword, text.toStdString());
    };
    put("Driver", driver_->currentText().trimmed());
    put("Server", address_->text().trimmed());
    put("Port", port_->text().trimmed());
    put("Database", database_->text().trimmed());
    if (integrated_->isChecked()) {
        string.set("Trusted_Connection", "yes");
    } else {
        put("UID", user_->text().trimmed());
        put("PWD", password_->text());
    }
    if (timeout_->value() > 0)
        string.set(ConnectionString::statementTimeout, std::to_string(timeout_->value()));
    const auto* word = encryptionOf(targetOf(string).driver);
    if (!encryption && word != nullptr)
        string.set(word->keyword, encrypted_->isChecked() ? word->value : word->opposite);
    const std::string others = ConnectionString(others_->text().toStdString()).text();
    return others.empty() ? string.text() : string.text() + ";" + others;
}

// An answer is about what was tried.
void ConnectionDialog::forgetResultOnChange() {
    const auto fields = findChildren<QLineEdit*>(); // the combo box's too
    for (auto* field : fields)
        connect(field, &QLineEdit::textChanged, result_, &QLabel::clear);
    connect(timeout_, &QSpinBox::textChanged, result_, &QLabel::clear);
    for (QAbstractButton* choice :
         {static_cast<QAbstractButton*>(embedded_), static_cast<QAbstractButton*>(integrated_),
          static_cast<QAbstractButton*>(encrypted_)})
        connect(choice, &QAbstractButton::toggled, result_, &QLabel::clear);
}

void ConnectionDialog::browse() {
    const QString path = QFileDialog::getOpenFileName(this, QStringLiteral("Database"), file_->text(),
                                                      QStringLiteral("Database (*.sqlite *.db);;Tutti i file (*)"));
    if (!path.isEmpty())
        file_->setText(path);
}

void ConnectionDialog::tryIt() {
    result_->setText(QStringLiteral("Prova in corso…"));
    result_->repaint();
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    const QString reason = trial_(connectionString());
    QGuiApplication::restoreOverrideCursor();
    failed_ = reason.isEmpty() ? std::string() : connectionString();
    result_->setText(reason.isEmpty() ? QStringLiteral("La connessione riesce e le tabelle ci sono.") : reason);
    // The answer may take several lines.
    layout()->activate();
    resize(width(), std::max(height(), layout()->totalHeightForWidth(width())));
}

void ConnectionDialog::confirm() {
    const ConnectionString string(connectionString());
    if (const auto reason = embedded_->isChecked() ? std::string() : string.refusal(targetOf(string).driver);
        !reason.empty()) {
        result_->setText(asSentence(toQt(reason)));
        return;
    }
    if (failed_.empty() || failed_ != connectionString() ||
        ask(windowTitle(), QStringLiteral("La prova non è riuscita. Confermare lo stesso questa connessione?"), this))
        accept();
}

void ConnectionDialog::showEncryption() {
    const Target target = targetOf(ConnectionString(connectionString()));
    const bool known = server_->isChecked() && encryptionOf(target.driver) != nullptr;
    encrypted_->setEnabled(known);
    QString hint;
    if (server_->isChecked() && !known) {
        hint = QStringLiteral("Di questo driver non si sa come cifri: si veda la sua documentazione e si scriva in "
                              "«Altre opzioni» ciò che vuole.");
    } else if (known) {
        switch (protectionOf(target)) {
        case Protection::encrypted:
            hint = target.driver == DriverKind::freeTds
                       ? QStringLiteral("Senza cifratura il collegamento non si apre. Il certificato del server è "
                                        "controllato se freetds.conf indica un «ca file».")
                       : QStringLiteral("Senza cifratura il collegamento non si apre. Il certificato del server "
                                        "dev'essere di un'autorità che questo computer conosce.");
            break;
        case Protection::plain:
            hint = QStringLiteral("⚠ Il collegamento non è cifrato: chi sta sulla rete può leggere i dati.");
            break;
        case Protection::local:
            hint = QStringLiteral("Il server è su questo computer: i dati non passano dalla rete.");
            break;
        case Protection::unknown:
            break;
        }
    }
    encryptionHint_->setText(hint);
}

void ConnectionDialog::update() {
    showEncryption();
    fileFields_->setEnabled(embedded_->isChecked());
    serverFields_->setEnabled(server_->isChecked());
    user_->setEnabled(!integrated_->isChecked());
    password_->setEnabled(!integrated_->isChecked());
    const bool named = embedded_->isChecked()
                           ? !file_->text().trimmed().isEmpty()
                           : !address_->text().trimmed().isEmpty() || !others_->text().trimmed().isEmpty();
    accept_->setEnabled(named);
    try_->setEnabled(named);
}

} // namespace host
