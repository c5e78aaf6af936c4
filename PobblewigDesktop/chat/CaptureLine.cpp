#include "PobblewigDesktop/chat/CaptureLine.h"

#include "PobblewigDesktop/controls/PanelStyle.h"
#include "conversation/ChatService.h"

namespace pobblewig {

CaptureLine::CaptureLine(const ChatService& chat, QWidget* parent)
    : QLabel(parent)
    , m_chat(chat)
{
    PanelStyle::setRole(*this, QStringLiteral("caption"));
    setAccessibleName(tr("Captured"));
    setTextFormat(Qt::PlainText);
    setWordWrap(true);
    connect(&chat, &ChatService::captureIndicatorChanged, this, &CaptureLine::refresh);
    refresh();
}

void CaptureLine::refresh()
{
    const auto& indicator = m_chat.captureIndicator();
    PanelStyle::setText(*this, indicator.value_or(QString()));
    setVisible(indicator.has_value());
}

} // namespace pobblewig
