#include "platform/qt/forms/Surfaces.h"

#include "platform/qt/look/PlainText.h"

#include <QAccessibleWidget>
#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

namespace platform::qt {

namespace {

QAccessibleInterface* describePane(const QString& className, QObject* object) {
    if (className == QLatin1String("platform::qt::Pane"))
        return new QAccessibleWidget(static_cast<QWidget*>(object), QAccessible::Grouping);
    return nullptr;
}

} // namespace

QString brief(const QString& whole) {
    constexpr qsizetype most = 1000;
    return whole.size() <= most ? whole : whole.left(most) + QStringLiteral("…");
}

QString spoken(const QString& caption) {
    QString plain;
    plain.reserve(caption.size());
    for (qsizetype i = 0; i < caption.size(); ++i) {
        if (caption.at(i) == QLatin1Char('&')) {
            ++i;
            if (i >= caption.size())
                break;
        }
        plain.append(caption.at(i));
    }
    return plain.trimmed();
}

Pane::Pane(QWidget* parent) : QWidget(parent) {
    static const bool installed = [] {
        QAccessible::installFactory(describePane);
        return true;
    }();
    static_cast<void>(installed);
}

FrameControl::FrameControl(std::string_view name, QWidget* parent) : FrameBase(name, new Pane(parent)) {
}

CaptionedBox::CaptionedBox(QWidget* parent) : QGroupBox(parent) {
}

void CaptionedBox::paintEvent(QPaintEvent*) {
    const ThemeColors& c = Appearance::instance().colors();
    constexpr int margin = 10;
    constexpr double radius = 4.0;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(c.line);
    painter.setBrush(c.surface);
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), radius, radius);
    QFont bold = font();
    bold.setBold(true);
    painter.setFont(bold);
    painter.setPen(isEnabled() ? c.headerText : c.textDisabled);
    const QRect line(margin, margin / 2, width() - 2 * margin, QFontMetrics(bold).height());
    const QString caption = QFontMetrics(bold).elidedText(title(), Qt::ElideRight, line.width(), Qt::TextShowMnemonic);
    painter.drawText(line, Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine | Qt::TextShowMnemonic, caption);
}

GroupBoxControl::GroupBoxControl(std::string_view name, QWidget* parent)
    : GroupBoxControl(name, new CaptionedBox(parent)) {
}

GroupBoxControl::GroupBoxControl(std::string_view name, CaptionedBox* box) : FrameBase(name, box), box_(box) {
}

void GroupBoxControl::showCaption(const QString& caption) {
    box_->setTitle(caption);
}

BackdropControl::BackdropControl(std::string_view name, QWidget* parent)
    : BackdropControl(name, new QWidget(parent), true) {
}

BackdropControl::BackdropControl(std::string_view name, QWidget* surface, bool filled) : QtControl(name, surface) {
    surface->setAutoFillBackground(filled);
    surface->setBackgroundRole(QPalette::AlternateBase);
    surface->lower();
}

ElidedLabel::ElidedLabel(QWidget* parent) : QLabel(parent) {
    setTextFormat(Qt::PlainText);
}

void ElidedLabel::setHeading(bool heading) {
    heading_ = heading;
    update();
}

QFont ElidedLabel::shownFont() const {
    QFont shown = font();
    if (heading_)
        shown.setBold(true);
    return shown;
}

int ElidedLabel::flags() const {
    // Without a field to lead to, an ampersand is a letter like any other.
    return Qt::TextSingleLine | (buddy() != nullptr ? Qt::TextShowMnemonic : 0);
}

bool ElidedLabel::fits() const {
    return QFontMetrics(shownFont()).size(flags(), text()).width() <= width();
}

bool ElidedLabel::event(QEvent* event) {
    if (event->type() == QEvent::ToolTip && toolTip().isEmpty() && !fits()) {
        QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), letters(text()), this);
        return true;
    }
    return QLabel::event(event);
}

void ElidedLabel::paintEvent(QPaintEvent*) {
    const ThemeColors& c = Appearance::instance().colors();
    QPainter painter(this);
    const QFont shown = shownFont();
    painter.setFont(shown);
    painter.setPen(!isEnabled() ? c.textDisabled : heading_ ? c.headerText : c.text);
    const QString line = fits() ? text() : QFontMetrics(shown).elidedText(text(), Qt::ElideRight, width(), flags());
    painter.drawText(rect(), static_cast<int>(Qt::AlignVCenter | Qt::AlignLeft) | flags(), line);
}

LabelControl::LabelControl(std::string_view name, QWidget* parent) : LabelControl(name, new ElidedLabel(parent)) {
}

LabelControl::LabelControl(std::string_view name, ElidedLabel* label) : CaptionedControl(name, label), label_(label) {
}

void LabelControl::setHeading(bool heading) {
    if (widget_)
        label_->setHeading(heading);
}

void LabelControl::setField(QWidget* field) {
    field_ = field;
    label_->setBuddy(field->focusProxy() != nullptr ? field->focusProxy() : field);
    nameField();
}

void LabelControl::showCaption(const QString& caption) {
    label_->setText(caption);
    nameField();
}

void LabelControl::nameField() {
    const QString name = spoken(text(caption()));
    QWidget* field = field_;
    // Without a field to lead to, an ampersand is a letter like any other.
    if (field == nullptr && widget_ && !caption().empty())
        widget_->setAccessibleName(text(caption()));
    if (field == nullptr || name.isEmpty())
        return;
    const QString present = field->accessibleName();
    if (present != field->objectName() && present != givenName_)
        return; // it has a better one of its own
    field->setAccessibleName(name);
    if (field->focusProxy() != nullptr)
        field->focusProxy()->setAccessibleName(name);
    givenName_ = name;
}

} // namespace platform::qt
