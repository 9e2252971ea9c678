#include "resources/SharedImages.h"

#include "forms/ImageList.h"
#include "forms/Pictures.h"
#include "forms/Resume.h"
#include "host/mdl_CoreDevWrapper.h"
#include "resources/frm_ResourceFile.h"

#include <vector>

namespace fw {

namespace {

struct SharedPicture {
    const char* key;
    const char* path16;
    const char* path32; ///< null: path16 with "Ico\32\" in place of "Ico\16\"
};

// In the order of the 16 pixel list.
const SharedPicture kSharedPictures[] = {
    {"FAVORITES", "Ico\\16\\Computer\\Signs\\Favorite.ico",
     "Ico\\32\\Computer\\Folders\\Favorite.ico"},
    {"FAVORITE", "Ico\\16\\Computer\\Folders\\favorite.ico",
     "Ico\\32\\Computer\\Folders\\Favorite.ico"},
    {"DESKTOP", "Ico\\16\\Computer\\Folders\\Desktop.ico", nullptr},
    {"WORKSTATION", "Ico\\16\\Computer\\Hardware\\Workstation.ico", nullptr},
    {"NETHOOD", "Ico\\16\\Computer\\Hardware\\Nethood.ico", nullptr},
    {"OPEN", "Ico\\16\\Computer\\Folders\\Open.ico", nullptr},
    {"CLOSED", "Ico\\16\\Computer\\Folders\\Closed.ico", nullptr},
    {"USER", "Ico\\16\\Computer\\Folders\\User.ico", nullptr},
    {"USERS", "Ico\\16\\Computer\\Folders\\Users.ico", nullptr},
    {"SAMPLES", "Ico\\16\\Computer\\Folders\\Checklist.ico", nullptr},
    {"DRIVE.HDD", "Ico\\16\\Computer\\Hardware\\Drive.ico", nullptr},
    {"DRIVE.CD", "Ico\\16\\Computer\\Hardware\\Drive CD Ready.ico", nullptr},
    {"DRIVE.DISC", "Ico\\16\\Computer\\Hardware\\Drive Disc Ready.ico", nullptr},
    {"DRIVE.NET", "Ico\\16\\Computer\\Hardware\\Drive Net.ico", nullptr},
    {"DRIVE.RAM", "Ico\\16\\Computer\\Hardware\\Drive RAM.ico", nullptr},
    {"DRIVE.REMOVABLE", "Ico\\16\\Computer\\Hardware\\Drive Removable.ico", nullptr},
    {"WAITLOAD", "Ico\\16\\Computer\\Signs\\Question.ico", nullptr},
    {"NONE", "Ico\\16\\Computer\\Software\\Generic.ico", nullptr},
    {"FILE", "Ico\\16\\Writing\\Papers\\Sheet.ico", nullptr},
};

std::string ReplaceAll(std::string text, const std::string& from, const std::string& to)
{
    for (auto at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size()))
        text.replace(at, from.size(), to);
    return text;
}

std::string LargePath(const SharedPicture& row)
{
    return row.path32 ? row.path32 : ReplaceAll(row.path16, "Ico\\16\\", "Ico\\32\\");
}

// The 32 pixel list takes the plain sheet before the two signs.
std::vector<const SharedPicture*> LargeOrder()
{
    std::vector<const SharedPicture*> order;
    const SharedPicture* file = nullptr;
    for (const SharedPicture& row : kSharedPictures) {
        if (std::string(row.key) == "FILE")
            file = &row;
    }
    for (const SharedPicture& row : kSharedPictures) {
        if (std::string(row.key) == "WAITLOAD")
            order.push_back(file);
        if (&row != file)
            order.push_back(&row);
    }
    return order;
}

QImage LoadedPicture(const std::string& path)
{
    QImage picture;
    Resume([&] { picture = ToImage(GetCoreDevPictures().LoadPicture(path, 0, -1, -1)); });
    return picture;
}

// A picture that does not load gives way to the abort sign under the same
// key, so that the key exists and later lookups do not try again.
void AddUnlessThere(ImageList& list, const std::string& key, const std::string& abortSign)
{
    const QString listKey = QString::fromStdString(key);
    if (list.Exists(listKey))
        return;
    QImage picture = LoadedPicture(key);
    if (picture.isNull())
        picture = LoadedPicture(abortSign);
    Resume([&] { list.Add(listKey, picture); });
}

} // namespace

ImageList& SharedIcons16()
{
    return frm_ResourceFile::Default().img_Icon16;
}

ImageList& SharedIcons32()
{
    return frm_ResourceFile::Default().img_Icon32;
}

void FillSharedImages(std::uint32_t listBackColour)
{
    ImageList& small = SharedIcons16();
    ImageList& large = SharedIcons32();
    if (small.Count() >= 10)
        return;
    // One below the list's own back colour, so that no picture pixel can
    // match the background by accident; never 0, which would be no mask.
    const std::int64_t below = std::int64_t(listBackColour & 0xFFFFFFu) - 1;
    const auto mask = std::uint32_t(below <= 0 ? 1 : below);
    small.SetMaskColor(mask);
    large.SetMaskColor(mask);
    for (const SharedPicture& row : kSharedPictures)
        Resume([&] { small.Add(row.key, LoadedPicture(row.path16)); });
    for (const SharedPicture* row : LargeOrder())
        Resume([&] { large.Add(row->key, LoadedPicture(LargePath(*row))); });
}

void AddIcon(const std::string& path16)
{
    if (path16.empty())
        return;
    AddUnlessThere(SharedIcons16(), path16, "Ico\\16\\Computer\\Signs\\abort.ico");
    AddUnlessThere(SharedIcons32(), ReplaceAll(path16, "16\\", "32\\"),
                   "Ico\\32\\Computer\\Signs\\abort.ico");
}

} // namespace fw
