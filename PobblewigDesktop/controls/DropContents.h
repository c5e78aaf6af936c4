#pragma once

#include <QImage>
#include <QList>
#include <QString>
#include <QUrl>

class QMimeData;

namespace pobblewig {

/// What the user drops or pastes. At most one of these is there.
struct DropContents {
    /// Files, or other places than web pages.
    QList<QUrl> files = {};
    /// A picture as its file.
    QByteArray pictureFile = {};
    /// A picture that comes as nothing else.
    QImage picture = {};
    QString text = {};

    bool hasPicture() const { return !pictureFile.isEmpty() || !picture.isNull(); }

    /// Whether it goes with a message, rather than into it.
    bool isAttachable() const { return !files.isEmpty() || hasPicture(); }

    static DropContents of(const QMimeData& data);

    /// The same for something that is still being dragged, without looking into it.
    static bool isAttachable(const QMimeData& data);
};

} // namespace pobblewig
