#pragma once
// Shared by the chooser tests: a scripted host whose files and path tools are
// the desktop host's (so that real temporary folders are listed, as
// "C:\tmp\..." locations), and a small form with the controls the listing
// engine fills: list, place combo, count line, info line and icon timer.

#include "controls/ctl_Label.h"
#include "desktop/DesktopFiles.h"
#include "desktop/DesktopText.h"
#include "desktop/LocationPaths.h"
#include "filechooser/ChooserFavorites.h"
#include "filechooser/FolderLister.h"
#include "filechooser/LocationModel.h"
#include "forms/Form.h"
#include "forms/ImageCombo.h"
#include "forms/ListView.h"
#include "forms/StdControls.h"
#include "resources/SharedImages.h"
#include "testing/TestHost.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <string>
#include <vector>

namespace fw::testing {

/// The scripted host over a temporary folder. With realFiles false the
/// scripted file service stays (its drive types, labels and network are
/// what the test sets).
class ChooserWorld {
  public:
    explicit ChooserWorld(bool realFiles = true)
    {
        if (realFiles)
            host->CoreDevFiles = std::make_shared<fw::desktop::DesktopFiles>();
        host->CoreDevText = std::make_shared<fw::desktop::DesktopText>();
    }

    /// The location of a path below the temporary folder ("" is the folder).
    std::string Location(const std::string& relative = {}) const
    {
        return fw::desktop::PosixToLocation(Posix(relative));
    }
    /// The same as a folder location, with its trailing "\".
    std::string FolderLocation(const std::string& relative = {}) const
    {
        return fw::desktop::PosixToLocation(Posix(relative) + "/");
    }
    std::string Posix(const std::string& relative) const
    {
        const std::string root = dir.path().toStdString();
        return relative.empty() ? root : root + "/" + relative;
    }
    /// Makes empty files and folders (names ending in "/") below the folder,
    /// with the folders on their way.
    void Make(const std::vector<std::string>& names) const
    {
        for (const std::string& name : names) {
            const QString path = QString::fromStdString(Posix(name));
            const bool folder = name.back() == '/';
            QDir().mkpath(folder ? path : QFileInfo(path).path());
            if (!folder)
                QFile(path).open(QIODevice::WriteOnly);
        }
    }

    ScopedTestHost host;
    QTemporaryDir dir;
};

/// Texts of a list's rows, top to bottom.
inline std::vector<std::string> RowTexts(const fw::ListView& list)
{
    std::vector<std::string> texts;
    const fw::ListItems& rows = list.ListItems();
    for (int i = 1; i <= rows.Count(); ++i)
        texts.push_back(rows.Item(i).Text().toStdString());
    return texts;
}

/// The controls a listing fills, with the lister over them.
class ListerForm : public fw::Form {
  public:
    ListerForm()
        : fw::Form(QStringLiteral("frm_ListerTest")),
          lst_Files(*Add<fw::ListView>(QStringLiteral("lst_Files"))),
          lst_Folder(*Add<fw::ImageCombo>(QStringLiteral("lst_Folder"))),
          lab_FileCount(*Add<fw::ctl_Label>(QStringLiteral("lab_FileCount"))),
          lab_FileInfo(*Add<fw::ctl_Label>(QStringLiteral("lab_FileInfo"))),
          tmr_IconLoad(*Add<fw::Timer>(QStringLiteral("tmr_IconLoad"))),
          lister(places, favourites,
                 {*this, lst_Files, lst_Folder, &lab_FileCount, &lab_FileInfo, &tmr_IconLoad})
    {
        fw::FillSharedImages(0xFFFFFF);
        lister.NotReady = [this] { ++notReady; };
    }

    /// Moves as the chooser does: history and aliases, then the listing.
    void Goto(const std::string& location)
    {
        if (places.Enter(location))
            lister.Update();
    }

    std::vector<std::string> RowTexts() const { return testing::RowTexts(lst_Files); }
    /// The count line as set.
    std::string CountLine() const { return lab_FileCount.Caption().toStdString(); }

    fw::ListView& lst_Files;
    fw::ImageCombo& lst_Folder;
    fw::ctl_Label& lab_FileCount;
    fw::ctl_Label& lab_FileInfo;
    fw::Timer& tmr_IconLoad;
    fw::LocationModel places;
    fw::ChooserFavorites favourites;
    fw::FolderLister lister;
    int notReady = 0;
};

} // namespace fw::testing
