#pragma once

#include "connections/SchoolItem.h"

#include <QHash>

#include <optional>
#include <vector>

namespace pobblewig {

/// Gives each course and each deadline a title that no other has, since the reference memory would
/// take items with the same title for one.
///
/// The first "Homework 1" keeps its title, the next one becomes "Homework 1 (PSYC 2010)", and one
/// more of the same course "Homework 1 (PSYC 2010, 2)". A title once given stays.
class SchoolTitles {
public:
    /// Learns the titles of the items that are there.
    explicit SchoolTitles(const std::vector<ReferenceItem>& stored);

    /// The item under its title, with the id and the date of creation that it already has.
    ReferenceItem titled(SchoolItem found);

    /// The stored item that was found again under another title, if it was.
    const std::vector<QUuid>& renamed() const { return m_renamed; }

    /// What a service calls the item; empty for an item that no service brought.
    static QString identity(const ReferenceItem& item);

private:
    struct Known {
        QUuid id;
        TimePoint createdAt;
        QString title;
    };

    bool isTaken(const ReferenceItem& item, const QString& title) const;
    QString freeTitle(const SchoolItem& found) const;

    /// The identities by path and normalised title.
    QHash<QString, QString> m_owners;
    QHash<QString, Known> m_known;
    std::vector<QUuid> m_renamed;
};

} // namespace pobblewig
