#pragma once

#include "contract/Fields.h"
#include "platform/qt/fields/FieldWidgets.h"
#include "platform/qt/forms/CaptionedControl.h"

#include <QCheckBox>
#include <QObject>

#include <functional>

namespace platform::qt {

class CalendarEdit;

/// A field whose content a data-entry frame may follow.
class EditSource {
public:
    EditSource() = default;
    EditSource(const EditSource&) = delete;
    EditSource& operator=(const EditSource&) = delete;
    virtual ~EditSource() = default;

    /// The content changed, by the user or the program.
    std::function<void()> edited;

protected:
    void tellEdited() const {
        if (edited)
            edited();
    }
};

/// What the fields over a line of text share.
template <class Interface> class TextFieldBase : public CaptionedControl<Interface>, public EditSource {
public:
    TextFieldBase(std::string_view name, TextEdit* edit);

    std::string text() const override;
    void setText(std::string_view value) override;
    void setPlaceholder(std::string_view value) override;

    QJsonObject read() const override;
    QString set(const QJsonValue& value) override;

protected:
    TextEdit* line_; ///< the control's widget; alive while widget_ is
    QObject context_;
};

extern template class TextFieldBase<contract::TextField>;
extern template class TextFieldBase<contract::LookupField>;

class TextFieldControl : public TextFieldBase<contract::TextField> {
public:
    TextFieldControl(std::string_view name, QWidget* parent);
};

/// The code's description is asked for (Decode) when the program gives another code, and when the user leaves the
/// field with another one.
class LookupFieldControl : public TextFieldBase<contract::LookupField> {
public:
    LookupFieldControl(std::string_view name, QWidget* parent);

    void setText(std::string_view value) override;
    QString click() override;
    QString set(const QJsonValue& value) override;

private:
    LookupFieldControl(std::string_view name, LookupEdit* line);
    void decode();

    QString decoded_;
};

class DateFieldControl : public QtControl<contract::DateField>, public EditSource {
public:
    DateFieldControl(std::string_view name, QWidget* parent);

    std::string text() const override;
    void setText(std::string_view value) override;
    bool hasValidDate() const override;
    /// What it holds is selected, to be typed over.
    void setFocus() override;

    QJsonObject read() const override;
    QString set(const QJsonValue& value) override;

private:
    DateFieldControl(std::string_view name, CalendarEdit* line);

    CalendarEdit* line_; ///< the control's widget; alive while widget_ is
    QObject context_;
};

class ComboBoxControl : public QtControl<contract::ComboBox>, public EditSource {
public:
    ComboBoxControl(std::string_view name, QWidget* parent);

    void addItem(std::string_view item) override;
    int itemCount() const override;
    int position() const override;
    void setPosition(int position) override;

    QJsonObject read() const override;
    QString set(const QJsonValue& value) override;

private:
    ComboBoxControl(std::string_view name, PlainComboBox* box);
    void changed();

    PlainComboBox* box_; ///< the control's widget; alive while widget_ is
    int position_ = -1;
    QObject context_;
};

class CheckBoxControl : public CaptionedControl<contract::CheckBox>, public EditSource {
public:
    CheckBoxControl(std::string_view name, QWidget* parent);

    bool checked() const override;
    void setChecked(bool checked) override;

    QJsonObject read() const override;
    QString click() override;
    QString set(const QJsonValue& value) override;

protected:
    void showCaption(const QString& caption) override;

private:
    CheckBoxControl(std::string_view name, QCheckBox* box);

    QCheckBox* box_; ///< the control's widget; alive while widget_ is
    QObject context_;
};

} // namespace platform::qt
