#pragma once

#include <QString>

namespace pobblewig {

/// Whether the host of a URL is this computer itself, and so no network is involved.
bool isThisComputer(const QString& host);

} // namespace pobblewig
