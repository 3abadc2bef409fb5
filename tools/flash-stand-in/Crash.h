// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

/// Ends this process at once, without clean-up, in the way that its parent sees as a crash.
[[noreturn]] void crash();
