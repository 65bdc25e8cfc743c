// Points where the file routines reach into the window system. The numeric
// core has no windows of its own, so the windows layer plugs its actions in
// here at start-up; until it does, each hook does nothing.
#pragma once

#include <functional>

// Lets queued window events run (a click can then be served in the middle of
// a long routine). SaveCalFile calls it before it starts. An empty function
// restores the default, which does nothing.
void SetPendingEventsHook(std::function<void()> Hook);
void RunPendingEvents();

// Copies TermEnable into the check boxes of the Model Parameters window
// without starting a fit. LoadCalFile calls it after it has read each of the
// two sections of term flags. An empty function restores the default, which
// does nothing. Returns the hook it replaces, for the caller to put back.
std::function<void()> SetEnableToChkHook(std::function<void()> Hook);
void RunEnableToChk();
