#pragma once

#include "presence/AutostartSwitching.h"

#include <QCoreApplication>
#include <QDir>

namespace pobblewig {

/// A file in the user's autostart directory.
class Autostart : public AutostartSwitching {
public:
    /// By default, the session's directory and the running program.
    Autostart(const QDir& directory = defaultDirectory(),
        QString program = QCoreApplication::applicationFilePath());

    bool isEnabled() const override;
    tl::expected<void, FileError> setEnabled(bool isEnabled) override;

private:
    static QDir defaultDirectory();

    QString m_path;
    QString m_program;
};

} // namespace pobblewig
