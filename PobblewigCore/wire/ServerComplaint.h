#pragma once

#include <QString>

namespace pobblewig {

/// What a server that refuses a request complains about. Anything not known is `plain`.
enum class ServerComplaint {
    plain,
    contextOverflow,
    toolsUnsupported,
    imagesUnsupported,
    modelLoading,
    modelUnknown,
};

namespace ServerComplaintLogic {

/// Judges by the text, since servers disagree about the status of each complaint. The status is 0
/// for an error without one.
ServerComplaint complaint(int status, const QString& body);

} // namespace ServerComplaintLogic

} // namespace pobblewig
