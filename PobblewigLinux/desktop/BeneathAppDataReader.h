#pragma once

#include "PobblewigLinux/desktop/PathBeneath.h"
#include "folders/AppDataReading.h"

namespace pobblewig {

/// Resolves a path once, below the root, and uses only the resulting descriptor afterwards.
class BeneathAppDataReader : public AppDataReading {
public:
    explicit BeneathAppDataReader(PathBeneath::Finder find = PathBeneath::byKernel);

    tl::expected<std::unique_ptr<AppDataFile>, AppDataFault> open(
        const AppDataLocation& location) const override;
    tl::expected<AppDataListing, AppDataFault> list(
        const AppDataLocation& location, int limit) const override;

private:
    struct Place {
        FileDescriptor descriptor;

        /// Relative to the root, without links.
        QByteArray path;
    };

    tl::expected<Place, AppDataFault> reach(const AppDataLocation& location) const;

    PathBeneath::Finder m_find;
};

} // namespace pobblewig
