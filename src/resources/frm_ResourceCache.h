#pragma once
// The process's set of open resource packages: a hidden form (never shown)
// that loads packages by name through the host's picture service and answers
// item questions by asking them in load order. It reads no package bytes
// itself; the host's ResourcePackage does.
//
// Hosts reach it through frm_ResourceCache::Default(), not through Create:
//
//     frm_ResourceCache& cache = frm_ResourceCache::Default();
//     cache.PACKAGE_AMOUNT(); // sets the package arrays up; call it first
//     cache.PACKAGE_LOAD("icons");
//     if (cache.ITEM_EXISTS("Ico\\20\\Computer\\Signs\\OK.ico")) ...
//
// A failing package operation goes to the caller as an exception; the slot
// and the name it was loaded under stay.

#include "forms/Form.h"
#include "host/StringList.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace fw {

class ImageList;
class PictureBox;
class ResourcePackage;

class frm_ResourceCache : public Form {
  public:
    frm_ResourceCache();
    ~frm_ResourceCache() override;

    /// The process's cache, made on first call and kept until the process ends.
    static frm_ResourceCache& Default();

    /// The number of loaded packages. The first call sets the package arrays up.
    std::int32_t PACKAGE_AMOUNT();
    /// Loads a package once per name; names are upper-cased and trimmed first,
    /// so " Icons" and "ICONS" are one package. Throws std::out_of_range before
    /// PACKAGE_AMOUNT has run.
    void PACKAGE_LOAD(const std::string& name);
    /// Whether a package of that name was loaded; throws std::out_of_range
    /// before PACKAGE_AMOUNT has run.
    bool PACKAGE_EXISTS(const std::string& name);
    /// Whether any package holds the item (the name goes to the packages as given).
    bool ITEM_EXISTS(const std::string& item);
    /// Extracts the item from the first package loaded that holds it; nothing
    /// happens when none does.
    void ITEM_EXTRACT(const std::string& item, const std::string& destination);
    /// The listings of all packages below path, in load order, with the three
    /// option words passed through. Entries that repeat (case-blind) are
    /// thinned by moving later entries forward; the list keeps its length, so
    /// the moved entries stand twice at the end. caller is not passed on.
    StringList ITEM_CONTENT(const std::string& path, std::uint32_t optionA, std::uint32_t optionB,
                            std::uint32_t optionC, const void* caller = nullptr);

    // Empty holders that hosts reach by name; nothing here draws into them.
    PictureBox* pic_Combine;
    ImageList* cache16;
    ImageList* cache20;
    ImageList* cache32;

  private:
    /// The package of slot index, made afresh where the slot is empty.
    ResourcePackage& package(std::size_t index);

    // Slot 0 of both arrays stays unused: packages count from 1.
    std::vector<std::shared_ptr<ResourcePackage>> m_packages;
    std::vector<std::string> m_names;
    bool m_initialised = false;
};

} // namespace fw
