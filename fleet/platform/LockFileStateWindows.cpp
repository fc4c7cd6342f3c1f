// SPDX-License-Identifier: MIT
// QLockFile keeps its file open for writing as long as it holds it, and lets others read: whoever asks for a file that
// nobody writes to is refused meanwhile.
#include "LockFileState.h"

#include <QDir>

#define WIN32_LEAN_AND_MEAN
#include <windows.h>

namespace fleet::platform {

LockFileState lockFileState(const QString &path)
{
    const std::wstring name = QDir::toNativeSeparators(path).toStdWString();
    const HANDLE file = CreateFileW(name.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_DELETE, nullptr,
                                    OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file != INVALID_HANDLE_VALUE) {
        CloseHandle(file);
        return LockFileState::Left;
    }
    switch (GetLastError()) {
    case ERROR_SHARING_VIOLATION:
        return LockFileState::Held;
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
        return LockFileState::Left;
    default:
        return LockFileState::Unreadable;
    }
}

QString lockFolder()
{
    return QDir::fromNativeSeparators(qEnvironmentVariable("ProgramData"));
}

} // namespace fleet::platform
