#include "desktop/DesktopColours.h"

#include <algorithm>
#include <array>

namespace fw::desktop {

namespace {

constexpr std::array<std::uint32_t, 18> kScheme = {
    DesktopColours::Rgb(0x2f, 0x6f, 0xb8), // 0 default: calm blue
    DesktopColours::Rgb(0x2e, 0x8b, 0x57), // 1 green
    DesktopColours::Rgb(0x1f, 0x8a, 0x8a), // 2 teal
    DesktopColours::Rgb(0xd9, 0x9a, 0x1e), // 3 amber
    DesktopColours::Rgb(0x5a, 0x6b, 0x7d), // 4 slate
    DesktopColours::Rgb(0xe0, 0x6c, 0x2b), // 5 orange
    DesktopColours::Rgb(0xc6, 0x28, 0x28), // 6 errors: red
    DesktopColours::Rgb(0x6a, 0x3d, 0xc0), // 7 questions: violet
    DesktopColours::Rgb(0x1f, 0x29, 0x33), // 8 ink: text that must stand out
    DesktopColours::Rgb(0xc2, 0x3b, 0x7a), // 9 pink
    DesktopColours::Rgb(0xe8, 0xf0, 0xfa), // 10 light blue ground
    DesktopColours::Rgb(0xe6, 0xf4, 0xea), // 11 light green ground
    DesktopColours::Rgb(0xfd, 0xec, 0xea), // 12 light red ground
    DesktopColours::Rgb(0xcf, 0xe0, 0xf5), // 13 chosen: a light accent
    DesktopColours::Rgb(0xf5, 0xf6, 0xf8), // 14 light grey surface
    DesktopColours::Rgb(0xee, 0xf0, 0xf3), // 15 not chosen: a quiet ground
    DesktopColours::Rgb(0x3c, 0x46, 0x50), // 16 dark slate
    DesktopColours::Rgb(0x6b, 0x74, 0x80), // 17 muted text
};

std::uint32_t mix(std::uint32_t colour, int target, int amount)
{
    amount = std::clamp(amount, 0, 255);
    auto channel = [&](int shift) {
        const int value = int(colour >> shift & 0xff);
        return value + ((target - value) * amount + (target > value ? 127 : -127)) / 255;
    };
    return DesktopColours::Rgb(channel(0), channel(8), channel(16));
}

} // namespace

void DesktopColours::splitColour(std::uint32_t colour, int& red, int& green, int& blue)
{
    red = int(colour & 0xff);
    green = int(colour >> 8 & 0xff);
    blue = int(colour >> 16 & 0xff);
}

std::uint32_t DesktopColours::GetSchemeColor(int index)
{
    return index >= 0 && index < int(kScheme.size()) ? kScheme[std::size_t(index)] : kScheme[0];
}

std::uint32_t DesktopColours::ColorShadeA(std::uint32_t colour, int, int amount)
{
    return mix(colour, 255, amount);
}

std::uint32_t DesktopColours::ColorShadeB(std::uint32_t colour, int, int amount)
{
    return mix(colour, 0, amount);
}

} // namespace fw::desktop
