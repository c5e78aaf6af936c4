#pragma once

#include "prompts/PlatformWording.h"
#include "screen/PermissionProviding.h"
#include "screen/ScreenCapturing.h"
#include "settings/SettingsStore.h"

namespace pobblewig {

/// What the session lets the program see. All of it outlives the program; what is missing is not
/// available.
struct ScreenAccess {
    ScreenCapturing* capturer = nullptr;
    /// Asked for permission when a picture was denied.
    PermissionProviding* permissions = nullptr;
};

/// Takes the pictures of the screen that a turn asks for, one at a time and without the
/// applications that the user excludes.
class ScreenshotTaker {
public:
    using Result = tl::expected<CapturedScreenshot, ScreenCaptureError>;

    ScreenshotTaker(ScreenAccess access, SettingsStore& settings, const PlatformWording& wording);

    bool isAvailable() const { return m_access.capturer; }

    /// Whether a picture is under way. Its turn may have been stopped meanwhile.
    bool isTaking() const { return m_isTaking; }

    /// Must not be called while a picture is under way, nor where it is not available.
    Task<Result> take();

    /// Why a turn failed, and what the user can do.
    QString explanation(const ScreenCaptureError& error) const;

    /// Why a picture is missing, for the model.
    QString description(const ScreenCaptureError& error) const;

private:
    Task<> requestPermission();

    ScreenAccess m_access;
    SettingsStore& m_settings;
    PlatformWording m_wording;
    bool m_isTaking = false;
};

} // namespace pobblewig
