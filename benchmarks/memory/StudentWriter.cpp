#include "StudentWriter.h"

#include <QStringList>

namespace pobblewig {

namespace {

/// The most frequent first.
QStringList words()
{
    return QStringLiteral(
        "the to a and of in for on was with is at that it she he they about after before this but "
        "not said will his her from student course asked opened wrote read notes page chapter "
        "class lecture exam deadline canvas homework assignment physics chemistry history problem "
        "group project meeting library friend morning evening today tomorrow week plan study "
        "studying finished started stuck tired happy worried minutes hours break coffee lunch "
        "browser editor slides paper draft essay paragraph source citation teacher professor "
        "seminar tutorial laboratory report data table figure graph equation integral derivative "
        "matrix vector proof theorem energy momentum reaction molecule cell membrane protein "
        "revolution treaty empire economy market inflation policy vote constitution novel poem "
        "metaphor narrator character language grammar vocabulary translation Zoë Müller Renée "
        "São internship interview application résumé scholarship landlord rent bicycle dentist "
        "birthday concert football rehearsal orchestra swimming marathon recipe thermodynamics "
        "electrophoresis historiography epistemology photosynthesis quaternion zeitgeist")
        .split(u' ');
}

} // namespace

QString StudentWriter::word()
{
    static const auto all = words();
    return all[qsizetype(double(all.size()) * chance() * chance())];
}

QString StudentWriter::sentences(qsizetype length)
{
    QString text;
    while (text.size() < length)
        text += sentence() + u' ';
    return text.trimmed();
}

double StudentWriter::chance()
{
    return double(m_random() % 100'000) / 100'000;
}

QString StudentWriter::sentence()
{
    auto text = word();
    text.front() = text.front().toUpper();
    for (auto left = 6 + m_random() % 9; left > 0; --left)
        text += u' ' + (m_random() % 30 == 0 ? QString::number(m_random() % 60) : word());
    return text + u'.';
}

} // namespace pobblewig
