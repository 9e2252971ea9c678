// The package cache against the scripted host's packages: which package is
// asked what, in which order, and what the merged listing looks like.
#include "forms/ImageList.h"
#include "resources/frm_ResourceCache.h"
#include "testing/TestHost.h"

#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>

using namespace fw;
using namespace fw::testing;
using Texts = std::vector<std::string>;

namespace {

std::string joined(const StringList& list)
{
    std::string text;
    for (const std::string& entry : list.items())
        text += (text.empty() ? "" : ",") + entry;
    return text;
}

Texts packageCalls(const TestHost& host)
{
    Texts found;
    for (const std::string& call : host.calls)
        if (call.starts_with("Package.") || call.starts_with("NewResourcePackage"))
            found.push_back(call);
    return found;
}

struct CacheCase {
    const char* name;
    std::map<std::string, Texts> packages;
    std::function<std::string(frm_ResourceCache&)> act; ///< what it answers, as text
    std::string answer;
    Texts calls;
};

TEST(ResourceCache, AnswersFromItsPackagesInLoadOrder)
{
    TestHost* current = nullptr; // the running case's host
    const auto load = [](frm_ResourceCache& c, std::initializer_list<const char*> names) {
        c.PACKAGE_AMOUNT();
        for (const char* name : names)
            c.PACKAGE_LOAD(name);
    };
    const auto content = [](frm_ResourceCache& c) { return joined(c.ITEM_CONTENT("", 1, 2, 3)); };
    const std::map<std::string, Texts> twoWithX{{"A", {"x", "a"}}, {"B", {"X", "b"}}};
    // clang-format off
    const CacheCase cases[] = {
        {"a fresh cache has no package", {},
         [](frm_ResourceCache& c) {
             const std::string amount = std::to_string(c.PACKAGE_AMOUNT());
             return amount + (c.PACKAGE_EXISTS("A") ? "+" : "-");
         },
         "0-", {}},
        {"a name with blanks and in other case is loaded once, upper-cased and trimmed", {{"ICONS", {}}},
         [&](frm_ResourceCache& c) {
             load(c, {"  icons ", "Icons", "ICONS"});
             const std::string amount = std::to_string(c.PACKAGE_AMOUNT());
             return amount + (c.PACKAGE_EXISTS(" iCoNs") ? "+" : "-");
         },
         "1+", {"NewResourcePackage()", "Package.Load(ICONS)"}},
        {"extracting an item two packages hold takes the first loaded", twoWithX,
         [&](frm_ResourceCache& c) { load(c, {"b", "a"}); c.ITEM_EXTRACT("x", "/tmp/x"); return ""; },
         "", {"NewResourcePackage()", "Package.Load(B)", "NewResourcePackage()", "Package.Load(A)",
              "Package.Exists(B|x)", "Package.Extract(B|x|/tmp/x)"}},
        {"an item no package holds is not extracted", twoWithX,
         [&](frm_ResourceCache& c) { load(c, {"a", "b"}); c.ITEM_EXTRACT("c", "/tmp/c"); return ""; },
         "", {"NewResourcePackage()", "Package.Load(A)", "NewResourcePackage()", "Package.Load(B)",
              "Package.Exists(A|c)", "Package.Exists(B|c)"}},
        {"no package holds anything", {},
         [](frm_ResourceCache& c) { return std::string(c.ITEM_EXISTS("x") ? "yes" : "no"); }, "no", {}},
        {"an item of the second package exists", twoWithX,
         [&](frm_ResourceCache& c) { load(c, {"a", "b"}); current->clearCalls(); return std::string(c.ITEM_EXISTS("B") ? "yes" : "no"); },
         "yes", {"Package.Exists(A|B)", "Package.Exists(B|B)"}},
        {"no package lists nothing", {}, content, "", {}},
        {"option words go through to every package", twoWithX,
         [&](frm_ResourceCache& c) { load(c, {"a", "b"}); current->clearCalls(); return joined(c.ITEM_CONTENT("", 7, 0, 4294967295u)); },
         "x,a,b,b", {"Package.Content(A||7|0|4294967295)", "Package.Content(B||7|0|4294967295)"}},
        {"one entry in two packages in different case counts as the same", {{"A", {"Ico\\a.ico"}}, {"B", {"ICO\\A.ICO"}}},
         [&](frm_ResourceCache& c) { load(c, {"a", "b"}); return content(c); },
         "Ico\\a.ico,Ico\\a.ico", {"NewResourcePackage()", "Package.Load(A)", "NewResourcePackage()", "Package.Load(B)",
                                  "Package.Content(A||1|2|3)", "Package.Content(B||1|2|3)"}},
        {"x, y, x keeps its length with y moved behind the counted entries", {{"A", {"x", "y", "x"}}},
         [&](frm_ResourceCache& c) { load(c, {"a"}); return content(c); },
         "x,y,y", {"NewResourcePackage()", "Package.Load(A)", "Package.Content(A||1|2|3)"}},
        {"distinct entries stay as listed", {{"A", {"x", "y"}}, {"B", {"z"}}},
         [&](frm_ResourceCache& c) { load(c, {"a", "b"}); current->clearCalls(); return content(c); },
         "x,y,z", {"Package.Content(A||1|2|3)", "Package.Content(B||1|2|3)"}},
    };
    // clang-format on
    for (const CacheCase& c : cases) {
        SCOPED_TRACE(c.name);
        ScopedTestHost host;
        current = &*host;
        host->packages = c.packages;
        frm_ResourceCache cache;
        EXPECT_EQ(c.act(cache), c.answer);
        EXPECT_EQ(packageCalls(*host), c.calls);
    }
}

TEST(ResourceCache, FailuresGoToTheCallerAndTheSlotStays)
{
    ScopedTestHost host;
    frm_ResourceCache cache;
    EXPECT_THROW(cache.PACKAGE_LOAD("A"), std::out_of_range) << "PACKAGE_AMOUNT comes first";
    EXPECT_EQ(cache.PACKAGE_AMOUNT(), 0);

    host->failing.insert("Package.Load");
    EXPECT_THROW(cache.PACKAGE_LOAD("broken"), std::runtime_error);
    EXPECT_EQ(cache.PACKAGE_AMOUNT(), 1);
    EXPECT_TRUE(cache.PACKAGE_EXISTS("BROKEN"));

    EXPECT_EQ(cache.Caption(), QStringLiteral("RESOURCE"));
    EXPECT_EQ(cache.cache16->MaskColor(), 0xFF00FFu);
    EXPECT_EQ(&frm_ResourceCache::Default(), &frm_ResourceCache::Default());
}

} // namespace
