#include "files/WindowHooks.h"

#include <utility>

namespace {

// Allocated once and never destroyed, so a hook stays callable from the
// destructors of other static objects at process end.
std::function<void()>& PendingEventsHook() {
    static auto* hook = new std::function<void()>();
    return *hook;
}

std::function<void()>& EnableToChkHook() {
    static auto* hook = new std::function<void()>();
    return *hook;
}

}  // namespace

void SetPendingEventsHook(std::function<void()> Hook) {
    PendingEventsHook() = std::move(Hook);
}

void RunPendingEvents() {
    if (PendingEventsHook()) PendingEventsHook()();
}

std::function<void()> SetEnableToChkHook(std::function<void()> Hook) {
    return std::exchange(EnableToChkHook(), std::move(Hook));
}

void RunEnableToChk() {
    if (EnableToChkHook()) EnableToChkHook()();
}
