#include "PobblewigDesktop/chat/MessageMenu.h"

#include "PobblewigDesktop/chat/MessageLayout.h"
#include "foundation/Text.h"
#include "markdown/LinkAddress.h"

#include <QClipboard>
#include <QGuiApplication>

namespace pobblewig {

namespace {

void setClipboard(const QString& text)
{
    QGuiApplication::clipboard()->setText(text);
}

} // namespace

MessageMenu::MessageMenu(QWidget* parent)
    : QMenu(parent)
{
    setAttribute(Qt::WA_DeleteOnClose);
}

void MessageMenu::addLink(const QString& link)
{
    addAction(tr("Open %1").arg(LinkAddress::origin(link)), this,
        [this, link] { Q_EMIT linkRequested(link); });
    addAction(tr("Copy link"), this, [link] { setClipboard(link); });
}

void MessageMenu::addMessage(
    const ConversationRow& row, const StyledText& shown, const MessageOffers& offers)
{
    addAction(tr("Copy message"), this,
        [text = MessageLayout::asShown(shown.copied({ 0, shown.text.size() }))] {
            setClipboard(text);
        });
    if (row.card.canBeUndone)
        addAction(tr("Undo"), this, [this, id = row.card.proposalId] { Q_EMIT undoRequested(id); });
    if (shown.text != row.text)
        addAction(tr("Copy as Markdown"), this, [text = row.text] { setClipboard(text); });
    addAnswers(row, offers);
    addCode(shown);
}

void MessageMenu::addAnswers(const ConversationRow& row, const MessageOffers& offers)
{
    if (row.isUnanswered)
        addAction(tr("Try again"), this, [this, id = row.id] { Q_EMIT retryRequested(id); });
    if (row.id == offers.repeatable)
        addAction(tr("Answer again"), this, &MessageMenu::answerAgainRequested);
    if (row.id == offers.changeable)
        addAction(tr("Edit and send again"), this, &MessageMenu::editRequested);
    const auto addStep = [&](const QString& text, int step) {
        addAction(text, this, [this, id = row.id, step] { Q_EMIT otherAnswerRequested(id, step); });
    };
    if (row.answer > 0)
        addStep(tr("Earlier answer"), -1);
    if (row.answer < row.earlier.size())
        addStep(tr("Later answer"), 1);
}

void MessageMenu::addCode(const StyledText& shown)
{
    for (const auto& block : shown.blocks) {
        if (block.kind != StyledText::BlockKind::code)
            continue;
        const auto code = shown.text.mid(block.range.start, block.range.length);
        const auto firstLine = Text::plainLine(code.section(u'\n', 0, 0), 24);
        addAction(tr("Copy code “%1”").arg(firstLine), this, [code] { setClipboard(code); });
    }
}

} // namespace pobblewig
