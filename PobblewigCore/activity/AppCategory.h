#pragma once

#include <QString>

#include <optional>

namespace pobblewig {

enum class AppCategory { entertainment, social, development, browsing, productivity, other };

/// The category of an application by its identifier, and of a browser also by the window title.
AppCategory classify(const QString& bundleIdentifier, const std::optional<QString>& windowTitle);

} // namespace pobblewig
