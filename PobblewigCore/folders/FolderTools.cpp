#include "folders/FolderTools.h"

#include "folders/AppDataAccessLogic.h"

namespace pobblewig {

using namespace Qt::StringLiterals;

namespace {

using Outcome = Tool::Outcome;

Outcome unavailable()
{
    return u"(app data tools unavailable)"_s;
}

Task<Outcome> listSources(AppDataAccessService* service, ToolArguments)
{
    if (!service)
        co_return unavailable();
    co_return co_await service->listSources();
}

Task<Outcome> listFiles(AppDataAccessService* service, ToolArguments arguments)
{
    const auto source = arguments.requiredString(u"source"_s);
    if (!source)
        co_return tl::unexpected(source.error().description());
    if (!service)
        co_return unavailable();
    co_return co_await service->listFiles(*source, arguments.string(u"subpath"_s));
}

Task<Outcome> readFile(AppDataAccessService* service, ToolArguments arguments)
{
    const auto source = arguments.requiredString(u"source"_s);
    if (!source)
        co_return tl::unexpected(source.error().description());
    const auto path = arguments.requiredString(u"path"_s);
    if (!path)
        co_return tl::unexpected(path.error().description());
    if (!service)
        co_return unavailable();
    co_return co_await service->readFile(
        *source, *path, arguments.integer(u"tailLines"_s, 1, AppDataAccessLogic::maxTailLines));
}

} // namespace

std::vector<Tool> FolderTools::tools(AppDataAccessService* service)
{
    return {
        {
            .group = Tool::Group::deferred,
            .name = u"apps_list_sources"_s,
            .description = u"List the app data sources: local root directories the user added in "
                           "Settings (e.g. a folder of notes or project files)."_s,
            .section = Tool::Section::folders,
            .instruction = u"apps_list_sources {} — the local folders the user added in Settings "
                           "as app data sources."_s,
            .run = Tool::runner(listSources, service),
        },
        {
            .group = Tool::Group::deferred,
            .name = u"apps_list_files"_s,
            .description = u"One-level listing of a source directory, newest first."_s,
            .schema = uR"json({"type":"object","properties":{
                "source":{"type":"string","description":"Source name from apps_list_sources"},
                "subpath":{"type":"string"}
                },"required":["source"],"additionalProperties":false})json"_s,
            .section = Tool::Section::folders,
            .instruction = u"apps_list_files {source, subpath?} — one level of a source, newest "
                           "first."_s,
            .run = Tool::runner(listFiles, service),
        },
        {
            .group = Tool::Group::deferred,
            .name = u"apps_read_file"_s,
            .description = u"Tail of a text file in a source (default 200 lines, max 400). "
                           "Read-only; secret-shaped files are refused."_s,
            .schema = uR"json({"type":"object","properties":{
                "source":{"type":"string"},
                "path":{"type":"string","description":"Path relative to the source root"},
                "tailLines":{"type":"integer"}
                },"required":["source","path"],"additionalProperties":false})json"_s,
            .section = Tool::Section::folders,
            .instruction = u"apps_read_file {source, path, tailLines?} — the tail of a text file "
                           "in a source (default 200 lines, max 400)."_s,
            .run = Tool::runner(readFile, service),
        },
    };
}

} // namespace pobblewig
