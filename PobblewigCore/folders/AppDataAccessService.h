#pragma once

#include "folders/AppDataReading.h"
#include "foundation/Task.h"
#include "settings/AppDataSource.h"

#include <functional>
#include <optional>
#include <vector>

namespace pobblewig {

/// Lists and reads the user's shared folders for the chat model. Every answer is a text for the
/// model, including refusals and errors.
///
/// Lives on the main thread and accesses the disk on others.
class AppDataAccessService {
public:
    using SourcesProvider = std::function<std::vector<AppDataSource>()>;

    AppDataAccessService(SourcesProvider sourcesProvider, const AppDataReading& reading);

    Task<QString> listSources();

    /// Lists one level, newest first.
    Task<QString> listFiles(QString source, std::optional<QString> subpath);

    /// Reads the end of a text file: 200 lines by default, 400 at most.
    Task<QString> readFile(QString source, QString path, std::optional<int> tailLines);

private:
    SourcesProvider m_sourcesProvider;
    const AppDataReading& m_reading;
};

} // namespace pobblewig
