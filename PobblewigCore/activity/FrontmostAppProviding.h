#pragma once

#include <QString>

#include <optional>

namespace pobblewig {

struct FrontmostApp {
    /// The name for the user, in their language.
    QString name;
    /// A reverse-DNS name such as "com.google.Chrome", or the desktop's own name for the
    /// application.
    QString bundleIdentifier;

    bool operator==(const FrontmostApp&) const = default;
};

/// Where the user's attention is. Asked at every poll, so both answers must be cheap.
class FrontmostAppProviding {
public:
    virtual ~FrontmostAppProviding() = default;

    /// Nothing if no window has the focus or its owner cannot be named.
    virtual std::optional<FrontmostApp> frontmostApp() = 0;

    /// Seconds since the last input of any kind in any application; 0 if the session does not
    /// report it.
    virtual double idleSeconds() = 0;
};

} // namespace pobblewig
