#include "PobblewigDesktop/chat/AttachmentChip.h"

#include "PobblewigDesktop/controls/Icons.h"
#include "PobblewigDesktop/controls/PanelStyle.h"
#include "PobblewigDesktop/controls/SteadyLabel.h"

#include <QBuffer>
#include <QHBoxLayout>
#include <QLabel>
#include <QLocale>
#include <QStyle>
#include <QToolButton>

namespace pobblewig {

namespace {

using Kind = Attachment::Kind;

constexpr int faceSide = 28;

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(AttachmentChip)
};

QString kindName(Kind kind)
{
    switch (kind) {
    case Kind::picture:
        return Texts::tr("Picture");
    case Kind::text:
        return Texts::tr("Text");
    case Kind::pdf:
        return Texts::tr("PDF");
    }
    Q_UNREACHABLE();
}

QString detail(const Attachment& attachment)
{
    const auto size = QLocale().formattedDataSize(attachment.size, 0, QLocale::DataSizeSIFormat);
    if (attachment.isSecret)
        return Texts::tr("Secrets?");
    if (attachment.isCut)
        return Texts::tr("Only the beginning · %1").arg(size);
    return Texts::tr("%1 · %2").arg(kindName(attachment.kind), size);
}

QString explanation(const Attachment& attachment)
{
    if (attachment.isSecret)
        return Texts::tr("Files of such a name often hold passwords or keys. Your model reads it "
                         "once you send the message.");
    if (attachment.isCut)
        return Texts::tr("Too long to be sent whole: your model reads only the beginning.");
    return {};
}

QPixmap square(const QImage& picture, qreal ratio)
{
    const auto side = qRound(faceSide * ratio);
    const auto scaled =
        picture.scaled(side, side, Qt::KeepAspectRatioByExpanding, Qt::SmoothTransformation);
    auto face = QPixmap::fromImage(
        scaled.copy((scaled.width() - side) / 2, (scaled.height() - side) / 2, side, side));
    face.setDevicePixelRatio(ratio);
    return face;
}

QString preview(const QImage& picture)
{
    QBuffer file;
    picture.save(&file, "PNG");
    return QStringLiteral("<p><img src=\"data:image/png;base64,%1\"></p>")
        .arg(QString::fromLatin1(file.data().toBase64()));
}

QString tip(const Attachment& attachment)
{
    const QStringList lines { attachment.name, detail(attachment), explanation(attachment) };
    QString tip;
    for (const auto& line : lines) {
        if (!line.isEmpty())
            tip += QStringLiteral("<p>%1</p>").arg(line.toHtmlEscaped());
    }
    return attachment.thumbnail.isNull() ? tip : preview(attachment.thumbnail) + tip;
}

} // namespace

AttachmentChip::AttachmentChip(const QString& name, QWidget* parent)
    : QFrame(parent)
    , m_face(new QLabel(this))
    , m_name(new SteadyLabel(this))
    , m_detail(new SteadyLabel(this))
    , m_remove(new QToolButton(this))
{
    setObjectName(QStringLiteral("chip"));
    m_face->setFixedSize(faceSide, faceSide);
    m_name->label().setAccessibleName(tr("Attached"));
    m_detail->label().setAccessibleName(tr("Kind and size"));
    PanelStyle::setRole(m_detail->label(), QStringLiteral("caption"));
    connect(m_remove, &QToolButton::clicked, this, &AttachmentChip::removed);
    setName(name);
    m_detail->setText(tr("Reading…"));

    auto* const texts = new QVBoxLayout;
    texts->setSpacing(0);
    texts->addWidget(m_name);
    texts->addWidget(m_detail);
    auto* const line = new QHBoxLayout(this);
    line->setContentsMargins(6, 4, 2, 4);
    line->setSpacing(6);
    line->addWidget(m_face);
    line->addLayout(texts, 1);
    line->addWidget(m_remove);
}

void AttachmentChip::setTheme(const Palette& palette)
{
    m_palette = palette;
    m_remove->setIcon(Icons::icon(Icons::Name::close, palette.muted, palette.muted));
    showFace();
}

void AttachmentChip::setAttachment(const Attachment& attachment)
{
    m_attachment = attachment;
    setName(attachment.name);
    m_detail->setText(detail(attachment));
    const auto words = explanation(attachment);
    setToolTip(tip(attachment));
    setAccessibleDescription(words);
    if (attachment.isSecret)
        PanelStyle::setRole(*this, QStringLiteral("danger"));
    // The sheet reads a role only when it is applied.
    style()->unpolish(this);
    style()->polish(this);
    showFace();
}

void AttachmentChip::focusRemove()
{
    m_remove->setFocus(Qt::OtherFocusReason);
}

void AttachmentChip::setName(const QString& name)
{
    m_name->setText(name);
    m_remove->setAccessibleName(tr("Remove %1").arg(name));
    m_remove->setToolTip(tr("Remove"));
}

void AttachmentChip::showFace()
{
    const auto isPicture = m_attachment && m_attachment->kind == Kind::picture;
    m_face->setPixmap(isPicture
            ? square(m_attachment->thumbnail, devicePixelRatioF())
            : Icons::pixmap(Icons::Name::document, m_palette.muted, faceSide, devicePixelRatioF()));
}

} // namespace pobblewig
