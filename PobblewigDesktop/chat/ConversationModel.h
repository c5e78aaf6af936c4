#pragma once

#include "PobblewigDesktop/chat/ConversationRow.h"

#include <QAbstractListModel>

#include <optional>
#include <vector>

namespace pobblewig {

/// The rows of the conversation, oldest first, followed by the reply that is being written.
///
/// A change keeps the rows that stay, so that a view keeps its place.
class ConversationModel : public QAbstractListModel {
    Q_OBJECT

public:
    using QAbstractListModel::QAbstractListModel;

    const std::vector<ConversationRow>& rows() const { return m_rows; }
    const ConversationRow& row(int number) const;

    /// The number of the row that shows this message, or the reply in progress for a null id.
    std::optional<int> rowOf(const QUuid& messageID) const;
    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;

    /// Replaces the rows of messages from this number on. A new message from the buddy takes the
    /// place of the reply in progress.
    void setRows(std::vector<ConversationRow> rows, int from = 0);

    /// Pass nothing to remove the reply in progress.
    void setReply(const std::optional<ConversationRow>& reply);

    /// Sets the text of the reply in progress. Costs little if it continues the previous text.
    void setReplyText(QStringView text);

private:
    int messageCount() const { return static_cast<int>(m_rows.size()) - (m_hasReply ? 1 : 0); }
    void removeMissing(const std::vector<ConversationRow>& wanted, int from);
    void insertNew(std::vector<ConversationRow>& wanted, int from);
    bool endsReply(const ConversationRow& next) const;
    void announceChange(int number);

    std::vector<ConversationRow> m_rows;
    bool m_hasReply = false;
};

} // namespace pobblewig
