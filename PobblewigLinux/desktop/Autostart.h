#pragma once

#include "presence/AutostartSwitching.h"

#include <QCoreApplication>
#include <QDir>

namespace pobblewig {

/// A file in the user's directory of what starts with the desktop.
class Autostart : public AutostartSwitching {
public:
    /// By default the directory is that of the session, and the program the one that runs.
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
