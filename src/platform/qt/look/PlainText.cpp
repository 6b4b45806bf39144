#include "platform/qt/look/PlainText.h"

#include <QApplication>
#include <QEvent>
#include <QHelpEvent>
#include <QLabel>
#include <QPointer>
#include <QTextDocument>
#include <QToolTip>

namespace platform::qt {

namespace {

class PlainTexts : public QObject {
public:
    using QObject::QObject;

    bool eventFilter(QObject* watched, QEvent* event) override {
        switch (event->type()) {
        case QEvent::Polish:
            // Before it is shown. The label of a tool tip has its text made plain already, as HTML.
            if (auto* label = qobject_cast<QLabel*>(watched);
                label != nullptr && label->textFormat() == Qt::AutoText && !watched->inherits("QTipLabel"))
                label->setTextFormat(Qt::PlainText);
            break;
        case QEvent::ToolTip:
            if (auto* widget = qobject_cast<QWidget*>(watched);
                widget != nullptr && Qt::mightBeRichText(widget->toolTip())) {
                QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), letters(widget->toolTip()), widget);
                return true;
            }
            break;
        default:
            break;
        }
        return false;
    }
};

} // namespace

QString text(std::string_view utf8) {
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

QString letters(const QString& text) {
    if (!Qt::mightBeRichText(text))
        return text;
    return QStringLiteral("<span style=\"white-space: pre-wrap\">%1</span>").arg(text.toHtmlEscaped());
}

QString menuText(const QString& text) {
    QString marked = text;
    return marked.replace(QLatin1Char('&'), QLatin1String("&&"));
}

QString titleText(const QString& text) {
    QString marked = text;
    return marked.replace(QLatin1String("[*]"), QLatin1String("[*][*]"));
}

void keepTextsPlain() {
    static QPointer<PlainTexts> keeper;
    if (keeper)
        return;
    keeper = new PlainTexts(qApp);
    qApp->installEventFilter(keeper);
}

} // namespace platform::qt
