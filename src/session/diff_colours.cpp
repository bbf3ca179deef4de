#include "session/diff_colours.h"

#include "session/theme.h"

#include <array>

namespace velmora {

namespace {

struct Shade {
    DiffColour role;
    QRgb light;
    QRgb dark;
};

constexpr std::array<Shade, diffColourCount> shades = {{
    {DiffColour::Text, 0xff1b1f24, 0xfff0f0f0},          {DiffColour::MutedText, 0xff59616b, 0xffa9afb6},
    {DiffColour::Background, 0xffffffff, 0xff232323},    {DiffColour::Gutter, 0xfff3f4f6, 0xff2b2b2b},
    {DiffColour::Added, 0xffbfe2ff, 0xff1f4a5c},         {DiffColour::Removed, 0xffffc9a6, 0xff70380f},
    {DiffColour::Modified, 0xfff0d4e6, 0xff502368},      {DiffColour::AddedStrong, 0xff7dbcf5, 0xff2f7390},
    {DiffColour::RemovedStrong, 0xffff9f57, 0xff9b5418}, {DiffColour::ModifiedStrong, 0xffdca0cc, 0xff7b3f9c},
    {DiffColour::Unimportant, 0xffebf0e8, 0xff303234},   {DiffColour::Filler, 0xfff1f3f5, 0xff292b2d},
    {DiffColour::FillerHatch, 0xffd5dae0, 0xff3d4145},   {DiffColour::Rule, 0xffd0d5db, 0xff47494c},
    {DiffColour::Gap, 0xffa4abb3, 0xff8b9096},           {DiffColour::Accent, 0xff0b61c4, 0xff5aa9f5},
    {DiffColour::SearchHit, 0xffffe04d, 0xff75660a},     {DiffColour::Selection, 0xff2a5fae, 0xff9cc9f7},
    {DiffColour::SelectedText, 0xffffffff, 0xff101418},
}};

constexpr bool isInOrder()
{
    for (std::size_t k = 0; k < shades.size(); ++k) {
        if (std::size_t(shades[k].role) != k)
            return false;
    }
    return true;
}
static_assert(isInOrder(), "one shade for each role, in the order of the roles");

} // namespace

QColor diffColour(DiffColour role, bool dark)
{
    const Shade &shade = shades[std::size_t(role)];
    return QColor::fromRgb(dark ? shade.dark : shade.light);
}

QColor diffColour(DiffColour role)
{
    return diffColour(role, isDarkTheme());
}

QColor markColour(bool minor, const QColor &background, const QColor &strong)
{
    if (!minor)
        return strong;
    const auto between = [](int back, int front) { return (3 * back + 2 * front) / 5; };
    return {between(background.red(), strong.red()), between(background.green(), strong.green()),
            between(background.blue(), strong.blue())};
}

} // namespace velmora
