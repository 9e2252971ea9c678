#pragma once
// A synchronisation window for the host's engine without a screen: it keeps
// what the run shows, answers the confirmation as the test says and can raise
// the cancel flag partway through carrying the plan out.

#include "host/SyncJob.h"

#include <algorithm>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace fw::testing {

class RecordingSyncWindow final : public SyncProgress {
  public:
    std::function<bool(SyncActions&)> answer = [](SyncActions&) { return true; };
    /// PROGRESS calls of task 5 to let through before cancelling; -1: never.
    int cancelAfterProgress = -1;
    std::vector<int> tasks;
    std::vector<std::string> log;
    std::vector<std::string> errors; ///< "what | path | why"
    std::optional<SyncActions> shown;
    /// Where the cancel flag lives elsewhere, as the FTP window's lives on
    /// the FTP object: asked besides the window's own.
    std::function<bool()> flagElsewhere;

    void SHOWTASK(std::int32_t n) override { tasks.push_back(n); }
    void LOG(const std::string& text) override { log.push_back(text); }
    void PROGRESS(std::int32_t, std::int32_t) override
    {
        if (!tasks.empty() && tasks.back() == 5 && cancelAfterProgress >= 0)
            m_cancelled = m_cancelled || cancelAfterProgress-- == 0;
    }
    void LOGERROR(const std::string& a, const std::string& b, const std::string& c) override
    {
        errors.push_back(a + " | " + b + " | " + c);
    }
    bool Cancelled() const override { return m_cancelled || (flagElsewhere && flagElsewhere()); }
    bool Confirm(SyncActions& actions) override
    {
        shown = actions;
        return answer(actions);
    }
    bool Logged(const std::string& part) const
    {
        return std::any_of(log.begin(), log.end(),
                           [&](const std::string& line) { return line.find(part) != line.npos; });
    }

  private:
    bool m_cancelled = false;
};

} // namespace fw::testing
