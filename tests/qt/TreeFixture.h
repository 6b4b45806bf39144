#pragma once

#include "contract_suites/TreeRows.h"
#include "platform/qt/tree/TreeListControl.h"
#include "qt/TreeTestApp.h"

#include <QCoreApplication>
#include <QMouseEvent>
#include <QPoint>
#include <QTest>
#include <QWidget>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace qt_tests {

/// A tree in a window, with the events that it raises written down.
class TreeFixture : public testing::Test {
protected:
    TreeFixture() {
        ensureApplication();
        window_ = std::make_unique<QWidget>();
        window_->resize(720, 440);
        tree_ = std::make_unique<platform::qt::TreeListControl>("TREE", window_.get());
        tree_->setBounds({0, 0, 10500, 6300});
        view_ = window_->findChild<platform::qt::TreeView*>();
        addColumns();
        listen();
        window_->show();
        window_->activateWindow();
        static_cast<void>(QTest::qWaitForWindowActive(window_.get()));
        view().setFocus();
    }
    ~TreeFixture() override {
        tree_.reset();
        window_.reset();
    }

    void addColumns() {
        using contract::TreeColumnKind;
        tree_->setBandCaption("Dettaglio");
        tree_->addColumn({"HIDDEN", "", "ID", TreeColumnKind::code, false, false, false, 900});
        tree_->addColumn({"CODE", "Codice", "ID", TreeColumnKind::code, true, false, true, 900});
        tree_->addColumn({"NAME", "Nome", "NAME", TreeColumnKind::text, true, false, true, 2400});
        tree_->addColumn({"START", "Inizio", "START", TreeColumnKind::date, true, true, false, 1200});
        tree_->addColumn({"MARK", "Segna", "", TreeColumnKind::check, true, false, false, 900, "True"});
    }

    void listen() {
        const auto id = [this](contract::Node node) { return node ? std::to_string(tree_->key(node)) : "-"; };
        tree_->OnChangeNode = [=, this] { log_.push_back("change " + id(tree_->focused())); };
        tree_->OnChangeNodeEx = [=, this] { log_.push_back("rest " + id(tree_->focused())); };
        tree_->OnMouseDown = [this](contract::MouseButton button, int shift, contract::Twips x, contract::Twips y) {
            log_.push_back(std::string(button == contract::MouseButton::left ? "left" : "right") +
                           (shift != 0 ? " " + std::to_string(shift) : ""));
            pressed_ = tree_->hitTest(x, y);
        };
        tree_->OnHyperLink = [=, this](contract::Node node, const std::string& column) {
            log_.push_back("link " + id(node) + " " + column);
        };
        tree_->OnEdited = [=, this](contract::Node node) {
            log_.push_back("edited " + id(node) + " " + tree_->value(node, "START").text());
        };
        tree_->OnChangedColumn = [=, this](contract::Node node) {
            log_.push_back("column " + id(node) + " " + tree_->focusedColumn());
        };
        tree_->OnCheckChanged = [=, this](contract::Node node, int state) {
            log_.push_back("check " + id(node) + " " + std::to_string(state));
        };
    }

    //  1 -> 2 -> 3
    //    -> 4
    //  5 -> 6
    void bindSmall(std::optional<std::int64_t> focus = std::nullopt) {
        using contract_suites::TreeRow;
        tree_->bind(contract_suites::treeRecords({{1, std::nullopt, "uno"},
                                                  {5, std::nullopt, "cinque"},
                                                  {2, 1, "due"},
                                                  {6, 5, "sei"},
                                                  {4, 1, "quattro"},
                                                  {3, 2, "tre"}}),
                    "ID", "PARENT", focus);
        start();
    }
    void bindLong(std::int64_t roots) {
        std::vector<contract_suites::TreeRow> rows;
        for (std::int64_t id = 1; id <= roots; ++id)
            rows.push_back({id, std::nullopt, "riga " + std::to_string(id)});
        tree_->bind(contract_suites::treeRecords(rows), "ID", "PARENT");
        start();
    }
    /// Draws what is there and forgets what was told so far.
    void start() {
        QCoreApplication::processEvents();
        tree_->settle();
        log_.clear();
    }

    platform::qt::TreeView& view() { return *view_; }
    contract::Node node(std::int64_t id) { return tree_->byKey(id); }
    std::int64_t focusedId() { return tree_->focused() ? tree_->key(tree_->focused()) : -1; }
    int column(const char* name) { return view().nodes().findColumn(name); }
    QPoint middle(std::int64_t id, const char* name) {
        return view().cellRect(node(id).position, column(name)).center();
    }
    void press(std::int64_t id, const char* name, Qt::MouseButton button = Qt::LeftButton) {
        QTest::mousePress(view().viewport(), button, Qt::NoModifier, middle(id, name));
    }
    void click(QPoint point) { QTest::mouseClick(view().viewport(), Qt::LeftButton, Qt::NoModifier, point); }
    void pointAt(QPoint point, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QMouseEvent move(QEvent::MouseMove, QPointF(point), QPointF(view().viewport()->mapToGlobal(point)),
                         Qt::NoButton, Qt::NoButton, modifiers);
        QCoreApplication::sendEvent(view().viewport(), &move);
    }
    void keys(std::initializer_list<Qt::Key> pressed) {
        for (const auto key : pressed)
            QTest::keyClick(&view(), key);
        tree_->settle();
    }

    std::vector<std::string> told() { return std::exchange(log_, {}); }
    using Log = std::vector<std::string>;

    std::unique_ptr<QWidget> window_;
    std::unique_ptr<platform::qt::TreeListControl> tree_;
    platform::qt::TreeView* view_ = nullptr;
    Log log_;
    contract::TreeHit pressed_;
};

} // namespace qt_tests
