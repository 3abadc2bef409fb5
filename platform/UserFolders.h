// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace platform {

enum class UserFolder {
    Documents,
    Desktop,
    /// What the application keeps on this machine only; a folder of its own.
    LocalData,
    /// Shared by all programs; what is there can be made again.
    Cache,
};

/// Path of a folder of the current user. It is looked up in each call, because users move them, and need not
/// exist. Any thread may call it.
QString userFolder(UserFolder folder);

/// From now on the user's folders are "Documents", "Desktop", "AppData" and
/// ".cache" in the folder \a home. Windows keeps
/// their places in the user's profile, where no variable redirects them: without this, tests there would work
/// in the folders of the person who runs them. Call it before threads start; the application never does.
void redirectUserFolders(const QString& home);

} // namespace platform
