// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "recording/RecordingError.h"

namespace cli {

/// How the program ends; the manual page lists these numbers.
enum ExitCode {
    Success = 0,
    Failed = 1,       ///< any other failure
    WrongUsage = 2,   ///< the command line is wrong
    NoInstrument = 3, ///< none is connected, or it was lost
    Refused = 4,      ///< the instrument is there and the system does not allow to open it
    NotRecording = 5, ///< no recording is running
    NoServer = 6,     ///< the firmware server does not answer, or offers nothing
    NoController = 7, ///< no controller in boot mode
    NotFlashed = 8,   ///< the firmware was not written, or not verified
    NotFound = 10,
    Exists = 11,
    NoPermission = 12,
    ReadOnly = 13,
    NotARecording = 14,
    NewerSchema = 15,
    Damaged = 16,
    DiskFull = 17,
    Busy = 18,
    InputOutput = 19,
};

/// Returns the exit code of a failure of a recording; Success for none.
ExitCode exitCodeOf(recording::Failure failure);

} // namespace cli
