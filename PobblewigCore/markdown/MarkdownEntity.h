#pragma once

#include <QString>

/// Characters that Markdown writes by name or number, such as "&amp;" and "&#8212;".
namespace pobblewig::MarkdownEntity {

/// Returns the entity itself if it is not known.
QString decoded(const QString& entity);

} // namespace pobblewig::MarkdownEntity
