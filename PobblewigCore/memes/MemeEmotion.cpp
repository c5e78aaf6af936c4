#include "memes/MemeEmotion.h"

#include "foundation/EnumNames.h"

#include <QStringList>

#include <algorithm>
#include <array>

namespace pobblewig {

namespace {

struct EmotionRow {
    MemeEmotion emotion;
    QStringView description;
};

constexpr std::array rows {
    EmotionRow {
        MemeEmotion::amused, u"something genuinely funny, witty, or absurd just happened" },
    EmotionRow {
        MemeEmotion::celebrating, u"a win — success, relief, shipped it, fixed it, good news" },
    EmotionRow { MemeEmotion::frustrated, u"stuck, annoyed, things breaking, exasperation" },
    EmotionRow { MemeEmotion::confused, u"puzzlement, \"wait what\", things not adding up" },
    EmotionRow { MemeEmotion::skeptical, u"doubt, side-eye, \"are you sure about that\"" },
    EmotionRow { MemeEmotion::offended,
        u"indignation at a perceived slight — \"excuse me?\", playful offense taken" },
    EmotionRow { MemeEmotion::shocked, u"surprise, disbelief, an unexpected twist" },
    EmotionRow { MemeEmotion::sympathetic, u"the user is tired, sad, stressed, or needs comfort" },
    EmotionRow { MemeEmotion::sad,
        u"the pet itself is down — deflated, disappointed, missing the user, quietly hurt" },
    EmotionRow { MemeEmotion::smug, u"told-you-so, a clever comeback, playful self-satisfaction" },
    EmotionRow { MemeEmotion::devoted,
        u"steadfast loyalty and determination — oaths, guard duty, standing watch, protective "
        u"resolve" },
};

constexpr auto allEmotions = [] {
    std::array<MemeEmotion, rows.size()> emotions {};
    std::ranges::transform(rows, emotions.begin(), &EmotionRow::emotion);
    return emotions;
}();

constexpr std::array allSlots { MemeMascotSlot::byDefault, MemeMascotSlot::sleeping };

QString capitalized(const QString& text)
{
    return text.left(1).toUpper() + text.mid(1);
}

} // namespace

namespace MemeTags {

std::span<const MemeEmotion> emotions()
{
    return allEmotions;
}

std::span<const MemeMascotSlot> mascotSlots()
{
    return allSlots;
}

QString rawValue(MemeEmotion emotion)
{
    return EnumNames::text(emotion);
}

QString rawValue(MemeMascotSlot slot)
{
    return slot == MemeMascotSlot::byDefault ? QStringLiteral("default")
                                             : QStringLiteral("sleeping");
}

std::optional<MemeEmotion> emotion(const QString& tag)
{
    return EnumNames::fromName<MemeEmotion>(tag.toStdString());
}

std::optional<MemeMascotSlot> slot(const QString& tag)
{
    const auto* const found =
        std::ranges::find(allSlots, tag, [](MemeMascotSlot slot) { return rawValue(slot); });
    return found == allSlots.end() ? std::nullopt : std::optional(*found);
}

QString displayName(MemeEmotion emotion)
{
    return capitalized(rawValue(emotion));
}

QString displayName(MemeMascotSlot slot)
{
    return capitalized(rawValue(slot));
}

QString classifierDescription(MemeEmotion emotion)
{
    return rows[size_t(emotion)].description.toString();
}

QString emotionLines()
{
    QStringList lines;
    for (const auto emotion : allEmotions)
        lines.append(
            QStringLiteral("- %1: %2").arg(rawValue(emotion), classifierDescription(emotion)));
    return lines.join(u'\n');
}

} // namespace MemeTags

} // namespace pobblewig
