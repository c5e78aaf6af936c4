#pragma once

#include "PobblewigDesktop/chat/ConversationMarks.h"
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
    struct TextPlace {
        QPersistentModelIndex row;
        qsizetype position = 0;
    };

    /// A place in the text, and its distance below the upper edge.
    struct Place {
        QPersistentModelIndex row;
        qsizetype position = 0;
        int top = 0;
    };

    void noteScrolling();
    void keepPlace();
    void restorePlace();
    int topOf(const QModelIndex& index, qsizetype position) const;
    qsizetype positionIn(const QModelIndex& index, const QPoint& point) const;
    QModelIndex messageAt(const QPoint& point) const;
    TextPlace placeAt(const QModelIndex& index, const QPoint& point) const;
    MessageLayout& layoutOf(const QModelIndex& index) const;
    /// The point within the text of its row.
    QPointF textPoint(const QModelIndex& index, const QPoint& point) const;
    QString linkAt(const QPoint& point) const;
    QString undoAt(const QPoint& point) const;
    bool copyCodeAt(const QPoint& point);
    void select(const TextPlace& from, const TextPlace& to);
    void showCursor(const QPoint& point);
    template <typename Actions>
    void connectActions(const Actions& actions);
    void connectButtons();
    void showButtons();
    void stepCurrent(int step);
    void placeJumpButton();

    ConversationModel& m_model;
    /// Reading a text and laying it out changes nothing that is shown.
    mutable MessageLayouts m_layouts;
    ConversationMarks m_marks;
    MessageDelegate m_delegate;
    MessageOffers m_offers;
    MessageButtons* m_buttons;
    QToolButton* m_jump;
    QTimer m_nextSlice;
    Place m_place;
    TextPlace m_selectionOrigin;
    /// The link on which the mouse was pressed.
    QString m_pressedLink;
    /// Likewise, the proposal that a card offers to undo.
    QString m_pressedUndo;
    bool m_isFollowing = true;
    bool m_isSettling = false;
};

} // namespace pobblewig
