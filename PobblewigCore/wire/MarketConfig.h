#pragma once

#include "foundation/JSONCodec.h"
#include "settings/Environment.h"

#include <QStringList>

namespace pobblewig {

/// The choices of a deployment of the program, in the "market.json" that it ships.
struct MarketConfig {
    /// Not an http URL, so that a deployment without a backend has no managed lane.
    QString backendBaseUrl = QStringLiteral("about:blank");
    QString managedMainModelID = QStringLiteral("gemini-3.5-flash-lite");
    QString managedLibrarianModelID = QStringLiteral("deepseek-ai/DeepSeek-V4-Flash");
    QString managedVisionModelID = QStringLiteral("gemini-3.5-flash-lite");
    QString appcastUrl = QStringLiteral("about:blank");
    QString downloadUrl = QStringLiteral("about:blank");
    QString defaultCanvasBaseUrl = QStringLiteral("https://canvas.instructure.com");
    QString classroomBaseUrl = QStringLiteral("https://classroom.googleapis.com/v1");
    /// A server on this machine, so that without a configuration no request leaves it.
    QString defaultVendorBaseUrl = QStringLiteral("http://127.0.0.1:11434/v1");
    QString defaultVendorLabel = QStringLiteral("local");

    /// The built-in values.
    static MarketConfig placeholder() { return {}; }

    /// "Config/market.json" in the working directory, then the one built into the program.
    static QStringList standardFiles();

    /// Returns the first file that exists and decodes: the one named by MARKET_CONFIG_PATH, then
    /// the given files in order. A file that does not decode is logged. Without any, returns the
    /// placeholder.
    static MarketConfig load(
        const Environment& environment, const QStringList& files = standardFiles());

    static constexpr auto jsonFields();

    bool operator==(const MarketConfig&) const = default;
};

constexpr auto MarketConfig::jsonFields()
{
    using namespace json;
    using M = MarketConfig;
    return std::tuple {
        defaulted("backendBaseUrl", &M::backendBaseUrl),
        defaulted("managedMainModelID", &M::managedMainModelID),
        defaulted("managedLibrarianModelID", &M::managedLibrarianModelID),
        defaulted("managedVisionModelID", &M::managedVisionModelID),
        defaulted("appcastUrl", &M::appcastUrl),
        defaulted("downloadUrl", &M::downloadUrl),
        defaulted("defaultCanvasBaseUrl", &M::defaultCanvasBaseUrl),
        defaulted("classroomBaseUrl", &M::classroomBaseUrl),
        defaulted("defaultVendorBaseUrl", &M::defaultVendorBaseUrl),
        defaulted("defaultVendorLabel", &M::defaultVendorLabel),
    };
}

} // namespace pobblewig
