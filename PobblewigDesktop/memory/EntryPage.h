#pragma once

#include "PobblewigDesktop/memory/EntryModel.h"
#include "PobblewigDesktop/pages/Page.h"

class QHBoxLayout;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;
class QTreeView;

namespace pobblewig {

class EntryDelegate;
class WrappedLabel;

/// A page with a list of entries, what narrows it, and below it the selected entry in full, with
/// what can be done to it.
class EntryPage : public Page {
    Q_OBJECT

public:
    void showState(const PublishedState& state) override;
    void setTheme(const Palette& palette) override;

protected:
    struct Words {
        QString title;
        QString explanation;
        /// Says what will appear here and how to begin.
        QString empty;
        /// The names of the search field and of the text for assistive technology.
        QString search;
        QString text;
    };

    explicit EntryPage(const Words& words);

    /// Lists what there is to list now, by the page's own records. Called at each change of the
    /// memory while the page is seen, and when what is wanted changes.
    virtual void list() = 0;

    /// Shows the selected entry, or that there is none.
    virtual void showSelected() = 0;

    /// Replaces the rows and selects that one, or without it the row where the selection was.
    void setEntries(size_t count, EntryModel::MakeRow make, std::optional<size_t> selected);

    /// Nothing if there is no entry.
    std::optional<size_t> selectedRow() const;

    /// The words of the search.
    QString wanted() const;
    /// What else narrows the list; stands beside the search.
    void addFilter(QWidget& filter);
    bool isNarrowed() const { return !wanted().trimmed().isEmpty(); }

    QPushButton& addButton(const QString& text);

    /// The words that take the place of an empty list.
    void setEmpty(bool isEmpty, bool isNarrowed);

    QTreeView& view() const { return *m_view; }
    QPlainTextEdit& text() { return *m_text; }
    void setFacts(const QString& facts);

    /// Shows other entries than `setEntries` does.
    void setModel(QAbstractItemModel& model);

    void showEvent(QShowEvent* event) override;

private:
    void arrange(const Words& words);
    void listIfSeen();

    QString m_emptyWords;
    EntryModel* m_entries;
    EntryDelegate* m_delegate;
    QLineEdit* m_search;
    QHBoxLayout* m_filters;
    QTreeView* m_view;
    WrappedLabel* m_empty;
    QPlainTextEdit* m_text;
    WrappedLabel* m_facts;
    QHBoxLayout* m_buttons;
    /// Of the memory that is listed; nothing before.
    std::optional<int> m_listed;
    std::optional<int> m_published;
};

} // namespace pobblewig
