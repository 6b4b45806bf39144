#pragma once

#include "platform/qt/forms/QtControl.h"
#include "platform/qt/look/PlainText.h"

#include <QJsonObject>
#include <QString>

#include <string>
#include <string_view>

namespace platform::qt {

/// A text as it is drawn in one line: of more than a thousand characters only the beginning, since measuring and
/// cutting a text takes time with its length.
QString brief(const QString& whole);

/// A caption without its mnemonic mark, as it is read aloud: "&Esegui" is "Esegui", "R&&S" is "R&S".
QString spoken(const QString& caption);

/// What the controls with a caption share.
template <class Interface> class CaptionedControl : public QtControl<Interface> {
public:
    using QtControl<Interface>::QtControl;

    std::string caption() const override { return caption_; }
    void setCaption(std::string_view caption) override {
        caption_ = caption;
        if (!this->widget_)
            return;
        const QString name = spoken(text(caption));
        this->widget_->setAccessibleName(!name.isEmpty()           ? name
                                         : !this->toolTip_.empty() ? text(this->toolTip_)
                                                                   : text(this->name_));
        showCaption(text(caption));
    }

    QJsonObject read() const override { return {{QStringLiteral("caption"), text(caption_)}}; }

protected:
    /// Puts it on the widget.
    virtual void showCaption(const QString&) {}

private:
    std::string caption_;
};

} // namespace platform::qt
