// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/ExitCode.h"

namespace cli {

ExitCode exitCodeOf(recording::Failure failure)
{
    using recording::Failure;
    switch (failure) {
    case Failure::None:
        return Success;
    case Failure::NotFound:
        return NotFound;
    case Failure::Exists:
        return Exists;
    case Failure::NoPermission:
        return NoPermission;
    case Failure::ReadOnly:
        return ReadOnly;
    case Failure::NotARecording:
        return NotARecording;
    case Failure::NewerSchema:
        return NewerSchema;
    case Failure::Damaged:
        return Damaged;
    case Failure::DiskFull:
        return DiskFull;
    case Failure::Busy:
        return Busy;
    case Failure::InputOutput:
        return InputOutput;
    }
    return Failed;
}

} // namespace cli
