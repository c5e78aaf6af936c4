#pragma once

#include "PobblewigDesktop/chat/ConversationMarks.h"
#include "PobblewigDesktop/chat/MessageDelegate.h"
#include "PobblewigDesktop/chat/MessageLayouts.h"

#include <QListView>
#include <QTimer>

class QToolButton;

namespace pobblewig {

class ConversationModel;

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

    /// Returns the marked text, or else the whole current message.
    QString textToCopy() const;

    void setTheme(const Palette& palette);

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

protected:
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
    /// A place in the text, and its distance below the upper edge.
    struct Place {
        QPersistentModelIndex row;
        qsizetype position = 0;
        int top = 0;
    };

    QString shownText(int row) const;
    void noteScrolling();
    void keepPlace();
    void restorePlace();
    int topOf(const QModelIndex& index, qsizetype position) const;
    qsizetype positionIn(const QModelIndex& index, const QPoint& point) const;
    QModelIndex messageAt(const QPoint& point) const;
    void select(const QModelIndex& index, const TextRange& range);
    void stepCurrent(int step);
    void placeJumpButton();

    ConversationModel& m_model;
    MessageLayouts m_layouts;
    ConversationMarks m_marks;
    MessageDelegate m_delegate;
    QToolButton* m_jump;
    QTimer m_nextSlice;
    Place m_place;
    qsizetype m_selectionOrigin = 0;
    bool m_isFollowing = true;
    bool m_isSettling = false;
};

} // namespace pobblewig
