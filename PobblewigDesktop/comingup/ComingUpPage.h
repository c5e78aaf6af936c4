#pragma once

#include "PobblewigDesktop/pages/Page.h"
#include "foundation/Moment.h"
#include "memory/ReferenceMemoryStore.h"

#include <QTimer>

class QListView;

namespace pobblewig {

class ComingUpDelegate;
class ComingUpModel;

/// Deadlines, events and reminders of the next days as a list by day. What has an address opens by
/// a click or Enter.
class ComingUpPage : public Page {
    Q_OBJECT

public:
    /// `reference` must outlive the page.
    ComingUpPage(const ReferenceMemoryStore& reference, Moment moment);

    void showState(const PublishedState& state) override;
    void setTheme(const Palette& palette) override;

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void arrange();
    void list();
    void open(const QModelIndex& index);

    const ReferenceMemoryStore& m_reference;
    Moment m_moment;
    ComingUpModel* m_model;
    ComingUpDelegate* m_delegate;
    QListView* m_view;
    QWidget* m_empty;
    /// Time passes without a change of the memory.
    QTimer m_everyMinute;
    /// Of the memory that is listed; nothing before.
    std::optional<int> m_listed;
};

} // namespace pobblewig
