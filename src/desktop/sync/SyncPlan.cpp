#include "desktop/sync/SyncPlan.h"

#include <algorithm>
#include <cstdlib>
#include <string_view>

namespace fw::desktop::sync {

namespace {

// Each side is compared only with what it had itself, so a clock that runs
// differently on the other side does no harm.
bool unchangedSince(const SyncItem& now, const SyncItem& recorded)
{
    if (now.folder != recorded.folder)
        return false;
    return now.folder || (now.size == recorded.size && now.mtime == recorded.mtime);
}

bool looksEqual(const SyncItem& a, const SyncItem& b)
{
    return !a.folder && !b.folder && a.size == b.size &&
           std::llabs(a.mtime - b.mtime) <= SyncTimeTolerance;
}

bool liesBelow(std::string_view path, std::string_view folder)
{
    return path.size() > folder.size() && path[folder.size()] == '/' &&
           path.substr(0, folder.size()) == folder;
}

bool atOrBelowAny(std::string_view path, const std::set<std::string>& folders)
{
    if (folders.empty())
        return false; // the usual case, without a lookup per ancestor
    for (;;) {
        if (folders.count(std::string(path)))
            return true;
        const auto slash = path.rfind('/');
        if (slash == std::string_view::npos)
            return false;
        path = path.substr(0, slash);
    }
}

void addWithAncestors(std::string_view path, std::set<std::string>& folders)
{
    for (auto slash = path.rfind('/'); slash != std::string_view::npos; slash = path.rfind('/')) {
        path = path.substr(0, slash);
        // An ancestor already there has all of its own ancestors there too.
        if (!folders.insert(std::string(path)).second)
            return;
    }
}

// The folders of one side that hold, at any depth, something new, changed or
// unreadable since the last run: such a folder's tree is never deleted whole.
std::set<std::string> foldersWithNews(const SyncTree& tree, const std::set<std::string>& unreadable,
                                      const SyncState* last, SyncItem SyncRecord::*side)
{
    std::set<std::string> folders;
    for (const SyncItem& item : tree) {
        const auto recorded = last ? last->find(item.path) : SyncState::const_iterator{};
        if (!last || recorded == last->end() || !unchangedSince(item, recorded->second.*side))
            addWithAncestors(item.path, folders);
    }
    for (const std::string& path : unreadable) {
        folders.insert(path);
        addWithAncestors(path, folders);
    }
    return folders;
}

// Path order in which every folder's tree follows it without a gap ("a",
// "a/x", "a-b"): plain byte order would put "a-b" between them.
struct TreeOrder {
    bool operator()(std::string_view x, std::string_view y) const
    {
        const auto key = [](char c) {
            return c == '/' ? 0 : int(static_cast<unsigned char>(c)) + 1;
        };
        return std::lexicographical_compare(x.begin(), x.end(), y.begin(), y.end(),
                                            [&](char a, char b) { return key(a) < key(b); });
    }
};

class Planner {
  public:
    explicit Planner(const SyncPlanInput& input)
        : m_in(input),
          m_news1(foldersWithNews(input.side1, input.unreadable1, input.last, &SyncRecord::side1)),
          m_news2(foldersWithNews(input.side2, input.unreadable2, input.last, &SyncRecord::side2))
    {
    }

    SyncPlan Run()
    {
        std::map<std::string_view, std::pair<const SyncItem*, const SyncItem*>, TreeOrder> paths;
        for (const SyncItem& item : m_in.side1)
            paths[item.path].first = &item;
        for (const SyncItem& item : m_in.side2)
            paths[item.path].second = &item;
        for (const auto& [path, items] : paths) {
            if (!m_coveredTree.empty() && liesBelow(path, m_coveredTree))
                continue;
            const std::string p(path);
            if (atOrBelowAny(p, m_in.unreadable1) || atOrBelowAny(p, m_in.unreadable2))
                continue;
            const SyncRecord* last = recordOf(p);
            if (items.first && items.second)
                planOnBoth(p, *items.first, *items.second, last);
            else if (items.first)
                planOnOne(p, *items.first, last, 1);
            else
                planOnOne(p, *items.second, last, 2);
        }
        for (const std::string& path : m_in.unreadable1)
            keepTree(path);
        for (const std::string& path : m_in.unreadable2)
            keepTree(path);
        return std::move(m_plan);
    }

  private:
    const SyncRecord* recordOf(const std::string& path) const
    {
        if (!m_in.last)
            return nullptr;
        const auto found = m_in.last->find(path);
        return found == m_in.last->end() ? nullptr : &found->second;
    }

    void planOnBoth(const std::string& path, const SyncItem& a, const SyncItem& b,
                    const SyncRecord* last)
    {
        if (a.folder && b.folder) {
            m_plan.inSync.push_back(path);
        } else if (a.folder != b.folder) {
            conflict(path, "Auf der einen Seite eine Datei, auf der anderen ein Ordner", false);
            m_coveredTree = path;
        } else if (last && !last->side1.folder && !last->side2.folder) {
            const bool changed1 = !unchangedSince(a, last->side1);
            const bool changed2 = !unchangedSince(b, last->side2);
            if (changed1 && changed2 && !looksEqual(a, b))
                conflict(path, "Die Datei wurde auf beiden Seiten geändert", true);
            else if (changed1 && !changed2)
                m_plan.UP.push_back(path);
            else if (changed2 && !changed1)
                m_plan.DOWN.push_back(path);
            else
                m_plan.inSync.push_back(path);
        } else if (looksEqual(a, b)) {
            m_plan.inSync.push_back(path);
        } else {
            conflict(path, "Die Datei ist auf beiden Seiten verschieden vorhanden", true);
        }
    }

    // The entry is on side `side` only.
    void planOnOne(const std::string& path, const SyncItem& item, const SyncRecord* last, int side)
    {
        auto& copyOver = side == 1 ? m_plan.UP : m_plan.DOWN;
        auto& makeOver = side == 1 ? m_plan.MMR : m_plan.MKL;
        if (!last) {
            (item.folder ? makeOver : copyOver).push_back(path);
            return;
        }
        // It was there before, so the other side deleted it: follow that,
        // unless this side changed it since, which copies it back.
        const SyncItem& recorded = side == 1 ? last->side1 : last->side2;
        const auto& news = side == 1 ? m_news1 : m_news2;
        if (!item.folder) {
            if (unchangedSince(item, recorded))
                (side == 1 ? m_plan.DL : m_plan.DR).push_back(path);
            else
                copyOver.push_back(path);
        } else if (recorded.folder && !news.count(path)) {
            (side == 1 ? m_plan.DTL : m_plan.DTR).push_back(path);
            m_coveredTree = path;
        } else {
            makeOver.push_back(path);
        }
    }

    void conflict(const std::string& path, const char* reason, bool bothFiles)
    {
        m_plan.conflicts.push_back({path, reason, bothFiles});
        keepTree(path);
    }

    void keepTree(const std::string& path)
    {
        if (!m_in.last)
            return;
        if (m_in.last->count(path))
            m_plan.keep.push_back(path);
        const std::string below = path + '/';
        for (auto it = m_in.last->lower_bound(below);
             it != m_in.last->end() && it->first.starts_with(below); ++it)
            m_plan.keep.push_back(it->first);
    }

    const SyncPlanInput& m_in;
    const std::set<std::string> m_news1, m_news2;
    SyncPlan m_plan;
    std::string m_coveredTree; ///< a tree decided as a whole: its entries are skipped
};

} // namespace

SyncPlan PlanSync(const SyncPlanInput& input)
{
    return Planner(input).Run();
}

} // namespace fw::desktop::sync
