#pragma once
// The screen as the dialogs see it: sizes in twips (15 to the pixel) and the
// mouse pointer shape.

namespace fw {

class Screen {
  public:
    static constexpr int TwipsPerPixel = 15;
    static int TwipsPerPixelX() { return TwipsPerPixel; }
    static int TwipsPerPixelY() { return TwipsPerPixel; }
    /// Size of the primary screen in twips.
    static int Width();
    static int Height();
    /// Height of the primary screen's part that windows may take (without
    /// panels and docks), in twips.
    static int AvailableHeight();

    enum Pointer { Default = 0, Busy = 11, Custom = 99 };
    static int MousePointer();
    /// 0 default, 11 busy (hourglass), 99 the custom hand.
    static void SetMousePointer(int shape);
};

/// Twips to pixels and back, rounding to the nearest pixel.
constexpr int ToPixels(int twips)
{
    return twips >= 0 ? (twips + Screen::TwipsPerPixel / 2) / Screen::TwipsPerPixel
                      : -((-twips + Screen::TwipsPerPixel / 2) / Screen::TwipsPerPixel);
}
constexpr int ToTwips(int pixels)
{
    return pixels * Screen::TwipsPerPixel;
}

} // namespace fw
