#pragma once

#include <QString>

/// Where a link in foreign text leads.
namespace pobblewig::LinkAddress {

/// Returns the address if it is on the web or of mail, else an empty text.
QString safe(const QString& address);

/// What the reader should know of the address: its host, or the whole address of mail.
QString origin(const QString& safeAddress);

/// Whether the text of a link already says where it leads.
bool names(QStringView text, const QString& origin);

} // namespace pobblewig::LinkAddress
