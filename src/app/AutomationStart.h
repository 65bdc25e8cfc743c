// `aztrue --automation`: the process serves the automation objects on the
// D-Bus session bus until a client releases its object or calls Dispose.
#pragma once

// Runs the event loop and returns the exit status: 1 when the bus cannot be
// reached or another process already serves the name.
int RunAutomation(int argc, char** argv);
