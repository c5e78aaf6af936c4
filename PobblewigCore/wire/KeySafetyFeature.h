#pragma once

#include "features/Feature.h"
#include "wire/LLMProvider.h"

#include <QStringList>

namespace pobblewig {

struct KeySafetyState {
    /// Who else could see the user's keys: a sentence for each place, for the user.
    QStringList warnings;

    bool operator==(const KeySafetyState&) const = default;
};

/// Looks after the keys to the user's models: keeps the file with them private, and warns of places
/// where others could have seen one.
class KeySafetyFeature : public Feature {
public:
    /// `environmentFile` can be empty if there is none.
    explicit KeySafetyFeature(QString environmentFile);

    /// Takes the file and its directory from other users, after a look at who could read it.
    void start() override;
    void publish(PublishedState& state) const override;

    /// Call this for each model that is about to be used.
    void noteUse(const LLMConfiguration& model);

private:
    void warn(const QString& warning);

    QString m_environmentFile;
    QStringList m_warnings;
};

} // namespace pobblewig
