// The six tasks of a synchronisation over two sides.
#include "desktop/sync/SyncRun.h"

#include "desktop/LocationPaths.h"
#include "desktop/sync/SyncPlan.h"
#include "desktop/sync/SyncProtocol.h"

#include <QDateTime>
#include <algorithm>
#include <set>
#include <unordered_map>
#include <unordered_set>

namespace fw::desktop::sync {

namespace {

enum Task { ListSide1 = 1, ListSide2, FindChanges, ConfirmActions, CarryOut, WriteProtocol };

// "1 Eintrag", "3 Einträge".
std::string counted(std::size_t count, const char* one, const char* many)
{
    return std::to_string(count) + ' ' + (count == 1 ? one : many);
}

// How each kind of action is carried out and named, in the order of the run:
// folders first, so that copies find them, and deletions last, so that a
// failed copy never leaves a file deleted on both sides.
enum class Act { Make, Copy, Delete, DeleteTree };
struct Kind {
    std::string_view key;
    Act act;
    int side; ///< the side that is changed
    const char* text;
};
constexpr Kind Kinds[] = {
    {"MKL", Act::Make, 1, "Ordner in Pfad 1 anlegen"},
    {"MMR", Act::Make, 2, "Ordner in Pfad 2 anlegen"},
    {"UP", Act::Copy, 2, "Datei nach Pfad 2 kopieren"},
    {"DOWN", Act::Copy, 1, "Datei nach Pfad 1 kopieren"},
    {"DL", Act::Delete, 1, "Datei in Pfad 1 löschen"},
    {"DR", Act::Delete, 2, "Datei in Pfad 2 löschen"},
    {"DTL", Act::DeleteTree, 1, "Ordner in Pfad 1 löschen"},
    {"DTR", Act::DeleteTree, 2, "Ordner in Pfad 2 löschen"},
};

std::vector<std::string>& listOf(SyncPlan& plan, std::string_view key)
{
    std::vector<std::string>* lists[] = {&plan.MKL, &plan.MMR, &plan.UP,  &plan.DOWN,
                                         &plan.DL,  &plan.DR,  &plan.DTL, &plan.DTR};
    for (std::size_t i = 0; i < std::size(Kinds); ++i)
        if (Kinds[i].key == key)
            return *lists[i];
    return plan.MKL; // unreachable: every key is in the table
}

// The window shows paths as locations: each name escaped, "\" between them.
std::string toLocation(std::string_view path)
{
    std::string location;
    for (std::size_t start = 0;;) {
        const auto slash = path.find('/', start);
        location += NameToLocation(path.substr(start, slash - start));
        if (slash == std::string_view::npos)
            return location;
        location += '\\';
        start = slash + 1;
    }
}

bool liesInside(const std::string& inner, const std::string& outer)
{
    return outer == "/" ? inner != "/" && inner.starts_with('/')
                        : inner.size() > outer.size() && inner[outer.size()] == '/' &&
                              inner.starts_with(outer);
}

bool sameEntry(const SyncItem& a, const SyncItem& b)
{
    return a.folder == b.folder && a.size == b.size && a.mtime == b.mtime;
}

// "Ordner/Datei.txt" -> "Ordner/Datei (Konflikt 2026-11-23 2215).txt".
std::string conflictCopyName(const std::string& path)
{
    const auto slash = path.rfind('/');
    const auto nameStart = slash == std::string::npos ? 0 : slash + 1;
    auto dot = path.rfind('.');
    if (dot == std::string::npos || dot <= nameStart)
        dot = path.size();
    const std::string stamp =
        QDateTime::currentDateTime().toString("yyyy-MM-dd HHmm").toStdString();
    return path.substr(0, dot) + " (Konflikt " + stamp + ")" + path.substr(dot);
}

// Copies the entries of the last protocol at and below path into next.
void carryOver(const SyncState& last, const std::string& path, SyncState& next)
{
    if (const auto found = last.find(path); found != last.end())
        next.insert(*found);
    const std::string below = path + '/';
    for (auto it = last.lower_bound(below); it != last.end() && it->first.starts_with(below); ++it)
        next.insert(*it);
}

class Run {
  public:
    Run(SyncSide& side1, SyncSide& side2, SyncProgress& window, SyncJob& job)
        : m_sides{&side1, &side2}, m_window(window), m_job(job)
    {
    }

    SyncOutcome Go()
    {
        if (!placesFit())
            return SyncFailed;
        for (int side : {1, 2}) {
            m_window.SHOWTASK(side == 1 ? ListSide1 : ListSide2);
            if (const auto outcome = list(side))
                return *outcome;
        }
        m_window.SHOWTASK(FindChanges);
        findChanges();
        m_window.SHOWTASK(ConfirmActions);
        if (!confirm())
            return SyncCancelled;
        if (m_job.DryRun) {
            m_window.LOG("Probelauf: es wurde nichts geändert.");
            m_job.Skipped += planned();
            return SyncFinished;
        }
        m_window.SHOWTASK(CarryOut);
        if (!carryOut())
            return SyncCancelled;
        m_window.SHOWTASK(WriteProtocol);
        writeProtocol();
        m_window.LOG("Die Synchronisation ist beendet.");
        return SyncFinished;
    }

  private:
    SyncSide& side(int n) const { return *m_sides[n - 1]; }

    void error(const std::string& what, const std::string& path, const std::string& why)
    {
        m_window.LOGERROR(what, path, why);
        ++m_job.Errors;
    }

    bool placesFit()
    {
        const std::string one = side(1).Describe(), two = side(2).Describe();
        const char* reason = !side(1).LocalPath("") ? "Pfad 1 ist kein Ordner auf diesem Rechner"
                             : one == two           ? "Beide Pfade sind derselbe Ordner"
                             : liesInside(one, two) || liesInside(two, one)
                                 ? "Ein Pfad liegt im anderen"
                                 : nullptr;
        if (!reason)
            return true;
        error("Synchronisation nicht möglich", one + " / " + two, reason);
        return false;
    }

    SyncSignals watch(int step, int steps)
    {
        return {[this] { return m_window.Cancelled(); },
                [this, step, steps](std::int64_t done, std::int64_t total) {
                    if (total <= 0)
                        m_window.PROGRESS(std::int32_t(std::min<std::int64_t>(done, INT32_MAX)), 0);
                    else // the step bar shows the file's share while a copy runs
                        m_window.PROGRESS(std::int32_t(step * 1000LL + done * 1000 / total),
                                          std::int32_t(steps * 1000LL));
                }};
    }

    std::optional<SyncOutcome> list(int n)
    {
        m_window.LOG("Dateien und Ordner in " + side(n).Describe() + " werden aufgelistet.");
        auto& unreadable = n == 1 ? m_unreadable1 : m_unreadable2;
        std::string reason;
        const bool listed =
            side(n).List(n == 1 ? m_tree1 : m_tree2, watch(0, 0), reason,
                         [&](const std::string& path, const std::string& why) {
                             unreadable.insert(path);
                             if (why == SyncSkippedLink)
                                 m_window.LOG("Übergangen: " + toLocation(path) + " (" + why + ")");
                             else
                                 error("Nicht lesbar, übergangen", toLocation(path), why);
                         });
        if (m_window.Cancelled()) {
            m_window.LOG("Abgebrochen beim Auflisten; es wurde nichts geändert.");
            return SyncCancelled;
        }
        if (!listed) {
            error("Auflisten nicht möglich", side(n).Describe(), reason);
            return SyncFailed;
        }
        m_window.LOG(counted((n == 1 ? m_tree1 : m_tree2).size(), "Eintrag", "Einträge") +
                     " gefunden.");
        return std::nullopt;
    }

    void findChanges()
    {
        m_protocolFile = SyncProtocolFile(side(1).Describe(), side(2).Describe());
        std::string reason;
        switch (ReadSyncProtocol(m_protocolFile, m_last, reason)) {
        case ProtocolRead::Read:
            m_haveLast = true;
            break;
        case ProtocolRead::Missing:
            m_window.LOG("Erster Abgleich dieser Ordner: es wird nichts gelöscht.");
            break;
        case ProtocolRead::Damaged:
            m_window.LOG("Das Protokoll des letzten Abgleichs ist nicht lesbar (" + reason +
                         "); wie beim ersten Abgleich wird nichts gelöscht.");
            break;
        }
        m_plan = PlanSync(
            {m_tree1, m_tree2, m_haveLast ? &m_last : nullptr, m_unreadable1, m_unreadable2});
        for (const SyncConflict& conflict : m_plan.conflicts) {
            m_window.LOGERROR("Konflikt", toLocation(conflict.path), conflict.reason);
            ++m_job.Conflicts;
        }
        m_window.LOG(counted(planned(), "Aktion", "Aktionen") + " geplant, " +
                     counted(m_plan.conflicts.size(), "Konflikt", "Konflikte") + ".");
    }

    int planned()
    {
        std::size_t total = 0;
        for (const Kind& kind : Kinds)
            total += listOf(m_plan, kind.key).size();
        return int(total);
    }

    // Shows the plan; what the user unchecked is taken out of it and counted.
    bool confirm()
    {
        const int total = planned();
        if (total == 0) {
            m_window.LOG("Es ist nichts zu tun.");
            return true;
        }
        if (m_job.ConfirmAll)
            return true;
        SyncActions actions;
        for (const Kind& kind : Kinds)
            for (const std::string& path : listOf(m_plan, kind.key))
                actions.ByKey(kind.key)->Add(toLocation(path));
        if (!m_window.Confirm(actions)) {
            m_window.LOG("Die Aktionen wurden nicht bestätigt; es wurde nichts geändert.");
            m_job.Skipped += total;
            return false;
        }
        std::vector<std::string> unmade[3]; // by side: folders the user left out
        for (const Kind& kind : Kinds) {
            const auto& kept = actions.ByKey(kind.key)->items();
            const std::unordered_set<std::string> confirmed(kept.begin(), kept.end());
            leaveOut(kind, [&](const std::string& path) {
                if (confirmed.count(toLocation(path)))
                    return false;
                if (kind.act == Act::Make)
                    unmade[kind.side].push_back(path + '/');
                return true;
            });
        }
        // What lies in a folder whose making was left out has nowhere to go:
        // it is left out too rather than failing entry by entry.
        const int before = m_job.Skipped;
        for (const Kind& kind : Kinds) {
            if (kind.act != Act::Make && kind.act != Act::Copy)
                continue;
            leaveOut(kind, [&](const std::string& path) {
                return std::any_of(
                    unmade[kind.side].begin(), unmade[kind.side].end(),
                    [&](const std::string& folder) { return path.starts_with(folder); });
            });
        }
        if (m_job.Skipped > before)
            m_window.LOG(std::to_string(m_job.Skipped - before) +
                         " Aktionen in abgewählten Ordnern werden nicht ausgeführt.");
        return true;
    }

    // Takes the paths of a kind that the test picks out of the plan; they
    // count as skipped and keep their old protocol entries.
    template <class Test> void leaveOut(const Kind& kind, Test&& test)
    {
        std::erase_if(listOf(m_plan, kind.key), [&](const std::string& path) {
            if (!test(path))
                return false;
            m_notDone.push_back(path);
            ++m_job.Skipped;
            return true;
        });
    }

    const SyncItem* listed(int n, const std::string& path)
    {
        auto& index = n == 1 ? m_index1 : m_index2;
        if (index.empty())
            for (const SyncItem& item : n == 1 ? m_tree1 : m_tree2)
                index.emplace(item.path, &item);
        const auto found = index.find(path);
        return found == index.end() ? nullptr : found->second;
    }

    // The entry must still be as listed, so that nothing a user changed
    // meanwhile is overwritten or deleted. That a new entry is still absent is
    // asked of local sides only: on a server it would cost a call per file.
    bool stillAsListed(int n, const std::string& path, std::string& reason)
    {
        SyncItem now;
        const SyncItem* then = listed(n, path);
        if (!then) {
            std::string ignored;
            if (!side(n).LocalPath(path) || !side(n).Stat(path, now, ignored))
                return true;
        } else if (!side(n).Stat(path, now, reason)) {
            return false;
        } else if (sameEntry(now, *then)) {
            return true;
        }
        reason = "Geändert seit der Auflistung";
        return false;
    }

    /// stored2: side 2's entry as an upload just told it (an empty path if
    /// none did), which spares asking the server once more per file.
    void record(const std::string& path, const SyncItem& stored2 = {})
    {
        SyncRecord entry;
        std::string ignored;
        // A side that cannot say leaves no entry: the next run then compares
        // the two files as a first run would.
        if (!side(1).Stat(path, entry.side1, ignored))
            return;
        entry.side2 = stored2;
        if (stored2.path == path || side(2).Stat(path, entry.side2, ignored))
            m_next[path] = entry;
    }

    bool act(const Kind& kind, const std::string& path, SyncSignals& progress, SyncItem& stored2,
             std::string& reason)
    {
        const int other = 3 - kind.side;
        switch (kind.act) {
        case Act::Make:
            return side(kind.side).MakeFolder(path, reason);
        case Act::Copy: {
            const SyncItem* source = listed(other, path);
            if (!stillAsListed(kind.side, path, reason))
                return false;
            if (kind.side == 2) {
                if (!stillAsListed(1, path, reason))
                    return false;
                return side(2).Put(*side(1).LocalPath(path), path, source->mtime, progress, stored2,
                                   reason);
            }
            return side(2).Get(*source, *side(1).LocalPath(path), progress, reason);
        }
        case Act::Delete:
            return stillAsListed(kind.side, path, reason) &&
                   side(kind.side).RemoveFile(path, reason);
        case Act::DeleteTree:
            return side(kind.side).RemoveTree(path, reason);
        }
        return false;
    }

    // Gives the side 2 copy of a file changed on both sides a name of its own
    // on both sides, beside the side 1 file that keeps the name.
    void keepBoth(const SyncConflict& conflict)
    {
        const SyncItem* copy2 = listed(2, conflict.path);
        const std::string name = conflictCopyName(conflict.path);
        const std::string local = *side(1).LocalPath(name);
        std::string reason;
        auto progress = watch(0, 1);
        SyncItem stored2;
        if (side(2).Get(*copy2, local, progress, reason) &&
            side(2).Put(local, name, copy2->mtime, progress, stored2, reason)) {
            m_window.LOG("Konfliktkopie angelegt: " + toLocation(name));
            ++m_job.Done;
            record(name, stored2);
        } else {
            error("Konfliktkopie anlegen", toLocation(name), reason);
        }
    }

    bool carryOut()
    {
        const int total = planned();
        int step = 0;
        for (const Kind& kind : Kinds) {
            const auto& paths = listOf(m_plan, kind.key);
            // Trees go children first; none lies inside another, but keep the
            // order safe for any plan.
            const bool reverse = kind.act == Act::DeleteTree;
            for (std::size_t i = 0; i < paths.size(); ++i, ++step) {
                const std::string& path = paths[reverse ? paths.size() - 1 - i : i];
                if (m_window.Cancelled())
                    return stopped(total - step);
                auto progress = watch(step, total);
                std::string reason;
                SyncItem stored2;
                if (act(kind, path, progress, stored2, reason)) {
                    ++m_job.Done;
                    m_window.LOG(std::string(kind.text) + ": " + toLocation(path));
                    if (kind.act == Act::Make || kind.act == Act::Copy)
                        record(path, stored2);
                } else if (m_window.Cancelled()) {
                    return stopped(total - step);
                } else {
                    error(kind.text, toLocation(path), reason);
                    m_notDone.push_back(path);
                }
                m_window.PROGRESS(step + 1, total);
            }
            if (kind.key == "DOWN" && m_job.KeepBothOnConflict)
                for (const SyncConflict& conflict : m_plan.conflicts)
                    if (conflict.bothFiles)
                        keepBoth(conflict);
        }
        return true;
    }

    bool stopped(int left)
    {
        m_job.Skipped += left;
        m_window.LOG("Abgebrochen: " + std::to_string(m_job.Done) + " Aktionen ausgeführt, " +
                     std::to_string(left) + " nicht ausgeführt.");
        return false;
    }

    // The state as it is now for what went through; the old entries for what
    // did not, so that the next run tries it again and deletes nothing wrongly.
    void writeProtocol()
    {
        for (const std::string& path : m_plan.inSync)
            m_next[path] = {*listed(1, path), *listed(2, path)};
        if (m_haveLast) {
            for (const std::string& path : m_plan.keep)
                carryOver(m_last, path, m_next);
            for (const std::string& path : m_notDone)
                carryOver(m_last, path, m_next);
        }
        std::string reason;
        if (WriteSyncProtocol(m_protocolFile, m_next, reason))
            m_window.LOG("Protokoll geschrieben: " + std::to_string(m_next.size()) + " Einträge.");
        else
            error("Protokoll schreiben", m_protocolFile, reason);
    }

    SyncSide* m_sides[2];
    SyncProgress& m_window;
    SyncJob& m_job;
    SyncTree m_tree1, m_tree2;
    std::unordered_map<std::string, const SyncItem*> m_index1, m_index2;
    std::set<std::string> m_unreadable1, m_unreadable2;
    std::string m_protocolFile;
    SyncState m_last, m_next;
    bool m_haveLast = false;
    SyncPlan m_plan;
    std::vector<std::string> m_notDone;
};

} // namespace

SyncOutcome RunSync(SyncSide& side1, SyncSide& side2, SyncProgress& window, SyncJob& job)
{
    return Run(side1, side2, window, job).Go();
}

} // namespace fw::desktop::sync
