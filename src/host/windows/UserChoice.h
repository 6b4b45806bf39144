#pragma once

#include <QDialog>
#include <QLineEdit>
#include <QString>

namespace host {

/// Asks for the current user and group.
class UserChoice : public QDialog {
    Q_OBJECT
public:
    UserChoice(const QString& user, const QString& group, QWidget* parent);

    QString user() const { return user_->text().trimmed(); }
    QString group() const { return group_->text().trimmed(); }

private:
    QLineEdit* user_;
    QLineEdit* group_;
};

} // namespace host
