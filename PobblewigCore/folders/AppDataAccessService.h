#pragma once

#include "folders/AppDataReading.h"
#include "foundation/Task.h"
#include "settings/AppDataSource.h"

#include <functional>
#include <optional>
#include <vector>

namespace pobblewig {

/// Lists and reads the folders that the user named, for the chat model. Every answer is a text for
/// it, refusals and errors included.
///
/// Lives on the main thread and touches the disk on others.
class AppDataAccessService {
public:
    using SourcesProvider = std::function<Task<std::vector<AppDataSource>>()>;

    AppDataAccessService(SourcesProvider sourcesProvider, const AppDataReading& reading);

    Task<QString> listSources();

    /// One level, newest first.
    Task<QString> listFiles(QString source, std::optional<QString> subpath);

    /// The end of a text file: 200 lines unless told otherwise, 400 at most.
    Task<QString> readFile(QString source, QString path, std::optional<int> tailLines);

private:
    SourcesProvider m_sourcesProvider;
    const AppDataReading& m_reading;
};

} // namespace pobblewig
