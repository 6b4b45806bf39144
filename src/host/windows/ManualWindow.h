#pragma once

#include <QDialog>
#include <QLineEdit>
#include <QString>
#include <QTextBrowser>

#include <filesystem>

namespace host {

/// The user's manual: beside the installed program, or in the sources above a build's folder. Empty where it is in
/// neither place.
std::filesystem::path manualFile(const std::filesystem::path& programFolder);

/// Shows the manual with its pictures, and finds words in it. It stays open beside the work.
class ManualWindow : public QDialog {
    Q_OBJECT
public:
    /// file: as manualFile() finds it; where it is empty the window says what is missing.
    ManualWindow(const std::filesystem::path& file, QWidget* parent);

    /// Goes to the chapter of that heading; nothing happens where there is none.
    void showChapter(const QString& heading);
    QTextBrowser* text() const { return text_; }

private:
    void follow(const QUrl& link);
    void find(bool backwards);

    QTextBrowser* text_;
    QLineEdit* wanted_;
};

} // namespace host
