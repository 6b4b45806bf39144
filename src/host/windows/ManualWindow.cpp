#include "host/windows/ManualWindow.h"

#include "host/services/Text.h"
#include "host/windows/DialogButtons.h"
#include "platform/qt/look/Appearance.h"

#include <QFile>
#include <QHBoxLayout>
#include <QLabel>
#include <QScrollBar>
#include <QShortcut>
#include <QTextBlock>
#include <QVBoxLayout>

#include <algorithm>

namespace host {

namespace {

constexpr QSize startSize(940, 760);
constexpr int sideMargin = 80; ///< beside a picture: margins and the scroll bar
constexpr int highestHeading = 3;

/// The text, with its pictures no wider than the window is at first.
class ManualText : public QTextBrowser {
public:
    using QTextBrowser::QTextBrowser;

protected:
    QVariant loadResource(int type, const QUrl& name) override {
        const QVariant found = QTextBrowser::loadResource(type, name);
        if (type != QTextDocument::ImageResource)
            return found;
        QImage picture;
        if (found.typeId() == QMetaType::QByteArray)
            picture.loadFromData(found.toByteArray());
        else
            picture = found.value<QImage>();
        const int room = startSize.width() - sideMargin;
        return picture.width() > room ? picture.scaledToWidth(room, Qt::SmoothTransformation) : picture;
    }
};

/// A heading as links in the text name it: small letters and digits, with a dash for each blank.
QString anchorOf(const QString& heading) {
    QString anchor;
    for (const QChar c : heading.toLower()) {
        if (c.isLetterOrNumber() || c == QLatin1Char('-') || c == QLatin1Char('_'))
            anchor += c;
        else if (c.isSpace())
            anchor += QLatin1Char('-');
    }
    return anchor;
}

} // namespace

std::filesystem::path manualFile(const std::filesystem::path& programFolder) {
    for (const char* place : {"../share/distinte/manuale/manuale.md", "../../../docs/manuale.md"}) {
        std::error_code ignored;
        const auto file = programFolder / place;
        if (std::filesystem::is_regular_file(file, ignored))
            return std::filesystem::weakly_canonical(file, ignored);
    }
    return {};
}

ManualWindow::ManualWindow(const std::filesystem::path& file, QWidget* parent)
    : QDialog(parent), text_(new ManualText(this)), wanted_(new QLineEdit(this)) {
    setWindowTitle(QStringLiteral("Manuale"));
    setObjectName(QStringLiteral("manuale"));
    // A window of its own, as large as wanted.
    setWindowFlag(Qt::WindowMinMaxButtonsHint);
    text_->setOpenLinks(false);
    text_->setAccessibleName(QStringLiteral("Manuale"));
    QFile source(QString::fromStdString(file.string()));
    if (!file.empty() && source.open(QIODevice::ReadOnly)) {
        text_->document()->setBaseUrl(QUrl::fromLocalFile(source.fileName()));
        text_->setSearchPaths({QString::fromStdString(file.parent_path().string())});
        text_->document()->setDocumentMargin(16);
        text_->setMarkdown(QString::fromUtf8(source.readAll()));
    } else {
        text_->setPlainText(QStringLiteral("Il manuale non è installato accanto al programma."));
    }
    connect(text_, &QTextBrowser::anchorClicked, this, &ManualWindow::follow);

    auto* row = new QHBoxLayout;
    auto* label = new QLabel(QStringLiteral("Ce&rca nel manuale"), this);
    label->setBuddy(wanted_);
    auto* next = dialogButton(QStringLiteral("&Successivo"), this);
    auto* previous = dialogButton(QStringLiteral("&Precedente"), this);
    auto* top = dialogButton(QStringLiteral("&Indice"), this);
    auto* close = dialogButton(QStringLiteral("&Chiudi"), this);
    row->addWidget(label);
    row->addWidget(wanted_, 1);
    row->addWidget(next);
    row->addWidget(previous);
    row->addSpacing(16);
    row->addWidget(top);
    row->addWidget(close);
    for (auto* button : {next, previous, top, close})
        button->setAutoDefault(false);
    connect(wanted_, &QLineEdit::returnPressed, this, [this] { find(false); });
    connect(next, &QPushButton::clicked, this, [this] { find(false); });
    connect(previous, &QPushButton::clicked, this, [this] { find(true); });
    connect(top, &QPushButton::clicked, this, [this] { text_->verticalScrollBar()->setValue(0); });
    connect(close, &QPushButton::clicked, this, &QDialog::close);
    connect(new QShortcut(QKeySequence::Find, this), &QShortcut::activated, wanted_, [this] {
        wanted_->setFocus();
        wanted_->selectAll();
    });
    auto* column = new QVBoxLayout(this);
    column->addLayout(row);
    column->addWidget(text_, 1);
    resize(startSize);
    text_->setFocus();
}

void ManualWindow::find(bool backwards) {
    const QTextDocument::FindFlags way = backwards ? QTextDocument::FindBackward : QTextDocument::FindFlags();
    if (wanted_->text().isEmpty() || text_->find(wanted_->text(), way))
        return;
    // From the other end, once.
    const QTextCursor before = text_->textCursor();
    text_->moveCursor(backwards ? QTextCursor::End : QTextCursor::Start);
    if (!text_->find(wanted_->text(), way))
        text_->setTextCursor(before);
}

void ManualWindow::follow(const QUrl& link) {
    // Links lead to places of the manual alone.
    if (!link.hasFragment())
        return;
    const QString wanted = link.fragment(QUrl::FullyDecoded);
    for (QTextBlock block = text_->document()->begin(); block.isValid(); block = block.next()) {
        if (block.blockFormat().headingLevel() == 0 || block.blockFormat().headingLevel() > highestHeading ||
            anchorOf(block.text()) != wanted)
            continue;
        QTextCursor cursor(block);
        text_->setTextCursor(cursor);
        // To the top of the window, not just into sight.
        auto* bar = text_->verticalScrollBar();
        bar->setValue(bar->value() + text_->cursorRect(cursor).top());
        return;
    }
}

void ManualWindow::showChapter(const QString& heading) {
    QUrl link;
    link.setFragment(anchorOf(heading));
    follow(link);
}

} // namespace host
