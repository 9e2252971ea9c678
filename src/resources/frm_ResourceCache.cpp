#include "resources/frm_ResourceCache.h"

#include "forms/ImageList.h"
#include "forms/StdControls.h"
#include "host/mdl_CoreDevWrapper.h"

#include <QString>
#include <stdexcept>

namespace fw {

namespace {

constexpr std::uint32_t kMagenta = 0xFF00FF;

std::string normalisedName(const std::string& name)
{
    return QString::fromStdString(name).toUpper().trimmed().toStdString();
}

bool sameNoCase(const std::string& a, const std::string& b)
{
    return QString::fromStdString(a).toUpper() == QString::fromStdString(b).toUpper();
}

// Each equal later entry is overwritten with the last entry still counted,
// and that position is compared again. The inner limit is fixed per outer
// step, so the pass goes on over the moved entries behind the new end.
void thinRepeats(StringList& list)
{
    int n = list.Count();
    const int outerLimit = n;
    for (int i = 1; i <= outerLimit; ++i) {
        const int innerLimit = n;
        int j = i + 1;
        // The list has no entry 0 to move forward: once n reaches it, stop.
        while (j <= innerLimit && n >= 1) {
            if (sameNoCase(list.Item(i), list.Item(j))) {
                list.SetItem(j, list.Item(n));
                --n;
            } else {
                ++j;
            }
        }
    }
}

} // namespace

frm_ResourceCache::frm_ResourceCache() : Form(QStringLiteral("frm_ResourceCache"))
{
    SetCaption(QStringLiteral("RESOURCE"));
    pic_Combine = Add<PictureBox>(QStringLiteral("pic_Combine"));
    pic_Combine->SetVisible(false);
    const auto makeList = [this](const char* name) {
        auto* list = Add<ImageList>(QString::fromLatin1(name));
        list->SetMaskColor(kMagenta);
        return list;
    };
    cache16 = makeList("cache16");
    cache20 = makeList("cache20");
    cache32 = makeList("cache32");
}

frm_ResourceCache::~frm_ResourceCache() = default;

frm_ResourceCache& frm_ResourceCache::Default()
{
    // Never deleted on purpose: packages stay open for the life of the process,
    // and a form torn down after the application object would outlive Qt.
    static frm_ResourceCache* instance = new frm_ResourceCache();
    return *instance;
}

std::int32_t frm_ResourceCache::PACKAGE_AMOUNT()
{
    if (!m_initialised) {
        m_initialised = true;
        m_packages.assign(1, nullptr);
        m_names.assign(1, std::string());
    }
    return static_cast<std::int32_t>(m_packages.size()) - 1;
}

bool frm_ResourceCache::PACKAGE_EXISTS(const std::string& name)
{
    if (m_packages.empty())
        throw std::out_of_range("resource cache: PACKAGE_AMOUNT has not run");
    const std::string wanted = normalisedName(name);
    for (std::size_t i = 1; i < m_packages.size(); ++i)
        if (m_names[i] == wanted)
            return true;
    return false;
}

void frm_ResourceCache::PACKAGE_LOAD(const std::string& name)
{
    const std::string normalised = normalisedName(name);
    if (PACKAGE_EXISTS(normalised))
        return;
    m_packages.push_back(nullptr);
    m_names.push_back(normalised);
    package(m_packages.size() - 1).Load(normalised);
}

ResourcePackage& frm_ResourceCache::package(std::size_t index)
{
    std::shared_ptr<ResourcePackage>& slot = m_packages.at(index);
    if (!slot)
        slot = GetCoreDevPictures().NewResourcePackage();
    if (!slot)
        throw std::runtime_error("resource cache: the host has no resource packages");
    return *slot;
}

bool frm_ResourceCache::ITEM_EXISTS(const std::string& item)
{
    const std::int32_t amount = PACKAGE_AMOUNT();
    for (std::int32_t i = 1; i <= amount; ++i)
        if (package(i).Exists(item))
            return true;
    return false;
}

void frm_ResourceCache::ITEM_EXTRACT(const std::string& item, const std::string& destination)
{
    const std::int32_t amount = PACKAGE_AMOUNT();
    for (std::int32_t i = 1; i <= amount; ++i) {
        if (package(i).Exists(item)) {
            package(i).Extract(item, destination);
            return;
        }
    }
}

StringList frm_ResourceCache::ITEM_CONTENT(const std::string& path, std::uint32_t optionA,
                                           std::uint32_t optionB, std::uint32_t optionC,
                                           const void* /*caller*/)
{
    StringList result;
    const std::int32_t amount = PACKAGE_AMOUNT();
    for (std::int32_t i = 1; i <= amount; ++i) {
        const StringList listing = package(i).Content(path, optionA, optionB, optionC);
        result.Reserve(result.Count() + listing.Count());
        for (const std::string& entry : listing.items())
            result.Add(entry);
    }
    thinRepeats(result);
    result.Reserve(result.Count());
    return result;
}

} // namespace fw
