#pragma once

#include <QStringList>
#include <QUrl>

#include <optional>

/// Decides what the program accepts from command lines and from the bus, where anyone can call.
namespace pobblewig::OpenRequestLogic {

/// The link to open: the first of the list, if it is a well-formed link of this program and no
/// longer than any link that the program creates.
std::optional<QUrl> link(const QStringList& uris);

} // namespace pobblewig::OpenRequestLogic
