#include "host/services/ObjectModels.h"

#include "contract/Form.h"
#include "host/services/Text.h"

namespace host {

namespace {

QJsonObject registration(std::string_view name, const contract::Form* form) {
    return {{QStringLiteral("name"), toQt(name)},
            {QStringLiteral("form"), form != nullptr ? QJsonValue(toQt(form->name())) : QJsonValue(QJsonValue::Null)}};
}

} // namespace

void HostLayoutModel::registerForm(std::string_view name, contract::Form*& form) {
    context_->journal.record(QStringLiteral("LayoutObjectModel"), QStringLiteral("registerForm"),
                             registration(name, form));
    forms_[std::string(name)] = form;
}

void HostScriptModel::registerForm(std::string_view name, contract::Form*& form) {
    context_->journal.record(QStringLiteral("ScriptObjectModel"), QStringLiteral("registerForm"),
                             registration(name, form));
    forms_[std::string(name)] = form;
}

void HostScriptModel::registerObject(std::string_view name, std::shared_ptr<contract::HostObject> object) {
    context_->journal.record(QStringLiteral("ScriptObjectModel"), QStringLiteral("registerObject"),
                             {{QStringLiteral("name"), toQt(name)}});
    objects_[std::string(name)] = std::move(object);
}

void HostScriptModel::runFormEvent(std::string_view event) {
    context_->journal.record(QStringLiteral("ScriptObjectModel"), QStringLiteral("runFormEvent"),
                             {{QStringLiteral("event"), toQt(event)}});
}

bool HostScriptModel::close() {
    const bool refused = context_->refuseClose == RefuseClose::script;
    // Only the next close is refused.
    if (refused)
        context_->refuseClose = RefuseClose::nobody;
    context_->journal.record(QStringLiteral("ScriptObjectModel"), QStringLiteral("close"),
                             {{QStringLiteral("result"), refused}});
    return refused;
}

void HostScriptModel::clear() {
    forms_.clear();
    objects_.clear();
}

HostNavigator::HostNavigator(std::shared_ptr<HostContext> context)
    : context_(std::move(context)), script_(std::make_shared<HostScriptModel>(context_)),
      layout_(std::make_shared<HostLayoutModel>(context_)) {
}

void HostNavigator::setStatus(int status) {
    context_->journal.record(QStringLiteral("Navigator"), QStringLiteral("setStatus"),
                             {{QStringLiteral("status"), status}});
}

void HostNavigator::refreshState() {
    context_->journal.record(QStringLiteral("Navigator"), QStringLiteral("refreshState"));
}

void HostNavigator::releaseObjectModels() {
    context_->journal.record(QStringLiteral("Navigator"), QStringLiteral("releaseObjectModels"));
    script_->clear();
    layout_->clear();
}

} // namespace host
