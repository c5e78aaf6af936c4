#pragma once

#include "foundation/Task.h"

#include <QByteArray>
#include <QString>

#include <tl/expected.hpp>

#include <set>

namespace pobblewig {

/// A picture for one request, which stays in memory and is never saved.
struct CapturedScreenshot {
    /// A JPEG file whose longer side is at most 1568 pixels.
    QByteArray jpegData;
    /// For example "Captured "Draft" of Writer", for both the user and the model.
    QString description;
};

struct ScreenCaptureError {
    enum class Kind { excludedApp, permissionDenied, noCaptureTarget, encodingFailed };

    Kind kind;
    /// The name of an excluded application.
    QString app = {};

    bool operator==(const ScreenCaptureError&) const = default;
};

/// Takes a picture of what the user is looking at.
class ScreenCapturing {
public:
    virtual ~ScreenCapturing() = default;

    /// Captures the front window, even when it is covered; without one, captures the screen without
    /// our own windows and those of excluded applications. Captures nothing while an excluded
    /// application is in front.
    virtual Task<tl::expected<CapturedScreenshot, ScreenCaptureError>> captureForCurrentContext(
        std::set<QString> excludedBundleIDs) = 0;
};

} // namespace pobblewig
