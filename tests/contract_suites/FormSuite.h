#pragma once

// What every form and its controls keep to, whatever draws them. Include this in one file of a test program and
// instantiate it:
//
//   INSTANTIATE_TEST_SUITE_P(Headless, FormSuite, testing::Values(&makeHeadlessForms), parameterName("Forms"));

#include "contract_suites/FormControlsSuite.h"
#include "contract_suites/FormGeometrySuite.h"
#include "contract_suites/FormLifeSuite.h"
#include "contract_suites/ParameterName.h"
