#pragma once

#include "contract/Recordset.h"
#include "contract/RuntimeError.h"
#include "contract/TreeList.h"
#include "contract_suites/ParameterName.h"
#include "contract_suites/TreeRows.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace contract_suites {

/// A tree under test, of about 9000 by 6000 twips, on a form that stands on the screen.
class TreeListHarness {
public:
    TreeListHarness() = default;
    TreeListHarness(const TreeListHarness&) = delete;
    TreeListHarness& operator=(const TreeListHarness&) = delete;
    virtual ~TreeListHarness() = default;

    virtual contract::TreeList& tree() = 0;
    /// Lets the focus come to rest.
    virtual void settle() = 0;
    /// Lets the tree draw what is on screen.
    virtual void draw() = 0;
};

using TreeListFactory = std::unique_ptr<TreeListHarness> (*)();

class TreeListSuite : public testing::TestWithParam<TreeListFactory> {
protected:
    void SetUp() override {
        harness_ = GetParam()();
        addColumns(tree());
        tree().OnChangeNode = [this] {
            ++changes_;
            rowAtChange_ = tree().records() ? tree().records()->Row() : std::nullopt;
        };
        tree().OnChangeNodeEx = [this] { ++rests_; };
        tree().OnChangedColumn = [this](contract::Node node) { columnNodes_.push_back(node.position); };
        tree().OnEdited = [this](contract::Node) { ++others_; };
        tree().OnCheckChanged = [this](contract::Node, int) { ++others_; };
    }

    contract::TreeList& tree() { return harness_->tree(); }

    void addColumns(contract::TreeList& tree) {
        using contract::TreeColumnKind;
        tree.setBandCaption("Dettaglio");
        tree.addColumn({"HIDDEN", "", "ID", TreeColumnKind::code, false, false, false, 900});
        tree.addColumn({"CODE", "Codice", "ID", TreeColumnKind::code, true, false, true, 900});
        tree.addColumn({"NAME", "Nome", "NAME", TreeColumnKind::text, true, false, true, 2400});
        tree.addColumn({"START", "Inizio", "START", TreeColumnKind::date, true, true, false, 1200});
        tree.addColumn({"MARK", "Segna", "", TreeColumnKind::check, true, false, false, 900, "True"});
        contract::TreeColumn state{"STATE", "Stato", "", TreeColumnKind::state, true, false, false, 1200};
        state.texts = [this](const std::vector<std::size_t>& rows) {
            std::vector<std::string> texts;
            for (const auto row : rows) {
                asked_.insert(row);
                texts.push_back("S" + std::to_string(row));
            }
            ++askings_;
            return texts;
        };
        tree.addColumn(state);
    }

    //  1 -> 2 -> 3
    //    -> 4
    //  5 -> 6
    static std::vector<TreeRow> smallTree() {
        return {{1, std::nullopt, "uno"},
                {5, std::nullopt, "cinque"},
                {2, 1, "due"},
                {6, 5, "sei"},
                {4, 1, "quattro"},
                {3, 2, "tre"}};
    }

    static std::vector<TreeRow> longTree(std::int64_t roots) {
        std::vector<TreeRow> rows;
        for (std::int64_t id = 1; id <= roots; ++id)
            rows.push_back({id, std::nullopt, "riga " + std::to_string(id)});
        return rows;
    }

    void bind(const std::vector<TreeRow>& rows, std::optional<std::int64_t> focus = std::nullopt) {
        tree().bind(treeRecords(rows), "ID", "PARENT", focus);
    }

    void forgetEvents() {
        harness_->settle();
        changes_ = rests_ = others_ = 0;
        columnNodes_.clear();
    }

    std::vector<std::int64_t> order() {
        std::vector<std::int64_t> keys;
        for (auto node = tree().firstNode(); node; node = tree().next(node))
            keys.push_back(tree().key(node));
        return keys;
    }

    template <class Action> static int errorOf(Action action) {
        try {
            action();
        } catch (const contract::RuntimeError& error) {
            return error.number();
        }
        return 0;
    }

    std::unique_ptr<TreeListHarness> harness_;
    int changes_ = 0;
    int rests_ = 0;
    int others_ = 0;
    int askings_ = 0;
    std::set<std::size_t> asked_;
    std::vector<std::int32_t> columnNodes_;
    std::optional<std::size_t> rowAtChange_;
};

} // namespace contract_suites
