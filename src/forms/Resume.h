#pragma once
// Handlers of the dialogs go on after a failing host or control call: the step
// is skipped in silence and the next one runs. Resume() is that idiom, one
// visible line per step that may fail.

#include <exception>
#include <utility>

namespace fw {

template <class Step> bool Resume(Step&& step) noexcept
{
    try {
        std::forward<Step>(step)();
        return true;
    } catch (...) {
        return false;
    }
}

} // namespace fw
