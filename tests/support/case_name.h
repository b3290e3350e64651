/// @file
/// Names for rows of parameterised tests.
#pragma once

#include <gtest/gtest.h>

#include <string>

/// Last argument of INSTANTIATE_TEST_SUITE_P for rows that have a member `name`.
struct CaseName {
  template <class Row>
  std::string operator()(const testing::TestParamInfo<Row>& row) const {
    return row.param.name;
  }
};
