#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>

#include <functional>
#include <string>

namespace host {

/// Asks for the database to work on: an embedded file, or a server reached through ODBC.
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
    QLineEdit* others_ = nullptr;
    QLabel* result_ = nullptr;
    QPushButton* try_ = nullptr;
    QPushButton* accept_ = nullptr;
};

} // namespace host
