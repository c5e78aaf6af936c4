#pragma once

#include <QByteArray>
#include <QImage>
#include <QString>

namespace pobblewig {

/// What the user gives along with a message. It stays in memory and is never saved.
struct Attachment {
    enum class Kind { picture, text, pdf };

    Kind kind = Kind::text;
    /// On one line and without anything hidden in it.
    QString name;
    /// The size of what was given, in bytes.
    qint64 size = 0;
    /// The picture as a JPEG file whose longer side is at most 1568 pixels.
    QByteArray jpegData = {};
    QImage thumbnail = {};
    /// What a text or a PDF says.
    QString text = {};
    /// The text is only the beginning.
    bool isCut = false;
    /// The name is typical of passwords and keys.
    bool isSecret = false;
};

struct AttachmentError {
    enum class Kind {
        notOnThisComputer,
        notAFile,
        unreadable,
        tooLarge,
        empty,
        unknownKind,
        tooManyPixels,
        damagedPicture,
        noPDFReader,
        protectedPDF,
        damagedPDF,
        slowPDF,
        noText,
    };

    Kind kind;
    /// As in `Attachment`.
    QString name;

    /// One sentence for the user.
    QString description() const;
};

} // namespace pobblewig
