#include "PobblewigDesktop/chat/RegionTaking.h"

#include "PobblewigDesktop/chat/RegionView.h"
#include "PobblewigDesktop/controls/PanelStyle.h"
#include "PobblewigDesktop/controls/WrappedLabel.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QPushButton>
#include <QVBoxLayout>

namespace pobblewig {

RegionTaking::RegionTaking(ChatService& chat, QWidget& parent)
    : QObject(&parent)
    , m_chat(chat)
    , m_parent(parent)
{
}

void RegionTaking::begin()
{
    if (!m_chat.canTakePicture())
        return;
    QCoro::connect(m_chat.takePicture(), this, [this](const auto& picture) {
        if (!picture) {
            Q_EMIT refused(picture.error());
            return;
        }
        const auto image = QImage::fromData(picture->jpegData, "JPEG");
        if (!image.isNull())
            choose(image);
    });
}

void RegionTaking::choose(const QImage& picture)
{
    auto* const dialog = new QDialog(&m_parent);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setWindowTitle(tr("A part of the screen"));
    auto* const view = new RegionView(picture, dialog);
    view->setTheme(m_palette);
    auto* const hint = new WrappedLabel(
        tr("Draw a rectangle. Arrows move it, Shift+arrows change its size."), dialog);
    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Cancel, dialog);
    buttons->button(QDialogButtonBox::Cancel)->setIcon({});
    auto* const attach = buttons->addButton(tr("Attach"), QDialogButtonBox::AcceptRole);
    attach->setDefault(true);
    PanelStyle::setRole(*attach, QStringLiteral("primary"));
    auto* const column = new QVBoxLayout(dialog);
    column->addWidget(view, 1);
    column->addWidget(hint);
    column->addWidget(buttons);
    connect(buttons, &QDialogButtonBox::accepted, dialog, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, dialog, &QDialog::reject);
    connect(dialog, &QDialog::accepted, this, [this, view] { Q_EMIT taken(view->part()); });
    PanelStyle::apply(*dialog, m_palette);
    view->setFocus(Qt::OtherFocusReason);
    dialog->open();
}

} // namespace pobblewig
