#pragma once

#include <QDialog>
#include <QPlainTextEdit>
#include <QTableWidget>

namespace host {

/// The host's error log: the newest entries first, with all that is known of the one chosen.
class ErrorLogWindow : public QDialog {
    Q_OBJECT
public:
    static constexpr int mostEntries = 500;

    ErrorLogWindow(const QString& file, QWidget* parent);

private:
    void load(const QString& file);

    QTableWidget* list_;
    QPlainTextEdit* details_;
};

} // namespace host
