#pragma once
// The file chooser's placement of its panes, as plain arithmetic in twips, so
// that it can be checked without a window: the place strip on the left, the
// folder frame (place combo, search, buttons, full-height list, count line)
// above the name and filter frame, and the preview pane on the right when the
// host paints previews.

namespace fw {

/// Sizes the layout starts from, all in twips.
struct FileDialogSizes {
    int scaleWidth = 0; ///< the form's client area
    int scaleHeight = 0;
    int headerHeight = 0;  ///< the title band docked at the top
    int buttonsHeight = 0; ///< the command bar docked at the bottom
    int stripWidth = 0;    ///< the place strip along the left edge
    int pixelX = 15;       ///< twips per pixel
    int pixelY = 15;
    bool preview = false;      ///< the host paints previews
    bool searchVisible = true; ///< the request did not switch the search off
    int fileFrameHeight = 0;   ///< the name and filter frame keeps its height
    int folderFrameTop = 0;    ///< relative to the body, below the header
    int previewFrameTop = 0;
    int previewPictureLeft = 0; ///< the picture's inset inside its frame
    int previewPictureTop = 0;
    int nameBoxLeft = 0;  ///< where the name box and the filter combo begin in their frame
    int buttonsWidth = 0; ///< the row of four buttons in the folder frame
    int searchLabelWidth = 0;
    int placeComboLeft = 0; ///< inside the folder frame
    int listTop = 0;        ///< the file list's top inside the folder frame
    int countHeight = 0;    ///< the count line under the list
};

struct Box {
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;
    bool operator==(const Box&) const = default;
};

/// Where everything goes; boxes in the coordinates of their container
/// (the form's client area, or the frame named in the comment).
struct FileDialogPlacement {
    Box strip;
    Box previewFrame;
    Box previewPicture; ///< in the preview frame
    Box fileFrame;
    int nameBoxWidth = 0; ///< the name box and the filter combo
    Box folderFrame;
    int buttonsLeft = 0; ///< in the folder frame
    int searchBoxLeft = 0;
    int searchBoxWidth = 0;
    int searchLabelLeft = 0;
    int placeComboWidth = 0;
    Box list;      ///< in the folder frame
    Box countLine; ///< on the form, under the list
};

/// The smallest client size a user may drag the form to.
int MinimumFileDialogWidth(bool preview);
int MinimumFileDialogHeight();
/// The size the form opens at when it is smaller.
int OpeningFileDialogHeight();

FileDialogPlacement PlaceFileDialog(const FileDialogSizes& sizes);

} // namespace fw
