#pragma once

#include "PobblewigDesktop/pages/Page.h"

#include <QPointer>

class QListWidget;
class QStackedWidget;
class QVBoxLayout;

namespace pobblewig {

class UndoBar;

/// A window of pages: their names at the side, one of them beside it, and below it a bar that takes
/// back what hurts. The name of an only page is not listed.
class PageWindow : public QWidget {
    Q_OBJECT

public:
    /// The first page is opened first.
    PageWindow(const QString& title, PageEntries pages, QWidget* parent = nullptr);

    /// An unknown page changes nothing.
    void openPage(const QString& id);
    QString currentPage() const;

    void showState(const PublishedState& state);
    void setTheme(const Palette& palette);

    /// Brings a part of a page into sight.
    void reveal(const QString& page, const QString& part);

Q_SIGNALS:
    void linkRequested(const QString& link);
    void pageOpened(const QString& id);

protected:
    /// What stands above the names of the pages.
    void addAbovePages(QWidget& widget);
    /// What stands below the pages.
    void addBelowPages(QWidget& widget);
    /// Opens the page so many places further down, if there is one.
    void step(int places);
    const PageEntries& pages() const { return m_entries; }
    void keyPressEvent(QKeyEvent* event) override;

private:
    void arrange();
    void openRow(int row);
    Page& page(int row);
    void offerUndo(const QString& done, const std::function<void()>& undo);

    PageEntries m_entries;
    std::vector<QPointer<Page>> m_pages;
    QVBoxLayout* m_side;
    QVBoxLayout* m_beside;
    QListWidget* m_names;
    QStackedWidget* m_stack;
    UndoBar* m_undo;
    /// Published by someone who outlives the window; null before it is shown.
    const PublishedState* m_state = nullptr;
    Palette m_palette;
};

} // namespace pobblewig
