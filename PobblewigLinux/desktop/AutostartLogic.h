#pragma once

#include <QByteArrayView>
#include <QString>

#include <optional>

namespace pobblewig::AutostartLogic {

/// Whether a desktop that finds this file in its autostart directory starts the program.
bool startsProgram(QByteArrayView file);

/// The file that makes desktops start the program at this path. Returns nothing for a path with
/// control characters, which not every desktop reads.
std::optional<QByteArray> file(const QString& program);

} // namespace pobblewig::AutostartLogic
