#pragma once

#include "platform/qt/fields/DataEntryHooks.h"
#include "platform/qt/forms/QtControlFactory.h"
#include "platform/qt/forms/Scriptable.h"
#include "platform/qt/forms/Session.h"
#include "platform/qt/look/Appearance.h"
#include "qt/TreeTestApp.h"

#include <QApplication>
#include <QMainWindow>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QTest>

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace qt_tests {

/// A main window with a document area, and the factory over it.
class FormStage {
public:
    FormStage() {
        auto& look = platform::qt::Appearance::instance();
        look.setTheme(platform::qt::ThemeKind::light);
        look.setZoom(10);
        area = new QMdiArea;
        window.setCentralWidget(area);
        window.resize(1300, 900);
        factory = std::make_unique<platform::qt::QtControlFactory>(area, &window);
        window.show();
        window.activateWindow();
        QCoreApplication::processEvents();
    }
    FormStage(const FormStage&) = delete;
    FormStage& operator=(const FormStage&) = delete;
    ~FormStage() {
        platform::qt::Session::instance().modalOpened = nullptr;
        platform::qt::DataEntryHooks::instance() = {};
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

private:
    bool application_ = (ensureApplication(), true); // before any widget

public:
    QMainWindow window;
    QMdiArea* area = nullptr;
    std::unique_ptr<platform::qt::QtControlFactory> factory;
};

class FormTest : public testing::Test {
protected:
    void TearDown() override { form.reset(); }

    contract::Form& document(const char* name = "FRM") {
        form = stage.factory->newDocumentForm(name);
        form->setBounds({150, 150, 15000, 9000});
        return *form;
    }
    contract::Form& dialog(const char* name = "DLG") {
        form = stage.factory->newDialog(name);
        form->setBounds({1500, 1500, 7500, 4500});
        return *form;
    }

    static platform::qt::FormWindow& windowOf(const char* name) {
        auto* found = platform::qt::Session::instance().find(QString::fromUtf8(name));
        if (found == nullptr)
            throw std::runtime_error(std::string("no open form ") + name);
        return *found;
    }
    /// The front form's control of that name.
    static platform::qt::Scriptable& script(const char* name) {
        auto* control = platform::qt::Session::instance().front()->control(QString::fromUtf8(name));
        if (control == nullptr)
            throw std::runtime_error(std::string("no control ") + name);
        return *control;
    }
    static QString id(const char* text) { return QString::fromUtf8(text); }

    FormStage stage;
    std::unique_ptr<contract::Form> form;
};

} // namespace qt_tests
