#pragma once

#include <QString>

/// The sections of the reference memory that people speak of.
namespace pobblewig::DemoSections {

/// A pattern for their names: "courses", "professors" and so on.
QString names();

/// Such as "academics.courses". A name that is none is its own path.
QString path(const QString& name);

} // namespace pobblewig::DemoSections
