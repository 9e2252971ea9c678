// The planner: which of the eight lists a path lands in, from both trees and
// the last run's protocol. A side reads "f:path:size:mtime" for a file,
// "d:path" for a folder and "?:path" for an entry it could not list; protocol
// entries give both sides' size and mtime ("f:a:size1:mtime1:size2:mtime2").
#include "desktop/sync/SyncPlan.h"

#include <gtest/gtest.h>
#include <sstream>

using namespace fw::desktop::sync;

namespace {

std::vector<std::string> fields(const std::string& row)
{
    std::vector<std::string> parts;
    std::istringstream in(row);
    for (std::string part; std::getline(in, part, ':');)
        parts.push_back(part);
    return parts;
}

std::vector<std::vector<std::string>> entriesOf(const char* text)
{
    std::vector<std::vector<std::string>> entries;
    std::istringstream in(text);
    for (std::string entry; in >> entry;)
        entries.push_back(fields(entry));
    return entries;
}

SyncTree treeOf(const char* text, std::set<std::string>& unreadable)
{
    SyncTree tree;
    for (const auto& f : entriesOf(text)) {
        if (f[0] == "?")
            unreadable.insert(f[1]);
        else
            tree.push_back(f[0] == "d" ? SyncItem{f[1], true, 0, 0}
                                       : SyncItem{f[1], false, std::stoll(f[2]), std::stoll(f[3])});
    }
    return tree;
}

SyncState stateOf(const char* text)
{
    SyncState state;
    for (const auto& f : entriesOf(text)) {
        const bool folder = f[0] == "d";
        const auto number = [&](std::size_t i) { return folder ? 0 : std::stoll(f[i]); };
        state[f[1]] = {{f[1], folder, number(2), number(3)}, {f[1], folder, number(4), number(5)}};
    }
    return state;
}

// "MMR:d UP:a,d/x C:c" in the order the run carries the lists out.
std::string shown(const SyncPlan& plan)
{
    std::string text;
    const auto add = [&](const char* key, const std::vector<std::string>& paths) {
        if (paths.empty())
            return;
        text += std::string(text.empty() ? "" : " ") + key + ":";
        for (std::size_t i = 0; i < paths.size(); ++i)
            text += (i ? "," : "") + paths[i];
    };
    add("MKL", plan.MKL), add("MMR", plan.MMR), add("UP", plan.UP), add("DOWN", plan.DOWN);
    add("DL", plan.DL), add("DR", plan.DR), add("DTL", plan.DTL), add("DTR", plan.DTR);
    std::vector<std::string> conflicts;
    for (const auto& conflict : plan.conflicts)
        conflicts.push_back(conflict.path);
    add("C", conflicts);
    return text;
}

TEST(SyncPlan, EveryCaseLandsInItsList)
{
    struct Row {
        const char* what;
        const char *side1, *side2;
        const char* last; // null: first run
        const char* expected;
    };
    const Row rows[] = {
        {"first run copies both ways, folders made parents first",
         "d:d d:d/e f:d/e/x:2:100 f:a:1:100", "f:b:3:100", nullptr, "MMR:d,d/e UP:a,d/e/x DOWN:b"},
        {"first run takes times two seconds apart as equal", "f:a:5:100", "f:a:5:102", nullptr, ""},
        {"first run reports differing files", "f:a:5:100", "f:a:6:100", nullptr, "C:a"},
        {"first run deletes nothing", "f:a:5:100 d:d", "", nullptr, "MMR:d UP:a"},
        {"unchanged on both sides", "f:a:5:100", "f:a:5:100", "f:a:5:100:5:100", ""},
        {"a clock an hour off on side 2 does no harm", "f:a:5:100", "f:a:5:3700",
         "f:a:5:100:5:3700", ""},
        {"changed on side 1", "f:a:6:200", "f:a:5:100", "f:a:5:100:5:100", "UP:a"},
        {"changed on side 2", "f:a:5:100", "f:a:5:300", "f:a:5:100:5:100", "DOWN:a"},
        {"changed on both sides", "f:a:6:200", "f:a:7:300", "f:a:5:100:5:100", "C:a"},
        {"changed alike on both sides", "f:a:6:200", "f:a:6:201", "f:a:5:100:5:100", ""},
        {"deleted on side 2, unchanged on side 1", "f:a:5:100", "", "f:a:5:100:5:100", "DL:a"},
        {"deleted on side 1, unchanged on side 2", "", "f:a:5:100", "f:a:5:100:5:100", "DR:a"},
        {"deleted on side 2 but changed on side 1 copies back", "f:a:9:200", "", "f:a:5:100:5:100",
         "UP:a"},
        {"gone on both sides", "", "", "f:a:5:100:5:100", ""},
        {"a tree deleted on side 2 goes whole, no file of it alone",
         "d:a f:a/x:1:1 d:a-b f:a-b/y:1:1", "", "d:a f:a/x:1:1:1:1 d:a-b f:a-b/y:1:1:1:1",
         "DTL:a,a-b"},
        {"a tree deleted on side 1 keeps what side 2 changed under it", "",
         "d:d f:d/old:1:1 f:d/new:2:2 d:d/keep f:d/keep/x:1:1",
         "d:d f:d/old:1:1:1:1 d:d/keep f:d/keep/x:1:1:1:1", "MKL:d DOWN:d/new DR:d/old DTR:d/keep"},
        {"a file against a folder is a conflict, the folder's content waits", "f:a:1:1",
         "d:a f:a/x:1:1", nullptr, "C:a"},
        {"an unreadable entry is never taken as deleted", "?:u", "d:u f:u/x:1:1",
         "d:u f:u/x:1:1:1:1", ""},
    };
    for (const Row& row : rows) {
        std::set<std::string> unreadable1, unreadable2;
        const SyncTree side1 = treeOf(row.side1, unreadable1);
        const SyncTree side2 = treeOf(row.side2, unreadable2);
        const SyncState last = row.last ? stateOf(row.last) : SyncState{};
        const SyncPlanInput input{side1, side2, row.last ? &last : nullptr, unreadable1,
                                  unreadable2};
        EXPECT_EQ(shown(PlanSync(input)), row.expected) << row.what;
    }
}

} // namespace
