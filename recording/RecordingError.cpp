// SPDX-License-Identifier: GPL-3.0-or-later
#include "recording/RecordingError.h"

#include <QCoreApplication>
#include <QDir>

namespace recording {

namespace {

const char* pattern(Failure failure)
{
    switch (failure) {
    case Failure::None:
        break;
    case Failure::NotFound:
        return QT_TRANSLATE_NOOP("Recording", "%1 does not exist.");
    case Failure::Exists:
        return QT_TRANSLATE_NOOP("Recording", "%1 exists already. It was not changed.");
    case Failure::NoPermission:
        return QT_TRANSLATE_NOOP("Recording", "You do not have permission to use %1.");
    case Failure::ReadOnly:
        return QT_TRANSLATE_NOOP("Recording", "%1 is on a medium that cannot be written.");
    case Failure::NotARecording:
        return QT_TRANSLATE_NOOP("Recording", "%1 is not a recording.");
    case Failure::NewerSchema:
        return QT_TRANSLATE_NOOP("Recording", "%1 was made by a newer version of this program.");
    case Failure::Damaged:
        return QT_TRANSLATE_NOOP("Recording", "%1 is damaged or incomplete.");
    case Failure::DiskFull:
        return QT_TRANSLATE_NOOP("Recording", "There is not enough space on the disk for %1.");
    case Failure::Busy:
        return QT_TRANSLATE_NOOP("Recording", "%1 is being recorded by another program.");
    case Failure::InputOutput:
        return QT_TRANSLATE_NOOP("Recording", "%1 could not be read or written.");
    }
    return nullptr;
}

} // namespace

QString errorText(const Error& error)
{
    const char* const text = pattern(error.failure);
    if (text == nullptr)
        return {};
    const QString sentence =
        QCoreApplication::translate("Recording", text).arg(QDir::toNativeSeparators(error.path));
    return error.detail.isEmpty() ? sentence : sentence + QStringLiteral(" (%1)").arg(error.detail);
}

} // namespace recording
