#pragma once

#include "conversation/attachments/Attachment.h"
#include "foundation/Task.h"

#include <QUrl>

#include <tl/expected.hpp>

/// Reads what the user attaches, on threads of the pool.
namespace pobblewig::AttachmentReading {

using Result = tl::expected<Attachment, AttachmentError>;

/// A picture, a text or a PDF. Neither waits for a device nor for the other end of a pipe.
Task<Result> file(QUrl url);

/// A picture as the bytes of a file, such as one in the clipboard.
Task<Result> picture(QByteArray file, QString name);

/// A picture that is in memory already.
Task<Result> picture(QImage picture, QString name);

} // namespace pobblewig::AttachmentReading
