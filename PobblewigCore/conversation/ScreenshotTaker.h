#pragma once

#include "prompts/PlatformWording.h"
#include "screen/PermissionProviding.h"
#include "screen/ScreenCapturing.h"
#include "settings/SettingsStore.h"

namespace pobblewig {

/// The session's access to the screen. Both objects must outlive the program; null means not
/// available.
struct ScreenAccess {
    ScreenCapturing* capturer = nullptr;
    /// Asked for permission after a picture was denied.
    PermissionProviding* permissions = nullptr;
};

/// Takes the pictures of the screen for a turn, one at a time and without the applications that the
/// user excludes.
class ScreenshotTaker {
public:
    using Result = tl::expected<CapturedScreenshot, ScreenCaptureError>;

    ScreenshotTaker(ScreenAccess access, SettingsStore& settings, const PlatformWording& wording);

    bool isAvailable() const { return m_access.capturer; }

    /// Whether a picture is being taken. Its turn may have been cancelled since.
    bool isTaking() const { return m_isTaking; }

    /// Must not be called while a picture is being taken, or if capture is not available.
    Task<Result> take();

    /// Why a turn failed, and what the user can do about it.
    QString explanation(const ScreenCaptureError& error) const;

    /// Why there is no picture, for the model.
    QString description(const ScreenCaptureError& error) const;

private:
    Task<> requestPermission();

    ScreenAccess m_access;
    SettingsStore& m_settings;
    PlatformWording m_wording;
    bool m_isTaking = false;
};

} // namespace pobblewig
