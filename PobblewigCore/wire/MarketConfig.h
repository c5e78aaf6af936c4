#pragma once

#include "foundation/JSONCodec.h"
#include "settings/Environment.h"

#include <QStringList>

namespace pobblewig {

/// What a deployment of the program chooses, kept in a "market.json" that it ships.
struct MarketConfig {
    /// Not an http URL, so that a deployment without a backend has no managed lane.
    QString backendBaseUrl = QStringLiteral("about:blank");
    QString managedMainModelID = QStringLiteral("gemini-3.5-flash-lite");
    QString managedLibrarianModelID = QStringLiteral("deepseek-ai/DeepSeek-V4-Flash");
    QString managedVisionModelID = QStringLiteral("gemini-3.5-flash-lite");
    QString appcastUrl = QStringLiteral("about:blank");
    QString downloadUrl = QStringLiteral("about:blank");
    QString defaultCanvasBaseUrl = QStringLiteral("https://canvas.instructure.com");
    /// A server on this machine: with nothing configured no request leaves it.
    QString defaultVendorBaseUrl = QStringLiteral("http://127.0.0.1:11434/v1");
    QString defaultVendorLabel = QStringLiteral("local");

    /// The built-in values.
    static MarketConfig placeholder() { return {}; }

    /// "Config/market.json" of the working directory, then the one that the program carries.
    static QStringList standardFiles();

    /// The first that exists and decodes of: the file named by MARKET_CONFIG_PATH, the given files
    /// in their order. One that does not decode is logged. With none, the placeholder.
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
        defaulted("defaultVendorBaseUrl", &M::defaultVendorBaseUrl),
        defaulted("defaultVendorLabel", &M::defaultVendorLabel),
    };
}

} // namespace pobblewig
