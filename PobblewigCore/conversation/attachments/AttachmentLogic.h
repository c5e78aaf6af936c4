#pragma once

#include "conversation/attachments/Attachment.h"

#include <QByteArrayView>
#include <QSize>

#include <optional>
#include <vector>

/// What can be attached to a message, and how it is told to the model.
namespace pobblewig::AttachmentLogic {

/// With one message.
inline constexpr size_t most = 5;
inline constexpr qint64 mostBytes = 20'000'000;
inline constexpr qsizetype mostTextBytes = 200'000;
inline constexpr qint64 mostPixels = 64'000'000;
inline constexpr int mostPages = 100;

/// Judges by the content, whatever the name says. Returns nothing for an unknown kind.
std::optional<Attachment::Kind> kind(QByteArrayView content);

/// A name as it is shown and sent, however hostile the file's.
QString shownName(const QString& name);

/// As much of a text in UTF-8 as may be sent, without half a character at the end.
QString beginning(QByteArrayView text);

bool isTooLarge(QSize picture);

/// Whether the end of a JPEG file is missing, which its decoder overlooks.
bool isCutJPEG(QByteArrayView content);

/// What goes with a message, as a line of its text that stays: "[attached: notes.txt]". `hasScreen`
/// says that a picture of the screen is among it.
QString withLine(
    const QString& text, const std::vector<Attachment>& attachments, bool hasScreen = false);

/// Whether a message has such a line, so that it cannot be asked again without what is gone.
bool hasLine(const QString& text);

QString withoutLine(const QString& text);

/// The texts of the attachments, to stand in front of the user's message.
QString texts(const std::vector<Attachment>& attachments);

/// The JPEG files.
std::vector<QByteArray> pictures(const std::vector<Attachment>& attachments);

} // namespace pobblewig::AttachmentLogic
