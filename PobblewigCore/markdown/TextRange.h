#pragma once

#include <QtGlobal>

namespace pobblewig {

/// A stretch of a text.
struct TextRange {
    qsizetype start = 0;
    qsizetype length = 0;

    qsizetype end() const { return start + length; }
    bool operator==(const TextRange&) const = default;
};

} // namespace pobblewig
