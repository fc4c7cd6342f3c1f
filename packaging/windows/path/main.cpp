// SPDX-License-Identifier: MIT
// torvane_path_entry add|remove AllUsers|CurrentUser FOLDER: what the installer calls to have a folder on the PATH of the
// machine or the user, or there no more. The installer's own texts end at 1,024 characters, and a PATH that went through
// them would lose all that is behind.
//
// Ends with 0 when it is done; with 1 when it can't be, and then nothing is changed; with 2 on a wrong command line.
#include "PathText.h"

#include <windows.h>

#include <memory>
#include <optional>
#include <string>

namespace {

constexpr DWORD longestVariable = 32767;   // characters, the zero at its end counted in
constexpr UINT broadcastPatienceMs = 2000; // for each window that is busy

struct CloseKey
{
    using pointer = HKEY;
    void operator()(HKEY key) const { RegCloseKey(key); }
};
using Key = std::unique_ptr<HKEY, CloseKey>;

// A text as the registry holds it.
struct Value
{
    DWORD type;
    std::wstring text;
};

Key openEnvironment(bool isOfMachine)
{
    const HKEY root = isOfMachine ? HKEY_LOCAL_MACHINE : HKEY_CURRENT_USER;
    const wchar_t *const name =
        isOfMachine ? L"SYSTEM\\CurrentControlSet\\Control\\Session Manager\\Environment" : L"Environment";
    HKEY key = nullptr;
    const LSTATUS status =
        RegCreateKeyExW(root, name, 0, nullptr, 0, KEY_QUERY_VALUE | KEY_SET_VALUE, nullptr, &key, nullptr);
    return Key(status == ERROR_SUCCESS ? key : nullptr);
}

// Nothing when it can't be read, or is no text; an empty text that is expanded when there is none yet.
std::optional<Value> readPath(HKEY environment)
{
    Value value{REG_EXPAND_SZ, {}};
    DWORD bytes = 0;
    LSTATUS status = RegQueryValueExW(environment, L"Path", nullptr, &value.type, nullptr, &bytes);
    if (status == ERROR_FILE_NOT_FOUND)
        return Value{REG_EXPAND_SZ, {}};
    if (status != ERROR_SUCCESS || (value.type != REG_SZ && value.type != REG_EXPAND_SZ))
        return std::nullopt;
    value.text.resize(bytes / sizeof(wchar_t));
    bytes = static_cast<DWORD>(value.text.size() * sizeof(wchar_t));
    status = RegQueryValueExW(environment, L"Path", nullptr, &value.type,
                              reinterpret_cast<BYTE *>(value.text.data()), &bytes);
    if (status != ERROR_SUCCESS)
        return std::nullopt;
    // Zeros at the end belong to the text or do not, as whoever wrote it liked.
    value.text.resize(bytes / sizeof(wchar_t));
    value.text.erase(value.text.find_last_not_of(L'\0') + 1);
    return value;
}

bool writePath(HKEY environment, const Value &value)
{
    if (value.text.empty())
        return RegDeleteValueW(environment, L"Path") == ERROR_SUCCESS;
    if (value.text.size() >= longestVariable)
        return false;
    const auto bytes = static_cast<DWORD>((value.text.size() + 1) * sizeof(wchar_t));
    return RegSetValueExW(environment, L"Path", 0, value.type,
                          reinterpret_cast<const BYTE *>(value.text.c_str()), bytes) == ERROR_SUCCESS;
}

// Explorer then starts programs with the new PATH, without a new login.
void tellWindows()
{
    SendMessageTimeoutW(HWND_BROADCAST, WM_SETTINGCHANGE, 0, reinterpret_cast<LPARAM>(L"Environment"),
                        SMTO_ABORTIFHUNG, broadcastPatienceMs, nullptr);
}

bool changePath(bool isAdded, bool isOfMachine, const std::wstring &folder)
{
    const Key environment = openEnvironment(isOfMachine);
    if (!environment)
        return false;
    std::optional<Value> value = readPath(environment.get());
    if (!value)
        return false;
    std::wstring changed = isAdded ? withFolder(value->text, folder) : withoutFolder(value->text, folder);
    if (changed == value->text)
        return true;
    value->text.swap(changed);
    if (!writePath(environment.get(), *value))
        return false;
    tellWindows();
    return true;
}

} // namespace

int wmain(int argc, wchar_t *argv[])
{
    if (argc != 4)
        return 2;
    const std::wstring action = argv[1];
    const std::wstring scope = argv[2];
    const std::wstring folder = argv[3];
    if ((action != L"add" && action != L"remove") || (scope != L"AllUsers" && scope != L"CurrentUser") ||
        folder.empty())
        return 2;
    return changePath(action == L"add", scope == L"AllUsers", folder) ? 0 : 1;
}
