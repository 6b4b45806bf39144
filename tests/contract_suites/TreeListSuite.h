#pragma once

// What every tree list keeps to, whatever draws it. Include this in one file of a test program and instantiate it:
//
//   INSTANTIATE_TEST_SUITE_P(Headless, TreeListSuite, testing::Values(&makeHeadlessTree), parameterName("Tree"));

#include "contract_suites/ParameterName.h"
#include "contract_suites/TreeListDepthSuite.h"
#include "contract_suites/TreeListFocusSuite.h"
#include "contract_suites/TreeListStructureSuite.h"
