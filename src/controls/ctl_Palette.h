#pragma once
// A palette: a list of colours shown as a grid of swatches. Entries count from
// 1; a click on one selects it and raises ColorClick with its colour and index.
// Colours are host colours (red + 256 green + 65536 blue).
//
// The palette keeps its own business with the host: named palettes live in the
// host's settings as texts "#RRGGBB;#RRGGBB;..." below StoreKey, and
// BindButtons gives a form's load, save, new, add and remove buttons their
// work, so that the form needs no code for them.

#include "forms/Control.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

namespace fw {

class PaletteView;

class ctl_Palette : public Control {
  public:
    ctl_Palette(Form& form, const QString& name, QWidget* container = nullptr);

    // Look: the line around each swatch, the gap between swatches and their size (pixels).
    std::uint32_t ColorFrame() const { return m_colorFrame; }
    void SetColorFrame(std::uint32_t colour);
    int ColorSpace() const { return m_colorSpace; }
    void SetColorSpace(int pixels);
    int ColorWidth() const { return m_colorWidth; }
    void SetColorWidth(int pixels);
    int ColorHeight() const { return m_colorHeight; }
    void SetColorHeight(int pixels);

    // Entries, 1-based. Indexes out of range read as nullopt and are not written.
    int Count() const { return int(m_colors.size()); }
    std::optional<std::uint32_t> Color(int index) const;
    bool SetColor(int index, std::uint32_t colour);
    void AddColor(std::uint32_t colour);
    bool RemoveColor(int index);
    void SetColors(std::vector<std::uint32_t> colours);
    const std::vector<std::uint32_t>& Colors() const { return m_colors; }
    /// The selected entry; may lie beyond Count (then none is marked).
    int Selected() const { return m_selected; }
    void SetSelected(int index);

    /// "#RRGGBB;#RRGGBB;..." and back; reading skips parts that are no colour.
    QString ToText() const;
    static std::vector<std::uint32_t> ColorsFromText(const QString& text);

    // Named palettes in the host's settings.
    QString StoreKey() const { return m_storeKey; }
    void SetStoreKey(const QString& key) { m_storeKey = key; }
    /// The palette's name once loaded or saved; empty for a new one.
    QString PaletteName() const { return m_paletteName; }
    /// Asks for a name and loads that palette; false if none was loaded.
    bool LoadPalette();
    /// Asks for a name (the current one proposed) and stores the palette.
    bool SavePalette();
    /// An empty, unnamed palette.
    void NewPalette();
    /// Appends a colour and selects it as a click would.
    void AddEntry(std::uint32_t colour);
    /// Removes the selected entry; the selection keeps its number.
    void RemoveEntry();

    /// Wires the buttons (any may be null); Add takes the colour that
    /// colourSource shows in its "BackColor" property.
    void BindButtons(Control* load, Control* save, Control* newPalette, Control* add,
                     Control* remove, const Control* colourSource);

    std::function<void(std::uint32_t colour, int index)> ColorClick;

    /// colorframe, colorspace, colorwidth, colorheight, Count, Selected.
    QVariant GetProperty(const QString& name) const override;
    bool SetProperty(const QString& name, const QVariant& value) override;

  private:
    friend class PaletteView;
    /// The entry under a point of the view, 0 for none.
    int entryAt(int x, int y) const;
    QRect swatchRect(int index) const;
    void pressEntry(int index);
    QStringList storedNames() const;
    QString askName(const QString& title, const QString& proposed) const;

    PaletteView* m_view;
    std::vector<std::uint32_t> m_colors;
    std::uint32_t m_colorFrame = 0x808080;
    int m_colorSpace = 4;
    int m_colorWidth = 18;
    int m_colorHeight = 18;
    int m_selected = 1;
    QString m_storeKey;
    QString m_paletteName;
};

} // namespace fw
