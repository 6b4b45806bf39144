#pragma once

#include "contract/Host.h"
#include "contract/Progress.h"
#include "host/services/HostContext.h"
#include "host/services/Text.h"

#include <memory>
#include <optional>
#include <string>

namespace host {

/// The small services of the host, each over the shared context.
class HostConnectionService : public contract::ConnectionService {
public:
    explicit HostConnectionService(std::shared_ptr<HostContext> context) : context_(std::move(context)) {}
    std::string ConnectionString() const override { return context_->connectionString; }

private:
    std::shared_ptr<HostContext> context_;
};

class HostCompanyService : public contract::CompanyService {
public:
    explicit HostCompanyService(std::shared_ptr<HostContext> context) : context_(std::move(context)) {}
    contract::Value Company() const override { return context_->company; }

private:
    std::shared_ptr<HostContext> context_;
};

class HostUserService : public contract::UserService {
public:
    explicit HostUserService(std::shared_ptr<HostContext> context) : context_(std::move(context)) {}
    std::string UserCode() const override { return context_->user; }
    std::string GroupCode() const override { return context_->group; }

private:
    std::shared_ptr<HostContext> context_;
};

class HostScriptService : public contract::ScriptService {
public:
    explicit HostScriptService(std::shared_ptr<HostContext> context) : context_(std::move(context)) {}
    void setCanClose(bool canClose) override;

private:
    std::shared_ptr<HostContext> context_;
    bool canClose_ = true;
};

/// The status line's text; also where the component's long works say how far they are.
class HostStatusBar : public contract::StatusBar, public contract::Progress {
public:
    explicit HostStatusBar(std::shared_ptr<HostContext> context) : context_(std::move(context)) {}
    void setText(std::string_view text) override;
    void reached(std::string_view what, std::uint64_t done, std::optional<std::uint64_t> total) override;
    void counts(std::string_view unit) override;

private:
    std::shared_ptr<HostContext> context_;
};

/// The frame in which the component runs.
class HostFrame : public contract::ActiveFrame {
public:
    static constexpr const char* frameName = "FrameDistinte";
    std::string Name() const override { return frameName; }
    int Status() const override { return 0; }
};

/// The menu entry from which the component was opened.
class HostMenuEntry : public contract::HostObject {
public:
    explicit HostMenuEntry(std::string name) : name_(std::move(name)) {}
    const std::string& name() const { return name_; }

private:
    std::string name_;
};

/// Shows errors and messages through the dialogs, and records every error shown.
class HostLogClass : public contract::LogClass {
public:
    explicit HostLogClass(std::shared_ptr<HostContext> context) : context_(std::move(context)) {}
    void setInterface(contract::Cinterface* host) override { host_ = host; }
    void vbError(const contract::RuntimeError& error) override { error_.emplace(error); }
    void ADOError(const contract::ErrorList& errors) override { records_ = errors; }
    int ShowError(std::string_view application, std::string_view caption, std::string_view procedure,
                  int style) override;
    void setDetail(std::string_view detail) override { detail_ = detail; }
    int ShowMessage(std::string_view title, std::string_view text, int style) override;

private:
    std::shared_ptr<HostContext> context_;
    contract::Cinterface* host_ = nullptr;
    std::string detail_; ///< of the next box
    std::optional<contract::RuntimeError> error_;
    contract::ErrorList records_;
};

/// The colours of the program's theme by name.
class HostTheme : public contract::Theme {
public:
    contract::Color color(std::string_view name) const override;
};

class HostVirtualFrame : public contract::VirtualFrame {
public:
    explicit HostVirtualFrame(std::shared_ptr<HostContext> context) : context_(std::move(context)) {}
    std::shared_ptr<contract::Recordset> newRecordset() override;
    std::shared_ptr<contract::VirtualFrameHandler> newFieldList() override;

private:
    std::shared_ptr<HostContext> context_;
};

/// Gives traced connections.
class HostConnectionProvider : public contract::ConnectionProvider {
public:
    explicit HostConnectionProvider(std::shared_ptr<HostContext> context) : context_(std::move(context)) {}
    std::shared_ptr<contract::Connection> newConnection() override;

private:
    std::shared_ptr<HostContext> context_;
};

/// Hands accounts over to the account link window.
class HostAccountLink : public contract::AccountLink {
public:
    explicit HostAccountLink(std::shared_ptr<HostContext> context) : context_(std::move(context)) {}
    void setInterface(contract::Cinterface* host) override { host_ = host; }
    void setAccountCode(std::int64_t code) override { code_ = code; }
    void linkCustomer() override;
    void linkSupplier() override;

private:
    void link(const QString& operation, int kind);

    std::shared_ptr<HostContext> context_;
    contract::Cinterface* host_ = nullptr;
    std::int64_t code_ = 0;
};

} // namespace host
