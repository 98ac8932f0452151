/// @file
/// What the tests of single options have in common.
#pragma once

#include "dialog_fixture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

namespace kestrel::test {

using Option = FakeOption;

/// A scanner with one option and the count.
inline FakeScanner scannerWith(const Option& option)
{
    FakeScanner scanner;
    scanner.add(option);
    return scanner;
}

/// The option of a row as the name of its test.
template <typename Row>
std::string rowName(const testing::TestParamInfo<Row>& info)
{
    std::string name = info.param.option;
    std::replace(name.begin(), name.end(), '-', '_');
    return name;
}

} // namespace kestrel::test
