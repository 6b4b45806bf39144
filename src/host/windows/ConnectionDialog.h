#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>

#include <functional>
#include <string>

namespace host {

/// Asks for the database to work on: an embedded file, or a server reached through ODBC.
/// A server that is reached over a network is asked for encryption, unless the user chooses otherwise and reads what
/// that means; what has just been tried in vain is confirmed by a second thought only.
class ConnectionDialog : public QDialog {
    Q_OBJECT
public:
    /// Tries a connection string; the reason of a failure in the user's language, empty when it serves.
    using Trial = std::function<QString(const std::string& connectionString)>;

    /// Shows the parts of a connection string, which may be empty.
    ConnectionDialog(const std::string& connectionString, Trial trial, QWidget* parent);

    /// What the fields say, with the password.
    std::string connectionString() const;

private:
    QWidget* makeFileFields();
    QWidget* makeServerFields();
    void makeEncryption(QFormLayout& form);
    std::string textWithout(bool encryption) const;
    void showEncryption();
    void confirm();
    void show(const std::string& connectionString);
    void forgetResultOnChange();
    void browse();
    void tryIt();
    void update();

    Trial trial_;
    QRadioButton* embedded_;
    QRadioButton* server_;
    QWidget* fileFields_ = nullptr;
    QWidget* serverFields_ = nullptr;
    QLineEdit* file_ = nullptr;
    QComboBox* driver_ = nullptr;
    QLineEdit* address_ = nullptr;
    QLineEdit* port_ = nullptr;
    QLineEdit* database_ = nullptr;
    QCheckBox* integrated_ = nullptr;
    QLineEdit* user_ = nullptr;
    QLineEdit* password_ = nullptr;
    QSpinBox* timeout_ = nullptr;
    QCheckBox* encrypted_ = nullptr;
    QLabel* encryptionHint_ = nullptr;
    QLineEdit* others_ = nullptr;
    QLabel* result_ = nullptr;
    QPushButton* try_ = nullptr;
    QPushButton* accept_ = nullptr;
    std::string failed_; ///< what was tried last, and did not serve
};

} // namespace host
