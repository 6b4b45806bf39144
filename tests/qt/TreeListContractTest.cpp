#include "contract_suites/TreeListSuite.h"
#include "platform/qt/tree/TreeListControl.h"
#include "qt/TreeTestApp.h"

#include <QWidget>

namespace contract_suites {

namespace {

class QtTreeHarness : public TreeListHarness {
public:
    QtTreeHarness() : tree_("TREE", &window_) {
        window_.resize(640, 440);
        tree_.setBounds({150, 150, 9000, 6000});
        window_.show();
    }

    contract::TreeList& tree() override { return tree_; }
    void settle() override { tree_.settle(); }
    void draw() override { window_.grab(); }

private:
    QWidget window_;
    platform::qt::TreeListControl tree_;
};

std::unique_ptr<TreeListHarness> makeQtTree() {
    qt_tests::ensureApplication();
    return std::make_unique<QtTreeHarness>();
}

} // namespace

INSTANTIATE_TEST_SUITE_P(Qt, TreeListSuite, testing::Values(&makeQtTree), parameterName("Tree"));

} // namespace contract_suites
