#pragma once

#include <QStringList>
#include <QUrl>

#include <optional>

/// What the program lets in from command lines and from the bus, where anybody can call.
namespace pobblewig::OpenRequestLogic {

/// The link that is to be opened: the first of the list, as long as it is a well-formed link of
/// this program and no longer than any link that it hands out.
std::optional<QUrl> link(const QStringList& uris);

} // namespace pobblewig::OpenRequestLogic
