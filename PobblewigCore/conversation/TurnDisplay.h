#pragma once

#include "conversation/ChatTurn.h"
#include "conversation/ReplyPreview.h"
#include "conversation/TurnWatch.h"

#include <QObject>

#include <optional>
#include <vector>

namespace pobblewig {

/// What the current or the last turn shows besides its messages. For display only.
class TurnDisplay : public QObject {
    Q_OBJECT

public:
    /// `moment` must outlive this object.
    explicit TurnDisplay(const Moment& moment);

    /// The visible part of the reply in progress.
    const QString& preview() const { return m_preview.text(); }

    const std::optional<QString>& notice() const { return m_notice; }
    const std::optional<QString>& captureIndicator() const { return m_captureIndicator; }

    /// The tools of the latest round, with failures marked.
    const std::vector<QString>& lastToolCalls() const { return m_lastToolCalls; }
    int totalToolCalls() const { return m_totalToolCalls; }

    TurnWatch& watch() { return m_watch; }

    /// Shows what a turn reports. Of messages that are left out it shows only that there are some.
    ChatTurn::Progress progress();

    /// Forgets what the last turn has shown.
    void begin();
    void emptyPreview();

    /// The reply is on its way, or will not come.
    void endWaiting();
    void setNotice(std::optional<QString> notice);
    void setCaptureIndicator(std::optional<QString> indicator);

Q_SIGNALS:
    void previewChanged();
    void noticeChanged();
    void captureIndicatorChanged();

private:
    void beginReply();
    void growPreview(const QString& token);
    void takeForThought(const QString& text);
    void noteThought(const QString& thought);
    void noteTools(const std::vector<MemoryToolResult>& results);
    void noteLoading();
    void noteLeftOut();
    void endLoading();

    TurnWatch m_watch;
    ReplyPreview m_preview;
    std::optional<QString> m_notice;
    bool m_isModelLoading = false;
    std::optional<QString> m_captureIndicator;
    std::vector<QString> m_lastToolCalls;
    int m_totalToolCalls = 0;
};

} // namespace pobblewig
