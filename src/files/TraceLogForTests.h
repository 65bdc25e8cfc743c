// For tests only: lets one test program run several trace-log scenarios.
// The program itself never calls this; its log state lives for the process.
#pragma once

// Closes the log file if one is open and forgets the documents folder, so
// that the next LogLine starts as at process start.
void ResetTraceLogForTests();
