#pragma once

#include <QString>

#include <optional>

namespace pobblewig {

enum class AppCategory { entertainment, social, development, browsing, productivity, other };

/// What an application is for, by its identifier; a browser also by the page that its title names.
AppCategory classify(const QString& bundleIdentifier, const std::optional<QString>& windowTitle);

} // namespace pobblewig
