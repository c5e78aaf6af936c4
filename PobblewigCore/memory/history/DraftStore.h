#pragma once

#include "foundation/JSONFileStore.h"

#include <optional>

namespace pobblewig {

/// The text that the user has begun to write, kept in "draft.json".
///
/// Lives on the main thread. Without a directory it works in memory only.
class DraftStore {
public:
    explicit DraftStore(const std::optional<DataDirectory>& directory);

    const QString& text() const { return m_draft.text; }

    /// A blank text leaves no file.
    void setText(const QString& text);

private:
    struct Draft {
        QString text;

        static constexpr auto jsonFields()
        {
            return std::tuple { json::required("text", &Draft::text) };
        }
    };

    std::optional<JSONFileStore> m_file;
    Draft m_draft;
};

} // namespace pobblewig
