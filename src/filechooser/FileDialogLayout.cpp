#include "filechooser/FileDialogLayout.h"

#include <cmath>

namespace fw {

namespace {
int whole(double value)
{
    return int(std::lround(value));
}
} // namespace

int MinimumFileDialogWidth(bool preview)
{
    return preview ? 12500 : 9285;
}

int MinimumFileDialogHeight()
{
    return 5340;
}

int OpeningFileDialogHeight()
{
    // Taller than the drag minimum on purpose: the form opens roomy.
    return 6810;
}

FileDialogPlacement PlaceFileDialog(const FileDialogSizes& s)
{
    FileDialogPlacement p;
    const int quarter = whole(s.scaleWidth * 0.25);
    const int px = 5 * s.pixelX;
    const int py = 5 * s.pixelY;
    const int bodyTop = s.headerHeight;
    // The command bar docks to the bottom here, so the body ends above it.
    const int bodyHeight = s.scaleHeight - s.headerHeight - s.buttonsHeight;
    int width = s.scaleWidth - s.stripWidth;

    p.strip = {0, bodyTop, s.stripWidth, bodyHeight};

    if (s.preview) {
        p.previewFrame = {s.stripWidth + width - quarter - px, bodyTop + s.previewFrameTop, quarter,
                          bodyHeight - s.previewFrameTop - py};
        p.previewPicture = {s.previewPictureLeft, s.previewPictureTop,
                            quarter - 2 * s.previewPictureLeft,
                            p.previewFrame.height - (s.previewPictureTop + s.previewPictureLeft)};
        width -= quarter + px;
    }

    p.fileFrame = {s.stripWidth + px, bodyTop + bodyHeight - s.fileFrameHeight - py, width - 2 * px,
                   s.fileFrameHeight};
    p.nameBoxWidth = p.fileFrame.width - s.nameBoxLeft - 2 * px;

    const int folderTop = bodyTop + s.folderFrameTop;
    p.folderFrame = {s.stripWidth + px, folderTop, width - 2 * px,
                     p.fileFrame.top - folderTop - py};
    p.buttonsLeft = p.folderFrame.width - s.buttonsWidth - 2 * px;

    // The place combo, the search label and the search box share the row up
    // to the buttons, measured inside the frame, so that a wide place strip
    // does not squeeze them; the combo takes 60 per cent of the room.
    int room = p.buttonsLeft - s.placeComboLeft - px;
    if (s.searchVisible) {
        room -= s.searchLabelWidth + 2 * px;
        p.searchBoxWidth = whole(room * 0.4);
        p.searchBoxLeft = p.buttonsLeft - p.searchBoxWidth - px;
        p.searchLabelLeft = p.searchBoxLeft - s.searchLabelWidth - px;
    }
    p.placeComboWidth = whole(room * 0.6);

    p.list = {2 * px, s.listTop, p.folderFrame.width - 4 * px,
              p.folderFrame.height - s.listTop - 2 * py - s.countHeight - py};
    p.countLine = {p.folderFrame.left + p.list.left,
                   p.folderFrame.top + p.list.top + p.list.height + py / 2, p.list.width,
                   s.countHeight};
    return p;
}

} // namespace fw
