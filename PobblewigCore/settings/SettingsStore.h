#pragma once

#include "foundation/KeychainHelper.h"
#include "foundation/StoreFile.h"
#include "settings/AppSettings.h"
#include "settings/Environment.h"

namespace pobblewig {

/// The user's settings, kept in "settings.json", and their credentials, kept in the keyring.
///
/// Lives on the main thread. Without a directory it works in memory only.
class SettingsStore {
public:
    /// `defaultCanvasBaseURL` is the deployment's address.
    SettingsStore(const std::optional<DataDirectory>& directory, KeychainHelper& keychain,
        QString defaultCanvasBaseURL = AppSettings::defaultCanvasBaseURL());

    const AppSettings& settings() const { return m_settings; }

    /// Grows with every change.
    int revision() const { return m_file.revision(); }

    /// Whether observation is paused at this time.
    bool isPaused(TimePoint at) const;

    void update(const std::function<void(AppSettings&)>& change);

    /// The classes of actions that the user has allowed without a question.
    std::vector<QString> allowances() const;
    void allow(const QString& actionClass, TimePoint now);
    /// Asks about these actions again.
    void revokeAllowance(const QString& actionClass);

    /// Tries again to read a file that could not be read at the start. Until then observation is
    /// paused and the memory is off, since the user may have chosen so.
    void readAgain();

    /// The user's address, else the variable CANVAS_BASE_URL, else the deployment's default.
    QString resolvedCanvasBaseURL(const Environment& environment) const;

    /// The keyring's token, else the variable CANVAS_API_TOKEN.
    Task<std::optional<QString>> canvasAPIToken(Environment environment);

    /// The keyring's token, else GOOGLE_CLASSROOM_ACCESS_TOKEN, else CLASSROOM_API_TOKEN, which is
    /// only read if the former is not set at all, not even to an empty value.
    Task<std::optional<QString>> classroomAccessToken(Environment environment);

    /// Removes the token from the keyring if none, or an empty one, is given.
    Task<> setCanvasAPIToken(std::optional<QString> token);
    Task<> setClassroomAccessToken(std::optional<QString> token);

private:
    Task<std::optional<QString>> kept(QStringView account);
    Task<> keep(QStringView account, std::optional<QString> token);

    StoreFile m_file;
    KeychainHelper& m_keychain;
    QString m_defaultCanvasBaseURL;
    AppSettings m_settings;
};

} // namespace pobblewig
