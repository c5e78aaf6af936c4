#pragma once

#include <QByteArrayView>
#include <QString>

namespace pobblewig::AutostartLogic {

/// Whether a desktop that finds this file in its autostart directory starts the program.
bool startsProgram(QByteArrayView file);

/// The file that makes desktops start the program at this path.
QByteArray file(const QString& program);

} // namespace pobblewig::AutostartLogic
