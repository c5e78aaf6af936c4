#pragma once

#include <QTest>

namespace pobblewig {

/// A row of a test's table. Literals are for columns of QString.
template <typename... Columns>
void row(const char* name, Columns... columns)
{
    (QTest::newRow(name) << ... << columns);
}

} // namespace pobblewig
