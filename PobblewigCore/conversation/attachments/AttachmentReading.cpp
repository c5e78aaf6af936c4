#include "conversation/attachments/AttachmentReading.h"

#include "conversation/attachments/AttachmentLogic.h"
#include "conversation/attachments/PDFText.h"
#include "folders/AppDataAccessLogic.h"
#include "screen/ScreenCaptureLogic.h"
#include "screen/ScreenshotEncoding.h"

#include <QBuffer>
#include <QCoroFuture>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImageReader>
#include <QtConcurrent>

#include <fcntl.h>
#include <sys/stat.h>

namespace pobblewig {

namespace {

using Kind = AttachmentError::Kind;
using Contents = tl::expected<QByteArray, Kind>;
using AttachmentReading::Result;

constexpr int thumbnailSide = 320;

/// A file that was read, and what it is if that is known already.
struct Found {
    Attachment attachment;
    /// A PDF is still to be read by another program.
    bool isEncrypted = false;
};

tl::unexpected<Kind> failed(Kind kind)
{
    return tl::unexpected(kind);
}

Contents contents(const QString& path)
{
    const auto handle =
        ::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    QFile file;
    if (handle < 0 || !file.open(handle, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle))
        return failed(Kind::unreadable);
    struct stat status { };
    if (::fstat(handle, &status) != 0 || !S_ISREG(status.st_mode))
        return failed(Kind::notAFile);
    if (status.st_size > AttachmentLogic::mostBytes)
        return failed(Kind::tooLarge);
    auto bytes = file.read(AttachmentLogic::mostBytes + 1);
    if (file.error() != QFileDevice::NoError)
        return failed(Kind::unreadable);
    if (bytes.isEmpty() || bytes.size() > AttachmentLogic::mostBytes)
        return failed(bytes.isEmpty() ? Kind::empty : Kind::tooLarge);
    return bytes;
}

/// Most kinds are decoded whole, and Qt bounds what one picture may take.
bool exceedsMemory(QSize picture)
{
    return qint64(picture.width()) * picture.height() * 4 > qint64(QImageReader::allocationLimit())
        << 20;
}

tl::expected<QImage, Kind> decoded(const QByteArray& bytes)
{
    QBuffer buffer;
    buffer.setData(bytes);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer);
    reader.setAutoTransform(true);
    const auto size = reader.size();
    if (AttachmentLogic::isTooLarge(size))
        return failed(Kind::tooManyPixels);
    if (!size.isValid() || AttachmentLogic::isCutJPEG(bytes))
        return failed(Kind::damagedPicture);
    reader.setScaledSize(ScreenCaptureLogic::targetSize(size));
    const auto image = reader.read();
    if (image.isNull())
        return failed(exceedsMemory(size) ? Kind::tooManyPixels : Kind::damagedPicture);
    return image;
}

tl::expected<Attachment, Kind> asPicture(const QImage& image, Attachment attachment)
{
    const auto jpeg = ScreenshotEncoding::jpegData(
        image, ScreenCaptureLogic::maxDimension, ScreenCaptureLogic::jpegQuality);
    if (!jpeg)
        return failed(Kind::damagedPicture);
    attachment.kind = Attachment::Kind::picture;
    attachment.jpegData = *jpeg;
    attachment.thumbnail = image.scaled(image.size().boundedTo({ thumbnailSide, thumbnailSide }),
        Qt::KeepAspectRatio, Qt::SmoothTransformation);
    if (attachment.size == 0)
        attachment.size = jpeg->size();
    return attachment;
}

Attachment withText(Attachment attachment, const QByteArray& text)
{
    attachment.text = AttachmentLogic::beginning(text);
    attachment.isCut = text.size() > AttachmentLogic::mostTextBytes;
    return attachment;
}

tl::expected<Attachment, Kind> pictureOf(const QByteArray& bytes, Attachment attachment)
{
    if (AttachmentLogic::kind(bytes) != Attachment::Kind::picture)
        return failed(Kind::unknownKind);
    attachment.size = bytes.size();
    return decoded(bytes).and_then(
        [&](const QImage& image) { return asPicture(image, std::move(attachment)); });
}

tl::expected<Found, Kind> examined(const QByteArray& bytes, Attachment attachment)
{
    const auto kind = AttachmentLogic::kind(bytes);
    if (!kind)
        return failed(Kind::unknownKind);
    attachment.kind = *kind;
    attachment.size = bytes.size();
    if (*kind == Attachment::Kind::text)
        return Found { withText(std::move(attachment), bytes) };
    if (*kind == Attachment::Kind::pdf)
        return Found { std::move(attachment), bytes.contains("/Encrypt") };
    return pictureOf(bytes, std::move(attachment)).map([](Attachment&& read) {
        return Found { std::move(read) };
    });
}

tl::expected<Found, Kind> found(const QString& path, Attachment attachment)
{
    const auto bytes = contents(path);
    if (!bytes)
        return failed(bytes.error());
    return examined(*bytes, std::move(attachment));
}

/// Pages are divided by form feeds.
QByteArray tidied(QByteArray text)
{
    return text.replace('\f', "\n\n").trimmed();
}

Task<tl::expected<Attachment, Kind>> read(QString path, Attachment attachment)
{
    const auto start = co_await QtConcurrent::run(found, path, std::move(attachment));
    if (!start)
        co_return failed(start.error());
    if (start->attachment.kind != Attachment::Kind::pdf)
        co_return start->attachment;
    const auto text = co_await PDFText::read(path);
    if (!text) {
        const auto isProtected = text.error() == Kind::damagedPDF && start->isEncrypted;
        co_return failed(isProtected ? Kind::protectedPDF : text.error());
    }
    const auto words = tidied(*text);
    if (words.isEmpty())
        co_return failed(Kind::noText);
    co_return withText(start->attachment, words);
}

Result named(tl::expected<Attachment, Kind> result, const QString& name)
{
    return std::move(result).map_error([&](Kind kind) { return AttachmentError { kind, name }; });
}

} // namespace

Task<Result> AttachmentReading::file(QUrl url)
{
    const auto path = QDir::cleanPath(url.toLocalFile());
    const auto name = url.isLocalFile() ? QFileInfo(path).fileName() : url.toDisplayString();
    const Attachment attachment { .name = AttachmentLogic::shownName(name),
        .isSecret = AppDataAccessLogic::deniedPart(path).has_value() };
    if (!url.isLocalFile())
        co_return tl::unexpected(AttachmentError { Kind::notOnThisComputer, attachment.name });
    auto result = co_await read(path, attachment);
    co_return named(std::move(result), attachment.name);
}

Task<Result> AttachmentReading::picture(QByteArray file, QString name)
{
    const Attachment attachment { .name = AttachmentLogic::shownName(name) };
    if (file.size() > AttachmentLogic::mostBytes)
        co_return tl::unexpected(AttachmentError { Kind::tooLarge, attachment.name });
    auto result = co_await QtConcurrent::run(pictureOf, std::move(file), attachment);
    co_return named(std::move(result), attachment.name);
}

Task<Result> AttachmentReading::picture(QImage picture, QString name)
{
    const Attachment attachment { .name = AttachmentLogic::shownName(name) };
    if (AttachmentLogic::isTooLarge(picture.size()))
        co_return tl::unexpected(AttachmentError { Kind::tooManyPixels, attachment.name });
    auto result = co_await QtConcurrent::run(asPicture, std::move(picture), attachment);
    co_return named(std::move(result), attachment.name);
}

} // namespace pobblewig
