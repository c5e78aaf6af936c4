#include "PobblewigDesktop/controls/DropContents.h"

#include <QMimeData>

#include <algorithm>

namespace pobblewig {

namespace {

enum class Kind { nothing, files, picture, text };

bool isOfWeb(const QUrl& url)
{
    return url.scheme() == QLatin1String("http") || url.scheme() == QLatin1String("https");
}

Kind kindOf(const QMimeData& data)
{
    const auto places = data.urls();
    if (!std::ranges::all_of(places, isOfWeb))
        return Kind::files;
    // A browser names the address of a picture; a table comes as a text and as its picture.
    if (data.hasImage() && (!places.isEmpty() || !data.hasText()))
        return Kind::picture;
    return data.hasText() ? Kind::text : Kind::nothing;
}

QByteArray pictureFile(const QMimeData& data)
{
    for (const auto* const format : { "image/png", "image/jpeg", "image/webp", "image/gif" }) {
        if (auto bytes = data.data(QString::fromLatin1(format)); !bytes.isEmpty())
            return bytes;
    }
    return {};
}

} // namespace

DropContents DropContents::of(const QMimeData& data)
{
    DropContents contents;
    switch (kindOf(data)) {
    case Kind::files:
        contents.files = data.urls();
        break;
    case Kind::picture:
        contents.pictureFile = pobblewig::pictureFile(data);
        if (contents.pictureFile.isEmpty())
            contents.picture = qvariant_cast<QImage>(data.imageData());
        break;
    case Kind::text:
        contents.text = data.text();
        break;
    case Kind::nothing:
        break;
    }
    return contents;
}

bool DropContents::isAttachable(const QMimeData& data)
{
    const auto kind = kindOf(data);
    return kind == Kind::files || kind == Kind::picture;
}

} // namespace pobblewig
