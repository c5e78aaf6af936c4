#pragma once

#include "conversation/attachments/Attachment.h"
#include "foundation/Task.h"

#include <tl/expected.hpp>

/// Lets the program pdftotext read PDF files.
namespace pobblewig::PDFText {

/// The beginning of the text of the first pages, in UTF-8 and slightly longer than what may be
/// sent if there is more of it.
Task<tl::expected<QByteArray, AttachmentError::Kind>> read(QString path);

} // namespace pobblewig::PDFText
