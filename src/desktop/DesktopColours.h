#pragma once
// Colour tools of the desktop host. Colours are 0x00BBGGRR: red in the low byte.

#include "host/CoreDevServices.h"

namespace fw::desktop {

/// Scheme: 0 default (calm blue), 1 green, 2 teal, 3 amber, 4 slate, 5 orange,
/// 6 errors (red), 7 questions (violet), 8 neutral grey, 9 pink; other indexes
/// give the default.
class DesktopColours final : public CoreDevColors, ColourTools {
  public:
    ColourTools& Tools() override { return *this; }

    void splitColour(std::uint32_t colour, int& red, int& green, int& blue) override;
    std::uint32_t GetSchemeColor(int index) override;
    /// Mixes amount/255 of white in; 0 keeps the colour, 255 gives white.
    std::uint32_t ColorShadeA(std::uint32_t colour, int flag, int amount) override;
    /// Mixes amount/255 of black in; 0 keeps the colour, 255 gives black.
    std::uint32_t ColorShadeB(std::uint32_t colour, int flag, int amount) override;

    static constexpr std::uint32_t Rgb(int red, int green, int blue)
    {
        return std::uint32_t(red & 0xff) | std::uint32_t(green & 0xff) << 8 |
               std::uint32_t(blue & 0xff) << 16;
    }
};

} // namespace fw::desktop
