#pragma once

#include <QString>

#include <random>

namespace pobblewig {

/// Writes what a student would, some words often and others hardly ever; always the same.
class StudentWriter {
public:
    QString word();

    /// As many as reach `length`.
    QString sentences(qsizetype length);

private:
    double chance();
    QString sentence();

    std::minstd_rand m_random { 7 };
};

} // namespace pobblewig
