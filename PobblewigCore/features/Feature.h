#pragma once

#include "features/PublishedState.h"
#include "foundation/Time.h"
#include "tools/Tool.h"

#include <QString>

#include <functional>
#include <vector>

namespace pobblewig {

/// What one service adds to the program. The coordinator keeps the features in a list, in the order
/// in which they start and tick, and knows them only by this interface.
///
/// Lives on the main thread, as long as the process.
class Feature {
public:
    virtual ~Feature() = default;

    /// Called once, when every store is open.
    virtual void start() { }

    /// Called at each poll. Reads the clock itself, since the features before it may have waited.
    virtual Task<> tick() { co_return; }

    /// The feature's lines in the description of the situation that a model reads.
    virtual std::vector<QString> situation(TimePoint) const { return {}; }

    /// The tools that the feature offers to a model. Asked once, at the start.
    virtual std::vector<Tool> tools() { return {}; }

    /// Writes the feature's own record and nothing else. Called when the revision has grown.
    virtual void publish(PublishedState&) const { }

    /// Grows whenever the record written by `publish` may have changed.
    virtual int revision() const { return m_revision; }

    /// Called when the revision has grown outside a poll.
    std::function<void()> onChanged = [] {};

protected:
    void changed()
    {
        ++m_revision;
        onChanged();
    }

private:
    int m_revision = 0;
};

} // namespace pobblewig
