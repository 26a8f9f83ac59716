#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <cstring>
#include <filesystem>
#include <string>
#include <system_error>
#include <vector>

#include "tools/common/Files.h"

namespace fs = std::filesystem;

namespace {

HANDLE handleOf(int descriptor) {
    return reinterpret_cast<HANDLE>(_get_osfhandle(descriptor));
}

std::string lastError() {
    return std::system_category().message(static_cast<int>(GetLastError()));
}

/// Whether the file goes away when it is closed, as it does when the program ends.
bool setPassing(HANDLE file, bool passes) {
    FILE_DISPOSITION_INFO disposition{static_cast<BOOLEAN>(passes ? TRUE : FALSE)};
    return SetFileInformationByHandle(file, FileDispositionInfo, &disposition, sizeof disposition) != 0;
}

}  // namespace

NewFile::~NewFile() {
    if (descriptor != -1) {
        _close(descriptor);
    }
}

void NewFile::openDevice() {
    descriptor = _wopen(fs::u8path(path).c_str(), _O_WRONLY | _O_BINARY | _O_NOINHERIT);
    if (descriptor == -1) {
        failWithErrno();
    }
}

void NewFile::openBeside() {
    const fs::path name = fs::u8path(place).concat(".new" + std::to_string(GetCurrentProcessId()));
    const HANDLE file = CreateFileW(name.c_str(), GENERIC_READ | GENERIC_WRITE | DELETE, 0, nullptr,
                                    CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        fail(lastError());
    }
    descriptor = _open_osfhandle(reinterpret_cast<intptr_t>(file), _O_BINARY | _O_NOINHERIT);
    if (!setPassing(file, true)) {
        fail(lastError());
    }
}

void NewFile::keep() {
    if (isDevice) {
        return;
    }
    const HANDLE file = handleOf(descriptor);
    const std::wstring name = fs::absolute(fs::u8path(place)).wstring();
    const std::size_t nameBytes = name.size() * sizeof(wchar_t);
    std::vector<char> request(sizeof(FILE_RENAME_INFO) + nameBytes);
    auto* const renaming = reinterpret_cast<FILE_RENAME_INFO*>(request.data());
    renaming->ReplaceIfExists = mayReplace ? TRUE : FALSE;
    renaming->FileNameLength = static_cast<DWORD>(nameBytes);
    std::memcpy(renaming->FileName, name.data(), nameBytes);
    if (FlushFileBuffers(file) == 0 || !setPassing(file, false)) {
        fail(lastError());
    }
    if (SetFileInformationByHandle(file, FileRenameInfo, renaming, static_cast<DWORD>(request.size())) == 0) {
        const std::string reason = lastError();
        setPassing(file, true);
        fail(reason);
    }
}
