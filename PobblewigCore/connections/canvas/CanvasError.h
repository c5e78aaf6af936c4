#pragma once

#include "foundation/Time.h"

#include <QString>

#include <optional>

namespace pobblewig {

/// Why a Canvas site could not be read.
struct CanvasError {
    enum class Kind { notConfigured, unreachable, http, decoding, invalidToken, throttled };

    static CanvasError notConfigured(const QString& detail);
    static CanvasError unreachable(const QString& detail);
    static CanvasError http(int status, const QString& body);
    static CanvasError decoding(const QString& detail);
    static CanvasError invalidToken();
    /// The site asks for a rest, until the given time if it names one.
    static CanvasError throttled(std::optional<TimePoint> until);

    /// For the user.
    QString description() const;

    Kind kind = Kind::http;
    QString detail = {};
    int status = 0;
    std::optional<TimePoint> retryAt = std::nullopt;
};

} // namespace pobblewig
