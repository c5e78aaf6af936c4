#include "PobblewigDesktop/chat/AttachmentTray.h"

#include "PobblewigDesktop/chat/AttachmentChip.h"
#include "conversation/attachments/AttachmentLogic.h"

#include <QGridLayout>
#include <QPointer>

#include <algorithm>
#include <utility>

namespace pobblewig {

namespace {

constexpr int columns = 2;

} // namespace

AttachmentTray::AttachmentTray(QWidget* parent)
    : QWidget(parent)
    , m_grid(new QGridLayout(this))
{
    m_grid->setContentsMargins(0, 0, 0, 0);
    m_grid->setSpacing(4);
    for (auto column = 0; column < columns; ++column)
        m_grid->setColumnStretch(column, 1);
    hide();
}

void AttachmentTray::setTheme(const Palette& palette)
{
    m_palette = palette;
    for (auto* const chip : m_chips)
        chip->setTheme(palette);
}

bool AttachmentTray::isReading() const
{
    return !std::ranges::all_of(
        m_chips, [](const auto* chip) { return chip->attachment().has_value(); });
}

void AttachmentTray::add(const DropContents& contents)
{
    for (const auto& file : contents.files) {
        if (!hasRoom())
            break;
        await(AttachmentReading::file(file), file.fileName());
    }
    const auto name = tr("Pasted picture");
    if (contents.hasPicture() && hasRoom())
        await(contents.picture.isNull() ? AttachmentReading::picture(contents.pictureFile, name)
                                        : AttachmentReading::picture(contents.picture, name),
            name);
    tellRefusals();
}

void AttachmentTray::add(const QImage& picture, const QString& name)
{
    if (hasRoom())
        await(AttachmentReading::picture(picture, name), name);
    tellRefusals();
}

AttachmentTray::Attachments AttachmentTray::take()
{
    Attachments attachments;
    for (auto* const chip : std::exchange(m_chips, {})) {
        if (chip->attachment())
            attachments.push_back(*chip->attachment());
        chip->deleteLater();
        chip->hide();
    }
    arrange();
    return attachments;
}

void AttachmentTray::putBack(const Attachments& attachments)
{
    const auto later = std::exchange(m_chips, {});
    for (const auto& attachment : attachments)
        addChip(attachment.name)->setAttachment(attachment);
    m_chips.insert(m_chips.end(), later.begin(), later.end());
    arrange();
}

bool AttachmentTray::hasRoom()
{
    const auto reason = tr("At most %1 files go with one message.").arg(AttachmentLogic::most);
    if (count() < AttachmentLogic::most)
        return true;
    if (!m_refusals.contains(reason))
        m_refusals.append(reason);
    return false;
}

AttachmentChip* AttachmentTray::addChip(const QString& name)
{
    auto* const chip = new AttachmentChip(AttachmentLogic::shownName(name), this);
    chip->setTheme(m_palette);
    connect(chip, &AttachmentChip::removed, this, [this, chip] { remove(*chip); });
    m_chips.push_back(chip);
    return chip;
}

void AttachmentTray::await(Reading reading, const QString& name)
{
    auto* const chip = addChip(name);
    arrange();
    QCoro::connect(
        std::move(reading), chip, [this, chip](const auto& result) { finish(*chip, result); });
}

void AttachmentTray::finish(AttachmentChip& chip, const AttachmentReading::Result& result)
{
    if (std::ranges::find(m_chips, &chip) == m_chips.end())
        return;
    if (result) {
        chip.setAttachment(*result);
        arrange();
    } else {
        m_refusals.append(result.error().description());
        remove(chip);
    }
    tellRefusals();
}

void AttachmentTray::remove(AttachmentChip& chip)
{
    const auto hadFocus = chip.isAncestorOf(focusWidget());
    const auto place = std::ranges::find(m_chips, &chip);
    const auto next = m_chips.erase(place);
    if (hadFocus && !m_chips.empty())
        (next == m_chips.end() ? m_chips.back() : *next)->focusRemove();
    else if (hadFocus)
        parentWidget()->setFocus(Qt::OtherFocusReason);
    chip.hide();
    chip.deleteLater();
    arrange();
}

void AttachmentTray::arrange()
{
    for (auto number = 0; number < int(m_chips.size()); ++number) {
        auto* const chip = m_chips[size_t(number)];
        m_grid->addWidget(chip, number / columns, number % columns);
        if (number > 0)
            setTabOrder(m_chips[size_t(number - 1)], chip);
    }
    setVisible(!isEmpty());
    Q_EMIT changed();
}

void AttachmentTray::tellRefusals()
{
    if (!isReading() && !m_refusals.isEmpty())
        Q_EMIT refused(std::exchange(m_refusals, {}).join(u'\n'));
}

} // namespace pobblewig
