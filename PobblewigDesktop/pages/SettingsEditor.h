#pragma once

#include "AppCoordinator.h"
#include "settings/SettingCatalog.h"

#include <QObject>

#include <functional>
#include <optional>

namespace pobblewig {

/// Lets the user's changes take effect at once, and offers to take back what hurts.
class SettingsEditor : public QObject {
    Q_OBJECT

public:
    /// The coordinator must outlive the editor.
    explicit SettingsEditor(AppCoordinator& coordinator, QObject* parent = nullptr);

    /// Returns why the value is refused, as a sentence for the user, or nothing if it is in effect
    /// now.
    std::optional<QString> write(const Setting& setting, const JSONValue& value);

    /// Changes what no control stands for; `done` says what was changed.
    void change(const QString& done, const std::function<void(AppSettings&)>& change);

Q_SIGNALS:
    void undoOffered(const QString& done, const std::function<void()>& undo);

private:
    /// Returns the settings before and after.
    std::pair<AppSettings, AppSettings> apply(const std::function<void(AppSettings&)>& change);
    void offerUndo(const QString& done, const AppSettings& before, const AppSettings& after);

    AppCoordinator& m_coordinator;
};

} // namespace pobblewig
