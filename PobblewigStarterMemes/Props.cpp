#include "PobblewigStarterMemes/Props.h"

namespace pobblewig {

namespace {

using Row = std::string_view;

constexpr Row mugRows[] {
    "kkkkkkk..",
    "kwwwwwkkk",
    "kwrwrwk.k",
    "kwrrrwk.k",
    "kwwrwwkkk",
    "kwwwwwk..",
    "kkkkkkk..",
};

constexpr Row teaCupRows[] {
    "kkkkkkkkk...",
    "kmmmmmmmkkk.",
    "kwwwwwwwk.k.",
    "kwpwwpwwkkk.",
    "kwwwwwwwk...",
    ".kwwwwwk....",
    "kkkkkkkkk...",
};

constexpr Row partyHatRows[] {
    "....yy....",
    "...yyyy...",
    "....kk....",
    "...kvvk...",
    "...kyvk...",
    "..kvvvyk..",
    "..kvyvvk..",
    ".kvvvvvvk.",
    ".kyvvyvvk.",
    "kvvvvvvyvk",
    "kkkkkkkkkk",
};

constexpr Row sunglassesRows[] {
    "kkkkkkkkkkkkkkkkkkkkkkkkkkkkkk",
    "kkkkkkkkkkkkkkkkkkkkkkkkkkkkkk",
    "..kllkkkkkkk......kllkkkkkkk..",
    "..klkkkkkkkk......klkkkkkkkk..",
    "..kkkkkkkkkk......kkkkkkkkkk..",
    "..kkkkkkkkkk......kkkkkkkkkk..",
    "...kkkkkkkk........kkkkkkkk...",
};

constexpr Row helmetRows[] {
    "................rrr.......",
    "..............rrrrrr......",
    ".............rrrkrrr......",
    "..........kkkkkrk.rr......",
    ".......kkksssswskkk.......",
    ".....kksssssswwssssskk....",
    "....kssssssssswwsssssk....",
    "...kssssssssssswssssssk...",
    "..kasssssssssssssssssssk..",
    "..kkkkkkkkkkkkkkkkkkkkkk..",
    "..kaakkaakkaakkaakkaakkk..",
    "..kkkkkkkkkkkkkkkkkkkkkk..",
};

constexpr Row toothpickRows[] {
    "...kk...",
    "..kcck..",
    "..kcck..",
    "..kcck..",
    "..kcck..",
    "..kcck..",
    "..kcck..",
    "..kcck..",
    "..kcck..",
    "..kcck..",
    "..kcck..",
    "kkkcckkk",
    "kttttttk",
    "kkkttkkk",
    "..kttk..",
    "..kttk..",
    "..kkkk..",
};

constexpr Row questionMarkRows[] {
    ".kkkkk.",
    "kyyyyyk",
    "kykkyyk",
    ".k.kyyk",
    "..kyyk.",
    "..kyk..",
    "...k...",
    "..kyk..",
    "..kkk..",
};

constexpr Row popcornRows[] {
    "..kkk.kkk.kk..",
    ".kcwckwcykwyk.",
    "kwcywwcwywcwck",
    "kcwwycwwcwywwk",
    "kkkkkkkkkkkkkk",
    "krrwwrrwwrrwwk",
    "krrwwrrwwrrwwk",
    ".krwwrrwwrrwk.",
    ".krwwrrwwrrwk.",
    ".krwwrrwwrrwk.",
    "..kwwrrwwrrk..",
    "..kkkkkkkkkk..",
};

constexpr Row cookieRows[] {
    "...kkkkkk...",
    ".kkttttttkk.",
    ".kttmmttttk.",
    "kttttttmmttk",
    "ktttttttttmk",
    "kmmttmmttttk",
    "kttttmmttttk",
    ".kttttttmtk.",
    ".kkttmttttk.",
    "...kkkkkk...",
};

constexpr Row microphoneRows[] {
    "..kkkk..",
    ".kswssk.",
    "kswsassk",
    "kssasask",
    "ksasassk",
    ".kssssk.",
    "kyyyyyyk",
    ".krrdrk.",
    ".krrdrk.",
    ".krrdrk.",
    "..krdk..",
    "..krdk..",
    "..krdk..",
    "..kkkk..",
};

constexpr Row monocleRows[] {
    "..yyyyyy..",
    ".y......y.",
    "y........y",
    "y........y",
    "y........y",
    "y........y",
    ".y......y.",
    "..yyyyyy..",
};

constexpr Row sweatDropRows[] {
    "..k..",
    ".kuk.",
    ".kuk.",
    "kuuuk",
    "kwuuk",
    ".kkk.",
};

constexpr Row starRows[] {
    "...y...",
    "...y...",
    "yyywyyy",
    ".ywwwy.",
    "..yyy..",
    ".yy.yy.",
    ".y...y.",
};

constexpr Row angerRows[] {
    "..r..r..",
    "..r..r..",
    "rrr..rrr",
    "........",
    "........",
    "rrr..rrr",
    "..r..r..",
    "..r..r..",
};

constexpr Row fishRows[] {
    "k...kkkk..",
    "ok.koooook",
    "ookooookok",
    "ookooooook",
    "ok.koooook",
    "k...kkkk..",
};

constexpr Row paperBoatRows[] {
    "......k......",
    ".....kwk.....",
    "....kwwsk....",
    "...kwwwssk...",
    "kkkkkkkkkkkkk",
    "kwwwwwwwssssk",
    ".kwwwwwssssk.",
    "..kkkkkkkkk..",
};

constexpr Row rubberRingRows[] {
    "..kkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkk..",
    ".krrrrrwwwwwrrrrrwwwwwrrrrrwwwwwrrrrrwwwwwrrk.",
    "krrrrrwwwwwrrrrrwwwwwrrrrrwwwwwrrrrrwwwwwrrrrk",
    "krrrrrwwwwwrrrrrwwwwwrrrrrwwwwwrrrrrwwwwwrrrrk",
    ".krrrrwwwwwrrrrrwwwwwrrrrrwwwwwrrrrrwwwwwrrrk.",
    "..kkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkk..",
};

constexpr Row trophyRows[] {
    "kkkkkkkkkkkkk",
    "k.kyyyyywyk.k",
    "k.kyyyyywyk.k",
    ".kkyyyyywykk.",
    "...kyyyyyk...",
    "....kyyyk....",
    ".....kyk.....",
    "....kkyk.....",
    "...kmmmmmk...",
    "...kkkkkkk...",
};

constexpr Row noteRows[] {
    "..kkkk..",
    "..kyyyk.",
    "..kykkyk",
    "..kyk.k.",
    "kkkyk...",
    "kyyyk...",
    "kyyyk...",
    ".kkk....",
};

constexpr Row topHatRows[] {
    "...kkkkkkkk...",
    "...klkkkkkk...",
    "...klkkkkkk...",
    "...kkkkkkkk...",
    "...rrrrrrrr...",
    "...rrrrrrrr...",
    "...kkkkkkkk...",
    "kkkkkkkkkkkkkk",
    ".kkkkkkkkkkkk.",
};

constexpr Row phoneRows[] {
    ".......rrr.",
    "kkkkkkrrwrr",
    "klllllrrwrr",
    "kluuuurrwrr",
    "kluuuulrrr.",
    "kluuuulk...",
    "kluwuwlk...",
    "kluuuulk...",
    "kluwwulk...",
    "kluuuulk...",
    "kluuuulk...",
    "kllllllk...",
    "klllallk...",
    "kkkkkkkk...",
};

consteval PixelArt drawing(std::span<const Row> rows)
{
    for (const auto row : rows) {
        if (row.size() != rows.front().size())
            throw "The rows differ in length.";
    }
    return { rows };
}

} // namespace

constinit const PixelArt Props::mug = drawing(mugRows);
constinit const PixelArt Props::teaCup = drawing(teaCupRows);
constinit const PixelArt Props::partyHat = drawing(partyHatRows);
constinit const PixelArt Props::sunglasses = drawing(sunglassesRows);
constinit const PixelArt Props::helmet = drawing(helmetRows);
constinit const PixelArt Props::toothpick = drawing(toothpickRows);
constinit const PixelArt Props::questionMark = drawing(questionMarkRows);
constinit const PixelArt Props::popcorn = drawing(popcornRows);
constinit const PixelArt Props::cookie = drawing(cookieRows);
constinit const PixelArt Props::microphone = drawing(microphoneRows);
constinit const PixelArt Props::monocle = drawing(monocleRows);
constinit const PixelArt Props::sweatDrop = drawing(sweatDropRows);
constinit const PixelArt Props::star = drawing(starRows);
constinit const PixelArt Props::anger = drawing(angerRows);
constinit const PixelArt Props::fish = drawing(fishRows);
constinit const PixelArt Props::paperBoat = drawing(paperBoatRows);
constinit const PixelArt Props::rubberRing = drawing(rubberRingRows);
constinit const PixelArt Props::trophy = drawing(trophyRows);
constinit const PixelArt Props::note = drawing(noteRows);
constinit const PixelArt Props::topHat = drawing(topHatRows);
constinit const PixelArt Props::phone = drawing(phoneRows);

} // namespace pobblewig
