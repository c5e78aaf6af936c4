#pragma once

#include <QTest>

namespace pobblewig {

using namespace Qt::StringLiterals;

/// The columns of a test's table, as `columns<QString, bool>("text", "kept")`.
template <typename... Types, typename... Names>
void columns(Names... names)
{
    (QTest::addColumn<Types>(names), ...);
}

/// A row of a test's table. Literals are for columns of QString.
template <typename... Columns>
void row(const char* name, Columns... columns)
{
    (QTest::newRow(name) << ... << columns);
}

} // namespace pobblewig
