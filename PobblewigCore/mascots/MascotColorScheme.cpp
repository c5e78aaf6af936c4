#include "mascots/MascotColorScheme.h"

#include <algorithm>

namespace pobblewig {

const std::vector<MascotColorScheme>& MascotColorScheme::mouseSchemes()
{
    static const std::vector<MascotColorScheme> schemes {
        {
            .id = QStringLiteral("original"),
            .displayName = QStringLiteral("Original"),
            .palette = {
                { 'B', { 150, 142, 140 } },
                { 'E', { 108, 98, 96 } },
                { 'e', { 214, 162, 158 } },
                { 'N', { 196, 116, 120 } },
                { 'L', { 204, 195, 189 } },
                { 'F', { 186, 144, 140 } },
            },
            .eyeColor = { 40, 34, 36 },
            .pawColor = { 150, 142, 140 },
        },
        {
            .id = QStringLiteral("brown"),
            .displayName = QStringLiteral("Brown"),
            .palette = {
                { 'B', { 150, 110, 80 } },
                { 'E', { 102, 72, 52 } },
                { 'e', { 214, 162, 158 } },
                { 'N', { 196, 116, 120 } },
                { 'L', { 216, 190, 166 } },
                { 'F', { 130, 94, 68 } },
            },
            .eyeColor = { 44, 32, 24 },
            .pawColor = { 150, 110, 80 },
        },
        {
            .id = QStringLiteral("white"),
            .displayName = QStringLiteral("White"),
            .palette = {
                { 'B', { 233, 227, 221 } },
                { 'E', { 176, 166, 160 } },
                { 'e', { 229, 172, 168 } },
                { 'N', { 205, 116, 122 } },
                { 'L', { 245, 240, 234 } },
                { 'F', { 206, 196, 189 } },
            },
            .eyeColor = { 50, 44, 46 },
            .pawColor = { 233, 227, 221 },
        },
    };
    return schemes;
}

const std::vector<MascotColorScheme>& MascotColorScheme::axolotlSchemes()
{
    static const std::vector<MascotColorScheme> schemes {
        {
            .id = QStringLiteral("golden"),
            .displayName = QStringLiteral("Golden"),
            .palette = {
                { 'B', { 240, 208, 130 } },
                { 'G', { 186, 126, 50 } },
                { 'L', { 250, 234, 188 } },
                { 'S', { 58, 42, 26 } },
            },
            .eyeColor = { 58, 42, 26 },
            .pawColor = { 240, 208, 130 },
        },
        {
            .id = QStringLiteral("pink"),
            .displayName = QStringLiteral("Pink"),
            .palette = {
                { 'B', { 240, 176, 194 } },
                { 'G', { 194, 84, 120 } },
                { 'L', { 250, 220, 230 } },
                { 'S', { 52, 36, 44 } },
            },
            .eyeColor = { 52, 36, 44 },
            .pawColor = { 240, 176, 194 },
        },
        {
            .id = QStringLiteral("blue"),
            .displayName = QStringLiteral("Blue"),
            .palette = {
                { 'B', { 166, 206, 234 } },
                { 'G', { 82, 128, 186 } },
                { 'L', { 216, 238, 250 } },
                { 'S', { 34, 44, 58 } },
            },
            .eyeColor = { 34, 44, 58 },
            .pawColor = { 166, 206, 234 },
        },
        {
            .id = QStringLiteral("lavender"),
            .displayName = QStringLiteral("Lavender"),
            .palette = {
                { 'B', { 198, 180, 230 } },
                { 'G', { 126, 94, 178 } },
                { 'L', { 230, 220, 246 } },
                { 'S', { 44, 34, 58 } },
            },
            .eyeColor = { 44, 34, 58 },
            .pawColor = { 198, 180, 230 },
        },
    };
    return schemes;
}

const std::vector<MascotColorScheme>& MascotColorScheme::schemes(Mascot mascot)
{
    return mascot == Mascot::axolotl ? axolotlSchemes() : mouseSchemes();
}

const MascotColorScheme& MascotColorScheme::forID(const QString& id, Mascot mascot)
{
    const auto& candidates = schemes(mascot);
    const auto found = std::ranges::find(candidates, id, &MascotColorScheme::id);
    return found == candidates.end() ? candidates.front() : *found;
}

} // namespace pobblewig
