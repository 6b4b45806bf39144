#pragma once

#include "platform/qt/forms/Scriptable.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>

namespace host {

// Plain widgets of the host's own windows as scripts see them.

class ButtonControl : public platform::qt::Scriptable {
public:
    explicit ButtonControl(QPushButton* button) : button_(button) {}
    QWidget* widget() override { return button_; }
    QJsonObject read() const override;
    QString click() override;

private:
    QPushButton* button_;
};

class FieldControl : public platform::qt::Scriptable {
public:
    explicit FieldControl(QLineEdit* field) : field_(field) {}
    QWidget* widget() override { return field_; }
    QJsonObject read() const override;
    QString set(const QJsonValue& value) override;

private:
    QLineEdit* field_;
};

class LabelControl : public platform::qt::Scriptable {
public:
    explicit LabelControl(QLabel* label) : label_(label) {}
    QWidget* widget() override { return label_; }
    QJsonObject read() const override;

private:
    QLabel* label_;
};

/// A table as a grid: the texts of the rows that are shown.
class TableControl : public platform::qt::Scriptable {
public:
    explicit TableControl(QTableWidget* table) : table_(table) {}
    QWidget* widget() override { return table_; }
    QJsonObject read() const override;

private:
    QTableWidget* table_;
};

} // namespace host
