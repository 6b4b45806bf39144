#pragma once

#include "contract/Host.h"
#include "host/services/HostContext.h"

#include <map>
#include <memory>
#include <string>

namespace host {

/// The forms that layouts know.
class HostLayoutModel : public contract::LayoutObjectModel {
public:
    explicit HostLayoutModel(std::shared_ptr<HostContext> context) : context_(std::move(context)) {}
    void registerForm(std::string_view name, contract::Form*& form) override;
    void clear() { forms_.clear(); }

private:
    std::shared_ptr<HostContext> context_;
    std::map<std::string, contract::Form*, std::less<>> forms_;
};

/// The forms and objects that scripts know.
class HostScriptModel : public contract::ScriptObjectModel {
public:
    explicit HostScriptModel(std::shared_ptr<HostContext> context) : context_(std::move(context)) {}
    void registerForm(std::string_view name, contract::Form*& form) override;
    void registerObject(std::string_view name, std::shared_ptr<contract::HostObject> object) override;
    void runFormEvent(std::string_view event) override;
    bool close() override;
    void clear();

private:
    std::shared_ptr<HostContext> context_;
    std::map<std::string, contract::Form*, std::less<>> forms_;
    std::map<std::string, std::shared_ptr<contract::HostObject>, std::less<>> objects_;
};

class HostNavigator : public contract::Navigator {
public:
    explicit HostNavigator(std::shared_ptr<HostContext> context);
    void setStatus(int status) override;
    void refreshState() override;
    std::shared_ptr<contract::ScriptObjectModel> script() const override { return script_; }
    std::shared_ptr<contract::LayoutObjectModel> layout() const override { return layout_; }
    void releaseObjectModels() override;

private:
    std::shared_ptr<HostContext> context_;
    std::shared_ptr<HostScriptModel> script_;
    std::shared_ptr<HostLayoutModel> layout_;
};

} // namespace host
