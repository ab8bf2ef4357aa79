// SPDX-License-Identifier: MIT
// Qt keeps what the library registers with it: a plugin that uses us may go, we stay.
#include <qt_windows.h>

namespace {

bool stayLoaded()
{
    constexpr DWORD flags = GET_MODULE_HANDLE_EX_FLAG_PIN | GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS;
    HMODULE library = nullptr;
    return GetModuleHandleExW(flags, reinterpret_cast<LPCWSTR>(&stayLoaded), &library) != FALSE;
}

[[maybe_unused]] const bool isPinned = stayLoaded();

} // namespace
