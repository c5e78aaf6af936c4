#pragma once

#include "screen/ScreenCapturing.h"

#include <functional>

namespace pobblewig {

/// Takes the pictures of the screen that a turn asks for, one at a time.
class ScreenshotTaker {
public:
    struct Dependencies {
        /// Nothing where the session has no capture at all.
        ScreenCapturing* capturer = nullptr;
        /// Asked anew for every picture.
        std::function<Task<std::set<QString>>()> excludedBundleIDs = {};
        /// Called when a picture was denied, so that the user is asked.
        std::function<Task<>()> requestScreenPermission = {};
    };
    using Result = tl::expected<CapturedScreenshot, ScreenCaptureError>;

    explicit ScreenshotTaker(Dependencies dependencies);

    bool isAvailable() const { return m_dependencies.capturer; }

    /// Whether a picture is under way. Its turn may have been stopped meanwhile.
    bool isTaking() const { return m_isTaking; }

    /// To be called only while none is under way, and where it is available.
    Task<Result> take();

    /// Why a turn failed, and what the user can do.
    static QString explanation(const ScreenCaptureError& error);

private:
    Dependencies m_dependencies;
    bool m_isTaking = false;
};

} // namespace pobblewig
