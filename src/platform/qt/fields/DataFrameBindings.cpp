// The fields of a data-entry frame: what each shows of a value, and the value that stands in it.

#include "contract/RuntimeError.h"
#include "contract/TypedDate.h"
#include "platform/qt/fields/DataFrameControl.h"
#include "platform/shared/ColumnTypes.h"

namespace platform::qt {

using contract::Date;
using contract::FieldType;
using contract::RuntimeError;
using contract::Value;
using shared::holdsDate;
using shared::holdsNumber;

namespace {

std::string trimmed(const std::string& content) {
    const auto first = content.find_first_not_of(' ');
    return first == std::string::npos ? std::string()
                                      : content.substr(first, content.find_last_not_of(' ') - first + 1);
}

Value dateValue(const std::string& field, const std::string& content, bool valid) {
    if (trimmed(content).empty())
        return Value::null();
    const auto date = Date::parse(content);
    if (!date || !valid)
        throw RuntimeError(RuntimeError::typeMismatch,
                           "Il campo " + field + " contiene \"" + content + "\", che non è una data.");
    return *date;
}

std::string dateText(const Value& value) {
    const auto date = value.date();
    return date ? date->text() : value.text();
}

} // namespace

void DataFrameControl::addBinding(const contract::Control& control, EditSource* source, Binding binding) {
    binding.control = &control;
    bindings_.push_back(std::move(binding));
    if (source == nullptr)
        return;
    sources_.push_back(source);
    source->edited = [this] { followEdit(); };
}

void DataFrameControl::bindField(contract::DateField& control, std::string_view field) {
    const std::string column(field);
    dates_.push_back(&control);
    addBinding(control, dynamic_cast<EditSource*>(&control),
               {column,
                nullptr,
                [&control] { return control.text(); },
                [&control, column] { return dateValue(column, control.text(), control.hasValidDate()); },
                [&control](const Value& value) { control.setText(dateText(value)); },
                {}});
}

void DataFrameControl::bindField(contract::ComboBox& control, std::string_view field) {
    const auto value = [&control] {
        return control.position() < 0 ? Value::null() : Value(static_cast<std::int64_t>(control.position()));
    };
    addBinding(control, dynamic_cast<EditSource*>(&control),
               {std::string(field),
                nullptr,
                [&control] { return std::to_string(control.position()); },
                value,
                [&control](const Value& shown) {
                    const auto position = shown.integer();
                    control.setPosition(position && *position >= 0 && *position < control.itemCount()
                                            ? static_cast<int>(*position)
                                            : -1);
                },
                {}});
}

void DataFrameControl::bindField(contract::CheckBox& control, std::string_view field) {
    addBinding(control, dynamic_cast<EditSource*>(&control),
               {std::string(field),
                nullptr,
                [&control] { return std::string(control.checked() ? "1" : "0"); },
                [&control] { return Value(static_cast<std::int64_t>(control.checked() ? 1 : 0)); },
                [&control](const Value& value) { control.setChecked(value.integer().value_or(0) != 0); },
                {}});
}

void DataFrameControl::bindField(contract::TextField& control, std::string_view field) {
    const std::string column(field);
    addBinding(control, dynamic_cast<EditSource*>(&control),
               {column,
                nullptr,
                [&control] { return control.text(); },
                [this, &control, column] { return textValue(column, control.text()); },
                [&control](const Value& value) { control.setText(value.text()); },
                {}});
}

Value DataFrameControl::textValue(const std::string& field, const std::string& content) const {
    const auto column = records() ? records()->rows().find(field) : std::nullopt;
    const FieldType type = column ? records()->rows().fields()[*column].type : FieldType::varWChar;
    if (content.empty() || (!holdsDate(type) && holdsNumber(type) && trimmed(content).empty()))
        return Value::null();
    if (holdsDate(type)) {
        const auto stood = records()->Empty() ? std::nullopt : (*records())[field].date();
        return dateValue(field, content, contract::typedOver(Date::parse(content), stood).has_value());
    }
    if (!holdsNumber(type))
        return content;
    const auto number = Value(content).integer();
    if (!number)
        throw RuntimeError(RuntimeError::typeMismatch,
                           "Il campo " + field + " contiene \"" + content + "\", che non è un numero intero.");
    return *number;
}

} // namespace platform::qt
