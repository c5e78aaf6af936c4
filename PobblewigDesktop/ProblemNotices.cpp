#include "PobblewigDesktop/ProblemNotices.h"

#include <utility>

namespace pobblewig {

namespace {

QString librarianNotice(const QString& error)
{
    return ProblemNotices::tr("Pobblewig cannot take notes at the moment, so it will not remember "
                              "what you talk about: %1")
        .arg(error);
}

/// A sentence for each thing that the user has to know.
QStringList storageProblems(const StorageState& state)
{
    QStringList sentences;
    if (state.problem)
        sentences.append(ProblemNotices::tr(
            "Pobblewig cannot save everything at the moment: %1. What you write now "
            "is kept only until you quit.")
                             .arg(*state.problem));
    for (const auto& [file, reason] : state.unreadable)
        sentences.append(ProblemNotices::tr(
            "Pobblewig cannot read %1 at the moment: %2. It leaves the file alone "
            "and tries again; until then, what belongs into it is kept only until "
            "you quit.")
                             .arg(file, reason));
    for (const auto& copy : state.setAside)
        sentences.append(ProblemNotices::tr(
            "A file was damaged, so Pobblewig has begun a new one. The old one is "
            "kept as %1.")
                             .arg(copy));
    return sentences;
}

} // namespace

std::optional<QString> ProblemNotices::news(const PublishedState& state)
{
    noteLibrarian(state.of<LibrarianState>());
    auto problems = storageProblems(state.of<StorageState>()) + state.of<KeySafetyState>().warnings;
    if (m_librarianNotice && !m_librarianNotice->isEmpty())
        problems.append(*m_librarianNotice);
    // Only news is worth a notice: one that was closed stays closed.
    if (std::exchange(m_told, problems) == problems)
        return std::nullopt;
    return problems.join(u'\n');
}

void ProblemNotices::noteLibrarian(const LibrarianState& librarian)
{
    if (!librarian.lastError && m_librarianNotice)
        m_librarianNotice = QString();
    else if (librarian.lastError && !m_librarianNotice)
        m_librarianNotice = librarianNotice(*librarian.lastError);
}

} // namespace pobblewig
