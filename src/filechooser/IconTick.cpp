// The deferred completion of a listing: one tick per listing, by design.
// A tick switches its timer off first and nothing switches it on again, so
// rows that one tick does not reach keep their empty size and date and their
// question mark until the next listing.
#include "core/hLangText.h"
#include "filechooser/FolderLister.h"
#include "filechooser/FolderListerParts.h"
#include "forms/ImageList.h"
#include "forms/ListView.h"
#include "forms/Pictures.h"
#include "forms/Resume.h"
#include "forms/StdControls.h"
#include "host/mdl_CoreDevWrapper.h"
#include "resources/SharedImages.h"

#include <QDateTime>

namespace fw {

using namespace lister;

namespace {

std::string ClassesRootDefault(const std::string& key)
{
    std::string value;
    Resume(
        [&] { value = GetCoreDevRegistry().Strings().ReadString(HiveClassesRoot, key, {}, 1000); });
    return value;
}

// Looks up a type in the classes root and caches its picture and text under
// "EXT." + ext in both shared lists; a type without a picture adds nothing.
void LoadType(const QString& ext)
{
    const std::string dotExt = (QLatin1Char('.') + ext).toStdString();
    const std::string progId = ClassesRootDefault(dotExt + "\\");
    std::string icon;
    std::string type;
    if (!progId.empty()) {
        icon = ClassesRootDefault(progId + "\\DefaultIcon\\");
        Resume([&] {
            type = GetCoreDevRegistry().Strings().ReadString(HiveClassesRoot, progId + "\\",
                                                             "Unbekannt", 1000);
        });
    } else {
        icon = ClassesRootDefault(dotExt + "\\DefaultIcon\\");
    }
    if (icon.empty())
        return;
    std::string file = icon;
    int index = 0;
    if (const auto comma = icon.find(','); comma != std::string::npos) {
        file = icon.substr(0, comma);
        index = std::atoi(icon.c_str() + comma + 1);
    }
    QImage picture;
    Resume([&] {
        picture = ToImage(GetCoreDevPictures().ExtractIcon(file, index, 16, SharedMaskColour()));
    });
    const QString key = QStringLiteral("EXT.") + ext;
    Resume([&] { SharedIcons16().Add(key, picture, Q(type)); });
    Resume([&] { SharedIcons32().Add(key, picture, Q(type)); });
}

void SetPicture(ListItem& row, const QString& key)
{
    row.SetIcon(key);
    row.SetSmallIcon(key);
}

QString ExtensionOf(const QString& key)
{
    const qsizetype slash = key.lastIndexOf(QLatin1Char('\\'));
    const qsizetype dot = key.lastIndexOf(QLatin1Char('.'));
    return dot > slash + 1 ? key.mid(dot + 1) : QString();
}

// The row's key is the path in capitals; the file's own spelling is kept in
// the sort key behind "B:", and a row that has none (a share) names no file.
std::string FileOfRow(const ListItem& row)
{
    const QString sortKey = row.SubItem(4);
    if (sortKey.startsWith(QLatin1String("B:")))
        return sortKey.mid(2).toStdString();
    return row.Key().toStdString();
}

void FillSizeAndDate(ListItem& row)
{
    const std::string file = FileOfRow(row);
    QString size;
    QString date;
    Resume([&] {
        CoreDevFiles& files = GetCoreDevFiles();
        if (!files.FileExists(file))
            return;
        size = Q(files.SizeText(files.FileSize(file)));
        date = QDateTime::fromSecsSinceEpoch(files.FileDate(file))
                   .toString(QStringLiteral("yyyy-MM-dd"));
    });
    if (size.isEmpty()) {
        size = QStringLiteral("-");
        date = QStringLiteral("-");
    }
    row.SetSubItem(1, size);
    row.SetSubItem(3, date);
}

} // namespace

void FolderLister::IconTick()
{
    if (m_controls.iconLoad)
        Resume([&] { m_controls.iconLoad->SetEnabled(false); });
    ListItems& rows = m_controls.files.ListItems();
    bool loadedOne = false;
    const QString waiting = QStringLiteral("WAITLOAD");
    for (int i = 1; i <= rows.Count(); ++i) {
        ListItem& row = rows.Item(i);
        if (row.SubItem(1).isEmpty()) {
            Resume([&] { FillSizeAndDate(row); });
            return;
        }
        if (row.Icon() != waiting)
            continue;
        const QString ext = ExtensionOf(row.Key());
        const QString cached = QStringLiteral("EXT.") + ext;
        if (SharedIcons16().Exists(cached)) {
            Resume([&] { SetPicture(row, cached); });
        } else if (!loadedOne) {
            loadedOne = true;
            LoadType(ext);
            Resume([&] {
                const QString type = SharedIcons16().Tag(cached);
                SetPicture(row, cached);
                row.SetSubItem(2, type);
            });
        }
        // Further unknown types wait for a later listing; that is the rule.
    }
}

} // namespace fw
