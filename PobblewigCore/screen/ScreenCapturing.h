#pragma once

#include "foundation/Task.h"

#include <QByteArray>
#include <QString>

#include <tl/expected.hpp>

#include <set>

namespace pobblewig {

/// A picture for one request. It stays in memory and is never saved.
struct CapturedScreenshot {
    /// A JPEG file, its longer side at most 1568 pixels.
    QByteArray jpegData;
    /// Such as "Captured "Draft" of Writer", for the user and the model.
    QString description;
};

struct ScreenCaptureError {
    enum class Kind { excludedApp, permissionDenied, noCaptureTarget, encodingFailed };

    Kind kind;
    /// The name of an excluded application.
    QString app = {};

    bool operator==(const ScreenCaptureError&) const = default;
};

/// Takes a picture of what the user looks at.
class ScreenCapturing {
public:
    virtual ~ScreenCapturing() = default;

    /// The front window, even when it is covered; without one, the screen, where neither our own
    /// windows nor those of the excluded applications show. While an excluded application is in
    /// front nothing is captured.
    virtual Task<tl::expected<CapturedScreenshot, ScreenCaptureError>> captureForCurrentContext(
        std::set<QString> excludedBundleIDs) = 0;
};

} // namespace pobblewig
