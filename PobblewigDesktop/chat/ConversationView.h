#pragma once

#include "PobblewigDesktop/chat/ConversationMarks.h"
#include "PobblewigDesktop/chat/ConversationTexts.h"
#include "PobblewigDesktop/chat/MessageDelegate.h"
#include "PobblewigDesktop/chat/MessageLayouts.h"
#include "PobblewigDesktop/chat/MessageOffers.h"

#include <QListView>
#include <QTimer>

class QToolButton;

namespace pobblewig {

class ConversationModel;
class MessageButtons;

/// The conversation. Its messages can be read, marked and copied.
///
/// It follows the newest line while it is scrolled to the end. Otherwise the text that is being
/// read stays in place, whatever grows, goes or is laid out anew around it. Long texts are laid out
/// in slices between other events, visible ones first.
class ConversationView : public QListView {
    Q_OBJECT

public:
    explicit ConversationView(ConversationModel& model, QWidget* parent = nullptr);

    bool isFollowing() const { return m_isFollowing; }

    /// Returns the marked text, or else the whole current message, as it is shown.
    QString textToCopy() const;

    /// Returns what a row shows, without markup.
    QString shownText(const ConversationRow& row) const;

    void setTheme(const Palette& palette);

    void setOffers(const MessageOffers& offers);

    /// Highlights the matches, and the current one among them.
    void setMatches(
        const std::vector<MessageRange>& matches, const std::optional<MessageRange>& current);
    void reveal(const MessageRange& place);
    void followLatest();
    void copy() const;

    void doItemsLayout() override;
    void keyboardSearch(const QString&) override { }

Q_SIGNALS:
    void findRequested();
    void retryRequested(const QUuid& message);
    void editRequested();
    void answerAgainRequested();
    void undoRequested(const QString& proposalId);

    /// By one, into the past or back.
    void otherAnswerRequested(const QUuid& message, int step);

    /// The user wants to follow this link, on the web or of mail.
    void linkRequested(const QString& address);

protected:
    bool viewportEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    void noteScrolling();
    void keepPlace();
    void restorePlace();
    int topOf(const QModelIndex& index, qsizetype position) const;
    void selectCurrent();
    void selectTo(const QModelIndex& row, const QPoint& point);
    void showCursor(const QPoint& point);
    template <typename Actions>
    void connectActions(const Actions& actions);
    void connectButtons();
    void showButtons();
    void stepCurrent(int step);
    void placeJumpButton();

    ConversationModel& m_model;
    MessageLayouts m_layouts;
    ConversationMarks m_marks;
    MessageDelegate m_delegate;
    ConversationHits m_hits;
    ConversationTexts m_texts;
    MessageOffers m_offers;
    MessageButtons* m_buttons;
    QToolButton* m_jump;
    QTimer m_nextSlice;
    /// What is being read, and its distance below the upper edge.
    TextPlace m_place;
    int m_placeTop = 0;
    TextPlace m_selectionOrigin;
    /// The link on which the mouse was pressed.
    QString m_pressedLink;
    /// Likewise, the proposal that a card offers to undo.
    QString m_pressedUndo;
    bool m_isFollowing = true;
    bool m_isSettling = false;
};

} // namespace pobblewig
