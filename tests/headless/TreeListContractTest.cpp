#include "contract_suites/TreeListSuite.h"
#include "platform/headless/HeadlessTree.h"

using contract_suites::TreeListHarness;
using contract_suites::TreeListSuite;
using platform::headless::HeadlessTree;

namespace {

class HeadlessTreeHarness : public TreeListHarness {
public:
    contract::TreeList& tree() override { return tree_; }
    void settle() override { tree_.settle(); }
    void draw() override { tree_.draw(); }

private:
    platform::headless::FormContext context_;
    HeadlessTree tree_{"TREE", context_};
};

std::unique_ptr<TreeListHarness> makeHeadlessTree() {
    return std::make_unique<HeadlessTreeHarness>();
}

} // namespace

namespace contract_suites {

INSTANTIATE_TEST_SUITE_P(Headless, TreeListSuite, testing::Values(&makeHeadlessTree), parameterName("Tree"));

} // namespace contract_suites
