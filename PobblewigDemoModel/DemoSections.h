#pragma once

#include <QString>

/// The sections of the reference memory that people mention.
namespace pobblewig::DemoSections {

/// A pattern for their names: "courses", "professors" and so on.
QString names();

/// For example "academics.courses". An unknown name is its own path.
QString path(const QString& name);

} // namespace pobblewig::DemoSections
