#include "conversation/attachments/AttachmentLogic.h"

#include "foundation/Text.h"
#include "prompts/AttachmentPrompts.h"

#include <QCoreApplication>
#include <QStringBuilder>
#include <QStringList>
#include <QtEndian>

namespace pobblewig {

namespace {

using namespace Qt::StringLiterals;
using Kind = Attachment::Kind;

constexpr qsizetype mostNameCharacters = 80;
constexpr auto lineBegin = "[attached: "_L1;

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(Attachment)
};

bool isPicture(QByteArrayView content)
{
    const auto isWebP =
        content.startsWith("RIFF") && content.size() > 12 && content.sliced(8).startsWith("WEBP");
    return content.startsWith("\x89PNG\r\n\x1a\n") || content.startsWith("\xff\xd8\xff")
        || content.startsWith("GIF87a") || content.startsWith("GIF89a") || isWebP;
}

QByteArrayView withoutMark(QByteArrayView text)
{
    constexpr QByteArrayView mark("\xef\xbb\xbf");
    return text.startsWith(mark) ? text.sliced(mark.size()) : text;
}

bool isContinuation(char byte)
{
    return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
}

/// Where the line begins.
std::optional<qsizetype> lineAt(const QString& text)
{
    const auto from = text.lastIndexOf(u'\n') + 1;
    const auto line = QStringView(text).sliced(from);
    const auto isLine = line.startsWith(lineBegin) && line.endsWith(u']');
    return isLine ? std::optional(from) : std::nullopt;
}

} // namespace

QString AttachmentError::description() const
{
    switch (kind) {
    case Kind::notOnThisComputer:
        return Texts::tr("%1 is not a file on this computer. Save it first.").arg(name);
    case Kind::notAFile:
        return Texts::tr("%1 is not a file.").arg(name);
    case Kind::unreadable:
        return Texts::tr("%1 cannot be read.").arg(name);
    case Kind::tooLarge:
        return Texts::tr("%1 is larger than 20 MB.").arg(name);
    case Kind::empty:
        return Texts::tr("%1 is empty.").arg(name);
    case Kind::unknownKind:
        return Texts::tr("%1 is neither a picture, a PDF nor a text in UTF-8.").arg(name);
    case Kind::tooManyPixels:
        return Texts::tr("%1 has too many pixels. Make it smaller first.").arg(name);
    case Kind::damagedPicture:
        return Texts::tr("%1 is damaged: the picture cannot be shown.").arg(name);
    case Kind::noPDFReader:
        return Texts::tr("%1 cannot be read without the program pdftotext. Install the package "
                         "poppler-utils.")
            .arg(name);
    case Kind::protectedPDF:
        return Texts::tr("%1 is protected by a password. Save a copy without one.").arg(name);
    case Kind::damagedPDF:
        return Texts::tr("%1 is damaged: its text cannot be read.").arg(name);
    case Kind::slowPDF:
        return Texts::tr("Reading %1 takes too long. Attach only some of its pages.").arg(name);
    case Kind::noText:
        return Texts::tr("%1 holds no text, only pictures of pages. Attach a picture of a page.")
            .arg(name);
    }
    Q_UNREACHABLE();
}

std::optional<Kind> AttachmentLogic::kind(QByteArrayView content)
{
    // The mark may stand behind a few other bytes.
    constexpr qsizetype mostBeforePDF = 1024;
    if (isPicture(content))
        return Kind::picture;
    if (content.first(std::min(mostBeforePDF, content.size())).contains("%PDF-"))
        return Kind::pdf;
    if (!content.contains('\0') && content.isValidUtf8())
        return Kind::text;
    return std::nullopt;
}

QString AttachmentLogic::shownName(const QString& name)
{
    const auto shown = Text::plainLine(name, mostNameCharacters);
    return shown.isEmpty() ? Texts::tr("File without a name") : shown;
}

QString AttachmentLogic::beginning(QByteArrayView text)
{
    text = withoutMark(text);
    auto end = std::min(text.size(), mostTextBytes);
    while (end < text.size() && end > 0 && isContinuation(text[end]))
        --end;
    return QString::fromUtf8(text.first(end));
}

bool AttachmentLogic::isTooLarge(QSize picture)
{
    return qint64(picture.width()) * picture.height() > mostPixels;
}

bool AttachmentLogic::isCutJPEG(QByteArrayView content)
{
    constexpr auto scan = '\xda';
    qsizetype at = 2;
    // Up to the first scan each segment tells its length; a thumbnail may have an end of its own.
    while (at + 4 <= content.size() && content[at] == '\xff' && content[at + 1] != scan)
        at += 2 + qFromBigEndian<quint16>(content.sliced(at + 2).data());
    return content.startsWith("\xff\xd8") && content.indexOf("\xff\xd9", at) < 0;
}

QString AttachmentLogic::withLine(
    const QString& text, const std::vector<Attachment>& attachments, bool hasScreen)
{
    if (attachments.empty())
        return text;
    QStringList names;
    for (const auto& attachment : attachments)
        names.append(attachment.name);
    if (hasScreen)
        names.append(u"a picture of the screen"_s);
    return withoutLine(text) % u"\n\n" % lineBegin % names.join(u", "_s) % u']';
}

bool AttachmentLogic::hasLine(const QString& text)
{
    return lineAt(text).has_value();
}

QString AttachmentLogic::withoutLine(const QString& text)
{
    const auto line = lineAt(text);
    return line ? text.first(*line).trimmed() : text;
}

QString AttachmentLogic::texts(const std::vector<Attachment>& attachments)
{
    QString texts;
    for (const auto& attachment : attachments) {
        if (attachment.kind != Kind::picture)
            texts += Prompts::attachedFile(attachment.name, attachment.text, attachment.isCut);
    }
    return texts;
}

std::vector<QByteArray> AttachmentLogic::pictures(const std::vector<Attachment>& attachments)
{
    std::vector<QByteArray> pictures;
    for (const auto& attachment : attachments) {
        if (attachment.kind == Kind::picture)
            pictures.push_back(attachment.jpegData);
    }
    return pictures;
}

} // namespace pobblewig
