// The exit statuses of quillmoor-cli.
#pragma once

enum ExitStatus {
    ExitDone = 0,   // all that was asked was done
    ExitFailed = 1, // a file was refused, or a write failed
    ExitUsage = 2,  // the command line is wrong
};
