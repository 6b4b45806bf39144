#pragma once

#include <QDialog>
#include <QMessageBox>
#include <QString>

namespace host {

/// Shows a text with an OK button, and waits for the user.
void tell(QMessageBox::Icon icon, const QString& title, const QString& text, QWidget* parent);

/// Asks a question that "No" answers unless the user means it; whether it was "Sì".
bool ask(const QString& title, const QString& question, QWidget* parent);

/// A reason as the program writes it behind its own name on a console, as a sentence of its own: with a capital letter
/// and a full stop.
QString asSentence(const QString& reason);

/// Asks for one value: a labelled field between a title and the buttons "Conferma" and "Annulla".
class FieldDialog : public QDialog {
    Q_OBJECT
public:
    /// label: may name a mnemonic with "&". field: taken over; it has the focus.
    FieldDialog(const QString& title, const QString& label, QWidget* field, QWidget* parent);
};

} // namespace host
